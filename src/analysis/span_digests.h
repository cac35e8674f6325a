#pragma once
// The SHA-256 of the lines of each stretch of a log that the markers cut
// out as a possible match, worked out while the log is taken up, so that an
// archived run need not read its logs again. A stretch begins at the start
// of the log or at a map load's line and runs to the next marker: up to
// the end of that marker's line when a limit was hit, else up to the end of
// the line before it; line ends included, a CR LF pair whole. The stretches
// are those the matches of a run are cut along (stats/matches.h), in order.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "report/sha256.h"

namespace vantor {

class SpanDigests {
 public:
  // A marker of kMatchMarkers' row, at [begin, end) of the piece: its line
  // and the CR or LF that ends it.
  struct Marker {
    std::size_t row, begin, end;
  };

  // Starts the stretch that begins with the log.
  SpanDigests() { open_.emplace(); }
  // The next piece of the log (whole lines) and its markers, in order.
  void Add(std::string_view piece, const std::vector<Marker>& markers);
  // The end of the log ends the open stretch; returns every digest.
  std::vector<std::string> Finish();

 private:
  void Close(Sha256& sha) { digests_.push_back(sha.HexDigest()); }

  std::optional<Sha256> open_;      // the stretch being hashed
  std::optional<Sha256> awaiting_;  // ended by a CR at the end of a piece: an LF may follow
  std::vector<std::string> digests_;
};

}  // namespace vantor
