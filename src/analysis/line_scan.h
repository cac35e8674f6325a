#pragma once
// The bytes the import looks for in every line of a piece of a log — line
// ends (CR, LF), colons and carets — found in one pass over the piece, 16
// bytes at a time where the processor allows, instead of a search per line
// and per byte.

#include <cstdint>
#include <string_view>
#include <vector>

namespace vantor {

class LineScan {
 public:
  // Scans bytes, whole lines each ended by a CR or an LF.
  void Scan(std::string_view bytes);

  // Calls on_line(line, the CR or LF that ends it, whether it holds a
  // colon, whether it holds "^7") for each line in order.
  template <typename OnLine>
  void ForEachLine(OnLine&& on_line) const {
    std::size_t start = 0;
    for (std::size_t word = 0; word < ends_.size(); ++word) {
      for (std::uint64_t bits = ends_[word]; bits != 0; bits &= bits - 1) {
        const std::size_t end = word * 64 + static_cast<std::size_t>(__builtin_ctzll(bits));
        on_line(bytes_.substr(start, end - start), bytes_[end], Any(colons_, start, end),
                HasCode7(start, end));
        start = end + 1;
      }
    }
  }

 private:
  // Whether mask has a bit in [from, to).
  static bool Any(const std::vector<std::uint64_t>& mask, std::size_t from, std::size_t to);
  // Whether a caret in [from, to) is followed by a 7 before to.
  bool HasCode7(std::size_t from, std::size_t to) const;

  std::string_view bytes_;
  // One bit per byte of bytes_, 64 bytes a word.
  std::vector<std::uint64_t> ends_, colons_, carets_;
};

}  // namespace vantor
