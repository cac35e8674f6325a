#pragma once
// The lines the game's engine prints where a match begins or ends, as one
// table: a map (re)load, the end of a match (time, capture or frag limit
// hit), the client leaving, a new session. The import records where they
// fall; the matches of a run are cut along them (stats/matches.h).

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

#include "analysis/source_line.h"

namespace vantor {

enum class MarkerKind {
  kMapLoad,     // a match begins after it
  kMatchEnd,    // a limit was hit: what follows until the next map load is intermission
  kClientLeft,  // the client disconnected or quit
  kNewSession,  // the game opened its console log again
  kEndOfLog,    // the end of a log file of the run (no line of the log)
};

struct MatchMarker {
  // The whole line; one '*' stands for a variable text (a number, a name,
  // a date) that holds none of the characters of not_in_variable, so that
  // a chat line quoting a marker is not taken for one.
  std::string_view pattern;
  std::string_view not_in_variable;
  MarkerKind kind;
  std::string_view how;  // how a match ended at this marker, for the reader
};

inline constexpr std::array<MatchMarker, 9> kMatchMarkers = {{
    {"CL_InitCGame: * seconds", ":^", MarkerKind::kMapLoad, "map reloaded"},
    {"Timelimit hit.", "", MarkerKind::kMatchEnd, "time limit"},
    {"Red hit the capturelimit.", "", MarkerKind::kMatchEnd, "Red hit the capture limit"},
    {"Blue hit the capturelimit.", "", MarkerKind::kMatchEnd, "Blue hit the capture limit"},
    {"Red hit the fraglimit.", "", MarkerKind::kMatchEnd, "Red hit the frag limit"},
    {"Blue hit the fraglimit.", "", MarkerKind::kMatchEnd, "Blue hit the frag limit"},
    {"*^7 hit the fraglimit.", ":", MarkerKind::kMatchEnd, "a player hit the frag limit"},
    {"----- CL_Shutdown -----", "", MarkerKind::kClientLeft, "the client left"},
    {"logfile opened on *", "^", MarkerKind::kNewSession, "a new session began"},
}};

// How a match ended at the end of a log file.
inline constexpr std::string_view kEndOfLogHow = "end of the log";

// The event lists a marker divides: kills (List2..List4), flag events
// (List5/List6) and destroyed sentry guns (List10).
enum EventList : std::size_t { kKillEvents, kFlagEvents, kSentryEvents };

// Where a marker stands: the place of its line and its row of kMatchMarkers
// (kMatchMarkers.size() for the end of a log); the kept lines before it (in
// List1) and, once KillCheck has made the events, the events before it in
// each event list. A match is cut out of the event lists by these counts,
// so no line needs to keep its place for it.
struct MarkerPlace {
  SourceLine place;
  std::size_t row = 0;
  std::size_t kept_before = 0;
  std::array<std::size_t, 3> events_before{};

  MarkerKind Kind() const {
    return row < kMatchMarkers.size() ? kMatchMarkers[row].kind : MarkerKind::kEndOfLog;
  }
  std::string_view How() const { return row < kMatchMarkers.size() ? kMatchMarkers[row].how : kEndOfLogHow; }
};

using MarkerPlaces = std::vector<MarkerPlace>;

// The row of kMatchMarkers the line is, if any. Cheap for the lines of a
// log that are no marker: most fail a test of their first or last byte.
std::optional<std::size_t> MatchMarkerOf(std::string_view line);

}  // namespace vantor
