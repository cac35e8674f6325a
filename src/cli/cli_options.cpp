#include "cli/cli_options.h"

#include <string_view>

namespace vantor {

namespace {

// Options that take a value, as "--name VALUE" or "--name=VALUE".
std::optional<std::string>* ValueOption(CliOptions& o, std::string_view name) {
  if (name == "--output-dir") return &o.output_dir;
  if (name == "--side-dir") return &o.side_dir;
  if (name == "--json") return &o.json;
  if (name == "--csv") return &o.csv;
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
  return {o, ""};
}

}  // namespace vantor
