#pragma once
// What is written after a run from what it counted, by both programs:
// exports for league sites and spreadsheets, JSON (every member
// slot with its team, counts, weapon counts and team explanation, the
// players without a team, the kill matrix, the count of unrecognised
// lines, the matches with their teams, scores, winners and awards, the
// evening of every player; the schema is docs/json-schema.md) and CSV (one row per member
// slot, RFC 4180). Both are UTF-8, names decoded from Windows-1252.

#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "analysis/host.h"
#include "analysis/output_plan.h"
#include "analysis/statistics_table.h"
#include "analysis/text_file.h"
#include "stats/run_record.h"

namespace vantor {

inline constexpr int kJsonExportVersion = 2;

void WriteJsonExport(std::ostream& out, const RunRecord& run);
void WriteCsvExport(std::ostream& out, const RunRecord& run);

// The most frequent shapes of the unrecognised lines, player names of the
// roster (three characters or more) replaced by "<player>": up to limit
// lines of "count<TAB>shape", most frequent first.
std::vector<std::string> UnknownLineShapes(const RunRecord& run, std::size_t limit);

// The statistics table as text: a header line, then one line per row, the
// eleven cells joined by TAB, each line ended by LF (the bytes of the log).
void WriteStatisticsTable(std::ostream& out, const StatisticsTable& table);

enum class ExportFormat { kJson, kCsv };

// Writes the export to path through a temporary file renamed into place.
IoResult WriteExportFile(ExportFormat format, const RunRecord& run, const std::string& path);

// The outputs a user asked for after a run.
struct RunOutputs {
  std::optional<std::string> json;     // path of the JSON export
  std::optional<std::string> csv;      // path of the CSV export
  bool unknown_summary = false;        // the most frequent unknown line shapes, to summary_out
  std::optional<std::string> summary;  // path of the evening summary (HTML)
  std::string run_date;                // when the run was made, for the summary's header
};

// Writes what outputs asks for; a failed write is shown through host and
// the others are still written.
// An export that plan refuses (a log, or another output of the run) is not
// written either.
void WriteRunOutputs(const RunOutputs& outputs, const RunRecord& run, OutputPlan& plan, Host& host,
                     std::ostream& summary_out);

}  // namespace vantor
