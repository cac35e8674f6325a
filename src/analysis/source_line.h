#pragma once
// Where a worksheet row came from: a log of the run (an index into the
// run's list of log paths) and the line in it, numbered as a text editor
// numbers lines (from 1; a CR LF pair ends one line).

#include <cstdint>
#include <vector>

namespace vantor {

struct SourceLine {
  std::uint32_t file = 0;
  std::uint64_t line = 0;
  bool operator==(const SourceLine&) const = default;
  auto operator<=>(const SourceLine&) const = default;
};

using SourceLines = std::vector<SourceLine>;

// Keeps, in order, the entries whose keep flag is set (the rows a list
// sweep kept), so that sources stay parallel to their list.
inline void RetainSources(SourceLines& sources, const std::vector<bool>& keep) {
  std::size_t out = 0;
  for (std::size_t in = 0; in < sources.size() && in < keep.size(); ++in) {
    if (keep[in]) sources[out++] = sources[in];
  }
  sources.resize(out);
}

}  // namespace vantor
