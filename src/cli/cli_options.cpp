#include "cli/cli_options.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>
#include <chrono>
#include <cstdio>
#include <string_view>
#include <utility>

#include "analysis/output_plan.h"

namespace vantor {

namespace {

constexpr unsigned kMostThreads = 1024;

// threads_text: the value of -j as given, checked once parsed.
void Declare(CLI::App& app, CliOptions& o, std::optional<std::string>& threads_text) {
  app.set_help_flag();  // help and version are ours: their texts are fixed
  app.add_flag("-h,--help", o.help);
  app.add_flag("-V,--version", o.version);
  app.add_option("-o,--output-dir", o.output_dir);
  app.add_option("--side-dir", o.side_dir);
  app.add_flag("--no-side-files", o.no_side_files);
  app.add_option("--report", o.report);
  app.add_flag("-t,--table", o.table);
  app.add_flag("--open", o.open);
  app.add_flag("-q,--quiet", o.quiet);
  app.add_option("-j,--threads", threads_text);
  app.add_option("--json", o.json);
  app.add_option("--csv", o.csv);
  app.add_flag("--unknown-summary", o.unknown_summary);
  app.add_option("--summary", o.summary);
  app.add_option("--archive", o.archive);
  app.add_option("--season", o.season);
  app.add_option("--since", o.since);
  app.add_option("--until", o.until);
  app.add_option("LOG", o.logs);
}

// "--table=yes" or "-t=yes": a value given to an option that takes none.
std::string ValueForAFlag(const CLI::App& app, const std::vector<std::string>& args) {
  for (const std::string& arg : args) {
    if (arg == "--") break;
    const std::size_t eq = arg.find('=');
    const bool long_form = arg.starts_with("--");
    if (!arg.starts_with('-') || eq == std::string::npos || (!long_form && eq != 2)) continue;
    const std::string name = arg.substr(0, eq);
    for (const CLI::Option* opt : app.get_options()) {
      const bool named = long_form ? opt->check_lname(name.substr(2)) : opt->check_sname(name.substr(1));
      if (named && opt->get_expected_max() == 0) return "option '" + name + "' takes no value";
    }
  }
  return "";
}

// A day as YYYY-MM-DD that the calendar has.
bool IsDate(const std::string& text) {
  unsigned y = 0, m = 0, d = 0;
  char rest = 0;
  if (text.size() != 10 || std::sscanf(text.c_str(), "%4u-%2u-%2u%c", &y, &m, &d, &rest) != 3) return false;
  return std::chrono::year_month_day{std::chrono::year(static_cast<int>(y)), std::chrono::month(m),
                                     std::chrono::day(d)}
      .ok();
}

// What is wrong with the season options, or "".
std::string SeasonProblem(const CliOptions& o) {
  if (o.season && !o.logs.empty()) return "--season reads the archive only: no LOG goes with it";
  if (o.season && o.archive) return "--archive records a run of LOGs; ask for --season afterwards";
  for (const auto& [name, date] : {std::pair{"--since", &o.since}, std::pair{"--until", &o.until}}) {
    if (*date && !o.season) return std::string(name) + " limits --season, which is missing";
    if (*date && !IsDate(**date))
      return std::string("option '") + name + "' needs a date as YYYY-MM-DD, not '" + **date + "'";
  }
  return "";
}

// A whole number of threads from 1 to kMostThreads, or none.
std::optional<unsigned> ThreadCount(const std::string& text) {
  unsigned count = 0;
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, count);
  if (error != std::errc() || stop != end || count < 1 || count > kMostThreads) return std::nullopt;
  return count;
}

// What is wrong with options that parsed, or "".
std::string Problem(const CliOptions& o, const std::optional<std::string>& threads_text) {
  if (o.help || o.version) return "";
  if (o.logs.empty() && !o.season) return "missing LOG operand";
  if (std::string problem = SeasonProblem(o); !problem.empty()) return problem;
  for (const auto& [name, dir] :
       {std::pair{"--side-dir", &o.side_dir}, std::pair{"--output-dir", &o.output_dir}}) {
    // An unset variable in a script must not aim the files at "/".
    if (*dir && (*dir)->empty())
      return std::string("option '") + name + "' needs a directory, not an empty value";
  }
  for (const auto& [name, file] : {std::pair{"--json", &o.json}, std::pair{"--csv", &o.csv},
                                   std::pair{"--report", &o.report}, std::pair{"--summary", &o.summary},
                                   std::pair{"--archive", &o.archive}, std::pair{"--season", &o.season}}) {
    if (*file && (*file)->empty())
      return std::string("option '") + name + "' needs a file, not an empty value";
  }
  if (o.side_dir && o.no_side_files) return "--side-dir and --no-side-files contradict each other";
  if (o.json && o.csv && (*o.json == *o.csv || SameFile(*o.json, *o.csv))) {
    return *o.json == "-" ? "only one of --json and --csv can go to standard output ('-')"
                          : "--json and --csv name the same file";
  }
  if (std::find(o.logs.begin(), o.logs.end(), "-") != o.logs.end()) {
    return "a log is read from a file: '-' (standard input) is not supported";
  }
  if (threads_text && !o.threads) {
    return "option '--threads' needs a whole number of threads from 1 to " + std::to_string(kMostThreads) +
           ", not '" + *threads_text + "'";
  }
  return "";
}

// CLI11's mistakes said as command-line tools say them.
std::string Said(const CLI::ParseError& e) {
  const std::string what = e.what();
  const std::size_t colon = what.find(": ");
  if (dynamic_cast<const CLI::ExtrasError*>(&e) != nullptr && colon != std::string::npos) {
    return "unrecognized option '" + what.substr(colon + 2) + "'";
  }
  if (dynamic_cast<const CLI::ArgumentMismatch*>(&e) != nullptr && colon != std::string::npos) {
    const std::string option = what.substr(0, colon);
    return what.find("missing") != std::string::npos ? "option '" + option + "' requires an argument"
                                                     : "option '" + option + "' is given more than once";
  }
  return what;
}

}  // namespace

CliParse ParseCliOptions(const std::vector<std::string>& args) {
  CliOptions o;
  std::optional<std::string> threads_text;
  CLI::App app("", "vantor-cli");
  Declare(app, o, threads_text);
  if (std::string error = ValueForAFlag(app, args); !error.empty()) return {std::nullopt, std::move(error)};
  std::vector<std::string> reversed(args.rbegin(), args.rend());  // CLI11 takes them last first
  try {
    app.parse(reversed);
  } catch (const CLI::ParseError& e) {
    return {std::nullopt, Said(e)};
  }
  if (threads_text) o.threads = ThreadCount(*threads_text);
  if (std::string problem = Problem(o, threads_text); !problem.empty())
    return {std::nullopt, std::move(problem)};
  return {o, ""};
}

}  // namespace vantor
