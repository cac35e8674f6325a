// Where the report of a run goes, and that writing it never costs the log,
// the unknown lines or an earlier report.

#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <string>

#include "analysis/analysis_run.h"
#include "analysis/form1.h"
#include "report/report_path.h"
#include "support/fake_host.h"
#include "support/test_files.h"

namespace vantor::testing {
namespace {

std::string ReplaceDir(std::string text, const std::string& dir) {
  for (std::size_t at; (at = text.find("{dir}")) != std::string::npos;) text.replace(at, 5, dir);
  return text;
}

TEST(DeriveReportPath, NamesTheReportAfterTheLogButNeverTheLogItself) {
  ScratchDir scratch;
  const std::string dir = scratch.path().string();
  WriteBytes(dir + "/game", "");
  WriteBytes(dir + "/GAME.LOG", "");
  // "{dir}" stands for a real directory that holds the logs "game" and "GAME.LOG".
  const struct {
    const char* name;
    const char* output_dir;
    const char* log;
    const char* report;
  } rows[] = {
      {"every .log in the whole path", "", "/games/x.logs/game1.log", "/games/x.htmls/game1.html"},
      {"every .log in the file name", "", "/games/a.log.log", "/games/a.html.html"},
      {"output dir then the file name", "/stats", "/games/x.logs/game1.log", "/stats/game1.html"},
      {"no separator removed", "/stats/", "/games/game1.log", "/stats//game1.html"},
      {"case matters, so the log itself", "", "/games/GAME.LOG", "/games/GAME.LOG.html"},
      {"uppercase log into another dir", "/stats", "/games/GAME.LOG", "/stats/GAME.LOG"},
      {"no .log, so the log itself", "", "/games/game", "/games/game.html"},
      {"output dir is the log's dir", "/games", "/games/game", "/games/game.html"},
      {"output dir elsewhere", "/elsewhere", "/games/game", "/elsewhere/game"},
      {"same file by another spelling", "{dir}/", "{dir}/game", "{dir}//game.html"},
      {"same file through dot", "{dir}/.", "{dir}/GAME.LOG", "{dir}/./GAME.LOG.html"},
      {"no log chosen", "/stats", "", ""},
      {"no log and no dir", "", "", ""},
  };
  for (const auto& r : rows) {
    EXPECT_EQ(DeriveReportPath(ReplaceDir(r.output_dir, dir), ReplaceDir(r.log, dir)),
              ReplaceDir(r.report, dir))
        << r.name;
  }
}

TEST(GetReportPath, ReadsTheOutputDirSettingAndTheChosenLog) {
  FakeHost host;
  host.chosen_log = "/games/game1.log";
  EXPECT_EQ(GetReportPath(host), "/games/game1.html");
  host.settings["OutputDir"] = "/stats";
  EXPECT_EQ(GetReportPath(host), "/stats/game1.html");
}

struct Analysis {
  explicit Analysis(const ScratchDir& dir, const std::string& log) {
    host.program_dir = dir.path().string();
    host.chosen_log = dir / log;
  }
  void Run() {
    Form1 form(host);
    form.LoadFile();
    OpenRun(form);
  }
  FakeHost host;
};

std::set<std::string> FilesIn(const ScratchDir& dir) {
  std::set<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(dir.path())) {
    names.insert(entry.path().filename().string());
  }
  return names;
}

const char kKills[] = "^7Alpha got the RED flag!\r\n^7Bravo was railed by Alpha\r\n";

TEST(OpenRun, RunningTwiceReplacesTheReportAndLeavesNoTemporaryFile) {
  ScratchDir other;
  WriteBytes(other / "game.log", kKills);
  Analysis reference(other, "game.log");
  reference.Run();
  ScratchDir dir;
  WriteBytes(dir / "game.log", "^7nobody here\r\n");
  Analysis analysis(dir, "game.log");
  analysis.Run();
  EXPECT_EQ(ReadBytes(dir / "game.html"), ReadBytes(DataPath("report_no_members/expected_report.html")));
  WriteBytes(dir / "game.log", kKills);
  analysis.Run();
  EXPECT_EQ(ReadBytes(dir / "game.html"), ReadBytes(other / "game.html"));
  EXPECT_NE(ReadBytes(dir / "game.html"), ReadBytes(DataPath("report_no_members/expected_report.html")));
  EXPECT_EQ(FilesIn(dir), (std::set<std::string>{"chat.txt", "game.html", "game.log", "ignored.txt",
                                                 "logoutput.txt", "unknown.txt"}));
  EXPECT_TRUE(analysis.host.messages.empty());
}

TEST(OpenRun, ReportInAMissingDirectoryIsReportedAndEveryOtherStepCompletes) {
  ScratchDir dir;
  const std::string log = "^7Alpha was railed by Bravo\r\n^7mystery\r\n";
  WriteBytes(dir / "game.log", log);
  Analysis analysis(dir, "game.log");
  analysis.host.settings["OutputDir"] = dir / "missing";
  analysis.Run();
  EXPECT_EQ(analysis.host.messages,
            (std::vector<FakeHost::Message>{
                {"Could not write " + (dir / "missing") + "/game.html: No such file or directory",
                 MessageIcon::kCritical}}));
  EXPECT_EQ(ReadBytes(dir / "unknown.txt"), "mystery\r\n\r\n");
  EXPECT_TRUE(analysis.host.opened.empty());
  EXPECT_EQ(ReadBytes(dir / "game.log"), log);
  EXPECT_FALSE(std::filesystem::exists(dir / "missing"));
  EXPECT_EQ(analysis.host.table[0].Rows(), (std::vector<std::string>{"Totals", " ", "Totals"}));
}

}  // namespace
}  // namespace vantor::testing
