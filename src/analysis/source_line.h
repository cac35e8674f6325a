#pragma once
// Where a worksheet row came from: a log of the run (an index into the
// run's list of log paths) and the line in it, numbered as a text editor
// numbers lines (from 1; a CR LF pair ends one line). Eight bytes a row:
// a large log keeps one per kept line.

#include <algorithm>
#include <cstdint>
#include <vector>

#include "analysis/string_pool.h"

namespace vantor {

// Four-byte aligned, so that an event's place and text id take twelve.
#pragma pack(push, 4)
struct SourceLine {
  static constexpr std::uint64_t kMaxFile = (std::uint64_t{1} << 24) - 1;
  static constexpr std::uint64_t kMaxLine = (std::uint64_t{1} << 40) - 1;

  std::uint64_t file : 24 = 0;
  std::uint64_t line : 40 = 0;

  // The place of line in file; a number too large to keep stays at the
  // largest one kept (a run would need 16 million logs, or a log a
  // trillion lines, to reach it).
  static SourceLine At(std::uint64_t file, std::uint64_t line) {
    SourceLine place;
    place.file = std::min(file, kMaxFile);
    place.line = std::min(line, kMaxLine);
    return place;
  }
  bool operator==(const SourceLine& other) const { return file == other.file && line == other.line; }
};
#pragma pack(pop)
static_assert(sizeof(SourceLine) == 8 && alignof(SourceLine) == 4);

using SourceLines = std::vector<SourceLine>;

// The place of an event row and the text of its line as it was imported
// (colour codes removed), an id in the worksheet's pool: what a user reads
// to see why the event was counted.
struct EventSource {
  SourceLine place;
  TextId text = StringPool::kEmpty;
};
static_assert(sizeof(EventSource) == 12);

using EventSources = std::vector<EventSource>;

}  // namespace vantor
