// vantor-cli as an installed program: a progress bar only on a terminal,
// --quiet, and side files in the user's own state directory.

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "support/run_program.h"
#include "support/test_files.h"

namespace vantor::testing {
namespace {

namespace fs = std::filesystem;

constexpr char kLog[] = "^7Alpha got the BLUE flag!\r\n^7Bravo was railed by Alpha\r\n";

// Runs a shell command line on a pseudo-terminal (script(1)) and returns
// what the terminal showed.
std::string OnTerminal(const std::string& command, const ScratchDir& dir) {
  const std::string shown = dir / "terminal.txt";
  const std::string line = "script -qec '" + command + "' /dev/null > " + shown + " 2>&1";
  EXPECT_EQ(std::system(line.c_str()), 0) << line;
  return ReadBytes(shown);
}

TEST(VantorCliTerminal, ProgressBarOnATerminalOnlyAndNeverWithQuiet) {
  ScratchDir dir;
  WriteBytes(dir / "game.log", kLog);
  const std::string run = std::string(VANTOR_CLI) + " --side-dir " + dir.path().string() + " --output-dir " +
                          dir.path().string() + " " + (dir / "game.log");
  const std::string shown = OnTerminal(run, dir);
  // The bar is drawn over itself and wiped before the last line.
  for (const char* part :
       {"\r\033[Kvantor-cli: [..............................] 0% reading game.log",
        "[##############################] 100% analysing\r\033[Kvantor-cli: report written to "})
    EXPECT_NE(shown.find(part), std::string::npos) << shown;
  EXPECT_TRUE(shown.ends_with("\r\033[Kvantor-cli: report written to " + dir / "game.html" + "\r\n"))
      << shown;
  EXPECT_EQ(OnTerminal(run + " --quiet", dir), "");
  EXPECT_EQ(
      OnTerminal("TERM=dumb " + run, dir),
      "vantor-cli: 0% reading game.log\r\nvantor-cli: 80% reading game.log\r\nvantor-cli: 80% analysing\r\n"
      "vantor-cli: 90% analysing\r\nvantor-cli: 100% analysing\r\nvantor-cli: report written to " +
          dir / "game.html" + "\r\n");
  // Three read pieces of 1 MiB: the bar moves while the later log is read, and never goes back.
  WriteBytes(dir / "big.log", kLog + std::string(3 << 20, '\n'));
  EXPECT_EQ(OnTerminal("TERM=dumb " + run + " " + (dir / "big.log"), dir),
            "vantor-cli: 0% reading game.log\r\nvantor-cli: 0% reading big.log\r\n"
            "vantor-cli: 26% reading big.log\r\nvantor-cli: 53% reading big.log\r\n"
            "vantor-cli: 79% reading big.log\r\nvantor-cli: 80% reading big.log\r\n"
            "vantor-cli: 80% analysing\r\nvantor-cli: 90% analysing\r\nvantor-cli: 100% analysing\r\n"
            "vantor-cli: report written to " +
                dir / "big.html" + "\r\n");
  const Outcome piped =
      RunProgram(VANTOR_CLI, {"-q", "--side-dir", dir.path(), "-o", dir.path(), dir / "game.log"});
  EXPECT_EQ(piped.err, "");
  EXPECT_EQ(piped.status, 0);
}

TEST(VantorCliTerminal, InstalledCopySendsSideFilesToTheUsersStateDirectoryOnceSaid) {
  ScratchDir dir;
  const std::string bin = dir / "bin", data = dir / "data", out = dir / "out";
  for (const std::string& d : {bin, data, out}) fs::create_directory(d);
  fs::copy_file(VANTOR_CLI, bin + "/vantor-cli");
  WriteBytes(dir / "game.log", kLog);
  for (const std::string& d : {dir.path().string(), data, out}) fs::permissions(d, fs::perms::all);
  fs::permissions(bin, fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write,
                  fs::perm_options::remove);
  ::setenv("XDG_STATE_HOME", data.c_str(), 1);
  const std::vector<std::string> args = {"--output-dir", out, dir / "game.log"};
  const Outcome first = RunProgram(bin + "/vantor-cli", args, {".", true});
  const Outcome second = RunProgram(bin + "/vantor-cli", args, {".", true});
  const Outcome quiet =
      RunProgram(bin + "/vantor-cli", {"--quiet", "--output-dir", out, dir / "game.log"}, {".", true});
  ::unsetenv("XDG_STATE_HOME");
  const std::string side = data + "/vantor-log-analyzer";
  const std::string report = "vantor-cli: report written to " + out + "/game.html\n";
  EXPECT_EQ(first.err,
            "vantor-cli: Side files (logoutput.txt, ignored.txt, chat.txt, unknown.txt) are written to " +
                side + ".\n" + report);
  EXPECT_EQ(first.status, 0);
  EXPECT_EQ(second.err, report);
  EXPECT_EQ(quiet.err, "");
  EXPECT_EQ(ReadBytes(side + "/logoutput.txt"),
            "Alpha got the BLUE flag!\r\nBravo was railed by Alpha\r\n\r\n");
  EXPECT_TRUE(fs::exists(side + "/unknown.txt"));
  EXPECT_FALSE(fs::exists(bin + "/logoutput.txt"));
}

TEST(VantorCliTerminal, OpenHandsTheReportToTheDesktopAndKeepsTheOpenersOutputOut) {
  ScratchDir dir;
  fs::create_directory(dir / "bin");
  WriteBytes(dir / "game.log", kLog);
  // The opener reports on descriptor 3, which the program passes on untouched;
  // the pipe ends only when the opener has finished.
  const std::string opener = dir / "bin/xdg-open";
  WriteBytes(opener, "#!/bin/sh\necho opener chatter\necho opener complaint >&2\necho \"opened $1\" >&3\n");
  fs::permissions(opener, fs::perms::owner_all);
  const std::string line = "PATH=" + (dir / "bin") + ":$PATH " + VANTOR_CLI + " --quiet --open --side-dir " +
                           dir.path().string() + " " + (dir / "game.log") + " 3>&1 2>&1 | cat > " +
                           (dir / "seen.txt");
  ASSERT_EQ(std::system(line.c_str()), 0) << line;
  EXPECT_EQ(ReadBytes(dir / "seen.txt"), "opened " + (dir / "game.html") + "\n");
}

}  // namespace
}  // namespace vantor::testing
