#include "report/run_outputs.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>

#include "analysis/text_ops.h"
#include "report/windows1252.h"
#include "stats/provenance.h"

namespace vantor {

namespace {

// A JSON string of UTF-8 text.
std::string JsonString(std::string_view utf8) {
  std::string out = "\"";
  for (const char c : utf8) {
    if (c == '"' || c == '\\') {
      out += '\\';
      out += c;
    } else if (static_cast<unsigned char>(c) < 0x20) {
      static const char* const kHex = "0123456789abcdef";
      out += "\\u00";
      out += kHex[(c >> 4) & 0xF];
      out += kHex[c & 0xF];
    } else {
      out += c;
    }
  }
  return out + "\"";
}

// A JSON string of a name or other text from a log (Windows-1252).
std::string JsonText(std::string_view log_bytes) { return JsonString(Cp1252ToUtf8(log_bytes)); }

constexpr const char* kReasonKinds[] = {"flag_event", "propagated", "no_deciding_event",
                                        "opponent_without_team", "only_suicides"};

std::string JsonReason(const TeamReason& r) {
  std::ostringstream out;
  out << "{\"kind\": \"" << kReasonKinds[static_cast<int>(r.kind)] << "\"";
  if (!r.team.empty()) out << ", \"team\": " << JsonString(r.team);
  if (r.kind == TeamReason::Kind::kFlagEvent) out << ", \"flag_kind\": " << JsonString(r.flag_kind);
  if (r.kind == TeamReason::Kind::kPropagated) out << ", \"pass\": " << r.pass;
  if (r.kind == TeamReason::Kind::kPropagated || r.kind == TeamReason::Kind::kOpponentWithoutTeam) {
    out << ", \"other\": " << JsonText(r.other) << ", \"as_killer\": " << (r.as_killer ? "true" : "false");
  }
  if (r.line) out << ", \"log\": " << r.line->file << ", \"line\": " << r.line->line;
  out << "}";
  return out.str();
}

void WriteMember(std::ostream& out, const RunRecord& run, std::size_t slot) {
  const PlayerTally& t = run.members[slot];
  out << "    {\"slot\": " << slot + 1 << ", \"name\": " << JsonText(t.strPlayerName) << ", \"team\": \""
      << run.TeamOf(slot) << "\",\n     \"counts\": {";
  for (std::size_t k = 0; k < kCounts.size(); ++k) {
    out << (k ? ", " : "") << "\"" << kCounts[k].export_name << "\": " << t.*kCounts[k].field;
  }
  out << "},\n     \"weapons\": {";
  for (std::size_t w = 0; w < kWeaponCount; ++w) {
    out << (w ? ", " : "") << JsonString(kWeaponTable[w].method_name) << ": " << t.weapons[w];
  }
  out << "},\n     \"team_reason\": "
      << (slot < run.slot_reasons.size() ? JsonReason(run.slot_reasons[slot]) : "null") << "}";
}

// A CSV field, quoted when it holds a comma, a quote or a line end. A text
// a spreadsheet would take for a formula (=, +, -, @, or a tab or CR
// first) gets a leading apostrophe, which spreadsheets show as text.
std::string CsvField(std::string_view bytes) {
  std::string text = Cp1252ToUtf8(bytes);
  if (!text.empty() && std::string_view("=+-@\t\r").find(text.front()) != std::string_view::npos)
    text.insert(0, "'");
  if (text.find_first_of(",\"\r\n") == std::string::npos) return text;
  return "\"" + ReplaceAll(text, "\"", "\"\"") + "\"";
}

// The line with every name replaced by "<player>", in one pass from the
// left, the longest name first where several start at a place (names are
// sorted so), so that no name is found inside another or in a placeholder.
std::string ShapeOf(std::string_view line, const std::vector<std::string>& names) {
  std::string shape;
  for (std::size_t at = 0; at < line.size();) {
    const auto name = std::find_if(names.begin(), names.end(),
                                   [&](const std::string& n) { return line.substr(at).starts_with(n); });
    if (name == names.end()) {
      shape += line[at++];
    } else {
      shape += "<player>";
      at += name->size();
    }
  }
  return shape;
}

}  // namespace

void WriteJsonExport(std::ostream& out, const RunRecord& run) {
  out << "{\n  \"format\": \"vantor-log-analyzer-statistics\",\n  \"version\": " << kJsonExportVersion
      << ",\n  \"logs\": [";
  for (std::size_t i = 0; i < run.files.size(); ++i)
    out << (i ? ", " : "") << JsonString(PathToUtf8(run.files[i]));
  out << "],\n  \"unknown_lines\": " << run.events.unknown.Count() << ",\n  \"members\": [\n";
  for (std::size_t s = 0; s < run.members.size(); ++s) {
    WriteMember(out, run, s);
    out << (s + 1 < run.members.size() ? ",\n" : "\n");
  }
  out << "  ],\n  \"non_members\": [";
  for (std::size_t i = 0; i < run.non_members.size(); ++i) {
    out << (i ? "," : "") << "\n    {\"name\": " << JsonText(run.non_members[i].name)
        << ", \"team_reason\": " << JsonReason(run.non_members[i].reason) << "}";
  }
  out << (run.non_members.empty() ? "" : "\n  ") << "],\n  \"kill_matrix\": [";
  const std::vector<KillCount> matrix = KillMatrix(run);
  for (std::size_t i = 0; i < matrix.size(); ++i) {
    out << (i ? "," : "") << "\n    {\"killer\": " << JsonText(matrix[i].killer)
        << ", \"victim\": " << JsonText(matrix[i].victim) << ", \"kills\": " << matrix[i].kills << "}";
  }
  out << (matrix.empty() ? "" : "\n  ") << "]\n}\n";
}

void WriteCsvExport(std::ostream& out, const RunRecord& run) {
  out << "slot,name,team";
  for (std::size_t k = 0; k < kCountKinds; ++k) out << "," << CsvField(CountName(CountKindAt(k)));
  out << "\r\n";
  for (std::size_t s = 0; s < run.members.size(); ++s) {
    out << s + 1 << "," << CsvField(run.members[s].strPlayerName) << "," << run.TeamOf(s);
    for (std::size_t k = 0; k < kCountKinds; ++k) out << "," << CountOf(run.members[s], CountKindAt(k));
    out << "\r\n";
  }
}

std::vector<std::string> UnknownLineShapes(const RunRecord& run, std::size_t limit) {
  std::vector<std::string> names;
  for (const PlayerTally& t : run.members) names.push_back(t.strPlayerName);
  for (const RunRecord::NonMember& m : run.non_members) names.push_back(m.name);
  std::erase_if(names, [](const std::string& n) { return n.size() < 3; });
  std::stable_sort(names.begin(), names.end(),
                   [](const auto& a, const auto& b) { return a.size() > b.size(); });
  // A log repeats its unknown lines: each distinct one is shaped once.
  std::map<TextId, std::size_t> per_line;
  for (TextId line : run.events.unknown.Ids()) ++per_line[line];
  std::map<std::string, std::size_t> counts;
  for (const auto& [line, n] : per_line) counts[ShapeOf(run.Text(line), names)] += n;
  std::vector<std::pair<std::size_t, std::string>> ranked;
  for (auto& [shape, n] : counts) ranked.emplace_back(n, shape);
  std::stable_sort(ranked.begin(), ranked.end(),
                   [](const auto& a, const auto& b) { return a.first > b.first; });
  std::vector<std::string> lines;
  for (std::size_t i = 0; i < ranked.size() && i < limit; ++i) {
    lines.push_back(std::to_string(ranked[i].first) + "\t" + ranked[i].second);
  }
  return lines;
}

void WriteStatisticsTable(std::ostream& out, const StatisticsTable& table) {
  for (std::size_t c = 0; c < StatisticsTable::kColumns; ++c) out << (c > 0 ? "\t" : "") << ColumnHeading(c);
  out << "\n";
  for (std::size_t r = 0; r < table.RowCount(); ++r) {
    for (std::size_t c = 0; c < StatisticsTable::kColumns; ++c) out << (c > 0 ? "\t" : "") << table[c].At(r);
    out << "\n";
  }
}

IoResult WriteExportFile(ExportFormat format, const RunRecord& run, const std::string& path) {
  std::ostringstream bytes;
  if (format == ExportFormat::kJson) {
    WriteJsonExport(bytes, run);
  } else {
    WriteCsvExport(bytes, run);
  }
  TextFileWriter file(path);
  file.WriteRaw(bytes.view());
  return file.Commit();
}

namespace {

// How an export begins, whatever follows.
std::string_view Signature(ExportFormat format) {
  return format == ExportFormat::kJson ? "{\n  \"format\": \"vantor-log-analyzer-statistics\""
                                       : "slot,name,team,";
}

// An export replaces only an export: a value forgotten after --json must
// not turn the log that follows into JSON.
std::optional<std::string> NotAnExport(ExportFormat format, const std::string& path) {
  if (IsStandardStream(path) || !std::filesystem::is_regular_file(path)) return std::nullopt;
  std::ifstream file(path, std::ios::binary);
  std::string start(Signature(format).size(), '\0');
  file.read(start.data(), static_cast<std::streamsize>(start.size()));
  start.resize(static_cast<std::size_t>(file.gcount()));
  if (start.empty() || start == Signature(format)) return std::nullopt;
  return "Did not write " + path + ": it is not " + (format == ExportFormat::kJson ? "a JSON" : "a CSV") +
         " export of this program, and it is kept";
}

}  // namespace

void WriteRunOutputs(const RunOutputs& outputs, const RunRecord& run, OutputPlan& plan, Host& host,
                     std::ostream& summary_out) {
  const auto write = [&](ExportFormat format, const std::optional<std::string>& path) {
    if (!path) return;
    auto refusal = plan.Check(format == ExportFormat::kJson ? "JSON" : "CSV", *path);
    if (!refusal) refusal = NotAnExport(format, *path);
    const IoResult result = refusal ? IoResult{false, *refusal} : WriteExportFile(format, run, *path);
    if (!result.ok) host.ShowMessage(result.message, MessageIcon::kCritical);
  };
  write(ExportFormat::kJson, outputs.json);
  write(ExportFormat::kCsv, outputs.csv);
  if (!outputs.unknown_summary) return;
  summary_out << "Unrecognised lines, most frequent shapes first (count, shape):\n";
  for (const std::string& line : UnknownLineShapes(run, 20)) summary_out << line << "\n";
}

}  // namespace vantor
