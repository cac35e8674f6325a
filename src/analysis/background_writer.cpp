#include "analysis/background_writer.h"

#include <cerrno>

namespace vantor {

BackgroundWriter::BackgroundWriter(std::FILE* file) : file_(file), thread_([this] { Run(); }) {}

BackgroundWriter::~BackgroundWriter() { Finish(); }

std::string BackgroundWriter::Write(std::string&& block) {
  std::unique_lock lock(mutex_);
  changed_.wait(lock, [this] { return queue_.size() < kMaxQueued; });
  queue_.push_back(std::move(block));
  changed_.notify_all();
  std::string next;
  if (!spent_.empty()) {
    next = std::move(spent_.front());
    spent_.pop_front();
  }
  return next;
}

int BackgroundWriter::Finish() {
  {
    std::lock_guard lock(mutex_);
    finishing_ = true;
    changed_.notify_all();
  }
  if (thread_.joinable()) thread_.join();
  return error_;
}

void BackgroundWriter::Run() {
  for (;;) {
    std::string block;
    {
      std::unique_lock lock(mutex_);
      changed_.wait(lock, [this] { return !queue_.empty() || finishing_; });
      if (queue_.empty()) return;
      block = std::move(queue_.front());
      queue_.pop_front();
      changed_.notify_all();
    }
    if (error_ == 0 && std::fwrite(block.data(), 1, block.size(), file_) != block.size()) {
      error_ = errno != 0 ? errno : EIO;
    }
    block.clear();
    std::lock_guard lock(mutex_);
    spent_.push_back(std::move(block));
  }
}

}  // namespace vantor
