#include "support/test_files.h"

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <vector>

namespace vantor::testing {

ScratchDir::ScratchDir() {
  std::string pattern = (std::filesystem::temp_directory_path() / "vantor-test-XXXXXX").string();
  std::vector<char> name(pattern.begin(), pattern.end());
  name.push_back('\0');
  if (::mkdtemp(name.data()) == nullptr) throw std::runtime_error("mkdtemp failed");
  path_ = name.data();
}

ScratchDir::~ScratchDir() {
  std::error_code ec;
  std::filesystem::permissions(path_, std::filesystem::perms::owner_all, std::filesystem::perm_options::add,
                               ec);
  std::filesystem::remove_all(path_, ec);
}

std::string ReadBytes(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) throw std::runtime_error("cannot read " + path);
  std::ostringstream bytes;
  bytes << in.rdbuf();
  return bytes.str();
}

std::set<std::string> FilesIn(const std::filesystem::path& dir) {
  std::set<std::string> names;
  std::error_code ec;
  for (const auto& entry : std::filesystem::directory_iterator(dir, ec))
    names.insert(entry.path().filename().string());
  return names;
}

void WriteBytes(const std::string& path, const std::string& bytes) {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  out << bytes;
  if (!out) throw std::runtime_error("cannot write " + path);
}

std::string ReplaceAll(std::string text, const std::string& from, const std::string& to) {
  for (auto at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size()))
    text.replace(at, from.size(), to);
  return text;
}

std::string DataPath(const std::string& relative) {
  return std::string(VANTOR_TEST_DATA_DIR) + "/" + relative;
}

}  // namespace vantor::testing
