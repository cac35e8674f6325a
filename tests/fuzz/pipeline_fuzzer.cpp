// libFuzzer target over the whole pipeline with the tests' fake host. The
// input is one log, or, when its first byte is below 0x20 with bit 1 set,
// two logs appended and processed together, the second byte cutting the rest
// as a fraction of 255. Besides crashes, sanitizer findings and leaks, every
// broken promise of the run is a finding: a message shown, a changed log, a
// report not opened or cut short, side files that disagree with each other.

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "analysis/analysis_run.h"
#include "analysis/form1.h"
#include "support/fake_host.h"
#include "support/test_files.h"

namespace {

namespace fs = std::filesystem;
using vantor::testing::ReadBytes;

std::string Read(const fs::path& path) { return fs::is_regular_file(path) ? ReadBytes(path) : "<missing>"; }

// The rows of a side file, each ended by CR LF, behind them one empty line.
bool Rows(const std::string& bytes, std::vector<std::string>& rows) {
  if (!bytes.ends_with("\r\n\r\n") && bytes != "\r\n") return false;
  for (std::size_t at = 0, end; (end = bytes.find("\r\n", at)) != bytes.size() - 2; at = end + 2)
    rows.push_back(bytes.substr(at, end - at));
  return true;
}

std::vector<std::string> RunCase(std::string_view input, const fs::path& dir) {
  const bool two = input.size() >= 2 && static_cast<unsigned char>(input[0]) < 0x20 && (input[0] & 2);
  const std::string_view rest = two ? input.substr(2) : input;
  const std::size_t cut = two ? rest.size() * static_cast<unsigned char>(input[1]) / 255 : rest.size();
  std::vector<std::string> logs = {std::string(rest.substr(0, cut))};
  if (two) logs.emplace_back(rest.substr(cut));

  for (const auto& entry : fs::directory_iterator(dir)) fs::remove_all(entry.path());
  vantor::testing::FakeHost host;
  host.program_dir = dir.string();
  host.append = two;
  vantor::Form1 form(host);
  for (std::size_t i = 0; i < logs.size(); ++i) {
    host.chosen_log = (dir / (std::to_string(i + 1) + "game.log")).string();
    vantor::testing::WriteBytes(host.chosen_log, logs[i]);
    form.LoadFile();
  }
  two ? vantor::ProcessRun(form) : vantor::OpenRun(form);

  std::vector<std::string> f;
  for (const auto& m : host.messages) f.push_back("message shown: " + m.text);
  const fs::path report = dir / (std::to_string(logs.size()) + "game.html");
  if (host.opened != std::vector<std::string>{report.string()}) f.push_back("not the report opened");
  for (std::size_t i = 0; i < logs.size(); ++i)
    if (Read(dir / (std::to_string(i + 1) + "game.log")) != logs[i]) f.push_back("a log changed");
  const std::string html = Read(report);
  if (!html.starts_with("<html><head><meta http-equiv=Content-Type") ||
      !html.ends_with("</center></table></body></html>\r\n"))
    f.push_back("the report is cut short");
  // The imported lines, recognised again, leave exactly the unknown lines.
  std::vector<std::string> imported, unknown;
  if (!Rows(Read(dir / "logoutput.txt"), imported) || !Rows(Read(dir / "unknown.txt"), unknown)) {
    f.push_back("a side file does not end with one empty line");
    return f;
  }
  vantor::testing::FakeHost again;
  vantor::Form1 check(again);
  for (const std::string& row : imported) check.List1.Append(row);
  check.KillCheck();
  if (check.List1.Rows() != unknown) f.push_back("unknown.txt is not what recognition leaves");
  return f;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const vantor::testing::ScratchDir scratch;
  const auto findings = RunCase({reinterpret_cast<const char*>(data), size}, scratch.path());
  for (const std::string& finding : findings) std::fprintf(stderr, "pipeline: %s\n", finding.c_str());
  if (!findings.empty()) std::abort();
  return 0;
}
