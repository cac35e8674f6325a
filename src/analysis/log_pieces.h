#pragma once
// A log read in pieces of whole lines, so that a log of any size is never
// held at once and the pieces can be worked on side by side. Every CR and
// every LF ends a line of its own; text after the last line end is not a
// line.

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string_view>

#include "analysis/byte_buffer.h"

namespace vantor {

// Bytes of a log: whole lines, each with the CR or LF that ends it.
struct LinesBuffer {
  ByteBuffer bytes;
  char end_before = 0;       // the end of the line before the first, 0 at the start of the log
  std::uint64_t offset = 0;  // where the first byte stands in the log

  std::string_view Bytes() const { return bytes.View(); }
};

// The text of a log file, read one piece after the other.
class LogText {
 public:
  LogText() = default;
  explicit LogText(std::FILE* file) : file_(file) {}
  ~LogText();
  LogText(LogText&& other) noexcept : file_(other.file_) { other.file_ = nullptr; }
  LogText& operator=(LogText&&) = delete;

  // Fills piece with the next whole lines (about kReadPiece bytes, more for
  // a longer line), with kCopySlack bytes of room after them; false at the
  // end of the text. on_read(bytes read so
  // far) follows every read, the text after the last line end included.
  template <typename OnRead>
  bool NextPiece(LinesBuffer& piece, OnRead&& on_read);
  // The errno of a read that failed part way; 0 when none did.
  int Error() const { return error_; }
  // After the last piece: the bytes after the last line end, which are no line.
  std::string_view Tail() const { return carry_.Bytes(); }
  // The bytes read so far.
  std::uint64_t BytesRead() const { return read_; }
  // Another descriptor of the open file, for reading it again; -1 when none.
  int DuplicateFd() const;
  // The size of the file; 0 for the empty text.
  std::uint64_t Size() const;

 private:
  static constexpr std::size_t kReadPiece = 1 << 20;

  std::FILE* file_ = nullptr;  // null: the empty text
  LinesBuffer carry_;          // the start of a line that runs past a piece
  std::uint64_t read_ = 0;
  int error_ = 0;
};

template <typename OnRead>
bool LogText::NextPiece(LinesBuffer& piece, OnRead&& on_read) {
  if (file_ == nullptr || std::feof(file_) || error_ != 0) return false;
  piece.bytes.Clear();
  piece.bytes.Append(carry_.Bytes());
  piece.end_before = carry_.end_before;
  piece.offset = carry_.offset;
  for (;;) {
    piece.bytes.Reserve(kReadPiece + kCopySlack);
    const std::size_t got = std::fread(piece.bytes.End(), 1, kReadPiece, file_);
    on_read(read_ += got);
    piece.bytes.SetEnd(piece.bytes.End() + got);
    const bool at_end = got < kReadPiece;
    if (at_end && std::ferror(file_) != 0) error_ = errno != 0 ? errno : EIO;
    // The piece ends after its last line end; the rest begins the next one.
    // Only the bytes just read can hold one: the carry holds none.
    const char* data = piece.bytes.data();
    const std::size_t size = piece.bytes.size(), fresh = size - got;
    std::size_t cut = size;
    while (cut > fresh && data[cut - 1] != '\n' && data[cut - 1] != '\r') --cut;
    if (cut == fresh) cut = 0;
    if (cut > 0 || at_end) {
      carry_.bytes.Clear();
      carry_.bytes.Append({data + cut, size - cut});
      carry_.end_before = cut > 0 ? data[cut - 1] : piece.end_before;
      carry_.offset = piece.offset + cut;
      piece.bytes.Truncate(cut);
      return cut > 0;
    }
  }
}

}  // namespace vantor
