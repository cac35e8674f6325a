#pragma once
// What a run counted, kept beside its results so that every number can be
// explained and exported: the counted events (with the log lines they came
// from, when places were kept), the tally slots, and how each roster
// player got a team or why none.

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "analysis/worksheet.h"
#include "stats/event_index.h"
#include "stats/tally_table.h"
#include "stats/team_assignment.h"

namespace vantor {

// The event lists as the tallies counted them (before the counted events
// were removed), each carrying its places; all share one pool.
struct CountedEvents {
  WorksheetList killer, victim, method;
  WorksheetList flag_text, flag_action;
  WorksheetList destroyer;
  WorksheetList unknown;  // the lines no rule recognised
};

struct RunRecord {
  std::vector<std::string> files;         // the logs, by SourceLine::file
  std::vector<std::string> file_digests;  // their SHA-256 when the import worked it out, else ""
  std::vector<std::string> span_digests;  // per MatchSpan::order, when the import worked them out
  std::uint64_t lines_read = 0;           // the lines of the logs
  TallyTable members;                     // Blue members first, then Red
  std::size_t blue_count = 0;
  std::vector<TeamReason> slot_reasons;  // per slot
  struct NonMember {
    std::string name;
    TeamReason reason;
  };
  std::vector<NonMember> non_members;  // roster players in neither team, in roster order
  CountedEvents events;
  MarkerPlaces markers;  // where matches begin and end (with the places)
  int passes = 0;        // the propagation passes of team assignment in this run

  std::string_view Text(TextId id) const { return events.killer.Pool().Text(id); }
  std::string TeamOf(std::size_t slot) const { return slot < blue_count ? "Blue" : "Red"; }
  // Whether slot is the first of its name (a name in both teams has two).
  bool FirstSlotOf(std::size_t slot) const;
};

// Records what the counting of sheet's members gave: the kill events move
// into the record as counted, and only the rows keep marks are put back
// into List2..List4, the same rows in the same order as removing the
// counted ones would leave. The other lists and the markers are copied;
// passes is how many propagation passes the run made.
std::shared_ptr<const RunRecord> RecordRun(Worksheet& sheet, const EventIndex& events,
                                           const TallyTable& tally, const TeamReasons& reasons,
                                           const std::vector<bool>& keep, int passes);

}  // namespace vantor
