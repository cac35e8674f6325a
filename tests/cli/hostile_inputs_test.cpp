// What vantor-cli does with whatever a game client (or a user) hands it:
// one row per hostile input, each with the exact messages, the exit
// status, every file that exists afterwards, and every file that existed
// before unchanged.

#include <gtest/gtest.h>

#include <sys/resource.h>

#include <csignal>
#include <filesystem>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

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
  std::string Expand(std::string text) const {
    for (const auto& [key, dir] : std::map<std::string, std::string>{{"{L}", L}, {"{S}", S}, {"{O}", O}}) {
      for (std::size_t at; (at = text.find(key)) != std::string::npos;) text.replace(at, key.size(), dir);
    }
    return text;
  }
  // Every regular file with its bytes, read even where its permissions forbid it.
  std::map<std::string, std::string> Contents() const {
    std::map<std::string, std::string> bytes;
    for (const std::string& dir : {L, S, O}) {
      for (const std::string& name : FilesIn(dir)) {
        const std::string path = dir + "/" + name;
        if (!fs::is_regular_file(path)) continue;
        const fs::perms perms = fs::status(path).permissions();
        fs::permissions(path, fs::perms::owner_read, fs::perm_options::add);
        bytes[path] = ReadBytes(path);
        fs::permissions(path, perms);
      }
    }
    return bytes;
  }
};

// The largest file vantor-cli may write, for one run; a write beyond it fails.
class FileSizeLimit {
 public:
  explicit FileSizeLimit(rlim_t bytes) : old_handler_(std::signal(SIGXFSZ, SIG_IGN)) {
    getrlimit(RLIMIT_FSIZE, &saved_);
    rlimit limit = saved_;
    limit.rlim_cur = bytes;
    setrlimit(RLIMIT_FSIZE, &limit);
  }
  ~FileSizeLimit() {
    setrlimit(RLIMIT_FSIZE, &saved_);
    std::signal(SIGXFSZ, old_handler_);
  }

 private:
  void (*old_handler_)(int);
  rlimit saved_{};
};

const std::string kHeading = "Name\tFrags\tDeaths\tSuicides\tF Grabs\tFC Def\tF Cap\tF Def\tB Def\tFC Frag\tSentrys\n";
const std::string kNoTotals = "Totals\t0\t0\t0\t0\t0\t0\t0\t0\t0\t0\n";
const std::string kSeparator = " \t \t \t \t \t \t \t \t \t \t \n";
const std::string kOddName = "<b>&amp;\"Q'\x80\xe9\xff";

struct Hostile {
  const char* name;
  std::function<void(const Scene&)> prepare;
  std::vector<std::string> args;  // {L}, {S}, {O} stand for the directories
  std::string err;                // exact stderr
  int status;
  Names logs, sides, outs;  // every file in L, S and O afterwards
  std::string table;        // stdout, when given
  bool needs_permissions = false;
  rlim_t file_limit = RLIM_INFINITY;
  std::function<void(const Scene&)> check = nullptr;
};

void PrintTo(const Hostile& row, std::ostream* out) { *out << row.name; }

const std::vector<std::string> kAnalyse = {"--table", "--side-dir", "{S}", "--output-dir", "{O}", "{L}/game.log"};

auto WriteLog(std::string bytes, const std::string& name = "game.log") {
  return [name, bytes = std::move(bytes)](const Scene& s) { WriteBytes(s.L + "/" + name, bytes); };
}

void ForbidWriting(const std::string& dir) {
  fs::permissions(dir, fs::perms::owner_read | fs::perms::owner_exec | fs::perms::others_read | fs::perms::others_exec);
}

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

