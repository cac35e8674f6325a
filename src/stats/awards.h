#pragma once
// Awards for a match or an evening, from the players' counts: one row per
// award, so that adding one is one row. An award goes to the unique leader
// with a value of at least 1, is shared on a tie, and is not given when
// fewer than two players could have won it.

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "stats/evening.h"

namespace vantor {

struct AwardRow {
  std::string_view key;     // the JSON name
  std::string_view title;   // as the summary shows it
  std::string_view reason;  // what the value is, for the one-line reason
  double (*value)(const PlayerCounts&);
  bool ratio;        // a value with decimals rather than a count
  Count min_deaths;  // a player needs this many deaths to be a candidate
};

extern const std::array<AwardRow, 9> kAwards;

struct Award {
  const AwardRow* row = nullptr;
  std::vector<std::string> winners;  // empty: not given
  double value = 0;                  // the leaders' value
  std::string why_not;               // why it was not given

  // "most frags: 41", or why it was not given.
  std::string Reason() const;
};

// Every award of kAwards, in order, over the players.
std::vector<Award> GiveAwards(const std::vector<PlayerCounts>& players);

// A value as an award shows it: a count, or a ratio with two decimals.
std::string AwardValueText(double value, bool ratio);

}  // namespace vantor
