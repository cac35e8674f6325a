// Where the report of a run goes: named after the log, in the output
// directory or next to the log, and never over the log itself.

#include "report/report_path.h"

#include <gtest/gtest.h>

#include <string>

#include "support/fake_host.h"
#include "support/test_files.h"

namespace vantor::testing {
namespace {

TEST(GetReportPath, NamesTheReportAfterTheLogButNeverTheLogItself) {
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
      {"output dir, every .log in the file name", "/stats", "/games/a.log.log", "/stats/a.html.html"},
      {"an output dir's own .log stays", "/x.logs", "/games/game1.log", "/x.logs/game1.html"},
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
    FakeHost host;
    host.settings["OutputDir"] = ReplaceAll(r.output_dir, "{dir}", dir);
    host.chosen_log = ReplaceAll(r.log, "{dir}", dir);
    EXPECT_EQ(GetReportPath(host), ReplaceAll(r.report, "{dir}", dir)) << r.name;
  }
}

}  // namespace
}  // namespace vantor::testing
