// Whole reports compared byte for byte with hand-written expected files,
// and where reports go.

#include <gtest/gtest.h>

#include <filesystem>

#include "analysis/analysis_run.h"
#include "analysis/form1.h"
#include "report/report_path.h"
#include "support/fake_host.h"
#include "support/test_files.h"

namespace vantor::testing {
namespace {

struct Kill {
  std::string killer, victim, method;
};

struct ReportCase {
  const char* folder;
  std::vector<std::string> blue, red;
  std::vector<Kill> kills;
  std::vector<std::pair<std::string, std::string>> flags;
  std::vector<std::string> sentries;
};

std::string ReportOf(const ReportCase& c) {
  ScratchDir dir;
  FakeHost host;
  host.program_dir = dir.path().string();
  host.chosen_log = dir / "match.log";
  Form1 form(host);
  for (const Kill& k : c.kills) {
    form.List2.Append(k.killer);
    form.List3.Append(k.victim);
    form.List4.Append(k.method);
  }
  for (const auto& [player, action] : c.flags) {
    form.List5.Append(player);
    form.List6.Append(action);
  }
  for (const std::string& s : c.sentries) form.List10.Append(s);
  for (const std::string& b : c.blue) form.List8.Append(b);
  for (const std::string& r : c.red) form.List9.Append(r);
  form.GetIndivStats();
  EXPECT_TRUE(host.messages.empty());
  return ReadBytes(dir / "match.html");
}

TEST(OutputToHTML, ReportsMatchTheHandWrittenDocuments) {
  const ReportCase cases[] = {
      {"report_no_members", {}, {}, {}, {}, {}},
      {"report_only_red", {}, {"Rex"},
       {{"Rex", "Vic", "Knife"}, {"Rex", "Vic", "Rail Gun"}}, {{"Rex", "Flag Grab (Red)"}}, {}},
      {"report_two_blue_one_red", {"Ann<&", "Bea"}, {"Cy"},
       {{"Ann<&", "Cy", "Super Shotgun"}, {"Bea", "Cy", "Minigun"}, {"Bea", "Cy", "Minigun"},
        {"Bea", "Cy", "Rocket Hit"}, {"Bea", "Cy", "Plasmabomb"}, {"Cy", "Bea", "Sentry Gun"},
        {"Cy", "Bea", "Shotgun"}, {"Himself", "Cy", "Suicide"}},
       {{"Ann<&", "Flag Capture (Blue)"}, {"Bea", "FC Defense (Blue)"},
        {"Bea", "Base Defense (Blue)"}, {"Cy", "Flag Defense (Red)"}},
       {"Cy"}},
  };
  for (const ReportCase& c : cases) {
    SCOPED_TRACE(c.folder);
    EXPECT_EQ(ReportOf(c), ReadBytes(DataPath(std::string(c.folder) + "/expected_report.html")));
  }
}

TEST(DeriveReportPath, NamesTheReportAfterTheLogAndNeverAfterTheLogItself) {
  struct Row {
    const char* output_dir;
    const char* log;
    const char* report;
  };
  const Row rows[] = {
      {"", "/games/x.logs/game1.log", "/games/x.htmls/game1.html"},
      {"/stats", "/games/x.logs/game1.log", "/stats/game1.html"},
      {"/stats/", "/games/game1.log", "/stats//game1.html"},
      {"/stats", "/games/a.log.log", "/stats/a.html.html"},
      {"", "/games/GAME.LOG", "/games/GAME.LOG.html"},
      {"", "/games/game", "/games/game.html"},
      {"/games", "/games/game", "/games/game.html"},
      {"/elsewhere", "/games/game", "/elsewhere/game"},
      {"/stats", "", ""},
  };
  for (const Row& r : rows) EXPECT_EQ(DeriveReportPath(r.output_dir, r.log), r.report) << r.log;
}

TEST(OpenRun, UnknownLinesAndReportOpeningSurviveAnUnwritableReport) {
  ScratchDir dir;
  WriteBytes(dir / "game.log", "^7Alpha was railed by Bravo\r\n^7mystery\r\n");
  const std::string log_before = ReadBytes(dir / "game.log");
  FakeHost host;
  host.program_dir = dir.path().string();
  host.chosen_log = dir / "game.log";
  host.settings["OutputDir"] = dir / "missing";
  Form1 form(host);
  form.LoadFile();
  OpenRun(form);
  EXPECT_EQ(host.messages,
            (std::vector<FakeHost::Message>{
                {"Could not write " + (dir / "missing") + "/game.html: No such file or directory",
                 MessageIcon::kCritical}}));
  EXPECT_EQ(ReadBytes(dir / "unknown.txt"), "mystery\r\n\r\n");
  EXPECT_TRUE(host.opened.empty());
  EXPECT_EQ(ReadBytes(dir / "game.log"), log_before);
  EXPECT_EQ(host.table[0].Rows(), (std::vector<std::string>{"Totals", " ", "Totals"}));
}

TEST(OpenRun, ReportBesideAnUppercaseLogLeavesTheLogAlone) {
  ScratchDir dir;
  const std::string log = "^7Alpha was railed by Bravo\r\n";
  WriteBytes(dir / "GAME.LOG", log);
  FakeHost host;
  host.program_dir = dir.path().string();
  host.chosen_log = dir / "GAME.LOG";
  Form1 form(host);
  form.LoadFile();
  OpenRun(form);
  EXPECT_EQ(ReadBytes(dir / "GAME.LOG"), log);
  EXPECT_EQ(host.opened, (std::vector<std::string>{dir / "GAME.LOG.html"}));
  EXPECT_EQ(ReadBytes(dir / "unknown.txt"), "\r\n");
  EXPECT_TRUE(std::filesystem::exists(dir / "GAME.LOG.html"));
}

}  // namespace
}  // namespace vantor::testing
