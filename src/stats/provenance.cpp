#include "stats/provenance.h"

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
  std::unordered_map<TextId, std::size_t> order;  // first appearance of each name
  std::map<std::pair<std::size_t, std::size_t>, KillCount> cells;
  const auto rank = [&](TextId name) { return order.try_emplace(name, order.size()).first->second; };
  for (std::size_t m = 0; m < e.killer.Count(); ++m) {
    if (e.method.At(m) == kSuicideMethod && e.killer.At(m) == kSuicideKiller) continue;
    const std::size_t killer = rank(e.killer.IdAt(m));
    KillCount& cell = cells[{killer, rank(e.victim.IdAt(m))}];
    if (cell.kills++ == 0) cell = {e.killer.At(m), e.victim.At(m), 1};
  }
  std::vector<KillCount> matrix;
  for (auto& [key, cell] : cells) matrix.push_back(std::move(cell));
  return matrix;
}

}  // namespace vantor
