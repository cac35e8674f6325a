#pragma once
// What makes a match the same match in another run: the SHA-256 of the
// bytes of its lines, from the first byte of its first line to the end of
// its last line's line end. A log that kept growing gives its earlier
// matches the same identities, whatever its name, size or place.

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "stats/matches.h"

namespace vantor {

struct MatchDigests {
  std::string identity;  // 64 lowercase hex digits
  // The digests of the match's first n lines, for each n asked for that is
  // shorter than the match: a match that a log cut short, archived before,
  // is the beginning of the whole match.
  std::map<std::uint64_t, std::string> beginnings;
};

// The digests of each match, in the order of matches; files are the run's
// logs, as SourceLine::file numbers them; beginnings are the line counts
// whose digests are wanted. None when a log cannot be read again.
std::optional<std::vector<MatchDigests>> MatchIdentities(const std::vector<std::string>& files,
                                                         const std::vector<Match>& matches,
                                                         const std::set<std::uint64_t>& beginnings = {});

// The identities of the matches from the digests of the spans of the run
// (by MatchSpan::order), as the import works them out.
std::vector<MatchDigests> IdentitiesOfSpans(const std::vector<std::string>& span_digests,
                                            const std::vector<Match>& matches);

}  // namespace vantor
