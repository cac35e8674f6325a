#pragma once
// What makes a match the same match in another run: the SHA-256 of the
// bytes of its lines, from the first byte of its first line to the end of
// its last line's line end. A log that kept growing gives its earlier
// matches the same identities, whatever its name, size or place.

#include <optional>
#include <string>
#include <vector>

#include "stats/matches.h"

namespace vantor {

// The identity of each match (64 lowercase hex digits), in the order of
// matches; files are the run's logs, as SourceLine::file numbers them.
// None when a log cannot be read again.
std::optional<std::vector<std::string>> MatchIdentities(const std::vector<std::string>& files,
                                                        const std::vector<Match>& matches);

}  // namespace vantor
