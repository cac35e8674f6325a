// vantor-cli driven as a user drives it: arguments in, exit status, output
// streams and files out.

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "support/test_files.h"

namespace vantor::testing {
namespace {

struct Result {
  int status;
  std::string out, err;
};

Result RunCli(const ScratchDir& dir, const std::string& args) {
  const std::string command = std::string(VANTOR_CLI) + " " + args + " >" + (dir / "stdout") +
                              " 2>" + (dir / "stderr");
  const int raw = std::system(command.c_str());
  return {WEXITSTATUS(raw), ReadBytes(dir / "stdout"), ReadBytes(dir / "stderr")};
}

const char kHeader[] =
    "Name\tFrags\tDeaths\tSuicides\tF Grabs\tFC Def\tF Cap\tF Def\tB Def\tFC Frag\tSentrys\n";

TEST(VantorCli, UsageErrorsHelpAndVersion) {
  ScratchDir dir;
  const Result help = RunCli(dir, "--help");
  EXPECT_EQ(help.status, 0);
  EXPECT_EQ(help.out.rfind("Usage: vantor-cli [--output-dir DIR]", 0), 0u);
  EXPECT_EQ(RunCli(dir, "--version").out, "vantor-cli (Vantor Log Analyzer) 0.80\n");
  const Result unknown = RunCli(dir, "--frobnicate x.log");
  EXPECT_EQ(unknown.status, 2);
  EXPECT_EQ(unknown.err.rfind("vantor-cli: unrecognized option '--frobnicate'\n", 0), 0u);
  const Result missing = RunCli(dir, "--table");
  EXPECT_EQ(missing.status, 2);
  EXPECT_EQ(missing.err.rfind("vantor-cli: missing LOG operand\n", 0), 0u);
}

TEST(VantorCli, OneLogWritesSideFilesReportAndTable) {
  ScratchDir dir;
  std::filesystem::create_directory(dir / "side");
  WriteBytes(dir / "game.log",
             "^7Alpha got the RED flag!\r\n"
             "^7Bravo was railed by ^1Alpha\r\n"
             "Bravo's Sentry Gun was destroyed by Alpha.\r\n"
             "^7Alpha: ^3nice\r\n"
             "^7who knows\r\n"
             "noise\r\n");
  const Result r = RunCli(dir, "--table --side-dir " + (dir / "side") + " " + (dir / "game.log"));
  EXPECT_EQ(r.status, 0);
  EXPECT_EQ(r.err, "");
  EXPECT_EQ(r.out, std::string(kHeader) +
                       "Alpha\t1\t0\t0\t1\t0\t0\t0\t0\t0\t1\n"
                       "Totals\t1\t0\t0\t1\t0\t0\t0\t0\t0\t1\n"
                       " \t \t \t \t \t \t \t \t \t \t \n"
                       "Bravo\t0\t1\t0\t0\t0\t0\t0\t0\t0\t0\n"
                       "Totals\t0\t1\t0\t0\t0\t0\t0\t0\t0\t0\n");
  EXPECT_EQ(ReadBytes(dir / "side/logoutput.txt"),
            "Alpha got the RED flag!\r\nBravo was railed by Alpha\r\n"
            "Bravo's Sentry Gun was destroyed by Alpha.\r\nwho knows\r\n\r\n");
  EXPECT_EQ(ReadBytes(dir / "side/ignored.txt"),
            "\r\n\r\n\r\nAlpha: nice\r\n\r\n\r\nnoise\r\n\r\n");
  EXPECT_EQ(ReadBytes(dir / "side/chat.txt"), "Alpha: nice\r\n");
  EXPECT_EQ(ReadBytes(dir / "side/unknown.txt"), "who knows\r\n\r\n");
  EXPECT_TRUE(std::filesystem::exists(dir / "game.html"));
}

TEST(VantorCli, SeveralLogsAreAnalysedTogetherAndMessagesSetTheStatus) {
  ScratchDir dir;
  WriteBytes(dir / "a.log", "^7Alpha got the RED flag!\r\n");
  WriteBytes(dir / "b.log", "^7Bravo was railed by Alpha\r\n");
  std::filesystem::create_directory(dir / "out");
  const Result r = RunCli(dir, "--table --side-dir " + dir.path().string() + " --output-dir " +
                                   (dir / "out") + " " + (dir / "a.log") + " " + (dir / "missing.log") +
                                   " " + (dir / "b.log"));
  EXPECT_EQ(r.status, 1);
  EXPECT_EQ(r.err, "Vantor Log Analyzer: File Not Found\n");
  // Two passes: Bravo, killed by a Blue member, becomes Red in the first.
  EXPECT_EQ(r.out, std::string(kHeader) +
                       "Alpha\t1\t0\t0\t1\t0\t0\t0\t0\t0\t0\n"
                       "Totals\t1\t0\t0\t1\t0\t0\t0\t0\t0\t0\n"
                       " \t \t \t \t \t \t \t \t \t \t \n"
                       "Bravo\t0\t1\t0\t0\t0\t0\t0\t0\t0\t0\n"
                       "Totals\t0\t1\t0\t0\t0\t0\t0\t0\t0\t0\n");
  EXPECT_EQ(ReadBytes(dir / "logoutput.txt"),
            "Alpha got the RED flag!\r\nBravo was railed by Alpha\r\n\r\n");
  EXPECT_TRUE(std::filesystem::exists(dir / "out/b.html"));
}

}  // namespace
}  // namespace vantor::testing
