#include "analysis/log_pieces.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>

namespace vantor {

void LinesBuffer::Reserve(std::size_t n) {
  if (capacity - size >= n) return;
  const std::size_t grown = std::max(capacity * 2, size + n);
  std::unique_ptr<char[]> bigger(new char[grown]);
  if (size > 0) std::memcpy(bigger.get(), data.get(), size);
  data = std::move(bigger);
  capacity = grown;
}

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
