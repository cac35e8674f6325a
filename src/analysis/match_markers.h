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

#include "analysis/large_array.h"
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

// A log can hold hundreds of thousands (a client that left and came back).
using MarkerPlaces = LargeVector<MarkerPlace>;

namespace marker_bytes {

// The bytes a marker can begin with (those whose pattern starts with a
// fixed text) and end with (those whose pattern starts with a variable).
struct ByteSets {
  std::array<bool, 256> first{}, last{};
};

constexpr ByteSets Make() {
  ByteSets sets;
  for (const MatchMarker& marker : kMatchMarkers) {
    const std::size_t star = marker.pattern.find('*');
    if (star != 0) {
      sets.first[static_cast<unsigned char>(marker.pattern.front())] = true;
    } else {
      sets.last[static_cast<unsigned char>(marker.pattern.back())] = true;
    }
  }
  return sets;
}

inline constexpr ByteSets kSets = Make();

}  // namespace marker_bytes

// The row of kMatchMarkers the line is, when it passes the byte test.
std::optional<std::size_t> MatchMarkerRow(std::string_view line);

// The row of kMatchMarkers the line is, if any. Cheap for the lines of a
// log that are no marker, as the import asks for every line: most fail a
// test of their first or last byte, made here without a call.
inline std::optional<std::size_t> MatchMarkerOf(std::string_view line) {
  if (line.empty() || (!marker_bytes::kSets.first[static_cast<unsigned char>(line.front())] &&
                       !marker_bytes::kSets.last[static_cast<unsigned char>(line.back())]))
    return std::nullopt;
  return MatchMarkerRow(line);
}

}  // namespace vantor
