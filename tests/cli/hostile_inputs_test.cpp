// What vantor-cli does with whatever a game client, a script or a user
// hands it: one row per hostile input, run by a shell as a user would run
// it, each with the exact messages, the exit status, every file that
// exists afterwards, and every file that existed before unchanged.

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <functional>
#include <map>
#include <set>
#include <string>

#include "support/cli_usage.h"
#include "support/run_program.h"
#include "support/test_files.h"

namespace vantor::testing {
namespace {

namespace fs = std::filesystem;
using Names = std::set<std::string>;

const Names kSideFiles = {"chat.txt", "ignored.txt", "logoutput.txt", "unknown.txt"};

// The directories of one run: L holds the logs, S takes the side files, O the report.
struct Scene {
  ScratchDir root;
  std::string L = root / "logs", S = root / "side", O = root / "out";
  Scene() {
    for (const std::string& dir : {L, S, O}) fs::create_directory(dir);
  }
  // {L}, {S} and {O} in text stand for the directories.
  std::string Expand(const std::string& text) const {
    return ReplaceAll(ReplaceAll(ReplaceAll(text, "{L}", L), "{S}", S), "{O}", O);
  }
  // Every regular file with its bytes, read even where its permissions forbid it.
  std::map<std::string, std::string> Contents() const {
    std::map<std::string, std::string> bytes;
    for (const std::string& dir : {L, S, O}) {
      for (const std::string& name : FilesIn(dir)) {
        const std::string path = dir + "/" + name;
        if (!fs::is_regular_file(fs::symlink_status(path))) continue;
        const fs::perms perms = fs::status(path).permissions();
        fs::permissions(path, fs::perms::owner_read, fs::perm_options::add);
        bytes[path] = ReadBytes(path);
        fs::permissions(path, perms);
      }
    }
    return bytes;
  }
};

const std::string kHeading =
    "Name\tFrags\tDeaths\tSuicides\tF Grabs\tFC Def\tF Cap\tF Def\tB Def\tFC Frag\tSentrys\n";
const std::string kNoTotals = "Totals\t0\t0\t0\t0\t0\t0\t0\t0\t0\t0\n";
const std::string kSeparator = " \t \t \t \t \t \t \t \t \t \t \n";
const std::string kEmptyTable = kHeading + kNoTotals + kSeparator + kNoTotals;
const std::string kOddName = "<b>&amp;\"Q'\x80\xe9\xff";
const std::string kCratered = "^7A cratered.\r\n";

struct Hostile {
  const char* name;
  std::function<void(const Scene&)> prepare;
  std::string command;  // run by bash in the scene's root: $0 is vantor-cli; {L}, {S}, {O} the directories
  std::string err;      // exact stderr
  int status;
  Names logs, sides, outs;  // every file in L, S and O afterwards
  std::string out = {};     // stdout, when given
  bool needs_permissions = false;
  std::function<void(const Scene&)> check = nullptr;
};

void PrintTo(const Hostile& row, std::ostream* out) { *out << row.name; }

const std::string kAnalyse = "exec \"$0\" -q --table --side-dir {S} --output-dir {O} {L}/game.log";

// Writes each file; {L}, {S} and {O} in its name stand for the directories.
auto Write(const std::map<std::string, std::string>& files) {
  return [files](const Scene& s) {
    for (const auto& [name, bytes] : files) WriteBytes(s.Expand(name), bytes);
  };
}
auto Write(const std::string& name, const std::string& bytes) { return Write({{name, bytes}}); }
auto WriteLog(std::string bytes) { return Write("{L}/game.log", std::move(bytes)); }

// 250 players grab the BLUE flag, which puts them in Red, and crater:
// more players than the 201 slots of the tally table.
std::string FlagPlayers() {
  std::string bytes;
  for (int i = 1; i <= 250; ++i) {
    const std::string name = "Player" + std::to_string(1000 + i).substr(1);
    bytes += "^7" + name + " got the BLUE flag!\r\n^7" + name + " cratered.\r\n";
  }
  return bytes;
}

// Waits until vantor-cli (pid $!) holds a file open in the side directory
// matching what, then runs then.
std::string WhileItHolds(const std::string& what, const std::string& then) {
  return "\"$0\" -q --side-dir {S} --output-dir {O} {L}/big.log & while kill -0 $! && ! ls -l /proc/$!/fd "
         "2>/dev/null | grep -q '" +
         what + "'; do :; done; " + then;
}

// One row per line of thought; the table is laid out by hand.
// clang-format off
std::vector<Hostile> Catalogue() {
  std::string big;  // every line new: its analysis needs memory in proportion
  for (int i = 0; i < 150000; ++i)
    big += "^7P" + std::to_string(i) + " was railed by Q" + std::to_string(i) + "\r\n";
  return {
      {"UnreadableFile",
       [](const Scene& s) {
         WriteBytes(s.L + "/game.log", kCratered);
         fs::permissions(s.L + "/game.log", fs::perms::none);
       },
       kAnalyse, "Vantor Log Analyzer: Could not read {L}/game.log: Permission denied\n", 1, {"game.log"},
       kSideFiles, {"game.html"}, kEmptyTable, true},
      {"DirectoryAsLog", [](const Scene& s) { fs::create_directory(s.L + "/game.log"); }, kAnalyse,
       "Vantor Log Analyzer: Could not read {L}/game.log: it is a directory, not a log file\n", 1, {"game.log"},
       kSideFiles, {"game.html"}, kEmptyTable},
      {"FifoAsLogDoesNotBlock", [](const Scene& s) { ::mkfifo((s.L + "/game.log").c_str(), 0644); }, kAnalyse,
       "Vantor Log Analyzer: Could not read {L}/game.log: it is a named pipe (FIFO), not a log file\n", 1,
       {"game.log"}, kSideFiles, {"game.html"}, kEmptyTable},
      {"LinkToAFifoAndASocketAsLogs",
       [](const Scene& s) {
         ::mkfifo((s.L + "/pipe").c_str(), 0644);
         fs::create_symlink("pipe", s.L + "/game.log");
         sockaddr_un address{AF_UNIX, {}};
         (s.L + "/sock.log").copy(address.sun_path, sizeof address.sun_path - 1);
         const int fd = ::socket(AF_UNIX, SOCK_STREAM, 0);
         ::bind(fd, reinterpret_cast<const sockaddr*>(&address), sizeof address);
         ::close(fd);
       },
       "exec \"$0\" -q --side-dir {S} --output-dir {O} {L}/game.log {L}/sock.log",
       "Vantor Log Analyzer: Could not read {L}/game.log: it is a named pipe (FIFO), not a log file\n"
       "Vantor Log Analyzer: Could not read {L}/sock.log: it is a socket, not a log file\n", 1,
       {"game.log", "pipe", "sock.log"}, kSideFiles, {"sock.html"}},
      {"EndlessDeviceAsLog", nullptr, "exec \"$0\" -q --side-dir {S} --output-dir {O} /dev/zero",
       "Vantor Log Analyzer: Could not read /dev/zero: it is a character device, not a log file\n", 1, {},
       kSideFiles, {"zero"}},
      {"MissingOutputDirectoryIsMade", WriteLog(kCratered),
       "exec \"$0\" -q --side-dir {S}/new --output-dir {O}/a/b {L}/game.log", "", 0, {"game.log"}, {"new"}, {"a"}, "",
       false, [](const Scene& s) { EXPECT_EQ(FilesIn(s.O + "/a/b"), Names{"game.html"}); }},
      {"EmptySideDirectory", WriteLog(kCratered), "exec \"$0\" -q --side-dir '' {L}/game.log",
       UsageError("option '--side-dir' needs a directory, not an empty value"), 2, {"game.log"}, {}, {}},
      {"EmptyOutputDirectory", WriteLog(kCratered), "exec \"$0\" -q --side-dir {S} --output-dir '' {L}/game.log",
       UsageError("option '--output-dir' needs a directory, not an empty value"), 2, {"game.log"}, {}, {}},
      {"SideDirectoryUnderAFile", WriteLog(kCratered), "exec \"$0\" -q --side-dir {L}/game.log/side {L}/game.log",
       "vantor-cli: could not create the directory {L}/game.log/side: Not a directory\n", 1, {"game.log"}, {}, {}},
      {"NoSideFiles", WriteLog(kCratered),
       "cp \"$0\" {O}/vantor-cli && XDG_STATE_HOME={S} exec {O}/vantor-cli -q --no-side-files {L}/game.log", "", 0,
       {"game.html", "game.log"}, {}, {"vantor-cli"}, "", true},  // as a user: no side file anywhere, "/" neither
      {"NoThreadToBeHad", WriteLog("^7A got the RED flag!\r\n^7B was railed by A\r\n"), "ulimit -u 1; " + kAnalyse, "",
       0, {"game.log"}, kSideFiles, {"game.html"}, kHeading + "A\t1\t0\t0\t1\t0\t0\t0\t0\t0\t0\nTotals\t1\t0\t0\t1\t0"
       "\t0\t0\t0\t0\t0\n" + kSeparator + "B\t0\t1\t0\t0\t0\t0\t0\t0\t0\t0\nTotals\t0\t1\t0\t0\t0\t0\t0\t0\t0\t0\n", true},
      {"UnwritableOutputDirectoryKeepsTheEarlierReport",
       [](const Scene& s) {
         WriteBytes(s.L + "/game.log", kCratered);
         WriteBytes(s.O + "/game.html", "the earlier report\r\n");
         fs::permissions(s.O + "/game.html", fs::perms::all);  // the file itself could be overwritten
         fs::permissions(s.O, fs::perms(0505));  // read and search, no writing
       },
       kAnalyse, "Vantor Log Analyzer: Could not write {O}/game.html: Permission denied\n", 1, {"game.log"},
       kSideFiles, {"game.html"}, "", true},
      {"UnwritableSideDirectoryKeepsTheEarlierSideFile",
       [](const Scene& s) {
         WriteBytes(s.L + "/game.log", kCratered);
         WriteBytes(s.S + "/unknown.txt", "an earlier run's line\r\n\r\n");
         fs::permissions(s.S + "/unknown.txt", fs::perms::all);
         fs::permissions(s.S, fs::perms(0505));
       },
       kAnalyse,
       "Vantor Log Analyzer: Could not write {S}/ignored.txt: Permission denied\n"
       "Vantor Log Analyzer: Could not write {S}/chat.txt: Permission denied\n"
       "Vantor Log Analyzer: Could not write {S}/logoutput.txt: Permission denied\n"
       "Vantor Log Analyzer: Could not write {S}/unknown.txt: Permission denied\n",
       1, {"game.log"}, {"unknown.txt"}, {"game.html"}, "", true},
      {"SideFileBeyondTheSizeLimitKeepsTheEarlierOne",
       Write({{"{L}/game.log", std::string(3 << 20, '\n')}, {"{S}/ignored.txt", "an earlier run's line\r\n"}}),
       "ulimit -f 4096; " + kAnalyse, "Vantor Log Analyzer: Could not write {S}/ignored.txt: File too large\n", 1,
       {"game.log"}, kSideFiles, {"game.html"}},
      {"LogInTheSideDirectoryKeepsItsName", Write("{S}/chat.txt", kCratered),
       "exec \"$0\" -q --side-dir {S} --output-dir {O} {S}/chat.txt",
       "Vantor Log Analyzer: Did not write {S}/chat.txt: it is the log {S}/chat.txt of this run\n", 1, {},
       kSideFiles, {"chat.txt"}},
      {"ReportAndSideFileInOneDirectory", WriteLog(kCratered),
       "cp {L}/game.log {L}/unknown.txt; exec \"$0\" -q --side-dir {S} --output-dir {S} {L}/unknown.txt",
       "Vantor Log Analyzer: Did not write {S}/unknown.txt: it is the same file as {S}/unknown.txt, written earlier "
       "in this run\n", 1, {"game.log", "unknown.txt"}, kSideFiles, {}},
      {"ReportNamedAfterTheLastLogIsTheFirstLog", Write("{L}/game.html", kCratered),
       "cp {L}/game.html {L}/game.log; exec \"$0\" -q --side-dir {S} {L}/game.html {L}/game.log",
       "Vantor Log Analyzer: Did not write {L}/game.html: it is the log {L}/game.html of this run\n", 1,
       {"game.html", "game.log"}, kSideFiles, {}},
      {"ForgottenExportValueKeepsTheLog", WriteLog(kCratered),
       "cp {L}/game.log {L}/map2.log; exec \"$0\" -q --side-dir {S} --json {L}/game.log {L}/map2.log",
       "Vantor Log Analyzer: Did not write {L}/game.log: it is not a JSON export of this program, and it is kept\n",
       1, {"game.log", "map2.html", "map2.log"}, kSideFiles, {}},
      {"ExportOverTheReport", WriteLog(kCratered),
       "exec \"$0\" -q --side-dir {S} --output-dir {O} --csv {O}/game.html {L}/game.log",
       "Vantor Log Analyzer: Did not write {O}/game.html: it is the same file as {O}/game.html, written earlier in "
       "this run\n", 1, {"game.log"}, kSideFiles, {"game.html"}},
      {"ExportsToStandardOutputAndThroughALink", WriteLog("^7" + kOddName + " cratered.\r\n"),
       "ln -s real.csv {O}/link.csv; exec \"$0\" -q --side-dir {S} --output-dir {O} --json - --csv {O}/link.csv "
       "{L}/game.log", "", 0, {"game.log"}, kSideFiles, {"game.html", "link.csv", "real.csv"}, "{\n  \"format\": ",
       false, [](const Scene& s) {
         EXPECT_TRUE(fs::is_symlink(s.O + "/link.csv"));
         EXPECT_EQ(ReadBytes(s.O + "/real.csv").substr(0, 15), "slot,name,team,");
       }},
      {"JsonThroughDevStdoutIntoAPipe", WriteLog(kCratered),
       "set -o pipefail; \"$0\" -q --side-dir {S} --output-dir {O} --json /dev/stdout {L}/game.log | cat", "", 0,
       {"game.log"}, kSideFiles, {"game.html"}, "{\n  \"format\": \"vantor-log-analyzer-statistics\",\n", false,
       [](const Scene&) { EXPECT_TRUE(fs::is_symlink("/dev/stdout")); }},
      {"OneFileForBothExports", WriteLog(kCratered), "exec \"$0\" -q --side-dir {S} --json {O}/x --csv {O}/./x {L}/game.log",
       UsageError("--json and --csv name the same file"), 2, {"game.log"}, {}, {}},
      {"TableIntoAFullDevice", WriteLog(kCratered), kAnalyse + " >/dev/full",
       "vantor-cli: could not write to standard output: No space left on device\n", 1, {"game.log"}, kSideFiles,
       {"game.html"}},
      {"UnknownSummaryIntoAFullDevice", WriteLog(kCratered),
       "exec \"$0\" -q --side-dir {S} --output-dir {O} --unknown-summary {L}/game.log >/dev/full",
       "vantor-cli: could not write to standard output: No space left on device\n", 1, {"game.log"}, kSideFiles,
       {"game.html"}},
      {"TableIntoAClosedStandardOutput", WriteLog(kCratered), kAnalyse + " >&-",
       "vantor-cli: could not write to standard output: Bad file descriptor\n", 1, {"game.log"}, kSideFiles,
       {"game.html"}},
      {"DotDotAfterALinkGoesWhereTheLinkLeads", WriteLog("^7Bravo was railed by Alpha\r\n"),
       "mkdir -p {O}/real/sub && cp {L}/game.log {O}/real/ && echo decoy > {O}/game.log && ln -s real/sub {O}/link && "
       "exec \"$0\" -q --table --side-dir {S} {O}/link/../game.log", "", 0, {"game.log"}, kSideFiles,
       {"game.log", "link", "real"}, kEmptyTable, false,
       [](const Scene& s) { EXPECT_EQ(FilesIn(s.O + "/real"), (Names{"game.html", "game.log", "sub"})); }},
      {"LogBeyondTheLongestAbsolutePathAndLongestReportName", WriteLog(kCratered),
       "d=$(printf '%0200d' 0); for i in $(seq 25); do mkdir $d && cd $d; done; n=$(printf '%0245d' 0);"
       " cp {L}/game.log $n.log && \"$0\" -q --side-dir {S} $n.log && test -f $n.html && echo made;"
       " for i in $(seq 25); do cd ..; done; rm -r $d", "", 0, {"game.log"}, kSideFiles, {}, "made\n"},
      {"OutOfMemory", Write("{L}/big.log", big), "ulimit -v 40000; exec \"$0\" -q --side-dir {S} {L}/big.log",
       "vantor-cli: Not enough memory to analyse {L}/big.log\n", 1, {"big.log"}, {}, {}},
      {"InterruptedRunLeavesNoTemporaryFile", Write("{L}/big.log", big),
       WhileItHolds("side/#", "kill -TERM $!; wait $!; echo $?"), "", 0, {"big.log"}, {}, {}, "143\n"},
      {"CtrlCLeavesNoTemporaryFile", Write("{L}/big.log", big),
       WhileItHolds("side/#", "kill -INT $!; wait $!; echo $?"), "", 0, {"big.log"}, {}, {}, "130\n"},
      {"KilledRunLeavesNoTemporaryFile", Write("{L}/big.log", big),
       WhileItHolds("side/#", "kill -KILL $!; wait $! 2>/dev/null; echo $?"), "", 0, {"big.log"}, {}, {}, "137\n"},
      // Named temporary files (where the file system has no unnamed ones) that no run holds
      // and older than a minute are a killed run's: the next run into their directory removes them.
      {"StaleTemporaryFilesAreRemovedAndHeldOnesKept", WriteLog(kCratered),
       "cd {S} && touch -d '-2 min' .vantor-Ab12Cd .vantor-12-3.tmp .vantor-Held12 .vantor-other && touch "
       ".vantor-New123 && exec 9<.vantor-Held12 && flock 9 && " + kAnalyse, "", 0, {"game.log"},
       {".vantor-Held12", ".vantor-New123", ".vantor-other", "chat.txt", "ignored.txt", "logoutput.txt",
        "unknown.txt"}, {"game.html"}, kEmptyTable},
      {"ASecondRunIntoTheSameSideDirectoryWaits",
       Write({{"{L}/big.log", big}, {"{L}/game.log", kCratered}}),
       WhileItHolds("side$", "\"$0\" --side-dir {S} --output-dir {O} {L}/game.log 2>&1 | grep -v written >&2; wait"),
       "vantor-cli: waiting for another run that writes into {S}\n", 0, {"big.log", "game.log"}, kSideFiles,
       {"big.html", "game.html"}, "", false,
       [](const Scene& s) { EXPECT_EQ(ReadBytes(s.S + "/logoutput.txt"), "A cratered.\r\n\r\n"); }},
      {"MarkupQuotesAndHighBytesInNames",
       WriteLog("^7" + kOddName + " got the BLUE flag!\r\n^7Bravo was railed by " + kOddName + "\r\n"), kAnalyse, "",
       0, {"game.log"}, kSideFiles, {"game.html"},
       kHeading + "Bravo\t0\t1\t0\t0\t0\t0\t0\t0\t0\t0\nTotals\t0\t1\t0\t0\t0\t0\t0\t0\t0\t0\n" + kSeparator +
           kOddName + "\t1\t0\t0\t1\t0\t0\t0\t0\t0\t0\nTotals\t1\t0\t0\t1\t0\t0\t0\t0\t0\t0\n",
       false, [](const Scene& s) {
         // Written unchanged, not escaped, in the report too.
         EXPECT_NE(ReadBytes(s.O + "/game.html").find("<TR><td>\r\n<font color=#FF0000>\r\n" + kOddName +
                   "</font></TD>\r\n<td>1</TD>\r\n<td>0</TD>\r\n<td>0</TD>\r\n</tr>\r\n"), std::string::npos);
       }},
      {"TwoHundredFiftyPlayersWithFlagEvents", WriteLog(FlagPlayers()), kAnalyse, "", 0, {"game.log"}, kSideFiles,
       {"game.html"}, "", false, [](const Scene& s) {
         const std::string report = ReadBytes(s.O + "/game.html");
         EXPECT_NE(report.find("<font color=#FF0000>\r\nPlayer250</font></TD>\r\n<td>0</TD>\r\n<td>1</TD>\r\n<td>1</TD>"),
                   std::string::npos);
         EXPECT_NE(report.find("<tr><td><b>Total</b></TD><td><b>0</TD><td><b>250</TD><td><b>250</TD></tr>"),
                   std::string::npos);
       }},
  };
}
// clang-format on

class HostileInput : public ::testing::TestWithParam<Hostile> {};

TEST_P(HostileInput, GivesItsMessageStatusAndFilesAndChangesNoFileThatWasThere) {
  const Hostile& row = GetParam();
  const bool process_limit = row.command.find("ulimit -u") != std::string::npos;
  if (row.needs_permissions && !PermissionsApplyTo(VANTOR_CLI)) {
    GTEST_SKIP() << "running as root without a \"nobody\" to run vantor-cli as, "
                 << (process_limit ? "and ulimit -u does not limit root" : "permissions would not stop it");
  }
  if ((process_limit || row.command.find("ulimit -v") != std::string::npos) && std::getenv("ASAN_OPTIONS")) {
    GTEST_SKIP() << (process_limit ? "AddressSanitizer's leak check needs a thread of its own at exit, which "
                                     "ulimit -u 1 does not allow"
                                   : "AddressSanitizer reserves more address space than ulimit -v allows");
  }
  Scene scene;
  if (row.needs_permissions) {
    for (const std::string& dir : {scene.root.path().string(), scene.L, scene.S, scene.O}) {
      fs::permissions(dir, fs::perms::all);
    }
  }
  if (row.prepare) row.prepare(scene);
  const auto before = scene.Contents();
  const Outcome o = RunProgram("/bin/bash", {"-c", scene.Expand(row.command), VANTOR_CLI},
                               {scene.root.path().string(), row.needs_permissions});
  EXPECT_EQ(o.err, scene.Expand(row.err));
  EXPECT_EQ(o.status, row.status);
  EXPECT_EQ(o.out.substr(0, row.out.size()), row.out);
  const auto after = scene.Contents();
  for (const std::string& dir : {scene.S, scene.O})
    fs::permissions(dir, fs::perms::owner_all, fs::perm_options::add);
  EXPECT_EQ(FilesIn(scene.L), row.logs);
  EXPECT_EQ(FilesIn(scene.S), row.sides);
  EXPECT_EQ(FilesIn(scene.O), row.outs);
  for (const auto& [path, bytes] : before)
    EXPECT_EQ(after.count(path) ? after.at(path) : "(gone)", bytes) << path;
  if (row.check) row.check(scene);
}

INSTANTIATE_TEST_SUITE_P(Catalogue, HostileInput, ::testing::ValuesIn(Catalogue()),
                         [](const auto& info) { return std::string(info.param.name); });

}  // namespace
}  // namespace vantor::testing
