// libFuzzer target over the whole pipeline: arbitrary bytes as one log, or
// as two logs analysed together, through import, recognition, statistics,
// the report and the unknown lines, into a scratch directory.
//
// Input: when the first byte is 0x02 or 0x03, the rest is two logs, split
// at the place the second byte gives (as a fraction of the rest); otherwise
// the whole input is one log. An odd first byte also keeps the places of
// rows and writes every export (JSON, CSV, unknown-line shapes). Besides
// crashes, sanitizer findings and leaks, a statistics table whose columns
// differ in length, and a count whose lines do not number it, are findings.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <ostream>
#include <streambuf>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/analysis_run.h"
#include "analysis/form1.h"
#include "cli/cli_host.h"
#include "report/statistics_export.h"
#include "stats/provenance.h"

namespace {

class NullBuffer : public std::streambuf {
 protected:
  int overflow(int c) override { return c; }
};

const std::string& ScratchDir() {
  static const std::string dir = [] {
    char name[] = "/tmp/vantor-fuzz-XXXXXX";
    const char* made = ::mkdtemp(name);
    if (made == nullptr) std::abort();
    return std::string(made);
  }();
  return dir;
}

void WriteLog(const std::string& path, std::string_view bytes) {
  std::ofstream(path, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

std::vector<std::string_view> LogsOf(const std::uint8_t* data, std::size_t size) {
  const std::string_view input(reinterpret_cast<const char*>(data), size);
  if (size < 2 || (data[0] != 0x02 && data[0] != 0x03)) return {input};
  const std::string_view rest = input.substr(2);
  const std::size_t split = rest.size() * data[1] / 255;
  return {rest.substr(0, split), rest.substr(split)};
}

void CheckTableShape(const vantor::StatisticsTable& table) {
  for (std::size_t c = 1; c < vantor::StatisticsTable::kColumns; ++c) {
    if (table[c].Count() != table[0].Count()) __builtin_trap();
  }
}

// Every count of every member numbers exactly its lines; the exports run.
void CheckExplanations(const vantor::RunRecord& run, std::ostream& sink) {
  for (std::size_t slot = 0; slot < run.members.size(); ++slot) {
    for (std::size_t k = 0; k < vantor::kCountKinds; ++k) {
      const auto kind = static_cast<vantor::CountKind>(k);
      if (vantor::EventsBehind(run, slot, kind) != vantor::CountOf(run.members[slot], kind)) __builtin_trap();
    }
  }
  vantor::WriteJsonExport(sink, run);
  vantor::WriteCsvExport(sink, run);
  for (const std::string& line : vantor::UnknownLineShapes(run, 20)) sink << line;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static NullBuffer null_buffer;
  static std::ostream null_stream(&null_buffer);
  const std::vector<std::string_view> logs = LogsOf(data, size);
  vantor::CliHost host(ScratchDir(), ScratchDir(), false, null_stream);
  vantor::Form1 form(host);
  form.KeepProvenance(size > 0 && (data[0] & 1) != 0);
  host.SetAppend(logs.size() > 1);
  for (std::size_t i = 0; i < logs.size(); ++i) {
    const std::string path = ScratchDir() + "/game" + std::to_string(i) + ".log";
    WriteLog(path, logs[i]);
    host.SetChosenLogPath(path);
    form.LoadFile();
  }
  if (logs.size() > 1) {
    vantor::ProcessRun(form);
  } else {
    vantor::OpenRun(form);
  }
  CheckTableShape(host.FilledTable());
  if (const vantor::RunRecord* run = form.LastRun()) CheckExplanations(*run, null_stream);
  return 0;
}
