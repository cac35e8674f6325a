#include "analysis/span_digests.h"

#include <unistd.h>

#include <algorithm>
#include <optional>
#include <string_view>

#include "analysis/match_markers.h"
#include "report/sha256.h"

namespace vantor {

namespace {

struct Stretch {
  std::uint64_t begin, end;
  bool limit;  // ended by a limit's line: a CR there may be followed by its LF
};

std::vector<Stretch> StretchesOf(const std::vector<MarkerBytes>& markers, std::uint64_t lines_end) {
  std::vector<Stretch> stretches;
  std::optional<std::uint64_t> open = 0;
  for (const MarkerBytes& marker : markers) {
    const MarkerKind kind = kMatchMarkers[marker.row].kind;
    if (open) {
      const bool limit = kind == MarkerKind::kMatchEnd;
      stretches.push_back({*open, limit ? marker.end : marker.begin, limit});
    }
    open.reset();
    if (kind == MarkerKind::kMapLoad) open = marker.begin;
  }
  if (open) stretches.push_back({*open, lines_end, false});
  return stretches;
}

// Hashes the log's bytes as they come, and each stretch's among them.
class StretchHasher {
 public:
  // hash_log false: the log's digest is known, and only stretches are hashed.
  StretchHasher(std::vector<Stretch> stretches, bool hash_log)
      : stretches_(std::move(stretches)), hash_log_(hash_log) {
    Step(0);
  }

  // The next bytes of the log, which begin at offset at.
  void Add(std::string_view bytes, std::uint64_t at) {
    for (std::size_t done = 0; done < bytes.size();) {
      const std::uint64_t here = at + done;
      std::uint64_t to = at + bytes.size();
      if (next_ < stretches_.size())
        to = std::min(to, active_ ? stretches_[next_].end : stretches_[next_].begin);
      Feed(bytes.substr(done, to - here));
      done += to - here;
      Step(to);
    }
  }

  // The log's digest and every stretch's; a stretch beyond the bytes (a log
  // shorter than when it was sorted) ends with them.
  std::pair<std::string, std::vector<std::string>> Finish() {
    while (next_ < stretches_.size()) {
      if (!active_) Begin();
      Close();
    }
    return {log_.HexDigest(), std::move(digests_)};
  }

 private:
  void Feed(std::string_view bytes) {
    if (hash_log_) log_.Add(bytes);
    if (stretch_) stretch_->Add(bytes);
  }
  // Opens and closes the stretches that begin and end at offset at.
  void Step(std::uint64_t at) {
    while (next_ < stretches_.size()) {
      if (!active_ && stretches_[next_].begin == at) {
        Begin();
      } else if (active_ && stretches_[next_].end == at) {
        Close();
      } else {
        return;
      }
    }
  }
  void Begin() {
    active_ = true;
    // The first stretch of a log is the log's own hash so far.
    if (stretches_[next_].begin != 0 || !hash_log_) stretch_.emplace();
  }
  void Close() {
    Sha256 hash = stretch_ ? *stretch_ : log_;  // finished on a copy: the log's hash goes on
    digests_.push_back(hash.HexDigest());
    stretch_.reset();
    active_ = false;
    ++next_;
  }

  std::vector<Stretch> stretches_;
  bool hash_log_;
  std::size_t next_ = 0;  // the stretch being hashed, or the next one
  bool active_ = false;
  Sha256 log_;
  std::optional<Sha256> stretch_;  // the active stretch's hash, unless it is the log's
  std::vector<std::string> digests_;
};

}  // namespace

std::pair<std::string, std::vector<std::string>> DigestLog(int fd, std::uint64_t size,
                                                           std::uint64_t lines_end,
                                                           const std::vector<MarkerBytes>& markers,
                                                           bool with_stretches,
                                                           const std::string* log_digest) {
  std::vector<Stretch> stretches = with_stretches ? StretchesOf(markers, lines_end) : std::vector<Stretch>{};
  if (log_digest != nullptr && stretches.empty()) return {*log_digest, {}};
  std::vector<char> piece(1 << 20);
  // A limit's line that ends in a CR takes the LF that follows as part of its line end.
  for (Stretch& stretch : stretches) {
    char pair[2];
    if (stretch.limit && stretch.end < lines_end &&
        ::pread(fd, pair, 2, static_cast<off_t>(stretch.end - 1)) == 2 && pair[0] == '\r' && pair[1] == '\n')
      ++stretch.end;
  }
  // With the log's digest known, only the bytes the stretches cover are read.
  std::uint64_t at = log_digest != nullptr ? stretches.front().begin : 0;
  const std::uint64_t end = log_digest != nullptr ? std::min(size, stretches.back().end) : size;
  StretchHasher hasher(std::move(stretches), log_digest == nullptr);
  while (at < end) {
    const ssize_t got =
        ::pread(fd, piece.data(), std::min<std::uint64_t>(piece.size(), end - at), static_cast<off_t>(at));
    if (got <= 0) return {"", {}};
    hasher.Add(std::string_view(piece.data(), static_cast<std::size_t>(got)), at);
    at += static_cast<std::uint64_t>(got);
  }
  auto digests = hasher.Finish();
  if (log_digest != nullptr) digests.first = *log_digest;
  return digests;
}

std::string HashLog(int fd, std::uint64_t size) { return DigestLog(fd, size, size, {}, false).first; }

}  // namespace vantor
