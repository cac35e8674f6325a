#pragma once
// The SHA-256 of a log and of the lines of each stretch of it that the
// markers cut out as a possible match. A stretch begins at the start of the
// log or at a map load's line and runs to the next marker: up to the end of
// that marker's line when a limit was hit, else up to the end of the line
// before it; line ends included, a CR LF pair whole. The stretches are
// those the matches of a run are cut along (stats/matches.h), in order.
//
// Worked out from the system's cache of the log on threads of their own:
// the log's hash while it is imported, the stretches' once the markers are
// known (the stages after the import leave a core free). Worked out in one
// pass, the first stretch's digest is the log's hash as it stood where the
// stretch ended.

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace vantor {

// A marker line: its row of kMatchMarkers and its place in the log's bytes,
// [begin, end) with the CR or LF that ends it.
struct MarkerBytes {
  std::size_t row;
  std::uint64_t begin, end;
};

// The log's digest ("" when it cannot be read again) and, when with_stretches,
// each stretch's. fd is the log, open for reading; size the bytes the
// import read; lines_end where its last line ends. A log_digest worked out
// before (of size bytes) is taken as it is, and only the stretches are read.
std::pair<std::string, std::vector<std::string>> DigestLog(int fd, std::uint64_t size,
                                                           std::uint64_t lines_end,
                                                           const std::vector<MarkerBytes>& markers,
                                                           bool with_stretches,
                                                           const std::string* log_digest = nullptr);

// The SHA-256 of the first size bytes of the log; "" when they cannot be read.
std::string HashLog(int fd, std::uint64_t size);

}  // namespace vantor
