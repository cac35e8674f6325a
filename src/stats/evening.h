#pragma once
// The evening as a player sees it: every player of the matches with the
// matches played, the team in each, and the sums of the ten counts.

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "stats/counts.h"
#include "stats/matches.h"

namespace vantor {

struct PlayerCounts {
  std::string name;
  CountValues counts{};
  std::array<Count, kWeaponCount> weapons{};
  std::size_t matches = 0;              // matches with a slot of the name
  std::vector<std::string> teams = {};  // per match: "Blue", "Red", "Blue/Red" or "" when absent

  Count Of(CountKind kind) const { return counts[Index(kind)]; }
  // Frags per death; none without deaths.
  std::optional<double> FragsPerDeath() const;
};

// The players of the matches, in order of first appearance, each slot of
// a name added to its sums (a name in both teams of a match, as the run's
// totals rows do). teams has one entry per match.
std::vector<PlayerCounts> PlayersOf(const std::vector<Match>& matches);

}  // namespace vantor
