#include "analysis/text_file.h"

#include <dirent.h>
#include <fcntl.h>
#include <limits.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <ctime>
#include <string_view>
#include <vector>

#include "analysis/background_writer.h"

namespace vantor {

std::string WriteFailure(const std::string& path, int error) {
  return "Could not write " + path + ": " + std::strerror(error);
}

namespace {

// The named temporary files under way, for the interrupt handler, which may
// read only what is set before a slot is marked ready.
enum SlotState : int { kFree, kClaimed, kReady };
struct TemporarySlot {
  std::atomic<int> state{kFree};
  char path[PATH_MAX] = {};
};
TemporarySlot g_temporaries[64];

int RegisterTemporary(const std::string& path) {
  if (path.size() >= PATH_MAX) return -1;
  for (int i = 0; i < static_cast<int>(std::size(g_temporaries)); ++i) {
    int expected = kFree;
    if (!g_temporaries[i].state.compare_exchange_strong(expected, kClaimed)) continue;
    std::memcpy(g_temporaries[i].path, path.c_str(), path.size() + 1);
    g_temporaries[i].state = kReady;
    return i;
  }
  return -1;  // more writes at once than slots: that file is not cleaned up on interrupt
}

void UnregisterTemporary(int slot) {
  if (slot >= 0) g_temporaries[slot].state = kFree;
}

extern "C" void RemoveTemporariesAndExit(int signal) {
  for (TemporarySlot& slot : g_temporaries) {
    if (slot.state.load() == kReady) ::unlink(slot.path);
  }
  // exit_group directly rather than _exit: a call the compiler knows never
  // returns makes the address sanitizer inspect the stack of whichever
  // thread took the signal, and warn on stderr when that is a worker's.
  ::syscall(SYS_exit_group, 128 + signal);
}

std::string DirectoryOf(const std::string& path) {
  const std::size_t slash = path.rfind('/');
  if (slash == std::string::npos) return ".";
  return slash == 0 ? "/" : path.substr(0, slash);
}

// The path with every symbolic link at its end followed, so that the file a
// link names is replaced and the link stays.
std::string FollowLinks(std::string path) {
  for (int hops = 0; hops < 40; ++hops) {
    struct stat st;
    if (::lstat(path.c_str(), &st) != 0 || !S_ISLNK(st.st_mode)) return path;
    std::vector<char> target(PATH_MAX + 1);
    const ssize_t n = ::readlink(path.c_str(), target.data(), PATH_MAX);
    if (n <= 0) return path;
    const std::string link(target.data(), static_cast<std::size_t>(n));
    path = link.front() == '/' ? link : DirectoryOf(path) + "/" + link;
  }
  return path;
}

bool SameFile(const struct stat& a, const struct stat& b) {
  return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

// The standard stream that path is, when it is one (/dev/stdout, or the
// file standard output was sent to): written to directly.
int StandardStreamOf(const std::string& path) {
  struct stat target, stream;
  if (::stat(path.c_str(), &target) != 0) return -1;
  for (int fd : {STDOUT_FILENO, STDERR_FILENO}) {
    if (::fstat(fd, &stream) == 0 && SameFile(target, stream)) return fd;
  }
  return -1;
}

std::string TemporaryName(const std::string& dir) {
  static std::atomic<unsigned> counter{0};
  return dir + "/.vantor-" + std::to_string(::getpid()) + "-" + std::to_string(counter++) + ".tmp";
}

// A name this file gives a temporary file: ".vantor-" and mkstemp's six
// letters or digits, or ".vantor-<pid>-<n>.tmp" (an unnamed file named
// for the moment of its rename).
bool IsTemporaryName(std::string_view name) {
  constexpr std::string_view kPrefix = ".vantor-", kSuffix = ".tmp", kDigits = "0123456789";
  const auto only = [](std::string_view text, std::string_view chars) {
    return !text.empty() && text.find_first_not_of(chars) == std::string_view::npos;
  };
  if (!name.starts_with(kPrefix)) return false;
  name.remove_prefix(kPrefix.size());
  if (name.size() == 6 && only(name, "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789"))
    return true;
  if (!name.ends_with(kSuffix)) return false;
  name.remove_suffix(kSuffix.size());
  const std::size_t dash = name.find('-');
  return dash != std::string_view::npos && only(name.substr(0, dash), kDigits) &&
         only(name.substr(dash + 1), kDigits);
}

// Removes the named temporary files that killed runs left in dir. A writer
// locks its temporary file from the moment it has it until it closes it,
// so a file that no one holds is stale once it is older than the moment
// between making and locking it; a minute leaves a wide margin.
void RemoveStaleTemporaries(const std::string& dir) {
  DIR* entries = ::opendir(dir.c_str());
  if (entries == nullptr) return;
  const std::time_t stale = std::time(nullptr) - 60;
  while (const dirent* entry = ::readdir(entries)) {
    struct stat st;
    if (!IsTemporaryName(entry->d_name) ||
        ::fstatat(::dirfd(entries), entry->d_name, &st, AT_SYMLINK_NOFOLLOW) != 0 || !S_ISREG(st.st_mode) ||
        st.st_mtime >= stale) {
      continue;
    }
    const int fd = ::openat(::dirfd(entries), entry->d_name, O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    if (fd < 0) continue;
    if (::flock(fd, LOCK_EX | LOCK_NB) == 0) ::unlinkat(::dirfd(entries), entry->d_name, 0);
    ::close(fd);
  }
  ::closedir(entries);
}

}  // namespace

bool IsStandardStream(const std::string& path) { return StandardStreamOf(path) >= 0; }

void RemoveTemporaryFilesOnInterrupt() {
  std::signal(SIGINT, RemoveTemporariesAndExit);
  std::signal(SIGTERM, RemoveTemporariesAndExit);
}

TextFileWriter::TextFileWriter(std::string target) : target_(std::move(target)) { Open(); }

TextFileWriter::TextFileWriter(std::string target, std::optional<std::string> refusal)
    : target_(std::move(target)) {
  if (refusal) {
    result_ = {false, std::move(*refusal)};
  } else if (!target_.empty()) {
    Open();
  }
}

void TextFileWriter::Open() {
  // Links are followed by the system first: /dev/stdout names a pipe
  // through a link that is no path.
  struct stat st;
  if (const int stream = StandardStreamOf(target_); stream >= 0) {
    fd_ = ::dup(stream);
    direct_ = true;
  } else if (::stat(target_.c_str(), &st) == 0 && !S_ISREG(st.st_mode)) {
    if (S_ISDIR(st.st_mode)) return Fail(EISDIR);
    // A pipe without a reader fails at once instead of waiting for one.
    fd_ = ::open(target_.c_str(), O_WRONLY | O_NONBLOCK | O_CLOEXEC);
    if (fd_ >= 0) ::fcntl(fd_, F_SETFL, ::fcntl(fd_, F_GETFL) & ~O_NONBLOCK);
    direct_ = true;
  } else {
    resolved_ = FollowLinks(target_);
    OpenTemporary(DirectoryOf(resolved_));
  }
  if (fd_ < 0) return Fail(errno);
  file_ = ::fdopen(fd_, "wb");
  if (file_ == nullptr) {
    Fail(errno);
    ::close(fd_);
  }
}

void TextFileWriter::OpenTemporary(const std::string& dir) {
  RemoveStaleTemporaries(dir);
  // Locked while open, so that no other run takes it for stale.
  fd_ = ::open(dir.c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, 0666);
  if (fd_ >= 0) ::flock(fd_, LOCK_EX | LOCK_NB);
  if (fd_ >= 0 || (errno != EOPNOTSUPP && errno != EISDIR && errno != EINVAL)) return;
  // A file system without unnamed files: a named one, removed on interrupt.
  std::string name = dir + "/.vantor-XXXXXX";
  fd_ = ::mkstemp(name.data());
  if (fd_ < 0) return;
  ::flock(fd_, LOCK_EX | LOCK_NB);
  const mode_t mask = ::umask(0);
  ::umask(mask);
  ::fchmod(fd_, 0666 & ~mask);
  temp_ = name;
  slot_ = RegisterTemporary(temp_);
}

TextFileWriter::~TextFileWriter() {
  writer_.reset();  // before the file it writes to is closed
  if (file_ != nullptr) std::fclose(file_);
  if (!temp_.empty()) ::unlink(temp_.c_str());
  UnregisterTemporary(slot_);
}

void TextFileWriter::Fail(int error) {
  if (!result_.ok) return;
  result_.ok = false;
  result_.message = WriteFailure(target_, error);
}

namespace {
constexpr std::size_t kFlushAt = 1 << 20;
}

void TextFileWriter::Flush() {
  if (file_ == nullptr || !result_.ok || pending_.empty()) {
    pending_.Clear();
    return;
  }
  if (!writer_) writer_ = std::make_unique<BackgroundWriter>(file_);
  pending_ = writer_->Write(std::move(pending_));
  pending_.Reserve(kFlushAt + 4096);
}

void TextFileWriter::WriteLine(std::string_view line) {
  if (file_ == nullptr || !result_.ok) return;
  pending_.Append(line);
  pending_.Append("\r\n");
  if (pending_.size() >= kFlushAt) Flush();
}

void TextFileWriter::WriteRaw(std::string_view bytes) {
  if (file_ == nullptr || !result_.ok) return;
  pending_.Append(bytes);
  if (pending_.size() >= kFlushAt) Flush();
}

void TextFileWriter::WriteBlock(ByteBuffer& block) {
  if (file_ == nullptr || !result_.ok) return block.Clear();
  // What gathered before, and what went to the writing thread, comes first.
  if (writer_) {
    if (const int error = writer_->Finish(); error != 0) Fail(error);
    writer_.reset();
  }
  WriteNow(pending_.View());
  pending_.Clear();
  WriteNow(block.View());
  block.Clear();
}

void TextFileWriter::WriteNow(std::string_view bytes) {
  if (result_.ok && !bytes.empty() && std::fwrite(bytes.data(), 1, bytes.size(), file_) != bytes.size())
    Fail(errno);
}

IoResult TextFileWriter::Commit() {
  if (writer_) {
    if (const int error = writer_->Finish(); error != 0) Fail(error);
    writer_.reset();
  }
  if (file_ != nullptr && result_.ok && !pending_.empty() &&
      std::fwrite(pending_.data(), 1, pending_.size(), file_) != pending_.size()) {
    Fail(errno);
  }
  pending_.Clear();
  if (file_ != nullptr && std::fflush(file_) != 0) Fail(errno);
  if (result_.ok && !direct_ && fd_ >= 0) PutInPlace();
  Close();
  return result_;
}

void TextFileWriter::PutInPlace() {
  std::string linked = temp_;
  if (linked.empty()) {
    // The unnamed file gets a name only now, for the moment of the rename.
    linked = TemporaryName(DirectoryOf(resolved_));
    const std::string self = "/proc/self/fd/" + std::to_string(fd_);
    if (::linkat(AT_FDCWD, self.c_str(), AT_FDCWD, linked.c_str(), AT_SYMLINK_FOLLOW) != 0)
      return Fail(errno);
    slot_ = RegisterTemporary(linked);
  }
  if (::rename(linked.c_str(), resolved_.c_str()) != 0) {
    Fail(errno);
    ::unlink(linked.c_str());
  }
  temp_.clear();  // renamed, or removed: nothing to clean up
  UnregisterTemporary(slot_);
  slot_ = -1;
}

void TextFileWriter::Close() {
  if (file_ == nullptr) return;
  if (std::fclose(file_) != 0) Fail(errno);
  file_ = nullptr;
}

}  // namespace vantor
