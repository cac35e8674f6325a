#pragma once
// Runs that write into the same side directory take turns: each holds an
// advisory lock on the directory for its whole run, so that the side files
// and the report always come from one run. The lock goes with the process,
// however it ends.

#include <functional>
#include <string>

namespace vantor {

class RunLock {
 public:
  // Locks dir; when another run holds it, calls waiting() once and waits.
  // A directory that cannot be opened or locked is not locked: writing
  // into it says what is wrong.
  RunLock(const std::string& dir, const std::function<void()>& waiting);
  ~RunLock();
  RunLock(const RunLock&) = delete;
  RunLock& operator=(const RunLock&) = delete;

 private:
  int fd_ = -1;
};

}  // namespace vantor
