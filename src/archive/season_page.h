#pragma once
// The season's standings as one self-contained HTML page in the style of
// the evening summary: the standings table, then each player's matches
// in the order they were played.

#include <ostream>
#include <string>

#include "analysis/text_file.h"
#include "archive/season_standings.h"

namespace vantor {

struct SeasonPageHeader {
  std::string archive;  // the archive's path
  SeasonPeriod period;
  std::string written;  // when the page was written
};

void WriteSeasonPage(std::ostream& out, const Standings& standings, const SeasonPageHeader& header);

// Writes the page to path through a temporary file renamed into place.
IoResult WriteSeasonPageFile(const std::string& path, const Standings& standings,
                             const SeasonPageHeader& header);

}  // namespace vantor
