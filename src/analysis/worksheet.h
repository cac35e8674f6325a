#pragma once
// The worksheet: the ten lists that carry every intermediate result of a
// run from one stage to the next, and the logs its rows came from.

#include <cstdint>
#include <future>
#include <string>
#include <utility>
#include <vector>

#include "analysis/match_markers.h"
#include "analysis/worksheet_list.h"

namespace vantor {

struct Worksheet {
  // Rows of List2/List3/List4 are parallel (killer, victim, method of one
  // kill or suicide), as are List5/List6 (player text and action of one
  // flag event).
  WorksheetList List1;   // kept log lines; after KillCheck, the unknown ones
  WorksheetList List2;   // killer, "Himself" for a suicide
  WorksheetList List3;   // victim
  WorksheetList List4;   // method
  WorksheetList List5;   // flag event player text
  WorksheetList List6;   // flag action
  WorksheetList List7;   // roster
  WorksheetList List8;   // Blue members
  WorksheetList List9;   // Red members
  WorksheetList List10;  // destroyers of sentry guns

  // The logs of the run, by SourceLine::file; kept with the places.
  std::vector<std::string> SourceFiles;
  // Per log of SourceFiles, the SHA-256 of its bytes when the run records
  // markers (once AwaitDigests has collected it), else "".
  std::vector<std::string> SourceDigests;
  // The lines of the logs imported so far, as a text editor numbers them.
  std::uint64_t LinesRead = 0;
  // Where the matches of the run begin and end, in log order; kept with
  // the places, since a match is a stretch of them.
  MarkerPlaces Markers;
  // Whether the import records the markers (the matches of a run need them).
  bool RecordsMarkers = false;
  // Per stretch the markers cut out (as the matches of the run are cut, in
  // order), the SHA-256 of its lines, when the import was asked for them
  // (DigestsSpans, with RecordsMarkers): what the archive knows a match by.
  std::vector<std::string> SpanDigests;
  bool DigestsSpans = false;
  // Per log imported with RecordsMarkers, its digest and its stretches',
  // being worked out beside the run; AwaitDigests moves them into
  // SourceDigests and SpanDigests.
  std::vector<std::future<std::pair<std::string, std::vector<std::string>>>> PendingDigests;
  void AwaitDigests();

  Worksheet() { Empty(); }

  // Empties the ten lists in order, with a new pool for all of them: a
  // name has one id wherever it stands, and the texts of earlier runs are
  // let go.
  void Empty();
  // Whether rows carry the log lines they came from: List1 its kept lines,
  // List2 its kill events (for List3 and List4 too), List5 its flag events
  // (for List6 too), List10 its sentry events. Switching empties the lists.
  void KeepPlaces(bool keep);
  bool KeepsPlaces() const { return List1.KeepsPlaces(); }
};

}  // namespace vantor
