// vantor-cli: the command-line twin of the desktop program. One log is
// analysed as File > Open analyses it; several are appended one after the
// other and analysed together, as with Tools > Append and Process.

#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <filesystem>
#include <iostream>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/analysis_run.h"
#include "analysis/form1.h"
#include "analysis/log_import.h"
#include "analysis/run_lock.h"
#include "analysis/side_file_directory.h"
#include "analysis/text_file.h"
#include "analysis/worker_threads.h"
#include "cli/archive_commands.h"
#include "cli/cli_host.h"
#include "cli/cli_options.h"
#include "report/run_outputs.h"

namespace {

constexpr const char* kUsage =
    "Usage: vantor-cli [-o DIR] [--side-dir DIR | --no-side-files] [--report FILE] [-t] [--open]\n"
    "                  [-q] [-j N] [--json FILE] [--csv FILE] [--unknown-summary]\n"
    "                  [--summary FILE] [--archive FILE.db] LOG [LOG ...]\n"
    "       vantor-cli --season FILE.db [--since DATE] [--until DATE] [--summary FILE]\n";

constexpr const char* kHelp =
    "Analyse team capture-the-flag console logs into per-player statistics and\n"
    "an HTML report.\n"
    "\n"
    "One LOG is analysed on its own; several LOGs are analysed together.\n"
    "\n"
    "  -o, --output-dir DIR  write the report into DIR (default: next to the\n"
    "                    log); DIR is made when missing\n"
    "  --report FILE     write the report to FILE instead\n"
    "  --side-dir DIR    write logoutput.txt, ignored.txt, chat.txt and\n"
    "                    unknown.txt into DIR (default: the program's directory\n"
    "                    in a build tree, else ~/.local/state/vantor-log-analyzer)\n"
    "  --no-side-files   write none of the four side files\n"
    "  -t, --table       print the statistics table, tab-separated, to stdout\n"
    "  --open            open the report with the desktop's default program\n"
    "  -q, --quiet       print nothing on stderr but errors (no progress bar,\n"
    "                    no line saying where the report went)\n"
    "  -j, --threads N   how many threads the analysis uses, 1 to 1024 (default:\n"
    "                    one per core); the outputs are the same for every N\n"
    "  --json FILE       also write every member's counts, weapons and team\n"
    "                    explanation, the kill matrix and more as JSON\n"
    "                    (FILE '-': standard output)\n"
    "  --csv FILE        also write one row per member as CSV (UTF-8; '-':\n"
    "                    standard output)\n"
    "  --unknown-summary print the most frequent shapes of unrecognised lines\n"
    "  --summary FILE    also write the evening as one self-contained HTML page:\n"
    "                    the matches and their winners, every player's evening,\n"
    "                    awards, who killed whom, kills by weapon, timelines\n"
    "  --archive FILE.db also record the run in the season archive FILE.db (an\n"
    "                    SQLite file, made when missing): its logs, matches,\n"
    "                    players and awards; a log or match archived before is\n"
    "                    not recorded again\n"
    "  --season FILE.db  print the season's standings from the archive, tab-\n"
    "                    separated (with --summary FILE: as an HTML page)\n"
    "  --since DATE, --until DATE\n"
    "                    only the matches of these days (YYYY-MM-DD, included;\n"
    "                    a match's day is the day its log was last written)\n"
    "  -h, --help        show this help and exit\n"
    "  -V, --version     show the version and exit\n"
    "\n"
    "While a run works, a progress bar is drawn on stderr when it is a terminal\n"
    "(plain lines when TERM=dumb).\n"
    "\n"
    "Exit status: 0 when all went well, 1 when a message was shown, 2 for a\n"
    "usage error.\n";

std::string ProgramDirectory() {
  std::error_code ec;
  const auto exe = std::filesystem::read_symlink("/proc/self/exe", ec);
  return ec ? std::filesystem::current_path().string() : exe.parent_path().string();
}

void Say(std::string_view text) { std::cerr << "vantor-cli: " << text << "\n"; }

// The side files go where --side-dir says; without it, to the program's
// directory or, when that cannot be written, the user's own (said once).
std::string SideDirectory(const vantor::CliOptions& options) {
  if (options.side_dir) return *options.side_dir;
  const vantor::SideFileDirectory side = vantor::ChooseSideFileDirectory(ProgramDirectory());
  if (side.newly_made && !options.quiet) Say(vantor::SideFileNotice(side.path));
  return side.path;
}

// A directory the user named is made when missing, as mkdir -p makes it.
bool MakeDirectory(const std::optional<std::string>& dir) {
  if (dir && dir->empty()) return true;
  std::error_code ec;
  if (!dir || std::filesystem::is_directory(*dir, ec)) return true;
  std::filesystem::create_directories(*dir, ec);
  if (!ec) return true;
  Say("could not create the directory " + *dir + ": " + ec.message());
  return false;
}

// "-" sends an export to standard output.
std::optional<std::string> ExportPath(const std::optional<std::string>& value) {
  if (value && *value == "-") return "/dev/stdout";
  return value;
}

std::uint64_t SizeOf(const std::string& path) {
  std::error_code ec;
  const auto size = std::filesystem::is_regular_file(path, ec) ? std::filesystem::file_size(path, ec) : 0;
  return ec ? 0 : size;
}

void Analyse(const vantor::CliOptions& options, vantor::CliHost& host, vantor::Form1& form) {
  // The lines behind the counts, and the matches, only matter to the exports.
  form.KeepPlaces(options.json || options.csv);
  // The matches of a run are cut along the markers the import records.
  form.RecordsMarkers = options.json || options.summary || options.archive;
  form.DigestsSpans = options.archive.has_value();
  form.write_side_files = !options.no_side_files;
  if (options.report) form.report_override = *options.report;
  std::uint64_t total = 0, before = 0;
  for (const std::string& log : options.logs) total += SizeOf(log);
  // Every log is known before the first is read: no side file of the
  // first may replace a later one.
  for (const std::string& log : options.logs) form.plan.Declare(vantor::ResolvedLogPath(log));
  const bool several = options.logs.size() > 1;
  host.SetAppend(several);
  for (const std::string& log : options.logs) {
    host.Progress().SetStage("reading " + std::filesystem::path(log).filename().string());
    host.SetReading(before, total);
    host.SetChosenLogPath(vantor::ResolvedLogPath(log));
    form.LoadFile();
    before += SizeOf(log);
  }
  host.Progress().SetStage("analysing");
  if (several) {
    vantor::ProcessRun(form);
  } else {
    vantor::OpenRun(form);
  }
}

// Now, as the summary's header shows the date of the run.
std::string RunDate() {
  const std::time_t now = std::time(nullptr);
  char text[32];
  std::strftime(text, sizeof text, "%Y-%m-%d %H:%M", std::localtime(&now));
  return text;
}

// Whether what was printed on standard output so far reached it; a short
// or failed write is said.
bool Delivered() {
  errno = 0;
  if (std::cout.flush() && std::fflush(stdout) == 0 && !std::ferror(stdout)) return true;
  Say(std::string("could not write to standard output: ") + std::strerror(errno != 0 ? errno : EIO));
  return false;
}

bool PrintResults(const vantor::CliOptions& options, vantor::CliHost& host, vantor::Form1& form) {
  errno = 0;
  if (options.table) vantor::WriteStatisticsTable(std::cout, host.FilledTable());
  // The table goes out before an export sent to standard output.
  if (!Delivered()) return false;
  if (const auto run = form.LastRun()) {
    vantor::WriteRunOutputs({ExportPath(options.json), ExportPath(options.csv), options.unknown_summary,
                             options.summary, RunDate()},
                            *run, form.plan, host, std::cout);
  }
  return Delivered();
}

int Run(const vantor::CliOptions& options) {
  if (options.season) return vantor::ShowSeason(options, Say);
  if (!MakeDirectory(options.side_dir) || !MakeDirectory(options.output_dir)) return 1;
  const bool show_progress = !options.quiet && ::isatty(STDERR_FILENO) == 1;
  const char* term = std::getenv("TERM");
  const bool plain = term != nullptr && std::string_view(term) == "dumb";
  const std::string side_dir = options.no_side_files ? "" : SideDirectory(options);
  std::optional<vantor::RunLock> lock;  // runs without side files need no turn
  if (!side_dir.empty()) {
    lock.emplace(side_dir, [&] {
      if (!options.quiet) Say("waiting for another run that writes into " + side_dir);
    });
  }
  vantor::CliHost host(options.output_dir.value_or(""), side_dir, options.open, std::cerr, show_progress,
                       plain);
  vantor::Form1 form(host);
  try {
    Analyse(options, host, form);
  } catch (const std::bad_alloc&) {
    std::string logs;
    for (const std::string& log : options.logs) logs += (logs.empty() ? "" : ", ") + log;
    Say("Not enough memory to analyse " + logs);
    return 1;
  }
  const bool printed = PrintResults(options, host, form);
  vantor::ArchiveLastRun(options, host, form, Say);
  if (form.ReportWritten() && !options.quiet) Say("report written to " + form.ReportPath());
  return host.ShowedMessage() || !printed ? 1 : 0;
}

}  // namespace

int main(int argc, char** argv) {
  // A file grown past the size limit fails its write, which is reported;
  // an interrupted run removes its temporary files.
  std::signal(SIGXFSZ, SIG_IGN);
  vantor::RemoveTemporaryFilesOnInterrupt();
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
  if (parse.options->threads) vantor::SetWorkerThreads(*parse.options->threads);
  try {
    return Run(*parse.options);
  } catch (const std::bad_alloc&) {
    Say("Not enough memory to finish the run");
    return 1;
  }
}
