#include "stats/provenance.h"

#include <map>
#include <optional>
#include <unordered_map>

#include "analysis/text_ops.h"
#include "events/message_rules.h"

namespace vantor {

namespace {

constexpr std::array<std::string_view, 10> kCountNames = {
    "frags",         "deaths",       "suicides",     "flag_grabs", "fc_defends",
    "flag_captures", "flag_defends", "base_defends", "fc_kills",   "sentry_kills"};

// The flag kind of a flag count.
constexpr std::array<FlagKind, 6> kFlagCounts = {FlagKind::FlagGrab,    FlagKind::FCDefense,
                                                 FlagKind::FlagCapture, FlagKind::FlagDefense,
                                                 FlagKind::BaseDefense, FlagKind::FCFrag};

std::size_t Raw(CountKind kind) { return static_cast<std::size_t>(kind); }

// The weapon of a weapon count; none for the other counts.
std::optional<std::string_view> WeaponOf(CountKind kind) {
  const std::size_t k = Raw(kind);
  if (k < Raw(CountKind::kFirstWeapon)) return std::nullopt;
  return kWeaponTable[k - Raw(CountKind::kFirstWeapon)].method_name;
}

// Frags and weapon kills: the rows with the name as killer (and the
// weapon's method). A second slot's weapon kills were consumed by the first.
template <typename Take>
void KillsBehind(const RunRecord& run, const std::string& name, bool first_slot, CountKind kind, Take take) {
  const std::optional<std::string_view> weapon = WeaponOf(kind);
  if (weapon && !first_slot) return;
  const CountedEvents& e = run.events;
  for (std::size_t m = 0; m < e.killer.size(); ++m) {
    if (run.Text(e.killer[m]) == name && (!weapon || run.Text(e.method[m]) == *weapon)) take(m);
  }
}

// Deaths and suicides: the rows with the name as victim. A second slot has
// its suicides consumed: no suicides, and deaths without them.
template <typename Take>
void DeathsBehind(const RunRecord& run, const std::string& name, bool first_slot, CountKind kind, Take take) {
  if (kind == CountKind::kSuicides && !first_slot) return;
  const CountedEvents& e = run.events;
  for (std::size_t m = 0; m < e.victim.size(); ++m) {
    if (run.Text(e.victim[m]) != name) continue;
    const bool suicide = run.Text(e.method[m]) == kSuicideMethod;
    if (kind == CountKind::kSuicides ? suicide : first_slot || !suicide) take(m);
  }
}

// Flag counts: the flag rows whose player text contains the name (so Al is
// credited with Alice's events too) and whose action is of the kind.
template <typename Take>
void FlagEventsBehind(const RunRecord& run, const std::string& name, CountKind kind, Take take) {
  const std::string_view flag_kind = kFlagKindNames[Index(kFlagCounts[Raw(kind) - Raw(CountKind::kFlagGrabs)])];
  const CountedEvents& e = run.events;
  for (std::size_t j = 0; j < e.flag_text.size(); ++j) {
    if (Contains(run.Text(e.flag_text[j]), name) && Contains(run.Text(e.flag_action[j]), flag_kind)) take(j);
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
  if (kind != CountKind::kSentryKills) return FlagEventsBehind(run, name, kind, take);
  for (std::size_t m = 0; m < run.events.destroyer.size(); ++m) {
    if (run.Text(run.events.destroyer[m]) == name) take(m);
  }
}

const EventSources& SourcesFor(const RunRecord& run, CountKind kind) {
  const std::size_t k = Raw(kind);
  if (kind == CountKind::kSentryKills) return run.events.sentry_sources;
  if (k >= Raw(CountKind::kFlagGrabs) && k <= Raw(CountKind::kFCKills)) return run.events.flag_sources;
  return run.events.kill_sources;
}

}  // namespace

std::string CountName(CountKind kind) {
  const std::size_t k = Raw(kind);
  if (k < kCountNames.size()) return std::string(kCountNames[k]);
  return std::string(kWeaponTable[k - Raw(CountKind::kFirstWeapon)].method_name);
}

Count CountOf(const PlayerTally& t, CountKind kind) {
  const std::array<Count, 10> shown = {t.intFrags,       t.intDeaths,      t.intSuicides,   t.intFlagGrabs,
                                       t.intFCDefends,   t.intFlagCaptures, t.intFlagDefends, t.intBaseDefends,
                                       t.intFCKills,     t.intSentKills};
  const std::size_t k = Raw(kind);
  return k < shown.size() ? shown[k] : t.weapons[k - Raw(CountKind::kFirstWeapon)];
}

EventSources LinesOf(const RunRecord& run, std::size_t slot, CountKind kind) {
  const EventSources& sources = SourcesFor(run, kind);
  EventSources lines;
  ForEachEventBehind(run, slot, kind, [&](std::size_t row) {
    lines.push_back(row < sources.size() ? sources[row] : EventSource{});
  });
  return lines;
}

std::optional<EventSource> DecidingLine(const RunRecord& run, const TeamReason& reason) {
  const EventSources& sources =
      reason.kind == TeamReason::Kind::kFlagEvent ? run.events.flag_sources : run.events.kill_sources;
  if (!reason.row || *reason.row >= sources.size()) return std::nullopt;
  return sources[*reason.row];
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
  for (std::size_t m = 0; m < e.killer.size(); ++m) {
    if (run.Text(e.method[m]) == kSuicideMethod && run.Text(e.killer[m]) == kSuicideKiller) continue;
    const std::size_t killer = rank(e.killer[m]);
    KillCount& cell = cells[{killer, rank(e.victim[m])}];
    if (cell.kills++ == 0) cell = {run.Text(e.killer[m]), run.Text(e.victim[m]), 1};
  }
  std::vector<KillCount> matrix;
  for (auto& [key, cell] : cells) matrix.push_back(std::move(cell));
  return matrix;
}

}  // namespace vantor
