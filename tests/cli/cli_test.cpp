// vantor-cli driven as a user drives it: arguments in; exit status, output
// streams and files out.

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "support/cli_usage.h"
#include "support/run_program.h"
#include "support/test_files.h"

namespace vantor::testing {
namespace {

Outcome RunCli(const std::vector<std::string>& args, const std::string& cwd = ".") {
  return RunProgram(VANTOR_CLI, args, {cwd});
}

TEST(VantorCli, CommandLineMistakesHelpAndVersion) {
  const struct {
    const char* name;
    std::vector<std::string> args;
    int status;
    std::string out;  // the whole of stdout, or its start where prefix is set
    bool prefix;
    std::string err;
  } rows[] = {
      // clang-format off
      {"help", {"--help"}, 0, kUsage, true, ""},
      {"version", {"-V"}, 0, "vantor-cli (Vantor Log Analyzer) 0.80\n", false, ""},
      {"unknown option", {"--frobnicate", "x.log"}, 2, "", false,
       UsageError("unrecognized option '--frobnicate'")},
      {"flag given a value", {"--table=yes", "x.log"}, 2, "", false,
       UsageError("option '--table' takes no value")},
      {"short flag given a value", {"-q=1", "x.log"}, 2, "", false, UsageError("option '-q' takes no value")},
      {"option given twice", {"--json", "a", "--json=b", "x.log"}, 2, "", false,
       UsageError("option '--json' is given more than once")},
      {"missing LOG", {"--table"}, 2, "", false, UsageError("missing LOG operand")},
      {"option without its value", {"x.log", "--side-dir"}, 2, "", false,
       UsageError("option '--side-dir' requires an argument")},
      {"a day the calendar lacks", {"--season", "s.db", "--since", "2025-02-30"}, 2, "", false,
       UsageError("option '--since' needs a date as YYYY-MM-DD, not '2025-02-30'")},
      {"a period without the season", {"--until", "2025-03-01", "x.log"}, 2, "", false,
       UsageError("--until limits --season, which is missing")},
      {"a season with a log", {"--season", "s.db", "x.log"}, 2, "", false,
       UsageError("--season reads the archive only: no LOG goes with it")},
      {"both exports to standard output", {"--json", "-", "--csv", "-", "x.log"}, 2, "", false,
       UsageError("only one of --json and --csv can go to standard output ('-')")},
      {"no threads", {"-j", "0", "x.log"}, 2, "", false,
       UsageError("option '--threads' needs a whole number of threads from 1 to 1024, not '0'")},
      {"more threads than allowed", {"--threads=1025", "x.log"}, 2, "", false,
       UsageError("option '--threads' needs a whole number of threads from 1 to 1024, not '1025'")},
      // clang-format on
  };
  for (const auto& r : rows) {
    SCOPED_TRACE(r.name);
    const Outcome o = RunCli(r.args);
    EXPECT_EQ(o.status, r.status);
    EXPECT_EQ(r.prefix ? o.out.substr(0, r.out.size()) : o.out, r.out);
    EXPECT_EQ(o.err, r.err);
  }
}

constexpr char kHeader[] =
    "Name\tFrags\tDeaths\tSuicides\tF Grabs\tFC Def\tF Cap\tF Def\tB Def\tFC Frag\tSentrys\n";
constexpr char kSeparator[] = " \t \t \t \t \t \t \t \t \t \t \n";

// Carol is teamed by the second propagation pass, Dave only by a third.
constexpr char kChainStart[] = "^4Alpha^7 got the RED flag!\r\n^1Bravo^7 was railed by ^4Alpha\r\n";
constexpr char kChainEnd[] = "^4Carol^7 was railed by ^1Bravo\r\n^1Dave^7 was railed by ^4Carol\r\n";
const std::string kTwoPasses = std::string(kHeader) +
                               "Alpha\t1\t0\t0\t1\t0\t0\t0\t0\t0\t0\n"
                               "Carol\t1\t1\t0\t0\t0\t0\t0\t0\t0\t0\n"
                               "Totals\t2\t1\t0\t1\t0\t0\t0\t0\t0\t0\n" +
                               kSeparator + "Bravo\t1\t1\t0\t0\t0\t0\t0\t0\t0\t0\n";

TEST(VantorCli, SeveralLogsAreAnalysedTogetherWithTwoPropagationPasses) {
  ScratchDir dir;
  WriteBytes(dir / "a.log", kChainStart);
  WriteBytes(dir / "b.log", kChainEnd);
  WriteBytes(dir / "ab.log", std::string(kChainStart) + kChainEnd);
  const Outcome together = RunCli({"-t", "--side-dir", dir.path(), dir / "a.log", dir / "b.log"});
  EXPECT_EQ(together.status, 0);
  EXPECT_EQ(together.out, kTwoPasses + "Totals\t1\t1\t0\t0\t0\t0\t0\t0\t0\t0\n");
  EXPECT_EQ(ReadBytes(dir / "logoutput.txt"),
            "Alpha got the RED flag!\r\nBravo was railed by Alpha\r\n"
            "Carol was railed by Bravo\r\nDave was railed by Carol\r\n\r\n");
  EXPECT_TRUE(std::filesystem::exists(dir / "b.html"));
  EXPECT_FALSE(std::filesystem::exists(dir / "a.html"));
  const Outcome alone = RunCli({"--table", "--side-dir", dir.path(), dir / "ab.log"});
  EXPECT_EQ(alone.out, kTwoPasses +
                           "Dave\t0\t1\t0\t0\t0\t0\t0\t0\t0\t0\n"
                           "Totals\t1\t2\t0\t0\t0\t0\t0\t0\t0\t0\n");
}

// The whole table of report paths is the core's; here only what the command
// line adds: its option spellings and paths relative to the working directory.
TEST(VantorCli, ReportGoesWhereItsNameSaysAndNeverOverALog) {
  const struct {
    const char* name;
    const char* log;
    std::vector<std::string> options;  // "{dir}" is the log's directory
    const char* report;                // relative to the log's directory
  } rows[] = {
      {"output dir with =", "game.log", {"--output-dir={dir}/out"}, "out/game.html"},
      {"no extension, same dir spelt with /", "game", {"--output-dir", "{dir}/"}, "game.html"},
      {"relative log path", "./game.log", {}, "game.html"},
      // ".log" in a folder that the path only passes through must not move the report
      {"relative path through a .logs folder", "./q.logs/../game.log", {}, "game.html"},
      {"report named", "game.log", {"--report", "out/named.html"}, "out/named.html"},
      {"a log named like an option, after --", "-x.log", {"--"}, "-x.html"},
  };
  for (const auto& r : rows) {
    SCOPED_TRACE(r.name);
    ScratchDir dir;
    for (const char* folder : {"out", "q.logs"}) std::filesystem::create_directory(dir / folder);
    const std::string log = "^7nobody here, only ^1colours\r\n";
    WriteBytes(dir / r.log, log);
    std::vector<std::string> args{"-q", "--side-dir", dir / "out"};
    for (const std::string& o : r.options) args.push_back(ReplaceAll(o, "{dir}", dir.path()));
    args.push_back(r.log[0] == '.' || r.log[0] == '-' ? r.log : dir / r.log);
    const Outcome o = RunCli(args, dir.path());
    EXPECT_EQ(o.status, 0);
    EXPECT_EQ(o.err, "");
    EXPECT_EQ(ReadBytes(dir / r.log), log);
    std::vector<std::string> reports;
    for (const auto& f : std::filesystem::recursive_directory_iterator(dir.path())) {
      if (f.path().extension() == ".html") reports.push_back(f.path().lexically_relative(dir.path()));
    }
    EXPECT_EQ(reports, std::vector<std::string>{r.report});
  }
}

}  // namespace
}  // namespace vantor::testing
