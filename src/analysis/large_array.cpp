#include "analysis/large_array.h"

#include <sys/mman.h>

#include <cstdint>

namespace vantor {

namespace {

constexpr std::size_t kHugePage = std::size_t{2} << 20;

std::size_t Mapped(std::size_t bytes) { return (bytes + kHugePage - 1) / kHugePage * kHugePage; }

}  // namespace

void* MapLargeArray(std::size_t bytes) {
  if (bytes > SIZE_MAX - 2 * kHugePage) throw std::bad_alloc();
  const std::size_t size = Mapped(bytes);
  // One huge page more than needed, so that a 2 MB boundary lies within;
  // what lies outside the aligned part is given back at once.
  void* mapped =
      ::mmap(nullptr, size + kHugePage, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (mapped == MAP_FAILED) throw std::bad_alloc();
  const auto start = reinterpret_cast<std::uintptr_t>(mapped);
  const std::uintptr_t aligned = (start + kHugePage - 1) / kHugePage * kHugePage;
  if (aligned > start) ::munmap(mapped, aligned - start);
  if (const std::uintptr_t tail = start + kHugePage - aligned; tail > 0)
    ::munmap(reinterpret_cast<void*>(aligned + size), tail);
  // Advice only: without huge pages the array works the same, page by page.
  ::madvise(reinterpret_cast<void*>(aligned), size, MADV_HUGEPAGE);
  return reinterpret_cast<void*>(aligned);
}

void UnmapLargeArray(void* data, std::size_t bytes) noexcept { ::munmap(data, Mapped(bytes)); }

}  // namespace vantor
