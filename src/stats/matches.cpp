#include "stats/matches.h"

#include <algorithm>
#include <optional>
#include <unordered_map>

#include "stats/event_index.h"
#include "stats/player_roster.h"
#include "stats/player_tallies.h"
#include "stats/team_assignment.h"

namespace vantor {

namespace {

SourceLine LineBefore(SourceLine place) {
  return SourceLine::At(place.file, place.line > 1 ? place.line - 1 : place.line);
}

}  // namespace

std::pair<std::size_t, std::size_t> RowsIn(const WorksheetList& list, EventList which,
                                           const MatchSpan& span) {
  const std::size_t end = std::min(span.to_rows[which], list.Count());
  return {std::min(span.from_rows[which], end), end};
}

namespace {

// The ids of the run's pool in a match's own pool: a match names a few
// dozen texts in millions of rows, so each is interned once.
class PoolIds {
 public:
  explicit PoolIds(StringPool& pool) : pool_(pool) {}
  TextId operator()(const WorksheetList& source, std::size_t row) {
    const auto [at, added] = ids_.try_emplace(source.IdAt(row), 0);
    if (added) at->second = pool_.Intern(source.At(row));
    return at->second;
  }

 private:
  StringPool& pool_;
  std::unordered_map<TextId, TextId> ids_;
};

// Appends the rows [range) of each source list to its target.
void CopyRows(std::initializer_list<std::pair<const WorksheetList*, WorksheetList*>> lists,
              std::pair<std::size_t, std::size_t> range, PoolIds& ids) {
  for (const auto& [source, target] : lists) {
    target->Reserve(range.second - range.first);
    for (std::size_t row = range.first; row < range.second; ++row) target->AppendId(ids(*source, row));
  }
}

// A worksheet with the events of the run that lie in the span.
void FillSheet(const RunRecord& run, const MatchSpan& span, Worksheet& sheet) {
  const CountedEvents& e = run.events;
  PoolIds ids(sheet.List2.Pool());  // the lists of a worksheet share one pool
  CopyRows({{&e.killer, &sheet.List2}, {&e.victim, &sheet.List3}, {&e.method, &sheet.List4}},
           RowsIn(e.killer, kKillEvents, span), ids);
  CopyRows({{&e.flag_text, &sheet.List5}, {&e.flag_action, &sheet.List6}},
           RowsIn(e.flag_text, kFlagEvents, span), ids);
  CopyRows({{&e.destroyer, &sheet.List10}}, RowsIn(e.destroyer, kSentryEvents, span), ids);
}

// The stages of a run, from the roster to the tallies, over one match.
void AnalyseSheet(Worksheet& sheet, int passes, Match& match) {
  GetIndividualPlayers(sheet.List2, sheet.List3, sheet.List7);
  const EventIndex events(sheet);
  TeamColours colours;
  TeamReasons reasons;
  SplitByColor(sheet, events, match.members, colours, reasons);
  for (int pass = 1; pass <= passes; ++pass) subCheckTeam(sheet, events, pass, reasons);
  CountTallies(sheet, events, match.members, colours, [](std::int64_t) {});
  match.blue_count = sheet.List8.Count();
  for (std::size_t slot = 0; slot < match.members.size(); ++slot) {
    (slot < match.blue_count ? match.blue_score : match.red_score) += match.members[slot].intFlagCaptures;
  }
}

}  // namespace

std::vector<MatchSpan> SplitMatches(const MarkerPlaces& markers) {
  std::vector<MatchSpan> spans;
  std::optional<MarkerPlace> open = MarkerPlace{SourceLine::At(0, 1)};  // where the open span began
  for (const MarkerPlace& marker : markers) {
    const MarkerKind kind = marker.Kind();
    if (open) {
      const SourceLine last = kind == MarkerKind::kMatchEnd ? marker.place : LineBefore(marker.place);
      spans.push_back({open->place, marker.place, open->place, last, marker.How(), open->events_before,
                       marker.events_before, spans.size()});
    }
    open.reset();
    if (kind == MarkerKind::kMapLoad) open = marker;
    if (kind == MarkerKind::kEndOfLog)
      open = MarkerPlace{SourceLine::At(marker.place.file + 1, 1), 0, 0, marker.events_before};
  }
  // Without markers (a run that recorded none), the whole run is one match.
  if (markers.empty()) {
    constexpr std::size_t kAll = static_cast<std::size_t>(-1);
    spans.push_back({open->place,
                     SourceLine::At(SourceLine::kMaxFile, 0),
                     open->place,
                     open->place,
                     kEndOfLogHow,
                     {},
                     {kAll, kAll, kAll}});
  }
  return spans;
}

std::string_view Match::Winner() const {
  if (blue_score == red_score) return "draw";
  return blue_score > red_score ? "Blue" : "Red";
}

CountValues Match::Totals(bool blue) const {
  CountValues totals{};
  for (std::size_t slot = blue ? 0 : blue_count; slot < (blue ? blue_count : members.size()); ++slot) {
    const CountValues values = ValuesOf(members[slot]);
    for (std::size_t k = 0; k < totals.size(); ++k) totals[k] += values[k];
  }
  return totals;
}

std::vector<Match> AnalyseMatches(const RunRecord& run) {
  std::vector<Match> matches;
  for (const MatchSpan& span : SplitMatches(run.markers)) {
    Worksheet sheet;
    FillSheet(run, span, sheet);
    if (sheet.List2.Empty() && sheet.List5.Empty() && sheet.List10.Empty()) continue;
    Match match;
    match.number = matches.size() + 1;
    match.span = span;
    AnalyseSheet(sheet, run.passes, match);
    matches.push_back(std::move(match));
  }
  return matches;
}

}  // namespace vantor
