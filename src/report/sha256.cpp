#include "report/sha256.h"

#if defined(__x86_64__)
#include <cpuid.h>
#include <immintrin.h>
#endif

#include <cstdio>
#include <cstring>
#include <memory>
#include <vector>

namespace vantor {

namespace {

constexpr std::uint32_t kRound[64] = {
    0x428a2f98, 0x71374491, 0xb5c0fbcf, 0xe9b5dba5, 0x3956c25b, 0x59f111f1, 0x923f82a4, 0xab1c5ed5,
    0xd807aa98, 0x12835b01, 0x243185be, 0x550c7dc3, 0x72be5d74, 0x80deb1fe, 0x9bdc06a7, 0xc19bf174,
    0xe49b69c1, 0xefbe4786, 0x0fc19dc6, 0x240ca1cc, 0x2de92c6f, 0x4a7484aa, 0x5cb0a9dc, 0x76f988da,
    0x983e5152, 0xa831c66d, 0xb00327c8, 0xbf597fc7, 0xc6e00bf3, 0xd5a79147, 0x06ca6351, 0x14292967,
    0x27b70a85, 0x2e1b2138, 0x4d2c6dfc, 0x53380d13, 0x650a7354, 0x766a0abb, 0x81c2c92e, 0x92722c85,
    0xa2bfe8a1, 0xa81a664b, 0xc24b8b70, 0xc76c51a3, 0xd192e819, 0xd6990624, 0xf40e3585, 0x106aa070,
    0x19a4c116, 0x1e376c08, 0x2748774c, 0x34b0bcb5, 0x391c0cb3, 0x4ed8aa4a, 0x5b9cca4f, 0x682e6ff3,
    0x748f82ee, 0x78a5636f, 0x84c87814, 0x8cc70208, 0x90befffa, 0xa4506ceb, 0xbef9a3f7, 0xc67178f2};

constexpr std::uint32_t Rotate(std::uint32_t x, int n) { return (x >> n) | (x << (32 - n)); }

#if defined(__x86_64__)
// The rounds with the SHA extensions: each step takes four words of the
// message schedule and does two rounds twice; the state is kept as the
// halves ABEF and CDGH the instructions work on.
__attribute__((target("sha,sse4.1"))) void BlocksWithShaInstructions(std::uint32_t state[8],
                                                                     const unsigned char* data,
                                                                     std::size_t n) {
  const __m128i byte_order = _mm_set_epi64x(0x0c0d0e0f08090a0bULL, 0x0405060700010203ULL);
  const __m128i dcba = _mm_shuffle_epi32(_mm_loadu_si128(reinterpret_cast<const __m128i*>(state)), 0xB1);
  const __m128i hgfe = _mm_shuffle_epi32(_mm_loadu_si128(reinterpret_cast<const __m128i*>(state + 4)), 0x1B);
  __m128i abef = _mm_alignr_epi8(dcba, hgfe, 8);
  __m128i cdgh = _mm_blend_epi16(hgfe, dcba, 0xF0);
  for (; n > 0; --n, data += 64) {
    const __m128i abef_before = abef, cdgh_before = cdgh;
    __m128i w[16];
    for (int g = 0; g < 4; ++g) {
      w[g] = _mm_shuffle_epi8(_mm_loadu_si128(reinterpret_cast<const __m128i*>(data + 16 * g)), byte_order);
    }
    for (int g = 4; g < 16; ++g) {
      const __m128i t =
          _mm_add_epi32(_mm_sha256msg1_epu32(w[g - 4], w[g - 3]), _mm_alignr_epi8(w[g - 1], w[g - 2], 4));
      w[g] = _mm_sha256msg2_epu32(t, w[g - 1]);
    }
    for (int g = 0; g < 16; ++g) {
      const __m128i m =
          _mm_add_epi32(w[g], _mm_loadu_si128(reinterpret_cast<const __m128i*>(kRound + 4 * g)));
      cdgh = _mm_sha256rnds2_epu32(cdgh, abef, m);
      abef = _mm_sha256rnds2_epu32(abef, cdgh, _mm_shuffle_epi32(m, 0x0E));
    }
    abef = _mm_add_epi32(abef, abef_before);
    cdgh = _mm_add_epi32(cdgh, cdgh_before);
  }
  const __m128i feba = _mm_shuffle_epi32(abef, 0x1B);
  const __m128i dchg = _mm_shuffle_epi32(cdgh, 0xB1);
  _mm_storeu_si128(reinterpret_cast<__m128i*>(state), _mm_blend_epi16(feba, dchg, 0xF0));
  _mm_storeu_si128(reinterpret_cast<__m128i*>(state + 4), _mm_alignr_epi8(dchg, feba, 8));
}

// CPUID: leaf 7 EBX bit 29 is SHA, leaf 1 ECX bit 19 SSE4.1.
bool HasShaInstructions() {
  static const bool has = [] {
    unsigned a = 0, b = 0, c = 0, d = 0;
    const bool sha = __get_cpuid_count(7, 0, &a, &b, &c, &d) != 0 && (b & (1u << 29)) != 0;
    return sha && __get_cpuid(1, &a, &b, &c, &d) != 0 && (c & (1u << 19)) != 0;
  }();
  return has;
}
#endif

}  // namespace

Sha256::Sha256()
    : state_{0x6a09e667, 0xbb67ae85, 0x3c6ef372, 0xa54ff53a, 0x510e527f, 0x9b05688c, 0x1f83d9ab, 0x5be0cd19} {
}

void Sha256::Block(const unsigned char* block) {
  std::uint32_t w[64];
  for (int i = 0; i < 16; ++i) {
    w[i] = std::uint32_t{block[4 * i]} << 24 | std::uint32_t{block[4 * i + 1]} << 16 |
           std::uint32_t{block[4 * i + 2]} << 8 | block[4 * i + 3];
  }
  for (int i = 16; i < 64; ++i) {
    const std::uint32_t s0 = Rotate(w[i - 15], 7) ^ Rotate(w[i - 15], 18) ^ (w[i - 15] >> 3);
    const std::uint32_t s1 = Rotate(w[i - 2], 17) ^ Rotate(w[i - 2], 19) ^ (w[i - 2] >> 10);
    w[i] = w[i - 16] + s0 + w[i - 7] + s1;
  }
  std::uint32_t v[8];
  std::memcpy(v, state_, sizeof v);
  for (int i = 0; i < 64; ++i) {
    const std::uint32_t s1 = Rotate(v[4], 6) ^ Rotate(v[4], 11) ^ Rotate(v[4], 25);
    const std::uint32_t t1 = v[7] + s1 + ((v[4] & v[5]) ^ (~v[4] & v[6])) + kRound[i] + w[i];
    const std::uint32_t s0 = Rotate(v[0], 2) ^ Rotate(v[0], 13) ^ Rotate(v[0], 22);
    const std::uint32_t t2 = s0 + ((v[0] & v[1]) ^ (v[0] & v[2]) ^ (v[1] & v[2]));
    std::memmove(v + 1, v, 7 * sizeof v[0]);
    v[4] += t1;
    v[0] = t1 + t2;
  }
  for (int i = 0; i < 8; ++i) state_[i] += v[i];
}

void Sha256::Blocks(const unsigned char* blocks, std::size_t n) {
#if defined(__x86_64__)
  if (HasShaInstructions()) return BlocksWithShaInstructions(state_, blocks, n);
#endif
  for (std::size_t i = 0; i < n; ++i) Block(blocks + 64 * i);
}

void Sha256::Add(std::string_view bytes) {
  length_ += bytes.size();
  const auto* at = reinterpret_cast<const unsigned char*>(bytes.data());
  const unsigned char* const end = at + bytes.size();
  while (at != end) {
    if (buffered_ == 0 && end - at >= 64) {
      const std::size_t n = static_cast<std::size_t>(end - at) / 64;
      Blocks(at, n);
      at += 64 * n;
      continue;
    }
    const std::size_t take = std::min<std::size_t>(64 - buffered_, static_cast<std::size_t>(end - at));
    std::memcpy(buffer_ + buffered_, at, take);
    buffered_ += take;
    at += take;
    if (buffered_ == 64) {
      Block(buffer_);
      buffered_ = 0;
    }
  }
}

std::string Sha256::HexDigest() {
  const std::uint64_t bits = length_ * 8;
  Add(std::string_view("\x80", 1));
  while (buffered_ != 56) Add(std::string_view("\0", 1));
  unsigned char tail[8];
  for (int i = 0; i < 8; ++i) tail[i] = static_cast<unsigned char>(bits >> (56 - 8 * i));
  Add(std::string_view(reinterpret_cast<const char*>(tail), 8));
  std::string hex;
  for (std::uint32_t word : state_) {
    char digits[9];
    std::snprintf(digits, sizeof digits, "%08x", word);
    hex += digits;
  }
  return hex;
}

std::optional<std::string> FileSha256(const std::string& path) {
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "rb"), &std::fclose);
  if (!file) return std::nullopt;
  std::vector<char> piece(1 << 20);
  Sha256 sha;
  for (std::size_t got; (got = std::fread(piece.data(), 1, piece.size(), file.get())) > 0;) {
    sha.Add(std::string_view(piece.data(), got));
  }
  if (std::ferror(file.get())) return std::nullopt;
  return sha.HexDigest();
}

}  // namespace vantor
