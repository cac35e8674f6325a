#include "analysis/piece_sorting.h"

#include <algorithm>
#include <span>

#include "analysis/match_markers.h"

namespace vantor {

// Room for the lines of a busy piece at once: a piece that grew its lists
// line by line would touch fresh memory at every step.
void SortedPiece::Reserve(std::size_t bytes) {
  const std::size_t lines = bytes / 16;
  fates.reserve(lines);
  kept.reserve(lines);
  kept_hashes.reserve(lines);
  kept_ids.reserve(lines);
  kept_at.reserve(lines);
  kept_numbers.reserve(lines);
  unknown.reserve(lines);
}

void SortedPiece::Clear() {
  fates.clear();
  ignored.Clear();
  chat.Clear();
  log_output.Clear();
  kept.clear();
  kept_hashes.clear();
  kept_at.clear();
  kept_ids.clear();
  unknown.clear();
  unknown_texts.Clear();
  unknown_ends.clear();
  unknown_hashes.clear();
  kept_numbers.clear();
  markers.clear();
  marker_lines.clear();
}

namespace {

// Each line's fate as far as it is decided without the texts that are
// never kept; the lines that may be kept are hashed. Lines are numbered as
// a text editor numbers them: a CR LF pair ends one line.
void SortFirst(SortedPiece& piece, const SortingNeeds& needs) {
  const std::string_view bytes = piece.lines.Bytes();
  piece.Reserve(bytes.size());
  piece.scan.Scan(bytes);
  std::uint64_t count = 0;
  piece.scan.ForEachLine([&](const LineScan::Line& at) {
    const std::string_view line = bytes.substr(at.begin, at.end - at.begin);
    // An LF first, after a CR that ended the piece before: the second half
    // of a pair, the last line of that piece.
    const bool pair_half = at.end == 0 && bytes[0] == '\n' && piece.lines.end_before == '\r';
    const std::uint64_t number = pair_half ? count : ++count;
    if (needs.markers) {
      if (const auto row = MatchMarkerOf(line)) {
        piece.markers.push_back({number, *row, piece.fates.size()});
        piece.marker_lines.push_back({*row, at.begin, at.end + 1});
      }
    }
    const LineFate fate = ClassifyBeforeNeverKept(line, at.has_colon, at.has_code7);
    piece.fates.push_back(static_cast<std::uint8_t>(fate));
    if (fate != LineFate::kKept) return;
    piece.kept_at.push_back(static_cast<std::uint32_t>(piece.fates.size() - 1));
    piece.kept.push_back(line);
    piece.kept_hashes.push_back(LineSet::Hash(line));
    if (needs.numbers) piece.kept_numbers.push_back(number);
  });
  piece.line_count = count;
}

// Writes lines, each followed by CR LF, at the end of a side file's
// buffer, making room as it goes: a piece's buffers grow to what its lines
// need and keep that room for the pieces after it. Lines come from the
// piece, the known texts and the chat bytes, all of which keep the slack of
// a copy after their last byte.
class LineWriter {
 public:
  explicit LineWriter(ByteBuffer& buffer) : buffer_(buffer), at_(buffer.End()), end_(at_ + buffer.Room()) {}
  ~LineWriter() { buffer_.SetEnd(at_); }
  LineWriter(const LineWriter&) = delete;
  LineWriter& operator=(const LineWriter&) = delete;

  void Put(std::string_view line) {
    MakeRoom(line.size());
    at_ = CopyWithSlack(at_, line.data(), line.size());
    EndLine();
  }
  // The line without its colour codes; returns what was written before CR LF.
  std::string_view PutStripped(std::string_view line) {
    MakeRoom(line.size());
    char* const start = at_;
    at_ = PutColorCodesStripped(at_, line);
    const std::string_view text(start, static_cast<std::size_t>(at_ - start));
    EndLine();
    return text;
  }

 private:
  void MakeRoom(std::size_t line) {
    if (static_cast<std::size_t>(end_ - at_) >= line + 2 + kCopySlack) return;
    buffer_.SetEnd(at_);
    buffer_.Reserve(line + 2 + kCopySlack);
    at_ = buffer_.End();
    end_ = at_ + buffer_.Room();
  }
  void EndLine() {
    *at_++ = '\r';
    *at_++ = '\n';
  }

