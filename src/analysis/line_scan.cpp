#include "analysis/line_scan.h"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace vantor {

namespace {

struct Masks {
  std::uint64_t ends = 0, colons = 0, carets = 0;
};

// The bits of n bytes from p, one at a time.
Masks MaskBytes(const char* p, std::size_t n) {
  Masks masks;
  for (std::size_t i = 0; i < n; ++i) {
    const std::uint64_t bit = std::uint64_t{1} << i;
    if (p[i] == '\n' || p[i] == '\r') masks.ends |= bit;
    if (p[i] == ':') masks.colons |= bit;
    if (p[i] == '^') masks.carets |= bit;
  }
  return masks;
}

#if defined(__SSE2__)
// The bits of 64 bytes from p, sixteen at a time.
Masks MaskBlock(const char* p) {
  const __m128i lf = _mm_set1_epi8('\n'), cr = _mm_set1_epi8('\r'), colon = _mm_set1_epi8(':'),
                caret = _mm_set1_epi8('^');
  Masks masks;
  for (int chunk = 0; chunk < 4; ++chunk) {
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + 16 * chunk));
    const auto bits = [&](__m128i same) {
      return static_cast<std::uint64_t>(static_cast<unsigned>(_mm_movemask_epi8(same))) << (16 * chunk);
    };
    masks.ends |= bits(_mm_or_si128(_mm_cmpeq_epi8(bytes, lf), _mm_cmpeq_epi8(bytes, cr)));
    masks.colons |= bits(_mm_cmpeq_epi8(bytes, colon));
    masks.carets |= bits(_mm_cmpeq_epi8(bytes, caret));
  }
  return masks;
}
#else
Masks MaskBlock(const char* p) { return MaskBytes(p, 64); }
#endif

}  // namespace

void LineScan::Scan(std::string_view bytes) {
  bytes_ = bytes;
  const std::size_t words = (bytes.size() + 63) / 64;
  ends_.resize(words);
  colons_.resize(words);
  carets_.resize(words);
  for (std::size_t word = 0; word < words; ++word) {
    const std::size_t at = word * 64;
    const Masks masks = at + 64 <= bytes.size() ? MaskBlock(bytes.data() + at)
                                                : MaskBytes(bytes.data() + at, bytes.size() - at);
    ends_[word] = masks.ends;
    colons_[word] = masks.colons;
    carets_[word] = masks.carets;
  }
}

// The bits of mask's word that stand for bytes in [from, to).
static std::uint64_t InRange(std::uint64_t bits, std::size_t word, std::size_t from, std::size_t to) {
  if (word == from / 64) bits &= ~std::uint64_t{0} << (from % 64);
  if (word == (to - 1) / 64) bits &= ~std::uint64_t{0} >> (63 - (to - 1) % 64);
  return bits;
}

bool LineScan::Any(const std::vector<std::uint64_t>& mask, std::size_t from, std::size_t to) {
  for (std::size_t word = from / 64; from < to && word <= (to - 1) / 64; ++word) {
    if (InRange(mask[word], word, from, to) != 0) return true;
  }
  return false;
}

bool LineScan::HasCode7(std::size_t from, std::size_t to) const {
  for (std::size_t word = from / 64; from < to && word <= (to - 1) / 64; ++word) {
    for (std::uint64_t bits = InRange(carets_[word], word, from, to); bits != 0; bits &= bits - 1) {
      const std::size_t at = word * 64 + static_cast<std::size_t>(__builtin_ctzll(bits));
      if (at + 1 < to && bytes_[at + 1] == '7') return true;
    }
  }
  return false;
}

}  // namespace vantor
