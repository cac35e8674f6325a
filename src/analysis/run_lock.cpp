#include "analysis/run_lock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>

namespace vantor {

RunLock::RunLock(const std::string& dir, const std::function<void()>& waiting) {
  fd_ = ::open(dir.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (fd_ < 0 || ::flock(fd_, LOCK_EX | LOCK_NB) == 0) return;
  if (errno == EWOULDBLOCK) {
    waiting();
    while (::flock(fd_, LOCK_EX) != 0 && errno == EINTR) {
    }
  }
}

RunLock::~RunLock() {
  if (fd_ >= 0) ::close(fd_);  // closing lets the lock go
}

}  // namespace vantor
