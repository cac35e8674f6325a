#pragma once
// Import of one game console log into List1, with its three side files.

#include <string>
#include <string_view>

#include "analysis/host.h"
#include "analysis/line_rules.h"
#include "analysis/log_pieces.h"
#include "analysis/output_plan.h"
#include "analysis/worksheet.h"

namespace vantor {

inline constexpr std::string_view kChooseAFile = "Choose a file!";
inline constexpr std::string_view kFileNotFound = "File Not Found";
inline constexpr std::string_view kLogOutputFile = "/logoutput.txt";
inline constexpr std::string_view kIgnoredFile = "/ignored.txt";
inline constexpr std::string_view kChatFile = "/chat.txt";

// The path of a log as a file dialog gives it: absolute, its directory
// resolved as the system resolves it (".." after a link goes back from
// where the link leads). A path whose absolute form the system could not
// open (too long) stays as it was given, which works.
std::string ResolvedLogPath(const std::string& path);

// Opens a log for reading. A missing file shows "File Not Found" and gives
// the empty text; so does one that cannot be read, with a message saying why.
LogText ReadLogText(const std::string& fileName, Host& host);

// Reads the log fileName into List1 (after the rows already there), writing
// logoutput.txt (all of List1 afterwards), ignored.txt and chat.txt into
// side_dir. Problems are shown through host; the import goes on as far as
// it can.
// A side file that plan refuses (it is a log of the run) is not written;
// an empty side_dir writes no side files at all.
void ImportLog(const std::string& fileName, const std::string& side_dir, Host& host, OutputPlan& plan,
               Worksheet& sheet);

}  // namespace vantor
