#pragma once
// The ten counts of a member, one row each with every face it has: its
// field in the tally table, its column and heading in the statistics table
// (in the row's order, after the name), its label in the details window,
// its name in the JSON and CSV exports, and the kind of flag event it
// counts. Adding a count is one row here, its field in PlayerTally and
// its name in CountKind below (a static_assert keeps the two in step);
// every face reads the row.
//
// A slot's counts continue after these ten with its 42 weapon counts, named
// after their method names.

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "stats/flag_kinds.h"
#include "stats/tally_table.h"

namespace vantor {

struct CountRow {
  Count PlayerTally::*field;
  std::string_view heading;      // the statistics table's column heading
  std::string_view label;        // the details window's label
  std::string_view export_name;  // the JSON and CSV name
  std::optional<FlagKind> flag;  // the kind of flag event counted, if any
};

inline constexpr std::array<CountRow, 10> kCounts = {{
    {&PlayerTally::intFrags, "Frags", "Frags", "frags", {}},
    {&PlayerTally::intDeaths, "Deaths", "Deaths (suicides included)", "deaths", {}},
    {&PlayerTally::intSuicides, "Suicides", "Suicides", "suicides", {}},
    {&PlayerTally::intFlagGrabs, "F Grabs", "Flag Grabs", "flag_grabs", FlagKind::FlagGrab},
    {&PlayerTally::intFCDefends, "FC Def", "FC Defends", "fc_defends", FlagKind::FCDefense},
    {&PlayerTally::intFlagCaptures, "F Cap", "Flag Captures", "flag_captures", FlagKind::FlagCapture},
    {&PlayerTally::intFlagDefends, "F Def", "Flag Defends", "flag_defends", FlagKind::FlagDefense},
    {&PlayerTally::intBaseDefends, "B Def", "Base Defends", "base_defends", FlagKind::BaseDefense},
    {&PlayerTally::intFCKills, "FC Frag", "FC Kills", "fc_kills", FlagKind::FCFrag},
    {&PlayerTally::intSentKills, "Sentrys", "Sentry Kills", "sentry_kills", {}},
}};

// A count of a slot: 0 to 9 the rows of kCounts, then one per weapon.
enum class CountKind : std::size_t {
  kFrags,
  kDeaths,
  kSuicides,
  kFlagGrabs,
  kFCDefends,
  kFlagCaptures,
  kFlagDefends,
  kBaseDefends,
  kFCKills,
  kSentryKills,
  kFirstWeapon
};
static_assert(static_cast<std::size_t>(CountKind::kFirstWeapon) == kCounts.size());
inline constexpr std::size_t kCountKinds = kCounts.size() + kWeaponCount;

inline constexpr CountKind CountKindAt(std::size_t k) { return static_cast<CountKind>(k); }
inline constexpr std::size_t Index(CountKind kind) { return static_cast<std::size_t>(kind); }
inline constexpr CountKind WeaponCount(Weapon w) { return CountKindAt(kCounts.size() + Index(w)); }
// The heading of a column of the statistics table: "Name", then the counts'.
inline constexpr std::string_view ColumnHeading(std::size_t column) {
  return column == 0 ? "Name" : kCounts[column - 1].heading;
}

// The weapon of a weapon count; none for the ten.
std::optional<Weapon> WeaponOf(CountKind kind);

// The ten counts of a slot, in the order of kCounts.
using CountValues = std::array<Count, kCounts.size()>;
CountValues ValuesOf(const PlayerTally& slot);

// The export name of a count: a row's export_name, or the weapon's method name.
std::string CountName(CountKind kind);
// The slot's value of that count in the tally table.
Count CountOf(const PlayerTally& slot, CountKind kind);

}  // namespace vantor
