#pragma once
// The matches of a run: the stretches of the logs between the markers the
// engine prints (analysis/match_markers.h), each analysed on its own by the
// same stages as the whole run, so that a player can be Blue in one match
// and Red in the next.

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/match_markers.h"
#include "analysis/source_line.h"
#include "stats/counts.h"
#include "stats/run_record.h"
#include "stats/tally_table.h"

namespace vantor {

// A stretch of the logs that may hold a match: events placed in [from, to)
// belong to it. first and last are its first and last line.
struct MatchSpan {
  SourceLine from, to;
  SourceLine first, last;
  std::string_view ended;  // how it ended (a marker's "how")
  // The rows of each event list (by EventList) in the span: [from, to).
  std::array<std::size_t, 3> from_rows{}, to_rows{};
  std::size_t order = 0;  // its place among the spans of the run
};

// Cuts the run along its markers (in log order). Lines before the first
// marker of a log form a match; a map load begins one; every other marker
// ends the match it falls in, and what follows it until the next map load
// (intermission, a new session) belongs to no match. The end of a log ends
// its last match.
std::vector<MatchSpan> SplitMatches(const MarkerPlaces& markers);

// The rows of one event list of a run that lie in the span: [first, second).
std::pair<std::size_t, std::size_t> RowsIn(const WorksheetList& list, EventList which, const MatchSpan& span);

struct Match {
  std::size_t number = 0;  // 1, 2, ... among the matches kept
  MatchSpan span;
  TallyTable members;  // Blue first, then Red, as in the run
  std::size_t blue_count = 0;
  Count blue_score = 0, red_score = 0;  // the team's flag captures

  std::string_view TeamOf(std::size_t slot) const { return slot < blue_count ? "Blue" : "Red"; }
  // "Blue", "Red" or "draw".
  std::string_view Winner() const;
  // The sums of the ten counts of one team's members.
  CountValues Totals(bool blue) const;
};

// The matches of the run: every span with at least one kill, flag or sentry
// event (one without any is a reconnect or a restart before anybody played),
// each with its teams and counts worked out from its own events alone, with
// as many propagation passes as the run made.
std::vector<Match> AnalyseMatches(const RunRecord& run);

}  // namespace vantor
