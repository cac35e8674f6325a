#pragma once
// Sorting a piece of a log: what the import makes of each of its lines.
// A piece needs nothing from the pieces before it, so pieces are sorted
// side by side, and their results are taken up in log order.

#include <cstdint>
#include <string_view>
#include <vector>

#include "analysis/byte_buffer.h"
#include "analysis/line_rules.h"
#include "analysis/line_scan.h"
#include "analysis/line_set.h"
#include "analysis/log_pieces.h"
#include "analysis/span_digests.h"
#include "analysis/string_pool.h"

namespace vantor {

// A piece of a log and what the import makes of its lines. Numbers are
// counted from the start of the piece.
struct SortedPiece {
  LinesBuffer lines;
  LineScan scan;
  ByteBuffer ignored, chat, log_output;  // the side files' bytes, line ends included
  std::vector<std::string_view> kept;    // into lines
  std::vector<std::uint64_t> kept_hashes;
  std::vector<std::uint32_t> kept_at;  // the index in fates of each
  // Of the lines kept before: the ids of their texts without colour codes
  // (LineSet::kUnknown for the others).
  std::vector<TextId> kept_ids;
  std::vector<std::uint32_t> unknown;  // the kept lines that are not known
  // Their texts without colour codes, one after the other, with the
  // texts' ends and their hashes (std::hash), for the pool.
  ByteBuffer unknown_texts;
  std::vector<std::size_t> unknown_ends, unknown_hashes;

  std::vector<std::uint64_t> kept_numbers;  // when places are kept
  std::vector<std::uint8_t> fates;          // per line the scan meets, its LineFate
  struct Marker {
    std::uint64_t number;
    std::size_t row, kept_before;  // while sorting: the line's index in fates
  };
  std::vector<Marker> markers;
  std::vector<MarkerBytes> marker_lines;  // parallel to markers, in the piece's bytes
  std::uint64_t line_count = 0;

  void Clear();
  void Reserve(std::size_t bytes);
};

// What the sorting of a piece writes down.
struct SortingNeeds {
  bool ignored, chat, log_output, numbers, markers;
};

// Sorts the piece's lines; known: the distinct kept lines taken up so far,
// whose lines are kept again without further search.
void SortLines(SortedPiece& piece, const SortingNeeds& needs, const LineSet& known);

}  // namespace vantor
