#pragma once
// A stage of a pipeline: work done on each handed-over item, in the order
// of handing over, on a thread of its own, while the thread that hands
// items over goes on with the next. At most kMaxQueued items wait, so
// memory stays bounded however fast items come; spent items are handed
// back emptied, so their memory is used again.

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>

namespace vantor {

template <typename Item>
class PipelineStage {
 public:
  // work runs on the stage's thread only; clear empties a spent item.
  PipelineStage(std::function<void(Item&)> work, std::function<void(Item&)> clear)
      : work_(std::move(work)), clear_(std::move(clear)), thread_([this] { Run(); }) {}
  ~PipelineStage() { Finish(); }
  PipelineStage(const PipelineStage&) = delete;
  PipelineStage& operator=(const PipelineStage&) = delete;

  // Hands item over; returns an empty item to fill next.
  Item Hand(Item&& item) {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return queue_.size() < kMaxQueued; });
    queue_.push_back(std::move(item));
    changed_.notify_all();
    Item next{};
    if (!spent_.empty()) {
      next = std::move(spent_.front());
      spent_.pop_front();
    }
    return next;
  }

  // Waits until the work on every item handed over is done.
  void Finish() {
    {
      std::lock_guard lock(mutex_);
      finishing_ = true;
      changed_.notify_all();
    }
    if (thread_.joinable()) thread_.join();
  }

 private:
  static constexpr std::size_t kMaxQueued = 8;

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
      work_(item);
      clear_(item);
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
  std::thread thread_;  // last: starts once everything above is ready
};

}  // namespace vantor
