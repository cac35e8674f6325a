#include "analysis/output_plan.h"

#include <sys/stat.h>

#include <filesystem>

namespace vantor {

namespace {

// Where a file would be: the absolute path with its directory resolved.
std::string WouldBeAt(const std::string& path) {
  std::error_code ec;
  const std::filesystem::path resolved = std::filesystem::weakly_canonical(path, ec);
  return ec ? std::filesystem::absolute(path, ec).lexically_normal().string() : resolved.string();
}

}  // namespace

bool SameFile(const std::string& a, const std::string& b) {
  if (a == b) return true;
  struct stat sa, sb;
  const bool a_there = ::stat(a.c_str(), &sa) == 0, b_there = ::stat(b.c_str(), &sb) == 0;
  if (a_there && b_there) return sa.st_dev == sb.st_dev && sa.st_ino == sb.st_ino;
  return !a_there && !b_there && WouldBeAt(a) == WouldBeAt(b);
}

void OutputPlan::ClearRun() {
  logs_.clear();
  outputs_.clear();
}

std::optional<std::string> OutputPlan::Check(std::string_view role, const std::string& path) {
  for (const std::vector<std::string>* logs : {&declared_, &logs_}) {
    for (const std::string& log : *logs) {
      if (SameFile(path, log)) return "Did not write " + path + ": it is the log " + log + " of this run";
    }
  }
  for (const auto& [other_role, other] : outputs_) {
    if (other_role == role || !SameFile(path, other)) continue;
    return "Did not write " + path + ": it is the same file as " + other + ", written earlier in this run";
  }
  outputs_.emplace_back(role, path);
  return std::nullopt;
}

}  // namespace vantor
