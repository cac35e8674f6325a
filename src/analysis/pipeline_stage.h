#pragma once
// A stage of a pipeline: work done on each handed-over item, in the order
// of handing over, on a thread of its own, while the thread that hands
// items over goes on with the next. At most kMaxQueued items wait, so
// memory stays bounded however fast items come; spent items are handed
// back emptied, so their memory is used again.
//
// When no thread can be started (a process limit), the work is done at
// once in Hand, with the same results. An exception thrown by the work
// (out of memory) stops the stage and is thrown again on the handing
// thread, by the next Hand or by Finish, instead of ending the program.

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <exception>
#include <functional>
#include <mutex>
#include <system_error>
#include <thread>

namespace vantor {

template <typename Item>
class PipelineStage {
 public:
  // work runs on the stage's thread only; clear empties a spent item.
  PipelineStage(std::function<void(Item&)> work, std::function<void(Item&)> clear)
      : work_(std::move(work)), clear_(std::move(clear)) {
    try {
      thread_ = std::thread([this] { Run(); });
    } catch (const std::system_error&) {
      // No thread to be had: Hand does the work itself.
    }
  }
  ~PipelineStage() { Join(); }
  PipelineStage(const PipelineStage&) = delete;
  PipelineStage& operator=(const PipelineStage&) = delete;

  // Hands item over; returns an empty item to fill next.
  Item Hand(Item&& item) {
    if (!thread_.joinable()) return DoAtOnce(std::move(item));
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return queue_.size() < kMaxQueued || failure_; });
    if (failure_) std::rethrow_exception(failure_);
    queue_.push_back(std::move(item));
    changed_.notify_all();
    Item next{};
    if (!spent_.empty()) {
      next = std::move(spent_.front());
      spent_.pop_front();
    }
    return next;
  }

  // Waits until the work on every item handed over is done; throws what
  // the work threw.
  void Finish() {
    Join();
    if (failure_) std::rethrow_exception(failure_);
  }

 private:
  static constexpr std::size_t kMaxQueued = 8;

  Item DoAtOnce(Item&& item) {
    work_(item);
    clear_(item);
    return std::move(item);
  }

  void Join() {
    {
      std::lock_guard lock(mutex_);
      finishing_ = true;
      changed_.notify_all();
    }
    if (thread_.joinable()) thread_.join();
  }

  void Run() {
    for (;;) {
      Item item;
      {
        std::unique_lock lock(mutex_);
        changed_.wait(lock, [this] { return !queue_.empty() || finishing_; });
        if (queue_.empty()) return;
        item = std::move(queue_.front());
        queue_.pop_front();
        changed_.notify_all();
      }
      try {
        work_(item);
        clear_(item);
      } catch (...) {
        std::lock_guard lock(mutex_);
        failure_ = std::current_exception();
        queue_.clear();
        changed_.notify_all();
        return;
      }
      std::lock_guard lock(mutex_);
      spent_.push_back(std::move(item));
    }
  }

  std::function<void(Item&)> work_;
  std::function<void(Item&)> clear_;
  std::mutex mutex_;
  std::condition_variable changed_;
  std::deque<Item> queue_;
  std::deque<Item> spent_;
  bool finishing_ = false;
  std::exception_ptr failure_;  // set by the stage's thread, read after it ends or under mutex_
  std::thread thread_;          // started last, once everything above is ready
};

}  // namespace vantor
