#pragma once
// Why a number is what it is: for a tally slot and one of its counts, the
// log lines of exactly the events the counting procedures counted; and the
// kill matrix over all recognised kills.

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "analysis/source_line.h"
#include "stats/counts.h"
#include "stats/flag_kinds.h"
#include "stats/run_record.h"
#include "stats/weapon_table.h"

namespace vantor {

// The places and texts of the lines of the events behind one count of one
// slot, in event order. (Empty places and texts when the run kept none;
// their number is the count either way.)
EventSources LinesOf(const RunRecord& run, std::size_t slot, CountKind kind);
// How many events lie behind that count: LinesOf's size, without the places.
Count EventsBehind(const RunRecord& run, std::size_t slot, CountKind kind);

// The line of the event that decided a team reason, with its text; none
// when the reason has no such event or the run kept no places.
std::optional<EventSource> DecidingLine(const RunRecord& run, const TeamReason& reason);

struct KillCount {
  std::string killer, victim;
  Count kills = 0;
};
// Killer x victim over every recognised kill, teamed or not; suicides are
// not kills of anybody and are left out. Ordered by killer, then victim,
// each in order of first appearance.
std::vector<KillCount> KillMatrix(const RunRecord& run);

}  // namespace vantor
