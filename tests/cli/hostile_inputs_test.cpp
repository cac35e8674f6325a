// What vantor-cli does with whatever a game client (or a user) hands it:
// one row per hostile input, each with the exact messages, the exit
// status, every file that exists afterwards, and the inputs unchanged.

#include <gtest/gtest.h>

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

// The directories of one run: L holds the logs, S takes the side files,
// O the report.
struct Scene {
  ScratchDir root;
  std::string L = root / "logs", S = root / "side", O = root / "out";
  Scene() {
    for (const std::string& dir : {L, S, O}) fs::create_directory(dir);
  }
  std::string Log(const std::string& name) const { return L + "/" + name; }
  // {L}, {S} and {O} in text stand for the directories.
  std::string Expand(std::string text) const {
    for (const auto& [key, dir] : std::map<std::string, std::string>{{"{L}", L}, {"{S}", S}, {"{O}", O}}) {
      for (std::size_t at = text.find(key); at != std::string::npos; at = text.find(key, at + dir.size())) {
        text.replace(at, key.size(), dir);
      }
    }
    return text;
  }
};

Names FilesIn(const std::string& dir) {
  Names names;
  std::error_code ec;
  for (const auto& entry : fs::directory_iterator(dir, ec)) names.insert(entry.path().filename().string());
  return names;
}

// Every regular file of dir with its bytes, read even where its
// permissions forbid it (and left with them).
std::map<std::string, std::string> Contents(const std::string& dir) {
  std::map<std::string, std::string> files;
  for (const std::string& name : FilesIn(dir)) {
    const std::string path = dir + "/" + name;
    if (!fs::is_regular_file(path)) continue;
    const fs::perms perms = fs::status(path).permissions();
    fs::permissions(path, fs::perms::owner_read, fs::perm_options::add);
    files[name] = ReadBytes(path);
    fs::permissions(path, perms);
  }
  return files;
}

std::string Repeat(const std::string& line, int times) {
  std::string bytes;
  bytes.reserve(line.size() * static_cast<std::size_t>(times));
  for (int i = 0; i < times; ++i) bytes += line;
  return bytes;
}

std::string Players(int count) {
  std::string bytes;
  char name[16];
  for (int i = 1; i <= count; ++i) {
    std::snprintf(name, sizeof name, "Player%03d", i);
    // The suicide puts the player on the roster, the flag grab in Red.
    bytes += std::string("^7") + name + " got the BLUE flag!\r\n^7" + name + " cratered.\r\n";
  }
  return bytes;
}

// The rows of the statistics table printed by --table, for exact checks.
std::vector<std::string> TableRows(const std::string& out) {
  std::vector<std::string> rows;
  for (std::size_t start = 0, end; (end = out.find('\n', start)) != std::string::npos; start = end + 1) {
    rows.push_back(out.substr(start, end - start));
  }
  return rows;
}

constexpr char kHeading[] =
    "Name\tFrags\tDeaths\tSuicides\tF Grabs\tFC Def\tF Cap\tF Def\tB Def\tFC Frag\tSentrys";

struct Hostile {
  const char* name;
  std::function<void(const Scene&)> prepare;
  std::function<std::vector<std::string>(const Scene&)> args;
  std::string err;  // exact stderr; {L}, {S}, {O} stand for the directories
  int status;
  Names logs, sides, outs;  // every file in L, S and O afterwards
  bool unprivileged = false;
  std::function<void(const Scene&, const Outcome&)> check = nullptr;
};

std::vector<std::string> Analyse(const Scene& s, const std::string& log) {
  return {"--table", "--side-dir", s.S, "--output-dir", s.O, s.Log(log)};
}

auto WriteLog(const std::string& name, std::string bytes) {
  return [name, bytes = std::move(bytes)](const Scene& s) { WriteBytes(s.Log(name), bytes); };
}

auto AnalyseLog(const std::string& name) {
  return [name](const Scene& s) { return Analyse(s, name); };
}

