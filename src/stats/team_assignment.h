#pragma once
// Team assignment: flag events seed the teams (SplitByColor), then each
// propagation pass (subCheckTeam) puts an opponent of a Blue member into
// Red and an opponent of a Red member into Blue, along each player's first
// deciding kill event. Every member keeps how it got its team.

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "analysis/source_line.h"
#include "analysis/worksheet.h"
#include "stats/counts.h"
#include "stats/event_index.h"
#include "stats/tally_table.h"

namespace vantor {

struct TeamReason {
  enum class Kind {
    kFlagEvent,            // seeded by a flag event that names the team
    kPropagated,           // from the first deciding kill with a member of the other team
    kNoDecidingEvent,      // no kill or death with another player
    kOpponentWithoutTeam,  // the first deciding event's other party had no team yet
    kOnlySuicides,         // in the events only by suicides
  };
  Kind kind = Kind::kNoDecidingEvent;
  std::string team;                // "Blue" or "Red" for a member; "" otherwise
  std::string flag_kind;           // kFlagEvent: the kind of flag event that decided
  int pass = 0;                    // kPropagated: the propagation pass, from 1
  std::string other;               // kPropagated, kOpponentWithoutTeam: the other party
  bool as_killer = false;          // kPropagated, kOpponentWithoutTeam: the player was the killer
  std::optional<std::size_t> row;  // the deciding event's row (List5, or List2..4)
  std::optional<SourceLine> line;  // its log line, when places were kept

  static TeamReason Because(Kind kind, std::string team = {}) {
    TeamReason reason;
    reason.kind = kind;
    reason.team = std::move(team);
    return reason;
  }
};

// How each member got its team: blue parallel to List8, red to List9.
struct TeamReasons {
  std::vector<TeamReason> blue, red;
};

// The team colour recorded per slot by the flag counting: "Blue", "Red" or "".
using TeamColours = std::vector<std::string>;

// Fills strPlayerName, the six flag counts and the colour of every roster
// slot (List7's rows), then appends the players coloured Blue to List8 and
// those coloured Red to List9, in roster order.
void SplitByColor(Worksheet& sheet, const EventIndex& events, TallyTable& tally, TeamColours& strPlayerTeam,
                  TeamReasons& reasons);

// One propagation pass, numbered pass (from 1): appends to List8 and List9.
// Members appended during the pass become known only in the next one.
void subCheckTeam(Worksheet& sheet, const EventIndex& events, int pass, TeamReasons& reasons);

// Why a roster player stands in neither team.
TeamReason NonMemberReason(const EventIndex& events, std::string_view name, const WorksheetList& killers);

}  // namespace vantor
