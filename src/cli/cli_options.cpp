#include "cli/cli_options.h"

#include <string_view>
#include <utility>

#include "analysis/output_plan.h"

namespace vantor {

namespace {

// Options that take a value, as "--name VALUE" or "--name=VALUE".
std::optional<std::string>* ValueOption(CliOptions& o, std::string_view name) {
  if (name == "--output-dir") return &o.output_dir;
  if (name == "--side-dir") return &o.side_dir;
  if (name == "--json") return &o.json;
  if (name == "--csv") return &o.csv;
  if (name == "--summary") return &o.summary;
  return nullptr;
}

bool* FlagOption(CliOptions& o, std::string_view name) {
  if (name == "--table") return &o.table;
  if (name == "--open") return &o.open;
  if (name == "--quiet") return &o.quiet;
  if (name == "--unknown-summary") return &o.unknown_summary;
  if (name == "--help") return &o.help;
  if (name == "--version") return &o.version;
  return nullptr;
}

// What is wrong with options that parsed, or "".
std::string Problem(const CliOptions& o) {
  for (const auto& [name, dir] :
       {std::pair{"--side-dir", &o.side_dir}, std::pair{"--output-dir", &o.output_dir}}) {
    // An unset variable in a script must not aim the files at "/".
    if (*dir && (*dir)->empty())
      return std::string("option '") + name + "' needs a directory, not an empty value";
  }
  for (const auto& [name, file] :
       {std::pair{"--json", &o.json}, std::pair{"--csv", &o.csv}, std::pair{"--summary", &o.summary}}) {
    if (*file && (*file)->empty())
      return std::string("option '") + name + "' needs a file, not an empty value";
  }
  if (o.json && o.csv && (*o.json == *o.csv || SameFile(*o.json, *o.csv))) {
    return *o.json == "-" ? "only one of --json and --csv can go to standard output ('-')"
                          : "--json and --csv name the same file";
  }
  for (const std::string& log : o.logs) {
    if (log == "-") return "a log is read from a file: '-' (standard input) is not supported";
  }
  return "";
}

}  // namespace

CliParse ParseCliOptions(const std::vector<std::string>& args) {
  CliOptions o;
  bool operands_only = false;
  for (std::size_t i = 0; i < args.size(); ++i) {
    const std::string& arg = args[i];
    if (operands_only || arg.size() < 2 || arg[0] != '-') {
      o.logs.push_back(arg);
      continue;
    }
    if (arg == "--") {
      operands_only = true;
      continue;
    }
    const std::size_t eq = arg.find('=');
    const std::string_view name = std::string_view(arg).substr(0, eq);
    if (auto* value = ValueOption(o, name)) {
      if (eq != std::string::npos) {
        *value = arg.substr(eq + 1);
      } else if (i + 1 < args.size()) {
        *value = args[++i];
      } else {
        return {std::nullopt, "option '" + arg + "' requires an argument"};
      }
    } else if (auto* flag = FlagOption(o, name); flag != nullptr && eq == std::string::npos) {
      *flag = true;
    } else {
      return {std::nullopt, "unrecognized option '" + arg + "'"};
    }
  }
  if (o.logs.empty() && !o.help && !o.version) return {std::nullopt, "missing LOG operand"};
  if (const std::string problem = Problem(o); !problem.empty()) return {std::nullopt, problem};
  return {o, ""};
}

}  // namespace vantor
