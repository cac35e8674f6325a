#pragma once
// The string operations the message texts are cut with. Positions are
// 1-based and count bytes: a log is single-byte text, kept as it is.

#include <cstddef>
#include <string>
#include <string_view>

namespace vantor {

// Position of the first occurrence of needle in text, exact and
// case-sensitive, 0 when absent. The empty needle occurs at position 1 of
// every text, the empty one included.
inline std::size_t Find(std::string_view text, std::string_view needle) {
  const std::size_t at = text.find(needle);
  return at == std::string_view::npos ? 0 : at + 1;
}

inline bool Contains(std::string_view text, std::string_view needle) {
  return text.find(needle) != std::string_view::npos;
}

// The first n bytes (all of them when text is shorter; none when n <= 0).
inline std::string_view Left(std::string_view text, long long n) {
  if (n <= 0) return {};
  return text.substr(0, static_cast<std::size_t>(n));
}

// n bytes from position p (1-based); fewer when text ends first, none when p
// lies beyond the text. A negative length yields the empty string: that is
// how a cut whose end lies before its start is settled.
inline std::string_view Mid(std::string_view text, long long p, long long n) {
  if (n <= 0 || p < 1 || static_cast<std::size_t>(p) > text.size()) return {};
  return text.substr(static_cast<std::size_t>(p - 1), static_cast<std::size_t>(n));
}

// Every non-overlapping occurrence of from, found left to right, replaced
// by to in one pass; text that a replacement forms is not searched again.
std::string ReplaceAll(std::string_view text, std::string_view from, std::string_view to);

}  // namespace vantor
