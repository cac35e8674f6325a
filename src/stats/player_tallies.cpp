// GetIndivStats: one tally slot per team member (Blue first, then Red), the
// statistics table team by team with a totals row each, then the report.
//
// Counting a member's suicides and weapon kills consumes those events, so
// a name that stands in both teams finds them gone at its second slot: that
// slot keeps the frags, flag counts and sentry kills, has its deaths
// reduced by its suicides, and gets no suicides and no weapon kills.

#include <algorithm>
#include <string>
#include <unordered_set>
#include <vector>

#include "analysis/form1.h"
#include "events/message_rules.h"
#include "stats/event_index.h"

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

const std::string& MemberName(const Form1& form, std::size_t nB, std::size_t slot) {
  return slot < nB ? form.List8.At(slot) : form.List9.At(slot - nB);
}

// The ten counts of a slot in the order of the statistics table's columns.
std::array<Count, 10> DisplayedCounts(const PlayerTally& t) {
  return {t.intFrags, t.intDeaths, t.intSuicides, t.intFlagGrabs, t.intFCDefends,
          t.intFlagCaptures, t.intFlagDefends, t.intBaseDefends, t.intFCKills, t.intSentKills};
}

void AppendRow(StatisticsTable& table, std::string_view name, const std::array<Count, 10>& counts) {
  table[Column::lstName].Append(name);
  for (std::size_t c = 0; c < counts.size(); ++c) table[c + 1].Append(std::to_string(counts[c]));
}

}  // namespace

void Form1::GetIndivStats() {
  const std::size_t nB = List8.Count();
  const std::size_t nR = List9.Count();
  tally.assign(nB + nR, PlayerTally{});
  const auto maximum = static_cast<std::int64_t>((nB + nR) * 100 + 50);
  host_.SetProgressMaximum(maximum);
  CountKillEvents(nB, nR);
  CountFlagEvents(nB, nR);
  host_.SetProgressValue(maximum * 8 / 10);
  FillStatisticsTable(nB, nR);
  host_.StatisticsFilled();
  const std::vector<bool> keep = UncountedEvents();
  if (keep_provenance_) {
    RecordRun(nB, keep);
  } else {
    RemoveCountedEvents(keep);
  }
  OutputToHTML(nB, nR);
  host_.SetProgressValue(maximum * 9 / 10);
}

void Form1::CountKillEvents(std::size_t nB, std::size_t nR) {
  const EventIndex& events = Events();
  std::unordered_set<std::string> counted;
  for (std::size_t s = 0; s < nB + nR; ++s) {
    PlayerTally& slot = tally[s];
    slot.strPlayerName = MemberName(*this, nB, s);
    const auto id = events.Find(slot.strPlayerName);
    if (!id) continue;
    const EventIndex::PlayerEvents& player = events.Player(*id);
    const bool first_slot = counted.insert(slot.strPlayerName).second;
    slot.intFrags = player.frags;
    slot.intDeaths = first_slot ? player.deaths : player.deaths - player.suicides;
    slot.intSuicides = first_slot ? player.suicides : 0;
    if (first_slot) slot.weapons = player.weapons;
    slot.intSentKills = player.sentry_kills;
  }
}

void Form1::CountFlagEvents(std::size_t nB, std::size_t nR) {
  if (strPlayerTeam.size() < std::max(nB, nR)) strPlayerTeam.resize(std::max(nB, nR));
  for (std::size_t s = 0; s < nB + nR; ++s) {
    PlayerTally& slot = tally[s];
    const FlagCredit flags = GetFlagInfo(slot.strPlayerName);
    slot.intFlagGrabs = flags.counts[Index(FlagKind::FlagGrab)];
    slot.intFCDefends = flags.counts[Index(FlagKind::FCDefense)];
    slot.intFlagCaptures = flags.counts[Index(FlagKind::FlagCapture)];
    slot.intFlagDefends = flags.counts[Index(FlagKind::FlagDefense)];
    slot.intBaseDefends = flags.counts[Index(FlagKind::BaseDefense)];
    slot.intFCKills = flags.counts[Index(FlagKind::FCFrag)];
    // The flag counting records colours at the member's place in its own
    // team list, not at its slot.
    const std::size_t position = s < nB ? s : s - nB;
    for (FlagKind kind : kTallyFlagOrder) {
      if (!flags.colours[Index(kind)].empty()) strPlayerTeam[position] = flags.colours[Index(kind)];
    }
    host_.SetProgressValue(static_cast<std::int64_t>(s) * 100 + 30);
  }
}

void Form1::FillStatisticsTable(std::size_t nB, std::size_t nR) {
  StatisticsTable& table = host_.Statistics();
  auto team_rows = [&](std::size_t first, std::size_t end) {
    std::array<Count, 10> sums{};
    for (std::size_t s = first; s < end; ++s) {
      const auto counts = DisplayedCounts(tally[s]);
      AppendRow(table, tally[s].strPlayerName, counts);
      for (std::size_t c = 0; c < sums.size(); ++c) sums[c] += counts[c];
    }
    AppendRow(table, "Totals", sums);
  };
  team_rows(0, nB);
  for (std::size_t c = 0; c < StatisticsTable::kColumns; ++c) table[c].Append(" ");
  team_rows(nB, nB + nR);
}

std::vector<bool> Form1::UncountedEvents() const {
  // What the counting consumed: the suicides of members and the weapon
  // kills by members. Everything else stays, in order.
  const std::vector<bool> members = AllMembers(List8, List9);
  const std::vector<bool> weapon = WeaponMethods(List4);
  const std::size_t n = List2.Count();
  std::vector<bool> keep(n, true);
  for (std::size_t m = 0; m < n; ++m) {
    const TextId method = List4.IdAt(m);
    const bool suicide = List4.Pool().Text(method) == kSuicideMethod && members[List3.IdAt(m)];
    const bool weapon_kill = members[List2.IdAt(m)] && weapon[method];
    keep[m] = !suicide && !weapon_kill;
  }
  return keep;
}

void Form1::RemoveCountedEvents(const std::vector<bool>& keep) {
  List2.RetainIf([&](std::size_t m) { return keep[m]; });
  List3.RetainIf([&](std::size_t m) { return keep[m]; });
  List4.RetainIf([&](std::size_t m) { return keep[m]; });
  RetainSources(KillSources, keep);
  events_.reset();
}

}  // namespace vantor
