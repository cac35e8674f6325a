#include "analysis/worker_threads.h"

#include <atomic>
#include <thread>

namespace vantor {

namespace {
std::atomic<unsigned> g_chosen{0};
}  // namespace

void SetWorkerThreads(unsigned count) { g_chosen = count; }

unsigned WorkerThreads() {
  const unsigned chosen = g_chosen.load();
  if (chosen != 0) return chosen;
  const unsigned cores = std::thread::hardware_concurrency();
  return cores != 0 ? cores : 1;
}

std::size_t RangesFor(std::size_t rows) {
  const std::size_t threads = WorkerThreads();
  return rows < 1 ? 1 : rows < threads ? rows : threads;
}

}  // namespace vantor
