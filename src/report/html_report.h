#pragma once
// The HTML report: a frag table, a flag table and eight weapon tables by
// player class. The document is fixed text with names and numbers put in;
// its odd markup (unclosed cells, "</body></html>" after every table) is
// the format that readers of these reports know, kept byte for byte.

#include <cstddef>
#include <ostream>
#include <string>

#include "analysis/statistics_table.h"
#include "analysis/text_file.h"
#include "stats/tally_table.h"

namespace vantor {

// Writes the report for the slots 0 to nB + nR - 1 of tally, Blue members
// first. The team totals are read back as text from the statistics table's
// totals rows, at rows nB and nB + nR + 2. Every line ends with CR LF.
void WriteHtmlReport(std::ostream& out, const TallyTable& tally, std::size_t nB, std::size_t nR,
                     const StatisticsTable& table);

// Writes that report to path, in place of what was there only when complete.
IoResult WriteReportFile(const std::string& path, const TallyTable& tally, std::size_t nB, std::size_t nR,
                         const StatisticsTable& table);

}  // namespace vantor
