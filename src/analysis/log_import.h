#pragma once
// Import of one game console log into List1, with its three side files.

#include <cstdio>
#include <functional>
#include <string>
#include <string_view>

#include "analysis/host.h"

namespace vantor {

inline constexpr std::string_view kChooseAFile = "Choose a file!";
inline constexpr std::string_view kFileNotFound = "File Not Found";
inline constexpr std::string_view kLogOutputFile = "/logoutput.txt";
inline constexpr std::string_view kIgnoredFile = "/ignored.txt";
inline constexpr std::string_view kChatFile = "/chat.txt";

// The text of a log file, read in pieces so that a log of any size is never
// held twice. Every CR and every LF ends a line of its own; text after the
// last line end is not a line.
class LogText {
 public:
  LogText() = default;
  explicit LogText(std::FILE* file) : file_(file) {}
  ~LogText();
  LogText(LogText&& other) noexcept : file_(other.file_) { other.file_ = nullptr; }
  LogText& operator=(LogText&&) = delete;

  // Calls on_line for every line in order; false when reading failed part
  // way (errno tells why).
  bool ForEachLine(const std::function<void(std::string_view)>& on_line);

 private:
  std::FILE* file_ = nullptr;  // null: the empty text
};

// Opens a log for reading. A missing file shows "File Not Found" and gives
// the empty text; so does one that cannot be read, with a message saying why.
LogText ReadLogText(const std::string& fileName, Host& host);

// The line without its colour codes ("^1" to "^9", "^0", removed in this
// order, each on the result of the one before) and without any caret left.
std::string StripColorCodes(std::string_view line);

// What the import does with one line of the log.
enum class LineFate { kKept, kIgnored, kChat };
LineFate ClassifyLogLine(std::string_view line);

}  // namespace vantor
