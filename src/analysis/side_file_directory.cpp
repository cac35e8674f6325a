#include "analysis/side_file_directory.h"

#include <unistd.h>

#include <cstdlib>
#include <filesystem>

namespace vantor {

namespace {

std::string PerUserDirectory() {
  const char* data_home = std::getenv("XDG_DATA_HOME");
  if (data_home != nullptr && *data_home == '/') return std::string(data_home) + "/vantor-log-analyzer";
  const char* home = std::getenv("HOME");
  return std::string(home != nullptr ? home : "") + "/.local/share/vantor-log-analyzer";
}

}  // namespace

SideFileDirectory ChooseSideFileDirectory(const std::string& program_dir) {
  if (::access(program_dir.c_str(), W_OK) == 0) return {program_dir, false};
  const std::string dir = PerUserDirectory();
  std::error_code ec;
  const bool made = std::filesystem::create_directories(dir, ec);
  // When it cannot be made either, writing the side files says so.
  return {dir, made};
}

std::string SideFileNotice(const std::string& dir) {
  return "Side files (logoutput.txt, ignored.txt, chat.txt, unknown.txt) are written to " + dir +
         ", because the program's directory cannot be written.";
}

}  // namespace vantor
