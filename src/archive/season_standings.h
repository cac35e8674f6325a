#pragma once
// The season's standings: every player of the archived matches of a
// period, with matches played, wins, losses, draws, the ten counts summed,
// frags per death and awards won, and the matches one by one.

#include <cstddef>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "stats/counts.h"

namespace vantor {

// Days as "YYYY-MM-DD", both included; empty: open.
struct SeasonPeriod {
  std::string since, until;
};

struct SeasonMatch {
  std::int64_t id = 0;
  std::string played_on;
  std::string team;    // "Blue", "Red", or "Blue/Red" for a name in both teams
  std::string result;  // "win", "loss" or "draw"
  Count frags = 0, deaths = 0;
};

struct SeasonPlayer {
  std::string name;  // the log's bytes
  std::size_t wins = 0, losses = 0, draws = 0, awards = 0;
  CountValues counts{};
  std::vector<SeasonMatch> history;  // in the order they were played and archived

  std::size_t Matches() const { return history.size(); }
  std::optional<double> FragsPerDeath() const;
};

struct Standings {
  std::vector<SeasonPlayer> players;  // most wins first, then most frags, then by name
  std::size_t matches = 0;
  std::string refusal;  // why the archive could not be read; empty when it was
};

Standings ReadStandings(const std::string& archive_path, const SeasonPeriod& period);

// The standings as text, as the statistics table is written: a header
// line, then one line per player, cells joined by TAB, lines ended by LF.
void WriteStandingsTable(std::ostream& out, const std::vector<SeasonPlayer>& players);

}  // namespace vantor
