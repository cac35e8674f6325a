#pragma once
// How many threads a run's work that splits into pieces uses: one per core
// of the machine unless the user chose another number; and running the
// ranges of such work side by side.

#include <cstddef>
#include <system_error>
#include <thread>
#include <vector>

namespace vantor {

// 0 goes back to one per core.
void SetWorkerThreads(unsigned count);
// At least 1.
unsigned WorkerThreads();

// How many ranges work over rows is cut into: one per worker thread (even
// for a few rows, so that work cut in ranges is cut on small logs too),
// none empty.
std::size_t RangesFor(std::size_t rows);

// Range r of rows cut into ranges: [begin, end).
struct RowRange {
  std::size_t begin, end;
};
inline RowRange RangeOf(std::size_t rows, std::size_t r, std::size_t ranges) {
  return {rows * r / ranges, rows * (r + 1) / ranges};
}

// Runs work(0) .. work(n - 1), each on a thread of its own but the first,
// which runs on the caller's; one that cannot have a thread runs on the
// caller's afterwards.
template <typename Work>
void SideBySide(std::size_t n, Work work) {
  std::vector<std::thread> threads;
  threads.reserve(n);  // no allocation failure once threads run
  std::size_t started = 1;
  try {
    for (; started < n; ++started) threads.emplace_back(work, started);
  } catch (const std::system_error&) {
  }
  if (n > 0) work(0);
  for (std::thread& thread : threads) thread.join();
  for (std::size_t i = started; i < n; ++i) work(i);
}

}  // namespace vantor
