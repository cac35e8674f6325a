#include "report/run_outputs.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>

#include "analysis/text_ops.h"
#include "report/summary_report.h"
#include "report/windows1252.h"

namespace vantor {

namespace {

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
  if (outputs.summary) {
    const auto refusal = plan.Check("summary", *outputs.summary);
    const IoResult result =
        refusal ? IoResult{false, *refusal} : WriteSummaryFile(*outputs.summary, run, outputs.run_date);
    if (!result.ok) host.ShowMessage(result.message, MessageIcon::kCritical);
  }
  if (!outputs.unknown_summary) return;
  summary_out << "Unrecognised lines, most frequent shapes first (count, shape):\n";
  for (const std::string& line : UnknownLineShapes(run, 20)) summary_out << line << "\n";
}

}  // namespace vantor
