// vantor-cli: the command-line twin of the desktop program. One log is
// analysed as File > Open analyses it; several are appended one after the
// other and analysed together, as with Tools > Append and Process.

#include <unistd.h>

#include <filesystem>
#include <iostream>
#include <string>
#include <vector>

#include "analysis/analysis_run.h"
#include "analysis/form1.h"
#include "analysis/side_file_directory.h"
#include "cli/cli_host.h"
#include "cli/cli_options.h"
#include "report/run_outputs.h"

namespace {

constexpr const char* kUsage =
    "Usage: vantor-cli [--output-dir DIR] [--side-dir DIR] [--table] [--open] [--quiet]\n"
    "                  [--json FILE] [--csv FILE] [--unknown-summary] LOG [LOG ...]\n";

constexpr const char* kHelp =
    "Analyse team capture-the-flag console logs into per-player statistics and\n"
    "an HTML report.\n"
    "\n"
    "One LOG is analysed on its own; several LOGs are analysed together.\n"
    "\n"
    "  --output-dir DIR  write the report into DIR (default: next to the log)\n"
    "  --side-dir DIR    write logoutput.txt, ignored.txt, chat.txt and\n"
    "                    unknown.txt into DIR (default: the program's directory,\n"
    "                    or ~/.local/share/vantor-log-analyzer when that cannot\n"
    "                    be written)\n"
    "  --table           print the statistics table, tab-separated, to stdout\n"
    "  --open            open the report with the desktop's default program\n"
    "  --quiet           print nothing on stderr but errors (no progress bar)\n"
    "  --json FILE       also write every member's counts, weapons and team\n"
    "                    explanation, the kill matrix and more as JSON\n"
    "  --csv FILE        also write one row per member as CSV (UTF-8)\n"
    "  --unknown-summary print the most frequent shapes of unrecognised lines\n"
    "  --help            show this help and exit\n"
    "  --version         show the version and exit\n"
    "\n"
    "While a run works, a progress bar is drawn on stderr when it is a terminal.\n"
    "\n"
    "Exit status: 0 when all went well, 1 when a message was shown, 2 for a\n"
    "usage error.\n";

std::string ProgramDirectory() {
  std::error_code ec;
  const auto exe = std::filesystem::read_symlink("/proc/self/exe", ec);
  return ec ? std::filesystem::current_path().string() : exe.parent_path().string();
}

// The log's full path as a file dialog gives it: absolute and without "." or
// "..", so that deriving the report's name only sees folders the log is in.
std::string Absolute(const std::string& path) {
  if (path.empty()) return path;  // no file chosen
  std::error_code ec;
  const auto absolute = std::filesystem::absolute(path, ec);
  return ec ? path : absolute.lexically_normal().string();
}

// The side files go where --side-dir says; without it, to the program's
// directory or, when that cannot be written, the user's own (said once).
std::string SideDirectory(const vantor::CliOptions& options) {
  if (options.side_dir) return *options.side_dir;
  const vantor::SideFileDirectory side = vantor::ChooseSideFileDirectory(ProgramDirectory());
  if (side.newly_made && !options.quiet)
    std::cerr << "vantor-cli: " << vantor::SideFileNotice(side.path) << "\n";
  return side.path;
}

int Run(const vantor::CliOptions& options) {
  const bool show_progress = !options.quiet && ::isatty(STDERR_FILENO) == 1;
  vantor::CliHost host(options.output_dir.value_or(""), SideDirectory(options), options.open, std::cerr,
                       show_progress);
  vantor::Form1 form(host);
  // The lines behind the counts only matter to the exports.
  form.KeepPlaces(options.json || options.csv);
  // Every log is known before the first is read: no side file of the
  // first may replace a later one.
  for (const std::string& log : options.logs) form.plan.Declare(Absolute(log));
  const bool several = options.logs.size() > 1;
  host.SetAppend(several);
  for (const std::string& log : options.logs) {
    host.Progress().SetStage("reading " + std::filesystem::path(log).filename().string());
    host.SetChosenLogPath(Absolute(log));
    form.LoadFile();
  }
  host.Progress().SetStage("analysing");
  if (several) {
    vantor::ProcessRun(form);
  } else {
    vantor::OpenRun(form);
  }
  if (options.table) vantor::PrintStatisticsTable(std::cout, host.FilledTable());
  if (const auto run = form.LastRun()) {
    std::cout.flush();  // the table before an export sent to standard output
    vantor::WriteRunOutputs({options.json, options.csv, options.unknown_summary}, *run, form.plan, host,
                            std::cout);
  }
  std::cout.flush();
  return host.ShowedMessage() ? 1 : 0;
}

}  // namespace

int main(int argc, char** argv) {
  const std::vector<std::string> args(argv + 1, argv + argc);
  const vantor::CliParse parse = vantor::ParseCliOptions(args);
  if (!parse.options) {
    std::cerr << "vantor-cli: " << parse.error << "\n"
              << kUsage << "Try 'vantor-cli --help' for more information.\n";
    return 2;
  }
  if (parse.options->help) {
    std::cout << kUsage << kHelp;
    return 0;
  }
  if (parse.options->version) {
    std::cout << "vantor-cli (Vantor Log Analyzer) 0.80\n";
    return 0;
  }
  return Run(*parse.options);
}
