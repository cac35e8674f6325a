#pragma once
// What a run reads and writes, compared by what the files are on disk
// (device and inode, following symbolic links; the resolved path for a
// file not there yet), so that no output is written over a log of the run
// or over another output of the same run.

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vantor {

class OutputPlan {
 public:
  // A log of every run of this plan, known before the first is read (the
  // command line names them all at once).
  void Declare(const std::string& log) { declared_.push_back(log); }
  // A log of the current run.
  void AddLog(const std::string& log) { logs_.push_back(log); }
  // Forgets the current run's logs and outputs; declared logs stay.
  void ClearRun();

  // None when output (named role: "report", "chat.txt", ...) may be
  // written to path, and records it; else the message that says why not.
  // A role may write its file again, as the side files are on every import.
  std::optional<std::string> Check(std::string_view role, const std::string& path);

 private:
  std::vector<std::string> declared_;
  std::vector<std::string> logs_;
  std::vector<std::pair<std::string, std::string>> outputs_;  // role, path
};

// Whether two paths name one file: the same device and inode when both
// exist, else the same path once the directories and links are resolved.
bool SameFile(const std::string& a, const std::string& b);

}  // namespace vantor
