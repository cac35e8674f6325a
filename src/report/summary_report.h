#pragma once
// The evening summary: one self-contained HTML5 file (styles and charts
// inline, nothing fetched, no script needed to read it) with the matches,
// their winners, the evening table, the awards, the kill matrix, kills by
// weapon class, a timeline per match and the most frequent unrecognised
// line shapes. Every text from a log is decoded from Windows-1252 and
// escaped, so a summary is safe to publish whatever the players are called.

#include <cstdint>
#include <ostream>
#include <string>
#include <vector>

#include "analysis/text_file.h"
#include "stats/matches.h"
#include "stats/run_record.h"

namespace vantor {

inline constexpr std::string_view kProgramAndVersion = "Vantor Log Analyzer 0.80";

struct LogFacts {
  std::string path;
  std::uintmax_t size = 0;
  std::string sha256;  // empty when the log could not be read again
};

// The size and SHA-256 of each log, as they are now.
// digests: the files' SHA-256 where known ("" or missing: read the file).
std::vector<LogFacts> DescribeLogs(const std::vector<std::string>& files,
                                   const std::vector<std::string>& digests = {});

struct SummaryHeader {
  std::string run_date;  // when the run was made, as the reader should see it
  std::vector<LogFacts> logs;
};

void WriteSummary(std::ostream& out, const RunRecord& run, const std::vector<Match>& matches,
                  const SummaryHeader& header);

// Writes the summary of run to path through a temporary file renamed into place.
IoResult WriteSummaryFile(const std::string& path, const RunRecord& run, const std::string& run_date);

// The summary's style sheet and its table-sorting script, for the other
// pages that should look like it.
std::string_view SummaryStyle();
std::string_view SummarySortScript();

// The summary's name beside a report: "game.html" gives "game-summary.html".
std::string SummaryPathFor(const std::string& report_path);

}  // namespace vantor