std::vector<Hostile> Catalogue() {
  const std::string odd_name = "<b>&amp;\"Q'\x80\xe9\xff";
  return {
      {"an empty file", WriteLog("game.log", ""), AnalyseLog("game.log"), "", 0, {"game.log"},
       kSideFiles, {"game.html"}},
      {"a file of only CR LF", WriteLog("game.log", Repeat("\r\n", 5000)), AnalyseLog("game.log"), "", 0,
       {"game.log"}, kSideFiles, {"game.html"},
       false, [](const Scene& s, const Outcome&) {
         EXPECT_EQ(ReadBytes(s.S + "/ignored.txt"), Repeat("\r\n", 10000));
       }},
      {"binary bytes with NULs", WriteLog("game.log", std::string("\0\x01\xff^7\0 was railed by \0\r\n\x7f", 26)),
       AnalyseLog("game.log"), "", 0, {"game.log"}, kSideFiles, {"game.html"}},
      {"a 100 MB line", WriteLog("game.log", "^7" + std::string(100'000'000, 'x') + "\r\n"),
       AnalyseLog("game.log"), "", 0, {"game.log"}, kSideFiles, {"game.html"},
       false, [](const Scene& s, const Outcome&) {
         EXPECT_EQ(fs::file_size(s.S + "/unknown.txt"), 100'000'000u + 4);  // the line, CR LF, then an empty line
       }},
      {"only noise", WriteLog("game.log", "Hunk_Clear: ok\r\n----- CL_Shutdown -----\r\nRE_Shutdown( 0 )\r\n"),
       AnalyseLog("game.log"), "", 0, {"game.log"}, kSideFiles, {"game.html"},
       false, [](const Scene&, const Outcome& o) {
         EXPECT_EQ(TableRows(o.out), (std::vector<std::string>{kHeading, "Totals\t0\t0\t0\t0\t0\t0\t0\t0\t0\t0",
                                                               " \t \t \t \t \t \t \t \t \t \t ",
                                                               "Totals\t0\t0\t0\t0\t0\t0\t0\t0\t0\t0"}));
       }},
      {"a log named game.LOG, report beside it", WriteLog("game.LOG", "^7A cratered.\r\n"),
       [](const Scene& s) { return std::vector<std::string>{"--side-dir", s.S, s.Log("game.LOG")}; }, "", 0,
       {"game.LOG", "game.LOG.html"}, kSideFiles, {}},
      {"a log without extension, report beside it", WriteLog("game", "^7A cratered.\r\n"),
       [](const Scene& s) { return std::vector<std::string>{"--side-dir", s.S, s.Log("game")}; }, "", 0,
       {"game", "game.html"}, kSideFiles, {}},
      {"a missing file", [](const Scene&) {}, AnalyseLog("absent.log"),
       "Vantor Log Analyzer: File Not Found\n", 1, {}, kSideFiles, {"absent.html"}},
      {"an unreadable file", [](const Scene& s) {
         WriteBytes(s.Log("game.log"), "^7A cratered.\r\n");
         fs::permissions(s.Log("game.log"), fs::perms::none);
       },
       AnalyseLog("game.log"), "Vantor Log Analyzer: Could not read {L}/game.log: Permission denied\n", 1,
       {"game.log"}, kSideFiles, {"game.html"}, true},
      {"a directory given as the log", [](const Scene& s) { fs::create_directory(s.Log("dir.log")); },
       AnalyseLog("dir.log"), "Vantor Log Analyzer: Could not read {L}/dir.log: Is a directory\n", 1,
       {"dir.log"}, kSideFiles, {"dir.html"}},
      {"an output directory that does not exist", WriteLog("game.log", "^7A cratered.\r\n"),
       [](const Scene& s) {
         return std::vector<std::string>{"--side-dir", s.S, "--output-dir", s.O + "/missing", s.Log("game.log")};
       },
       "Vantor Log Analyzer: Could not write {O}/missing/game.html: No such file or directory\n", 1,
       {"game.log"}, kSideFiles, {}},
      {"side files into a directory that cannot be written", [](const Scene& s) {
         WriteBytes(s.Log("game.log"), "^7A cratered.\r\n");
         fs::permissions(s.S, fs::perms::owner_read | fs::perms::owner_exec | fs::perms::others_read |
                                  fs::perms::others_exec);
       },
       AnalyseLog("game.log"),
       "Vantor Log Analyzer: Could not write {S}/ignored.txt: Permission denied\n"
       "Vantor Log Analyzer: Could not write {S}/chat.txt: Permission denied\n"
       "Vantor Log Analyzer: Could not write {S}/logoutput.txt: Permission denied\n"
       "Vantor Log Analyzer: Could not write {S}/unknown.txt: Permission denied\n",
       1, {"game.log"}, {}, {"game.html"}, true},
      {"names with markup, quotes and high bytes",
       WriteLog("game.log", "^7" + odd_name + " got the BLUE flag!\r\n^7Bravo was railed by " + odd_name + "\r\n"),
       AnalyseLog("game.log"), "", 0, {"game.log"}, kSideFiles, {"game.html"},
       false, [odd_name](const Scene& s, const Outcome& o) {
         const std::vector<std::string> rows = TableRows(o.out);
         ASSERT_EQ(rows.size(), 6u);
         EXPECT_EQ(rows[1], "Bravo\t0\t1\t0\t0\t0\t0\t0\t0\t0\t0");
         EXPECT_EQ(rows[4], odd_name + "\t1\t0\t0\t1\t0\t0\t0\t0\t0\t0");
         EXPECT_NE(ReadBytes(s.O + "/game.html").find(odd_name), std::string::npos);
       }},
      {"250 players with flag events", WriteLog("game.log", Players(250)), AnalyseLog("game.log"), "", 0,
       {"game.log"}, kSideFiles, {"game.html"},
       false, [](const Scene&, const Outcome& o) {
         const std::vector<std::string> rows = TableRows(o.out);
         ASSERT_EQ(rows.size(), 1u + 2 + 250 + 1);
         EXPECT_EQ(rows[3], "Player001\t0\t1\t1\t1\t0\t0\t0\t0\t0\t0");
         EXPECT_EQ(rows[252], "Player250\t0\t1\t1\t1\t0\t0\t0\t0\t0\t0");
         EXPECT_EQ(rows[253], "Totals\t0\t250\t250\t250\t0\t0\t0\t0\t0\t0");
       }},
      {"45,000 frags of one player in over 32,767 lines",
       WriteLog("game.log", "^7Alpha got the BLUE flag!\r\n" + Repeat("^7Bravo was railed by Alpha\r\n", 45000)),
       AnalyseLog("game.log"), "", 0, {"game.log"}, kSideFiles, {"game.html"},
       false, [](const Scene&, const Outcome& o) {
         EXPECT_EQ(TableRows(o.out), (std::vector<std::string>{
                                         kHeading, "Bravo\t0\t45000\t0\t0\t0\t0\t0\t0\t0\t0",
                                         "Totals\t0\t45000\t0\t0\t0\t0\t0\t0\t0\t0",
                                         " \t \t \t \t \t \t \t \t \t \t ",
                                         "Alpha\t45000\t0\t0\t1\t0\t0\t0\t0\t0\t0",
                                         "Totals\t45000\t0\t0\t1\t0\t0\t0\t0\t0\t0"}));
       }},
  };
}

