#pragma once
// The command line of vantor-cli, parsed with CLI11:
//   vantor-cli [-o DIR] [--side-dir DIR] [--no-side-files] [--report FILE] [-t] [--open] [-q] [-j N]
//              [--json FILE] [--csv FILE] [--unknown-summary] [--summary FILE] [--archive FILE.db]
//              LOG [LOG ...]
//   vantor-cli --season FILE.db [--since DATE] [--until DATE] [--summary FILE] [-q]

#include <optional>
#include <string>
#include <vector>

namespace vantor {

struct CliOptions {
  std::optional<std::string> output_dir;    // the "OutputDir" setting; empty without it
  std::optional<std::string> side_dir;      // where the side files go
  bool no_side_files = false;               // write none of the four side files
  std::optional<std::string> report;        // the report's path instead of the derived one
  std::optional<std::string> json;          // export file, JSON ("-": standard output)
  std::optional<std::string> csv;           // export file, CSV ("-": standard output)
  std::optional<std::string> summary;       // the evening summary, HTML
  std::optional<std::string> archive;       // the season archive the run is recorded in
  std::optional<std::string> season;        // the season archive whose standings are shown
  std::optional<std::string> since, until;  // the standings' days, YYYY-MM-DD
  bool unknown_summary = false;
  bool table = false;
  bool open = false;
  bool quiet = false;               // only errors on stderr: no progress, no notices
  std::optional<unsigned> threads;  // how many threads the analysis uses; none: one per core
  bool help = false;
  bool version = false;
  std::vector<std::string> logs;
};

struct CliParse {
  std::optional<CliOptions> options;  // none: a usage error
  std::string error;                  // what was wrong, for the usage message
};

CliParse ParseCliOptions(const std::vector<std::string>& args);

}  // namespace vantor
