#include "analysis/piece_sorting.h"

#include "analysis/match_markers.h"

namespace vantor {

void SortedPiece::Clear() {
  fates.clear();
  ignored.Clear();
  chat.Clear();
  log_output.Clear();
  kept.clear();
  kept_hashes.clear();
  kept_texts.clear();
  kept_ids.clear();
  unknown.clear();
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
    piece.kept.push_back(line);
    piece.kept_hashes.push_back(LineSet::Hash(line));
    if (needs.numbers) piece.kept_numbers.push_back(number);
  });
  piece.line_count = count;
}

// A line kept before is kept again; the others that hold a text that is
// never kept are ignored after all and leave the kept lines.
void DropNeverKept(SortedPiece& piece, const LineSet& known) {
  known.FindAll(piece.kept, piece.kept_hashes, piece.kept_ids, piece.kept_texts);
  std::size_t kept = 0, out = 0;
  for (std::uint8_t& fate : piece.fates) {
    if (fate != static_cast<std::uint8_t>(LineFate::kKept)) continue;
    const TextId id = piece.kept_ids[kept];
    if (id == LineSet::kUnknown && HoldsANeverKeptText(piece.kept[kept])) {
      fate = static_cast<std::uint8_t>(LineFate::kIgnored);
    } else {
      piece.kept[out] = piece.kept[kept];
      piece.kept_hashes[out] = piece.kept_hashes[kept];
      piece.kept_ids[out] = id;
      piece.kept_texts[out] = piece.kept_texts[kept];
      if (!piece.kept_numbers.empty()) piece.kept_numbers[out] = piece.kept_numbers[kept];
      if (id == LineSet::kUnknown) piece.unknown.push_back(static_cast<std::uint32_t>(out));
      ++out;
    }
    ++kept;
  }
  piece.kept.resize(out);
  piece.kept_hashes.resize(out);
  piece.kept_ids.resize(out);
  piece.kept_texts.resize(out);
  if (!piece.kept_numbers.empty()) piece.kept_numbers.resize(out);
}

// Lines come from the piece, the known texts and the chat bytes, all of
// which keep the slack of a copy after their last byte.
char* PutLine(char* to, std::string_view line) {
  to = CopyWithSlack(to, line.data(), line.size());
  *to++ = '\r';
  *to++ = '\n';
  return to;
}

char* PutLineStripped(char* to, std::string_view line) {
  to = PutColorCodesStripped(to, line);
  *to++ = '\r';
  *to++ = '\n';
  return to;
}

// Where each side file's next byte goes, with room made for a whole piece
// (a line gives at most its bytes and two, and every line uses at least
// one) and the slack of a copy.
struct SideEnds {
  char *ignored, *chat, *log_output;

  explicit SideEnds(SortedPiece& piece) {
    const std::size_t room = 2 * piece.lines.bytes.size() + kCopySlack;
    for (ByteBuffer* side : {&piece.ignored, &piece.chat, &piece.log_output}) side->Reserve(room);
    ignored = piece.ignored.End();
    chat = piece.chat.End();
    log_output = piece.log_output.End();
  }
  void Close(SortedPiece& piece) const {
    piece.ignored.SetEnd(ignored);
    piece.chat.SetEnd(chat);
    piece.log_output.SetEnd(log_output);
  }
};

// The side files' bytes in line order; the markers learn how many kept
// lines come before them.
void WriteSideBytes(SortedPiece& piece, const SortingNeeds& needs) {
  const std::string_view bytes = piece.lines.Bytes();
  SideEnds to(piece);
  std::size_t index = 0, kept = 0, marker = 0;
  piece.scan.ForEachLineSpan([&](std::size_t begin, std::size_t end, bool pair) {
    for (; marker < piece.markers.size() && piece.markers[marker].kept_before == index; ++marker)
      piece.markers[marker].kept_before = kept;
    const std::string_view line = bytes.substr(begin, end - begin);
    switch (static_cast<LineFate>(piece.fates[index++])) {
      case LineFate::kKept:
        // A line seen before brings its text without colour codes along.
        if (needs.log_output && piece.kept_ids[kept] != LineSet::kUnknown) {
          to.log_output = PutLine(to.log_output, piece.kept_texts[kept]);
        } else if (needs.log_output) {
          to.log_output = PutLineStripped(to.log_output, line);
        }
        ++kept;
        break;
      case LineFate::kIgnored:
        if (needs.ignored) to.ignored = PutLine(to.ignored, line);
        break;
      case LineFate::kChat:
        if (needs.chat) {
          char* const start = to.chat;
          to.chat = PutLineStripped(to.chat, line);
          // Stripped once: ignored.txt takes the same bytes.
          if (needs.ignored) to.ignored = PutLine(to.ignored, std::string_view(start, to.chat - start - 2));
        } else if (needs.ignored) {
          to.ignored = PutLineStripped(to.ignored, line);
        }
        break;
    }
    // The empty line between the two bytes of a CR LF pair is ignored.
    if (pair && needs.ignored) to.ignored = PutLine(to.ignored, {});
  });
  to.Close(piece);
}

}  // namespace

// Most kept lines repeat earlier ones, and known lines need no search for
// the texts that are never kept: they are looked up in a batch first.
void SortLines(SortedPiece& piece, const SortingNeeds& needs, const LineSet& known) {
  piece.Clear();
  SortFirst(piece, needs);
  DropNeverKept(piece, known);
  WriteSideBytes(piece, needs);
}

}  // namespace vantor
