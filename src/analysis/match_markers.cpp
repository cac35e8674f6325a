#include "analysis/match_markers.h"

namespace vantor {

namespace {

struct StarSplit {
  std::string_view head, tail;
  bool variable;
};

constexpr StarSplit SplitAtStar(std::string_view pattern) {
  const std::size_t star = pattern.find('*');
  if (star == std::string_view::npos) return {pattern, {}, false};
  return {pattern.substr(0, star), pattern.substr(star + 1), true};
}

constexpr std::array<StarSplit, kMatchMarkers.size()> MakeSplits() {
  std::array<StarSplit, kMatchMarkers.size()> splits{};
  for (std::size_t row = 0; row < kMatchMarkers.size(); ++row)
    splits[row] = SplitAtStar(kMatchMarkers[row].pattern);
  return splits;
}

// Worked out once: the import asks for every line of the log.
constexpr std::array<StarSplit, kMatchMarkers.size()> kSplits = MakeSplits();

bool Matches(const MatchMarker& marker, const StarSplit& split, std::string_view line) {
  // Lengths first: most lines that pass the byte test have another length.
  if (!split.variable)
    return line.size() == split.head.size() && line.back() == split.head.back() && line == split.head;
  if (line.size() < split.head.size() + split.tail.size()) return false;
  // A byte at each end of the fixed ends first: most lines fail there.
  if (!split.head.empty() &&
      (line.front() != split.head.front() || line[split.head.size() - 1] != split.head.back()))
    return false;
  if (!split.tail.empty() &&
      (line.back() != split.tail.back() || line[line.size() - split.tail.size()] != split.tail.front()))
    return false;
  if (!line.ends_with(split.tail) || !line.starts_with(split.head)) return false;
  const std::string_view variable =
      line.substr(split.head.size(), line.size() - split.head.size() - split.tail.size());
  return variable.find_first_of(marker.not_in_variable) == std::string_view::npos;
}

}  // namespace

std::optional<std::size_t> MatchMarkerRow(std::string_view line) {
  for (std::size_t row = 0; row < kMatchMarkers.size(); ++row) {
    if (Matches(kMatchMarkers[row], kSplits[row], line)) return row;
  }
  return std::nullopt;
}

}  // namespace vantor
