// What vantor-cli does with whatever a game client (or a user) hands it:
// one row per hostile input, each with the exact messages, the exit
// status, every file that exists afterwards, and every file that existed
// before unchanged. Expected statistics follow from how each log is built.

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
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
using Rows = std::vector<std::string>;

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

// Size and checksum of a file, read even where its permissions forbid it
// (and left with them).
std::string Checksum(const std::string& path) {
  const fs::perms perms = fs::status(path).permissions();
  fs::permissions(path, fs::perms::owner_read, fs::perm_options::add);
  std::ifstream in(path, std::ios::binary);
  std::uint64_t sum = 14695981039346656037u, size = 0;  // 64-bit FNV-1a
  for (char buffer[1 << 16]; in.read(buffer, sizeof buffer) || in.gcount() > 0; size += in.gcount()) {
    for (std::streamsize i = 0; i < in.gcount(); ++i) sum = (sum ^ static_cast<unsigned char>(buffer[i])) * 1099511628211u;
  }
  fs::permissions(path, perms);
  return std::to_string(size) + ":" + std::to_string(sum);
}

// Every regular file of the scene with its checksum.
std::map<std::string, std::string> Checksums(const Scene& s) {
  std::map<std::string, std::string> sums;
  for (const std::string& dir : {s.L, s.S, s.O}) {
    for (const std::string& name : FilesIn(dir)) {
      if (fs::is_regular_file(dir + "/" + name)) sums[dir + "/" + name] = Checksum(dir + "/" + name);
    }
  }
  return sums;
}

std::string Repeat(const std::string& line, int times) {
  std::string bytes;
  bytes.reserve(line.size() * static_cast<std::size_t>(times));
  for (int i = 0; i < times; ++i) bytes += line;
  return bytes;
}

std::string PlayerName(int i) {
  char name[16];
  std::snprintf(name, sizeof name, "Player%03d", i);
  return name;
}

// Each player grabs the BLUE flag, which puts it in Red, and craters: one
// death and one suicide each.
std::string FlagPlayers(int count) {
  std::string bytes;
  for (int i = 1; i <= count; ++i) bytes += "^7" + PlayerName(i) + " got the BLUE flag!\r\n^7" + PlayerName(i) + " cratered.\r\n";
  return bytes;
}

// Dave grabs the RED flag (Blue) and knifes Carol, who joins Red, once per
// pair of lines; every second line no rule knows.
constexpr int kKnifings = 33000;
std::string ManyLines(bool stripped) {
  std::string bytes = stripped ? "Dave got the RED flag!\r\n" : "^7Dave got the RED flag!\r\n";
  for (int i = 0; i < kKnifings; ++i) {
    bytes += (stripped ? "" : "^7") + std::string("Carol was knifed by Dave\r\n");
    bytes += (stripped ? "" : "^7") + std::string("mystery ") + std::to_string(i) + "\r\n";
  }
  return bytes;
}

std::string Mysteries() {
  std::string bytes;
  for (int i = 0; i < kKnifings; ++i) bytes += "mystery " + std::to_string(i) + "\r\n";
  return bytes;
}

// The rows of the statistics table printed by --table.
Rows TableRows(const std::string& out) {
  Rows rows;
  for (std::size_t start = 0, end; (end = out.find('\n', start)) != std::string::npos; start = end + 1) {
    rows.push_back(out.substr(start, end - start));
  }
  return rows;
}

constexpr char kHeading[] =
    "Name\tFrags\tDeaths\tSuicides\tF Grabs\tFC Def\tF Cap\tF Def\tB Def\tFC Frag\tSentrys";
constexpr char kNoTotals[] = "Totals\t0\t0\t0\t0\t0\t0\t0\t0\t0\t0";
constexpr char kSeparator[] = " \t \t \t \t \t \t \t \t \t \t ";

struct Hostile {
  const char* name;
  std::function<void(const Scene&)> prepare;
  std::function<std::vector<std::string>(const Scene&)> args;
  std::string err;  // exact stderr; {L}, {S}, {O} stand for the directories
  int status;
  Names logs, sides, outs;  // every file in L, S and O afterwards
  bool needs_permissions = false;
  std::function<void(const Scene&, const Outcome&)> check = nullptr;
};

