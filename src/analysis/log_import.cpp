#include "analysis/log_import.h"

#include <fcntl.h>
#include <limits.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <vector>

#include "analysis/pipeline_stage.h"
#include "analysis/text_file.h"
#include "analysis/text_ops.h"
#include "report/sha256.h"

namespace vantor {

namespace {

constexpr std::array<std::string_view, 11> kColorCodes = {"^1", "^2", "^3", "^4", "^5", "^6",
                                                          "^7", "^8", "^9", "^0", "^"};

std::string ReadFailure(const std::string& path, int error) {
  return "Could not read " + path + ": " + std::strerror(error);
}

// Without two carets in a row, removing one code never joins a caret to a
// digit, so the codes can all go in one pass: each caret, with the digit
// after it when there is one.
std::string StripSeparateCodes(std::string_view line) {
  std::string text;
  text.reserve(line.size());
  for (std::size_t i = 0; i < line.size(); ++i) {
    if (line[i] != '^') {
      text.push_back(line[i]);
    } else if (i + 1 < line.size() && line[i + 1] >= '0' && line[i + 1] <= '9') {
      ++i;
    }
  }
  return text;
}

void Report(Host& host, const IoResult& result) {
  if (!result.ok) host.ShowMessage(result.message, MessageIcon::kCritical);
}

}  // namespace

std::uint64_t LogText::Size() const {
  struct stat st;
  return file_ != nullptr && ::fstat(::fileno(file_), &st) == 0 ? static_cast<std::uint64_t>(st.st_size) : 0;
}

LogText::~LogText() {
  if (file_ != nullptr) std::fclose(file_);
}

namespace {

// What a file is when it is no regular file; empty for a regular one.
std::string_view KindOf(mode_t mode) {
  if (S_ISREG(mode)) return {};
  if (S_ISDIR(mode)) return "a directory";
  if (S_ISFIFO(mode)) return "a named pipe (FIFO)";
  if (S_ISCHR(mode)) return "a character device";
  if (S_ISBLK(mode)) return "a block device";
  if (S_ISSOCK(mode)) return "a socket";
  return "not a regular file";
}

std::string NotALog(const std::string& path, std::string_view kind) {
  return "Could not read " + path + ": it is " + std::string(kind) + ", not a log file";
}

}  // namespace

std::string ResolvedLogPath(const std::string& path) {
  const std::size_t slash = path.rfind('/');
  const std::string dir = slash == std::string::npos ? "." : slash == 0 ? "/" : path.substr(0, slash);
  const std::string name = slash == std::string::npos ? path : path.substr(slash + 1);
  if (path.empty() || name.empty() || name == "." || name == "..") return path;
  char resolved[PATH_MAX];
  if (::realpath(dir.c_str(), resolved) == nullptr) return path;
  const std::string full = std::string(resolved) + (resolved[1] == '\0' ? "" : "/") + name;
  return full.size() < PATH_MAX ? full : path;
}

LogText ReadLogText(const std::string& fileName, Host& host) {
  struct stat st;
  if (::stat(fileName.c_str(), &st) != 0 && errno == ENOENT) {
    host.ShowMessage(kFileNotFound, MessageIcon::kCritical);
    return LogText();
  }
  // Opened without waiting (a pipe has no writer), then checked: only a
  // regular file is read; a pipe or a device could block or never end.
  const int fd = ::open(fileName.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
  if (fd < 0) {
    const int error = errno;
    host.ShowMessage(error == ENXIO ? NotALog(fileName, KindOf(st.st_mode)) : ReadFailure(fileName, error),
                     MessageIcon::kCritical);
    return LogText();
  }
  std::FILE* file = ::fstat(fd, &st) == 0 && KindOf(st.st_mode).empty() ? ::fdopen(fd, "rb") : nullptr;
  if (file == nullptr) {
    host.ShowMessage(NotALog(fileName, KindOf(st.st_mode)), MessageIcon::kCritical);
    ::close(fd);
    return LogText();
  }
  ::fcntl(fd, F_SETFL, ::fcntl(fd, F_GETFL) & ~O_NONBLOCK);
  return LogText(file);
}

std::string StripColorCodes(std::string_view line) {
  if (line.find('^') == std::string_view::npos) return std::string(line);
  if (line.find("^^") == std::string_view::npos) return StripSeparateCodes(line);
  std::string text(line);
  for (std::string_view code : kColorCodes) {
    if (text.find(code) != std::string::npos) text = ReplaceAll(text, code, "");
  }
  return text;
}

namespace {

bool HasCode7(std::string_view line) {
  for (std::size_t at = line.find('^'); at != std::string_view::npos; at = line.find('^', at + 1)) {
    if (at + 1 < line.size() && line[at + 1] == '7') return true;
  }
  return false;
}

const TextSearcher kSentryDown("Sentry Gun was destroyed by ");
// Lines with these texts are never kept, coloured or not.
const TextSearcher kNeverKept[] = {TextSearcher("entered the game"), TextSearcher("connected"),
                                   TextSearcher("Unpure client detected"),
                                   TextSearcher("Server command overflow")};

}  // namespace

LineFate ClassifyLogLine(std::string_view line) {
  const bool has_code7 = HasCode7(line);
  // Anything with a colon is somebody talking; coloured chat is kept apart.
  if (line.find(':') != std::string_view::npos) return has_code7 ? LineFate::kChat : LineFate::kIgnored;
  if (!has_code7 && !kSentryDown.In(line)) return LineFate::kIgnored;
  for (const TextSearcher& never_kept : kNeverKept) {
    if (never_kept.In(line)) return LineFate::kIgnored;
  }
  return LineFate::kKept;
}

namespace {

// Kept lines stripped of their colour codes once per distinct line, and
// appended to the worksheet. The reading thread gathers them in batches;
// a thread of their own looks each batch up in one go (see
// StringPool::InternAll) and appends its rows in order, while the reading
// thread goes on with the next lines. Until Finish, only that thread
// touches the list, its pool and logoutput.txt.
class KeptLines {
 public:
  // A list that keeps places gets the place of every kept line of file.
  KeptLines(WorksheetList& list, TextFileWriter& log_output, std::size_t file)
      : list_(list),
        log_output_(log_output),
        file_(file),
        stripped_{StringPool::kEmpty},
        stage_([this](Batch& batch) { Append(batch); }, [](Batch& batch) { batch.Clear(); }) {}

  void Add(std::string_view line, std::uint64_t number) {
    if (list_.KeepsPlaces()) batch_.numbers.push_back(number);
    batch_.ends.push_back(batch_.bytes.size() + line.size());
    batch_.bytes.append(line);
    if (batch_.bytes.size() >= kBatchBytes) batch_ = stage_.Hand(std::move(batch_));
  }

  void Finish() {
    if (!batch_.ends.empty()) stage_.Hand(std::move(batch_));
    stage_.Finish();
  }

 private:
  static constexpr std::size_t kBatchBytes = 1 << 18;

  struct Batch {
    std::string bytes;                   // the lines, one after the other
    std::vector<std::size_t> ends;       // where each of them ends in bytes
    std::vector<std::uint64_t> numbers;  // their line numbers, when places are kept
    void Clear() {
      bytes.clear();
      ends.clear();
      numbers.clear();
    }
  };

  void Append(const Batch& batch) {
    lines_.resize(batch.ends.size());
    for (std::size_t i = 0, start = 0; i < batch.ends.size(); start = batch.ends[i++]) {
      lines_[i] = std::string_view(batch.bytes).substr(start, batch.ends[i] - start);
    }
    raw_.InternAll(lines_, ids_);
    for (std::size_t i = 0; i < lines_.size(); ++i) {
      if (ids_[i] == stripped_.size()) stripped_.push_back(list_.Pool().Intern(StripColorCodes(lines_[i])));
      const TextId row = stripped_[ids_[i]];
      list_.AppendId(row, PlaceOf(batch, i));
      log_output_.WriteLine(list_.Pool().Text(row));
    }
  }

  EventSource PlaceOf(const Batch& batch, std::size_t i) const {
    if (i >= batch.numbers.size()) return {};
    return {SourceLine::At(file_, batch.numbers[i]), StringPool::kEmpty};
  }

  WorksheetList& list_;
  TextFileWriter& log_output_;
  std::size_t file_;
  Batch batch_;                          // being filled by the reading thread
  std::vector<std::string_view> lines_;  // the rest: the appending thread's
  std::vector<TextId> ids_;
  StringPool raw_;                // the distinct kept lines as read
  std::vector<TextId> stripped_;  // by id in raw_: the stripped line's id in the list's pool
  PipelineStage<Batch> stage_;    // last: its thread uses the members above
};

}  // namespace

void ImportLog(const std::string& file_name, const std::string& side_dir, Host& host, OutputPlan& plan,
               Worksheet& sheet) {
  LogText text = ReadLogText(file_name, host);
  const auto side_file = [&](std::string_view name) {
    if (side_dir.empty()) return std::make_unique<TextFileWriter>("", std::nullopt);
    const std::string path = side_dir + std::string(name);
    return std::make_unique<TextFileWriter>(path, plan.Check(name.substr(1), path));
  };
  const std::uint64_t size = text.Size();
  const auto ignored_file = side_file(kIgnoredFile), chat_file = side_file(kChatFile);
  TextFileWriter& ignored = *ignored_file;
  TextFileWriter& chat = *chat_file;
  // logoutput.txt holds all of List1 afterwards: the rows already there,
  // then this log's kept lines as they are read.
  const auto log_output_file = side_file(kLogOutputFile);
  TextFileWriter& log_output = *log_output_file;
  for (TextId row : sheet.List1.Ids()) log_output.WriteLine(sheet.List1.Pool().Text(row));
  sheet.SourceFiles.push_back(file_name);
  // A run that cuts matches names its logs by digest (the summary, the
  // archive): worked out while the log is read, instead of reading it again.
  std::optional<Sha256> digest;
  if (sheet.RecordsMarkers) digest.emplace();
  std::size_t kept_before = sheet.List1.Count();
  PhysicalLines numbers;
  const std::size_t file = sheet.SourceFiles.size() - 1;
  KeptLines kept(sheet.List1, log_output, file);
  const bool read_all = text.ForEachLine(
      [&](std::string_view line, char end) {
        const std::uint64_t number = numbers.Number(line, end);
        if (sheet.RecordsMarkers) {
          if (const auto marker = MatchMarkerOf(line)) {
            sheet.Markers.push_back({SourceLine::At(file, number), *marker, kept_before});
          }
        }
        switch (ClassifyLogLine(line)) {
          case LineFate::kKept:
            kept.Add(line, number);
            ++kept_before;
            break;
          case LineFate::kIgnored:
            ignored.WriteLine(line);
            break;
          case LineFate::kChat: {
            const std::string text_only = StripColorCodes(line);
            chat.WriteLine(text_only);
            ignored.WriteLine(text_only);
            break;
          }
        }
      },
      [&](std::uint64_t read, std::string_view piece) {
        if (digest) digest->Add(piece);
        host.ReadingProgress(read, size);
      });
  const int read_error = errno;
  sheet.SourceDigests.push_back(digest && read_all ? digest->HexDigest() : "");
  sheet.LinesRead += numbers.Count();
  kept.Finish();
  if (sheet.RecordsMarkers) {
    sheet.Markers.push_back({SourceLine::At(file, numbers.Count() + 1), kMatchMarkers.size(), kept_before});
  }
  if (!read_all) host.ShowMessage(ReadFailure(file_name, read_error), MessageIcon::kCritical);
  log_output.WriteLine("");
  Report(host, ignored.Commit());
  Report(host, chat.Commit());
  Report(host, log_output.Commit());
}

}  // namespace vantor
