#pragma once
// Bytes filled through a pointer: room is made first, then written, and
// nothing is zeroed on the way. The import fills a buffer per piece of a
// log and per side file, hands it to the thread that writes it and gets an
// empty one back, so that no byte is copied twice and memory once touched
// is used again. A large buffer lives in huge pages (large_array.h).

#include <cstddef>
#include <cstring>
#include <string_view>

namespace vantor {

// How far a copy of a line may read and write past the bytes it copies:
// the buffers lines are copied from and into keep this much room after
// their last byte.
inline constexpr std::size_t kCopySlack = 32;

// Copies n bytes kCopySlack at a time, reading and writing up to
// kCopySlack - 1 bytes past them: a line is a few dozen bytes, and a call
// to the C library for each would cost more than the copy.
inline char* CopyWithSlack(char* to, const char* from, std::size_t n) {
  for (std::size_t at = 0; at < n; at += kCopySlack) std::memcpy(to + at, from + at, kCopySlack);
  return to + n;
}

class ByteBuffer {
 public:
  ByteBuffer() = default;
  ByteBuffer(ByteBuffer&& other) noexcept { Swap(other); }
  ByteBuffer& operator=(ByteBuffer&& other) noexcept {
    ByteBuffer gone(static_cast<ByteBuffer&&>(other));
    Swap(gone);
    return *this;
  }
  ~ByteBuffer();

  const char* data() const { return data_; }
  char* data() { return data_; }
  std::size_t size() const { return size_; }
  bool empty() const { return size_ == 0; }
  std::string_view View() const { return {data_, size_}; }

  // How many bytes fit after the last without growing.
  std::size_t Room() const { return capacity_ - size_; }
  // Room for n more bytes after the last, the bytes there kept.
  void Reserve(std::size_t n) {
    if (capacity_ - size_ < n) Grow(n);
  }
  // Where the next byte goes; after writing there (within the room
  // reserved), SetEnd says where the bytes now end.
  char* End() { return data_ + size_; }
  void SetEnd(const char* end) { size_ = static_cast<std::size_t>(end - data_); }
  void Append(std::string_view bytes) {
    Reserve(bytes.size());
    if (!bytes.empty()) std::memcpy(End(), bytes.data(), bytes.size());
    size_ += bytes.size();
  }
  // Keeps the first n bytes (n <= size()).
  void Truncate(std::size_t n) { size_ = n; }
  void Clear() { size_ = 0; }

 private:
  void Grow(std::size_t n);
  void Swap(ByteBuffer& other) noexcept;

  char* data_ = nullptr;
  std::size_t size_ = 0, capacity_ = 0;
};

}  // namespace vantor
