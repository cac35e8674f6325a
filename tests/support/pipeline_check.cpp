#include "support/pipeline_check.h"

#include <array>
#include <ostream>
#include <set>
#include <streambuf>

#include "analysis/analysis_run.h"
#include "analysis/form1.h"
#include "reference/naive_statistics.h"
#include "report/run_outputs.h"
#include "stats/provenance.h"
#include "support/fake_host.h"
#include "support/reference_run.h"
#include "support/test_files.h"

namespace vantor::testing {

namespace {

namespace fs = std::filesystem;
using Findings = std::vector<std::string>;
using Names = std::set<std::string>;

// The log names a user may pick, with the report each must give beside
// the log (never the log's own name) and in an output directory.
struct LogName {
  const char* log;
  const char* report_beside;
  const char* report_elsewhere;
};
constexpr std::array<LogName, 4> kLogNames = {{
    {"game.log", "game.html", "game.html"},
    {"game.LOG", "game.LOG.html", "game.LOG"},
    {"game", "game.html", "game"},
    {"game.log.log", "game.html.html", "game.html.html"},
}};

// The literal rendering of the counting and the lines behind every count
// are slow (every count a scan of the events); they check inputs of a few
// kilobytes, where the fuzzer spends most of its time anyway.
constexpr std::size_t kSlowChecksUpTo = 8192;

constexpr char kReportHead[] = "<html><head><meta http-equiv=Content-Type";
constexpr char kReportEnd[] = "</center></table></body></html>\r\n";

class NullBuffer : public std::streambuf {
 protected:
  int overflow(int c) override { return c; }
};

// Where the run puts things: L the logs (and the report beside them), S the
// side files, O the report when an output directory is set.
struct Places {
  fs::path L, S, O;
  std::vector<std::string> logs;  // names in L, in the order opened
  std::string report;             // full path
};

Places Prepare(const PipelineCase& c, const fs::path& dir) {
  std::error_code ec;
  for (const auto& entry : fs::directory_iterator(dir, ec)) fs::remove_all(entry.path(), ec);
  Places p{dir / "logs", dir / "side", dir / "out", {}, {}};
  for (const fs::path& d : {p.L, p.S, p.O}) fs::create_directory(d);
  const LogName& name = kLogNames[c.name % kLogNames.size()];
  for (std::size_t i = 0; i < c.logs.size(); ++i) {
    p.logs.push_back(std::to_string(i + 1) + name.log);
    WriteBytes(p.L / p.logs.back(), c.logs[i]);
  }
  const std::string report = std::to_string(c.logs.size()) + (c.output_dir ? name.report_elsewhere : name.report_beside);
  p.report = ((c.output_dir ? p.O : p.L) / report).string();
  return p;
}

// A missing file reads as empty: the file checks have said it is missing.
std::string ReadIfThere(const fs::path& path) {
  std::error_code ec;
  return fs::is_regular_file(path, ec) ? ReadBytes(path.string()) : std::string();
}

std::string Listed(const Names& names) {
  std::string text;
  for (const std::string& n : names) text += " " + n;
  return text;
}

void ExpectFiles(Findings& f, const fs::path& dir, const Names& expected) {
  const Names found = FilesIn(dir);
  if (found != expected) f.push_back(dir.string() + " holds" + Listed(found) + ", not" + Listed(expected));
}

void CheckFiles(Findings& f, const PipelineCase& c, const Places& p) {
  Names logs(p.logs.begin(), p.logs.end());
  Names outs;
  (c.output_dir ? outs : logs).insert(fs::path(p.report).filename().string());
  ExpectFiles(f, p.L, logs);
  ExpectFiles(f, p.O, outs);
  ExpectFiles(f, p.S, {"chat.txt", "ignored.txt", "logoutput.txt", "unknown.txt"});
  for (std::size_t i = 0; i < c.logs.size(); ++i) {
    if (ReadIfThere(p.L / p.logs[i]) != c.logs[i]) f.push_back(p.logs[i] + " changed");
  }
  const std::string report = ReadIfThere(p.report);
  if (report.rfind(kReportHead, 0) != 0 || !report.ends_with(kReportEnd)) f.push_back("the report is cut short");
}

void CheckHost(Findings& f, const FakeHost& host, const Places& p) {
  for (const FakeHost::Message& m : host.messages) f.push_back("message shown: " + m.text);
  if (host.opened != std::vector<std::string>{p.report}) f.push_back("the report was not the one opened");
}

// The rows of a side file: each line ends with CR LF, and the file ends
// with one empty line.
bool SideFileRows(const std::string& bytes, std::vector<std::string>& rows) {
  if (!bytes.ends_with("\r\n\r\n") && bytes != "\r\n") return false;
  for (std::size_t start = 0, end; (end = bytes.find("\r\n", start)) != bytes.size() - 2; start = end + 2) {
    rows.push_back(bytes.substr(start, end - start));
  }
  return true;
}

void ExpectColumns(Findings& f, const std::array<reference::List, 11>& expected, const StatisticsTable& table) {
  for (std::size_t c = 0; c < StatisticsTable::kColumns; ++c) {
    if (table[c].Rows() != expected[c]) f.push_back("statistics column " + std::to_string(c) + " differs");
  }
}

bool SmallEnoughForSlowChecks(const PipelineCase& c) {
  std::size_t size = 0;
  for (const std::string& log : c.logs) size += log.size();
  return size <= kSlowChecksUpTo;
}

// The imported lines as logoutput.txt lists them, recognised again, must
// leave exactly unknown.txt; counted by the literal rendering, they must
// give the statistics table of the run.
void CheckAgainstLiteral(Findings& f, const PipelineCase& c, const Places& p, const StatisticsTable& table) {
  std::vector<std::string> imported, unknown;
  if (!SideFileRows(ReadIfThere(p.S / "logoutput.txt"), imported) ||
      !SideFileRows(ReadIfThere(p.S / "unknown.txt"), unknown)) {
    f.push_back("a side file does not end with an empty line");
    return;
  }
  FakeHost host;
  Form1 form(host);
  for (const std::string& row : imported) form.List1.Append(row);
  form.KillCheck();
  if (form.List1.Rows() != unknown) f.push_back("unknown.txt is not what recognition leaves");
  if (!SmallEnoughForSlowChecks(c)) return;
  reference::NaiveRun naive = ReferenceRunOf(form);
  naive.Roster();
  naive.Teams(c.logs.size() > 1 ? 2 : 3);
  naive.Tallies();
  ExpectColumns(f, naive.table, table);
}

// Every count of every member numbers exactly its lines; the exports run.
void CheckExplanations(Findings& f, const PipelineCase& c, const RunRecord& run) {
  for (std::size_t slot = 0; SmallEnoughForSlowChecks(c) && slot < run.members.size(); ++slot) {
    for (std::size_t k = 0; k < kCountKinds; ++k) {
      const auto kind = static_cast<CountKind>(k);
      if (EventsBehind(run, slot, kind) != CountOf(run.members[slot], kind)) {
        f.push_back("slot " + std::to_string(slot) + ": the lines behind " + CountName(kind) + " do not number it");
      }
    }
  }
  NullBuffer null_buffer;
  std::ostream sink(&null_buffer);
  WriteJsonExport(sink, run);
  WriteCsvExport(sink, run);
  for (const std::string& line : UnknownLineShapes(run, 20)) sink << line;
}

}  // namespace

PipelineCase DecodePipelineCase(std::string_view input) {
  PipelineCase c;
  const auto first = input.empty() ? 0x20 : static_cast<unsigned char>(input[0]);
  if (first >= 0x20 || input.size() < 2) {
    c.logs = {std::string(input)};
    c.keep_provenance = (first & 1) != 0;
    return c;
  }
  c.keep_provenance = (first & 1) != 0;
  c.name = (first >> 2) & 3;
  c.output_dir = (first & 0x10) != 0;
  const std::string_view rest = input.substr(2);
  if ((first & 2) == 0) {
    c.logs = {std::string(rest)};
    return c;
  }
  const std::size_t cut = rest.size() * static_cast<unsigned char>(input[1]) / 255;
  c.logs = {std::string(rest.substr(0, cut)), std::string(rest.substr(cut))};
  return c;
}

std::vector<std::string> RunPipelineCase(const PipelineCase& c, const std::filesystem::path& dir) {
  const Places p = Prepare(c, dir);
  FakeHost host;
  host.program_dir = p.S.string();
  host.append = c.logs.size() > 1;
  if (c.output_dir) host.settings["OutputDir"] = p.O.string();
  Form1 form(host);
  form.KeepPlaces(c.keep_provenance);
  for (const std::string& log : p.logs) {
    host.chosen_log = (p.L / log).string();
    form.LoadFile();
  }
  if (host.append) {
    ProcessRun(form);
  } else {
    OpenRun(form);
  }
  Findings f;
  CheckHost(f, host, p);
  CheckFiles(f, c, p);
  CheckAgainstLiteral(f, c, p, host.filled);
  if (const auto run = form.LastRun()) CheckExplanations(f, c, *run);
  return f;
}

}  // namespace vantor::testing
