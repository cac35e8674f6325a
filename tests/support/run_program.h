#pragma once
// Runs a program as a user would from a shell, and collects what it did.

#include <string>
#include <vector>

namespace vantor::testing {

struct Outcome {
  int status = -1;  // the exit status; -1 when the program did not exit normally
  std::string out, err;
};

struct RunAs {
  std::string cwd = ".";
  // When the tests run as root, the program runs as "nobody", so that file
  // permissions apply to it as they do to a user.
  bool unprivileged = false;
};

Outcome RunProgram(const std::string& program, const std::vector<std::string>& args, const RunAs& as = {});

// Whether file permissions bind the program when it runs with
// RunAs::unprivileged: always for an ordinary user; for root only when
// "nobody" can be taken on and may run the program.
bool PermissionsApplyTo(const std::string& program);

}  // namespace vantor::testing
