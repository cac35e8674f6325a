#include "stats/provenance.h"

#include <map>
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

// Calls take(row) for every event row of the kind behind the count.
template <typename Take>
void ForEachEventBehind(const RunRecord& run, std::size_t slot, CountKind kind, Take take) {
  const CountedEvents& e = run.events;
  const std::string& name = run.members[slot].strPlayerName;
  const bool first = run.FirstSlotOf(slot);
  const auto is_suicide = [&](std::size_t m) { return run.Text(e.method[m]) == kSuicideMethod; };
  const std::size_t k = Raw(kind);
  if (kind == CountKind::kFrags || k >= Raw(CountKind::kFirstWeapon)) {
    const auto weapon = k >= Raw(CountKind::kFirstWeapon) ? std::optional(kWeaponTable[k - Raw(CountKind::kFirstWeapon)].method_name)
                                                          : std::nullopt;
    if (weapon && !first) return;  // a second slot's weapon kills were consumed by the first
    for (std::size_t m = 0; m < e.killer.size(); ++m) {
      if (run.Text(e.killer[m]) == name && (!weapon || run.Text(e.method[m]) == *weapon)) take(m);
    }
  } else if (kind == CountKind::kDeaths || kind == CountKind::kSuicides) {
    if (kind == CountKind::kSuicides && !first) return;
    for (std::size_t m = 0; m < e.victim.size(); ++m) {
      if (run.Text(e.victim[m]) != name) continue;
      const bool counted = kind == CountKind::kSuicides ? is_suicide(m) : first || !is_suicide(m);
      if (counted) take(m);
    }
  } else if (kind == CountKind::kSentryKills) {
    for (std::size_t m = 0; m < e.destroyer.size(); ++m) {
      if (run.Text(e.destroyer[m]) == name) take(m);
    }
  } else {
    const std::string_view flag_kind = kFlagKindNames[Index(kFlagCounts[k - Raw(CountKind::kFlagGrabs)])];
    for (std::size_t j = 0; j < e.flag_text.size(); ++j) {
      // Flag events are credited to every name their player text contains.
      if (Contains(run.Text(e.flag_text[j]), name) && Contains(run.Text(e.flag_action[j]), flag_kind)) take(j);
    }
  }
}

const SourceLines& SourcesFor(const RunRecord& run, CountKind kind) {
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

SourceLines LinesOf(const RunRecord& run, std::size_t slot, CountKind kind) {
  const SourceLines& sources = SourcesFor(run, kind);
  SourceLines lines;
  ForEachEventBehind(run, slot, kind, [&](std::size_t row) {
    lines.push_back(row < sources.size() ? sources[row] : SourceLine{});
  });
  return lines;
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
