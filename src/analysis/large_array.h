#pragma once
// Arrays of a megabyte or more in 2 MB pages of their own. Memory a program
// touches for the first time costs a page fault per 4 KB page, and where
// the system runs on a virtual machine that pages it through its host a
// fault takes 10 µs or more: the lists of a gigabyte log would spend
// seconds faulting. A large array is mapped on its own, aligned to 2 MB and
// marked for huge pages, so that one fault brings 2 MB; smaller ones come
// from the heap as usual.

#include <cstddef>
#include <memory>
#include <new>
#include <string>
#include <utility>
#include <vector>

namespace vantor {

inline constexpr std::size_t kLargeArrayBytes = std::size_t{1} << 20;

// bytes of zeroed memory in huge pages where the system has them; throws
// std::bad_alloc when there is no memory.
void* MapLargeArray(std::size_t bytes);
// Gives back what MapLargeArray(bytes) gave.
void UnmapLargeArray(void* data, std::size_t bytes) noexcept;

template <typename T>
struct LargeArrayAllocator {
  using value_type = T;

  LargeArrayAllocator() = default;
  template <typename U>
  LargeArrayAllocator(const LargeArrayAllocator<U>&) noexcept {}

  T* allocate(std::size_t n) {
    if (n > SIZE_MAX / sizeof(T)) throw std::bad_array_new_length();
    if (n * sizeof(T) >= kLargeArrayBytes) return static_cast<T*>(MapLargeArray(n * sizeof(T)));
    return std::allocator<T>().allocate(n);
  }
  void deallocate(T* data, std::size_t n) noexcept {
    if (n * sizeof(T) >= kLargeArrayBytes) return UnmapLargeArray(data, n * sizeof(T));
    std::allocator<T>().deallocate(data, n);
  }
  // An element made without a value is left as its type leaves it (a
  // number unset): a list grown to be filled is not written twice.
  template <typename U>
  void construct(U* at) noexcept(noexcept(::new (static_cast<void*>(at)) U)) {
    ::new (static_cast<void*>(at)) U;
  }
  template <typename U, typename... Args>
  void construct(U* at, Args&&... args) {
    ::new (static_cast<void*>(at)) U(std::forward<Args>(args)...);
  }
  template <typename U>
  bool operator==(const LargeArrayAllocator<U>&) const noexcept {
    return true;
  }
};

template <typename T>
using LargeVector = std::vector<T, LargeArrayAllocator<T>>;
using LargeString = std::basic_string<char, std::char_traits<char>, LargeArrayAllocator<char>>;

}  // namespace vantor
