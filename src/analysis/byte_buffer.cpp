#include "analysis/byte_buffer.h"

#include <algorithm>
#include <utility>

#include "analysis/large_array.h"

namespace vantor {

ByteBuffer::~ByteBuffer() {
  if (data_ != nullptr) LargeArrayAllocator<char>().deallocate(data_, capacity_);
}

void ByteBuffer::Grow(std::size_t n) {
  const std::size_t grown = std::max(capacity_ * 2, size_ + n);
  char* bigger = LargeArrayAllocator<char>().allocate(grown);
  if (size_ > 0) std::memcpy(bigger, data_, size_);
  if (data_ != nullptr) LargeArrayAllocator<char>().deallocate(data_, capacity_);
  data_ = bigger;
  capacity_ = grown;
}

void ByteBuffer::Swap(ByteBuffer& other) noexcept {
  std::swap(data_, other.data_);
  std::swap(size_, other.size_);
  std::swap(capacity_, other.capacity_);
}

}  // namespace vantor
