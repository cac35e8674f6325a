// The last step of a run: the unknown lines go to "unknown.txt" in the
// program's directory, and the report is handed to the desktop.

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "analysis/form1.h"
#include "report/unknown_lines.h"
#include "support/fake_host.h"
#include "support/test_files.h"

namespace vantor::testing {
namespace {

// Writes the report of a run without team members, then ends the run with
// the given lines left unrecognised.
void EndRun(FakeHost& host, const std::vector<std::string>& unknown) {
  Form1 form(host);
  for (const std::string& line : unknown) form.List1.Append(line);
  form.GetIndivStats();
  form.subOpenHtml();
  EXPECT_EQ(form.List1.Rows(), unknown);
}

TEST(subOpenHtml, WritesTheUnknownLinesAndAnEmptyLineThenOpensTheReport) {
  const struct {
    const char* name;
    std::vector<std::string> unknown;
    const char* file;
  } rows[] = {
      {"every line recognised", {}, "\r\n"},
      {"three unknown lines", {"A", "B", "C"}, "A\r\nB\r\nC\r\n\r\n"},
      {"lines kept as they are", {" spaced ", "x<&>y"}, " spaced \r\nx<&>y\r\n\r\n"},
  };
  for (const auto& r : rows) {
    SCOPED_TRACE(r.name);
    ScratchDir dir;
    WriteBytes(dir / "unknown.txt", "an earlier run's much longer list of lines\r\n\r\n");
    FakeHost host;
    host.program_dir = dir.path().string();
    host.chosen_log = dir / "match.log";
    EndRun(host, r.unknown);
    EXPECT_EQ(ReadBytes(dir / "unknown.txt"), r.file);
    // Opened although the report holds no team member.
    EXPECT_EQ(host.opened, (std::vector<std::string>{dir / "match.html"}));
    EXPECT_TRUE(std::filesystem::exists(dir / "match.html"));
    EXPECT_TRUE(host.messages.empty());
  }
}

TEST(subOpenHtml, WithoutAChosenLogWritesTheUnknownLinesAndOpensNothing) {
  ScratchDir dir;
  FakeHost host;
  host.program_dir = dir.path().string();
  EndRun(host, {"A"});
  EXPECT_EQ(ReadBytes(dir / "unknown.txt"), "A\r\n\r\n");
  EXPECT_TRUE(host.opened.empty());
  EXPECT_TRUE(host.messages.empty());
}

TEST(subOpenHtml, UnwritableUnknownFileIsReportedAndTheReportStillOpened) {
  ScratchDir dir;
  FakeHost host;
  host.program_dir = dir / "gone";
  host.chosen_log = dir / "match.log";
  EndRun(host, {"A"});
  EXPECT_EQ(host.messages,
            (std::vector<FakeHost::Message>{
                {"Could not write " + (dir / "gone") + "/unknown.txt: No such file or directory",
                 MessageIcon::kCritical}}));
  EXPECT_EQ(host.opened, (std::vector<std::string>{dir / "match.html"}));
}

}  // namespace
}  // namespace vantor::testing
