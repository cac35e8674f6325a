#pragma once
// The report's eight weapon tables, one per player class: their headings,
// columns and the counts that decide whether a member gets a row.

#include <array>
#include <cstddef>
#include <string_view>
#include <vector>

#include "stats/tally_table.h"

namespace vantor {

// A value shown in a class table: a weapon count, or the sentry guns destroyed.
struct ClassCount {
  bool sentry_kills = false;
  Weapon weapon = Weapon::RocketSplash;

  Count Of(const PlayerTally& t) const { return sentry_kills ? t.intSentKills : t.WeaponKills(weapon); }
};

struct ClassColumn {
  std::string_view header;  // the header cell's line
  ClassCount value;
};

struct ClassTable {
  std::string_view heading;
  std::vector<ClassColumn> columns;
  // A member gets a row when one of these is 1 or more.
  std::vector<ClassCount> tested;
  std::string_view closing;
};

extern const std::array<ClassTable, 8> kClassTables;

}  // namespace vantor
