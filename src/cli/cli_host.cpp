#include "cli/cli_host.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>

#include "report/report_path.h"

namespace vantor {

CliHost::CliHost(std::string output_dir, std::string program_dir, bool open_report, std::ostream& err,
                 bool show_progress, bool plain_progress)
    : output_dir_(std::move(output_dir)),
      program_dir_(std::move(program_dir)),
      open_report_(open_report),
      err_(err),
      progress_(err, show_progress, plain_progress) {}

void CliHost::SetProgressVisible(bool visible) {
  if (!visible) progress_.Clear();
}

void CliHost::SetProgressMaximum(std::int64_t maximum) { maximum_ = maximum; }

void CliHost::StatisticsFilled() { filled_ = table_; }

void CliHost::ShowMessage(std::string_view text, MessageIcon) {
  ++messages_;
  progress_.Clear();
  err_ << "Vantor Log Analyzer: " << text << "\n";
}

std::string CliHost::ReadSetting(std::string_view key) const {
  return key == kOutputDirSetting ? output_dir_ : std::string();
}

void CliHost::OpenDocument(const std::string& path) {
  if (!open_report_) return;
  // The desktop's opener, detached so the analysis does not wait for it.
  const pid_t pid = ::fork();
  if (pid == 0) {
    if (::fork() == 0) {
      // What the opener and the browser print is theirs: the program's own
      // output stays the table and its messages, and --quiet stays quiet.
      const int null = ::open("/dev/null", O_WRONLY);
      if (null >= 0) {
        ::dup2(null, STDOUT_FILENO);
        ::dup2(null, STDERR_FILENO);
      }
      ::execlp("xdg-open", "xdg-open", path.c_str(), static_cast<char*>(nullptr));
    }
    ::_exit(0);
  }
  if (pid > 0) ::waitpid(pid, nullptr, 0);
}

}  // namespace vantor
