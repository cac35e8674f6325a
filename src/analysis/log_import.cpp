#include "analysis/log_import.h"

#include <fcntl.h>
#include <limits.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstring>
#include <filesystem>
#include <future>
#include <memory>
#include <mutex>
#include <vector>

#include "analysis/line_set.h"
#include "analysis/ordered_work.h"
#include "analysis/piece_sorting.h"
#include "analysis/span_digests.h"
#include "analysis/text_file.h"
#include "analysis/worker_threads.h"

namespace vantor {

namespace {

std::string ReadFailure(const std::string& path, int error) {
  return "Could not read " + path + ": " + std::strerror(error);
}

void Report(Host& host, const IoResult& result) {
  if (!result.ok) host.ShowMessage(result.message, MessageIcon::kCritical);
}

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

namespace {

constexpr std::uint64_t kBytesPerKeptLine = 32;

// Sorted pieces taken up in log order: side-file bytes written, markers
// placed, kept lines stripped of their colour codes once per distinct line
// and appended to the worksheet.
//
// Most kept lines repeat earlier ones, so the sorting threads look them up
// among the distinct lines taken up so far; only the lines not found there
// are looked up again, and added, in order.
class SortedPieces {
 public:
  SortedPieces(Worksheet& sheet, std::size_t file, TextFileWriter& ignored, TextFileWriter& chat,
               TextFileWriter& log_output)
      : sheet_(sheet),
        file_(file),
        ignored_(ignored),
        chat_(chat),
        log_output_(log_output),
        kept_before_(sheet.List1.Count()) {}

  // On any thread: the distinct kept lines taken up so far.
  const LineSet& Known() const { return lines_seen_; }

  void TakeUp(SortedPiece& piece) {
    ignored_.WriteBlock(piece.ignored);
    chat_.WriteBlock(piece.chat);
    log_output_.WriteBlock(piece.log_output);
    for (const MarkerBytes& marker : piece.marker_lines)
      marker_bytes_.push_back(
          {marker.row, piece.lines.offset + marker.begin, piece.lines.offset + marker.end});
    for (const SortedPiece::Marker& marker : piece.markers) {
      sheet_.Markers.push_back(
          {SourceLine::At(file_, lines_ + marker.number), marker.row, kept_before_ + marker.kept_before});
    }
    WorksheetList& list = sheet_.List1;
    // A new line's text, stripped by the sorting thread, is interned once;
    // the slots of the lines a few on are asked for meanwhile.
    constexpr std::size_t kAhead = 8;
    for (std::size_t k = 0, start = 0; k < piece.unknown.size(); start = piece.unknown_ends[k++]) {
      if (k + kAhead < piece.unknown.size()) {
        lines_seen_.Prefetch(piece.kept_hashes[piece.unknown[k + kAhead]]);
        list.Pool().Prefetch(piece.unknown_hashes[k + kAhead]);
      }
      const std::uint32_t i = piece.unknown[k];
      const std::string_view text = piece.unknown_texts.View().substr(start, piece.unknown_ends[k] - start);
      piece.kept_ids[i] = lines_seen_.Add(piece.kept[i], piece.kept_hashes[i], [&](std::string_view) {
        return LineSet::Carried{text, list.Pool().Intern(text, piece.unknown_hashes[k])};
      });
    }
    if (list.KeepsPlaces()) {
      for (std::size_t i = 0; i < piece.kept_ids.size(); ++i)
        list.AppendId(piece.kept_ids[i], PlaceOf(piece, i));
    } else {
      list.AppendIds(piece.kept_ids);
    }
    kept_before_ += piece.kept.size();
    lines_ += piece.line_count;
  }

  // The marker lines taken up, in the log's bytes.
  std::vector<MarkerBytes> TakeMarkerBytes() { return std::move(marker_bytes_); }

  // The lines and kept lines taken up so far.
  std::uint64_t Lines() const { return lines_; }
  std::size_t KeptBefore() const { return kept_before_; }

 private:
  EventSource PlaceOf(const SortedPiece& piece, std::size_t i) const {
    if (i >= piece.kept_numbers.size()) return {};
    return {SourceLine::At(file_, lines_ + piece.kept_numbers[i]), StringPool::kEmpty};
  }