std::vector<Hostile> Catalogue() {
  const std::string cratered = "^7A cratered.\r\n";
  return {
      {"EmptyFile", WriteLog(""), kAnalyse, "", 0, {"game.log"}, kSideFiles, {"game.html"},
       kHeading + kNoTotals + kSeparator + kNoTotals},
      {"MissingFile", [](const Scene&) {}, {"--side-dir", "{S}", "--output-dir", "{O}", "{L}/absent.log"},
       "Vantor Log Analyzer: File Not Found\n", 1, {}, kSideFiles, {"absent.html"}},
      {"UnreadableFile",
       [](const Scene& s) {
         WriteBytes(s.L + "/game.log", "^7A cratered.\r\n");
         fs::permissions(s.L + "/game.log", fs::perms::none);
       },
       kAnalyse, "Vantor Log Analyzer: Could not read {L}/game.log: Permission denied\n", 1, {"game.log"},
       kSideFiles, {"game.html"}, kHeading + kNoTotals + kSeparator + kNoTotals, true},
      {"DirectoryAsLog", [](const Scene& s) { fs::create_directory(s.L + "/dir.log"); },
       {"--side-dir", "{S}", "--output-dir", "{O}", "{L}/dir.log"},
       "Vantor Log Analyzer: Could not read {L}/dir.log: it is a directory, not a log file\n", 1, {"dir.log"},
       kSideFiles, {"dir.html"}},
      {"MissingOutputDirectoryIsMade", WriteLog(cratered),
       {"--side-dir", "{S}", "--output-dir", "{O}/new/deep", "{L}/game.log"}, "", 0, {"game.log"}, kSideFiles,
       {"new"}, "", false, RLIM_INFINITY,
       [](const Scene& s) { EXPECT_TRUE(fs::is_regular_file(s.O + "/new/deep/game.html")); }},
      {"UnwritableOutputDirectoryKeepsTheEarlierReport",
       [](const Scene& s) {
         WriteBytes(s.L + "/game.log", "^7A cratered.\r\n");
         WriteBytes(s.O + "/game.html", "the earlier report\r\n");
         fs::permissions(s.O + "/game.html", fs::perms::all);  // the file itself could be overwritten
         ForbidWriting(s.O);
       },
       kAnalyse, "Vantor Log Analyzer: Could not write {O}/game.html: Permission denied\n", 1, {"game.log"},
       kSideFiles, {"game.html"}, "", true},
      {"UnwritableSideDirectoryKeepsTheEarlierSideFile",
       [](const Scene& s) {
         WriteBytes(s.L + "/game.log", "^7A cratered.\r\n");
         WriteBytes(s.S + "/unknown.txt", "an earlier run's line\r\n\r\n");
         fs::permissions(s.S + "/unknown.txt", fs::perms::all);
         ForbidWriting(s.S);
       },
       kAnalyse,
       "Vantor Log Analyzer: Could not write {S}/ignored.txt: Permission denied\n"
       "Vantor Log Analyzer: Could not write {S}/chat.txt: Permission denied\n"
       "Vantor Log Analyzer: Could not write {S}/logoutput.txt: Permission denied\n"
       "Vantor Log Analyzer: Could not write {S}/unknown.txt: Permission denied\n",
       1, {"game.log"}, {"unknown.txt"}, {"game.html"}, "", true},
      {"SideFileTooLargeKeepsTheEarlierOne",
       [](const Scene& s) {
         WriteBytes(s.L + "/game.log", std::string(3 << 20, '\n'));
         WriteBytes(s.S + "/ignored.txt", "an earlier run's line\r\n");
       },
       kAnalyse, "Vantor Log Analyzer: Could not write {S}/ignored.txt: File too large\n", 1, {"game.log"}, kSideFiles,
       {"game.html"}, "", false, 4 << 20},
      {"MarkupQuotesAndHighBytesInNames",
       WriteLog("^7" + kOddName + " got the BLUE flag!\r\n^7Bravo was railed by " + kOddName + "\r\n"), kAnalyse, "",
       0, {"game.log"}, kSideFiles, {"game.html"},
       kHeading + "Bravo\t0\t1\t0\t0\t0\t0\t0\t0\t0\t0\nTotals\t0\t1\t0\t0\t0\t0\t0\t0\t0\t0\n" + kSeparator +
           kOddName + "\t1\t0\t0\t1\t0\t0\t0\t0\t0\t0\nTotals\t1\t0\t0\t1\t0\t0\t0\t0\t0\t0\n",
       false, RLIM_INFINITY, [](const Scene& s) {
         // Written unchanged, not escaped, in the report too.
         EXPECT_NE(ReadBytes(s.O + "/game.html")
                       .find("<TR><td>\r\n<font color=#FF0000>\r\n" + kOddName + "</font></TD>\r\n<td>1</TD>\r\n"
                             "<td>0</TD>\r\n<td>0</TD>\r\n</tr>\r\n"),
                   std::string::npos);
       }},
      {"TwoHundredFiftyPlayersWithFlagEvents", WriteLog(FlagPlayers()), kAnalyse, "", 0, {"game.log"}, kSideFiles,
       {"game.html"}, "", false, RLIM_INFINITY, [](const Scene& s) {
         const std::string report = ReadBytes(s.O + "/game.html");
         EXPECT_NE(report.find("<font color=#FF0000>\r\nPlayer250</font></TD>\r\n<td>0</TD>\r\n<td>1</TD>\r\n<td>1</TD>"),
                   std::string::npos);
         EXPECT_NE(report.find("<tr><td><b>Total</b></TD><td><b>0</TD><td><b>250</TD><td><b>250</TD></tr>"),
                   std::string::npos);
       }},
  };
}

class HostileInput : public ::testing::TestWithParam<Hostile> {};

TEST_P(HostileInput, GivesItsMessageStatusAndFilesAndChangesNoFileThatWasThere) {
  const Hostile& row = GetParam();
  if (row.needs_permissions && !PermissionsApplyTo(VANTOR_CLI)) {
    GTEST_SKIP() << "running as root without a \"nobody\" to run vantor-cli as, permissions would not stop it";
  }
  Scene scene;
  if (row.needs_permissions) {
    for (const std::string& dir : {scene.root.path().string(), scene.L, scene.S, scene.O}) {
      fs::permissions(dir, fs::perms::all);
    }
  }
  row.prepare(scene);
  const auto before = scene.Contents();
  std::vector<std::string> args;
  for (const std::string& arg : row.args) args.push_back(scene.Expand(arg));
  Outcome o;
  {
    FileSizeLimit limit(row.file_limit);
    o = RunProgram(VANTOR_CLI, args, {".", row.needs_permissions});
  }
  EXPECT_EQ(o.err, scene.Expand(row.err));
  EXPECT_EQ(o.status, row.status);
  if (!row.table.empty()) EXPECT_EQ(o.out, row.table);
  const auto after = scene.Contents();
  for (const std::string& dir : {scene.S, scene.O}) fs::permissions(dir, fs::perms::owner_all, fs::perm_options::add);
  EXPECT_EQ(FilesIn(scene.L), row.logs);
  EXPECT_EQ(FilesIn(scene.S), row.sides);
  EXPECT_EQ(FilesIn(scene.O), row.outs);
  for (const auto& [path, bytes] : before) {
    EXPECT_TRUE(after.count(path) != 0 && after.at(path) == bytes) << path << " changed";
  }
  if (row.check) row.check(scene);
}

INSTANTIATE_TEST_SUITE_P(Catalogue, HostileInput, ::testing::ValuesIn(Catalogue()),
                         [](const ::testing::TestParamInfo<Hostile>& info) { return std::string(info.param.name); });

}  // namespace
}  // namespace vantor::testing
