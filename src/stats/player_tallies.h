#pragma once
// GetIndivStats's counting: one tally slot per team member (Blue first,
// then Red) and the statistics table team by team with a totals row each.
//
// Counting a member's suicides and weapon kills consumes those events, so
// a name that stands in both teams finds them gone at its second slot: that
// slot keeps the frags, flag counts and sentry kills, has its deaths
// reduced by its suicides, and gets no suicides and no weapon kills.

#include <cstdint>
#include <functional>
#include <vector>

#include "analysis/statistics_table.h"
#include "analysis/worksheet.h"
#include "stats/event_index.h"
#include "stats/tally_table.h"
#include "stats/team_assignment.h"

namespace vantor {

// Fills tally with one slot per member of List8, then of List9. The flag
// counting records colours in strPlayerTeam at each member's place in its
// own team list. progress(value) is called once per slot.
void CountTallies(const Worksheet& sheet, const EventIndex& events, TallyTable& tally,
                  TeamColours& strPlayerTeam, const std::function<void(std::int64_t)>& progress);

// Appends the rows of the statistics table: the nB Blue slots and their
// totals, a separator row of single spaces, the Red slots and their totals.
void FillStatisticsTable(const TallyTable& tally, std::size_t nB, StatisticsTable& table);

// Per kill event row, whether the counting left it (true) or consumed it:
// the suicides of members and the weapon kills by members are consumed.
std::vector<bool> UncountedEvents(const Worksheet& sheet);

}  // namespace vantor
