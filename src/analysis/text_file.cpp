#include "analysis/text_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <vector>

#include "analysis/background_writer.h"

namespace vantor {

std::string WriteFailure(const std::string& path, int error) {
  return "Could not write " + path + ": " + std::strerror(error);
}

namespace {

// Files get the permissions a plain create would give them.
void ApplyUmaskPermissions(int fd) {
  const mode_t mask = ::umask(0);
  ::umask(mask);
  ::fchmod(fd, 0666 & ~mask);
}

}  // namespace

TextFileWriter::TextFileWriter(std::string target) : target_(std::move(target)) {
  std::vector<char> name(target_.begin(), target_.end());
  const std::string_view suffix = ".tmp-XXXXXX";
  name.insert(name.end(), suffix.begin(), suffix.end());
  name.push_back('\0');
  const int fd = ::mkstemp(name.data());
  if (fd < 0) {
    Fail("create", errno);
    return;
  }
  ApplyUmaskPermissions(fd);
  temp_.assign(name.data());
  file_ = ::fdopen(fd, "wb");
  if (file_ == nullptr) {
    Fail("open", errno);
    ::close(fd);
  }
}

TextFileWriter::~TextFileWriter() {
  writer_.reset();  // before the file it writes to is closed
  if (file_ != nullptr) std::fclose(file_);
  if (!temp_.empty()) ::unlink(temp_.c_str());
}

void TextFileWriter::Fail(const char*, int error) {
  if (!result_.ok) return;
  result_.ok = false;
  result_.message = WriteFailure(target_, error);
}

namespace {
constexpr std::size_t kFlushAt = 1 << 20;
}

void TextFileWriter::Flush() {
  if (file_ == nullptr || !result_.ok || pending_.empty()) {
    pending_.clear();
    return;
  }
  if (!writer_) writer_ = std::make_unique<BackgroundWriter>(file_);
  pending_ = writer_->Write(std::move(pending_));
  pending_.reserve(kFlushAt + 4096);
}

void TextFileWriter::WriteLine(std::string_view line) {
  if (file_ == nullptr || !result_.ok) return;
  pending_.append(line);
  pending_.append("\r\n");
  if (pending_.size() >= kFlushAt) Flush();
}

void TextFileWriter::WriteRaw(std::string_view bytes) {
  if (file_ == nullptr || !result_.ok) return;
  pending_.append(bytes);
  if (pending_.size() >= kFlushAt) Flush();
}

IoResult TextFileWriter::Commit() {
  if (writer_) {
    if (const int error = writer_->Finish(); error != 0) Fail("write", error);
    writer_.reset();
  }
  if (file_ != nullptr && result_.ok && !pending_.empty() &&
      std::fwrite(pending_.data(), 1, pending_.size(), file_) != pending_.size()) {
    Fail("write", errno);
  }
  pending_.clear();
  if (file_ != nullptr) {
    const bool flushed = std::fflush(file_) == 0;
    const int error = errno;
    if (std::fclose(file_) != 0 || !flushed) Fail("close", flushed ? errno : error);
    file_ = nullptr;
  }
  if (result_.ok && ::rename(temp_.c_str(), target_.c_str()) != 0) Fail("rename", errno);
  if (result_.ok) temp_.clear();  // now the target: nothing to clean up
  return result_;
}

}  // namespace vantor
