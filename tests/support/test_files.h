#pragma once
// Scratch directories and whole-file reads and writes for tests.

#include <filesystem>
#include <set>
#include <string>

namespace vantor::testing {

// A fresh, empty directory that is removed with everything in it at the end.
class ScratchDir {
 public:
  ScratchDir();
  ~ScratchDir();
  ScratchDir(const ScratchDir&) = delete;
  ScratchDir& operator=(const ScratchDir&) = delete;

  const std::filesystem::path& path() const { return path_; }
  std::string operator/(const std::string& name) const { return (path_ / name).string(); }

 private:
  std::filesystem::path path_;
};

std::string ReadBytes(const std::string& path);
// The names of everything in dir; none when it cannot be read.
std::set<std::string> FilesIn(const std::filesystem::path& dir);
void WriteBytes(const std::string& path, const std::string& bytes);
// text with every from replaced by to.
std::string ReplaceAll(std::string text, const std::string& from, const std::string& to);
// Test data shipped under tests/data.
std::string DataPath(const std::string& relative);

}  // namespace vantor::testing