  Worksheet& sheet_;
  std::size_t file_;
  TextFileWriter &ignored_, &chat_, &log_output_;
  std::uint64_t lines_ = 0;
  std::size_t kept_before_;
  LineSet lines_seen_;  // the distinct kept lines as read, with their stripped texts' ids in List1's pool
  std::vector<MarkerBytes> marker_bytes_;
};

// A run that cuts matches names its logs by digest (the summary, the
// archive), and the archive its matches: worked out from the system's cache
// of the log on threads of their own while the run goes on. The log's own
// hash starts with the import, so that it is done when the import is; the
// stretches' follow once the markers are known. At most two logs are
// hashed at once, so a run of many logs does not start a thread for each.
class LogDigests {
 public:
  LogDigests(const LogText& text, Worksheet& sheet) : sheet_(sheet) {
    if (!sheet.RecordsMarkers) return;
    const int fd = text.DuplicateFd();
    if (fd < 0) return;
    // Closed with the work, done or not (a run given up before it awaits them).
    log_.reset(new int(fd), [](int* open) {
      ::close(*open);
      delete open;
    });
    WaitForRoom();
    hashed_ = text.Size();
    // A thread when one can be had; else the hash is worked out when awaited.
    whole_ = std::async(std::launch::async | std::launch::deferred, [log = log_, size = hashed_] {
               return HashLog(*log, size);
             }).share();
  }

  // Once the log is read: the digests, with the stretches' when the run asks.
  void Finish(const LogText& text, bool read_all, std::vector<MarkerBytes> markers) {
    using Digests = std::pair<std::string, std::vector<std::string>>;
    if (!sheet_.RecordsMarkers) return sheet_.SourceDigests.push_back("");
    if (!log_ || !read_all) {
      std::promise<Digests> none;
      none.set_value({});
      sheet_.PendingDigests.push_back(none.get_future());
      return;
    }
    WaitForRoom();
    const std::uint64_t size = text.BytesRead(), lines_end = size - text.Tail().size();
    sheet_.PendingDigests.push_back(
        std::async(std::launch::async | std::launch::deferred,
                   [log = log_, whole = whole_, hashed = hashed_, size, lines_end,
                    markers = std::move(markers), stretches = sheet_.DigestsSpans] {
                     // A log that grew while it was read is hashed as far as it was read.
                     const std::string digest = hashed == size ? whole.get() : HashLog(*log, size);
                     return DigestLog(*log, size, lines_end, markers, stretches, &digest);
                   }));
  }

 private:
  void WaitForRoom() {
    std::size_t busy = 0;
    for (auto& pending : sheet_.PendingDigests)
      busy += pending.wait_for(std::chrono::seconds(0)) == std::future_status::timeout;
    if (busy >= 2) sheet_.PendingDigests[sheet_.PendingDigests.size() - busy].wait();
  }

  Worksheet& sheet_;
  std::shared_ptr<int> log_;
  std::uint64_t hashed_ = 0;
  std::shared_future<std::string> whole_;
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
  const auto ignored = side_file(kIgnoredFile), chat = side_file(kChatFile);
  // logoutput.txt holds all of List1 afterwards: the rows already there,
  // then this log's kept lines as they are read.
  const auto log_output = side_file(kLogOutputFile);
  for (TextId row : sheet.List1.Ids()) log_output->WriteLine(sheet.List1.Pool().Text(row));
  sheet.SourceFiles.push_back(file_name);
  const std::size_t file = sheet.SourceFiles.size() - 1;
  // Room for a row per 32 bytes of the log (a busy server's log keeps a
  // line in about 56), so that List1 is not copied as it grows; room not
  // used is never touched, and a denser log still grows as before.
  sheet.List1.Reserve(sheet.List1.Count() + size / kBytesPerKeptLine);
  SortedPieces sorted(sheet, file, *ignored, *chat, *log_output);
  LogDigests digests(text, sheet);
  const SortingNeeds needs{ignored->Writes(), chat->Writes(), log_output->Writes(), sheet.List1.KeepsPlaces(),
                           sheet.RecordsMarkers};
  // One thread: the pieces are sorted and taken up as they are read.
  OrderedWork<SortedPiece> work(
      WorkerThreads() > 1 ? WorkerThreads() : 0,
      [&](SortedPiece& piece) { SortLines(piece, needs, sorted.Known()); },
      [&](SortedPiece& piece) { sorted.TakeUp(piece); });
  SortedPiece piece;
  const auto on_read = [&](std::uint64_t read) { host.ReadingProgress(read, size); };
  while (text.NextPiece(piece.lines, on_read)) piece = work.Hand(std::move(piece));
  work.Finish();
  const bool read_all = text.Error() == 0;
  digests.Finish(text, read_all, sorted.TakeMarkerBytes());
  sheet.LinesRead += sorted.Lines();
  if (sheet.RecordsMarkers) {
    sheet.Markers.push_back(
        {SourceLine::At(file, sorted.Lines() + 1), kMatchMarkers.size(), sorted.KeptBefore()});
  }
  if (!read_all) host.ShowMessage(ReadFailure(file_name, text.Error()), MessageIcon::kCritical);
  log_output->WriteLine("");
  Report(host, ignored->Commit());
  Report(host, chat->Commit());
  Report(host, log_output->Commit());
}

}  // namespace vantor
