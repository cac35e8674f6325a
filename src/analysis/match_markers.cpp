#include "analysis/match_markers.h"

namespace vantor {

namespace {

struct Parts {
  std::string_view head, tail;
  bool variable;
};

constexpr Parts PartsOf(std::string_view pattern) {
  const std::size_t star = pattern.find('*');
  if (star == std::string_view::npos) return {pattern, {}, false};
  return {pattern.substr(0, star), pattern.substr(star + 1), true};
}

constexpr std::array<Parts, kMatchMarkers.size()> MakeParts() {
  std::array<Parts, kMatchMarkers.size()> parts{};
  for (std::size_t row = 0; row < kMatchMarkers.size(); ++row)
    parts[row] = PartsOf(kMatchMarkers[row].pattern);
  return parts;
}

// Worked out once: the import asks for every line of the log.
constexpr std::array<Parts, kMatchMarkers.size()> kParts = MakeParts();

bool Matches(const MatchMarker& marker, const Parts& parts, std::string_view line) {
  // Lengths first: most lines that pass the byte test have another length.
  if (!parts.variable)
    return line.size() == parts.head.size() && line.back() == parts.head.back() && line == parts.head;
  if (line.size() < parts.head.size() + parts.tail.size()) return false;
  // A byte at each end of the fixed parts first: most lines fail there.
  if (!parts.head.empty() &&
      (line.front() != parts.head.front() || line[parts.head.size() - 1] != parts.head.back()))
    return false;
  if (!parts.tail.empty() &&
      (line.back() != parts.tail.back() || line[line.size() - parts.tail.size()] != parts.tail.front()))
    return false;
  if (!line.ends_with(parts.tail) || !line.starts_with(parts.head)) return false;
  const std::string_view variable =
      line.substr(parts.head.size(), line.size() - parts.head.size() - parts.tail.size());
  return variable.find_first_of(marker.not_in_variable) == std::string_view::npos;
}

}  // namespace

std::optional<std::size_t> MatchMarkerRow(std::string_view line) {
  for (std::size_t row = 0; row < kMatchMarkers.size(); ++row) {
    if (Matches(kMatchMarkers[row], kParts[row], line)) return row;
  }
  return std::nullopt;
}

}  // namespace vantor
