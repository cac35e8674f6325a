#pragma once
// Writes blocks of bytes to a file on a thread of its own, in the order
// they are handed over, so that the analysis goes on while the system takes
// the bytes (writing a large file is often throttled by the system).

#include <condition_variable>
#include <cstdio>
#include <deque>
#include <mutex>
#include <string>
#include <thread>

namespace vantor {

class BackgroundWriter {
 public:
  explicit BackgroundWriter(std::FILE* file);
  ~BackgroundWriter();  // writes what was handed over, then stops
  BackgroundWriter(const BackgroundWriter&) = delete;
  BackgroundWriter& operator=(const BackgroundWriter&) = delete;

  // Hands a block over and returns an empty one to fill next (a written
  // one when there is one, so its memory is used again); waits while many
  // blocks are still unwritten, so that memory stays bounded.
  std::string Write(std::string&& block);
  // Waits until every block is written; 0, or the errno of the first
  // failed write (the blocks after it are dropped).
  int Finish();

 private:
  static constexpr std::size_t kMaxQueued = 8;
  void Run();

  std::FILE* file_;
  std::mutex mutex_;
  std::condition_variable changed_;
  std::deque<std::string> queue_;
  std::deque<std::string> spent_;  // written blocks, emptied
  bool finishing_ = false;
  int error_ = 0;
  std::thread thread_;  // last: starts once everything above is ready
};

}  // namespace vantor
