#include "archive/match_identity.h"

#include <cstring>
#if defined(__SSE2__)
#include <immintrin.h>
#endif
#include <fstream>

#include "report/sha256.h"

namespace vantor {

namespace {

// The line ends in [p, end): every LF and every CR, a CR LF pair once.
std::uint64_t LineEnds(const char* p, const char* end) {
  std::uint64_t lf = 0, cr = 0, pairs = 0;
#if defined(__SSE2__)
  // Sixteen bytes at a time: the bytes that are LF, CR, and CR before an LF.
  const __m128i newline = _mm_set1_epi8('\n'), carriage = _mm_set1_epi8('\r');
  for (; end - p > 16; p += 16) {
    const __m128i here = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
    const __m128i next = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + 1));
    const unsigned is_cr = static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi8(here, carriage)));
    const unsigned next_lf = static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi8(next, newline)));
    lf += static_cast<unsigned>(__builtin_popcount(_mm_movemask_epi8(_mm_cmpeq_epi8(here, newline))));
    cr += static_cast<unsigned>(__builtin_popcount(is_cr));
    pairs += static_cast<unsigned>(__builtin_popcount(is_cr & next_lf));
  }
#endif
  for (; p < end; ++p) {
    lf += *p == '\n';
    cr += *p == '\r';
    pairs += *p == '\r' && p + 1 < end && p[1] == '\n';
  }
  return lf + cr - pairs;
}

struct LineSpan {
  std::uint64_t first, last;
  std::size_t match;  // where its identity goes
};

// Follows the line numbers through a log read piece by piece (a CR, an LF
// or a CR LF pair ends a line, as the import counts them) and hashes the
// bytes of each span's lines.
class SpanHasher {
 public:
  SpanHasher(std::vector<LineSpan> spans, std::vector<MatchDigests>& digests,
             const std::set<std::uint64_t>& beginnings)
      : spans_(std::move(spans)), digests_(digests), beginnings_(beginnings) {}

  void Feed(const char* begin, const char* end) {
    if (line_ == 0) LineBegins(begin);
    if (FeedWhole(begin, end)) return;
    segment_ = begin;
    const char* at = begin;
    if (pending_cr_ && at < end) {
      pending_cr_ = false;
      LineBegins(at += (*at == '\n'));
    }
    while (const char* cut = NextLineEnd(at, end)) {
      if (*cut == '\r' && cut + 1 == end) {  // the LF that may follow is in the next piece
        pending_cr_ = true;
        break;
      }
      LineBegins(at = cut + 1 + (*cut == '\r' && cut[1] == '\n'));
    }
    if (active_) sha_.Add(std::string_view(segment_, static_cast<std::size_t>(end - segment_)));
  }

  void Finish() {
    if (active_) digests_[spans_[next_].match].identity = sha_.HexDigest();
  }

 private:
  // A piece in which no span begins or ends, and no beginning is wanted, is
  // hashed whole and its lines counted, instead of walking it line by line.
  bool FeedWhole(const char* begin, const char* end) {
    if (begin == end) return false;
    const char* p = begin;
    std::uint64_t ends = 0;
    if (pending_cr_) {
      ++ends;  // the CR that ended the last piece
      p += *p == '\n';
    }
    const bool trailing_cr = p < end && end[-1] == '\r';  // its LF, if any, is in the next piece
    ends += LineEnds(p, end) - trailing_cr;
    const std::uint64_t last = line_ + ends;  // the line the next piece begins in
    if (next_ < spans_.size()) {
      const LineSpan& span = spans_[next_];
      if ((active_ ? span.last + 1 : span.first) <= last) return false;
      const auto wanted = beginnings_.upper_bound(line_ - span.first);
      if (active_ && wanted != beginnings_.end() && span.first + *wanted <= last) return false;
    }
    if (active_) sha_.Add(std::string_view(begin, static_cast<std::size_t>(end - begin)));
    line_ = last;
    pending_cr_ = trailing_cr;
    return true;
  }

  static const char* NextLineEnd(const char* at, const char* end) {
    const auto n = static_cast<std::size_t>(end - at);
    const void* lf = std::memchr(at, '\n', n);
    const void* cr =
        std::memchr(at, '\r', lf ? static_cast<std::size_t>(static_cast<const char*>(lf) - at) : n);
    return static_cast<const char*>(cr ? cr : lf);
  }

  void LineBegins(const char* at) {
    ++line_;
    const std::uint64_t lines_done = active_ ? line_ - spans_[next_].first : 0;
    if (active_ && line_ <= spans_[next_].last && beginnings_.count(lines_done) != 0) {
      Sha256 beginning = sha_;  // the state so far, finished on a copy
      beginning.Add(std::string_view(segment_, static_cast<std::size_t>(at - segment_)));
      digests_[spans_[next_].match].beginnings[lines_done] = beginning.HexDigest();
    }
    if (active_ && line_ > spans_[next_].last) {
      sha_.Add(std::string_view(segment_, static_cast<std::size_t>(at - segment_)));
      digests_[spans_[next_++].match].identity = sha_.HexDigest();
      sha_ = Sha256();
      active_ = false;
    }
    if (!active_ && next_ < spans_.size() && line_ == spans_[next_].first) {
      active_ = true;
      segment_ = at;
    }
  }

  std::vector<LineSpan> spans_;
  std::vector<MatchDigests>& digests_;
  const std::set<std::uint64_t>& beginnings_;
  Sha256 sha_;
  std::uint64_t line_ = 0;  // the line the next byte belongs to
  std::size_t next_ = 0;    // the span being hashed or the next one
  bool active_ = false;
  bool pending_cr_ = false;
  const char* segment_ = nullptr;  // where the unhashed bytes of the span begin
};

}  // namespace

std::optional<std::vector<MatchDigests>> MatchIdentities(const std::vector<std::string>& files,
                                                         const std::vector<Match>& matches,
                                                         const std::set<std::uint64_t>& beginnings) {
  std::vector<MatchDigests> identities(matches.size());
  for (std::size_t file = 0; file < files.size(); ++file) {
    std::vector<LineSpan> spans;
    for (std::size_t m = 0; m < matches.size(); ++m) {
      if (matches[m].span.first.file == file)
        spans.push_back({matches[m].span.first.line, matches[m].span.last.line, m});
    }
    if (spans.empty()) continue;
    std::ifstream log(files[file], std::ios::binary);
    if (!log) return std::nullopt;
    SpanHasher hasher(std::move(spans), identities, beginnings);
    std::vector<char> piece(1 << 20);
    while (log.read(piece.data(), static_cast<std::streamsize>(piece.size())) || log.gcount() > 0) {
      hasher.Feed(piece.data(), piece.data() + log.gcount());
    }
    if (log.bad()) return std::nullopt;
    hasher.Finish();
  }
  for (const MatchDigests& digests : identities) {
    if (digests.identity.empty()) return std::nullopt;  // a log shorter than when it was analysed
  }
  return identities;
}

std::vector<MatchDigests> IdentitiesOfSpans(const std::vector<std::string>& span_digests,
                                            const std::vector<Match>& matches) {
  std::vector<MatchDigests> identities(matches.size());
  for (std::size_t m = 0; m < matches.size(); ++m)
    identities[m].identity = span_digests[matches[m].span.order];
  return identities;
}

}  // namespace vantor
