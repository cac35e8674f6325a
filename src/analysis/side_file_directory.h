#pragma once
// Where the side files go when the user has not said: they belong in the
// program's directory; after a system-wide install that directory cannot
// be written, and they go to a directory of the user's own instead:
// $XDG_DATA_HOME/vantor-log-analyzer, or ~/.local/share/vantor-log-analyzer.
// Both programs follow this rule; each host decides how to give the notice.

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