// Names the row in test listings, instead of its bytes.
void PrintTo(const Hostile& row, std::ostream* out) { *out << row.name; }

std::vector<std::string> Analyse(const Scene& s, const std::string& log) {
  return {"--table", "--side-dir", s.S, "--output-dir", s.O, s.Log(log)};
}

auto WriteLog(const std::string& name, std::string bytes) {
  return [name, bytes = std::move(bytes)](const Scene& s) { WriteBytes(s.Log(name), bytes); };
}

// For large logs: made when the row runs, not when the rows are listed.
auto WriteLogMadeBy(const std::string& name, std::string (*make)()) {
  return [name, make](const Scene& s) { WriteBytes(s.Log(name), make()); };
}

std::string HundredMegabyteLine() { return "^7" + std::string(100'000'000, 'x') + "\r\n"; }
std::string ManyLinesLog() { return ManyLines(false); }
std::string ManyFragsLog() { return "^7Alpha got the BLUE flag!\r\n" + Repeat("^7Bravo was railed by Alpha\r\n", 45000); }

auto AnalyseLog(const std::string& name) {
  return [name](const Scene& s) { return Analyse(s, name); };
}

void ForbidWriting(const std::string& dir) {
  fs::permissions(dir, fs::perms::owner_read | fs::perms::owner_exec | fs::perms::others_read | fs::perms::others_exec);
}

// The side files of a log that keeps no line, and the report without members.
void ExpectNothingCounted(const Scene& s, const Outcome& o, const std::string& ignored, const std::string& chat) {
  EXPECT_EQ(TableRows(o.out), (Rows{kHeading, kNoTotals, kSeparator, kNoTotals}));
  EXPECT_EQ(ReadBytes(s.S + "/ignored.txt"), ignored);
  EXPECT_EQ(ReadBytes(s.S + "/chat.txt"), chat);
  EXPECT_EQ(ReadBytes(s.S + "/logoutput.txt"), "\r\n");
  EXPECT_EQ(ReadBytes(s.S + "/unknown.txt"), "\r\n");
  EXPECT_EQ(ReadBytes(s.O + "/game.html"), ReadBytes(DataPath("report_no_members/expected_report.html")));
}

// A kill between names holding NUL bytes, an empty line, and a line with
// ":" but no colour code, which only the ignored lines take.
constexpr char kBinaryLog[] = "\0\x01\xff^7\0 was railed by \0\r\n\x7f:\0\n";
constexpr char kBinaryKept[] = "\0\x01\xff\0 was railed by \0\r\n\r\n";
constexpr char kBinaryIgnored[] = "\r\n\x7f:\0\r\n";

template <std::size_t N>
std::string Bytes(const char (&bytes)[N]) {
  return std::string(bytes, N - 1);
}

const std::string kOddName = "<b>&amp;\"Q'\x80\xe9\xff";

