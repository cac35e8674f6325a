#include "report/windows1252.h"

#include <array>
#include <cstdint>

namespace vantor {

namespace {

// The code points of bytes 0x80..0x9F; the rest of the bytes are Latin-1.
constexpr std::array<std::uint16_t, 32> kHighControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

void AppendUtf8(std::string& out, std::uint32_t code) {
  if (code < 0x80) {
    out.push_back(static_cast<char>(code));
  } else if (code < 0x800) {
    out.push_back(static_cast<char>(0xC0 | (code >> 6)));
    out.push_back(static_cast<char>(0x80 | (code & 0x3F)));
  } else {
    out.push_back(static_cast<char>(0xE0 | (code >> 12)));
    out.push_back(static_cast<char>(0x80 | ((code >> 6) & 0x3F)));
    out.push_back(static_cast<char>(0x80 | (code & 0x3F)));
  }
}

// The length of the UTF-8 sequence that lead starts (0: not a lead byte),
// and the range its first continuation byte must lie in (no overlong
// forms, no surrogates, nothing beyond U+10FFFF).
struct Utf8Lead {
  std::size_t length;
  unsigned char low, high;
};

Utf8Lead LeadOf(unsigned char lead) {
  if (lead < 0x80) return {1, 0, 0};
  if (lead >= 0xC2 && lead <= 0xDF) return {2, 0x80, 0xBF};
  if (lead == 0xE0) return {3, 0xA0, 0xBF};
  if (lead == 0xED) return {3, 0x80, 0x9F};
  if (lead >= 0xE1 && lead <= 0xEF) return {3, 0x80, 0xBF};
  if (lead == 0xF0) return {4, 0x90, 0xBF};
  if (lead >= 0xF1 && lead <= 0xF3) return {4, 0x80, 0xBF};
  if (lead == 0xF4) return {4, 0x80, 0x8F};
  return {0, 0, 0};
}

bool IsUtf8(std::string_view bytes) {
  for (std::size_t i = 0; i < bytes.size();) {
    const Utf8Lead lead = LeadOf(static_cast<unsigned char>(bytes[i]));
    if (lead.length == 0 || i + lead.length > bytes.size()) return false;
    for (std::size_t k = 1; k < lead.length; ++k) {
      const auto c = static_cast<unsigned char>(bytes[i + k]);
      const unsigned char low = k == 1 ? lead.low : 0x80, high = k == 1 ? lead.high : 0xBF;
      if (c < low || c > high) return false;
    }
    i += lead.length;
  }
  return true;
}

}  // namespace

std::string PathToUtf8(std::string_view path) {
  return IsUtf8(path) ? std::string(path) : Cp1252ToUtf8(path);
}

std::string Cp1252ToUtf8(std::string_view bytes) {
  std::string out;
  out.reserve(bytes.size());
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    AppendUtf8(out, byte >= 0x80 && byte < 0xA0 ? kHighControls[byte - 0x80] : byte);
  }
  return out;
}

}  // namespace vantor
