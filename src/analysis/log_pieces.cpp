#include "analysis/log_pieces.h"

#include <fcntl.h>
#include <sys/stat.h>

namespace vantor {

std::uint64_t LogText::Size() const {
  struct stat st;
  return file_ != nullptr && ::fstat(::fileno(file_), &st) == 0 ? static_cast<std::uint64_t>(st.st_size) : 0;
}

int LogText::DuplicateFd() const {
  return file_ != nullptr ? ::fcntl(::fileno(file_), F_DUPFD_CLOEXEC, 0) : -1;
}

LogText::~LogText() {
  if (file_ != nullptr) std::fclose(file_);
}

}  // namespace vantor
