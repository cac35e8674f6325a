#include "support/run_program.h"

#include <fcntl.h>
#include <grp.h>
#include <sys/wait.h>
#include <unistd.h>

#include "support/test_files.h"

namespace vantor::testing {

namespace {

constexpr uid_t kNobody = 65534;

// Becomes "nobody" with no group of root's left, so that only the
// permissions for others apply.
bool BecomeNobody() {
  return ::setgroups(0, nullptr) == 0 && ::setgid(kNobody) == 0 && ::setuid(kNobody) == 0 &&
         ::geteuid() == kNobody;
}

bool RunningAsRoot() { return ::geteuid() == 0; }

}  // namespace

bool PermissionsApplyTo(const std::string& program) {
  if (!RunningAsRoot()) return true;
  const pid_t pid = ::fork();
  if (pid == 0) ::_exit(BecomeNobody() && ::access(program.c_str(), X_OK) == 0 ? 0 : 1);
  int status = 0;
  ::waitpid(pid, &status, 0);
  return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

Outcome RunProgram(const std::string& program, const std::vector<std::string>& args, const RunAs& as) {
  ScratchDir streams;
  const std::string out = streams / "stdout";
  const std::string err = streams / "stderr";
  const pid_t pid = ::fork();
  if (pid == 0) {
    ::dup2(::open(out.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644), 1);
    ::dup2(::open(err.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644), 2);
    if (as.unprivileged && RunningAsRoot() && !BecomeNobody()) ::_exit(126);
    std::vector<char*> argv{const_cast<char*>(program.c_str())};
    for (const std::string& a : args) argv.push_back(const_cast<char*>(a.c_str()));
    argv.push_back(nullptr);
    if (::chdir(as.cwd.c_str()) == 0) ::execv(program.c_str(), argv.data());
    ::_exit(127);
  }
  int status = 0;
  ::waitpid(pid, &status, 0);
  return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, ReadBytes(out), ReadBytes(err)};
}

}  // namespace vantor::testing
