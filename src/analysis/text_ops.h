#pragma once
// The string operations the message texts are cut with. Positions are
// 1-based and count bytes: a log is single-byte text, kept as it is.

#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>

namespace vantor {

// Position of the first occurrence of needle in text, exact and
// case-sensitive, 0 when absent. The empty needle occurs at position 1 of
// every text, the empty one included.
// (The C library's memmem searches far faster than a first-byte scan with
// a compare at every candidate.)
inline std::size_t Find(std::string_view text, std::string_view needle) {
  if (needle.empty()) return 1;
  const void* at = ::memmem(text.data(), text.size(), needle.data(), needle.size());
  return at == nullptr ? 0 : static_cast<std::size_t>(static_cast<const char*>(at) - text.data()) + 1;
}

inline bool Contains(std::string_view text, std::string_view needle) { return Find(text, needle) != 0; }

// A text searched for in many lines, prepared once (Boyer-Moore-Horspool):
// most bytes of a line are skipped unseen, so one search costs a few
// comparisons rather than one per byte.
class TextSearcher {
 public:
  explicit TextSearcher(std::string_view needle);
  bool In(std::string_view text) const;

 private:
  std::string needle_;
  std::size_t skip_[256];
};

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
