#pragma once
// What a run counted, kept beside its results so that every number can be
// explained: the counted events with the log lines they came from, the
// tally slots, and how each roster player got a team or why none.

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "analysis/source_line.h"
#include "analysis/string_pool.h"
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
  std::string team;       // "Blue" or "Red" for a member; "" otherwise
  std::string flag_kind;  // kFlagEvent: the kind of flag event that decided
  int pass = 0;           // kPropagated: the propagation pass, from 1
  std::string other;      // kPropagated, kOpponentWithoutTeam: the other party
  bool as_killer = false; // kPropagated, kOpponentWithoutTeam: the player was the killer
  std::optional<std::size_t> row;  // the deciding event's row (List5, or List2..4)
  std::optional<SourceLine> line;  // its log line, when places were kept

  static TeamReason Because(Kind kind, std::string team = {}) {
    TeamReason reason;
    reason.kind = kind;
    reason.team = std::move(team);
    return reason;
  }
};

// The event lists as the tallies counted them (before the counted events
// were removed), with their places.
struct CountedEvents {
  std::shared_ptr<const StringPool> pool;
  std::vector<TextId> killer, victim, method;
  EventSources kill_sources;
  std::vector<TextId> flag_text, flag_action;
  EventSources flag_sources;
  std::vector<TextId> destroyer;
  EventSources sentry_sources;
  std::vector<TextId> unknown;  // the lines no rule recognised
};

struct RunRecord {
  std::vector<std::string> files;  // the logs, by SourceLine::file
  TallyTable members;                // Blue members first, then Red
  std::size_t blue_count = 0;
  std::vector<TeamReason> slot_reasons;  // per slot
  struct NonMember {
    std::string name;
    TeamReason reason;
  };
  std::vector<NonMember> non_members;  // roster players in neither team, in roster order
  CountedEvents events;

  const std::string& Text(TextId id) const { return events.pool->Text(id); }
  std::string TeamOf(std::size_t slot) const { return slot < blue_count ? "Blue" : "Red"; }
  // Whether slot is the first of its name (a name in both teams has two).
  bool FirstSlotOf(std::size_t slot) const;
};

}  // namespace vantor
