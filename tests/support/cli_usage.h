#pragma once
// What vantor-cli says after a mistake on its command line.

#include <string>

namespace vantor::testing {

inline constexpr char kUsage[] =
    "Usage: vantor-cli [-o DIR] [--side-dir DIR | --no-side-files] [--report FILE] [-t] [--open]\n"
    "                  [-q] [-j N] [--json FILE] [--csv FILE] [--unknown-summary]\n"
    "                  [--summary FILE] [--archive FILE.db] LOG [LOG ...]\n"
    "       vantor-cli --season FILE.db [--since DATE] [--until DATE] [--summary FILE]\n";

inline std::string UsageError(const std::string& what) {
  return "vantor-cli: " + what + "\n" + kUsage + "Try 'vantor-cli --help' for more information.\n";
}

}  // namespace vantor::testing
