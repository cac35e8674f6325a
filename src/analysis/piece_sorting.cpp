#include "analysis/piece_sorting.h"

#include <functional>

#include "analysis/match_markers.h"

namespace vantor {

namespace {

void AppendLine(std::string& bytes, std::string_view line) {
  bytes.append(line);
  bytes.append("\r\n");
}

void AppendLineStripped(std::string& bytes, std::string_view line) {
  AppendColorCodesStripped(bytes, line);
  bytes.append("\r\n");
}

// Each line's fate as far as it is decided without the texts that are
// never kept; the lines that may be kept are hashed.
void SortFirst(SortedPiece& piece, const SortingNeeds& needs) {
  PhysicalLines numbers(piece.lines.end_before);
  piece.scan.Scan(piece.lines.Bytes());
  piece.scan.ForEachLine([&](std::string_view line, char end, bool has_colon, bool has_code7) {
    const std::uint64_t number = numbers.Number(line, end);
    if (needs.markers) {
      if (const auto row = MatchMarkerOf(line)) {
        piece.markers.push_back({number, *row, piece.all.size()});
        const auto begin = static_cast<std::size_t>(line.data() - piece.lines.data.get());
        piece.marker_lines.push_back({*row, begin, begin + line.size() + 1});
      }
    }
    const LineFate fate = ClassifyBeforeNeverKept(line, has_colon, has_code7);
    piece.all.push_back(line);
    piece.fates.push_back(fate);
    if (fate != LineFate::kKept) return;
    piece.kept.push_back(line);
    piece.kept_hashes.push_back(std::hash<std::string_view>{}(line));
    if (needs.numbers) piece.kept_numbers.push_back(number);
  });
  piece.line_count = numbers.Count();
}

// A line kept before is kept again; the others that hold a text that is
// never kept are ignored after all and leave the kept lines.
void DropNeverKept(SortedPiece& piece, const LineSet* known) {
  if (known != nullptr) {
    known->FindAll(piece.kept, piece.kept_hashes, piece.kept_in_set, piece.kept_texts);
  } else {
    piece.kept_in_set.assign(piece.kept.size(), LineSet::kUnknown);
    piece.kept_texts.assign(piece.kept.size(), {});
  }
  std::size_t kept = 0, out = 0;
  for (std::size_t i = 0; i < piece.all.size(); ++i) {
    if (piece.fates[i] != LineFate::kKept) continue;
    if (piece.kept_in_set[kept] == LineSet::kUnknown && HoldsANeverKeptText(piece.kept[kept])) {
      piece.fates[i] = LineFate::kIgnored;
    } else {
      piece.kept[out] = piece.kept[kept];
      piece.kept_hashes[out] = piece.kept_hashes[kept];
      piece.kept_in_set[out] = piece.kept_in_set[kept];
      piece.kept_texts[out] = piece.kept_texts[kept];
      if (!piece.kept_numbers.empty()) piece.kept_numbers[out] = piece.kept_numbers[kept];
      ++out;
    }
    ++kept;
  }
  piece.kept.resize(out);
  piece.kept_hashes.resize(out);
  piece.kept_in_set.resize(out);
  piece.kept_texts.resize(out);
  if (!piece.kept_numbers.empty()) piece.kept_numbers.resize(out);
}

// The side files' bytes in line order; the markers learn how many kept
// lines come before them.
void WriteSideBytes(SortedPiece& piece, const SortingNeeds& needs) {
  std::size_t kept = 0, marker = 0;
  for (std::size_t i = 0; i < piece.all.size(); ++i) {
    for (; marker < piece.markers.size() && piece.markers[marker].kept_before == i; ++marker)
      piece.markers[marker].kept_before = kept;
    const std::string_view line = piece.all[i];
    switch (piece.fates[i]) {
      case LineFate::kKept:
        // A line seen before brings its text without colour codes along.
        if (needs.log_output && piece.kept_in_set[kept] != LineSet::kUnknown) {
          AppendLine(piece.log_output, piece.kept_texts[kept]);
        } else if (needs.log_output) {
          AppendLineStripped(piece.log_output, line);
        }
        ++kept;
        break;
      case LineFate::kIgnored:
        if (needs.ignored) AppendLine(piece.ignored, line);
        break;
      case LineFate::kChat:
        if (needs.chat) {
          const std::size_t start = piece.chat.size();
          AppendLineStripped(piece.chat, line);
          // Stripped once: ignored.txt takes the same bytes.
          if (needs.ignored) piece.ignored.append(std::string_view(piece.chat).substr(start));
        } else if (needs.ignored) {
          AppendLineStripped(piece.ignored, line);
        }
        break;
    }
  }
}

}  // namespace

// Most kept lines repeat earlier ones, and known lines need no search for
// the texts that are never kept: they are looked up in a batch first.
void SortLines(SortedPiece& piece, const SortingNeeds& needs, const LineSet* known) {
  piece.Clear();
  SortFirst(piece, needs);
  DropNeverKept(piece, known);
  WriteSideBytes(piece, needs);
}

}  // namespace vantor
