#include "analysis/line_scan.h"

#if defined(__SSE2__)
#include <immintrin.h>
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

// The same, 32 at a time, where the processor has AVX2.
__attribute__((target("avx2"))) Masks MaskBlockAvx2(const char* p) {
  const __m256i cr = _mm256_set1_epi8('\r'), lf = _mm256_set1_epi8('\n'), colon = _mm256_set1_epi8(':'),
                caret = _mm256_set1_epi8('^'), seven = _mm256_set1_epi8('7');
  Masks masks;
  // (A lambda would not share the function's target.)
#define VANTOR_BITS(same) \
  (static_cast<std::uint64_t>(static_cast<unsigned>(_mm256_movemask_epi8(same))) << (32 * chunk))
  for (int chunk = 0; chunk < 2; ++chunk) {
    const __m256i bytes = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p + 32 * chunk));
    masks.crs |= VANTOR_BITS(_mm256_cmpeq_epi8(bytes, cr));
    masks.lfs |= VANTOR_BITS(_mm256_cmpeq_epi8(bytes, lf));
    masks.colons |= VANTOR_BITS(_mm256_cmpeq_epi8(bytes, colon));
    masks.carets |= VANTOR_BITS(_mm256_cmpeq_epi8(bytes, caret));
    masks.sevens |= VANTOR_BITS(_mm256_cmpeq_epi8(bytes, seven));
  }
#undef VANTOR_BITS
  return masks;
}
#else
Masks MaskBlock(const char* p) { return MaskBytes(p, 64); }
#endif

// Fills the masks of bytes, 64 bytes a word. A caret's 7 and an LF's CR
// may stand in the word before or after.
template <Masks (*Block)(const char*)>
__attribute__((always_inline)) inline void FillMasks(std::string_view bytes, std::uint64_t* ends,
                                                     std::uint64_t* colons, std::uint64_t* code7) {
  const std::size_t words = (bytes.size() + 63) / 64;
  std::uint64_t carets_before = 0, cr_at_top = 0;
  for (std::size_t word = 0; word < words; ++word) {
    const std::size_t at = word * 64;
    const Masks masks =
        at + 64 <= bytes.size() ? Block(bytes.data() + at) : MaskBytes(bytes.data() + at, bytes.size() - at);
    const std::uint64_t lfs_after_cr = masks.lfs & (masks.crs << 1 | cr_at_top);
    ends[word] = (masks.crs | masks.lfs) & ~lfs_after_cr;
    colons[word] = masks.colons;
    code7[word] = masks.carets & masks.sevens >> 1;
    if (word > 0) code7[word - 1] |= carets_before & masks.sevens << 63;
    carets_before = masks.carets;
    cr_at_top = masks.crs >> 63;
  }
}

void FillMasksPortably(std::string_view bytes, std::uint64_t* ends, std::uint64_t* colons,
                       std::uint64_t* code7) {
  FillMasks<MaskBlock>(bytes, ends, colons, code7);
}

#if defined(__SSE2__)
__attribute__((target("avx2"))) void FillMasksAvx2(std::string_view bytes, std::uint64_t* ends,
                                                   std::uint64_t* colons, std::uint64_t* code7) {
  FillMasks<MaskBlockAvx2>(bytes, ends, colons, code7);
}

bool HasAvx2() {
  static const bool has = __builtin_cpu_supports("avx2");
  return has;
}
#endif

}  // namespace

void LineScan::Scan(std::string_view bytes) {
  bytes_ = bytes;
  const std::size_t words = (bytes.size() + 63) / 64;
  ends_.resize(words);
  colons_.resize(words);
  code7_.resize(words);
#if defined(__SSE2__)
  if (HasAvx2()) return FillMasksAvx2(bytes, ends_.data(), colons_.data(), code7_.data());
#endif
  FillMasksPortably(bytes, ends_.data(), colons_.data(), code7_.data());
}

}  // namespace vantor
