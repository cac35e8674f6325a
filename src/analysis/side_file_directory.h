#pragma once
// Where the side files go when the user has not said: a program run from
// its build tree writes them beside itself, as always; an installed one
// never writes beside its binary (/usr/bin, ~/.local/bin) and uses the
// user's state directory: $XDG_STATE_HOME/vantor-log-analyzer, or
// ~/.local/state/vantor-log-analyzer. So does a build tree that cannot be
// written. Both programs follow this rule; each host decides how to give
// the notice.

#include <string>

namespace vantor {

struct SideFileDirectory {
  std::string path;
  // The per-user directory was made just now: the first run that uses it,
  // which tells the user where the files went.
  bool newly_made = false;
};

SideFileDirectory ChooseSideFileDirectory(const std::string& program_dir);

// The line that tells the user, on the first run, where side files go.
std::string SideFileNotice(const std::string& dir);

}  // namespace vantor
