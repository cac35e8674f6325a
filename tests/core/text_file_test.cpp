// Large text files: written in order by the background writer, and a write
// that fails part way is reported and leaves the old file in place.

#include <gtest/gtest.h>

#include <csignal>
#include <string>

#include <sys/resource.h>

#include "analysis/text_file.h"
#include "support/test_files.h"

namespace vantor::testing {
namespace {

std::string NumberedLines(int count) {
  std::string bytes;
  for (int i = 0; i < count; ++i) bytes += "line " + std::to_string(i) + " of a long side file\r\n";
  return bytes;
}

TEST(TextFileWriter, ManyBlocksArriveInOrderLineEndsIncluded) {
  ScratchDir dir;
  const std::string path = dir / "big.txt";
  TextFileWriter writer(path);
  for (int i = 0; i < 200000; ++i) writer.WriteLine("line " + std::to_string(i) + " of a long side file");
  writer.WriteRaw("tail");
  const IoResult result = writer.Commit();
  EXPECT_TRUE(result.ok) << result.message;
  EXPECT_EQ(ReadBytes(path), NumberedLines(200000) + "tail");
}

// The largest file this process may write, for the length of one test.
class FileSizeLimit {
 public:
  explicit FileSizeLimit(rlim_t bytes) {
    getrlimit(RLIMIT_FSIZE, &saved_);
    old_handler_ = std::signal(SIGXFSZ, SIG_IGN);  // a failed write, not a killed process
    rlimit limit = saved_;
    limit.rlim_cur = bytes;
    setrlimit(RLIMIT_FSIZE, &limit);
  }
  ~FileSizeLimit() {
    setrlimit(RLIMIT_FSIZE, &saved_);
    std::signal(SIGXFSZ, old_handler_);
  }

 private:
  rlimit saved_{};
  void (*old_handler_)(int) = nullptr;
};

TEST(TextFileWriter, AWriteFailingInTheBackgroundIsReportedAndTheOldFileStays) {
  ScratchDir dir;
  const std::string path = dir / "ignored.txt";
  WriteBytes(path, "the earlier run\r\n");
  IoResult result;
  {
    FileSizeLimit limit(3 << 20);
    TextFileWriter writer(path);
    for (int i = 0; i < 400000; ++i) writer.WriteLine("line " + std::to_string(i) + " of a long side file");
    result = writer.Commit();
  }
  EXPECT_FALSE(result.ok);
  EXPECT_EQ(result.message, "Could not write " + path + ": File too large");
  EXPECT_EQ(ReadBytes(path), "the earlier run\r\n");
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(dir.path()), {}), 1);
}

}  // namespace
}  // namespace vantor::testing
