#include "analysis/side_file_directory.h"

#include <unistd.h>

#include <cstdlib>
#include <filesystem>

namespace vantor {

namespace {

std::string PerUserDirectory() {
  const char* state_home = std::getenv("XDG_STATE_HOME");
  if (state_home != nullptr && *state_home == '/') return std::string(state_home) + "/vantor-log-analyzer";
  const char* home = std::getenv("HOME");
  return std::string(home != nullptr ? home : "") + "/.local/state/vantor-log-analyzer";
}

// A program run from where it was built: its build tree holds CMakeCache.txt.
bool InBuildTree(const std::string& program_dir) {
  std::error_code ec;
  return std::filesystem::exists(program_dir + "/CMakeCache.txt", ec);
}

}  // namespace

SideFileDirectory ChooseSideFileDirectory(const std::string& program_dir) {
  if (InBuildTree(program_dir) && ::access(program_dir.c_str(), W_OK) == 0) return {program_dir, false};
  const std::string dir = PerUserDirectory();
  std::error_code ec;
  const bool made = std::filesystem::create_directories(dir, ec);
  // When it cannot be made either, writing the side files says so.
  return {dir, made};
}

std::string SideFileNotice(const std::string& dir) {
  return "Side files (logoutput.txt, ignored.txt, chat.txt, unknown.txt) are written to " + dir + ".";
}

}  // namespace vantor
