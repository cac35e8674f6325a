#include "stats/player_tallies.h"

#include <algorithm>
#include <string>
#include <unordered_set>

#include "analysis/worker_threads.h"
#include "events/message_rules.h"
#include "stats/counts.h"

namespace vantor {

namespace {

using Column = StatisticsTable::Column;

// Per pool id of the worksheet: whether the name stands in either team.
std::vector<bool> AllMembers(const WorksheetList& blue, const WorksheetList& red) {
  std::vector<bool> members(blue.Pool().Size(), false);
  for (TextId name : blue.Ids()) members[name] = true;
  for (TextId name : red.Ids()) members[name] = true;
  return members;
}

// Per pool id of the methods in the list: whether it names one of the weapons.
std::vector<bool> WeaponMethods(const WorksheetList& methods) {
  std::vector<bool> weapon(methods.Pool().Size(), false);
  std::vector<bool> looked_up(methods.Pool().Size(), false);
  for (TextId id : methods.Ids()) {
    if (looked_up[id]) continue;
    looked_up[id] = true;
    weapon[id] = WeaponByMethod(methods.Pool().Text(id)).has_value();
  }
  return weapon;
}

void CountKills(const EventIndex& events, TextId name, PlayerTally& slot, bool first_slot) {
  const auto id = events.Find(name);
  if (!id) return;
  const EventIndex::PlayerEvents& player = events.Player(*id);
  slot.intFrags = player.frags;
  slot.intDeaths = first_slot ? player.deaths : player.deaths - player.suicides;
  slot.intSuicides = first_slot ? player.suicides : 0;
  if (first_slot) slot.weapons = player.weapons;
  slot.intSentKills = player.sentry_kills;
}

// The flag counts of a slot, asked for in the order of the count table; the
// colour of the last kind asked for that credited a coloured event stays.
void CountFlags(const EventIndex& events, TextId name, PlayerTally& slot, std::string& colour) {
  const FlagCredit flags = events.FlagsOf(name, slot.strPlayerName);
  for (const CountRow& count : kCounts) {
    if (!count.flag) continue;
    slot.*count.field = flags.counts[Index(*count.flag)];
    if (!flags.colours[Index(*count.flag)].empty()) colour = flags.colours[Index(*count.flag)];
  }
}

void AppendRow(StatisticsTable& table, std::string_view name, const CountValues& counts) {
  table[Column::lstName].Append(name);
  for (std::size_t c = 0; c < counts.size(); ++c) table[c + 1].Append(std::to_string(counts[c]));
}

}  // namespace

void CountTallies(const Worksheet& sheet, const EventIndex& events, TallyTable& tally,
                  TeamColours& strPlayerTeam, const std::function<void(std::int64_t)>& progress) {
  const std::size_t nB = sheet.List8.Count();
  const std::size_t nR = sheet.List9.Count();
  tally.assign(nB + nR, PlayerTally{});
  std::vector<bool> counted(sheet.List8.Pool().Size(), false);  // by pool id: the name has a slot already
  for (std::size_t s = 0; s < nB + nR; ++s) {
    const TextId name = s < nB ? sheet.List8.IdAt(s) : sheet.List9.IdAt(s - nB);
    tally[s].strPlayerName = sheet.List8.Pool().Text(name);
    CountKills(events, name, tally[s], !counted[name]);
    counted[name] = true;
  }
  if (strPlayerTeam.size() < std::max(nB, nR)) strPlayerTeam.resize(std::max(nB, nR));
  for (std::size_t s = 0; s < nB + nR; ++s) {
    const TextId name = s < nB ? sheet.List8.IdAt(s) : sheet.List9.IdAt(s - nB);
    CountFlags(events, name, tally[s], strPlayerTeam[s < nB ? s : s - nB]);
    progress(static_cast<std::int64_t>(s) * 100 + 30);
  }
}

void FillStatisticsTable(const TallyTable& tally, std::size_t nB, StatisticsTable& table) {
  auto team_rows = [&](std::size_t first, std::size_t end) {
    CountValues sums{};
    for (std::size_t s = first; s < end; ++s) {
      const CountValues counts = ValuesOf(tally[s]);
      AppendRow(table, tally[s].strPlayerName, counts);
      for (std::size_t c = 0; c < sums.size(); ++c) sums[c] += counts[c];
    }
    AppendRow(table, "Totals", sums);
  };
  team_rows(0, nB);
  for (std::size_t c = 0; c < StatisticsTable::kColumns; ++c) table[c].Append(" ");
  team_rows(nB, tally.size());
}

std::vector<bool> UncountedEvents(const Worksheet& sheet) {
  const std::vector<bool> members = AllMembers(sheet.List8, sheet.List9);
  const std::vector<bool> weapon = WeaponMethods(sheet.List4);
  const TextId suicide_method = sheet.List4.Pool().Find(kSuicideMethod);
  const std::size_t n = sheet.List2.Count(), ranges = RangesFor(n);
  std::vector<bool> keep(n, true);
  // Ranges begin at a multiple of 64 rows: no two write the same word of keep.
  SideBySide(ranges, [&](std::size_t r) {
    const std::size_t begin = RangeOf(n, r, ranges).begin / 64 * 64;
    const std::size_t end = r + 1 == ranges ? n : RangeOf(n, r + 1, ranges).begin / 64 * 64;
    for (std::size_t m = begin; m < end; ++m) {
      const TextId method = sheet.List4.IdAt(m);
      const bool suicide = method == suicide_method && members[sheet.List3.IdAt(m)];
      const bool weapon_kill = members[sheet.List2.IdAt(m)] && weapon[method];
      keep[m] = !suicide && !weapon_kill;
    }
  });
  return keep;
}

}  // namespace vantor