  ByteBuffer& buffer_;
  char *at_, *end_;
};

// A kept line not known yet: stripped of its colour codes here, and its
// text hashed for the pool, so that the thread that takes the piece up
// only adds it.
std::string_view Unknown(SortedPiece& piece, std::size_t kept) {
  const std::string_view line = piece.kept[kept];
  piece.unknown.push_back(static_cast<std::uint32_t>(kept));
  piece.unknown_texts.Reserve(line.size() + kCopySlack);
  char* const start = piece.unknown_texts.End();
  piece.unknown_texts.SetEnd(PutColorCodesStripped(start, line));
  const std::string_view text(start, static_cast<std::size_t>(piece.unknown_texts.End() - start));
  piece.unknown_ends.push_back(piece.unknown_texts.size());
  piece.unknown_hashes.push_back(std::hash<std::string_view>{}(text));
  return text;
}

// Kept lines are looked up in batches small enough that the texts found
// are still at hand when they are written. A line kept before is kept
// again and brings its text without colour codes; the others that hold a
// text that is never kept are ignored after all and leave the kept lines.
// logoutput.txt takes the kept lines' texts in order.
void KeepLines(SortedPiece& piece, const SortingNeeds& needs, const LineSet& known) {
  constexpr std::size_t kBatch = 256;
  std::string_view texts[kBatch];
  const std::size_t n = piece.kept.size();
  piece.kept_ids.resize(n);
  LineWriter log_output(piece.log_output);
  std::size_t out = 0;
  for (std::size_t batch = 0; batch < n; batch += kBatch) {
    const std::size_t size = std::min(kBatch, n - batch);
    known.FindAll(std::span(piece.kept).subspan(batch, size),
                  std::span(piece.kept_hashes).subspan(batch, size),
                  std::span(piece.kept_ids).subspan(batch, size), std::span(texts, size));
    for (std::size_t i = batch; i < batch + size; ++i) {
      const TextId id = piece.kept_ids[i];
      if (id == LineSet::kUnknown && HoldsANeverKeptText(piece.kept[i])) {
        piece.fates[piece.kept_at[i]] = static_cast<std::uint8_t>(LineFate::kIgnored);
        continue;
      }
      piece.kept[out] = piece.kept[i];
      piece.kept_hashes[out] = piece.kept_hashes[i];
      piece.kept_ids[out] = id;
      if (!piece.kept_numbers.empty()) piece.kept_numbers[out] = piece.kept_numbers[i];
      const std::string_view text = id != LineSet::kUnknown ? texts[i - batch] : Unknown(piece, out);
      if (needs.log_output) log_output.Put(text);
      ++out;
    }
  }
  piece.kept.resize(out);
  piece.kept_hashes.resize(out);
  piece.kept_ids.resize(out);
  if (!piece.kept_numbers.empty()) piece.kept_numbers.resize(out);
}

// ignored.txt's and chat.txt's bytes in line order; the markers learn how
// many kept lines come before them.
void WriteSideBytes(SortedPiece& piece, const SortingNeeds& needs) {
  const std::string_view bytes = piece.lines.Bytes();
  LineWriter ignored(piece.ignored), chat(piece.chat);
  std::size_t index = 0, kept = 0, marker = 0;
  piece.scan.ForEachLineSpan([&](std::size_t begin, std::size_t end, bool pair) {
    for (; marker < piece.markers.size() && piece.markers[marker].kept_before == index; ++marker)
      piece.markers[marker].kept_before = kept;
    const std::string_view line = bytes.substr(begin, end - begin);
    switch (static_cast<LineFate>(piece.fates[index++])) {
      case LineFate::kKept:
        ++kept;
        break;
      case LineFate::kIgnored:
        if (needs.ignored) ignored.Put(line);
        break;
      case LineFate::kChat:
        if (needs.chat) {
          // Stripped once: ignored.txt takes the same bytes.
          const std::string_view text = chat.PutStripped(line);
          if (needs.ignored) ignored.Put(text);
        } else if (needs.ignored) {
          ignored.PutStripped(line);
        }
        break;
    }
    // The empty line between the two bytes of a CR LF pair is ignored.
    if (pair && needs.ignored) ignored.Put({});
  });
}

}  // namespace

// Most kept lines repeat earlier ones, and known lines need no search for
// the texts that are never kept: they are looked up in batches first.
void SortLines(SortedPiece& piece, const SortingNeeds& needs, const LineSet& known) {
  piece.Clear();
  SortFirst(piece, needs);
  KeepLines(piece, needs, known);
  WriteSideBytes(piece, needs);
}

}  // namespace vantor