std::vector<Hostile> Catalogue() {
  return {
      {"EmptyFile", WriteLog("game.log", ""), AnalyseLog("game.log"), "", 0, {"game.log"}, kSideFiles, {"game.html"},
       false, [](const Scene& s, const Outcome& o) { ExpectNothingCounted(s, o, "", ""); }},
      {"OnlyCrLf", WriteLog("game.log", Repeat("\r\n", 5000)), AnalyseLog("game.log"), "", 0, {"game.log"},
       kSideFiles, {"game.html"},
       false, [](const Scene& s, const Outcome& o) { ExpectNothingCounted(s, o, Repeat("\r\n", 10000), ""); }},
      {"BinaryWithNulBytes", WriteLog("game.log", Bytes(kBinaryLog)), AnalyseLog("game.log"), "", 0, {"game.log"},
       kSideFiles, {"game.html"},
       false, [](const Scene& s, const Outcome& o) {
         // The first line is a kill between two players without a team: recognised, counted for nobody.
         EXPECT_EQ(TableRows(o.out), (Rows{kHeading, kNoTotals, kSeparator, kNoTotals}));
         EXPECT_EQ(ReadBytes(s.S + "/logoutput.txt"), Bytes(kBinaryKept));
         EXPECT_EQ(ReadBytes(s.S + "/ignored.txt"), Bytes(kBinaryIgnored));
         EXPECT_EQ(ReadBytes(s.S + "/chat.txt"), "");
         EXPECT_EQ(ReadBytes(s.S + "/unknown.txt"), "\r\n");
       }},
      {"HundredMegabyteLine", WriteLogMadeBy("game.log", HundredMegabyteLine),
       AnalyseLog("game.log"), "", 0, {"game.log"}, kSideFiles, {"game.html"},
       false, [](const Scene& s, const Outcome& o) {
         EXPECT_EQ(TableRows(o.out), (Rows{kHeading, kNoTotals, kSeparator, kNoTotals}));
         EXPECT_EQ(Checksum(s.S + "/unknown.txt"), Checksum(s.S + "/logoutput.txt"));
         const std::string unknown = ReadBytes(s.S + "/unknown.txt");  // the line, CR LF, then an empty line
         EXPECT_EQ(unknown.size(), 100'000'004u);
         EXPECT_EQ(unknown.find_first_not_of('x'), 100'000'000u);
         EXPECT_EQ(unknown.substr(100'000'000), "\r\n\r\n");
         EXPECT_EQ(ReadBytes(s.S + "/ignored.txt"), "\r\n");
       }},
      {"OnlyNoise", WriteLog("game.log", "Hunk_Clear: ok\r\n----- CL_Shutdown -----\r\nRE_Shutdown( 0 )\r\n"),
       AnalyseLog("game.log"), "", 0, {"game.log"}, kSideFiles, {"game.html"},
       false, [](const Scene& s, const Outcome& o) {
         ExpectNothingCounted(s, o, "Hunk_Clear: ok\r\n\r\n----- CL_Shutdown -----\r\n\r\nRE_Shutdown( 0 )\r\n\r\n", "");
       }},
      {"CapitalisedExtensionReportBeside", WriteLog("game.LOG", "^7A cratered.\r\n"),
       [](const Scene& s) { return std::vector<std::string>{"--side-dir", s.S, s.Log("game.LOG")}; }, "", 0,
       {"game.LOG", "game.LOG.html"}, kSideFiles, {}},
      {"NoExtensionReportBeside", WriteLog("game", "^7A cratered.\r\n"),
       [](const Scene& s) { return std::vector<std::string>{"--side-dir", s.S, s.Log("game")}; }, "", 0,
       {"game", "game.html"}, kSideFiles, {}},
      {"MissingFile", [](const Scene&) {}, AnalyseLog("absent.log"), "Vantor Log Analyzer: File Not Found\n", 1, {},
       kSideFiles, {"absent.html"}},
      {"UnreadableFile",
       [](const Scene& s) {
         WriteBytes(s.Log("game.log"), "^7A cratered.\r\n");
         fs::permissions(s.Log("game.log"), fs::perms::none);
       },
       AnalyseLog("game.log"), "Vantor Log Analyzer: Could not read {L}/game.log: Permission denied\n", 1,
       {"game.log"}, kSideFiles, {"game.html"}, true},
      {"DirectoryAsLog", [](const Scene& s) { fs::create_directory(s.Log("dir.log")); }, AnalyseLog("dir.log"),
       "Vantor Log Analyzer: Could not read {L}/dir.log: Is a directory\n", 1, {"dir.log"}, kSideFiles,
       {"dir.html"}},
      {"MissingOutputDirectory", WriteLog("game.log", "^7A cratered.\r\n"),
       [](const Scene& s) {
         return std::vector<std::string>{"--side-dir", s.S, "--output-dir", s.O + "/missing", s.Log("game.log")};
       },
       "Vantor Log Analyzer: Could not write {O}/missing/game.html: No such file or directory\n", 1,
       {"game.log"}, kSideFiles, {}},
      {"UnwritableOutputDirectoryKeepsTheEarlierReport",
       [](const Scene& s) {
         WriteBytes(s.Log("game.log"), "^7A cratered.\r\n");
         WriteBytes(s.O + "/game.html", "the earlier report\r\n");
         fs::permissions(s.O + "/game.html", fs::perms::all);  // the file itself could be overwritten
         ForbidWriting(s.O);
       },
       AnalyseLog("game.log"), "Vantor Log Analyzer: Could not write {O}/game.html: Permission denied\n", 1,
       {"game.log"}, kSideFiles, {"game.html"}, true},
      {"UnwritableSideDirectoryKeepsTheEarlierSideFile",
       [](const Scene& s) {
         WriteBytes(s.Log("game.log"), "^7A cratered.\r\n");
         WriteBytes(s.S + "/unknown.txt", "an earlier run's line\r\n\r\n");
         fs::permissions(s.S + "/unknown.txt", fs::perms::all);
         ForbidWriting(s.S);
       },
       AnalyseLog("game.log"),
       "Vantor Log Analyzer: Could not write {S}/ignored.txt: Permission denied\n"
       "Vantor Log Analyzer: Could not write {S}/chat.txt: Permission denied\n"
       "Vantor Log Analyzer: Could not write {S}/logoutput.txt: Permission denied\n"
       "Vantor Log Analyzer: Could not write {S}/unknown.txt: Permission denied\n",
       1, {"game.log"}, {"unknown.txt"}, {"game.html"}, true},
      {"MarkupQuotesAndHighBytesInNames",
       WriteLog("game.log", "^7" + kOddName + " got the BLUE flag!\r\n^7Bravo was railed by " + kOddName + "\r\n"),
       AnalyseLog("game.log"), "", 0, {"game.log"}, kSideFiles, {"game.html"},
       false, [](const Scene& s, const Outcome& o) {
         EXPECT_EQ(TableRows(o.out), (Rows{kHeading, "Bravo\t0\t1\t0\t0\t0\t0\t0\t0\t0\t0",
                                           "Totals\t0\t1\t0\t0\t0\t0\t0\t0\t0\t0", kSeparator,
                                           kOddName + "\t1\t0\t0\t1\t0\t0\t0\t0\t0\t0",
                                           "Totals\t1\t0\t0\t1\t0\t0\t0\t0\t0\t0"}));
         // Written unchanged, not escaped, in every table that shows the player.
         const std::string row = "<TR><td>\r\n<font color=#FF0000>\r\n" + kOddName + "</font></TD>\r\n<td>1</TD>\r\n";
         const std::string report = ReadBytes(s.O + "/game.html");
         EXPECT_NE(report.find(row + "<td>0</TD>\r\n<td>0</TD>\r\n</tr>\r\n"), std::string::npos);
         EXPECT_NE(report.find(row + Repeat("<td>0</TD>\r\n", 5) + "<td><b>1</TD>\r\n</tr>\r\n"), std::string::npos);
         EXPECT_NE(report.find("<TR><td>\r\n<font color=#FF0000>\r\n" + kOddName + "</font></TD>\r\n" +
                               Repeat("<td>0</TD>\r\n", 3) + "<td>1</TD>\r\n<td>0</TD>\r\n</tr>\r\n"),
                   std::string::npos);  // the sniper table's Railgun
       }},
      {"TwoHundredFiftyPlayersWithFlagEvents", WriteLog("game.log", FlagPlayers(250)), AnalyseLog("game.log"), "",
       0, {"game.log"}, kSideFiles, {"game.html"},
       false, [](const Scene& s, const Outcome& o) {
         Rows expected = {kHeading, kNoTotals, kSeparator};
         for (int i = 1; i <= 250; ++i) expected.push_back(PlayerName(i) + "\t0\t1\t1\t1\t0\t0\t0\t0\t0\t0");
         expected.push_back("Totals\t0\t250\t250\t250\t0\t0\t0\t0\t0\t0");
         EXPECT_EQ(TableRows(o.out), expected);
         const std::string report = ReadBytes(s.O + "/game.html");
         EXPECT_NE(report.find("<font color=#FF0000>\r\nPlayer250</font></TD>\r\n<td>0</TD>\r\n<td>1</TD>\r\n<td>1</TD>"),
                   std::string::npos);
         EXPECT_NE(report.find("<tr><td><b>Total</b></TD><td><b>250</TD><td><b>0</TD><td><b>0</TD><td><b>0</TD>"
                               "<td><b>0</TD><td><b>0</TD><td><b>250</TD></tr>"),
                   std::string::npos);
       }},
      {"MoreThan32767Lines", WriteLogMadeBy("game.log", ManyLinesLog), AnalyseLog("game.log"), "", 0, {"game.log"},
       kSideFiles, {"game.html"},
       false, [](const Scene& s, const Outcome& o) {
         EXPECT_EQ(TableRows(o.out), (Rows{kHeading, "Dave\t33000\t0\t0\t1\t0\t0\t0\t0\t0\t0",
                                           "Totals\t33000\t0\t0\t1\t0\t0\t0\t0\t0\t0", kSeparator,
                                           "Carol\t0\t33000\t0\t0\t0\t0\t0\t0\t0\t0",
                                           "Totals\t0\t33000\t0\t0\t0\t0\t0\t0\t0\t0"}));
         EXPECT_EQ(ReadBytes(s.S + "/logoutput.txt"), ManyLines(true) + "\r\n");
         EXPECT_EQ(ReadBytes(s.S + "/unknown.txt"), Mysteries() + "\r\n");
         EXPECT_EQ(ReadBytes(s.S + "/ignored.txt"), Repeat("\r\n", 2 * kKnifings + 1));
       }},
      {"OnePlayerWith45000Frags",
       WriteLogMadeBy("game.log", ManyFragsLog),
       AnalyseLog("game.log"), "", 0, {"game.log"}, kSideFiles, {"game.html"},
       false, [](const Scene& s, const Outcome& o) {
         EXPECT_EQ(TableRows(o.out), (Rows{kHeading, "Bravo\t0\t45000\t0\t0\t0\t0\t0\t0\t0\t0",
                                           "Totals\t0\t45000\t0\t0\t0\t0\t0\t0\t0\t0", kSeparator,
                                           "Alpha\t45000\t0\t0\t1\t0\t0\t0\t0\t0\t0",
                                           "Totals\t45000\t0\t0\t1\t0\t0\t0\t0\t0\t0"}));
         EXPECT_NE(ReadBytes(s.O + "/game.html").find("<font color=#FF0000>\r\nAlpha</font></TD>\r\n<td>45000</TD>\r\n"
                                                      "<td>0</TD>\r\n<td>0</TD>\r\n</tr>\r\n"),
                   std::string::npos);
       }},
  };
}

