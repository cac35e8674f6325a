// The evening summary and the matches of vantor-cli: what genlog played,
// names shown as text, nothing fetched, classic outputs unchanged.

#include <gtest/gtest.h>

#include <algorithm>
#include <nlohmann/json.hpp>

#include "support/run_program.h"
#include "support/test_files.h"

namespace vantor::testing {
namespace {

void RunsWell(const std::string& program, const std::vector<std::string>& args) {
  ASSERT_EQ(RunProgram(program, args).status, 0) << program;
}

// A generated evening of several maps: every match, its teams, score and
// winner are those genlog says it played.
TEST(Summary, MatchesOfAGeneratedEveningAreThoseItPlayed) {
  ScratchDir dir;
  RunsWell(VANTOR_GENLOG,
           {"--maps", "4", "--players", "10", "--seed", "3", "--truth", dir / "truth", dir / "evening.log"});
  RunsWell(VANTOR_CLI,
           {"--quiet", "--side-dir", dir.path(), "--json", dir / "run.json", dir / "evening.log"});
  std::string matches;
  const auto run = nlohmann::json::parse(ReadBytes(dir / "run.json"));
  for (const auto& m : run["matches"]) {
    std::vector<std::string> teams[2];
    for (const auto& slot : m["members"]) teams[slot["team"] == "Red"].push_back(slot["name"]);
    matches += "match " + m["number"].dump() + "\t" + m["score"]["Blue"].dump() + "\t" +
               m["score"]["Red"].dump() + "\t" + m["winner"].get<std::string>();
    for (auto& team : teams) {
      std::sort(team.begin(), team.end());
      std::string names;
      for (const std::string& name : team) names += (names.empty() ? "" : ",") + name;
      matches += "\t" + names;
    }
    matches += "\n";
  }
  EXPECT_EQ(matches, ReadBytes(dir / "truth"));
  EXPECT_EQ(std::count(matches.begin(), matches.end(), '\n'), 4);
}

const std::string kHostileLog =
    "<script>document.body.dataset.pwned=1</script>^7 got the RED flag!\r\n"
    "<img src=x onerror=alert(1)>^7 got the BLUE flag!\r\n"
    "<img src=x onerror=alert(1)>^7 was railed by <script>document.body.dataset.pwned=1</script>^7\r\n"
    "Ren\xe9^7 was railed by <script>document.body.dataset.pwned=1</script>^7\r\n";

// Names are decoded and escaped; the page fetches nothing and names no other file.
TEST(Summary, HostileNamesAreTextAndThePageStandsAlone) {
  ScratchDir dir;
  WriteBytes(dir / "game.log", kHostileLog);
  RunsWell(VANTOR_CLI, {"--quiet", "--side-dir", dir.path(), "--summary", dir / "s.html", dir / "game.log"});
  const std::string page = ReadBytes(dir / "s.html");
  for (const char* shown : {"<td>&lt;script&gt;document.body.dataset.pwned=1&lt;/script&gt;</td>",
                            "<td>&lt;img src=x onerror=alert(1)&gt;</td>", "Ren\xc3\xa9"}) {
    EXPECT_NE(page.find(shown), std::string::npos) << shown;
  }
  for (const char* absent :
       {"<img", "<script>document", "http:", "https:", "src=\"", "url(", "@import", "href=\"/", "href=\"h"}) {
    EXPECT_EQ(page.find(absent), std::string::npos) << absent;
  }
}

// The report, side files, table and CSV are the same bytes with the summary,
// and with the analysis on one thread.
TEST(Summary, ClassicOutputsAreUnchangedByItOrByOneThread) {
  const std::vector<std::string> extras[] = {{}, {"--summary", "/dev/null"}, {"-j", "1"}};
  std::vector<std::string> outputs;
  for (const std::vector<std::string>& extra : extras) {
    ScratchDir dir;
    WriteBytes(dir / "game.log", ReadBytes(DataPath("../../samples/evening.log")));
    std::vector<std::string> args = {"-q",      "--side-dir", dir.path(),    "--output-dir",  dir.path(),
                                     "--table", "--csv",      dir / "x.csv", dir / "game.log"};
    args.insert(args.begin(), extra.begin(), extra.end());
    const Outcome o = RunProgram(VANTOR_CLI, args);
    outputs.push_back(std::to_string(o.status) + o.out + o.err);
    for (const std::string& file : FilesIn(dir.path())) outputs.back() += file + ReadBytes(dir / file);
  }
  EXPECT_EQ(outputs[0], outputs[1]);
  EXPECT_EQ(outputs[0], outputs[2]);
  EXPECT_NE(outputs[0].find("game.html<html><head>"), std::string::npos);
}

}  // namespace
}  // namespace vantor::testing
