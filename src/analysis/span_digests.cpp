#include "analysis/span_digests.h"

#include "analysis/match_markers.h"

namespace vantor {

void SpanDigests::Add(std::string_view piece, const std::vector<Marker>& markers) {
  std::size_t from = 0;
  if (awaiting_) {
    if (!piece.empty() && piece.front() == '\n') awaiting_->Add(piece.substr(0, from = 1));
    Close(*awaiting_);
    awaiting_.reset();
  }
  for (const Marker& marker : markers) {
    const MarkerKind kind = kMatchMarkers[marker.row].kind;
    if (open_) {
      std::size_t end = kind == MarkerKind::kMatchEnd ? marker.end : marker.begin;
      const bool ends_in_cr = kind == MarkerKind::kMatchEnd && piece[end - 1] == '\r';
      if (ends_in_cr && end < piece.size() && piece[end] == '\n') ++end;
      open_->Add(piece.substr(from, end - from));
      if (ends_in_cr && end == piece.size()) {
        awaiting_ = std::move(open_);
      } else {
        Close(*open_);
      }
      open_.reset();
    }
    if (kind == MarkerKind::kMapLoad) {
      open_.emplace();
      from = marker.begin;
    }
  }
  if (open_) open_->Add(piece.substr(from));
}

std::vector<std::string> SpanDigests::Finish() {
  if (awaiting_) Close(*awaiting_);
  if (open_) Close(*open_);
  awaiting_.reset();
  open_.reset();
  return std::move(digests_);
}

}  // namespace vantor
