#pragma once
// Where the report of a run goes: named after the log, in the output
// directory or, when none is set, next to the log.

#include <string>
#include <string_view>

namespace vantor {

class Host;

inline constexpr std::string_view kOutputDirSetting = "OutputDir";
inline constexpr std::string_view kInputDirSetting = "InputDir";

// The report path derived from the output directory and the log path: every
// ".log" becomes ".html" (case matters), in the whole path when no output
// directory is set, else in the log's file name, which is appended to the
// directory as it is stored. When that would name the log itself, ".html"
// is appended instead, so a log is never written over. Empty when no log
// was chosen.
std::string DeriveReportPath(std::string_view output_dir, std::string_view log_path);

// The report path of the current run, from the host's setting and log.
std::string GetReportPath(const Host& host);

}  // namespace vantor
