#pragma once
// The bytes the import looks for in every line of a piece of a log — line
// ends (CR, LF), colons and colour code 7 ("^7") — found in one pass over
// the piece, 16 bytes at a time where the processor allows, instead of a
// search per line and per byte.
//
// Half the lines of a log written with CR LF are the empty lines between
// the two bytes of a pair: a line ended by such a pair is met as one line
// that says so, and the empty line after it needs no step of its own.

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace vantor {

class LineScan {
 public:
  // Scans bytes, whole lines each ended by a CR or an LF.
  void Scan(std::string_view bytes);

  struct Line {
    std::size_t begin, end;  // in the bytes; end is the CR or LF that ends it
    bool has_colon, has_code7;
    // Ended by the CR of a CR LF pair: the empty line ended by the LF
    // follows, and the next line starts after the LF.
    bool pair;
  };

  // Calls on_line(const Line&) for each line in order. The only empty line
  // after a CR that it meets is one ended by an LF that begins the bytes.
  template <typename OnLine>
  void ForEachLine(OnLine&& on_line) const {
    NextBit colon{colons_}, code7{code7_};
    ForEachLineSpan([&](std::size_t begin, std::size_t end, bool pair) {
      on_line(Line{begin, end, colon.Within(begin, end), code7.Within(begin, end), pair});
    });
  }

  // The same lines as on_line(begin, end, pair), without the bytes looked for.
  template <typename OnLine>
  void ForEachLineSpan(OnLine&& on_line) const {
    std::size_t begin = 0;
    for (std::size_t word = 0; word < ends_.size(); ++word) {
      for (std::uint64_t bits = ends_[word]; bits != 0; bits &= bits - 1) {
        const std::size_t end = word * 64 + static_cast<std::size_t>(__builtin_ctzll(bits));
        const bool pair = bytes_[end] == '\r' && end + 1 < bytes_.size() && bytes_[end + 1] == '\n';
        on_line(begin, end, pair);
        begin = end + 1 + pair;
      }
    }
  }

  std::string_view Bytes() const { return bytes_; }

 private:
  // The first set bit at or after a position, found by moving forward only.
  struct NextBit {
    const std::vector<std::uint64_t>& mask;
    std::size_t at = 0;  // once sought: the first set bit from there, or past the end
    bool sought = false;

    // Whether a bit is set in [from, to); from never goes back.
    bool Within(std::size_t from, std::size_t to) {
      if (!sought || at < from) Seek(from);
      return at < to;
    }
    void Seek(std::size_t from) {
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
  };

  std::string_view bytes_;
  // One bit per byte of bytes_, 64 bytes a word. ends_ has the CR and LF
  // that end lines, but no LF that follows a CR; code7_ the carets
  // followed by a 7.
  std::vector<std::uint64_t> ends_, colons_, code7_;
};

}  // namespace vantor
