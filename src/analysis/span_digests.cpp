#include "analysis/span_digests.h"

#include "analysis/match_markers.h"

namespace vantor {

void SpanDigests::HashLogTo(std::string_view piece, std::size_t end) {
  log_.Add(piece.substr(log_fed_, end - log_fed_));
  log_fed_ = end;
}

void SpanDigests::Push(std::optional<Sha256>& stretch) {
  if (stretch) {
    digests_.push_back(stretch->HexDigest());
  } else {
    Sha256 log_so_far = log_;  // finished on a copy: the log's hash goes on
    digests_.push_back(log_so_far.HexDigest());
  }
  stretch.reset();
}

void SpanDigests::Close(std::string_view piece, std::size_t from, std::size_t end) {
  if (open_) open_->Add(piece.substr(from, end - from));
  if (first_open_) HashLogTo(piece, end);
  first_open_ = false;
  if (end == piece.size() && piece[end - 1] == '\r') {
    awaiting_ = true;
    awaiting_stretch_ = std::move(open_);
  } else {
    Push(open_);
  }
  open_.reset();
}

void SpanDigests::Add(std::string_view piece, const std::vector<Marker>& markers) {
  log_fed_ = 0;
  std::size_t from = 0;  // where the open stretch's bytes in this piece begin
  if (awaiting_) {
    const std::size_t lf = !piece.empty() && piece.front() == '\n' ? 1 : 0;
    if (awaiting_stretch_) awaiting_stretch_->Add(piece.substr(0, lf));
    if (!awaiting_stretch_) HashLogTo(piece, lf);
    Push(awaiting_stretch_);
    awaiting_ = false;
  }
  for (const Marker& marker : markers) {
    const MarkerKind kind = kMatchMarkers[marker.row].kind;
    if (open_ || first_open_) {
      std::size_t end = kind == MarkerKind::kMatchEnd ? marker.end : marker.begin;
      if (kind == MarkerKind::kMatchEnd && piece[end - 1] == '\r' && end < piece.size() && piece[end] == '\n')
        ++end;
      Close(piece, from, end);
    }
    if (kind == MarkerKind::kMapLoad) {
      open_.emplace();
      from = marker.begin;
    }
  }
  if (open_) open_->Add(piece.substr(from));
  HashLogTo(piece, piece.size());
}

std::string SpanDigests::Finish(std::string_view tail, std::vector<std::string>& stretches) {
  if (awaiting_) Push(awaiting_stretch_);
  if (open_ || first_open_) Push(open_);
  first_open_ = awaiting_ = false;
  log_.Add(tail);
  for (std::string& digest : digests_) stretches.push_back(std::move(digest));
  digests_.clear();
  return log_.HexDigest();
}

}  // namespace vantor
