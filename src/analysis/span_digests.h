#pragma once
// The SHA-256 of a log and of the lines of each stretch of it that the
// markers cut out as a possible match, worked out while the log is taken up,
// so that an archived run need not read its logs again. A stretch begins at
// the start of the log or at a map load's line and runs to the next marker:
// up to the end of that marker's line when a limit was hit, else up to the
// end of the line before it; line ends included, a CR LF pair whole. The
// stretches are those the matches of a run are cut along (stats/matches.h),
// in order. The first stretch begins where the log does, so its digest is
// the log's own hash as it stood where the stretch ended: those bytes are
// hashed once.

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

  // The next piece of the log (whole lines) and its markers, in order.
  void Add(std::string_view piece, const std::vector<Marker>& markers);
  // The end of the log, with the bytes after its last line end, ends the
  // open stretch. The log's digest, then every stretch's.
  std::string Finish(std::string_view tail, std::vector<std::string>& stretches);

 private:
  // The log's hash fed up to end of the piece.
  void HashLogTo(std::string_view piece, std::size_t end);
  // Closes the open stretch, whose bytes in the piece begin at from, at end
  // (the piece's end: an LF in the next piece may still belong to it).
  void Close(std::string_view piece, std::size_t from, std::size_t end);
  void Push(std::optional<Sha256>& stretch);

  Sha256 log_;
  std::size_t log_fed_ = 0;  // of the current piece
  bool first_open_ = true;   // the stretch from the start of the log, hashed as log_
  std::optional<Sha256> open_;
  bool awaiting_ = false;  // the closed stretch ended in a CR at the end of a piece
  std::optional<Sha256> awaiting_stretch_;  // that stretch, unless it is the first
  std::vector<std::string> digests_;
};

}  // namespace vantor
