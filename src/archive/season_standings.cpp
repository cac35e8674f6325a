#include "archive/season_standings.h"

#include <algorithm>
#include <map>

#include "archive/season_archive.h"
#include "stats/awards.h"

namespace vantor {

namespace {

constexpr std::string_view kInPeriod = "(?1 = '' OR m.played_on >= ?1) AND (?2 = '' OR m.played_on <= ?2)";

std::string WhereInPeriod() { return " WHERE " + std::string(kInPeriod); }

std::string PlayerRowsQuery() {
  std::string counts;
  for (const CountRow& count : kCounts) counts += ", p." + std::string(count.export_name);
  return "SELECT m.id, m.played_on, m.winner, p.name, p.team" + counts +
         " FROM players p JOIN matches m ON m.id = p.match_id" + WhereInPeriod() +
         " ORDER BY m.played_on, m.id, p.slot";
}

// One slot of a player in a match: a second slot of the same name (both
// teams) makes the match a draw for it.
void AddSlot(SeasonPlayer& player, const Statement& row) {
  const std::string team = row.Text(4), winner = row.Text(2);
  if (player.history.empty() || player.history.back().id != row.Int(0)) {
    const std::string result = winner == "draw" ? "draw" : team == winner ? "win" : "loss";
    player.history.push_back({row.Int(0), row.Text(1), team, result, 0, 0});
  } else {
    player.history.back().team = "Blue/Red";
    player.history.back().result = "draw";
  }
  for (std::size_t k = 0; k < kCounts.size(); ++k)
    player.counts[k] += static_cast<Count>(row.Int(5 + static_cast<int>(k)));
  player.history.back().frags += static_cast<Count>(row.Int(5 + static_cast<int>(Index(CountKind::kFrags))));
  player.history.back().deaths +=
      static_cast<Count>(row.Int(5 + static_cast<int>(Index(CountKind::kDeaths))));
}

std::vector<SeasonPlayer> ReadPlayers(SqliteDb& db, const SeasonPeriod& period) {
  std::vector<SeasonPlayer> players;
  std::map<std::string, std::size_t> by_name;
  Statement rows(db.Handle(), PlayerRowsQuery());
  rows.Bind(1, period.since).Bind(2, period.until);
  while (rows.Step()) {
    const auto [at, added] = by_name.try_emplace(rows.Text(3), players.size());
    if (added) players.emplace_back().name = rows.Text(3);
    AddSlot(players[at->second], rows);
  }
  Statement awards(db.Handle(), "SELECT a.name, count(*) FROM awards a JOIN matches m ON m.id = a.match_id" +
                                    WhereInPeriod() + " GROUP BY a.name");
  awards.Bind(1, period.since).Bind(2, period.until);
  while (awards.Step()) {
    if (const auto at = by_name.find(awards.Text(0)); at != by_name.end())
      players[at->second].awards = static_cast<std::size_t>(awards.Int(1));
  }
  return players;
}

void Rank(std::vector<SeasonPlayer>& players) {
  for (SeasonPlayer& p : players) {
    for (const SeasonMatch& m : p.history)
      ++(m.result == "win" ? p.wins : m.result == "loss" ? p.losses : p.draws);
  }
  std::stable_sort(players.begin(), players.end(), [](const SeasonPlayer& a, const SeasonPlayer& b) {
    const Count fa = a.counts[Index(CountKind::kFrags)], fb = b.counts[Index(CountKind::kFrags)];
    return a.wins != b.wins ? a.wins > b.wins : fa != fb ? fa > fb : a.name < b.name;
  });
}

}  // namespace

std::optional<double> SeasonPlayer::FragsPerDeath() const {
  const Count deaths = counts[Index(CountKind::kDeaths)];
  if (deaths == 0) return std::nullopt;
  return static_cast<double>(counts[Index(CountKind::kFrags)]) / static_cast<double>(deaths);
}

Standings ReadStandings(const std::string& archive_path, const SeasonPeriod& period) {
  OpenedArchive archive = OpenSeasonArchive(archive_path, false);
  if (!archive.db) return {{}, 0, archive.refusal};
  try {
    Standings standings;
    standings.players = ReadPlayers(*archive.db, period);
    Rank(standings.players);
    Statement matches(archive.db->Handle(), "SELECT count(*) FROM matches m" + WhereInPeriod());
    matches.Bind(1, period.since).Bind(2, period.until);
    standings.matches = matches.Step() ? static_cast<std::size_t>(matches.Int(0)) : 0;
    return standings;
  } catch (const SqliteError& e) {
    return {{}, 0, "Could not read the season archive " + archive_path + ": " + e.what()};
  }
}

void WriteStandingsTable(std::ostream& out, const std::vector<SeasonPlayer>& players) {
  out << "Name\tMatches\tWins\tLosses\tDraws";
  for (const CountRow& count : kCounts) out << '\t' << count.heading;
  out << "\tFrags/Death\tAwards\n";
  for (const SeasonPlayer& p : players) {
    out << p.name << '\t' << p.Matches() << '\t' << p.wins << '\t' << p.losses << '\t' << p.draws;
    for (const Count value : p.counts) out << '\t' << value;
    const auto ratio = p.FragsPerDeath();
    out << '\t' << (ratio ? AwardValueText(*ratio, true) : "-") << '\t' << p.awards << '\n';
  }
}

}  // namespace vantor