class HostileInput : public ::testing::TestWithParam<Hostile> {};

TEST_P(HostileInput, GivesItsMessageStatusAndFilesAndChangesNoFileThatWasThere) {
  const Hostile& row = GetParam();
  if (row.needs_permissions && !PermissionsApplyTo(VANTOR_CLI)) {
    GTEST_SKIP() << "the tests run as root and cannot run vantor-cli as \"nobody\", so file permissions "
                    "would not stop it";
  }
  Scene scene;
  if (row.needs_permissions) {
    for (const std::string& dir : {scene.root.path().string(), scene.L, scene.S, scene.O}) {
      fs::permissions(dir, fs::perms::all);
    }
  }
  row.prepare(scene);
  const auto before = Checksums(scene);
  const Outcome o = RunProgram(VANTOR_CLI, row.args(scene), {".", row.needs_permissions});
  EXPECT_EQ(o.err, scene.Expand(row.err));
  EXPECT_EQ(o.status, row.status);
  const auto after = Checksums(scene);
  for (const std::string& dir : {scene.S, scene.O}) fs::permissions(dir, fs::perms::owner_all, fs::perm_options::add);
  EXPECT_EQ(FilesIn(scene.L), row.logs);
  EXPECT_EQ(FilesIn(scene.S), row.sides);
  EXPECT_EQ(FilesIn(scene.O), row.outs);
  for (const auto& [path, sum] : before) {
    EXPECT_TRUE(after.count(path) != 0 && after.at(path) == sum) << path << " changed";
  }
  if (row.check) row.check(scene, o);
}

INSTANTIATE_TEST_SUITE_P(Catalogue, HostileInput, ::testing::ValuesIn(Catalogue()),
                         [](const ::testing::TestParamInfo<Hostile>& info) { return std::string(info.param.name); });

}  // namespace
}  // namespace vantor::testing
