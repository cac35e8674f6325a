#include "analysis/line_scan.h"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace vantor {

namespace {

struct Masks {
  std::uint64_t crs = 0, lfs = 0, colons = 0, carets = 0, sevens = 0;
};

// The bits of n bytes from p, one at a time.
Masks MaskBytes(const char* p, std::size_t n) {
  Masks masks;
  for (std::size_t i = 0; i < n; ++i) {
    const std::uint64_t bit = std::uint64_t{1} << i;
    if (p[i] == '\r') masks.crs |= bit;
    if (p[i] == '\n') masks.lfs |= bit;
    if (p[i] == ':') masks.colons |= bit;
    if (p[i] == '^') masks.carets |= bit;
    if (p[i] == '7') masks.sevens |= bit;
  }
  return masks;
}

#if defined(__SSE2__)
// The bits of 64 bytes from p, sixteen at a time.
Masks MaskBlock(const char* p) {
  const __m128i cr = _mm_set1_epi8('\r'), lf = _mm_set1_epi8('\n'), colon = _mm_set1_epi8(':'),
                caret = _mm_set1_epi8('^'), seven = _mm_set1_epi8('7');
  Masks masks;
  for (int chunk = 0; chunk < 4; ++chunk) {
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + 16 * chunk));
    const auto bits = [&](__m128i same) {
      return static_cast<std::uint64_t>(static_cast<unsigned>(_mm_movemask_epi8(same))) << (16 * chunk);
    };
    masks.crs |= bits(_mm_cmpeq_epi8(bytes, cr));
    masks.lfs |= bits(_mm_cmpeq_epi8(bytes, lf));
    masks.colons |= bits(_mm_cmpeq_epi8(bytes, colon));
    masks.carets |= bits(_mm_cmpeq_epi8(bytes, caret));
    masks.sevens |= bits(_mm_cmpeq_epi8(bytes, seven));
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
  code7_.resize(words);
  // A caret's 7 and an LF's CR may stand in the word before or after.
  std::uint64_t carets_before = 0, cr_at_top = 0;
  for (std::size_t word = 0; word < words; ++word) {
    const std::size_t at = word * 64;
    const Masks masks = at + 64 <= bytes.size() ? MaskBlock(bytes.data() + at)
                                                : MaskBytes(bytes.data() + at, bytes.size() - at);
    const std::uint64_t lfs_after_cr = masks.lfs & (masks.crs << 1 | cr_at_top);
    ends_[word] = (masks.crs | masks.lfs) & ~lfs_after_cr;
    colons_[word] = masks.colons;
    code7_[word] = masks.carets & masks.sevens >> 1;
    if (word > 0) code7_[word - 1] |= carets_before & masks.sevens << 63;
    carets_before = masks.carets;
    cr_at_top = masks.crs >> 63;
  }
}

void LineScan::NextBit::Seek(std::size_t from) {
  sought = true;
  for (std::size_t word = from / 64; word < mask.size(); ++word) {
    std::uint64_t bits = mask[word];
    if (word == from / 64) bits &= ~std::uint64_t{0} << (from % 64);
    if (bits != 0) {
      at = word * 64 + static_cast<std::size_t>(__builtin_ctzll(bits));
      return;
    }
  }
  at = mask.size() * 64;
}

}  // namespace vantor
