#pragma once
// Work on a sequence of items spread over several threads, with the results
// taken up strictly in the order the items were handed over. Each item is
// first worked on by any free thread (the part that needs nothing from the
// items before it), then finished, one item at a time and in order, by the
// thread that finds it next in line (the part that must see the items in
// order). A thread that finishes an item also finishes those after it that
// are ready, so no thread waits on another for what it can do itself.
//
// With one thread, the work is a pipeline stage: done on that thread while
// the handing thread goes on with the next item. At most kInFlight items
// per thread are handed over and not yet finished, so memory stays bounded
// however fast items come; finished items are handed back for filling
// again. With no thread (none asked for, or none can be started), Hand does
// both parts at once. An exception from either part
// (out of memory) stops the work and is thrown again by the next Hand or by
// Finish instead of ending the program.

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <exception>
#include <functional>
#include <mutex>
#include <system_error>
#include <thread>
#include <vector>

namespace vantor {

template <typename Item>
class OrderedWork {
 public:
  OrderedWork(unsigned threads, std::function<void(Item&)> work, std::function<void(Item&)> finish)
      : work_(std::move(work)), finish_(std::move(finish)) {
    for (unsigned i = 0; i < threads; ++i) {
      try {
        threads_.emplace_back([this] { Run(); });
      } catch (const std::system_error&) {
        break;  // the threads started so far do the work
      }
    }
  }
  ~OrderedWork() {
    Stop(true);
    Join();
  }
  OrderedWork(const OrderedWork&) = delete;
  OrderedWork& operator=(const OrderedWork&) = delete;

  // Hands item over; returns a spent item (or a new one) to fill next.
  Item Hand(Item&& item) {
    if (threads_.empty()) {
      work_(item);
      finish_(item);
      return std::move(item);
    }
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return entries_.size() < kInFlight * threads_.size() || failure_; });
    if (failure_) std::rethrow_exception(failure_);
    entries_.push_back({std::move(item), false});
    changed_.notify_all();
    Item next{};
    if (!spent_.empty()) {
      next = std::move(spent_.front());
      spent_.pop_front();
    }
    return next;
  }

  // Waits until every item handed over is finished; throws what a part threw.
  void Finish() {
    Stop(false);
    Join();
    if (failure_) std::rethrow_exception(failure_);
  }

 private:
  static constexpr std::size_t kInFlight = 2;

  struct Entry {
    Item item;
    bool worked;
  };

  void Stop(bool abandon) {
    std::lock_guard lock(mutex_);
    stopping_ = true;
    abandon_ = abandon_ || abandon;
    changed_.notify_all();
  }

  void Join() {
    for (std::thread& thread : threads_) {
      if (thread.joinable()) thread.join();
    }
  }

  bool Quitting() const { return abandon_ || failure_ != nullptr; }

  void Run() {
    std::unique_lock lock(mutex_);
    for (;;) {
      changed_.wait(lock, [this] { return next_to_work_ < entries_.size() || stopping_ || Quitting(); });
      if (Quitting() || next_to_work_ == entries_.size()) return;
      // A deque keeps its elements in place while others come and go at its ends.
      Entry& entry = entries_[next_to_work_++];
      lock.unlock();
      const bool ok = Try([&] { work_(entry.item); });
      lock.lock();
      if (!ok) return;
      entry.worked = true;
      FinishReady(lock);
    }
  }

  // Finishes the items at the front that are worked on, unless another
  // thread is doing so already (it will come to them).
  void FinishReady(std::unique_lock<std::mutex>& lock) {
    if (finishing_) return;
    finishing_ = true;
    while (!entries_.empty() && entries_.front().worked && !Quitting()) {
      Entry& front = entries_.front();
      lock.unlock();
      const bool ok = Try([&] { finish_(front.item); });
      lock.lock();
      if (!ok) break;
      spent_.push_back(std::move(front.item));
      entries_.pop_front();
      --next_to_work_;
      changed_.notify_all();
    }
    finishing_ = false;
  }

  // Runs step; on an exception, records it and stops the work.
  template <typename Step>
  bool Try(Step&& step) {
    try {
      step();
      return true;
    } catch (...) {
      std::lock_guard lock(mutex_);
      if (!failure_) failure_ = std::current_exception();
      changed_.notify_all();
      return false;
    }
  }

  std::function<void(Item&)> work_;
  std::function<void(Item&)> finish_;
  std::mutex mutex_;
  std::condition_variable changed_;
  std::deque<Entry> entries_;     // handed over, not yet finished, in order
  std::size_t next_to_work_ = 0;  // the first entry no thread has taken up
  std::deque<Item> spent_;
  bool finishing_ = false;
  bool stopping_ = false;  // no more items come
  bool abandon_ = false;   // unfinished items are dropped
  std::exception_ptr failure_;
  std::vector<std::thread> threads_;  // last: they use the members above
};

}  // namespace vantor