TEST(HostileInputs, EachGivesItsMessageStatusAndFilesAndChangesNoInput) {
  for (const Hostile& row : Catalogue()) {
    SCOPED_TRACE(row.name);
    Scene scene;
    if (row.unprivileged) {
      for (const std::string& dir : {scene.root.path().string(), scene.L, scene.S, scene.O}) {
        fs::permissions(dir, fs::perms::all);
      }
    }
    row.prepare(scene);
    const auto inputs_before = Contents(scene.L);
    const Outcome o = RunProgram(VANTOR_CLI, row.args(scene), {".", row.unprivileged});
    EXPECT_EQ(o.err, scene.Expand(row.err));
    EXPECT_EQ(o.status, row.status);
    fs::permissions(scene.S, fs::perms::owner_all, fs::perm_options::add);
    EXPECT_EQ(FilesIn(scene.L), row.logs);
    EXPECT_EQ(FilesIn(scene.S), row.sides);
    EXPECT_EQ(FilesIn(scene.O), row.outs);
    const auto inputs_after = Contents(scene.L);
    for (const auto& [name, bytes] : inputs_before) {
      EXPECT_TRUE(inputs_after.count(name) != 0 && inputs_after.at(name) == bytes) << name << " changed";
    }
    if (row.check) row.check(scene, o);
  }
}

}  // namespace
}  // namespace vantor::testing
