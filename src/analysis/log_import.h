#pragma once
// Import of one game console log into List1, with its three side files.

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "analysis/host.h"
#include "analysis/output_plan.h"
#include "analysis/worksheet.h"

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

  // Calls on_line(std::string_view) for every line in order, or
  // on_line(line, end) with the CR or LF that ended it, and read(bytes so
  // far, the piece) after every piece; false when reading failed part way (errno tells
  // why).
  template <typename OnLine, typename OnRead = void (*)(std::uint64_t, std::string_view)>
  bool ForEachLine(
      OnLine&& on_line, OnRead on_read = [](std::uint64_t, std::string_view) {});
  // The size of the file; 0 for the empty text.
  std::uint64_t Size() const;

 private:
  static constexpr std::size_t kReadPiece = 1 << 20;

  std::FILE* file_ = nullptr;  // null: the empty text
};

// The first CR or LF in [from, end), or end. next_lf and next_cr remember
// where the last searches ended, so that a piece is searched once however
// its lines end.
struct LineEndFinder {
  const char* next_lf = nullptr;
  const char* next_cr = nullptr;

  const char* Next(const char* from, const char* end) {
    if (next_lf < from) next_lf = Search(from, end, '\n');
    if (next_cr < from) next_cr = Search(from, end, '\r');
    return next_lf < next_cr ? next_lf : next_cr;
  }
  static const char* Search(const char* from, const char* end, char c) {
    const void* at = std::memchr(from, c, static_cast<std::size_t>(end - from));
    return at != nullptr ? static_cast<const char*>(at) : end;
  }
};

template <typename OnLine, typename OnRead>
bool LogText::ForEachLine(OnLine&& on_line, OnRead on_read) {
  if (file_ == nullptr) return true;
  std::vector<char> buffer(kReadPiece);
  std::string carry;  // the start of a line that runs past a piece
  for (std::uint64_t read = 0;;) {
    const std::size_t got = std::fread(buffer.data(), 1, buffer.size(), file_);
    on_read(read += got, std::string_view(buffer.data(), got));
    const char* at = buffer.data();
    const char* const end = at + got;
    LineEndFinder ends;
    for (const char* eol = ends.Next(at, end); eol != end; eol = ends.Next(at, end)) {
      const auto call = [&](std::string_view line) {
        if constexpr (std::is_invocable_v<OnLine, std::string_view, char>) {
          on_line(line, *eol);
        } else {
          on_line(line);
        }
      };
      if (carry.empty()) {
        call(std::string_view(at, static_cast<std::size_t>(eol - at)));
      } else {
        carry.append(at, eol);
        call(std::string_view(carry));
        carry.clear();
      }
      at = eol + 1;
    }
    carry.append(at, end);
    if (got < buffer.size()) return std::ferror(file_) == 0;
  }
}

// The line numbers a text editor shows: a CR LF pair ends one line, though
// the import meets an empty line between the two.
class PhysicalLines {
 public:
  std::uint64_t Number(std::string_view line, char end) {
    const bool second_half_of_crlf = end == '\n' && line.empty() && last_end_ == '\r';
    last_end_ = end;
    return second_half_of_crlf ? next_ - 1 : next_++;
  }
  // The lines numbered so far.
  std::uint64_t Count() const { return next_ - 1; }

 private:
  std::uint64_t next_ = 1;
  char last_end_ = 0;
};

// The path of a log as a file dialog gives it: absolute, its directory
// resolved as the system resolves it (".." after a link goes back from
// where the link leads). A path whose absolute form the system could not
// open (too long) stays as it was given, which works.
std::string ResolvedLogPath(const std::string& path);

// Opens a log for reading. A missing file shows "File Not Found" and gives
// the empty text; so does one that cannot be read, with a message saying why.
LogText ReadLogText(const std::string& fileName, Host& host);

// The line without its colour codes ("^1" to "^9", "^0", removed in this
// order, each on the result of the one before) and without any caret left.
std::string StripColorCodes(std::string_view line);

// Reads the log fileName into List1 (after the rows already there), writing
// logoutput.txt (all of List1 afterwards), ignored.txt and chat.txt into
// side_dir. Problems are shown through host; the import goes on as far as
// it can.
// A side file that plan refuses (it is a log of the run) is not written;
// an empty side_dir writes no side files at all.
void ImportLog(const std::string& fileName, const std::string& side_dir, Host& host, OutputPlan& plan,
               Worksheet& sheet);

// What the import does with one line of the log.
enum class LineFate { kKept, kIgnored, kChat };
LineFate ClassifyLogLine(std::string_view line);

}  // namespace vantor
