#include "stats/provenance.h"

#include <algorithm>
#include <map>
#include <optional>

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

namespace {

// The kills the matrix counts (suicides are nobody's kill), each name
// ranked by its first appearance among them.
class CountedKills {
 public:
  explicit CountedKills(const CountedEvents& events) : e_(events) {
    ForEach([&](TextId killer, TextId victim) {
      Rank(killer);
      Rank(victim);
    });
  }

  // Calls on_kill(killer's rank, victim's rank) for each kill in order.
  template <typename OnKill>
  void ForEachRanked(OnKill on_kill) const {
    ForEach([&](TextId killer, TextId victim) { on_kill(rank_of_[killer], rank_of_[victim]); });
  }
  const std::vector<TextId>& Names() const { return names_; }  // by rank

 private:
  template <typename OnKill>
  void ForEach(OnKill on_kill) const {
    for (std::size_t m = 0; m < e_.killer.Count(); ++m) {
      if (!IsSuicide(m)) on_kill(e_.killer.IdAt(m), e_.victim.IdAt(m));
    }
  }
  bool IsSuicide(std::size_t m) const {
    const TextId method = e_.method.IdAt(m);
    if (suicide_method_.size() <= method) suicide_method_.resize(method + std::size_t{1});
    if (!suicide_method_[method]) suicide_method_[method] = e_.method.At(m) == kSuicideMethod;
    return *suicide_method_[method] && e_.killer.At(m) == kSuicideKiller;
  }
  void Rank(TextId name) {
    if (rank_of_.size() <= name) rank_of_.resize(name + std::size_t{1}, kUnranked);
    if (rank_of_[name] != kUnranked) return;
    rank_of_[name] = static_cast<std::uint32_t>(names_.size());
    names_.push_back(name);
  }

  static constexpr std::uint32_t kUnranked = UINT32_MAX;
  const CountedEvents& e_;
  mutable std::vector<std::optional<bool>> suicide_method_;  // by pool id, looked up once
  std::vector<std::uint32_t> rank_of_;                       // by pool id
  std::vector<TextId> names_;
};

}  // namespace

std::vector<KillCount> KillMatrix(const RunRecord& run) {
  // A log has millions of kills among a few dozen names: cells are counted
  // by rank, in a table of every pair when it is small enough, else in a
  // map; either way in order of killer, then victim.
  const CountedKills kills(run.events);
  const std::size_t names = kills.Names().size();
  constexpr std::size_t kMaxTable = std::size_t{1} << 24;
  std::vector<std::pair<std::uint64_t, Count>> cells;  // killer rank << 32 | victim rank
  if (names * names <= kMaxTable) {
    std::vector<Count> table(names * names);
    kills.ForEachRanked([&](std::size_t killer, std::size_t victim) { ++table[killer * names + victim]; });
    for (std::size_t cell = 0; cell < table.size(); ++cell) {
      if (table[cell] != 0) cells.emplace_back(std::uint64_t{cell / names} << 32 | cell % names, table[cell]);
    }
  } else {
    std::map<std::uint64_t, Count> map;
    kills.ForEachRanked([&](std::uint64_t killer, std::uint64_t victim) { ++map[killer << 32 | victim]; });
    cells.assign(map.begin(), map.end());
  }
  const StringPool& pool = run.events.killer.Pool();
  std::vector<KillCount> matrix;
  for (const auto& [ranks, count] : cells)
    matrix.push_back({std::string(pool.Text(kills.Names()[ranks >> 32])),
                      std::string(pool.Text(kills.Names()[ranks & UINT32_MAX])), count});
  return matrix;
}

}  // namespace vantor
