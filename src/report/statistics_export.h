#pragma once
// Exports of a run for league sites and spreadsheets: JSON (every member
// slot with its team, counts, weapon counts and team explanation, the
// players without a team, the kill matrix, the count of unrecognised
// lines; the schema is docs/json-schema.md) and CSV (one row per member
// slot, RFC 4180). Both are UTF-8, names decoded from Windows-1252.

#include <ostream>
#include <string>
#include <vector>

#include "stats/run_record.h"

namespace vantor {

inline constexpr int kJsonExportVersion = 1;

void WriteJsonExport(std::ostream& out, const RunRecord& run);
void WriteCsvExport(std::ostream& out, const RunRecord& run);

// The most frequent shapes of the unrecognised lines, player names of the
// roster (three characters or more) replaced by "<player>": up to limit
// lines of "count<TAB>shape", most frequent first.
std::vector<std::string> UnknownLineShapes(const RunRecord& run, std::size_t limit);

}  // namespace vantor
