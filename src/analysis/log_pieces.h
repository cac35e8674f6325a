#pragma once
// A log read in pieces of whole lines, so that a log of any size is never
// held at once and the pieces can be worked on side by side. Every CR and
// every LF ends a line of its own; text after the last line end is not a
// line.

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string_view>

namespace vantor {

// The line numbers a text editor shows: a CR LF pair ends one line, though
// the import meets an empty line between the two. Counted from 1 within a
// piece; end_before is the end of the line before it (0 at the start of a
// log), so that a pair split between two pieces is still one line end: its
// empty line gets the number 0, the last line of the piece before.
class PhysicalLines {
 public:
  explicit PhysicalLines(char end_before = 0) : last_end_(end_before) {}
  std::uint64_t Number(std::string_view line, char end) {
    const bool second_half_of_crlf = end == '\n' && line.empty() && last_end_ == '\r';
    last_end_ = end;
    return second_half_of_crlf ? next_ - 1 : next_++;
  }
  // The lines numbered so far.
  std::uint64_t Count() const { return next_ - 1; }

 private:
  std::uint64_t next_ = 1;
  char last_end_ = 0;
};

// Bytes of a log: whole lines, each with the CR or LF that ends it.
struct LinesBuffer {
  std::unique_ptr<char[]> data;
  std::size_t size = 0, capacity = 0;
  char end_before = 0;       // the end of the line before the first, 0 at the start of the log
  std::uint64_t offset = 0;  // where the first byte stands in the log

  std::string_view Bytes() const { return {data.get(), size}; }
  // Room for n more bytes after size, keeping the bytes there.
  void Reserve(std::size_t n);
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
  // a longer line); false at the end of the text. on_read(bytes read so
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
  piece.size = 0;
  piece.Reserve(carry_.size + kReadPiece);
  if (carry_.size > 0) std::memcpy(piece.data.get(), carry_.data.get(), carry_.size);
  piece.size = carry_.size;
  piece.end_before = carry_.end_before;
  piece.offset = carry_.offset;
  for (;;) {
    piece.Reserve(kReadPiece);
    const std::size_t got = std::fread(piece.data.get() + piece.size, 1, kReadPiece, file_);
    on_read(read_ += got);
    piece.size += got;
    const bool at_end = got < kReadPiece;
    if (at_end && std::ferror(file_) != 0) error_ = errno != 0 ? errno : EIO;
    // The piece ends after its last line end; the rest begins the next one.
    // Only the bytes just read can hold one: the carry holds none.
    const std::size_t fresh = piece.size - got;
    std::size_t cut = piece.size;
    while (cut > fresh && piece.data[cut - 1] != '\n' && piece.data[cut - 1] != '\r') --cut;
    if (cut == fresh) cut = 0;
    if (cut > 0 || at_end) {
      carry_.size = 0;
      carry_.Reserve(piece.size - cut);
      if (piece.size > cut) std::memcpy(carry_.data.get(), piece.data.get() + cut, piece.size - cut);
      carry_.size = piece.size - cut;
      carry_.end_before = cut > 0 ? piece.data[cut - 1] : piece.end_before;
      carry_.offset = piece.offset + cut;
      piece.size = cut;
      return cut > 0;
    }
  }
}

}  // namespace vantor
