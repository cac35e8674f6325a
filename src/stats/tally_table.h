#pragma once
// The tally table: one slot per team member of a run, Blue members first,
// then Red members, with the member's name and every count.

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "stats/weapon_table.h"

namespace vantor {

// Counts are 64-bit: a whole season of logs overflows nothing.
using Count = std::int64_t;

struct PlayerTally {
  std::string strPlayerName;
  Count intFrags = 0;
  Count intDeaths = 0;
  Count intSuicides = 0;
  Count intFlagGrabs = 0;
  Count intFCDefends = 0;
  Count intFlagCaptures = 0;
  Count intFlagDefends = 0;
  Count intBaseDefends = 0;
  Count intFCKills = 0;
  Count intSentKills = 0;
  std::array<Count, kWeaponCount> weapons{};  // indexed by Weapon

  Count WeaponKills(Weapon w) const { return weapons[Index(w)]; }
  bool operator==(const PlayerTally&) const = default;
};

using TallyTable = std::vector<PlayerTally>;

}  // namespace vantor
