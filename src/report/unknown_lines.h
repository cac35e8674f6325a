#pragma once
// The lines no message rule recognised, written to "unknown.txt" among the
// side files at the end of a run.

#include <string>
#include <string_view>

#include "analysis/text_file.h"
#include "analysis/worksheet_list.h"

namespace vantor {

inline constexpr std::string_view kUnknownFile = "/unknown.txt";

// Writes every row of lines, then one empty line, to path (side_dir +
// kUnknownFile).
IoResult WriteUnknownLines(const WorksheetList& lines, const std::string& path);

}  // namespace vantor
