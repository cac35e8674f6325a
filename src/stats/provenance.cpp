#include "stats/provenance.h"

#include <algorithm>
#include <map>
#include <optional>
#include <unordered_map>

#include "analysis/text_ops.h"
#include "events/message_rules.h"

namespace vantor {

namespace {

// The flag kind of a count; none for the counts of kills and sentries.
std::optional<FlagKind> FlagKindOf(CountKind kind) {
  return Index(kind) < kCounts.size() ? kCounts[Index(kind)].flag : std::nullopt;
}

// Frags and weapon kills: the rows with the name as killer (and the
// weapon's method). A second slot's weapon kills were consumed by the first.
template <typename Take>
void KillsBehind(const RunRecord& run, const std::string& name, bool first_slot, CountKind kind, Take take) {
  const std::optional<Weapon> weapon = WeaponOf(kind);
  if (weapon && !first_slot) return;
  const std::string_view method = weapon ? kWeaponTable[Index(*weapon)].method_name : "";
  const CountedEvents& e = run.events;
  for (std::size_t m = 0; m < e.killer.Count(); ++m) {
    if (e.killer.At(m) == name && (!weapon || e.method.At(m) == method)) take(m);
  }
}

// Deaths and suicides: the rows with the name as victim. A second slot has
// its suicides consumed: no suicides, and deaths without them.
template <typename Take>
void DeathsBehind(const RunRecord& run, const std::string& name, bool first_slot, CountKind kind, Take take) {
  if (kind == CountKind::kSuicides && !first_slot) return;
  const CountedEvents& e = run.events;
  for (std::size_t m = 0; m < e.victim.Count(); ++m) {
    if (e.victim.At(m) != name) continue;
    const bool suicide = e.method.At(m) == kSuicideMethod;
    if (kind == CountKind::kSuicides ? suicide : first_slot || !suicide) take(m);
  }
}

// Flag counts: the flag rows whose player text contains the name (so Al is
// credited with Alice's events too) and whose action is of the kind.
template <typename Take>
void FlagEventsBehind(const RunRecord& run, const std::string& name, FlagKind kind, Take take) {
  const std::string_view flag_kind = kFlagKindNames[Index(kind)];
  const CountedEvents& e = run.events;
  for (std::size_t j = 0; j < e.flag_text.Count(); ++j) {
    if (Contains(e.flag_text.At(j), name) && Contains(e.flag_action.At(j), flag_kind)) take(j);
  }
}

// Calls take(row) for every event row behind the count, in event order.
template <typename Take>
void ForEachEventBehind(const RunRecord& run, std::size_t slot, CountKind kind, Take take) {
  const std::string& name = run.members[slot].strPlayerName;
  const bool first_slot = run.FirstSlotOf(slot);
  if (kind == CountKind::kFrags || WeaponOf(kind)) return KillsBehind(run, name, first_slot, kind, take);
  if (kind == CountKind::kDeaths || kind == CountKind::kSuicides) {
    return DeathsBehind(run, name, first_slot, kind, take);
  }
  if (const auto flag = FlagKindOf(kind)) return FlagEventsBehind(run, name, *flag, take);
  for (std::size_t m = 0; m < run.events.destroyer.Count(); ++m) {
    if (run.events.destroyer.At(m) == name) take(m);
  }
}

// The list whose rows carry the places of the events behind the count.
const WorksheetList& EventsWithPlaces(const RunRecord& run, CountKind kind) {
  if (kind == CountKind::kSentryKills) return run.events.destroyer;
  return FlagKindOf(kind) ? run.events.flag_text : run.events.killer;
}

}  // namespace

EventSources LinesOf(const RunRecord& run, std::size_t slot, CountKind kind) {
  const WorksheetList& events = EventsWithPlaces(run, kind);
  EventSources lines;
  ForEachEventBehind(run, slot, kind, [&](std::size_t row) { lines.push_back(events.PlaceAt(row)); });
  return lines;
}

std::optional<EventSource> DecidingLine(const RunRecord& run, const TeamReason& reason) {
  const WorksheetList& events =
      reason.kind == TeamReason::Kind::kFlagEvent ? run.events.flag_text : run.events.killer;
  if (!reason.row || !events.KeepsPlaces() || *reason.row >= events.Count()) return std::nullopt;
  return events.PlaceAt(*reason.row);
}

Count EventsBehind(const RunRecord& run, std::size_t slot, CountKind kind) {
  Count n = 0;
  ForEachEventBehind(run, slot, kind, [&](std::size_t) { ++n; });
  return n;
}

std::vector<KillCount> KillMatrix(const RunRecord& run) {
  const CountedEvents& e = run.events;
  // Names by pool id, each ranked by its first appearance; a log has
  // millions of kills among a few dozen names, so cells are counted by id.
  constexpr std::size_t kUnranked = static_cast<std::size_t>(-1);
  std::vector<std::size_t> rank_of;
  std::size_t ranked = 0;
  const auto rank = [&](TextId name) {
    if (rank_of.size() <= name) rank_of.resize(name + 1, kUnranked);
    if (rank_of[name] == kUnranked) rank_of[name] = ranked++;
    return rank_of[name];
  };
  std::vector<std::optional<bool>> suicide_method;                             // by pool id, looked up once
  std::unordered_map<std::uint64_t, std::pair<std::size_t, KillCount>> cells;  // by killer and victim id
  for (std::size_t m = 0; m < e.killer.Count(); ++m) {
    const TextId method = e.method.IdAt(m);
    if (suicide_method.size() <= method) suicide_method.resize(method + 1);
    if (!suicide_method[method]) suicide_method[method] = e.method.At(m) == kSuicideMethod;
    if (*suicide_method[method] && e.killer.At(m) == kSuicideKiller) continue;
    const TextId killer = e.killer.IdAt(m), victim = e.victim.IdAt(m);
    const std::size_t order = rank(killer) << 32 | rank(victim);
    auto& [key, cell] = cells[std::uint64_t{killer} << 32 | victim];
    if (cell.kills++ == 0) cell = {e.killer.At(m), e.victim.At(m), 1}, key = order;
  }
  std::vector<std::pair<std::size_t, KillCount>> sorted;
  for (auto& [ids, cell] : cells) sorted.push_back(std::move(cell));
  // By killer, then victim, each in order of first appearance.
  std::sort(sorted.begin(), sorted.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
  std::vector<KillCount> matrix;
  for (auto& [order, cell] : sorted) matrix.push_back(std::move(cell));
  return matrix;
}

}  // namespace vantor
