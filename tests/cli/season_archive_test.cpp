// The season archive of vantor-cli: runs recorded exactly and never twice,
// standings that add up, and an archive that stays sound when a writer is
// killed, when it is old, or when it is no archive at all.

#include "archive/season_archive.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>

#include "archive/sqlite_db.h"
#include "support/run_program.h"
#include "support/test_files.h"

namespace vantor::testing {
namespace {

// The rows of sql, cells joined by TAB, each row ended by LF.
std::string Rows(const std::string& db_path, const std::string& sql) {
  SqliteDb db(db_path, false);
  Statement rows(db.Handle(), sql);
  std::string text;
  while (rows.Step()) {
    for (int c = 0; c < rows.Columns(); ++c) text += (c ? "\t" : "") + rows.Text(c);
    text += "\n";
  }
  return text;
}

void Generate(const ScratchDir& dir, const std::string& maps, const std::string& seed,
              const std::string& name) {
  const std::vector<std::string> args = {
      "--maps", maps, "--players", "8", "--seed", seed, "--truth", dir / (name + ".truth"), dir / name};
  ASSERT_EQ(RunProgram(VANTOR_GENLOG, args).status, 0);
}

Outcome Archive(const ScratchDir& dir, const std::string& log) {
  return RunProgram(VANTOR_CLI,
                    {"--no-side-files", "-o", dir.path(), "--archive", dir / "season.db", dir / log});
}

const std::string kTeam =
    "(SELECT group_concat(name, ',') FROM (SELECT name FROM players WHERE match_id = m.id";
const std::string kMatchesAsPlayed = "SELECT 'match ' || m.id, m.blue_score, m.red_score, m.winner, " +
                                     kTeam + " AND team = 'Blue' ORDER BY name)), " + kTeam +
                                     " AND team = 'Red' ORDER BY name)) FROM matches m ORDER BY m.id";

// Every match genlog played is recorded with its score, winner and teams,
// and the log with its size and digest.
TEST(SeasonArchive, RecordsEachMatchAsItWasPlayed) {
  ScratchDir dir;
  Generate(dir, "3", "5", "evening.log");
  const Outcome run = Archive(dir, "evening.log");
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(run.err, "vantor-cli: recorded 3 matches in " + dir / "season.db" +
                         "\nvantor-cli: report written to " + dir / "evening.html" + "\n");
  EXPECT_EQ(Rows(dir / "season.db", kMatchesAsPlayed), ReadBytes(dir / "evening.log.truth"));
  const auto size = std::to_string(std::filesystem::file_size(dir / "evening.log"));
  EXPECT_EQ(Rows(dir / "season.db", "SELECT name, size, length(sha256) FROM logs"),
            dir / "evening.log" + "\t" + size + "\t64\n");
  EXPECT_EQ(Rows(dir / "season.db", "SELECT count(DISTINCT match_id) FROM awards"), "3\n");
}

struct Rerun {
  const char* name;
  std::string second;  // the second log, from the first ("evening.log") and "more.log"
  std::string notice;  // "" or the start of the notice about the second log
  const char* matches_after;
};

class ArchivingAgain : public ::testing::TestWithParam<Rerun> {};

// A log archived again, under any name, is one copy; a log that grew adds
// only its new matches, and completes a match it had cut short.
TEST_P(ArchivingAgain, CountsNothingTwice) {
  ScratchDir dir;
  Generate(dir, "3", "5", "evening.log");
  Generate(dir, "2", "6", "more.log");
  const std::string whole = ReadBytes(dir / "evening.log");
  const std::size_t in_last = (whole.rfind("CL_InitCGame") + whole.size()) / 2;
  const bool cut = GetParam().second == "cut";
  WriteBytes(dir / "first.log", cut ? whole.substr(0, whole.find('\n', in_last) + 1) : whole);
  ASSERT_EQ(Archive(dir, "first.log").status, 0);
  WriteBytes(dir / "second.log", GetParam().second == "grown" ? whole + ReadBytes(dir / "more.log") : whole);
  const Outcome again = Archive(dir, "second.log");
  EXPECT_EQ(again.status, 0);
  EXPECT_EQ(again.err.find("vantor-cli: " + dir / "second.log" + GetParam().notice) == 0,
            !GetParam().notice.empty())
      << again.err;
  EXPECT_EQ(Rows(dir / "season.db", "SELECT count(*) FROM matches"), GetParam().matches_after);
  EXPECT_EQ(Rows(dir / "season.db", "PRAGMA integrity_check"), "ok\n");
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Logs, ArchivingAgain, ::testing::Values(
    Rerun{"TheSameContentUnderAnotherName", "copy", " was archived on ", "3\n"},
    Rerun{"ALogThatGrew", "grown", "", "5\n"},
    Rerun{"ALogThatGrewThroughAMatch", "cut", "", "3\n"}), [](const auto& info) { return std::string(info.param.name); });

// A writer killed while its transaction is open leaves an archive that
// passes SQLite's check and holds the whole run or none of it.
TEST(SeasonArchive, AWriterKilledInsideItsTransactionLeavesAllOrNothing) {
  ScratchDir dir;
  Generate(dir, "300", "9", "evening.log");
  const std::string db = dir / "season.db", log = dir / "evening.log", out = dir.path().string();
  const std::string counts = "SELECT (SELECT count(*) FROM logs) || ' ' || (SELECT count(*) FROM matches)";
  bool caught = false;
  for (int attempt = 0; attempt < 10 && !caught; ++attempt) {
    std::filesystem::remove(db);
    ASSERT_TRUE(OpenSeasonArchive(db, true).db);  // the tables exist before the run's transaction
    const pid_t pid = fork();
    if (pid == 0) {
      execl(VANTOR_CLI, VANTOR_CLI, "-q", "--no-side-files", "-o", out.c_str(), "--archive", db.c_str(),
            log.c_str(), nullptr);
      _exit(127);
    }
    // The rollback journal exists from the run's first write until its commit.
    bool exited = false;
    while (!(caught = std::filesystem::exists(db + "-journal")) && !exited)
      exited = waitpid(pid, nullptr, WNOHANG) == pid;
    if (!exited) kill(pid, SIGKILL), waitpid(pid, nullptr, 0);
  }
  ASSERT_TRUE(caught) << "no run was seen inside its transaction";
  EXPECT_EQ(Rows(db, "PRAGMA integrity_check"), "ok\n");
  const std::string after_kill = Rows(db, counts);
  EXPECT_TRUE(after_kill == "0 0\n" || after_kill == "1 300\n") << after_kill;
  ASSERT_EQ(Archive(dir, "evening.log").status, 0);
  EXPECT_EQ(Rows(db, counts), "1 300\n");
}

// A run whose archive cannot grow (as on a full disk) says so and leaves
// the archive as it was; two runs at once both land whole.
TEST(SeasonArchive, AFullDiskKeepsTheArchiveAndTwoWritersBothLand) {
  ScratchDir dir;
  Generate(dir, "3", "5", "evening.log");
  Generate(dir, "2", "6", "more.log");
  Generate(dir, "4", "7", "late.log");
  const std::string db = dir / "season.db";
  const std::string counts = "SELECT (SELECT count(*) FROM logs) || ' ' || (SELECT count(*) FROM matches)";
  ASSERT_EQ(Archive(dir, "evening.log").status, 0);
  const std::string run = "run() { \"$0\" -q --no-side-files -o \"$1\" --archive \"$1/season.db\" \"$1/$2\"; }; ";
  const auto blocks = std::to_string(std::filesystem::file_size(db) / 1024);
  const Outcome full =
      RunProgram("/bin/bash", {"-c", run + "ulimit -f " + blocks + "; run \"$1\" more.log", VANTOR_CLI, dir.path()});
  EXPECT_EQ(full.status, 1);
  EXPECT_EQ(full.err, "Vantor Log Analyzer: Could not record the run in the season archive " + db +
                          ": disk I/O error; the archive holds what it held before\n");
  EXPECT_EQ(Rows(db, "PRAGMA integrity_check"), "ok\n");
  EXPECT_EQ(Rows(db, counts), "1 3\n");
  const Outcome both = RunProgram(
      "/bin/bash", {"-c", run + "run \"$1\" more.log & run \"$1\" late.log; b=$?; wait $!; echo $? $b", VANTOR_CLI,
                    dir.path()});
  EXPECT_EQ(both.out, "0 0\n") << both.err;
  EXPECT_EQ(Rows(db, "PRAGMA integrity_check"), "ok\n");
  EXPECT_EQ(Rows(db, counts), "3 9\n");
}

// Three matches worked by hand. Ann: a win, a draw, and a match in both
// teams (a draw); Bob: a loss, a draw, a win; Cy: one draw without deaths.
const std::string kThreeMatches = R"(
INSERT INTO logs VALUES(1, 'a.log', 1, 'x', '2025-03-15 23:00:00');
INSERT INTO matches VALUES(1, 'm1', 1, 1, 9, 'time limit', '2025-03-01', 2, 1, 'Blue'),
  (2, 'm2', 1, 10, 19, 'time limit', '2025-03-08', 1, 1, 'draw'),
  (3, 'm3', 1, 20, 29, 'time limit', '2025-03-15', 0, 2, 'Red');
INSERT INTO players VALUES(1, 0, 'Ann', 'Blue', 10, 5, 0, 0, 0, 1, 0, 0, 0, 0),
  (1, 1, 'Bob', 'Red', 4, 8, 0, 0, 0, 0, 0, 0, 0, 0), (2, 0, 'Bob', 'Blue', 6, 2, 0, 0, 0, 0, 0, 0, 0, 0),
  (2, 1, 'Cy', 'Blue', 2, 0, 0, 0, 0, 0, 0, 0, 0, 0), (2, 2, 'Ann', 'Red', 3, 3, 0, 0, 0, 0, 0, 0, 0, 0),
  (3, 0, 'Ann', 'Blue', 1, 4, 0, 0, 0, 0, 0, 0, 0, 0), (3, 1, 'Ann', 'Red', 2, 1, 0, 0, 0, 0, 0, 0, 0, 0),
  (3, 2, 'Bob', 'Red', 5, 5, 0, 0, 0, 0, 0, 0, 0, 0);
INSERT INTO awards VALUES(1, 'top_fragger', 'Ann', 10), (3, 'top_fragger', 'Bob', 5);
)";

const std::string kHeading =
    "Name\tMatches\tWins\tLosses\tDraws\tFrags\tDeaths\tSuicides\tF Grabs\tFC Def\tF Cap\tF Def\tB Def\tFC "
    "Frag\tSentrys\tFrags/Death\tAwards\n";

struct Period {
  const char* name;
  std::vector<std::string> limits;
  std::string table;
};

class SeasonStandings : public ::testing::TestWithParam<Period> {};

TEST_P(SeasonStandings, AddUpTheMatchesOfThePeriod) {
  ScratchDir dir;
  ASSERT_TRUE(OpenSeasonArchive(dir / "season.db", true).db);
  SqliteDb(dir / "season.db", false).Exec(kThreeMatches);
  std::vector<std::string> args = {"--season", dir / "season.db"};
  args.insert(args.end(), GetParam().limits.begin(), GetParam().limits.end());
  const Outcome run = RunProgram(VANTOR_CLI, args);
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(run.out, kHeading + GetParam().table);
}

INSTANTIATE_TEST_SUITE_P(Archive, SeasonStandings, ::testing::Values(
    Period{"EveryMatch", {},
           "Ann\t3\t1\t0\t2\t16\t13\t0\t0\t0\t1\t0\t0\t0\t0\t1.23\t1\n"
           "Bob\t3\t1\t1\t1\t15\t15\t0\t0\t0\t0\t0\t0\t0\t0\t1.00\t1\n"
           "Cy\t1\t0\t0\t1\t2\t0\t0\t0\t0\t0\t0\t0\t0\t0\t-\t0\n"},
    Period{"OneDay", {"--since", "2025-03-08", "--until", "2025-03-08"},
           "Bob\t1\t0\t0\t1\t6\t2\t0\t0\t0\t0\t0\t0\t0\t0\t3.00\t0\n"
           "Ann\t1\t0\t0\t1\t3\t3\t0\t0\t0\t0\t0\t0\t0\t0\t1.00\t0\n"
           "Cy\t1\t0\t0\t1\t2\t0\t0\t0\t0\t0\t0\t0\t0\t0\t-\t0\n"},
    Period{"AfterTheSeason", {"--since", "2025-04-01"}, ""}), [](const auto& info) { return std::string(info.param.name); });
// clang-format on

// An archive of the first version (without awards) is brought up to date
// in place and keeps its matches.
TEST(SeasonArchive, UpgradesAFirstVersionArchive) {
  ScratchDir dir;
  SqliteDb(dir / "season.db", true).Exec(R"(
CREATE TABLE logs(id INTEGER PRIMARY KEY, name TEXT NOT NULL, size INTEGER NOT NULL,
  sha256 TEXT NOT NULL UNIQUE, archived_at TEXT NOT NULL);
CREATE TABLE matches(id INTEGER PRIMARY KEY, identity TEXT NOT NULL UNIQUE, log_id INTEGER NOT NULL,
  first_line INTEGER NOT NULL, last_line INTEGER NOT NULL, ended TEXT NOT NULL, played_on TEXT NOT NULL,
  blue_score INTEGER NOT NULL, red_score INTEGER NOT NULL, winner TEXT NOT NULL);
CREATE INDEX matches_played_on ON matches(played_on);
CREATE TABLE players(match_id INTEGER NOT NULL, slot INTEGER NOT NULL, name BLOB NOT NULL, team TEXT NOT NULL,
  frags INTEGER NOT NULL, deaths INTEGER NOT NULL, suicides INTEGER NOT NULL, flag_grabs INTEGER NOT NULL,
  fc_defends INTEGER NOT NULL, flag_captures INTEGER NOT NULL, flag_defends INTEGER NOT NULL,
  base_defends INTEGER NOT NULL, fc_kills INTEGER NOT NULL, sentry_kills INTEGER NOT NULL, PRIMARY KEY(match_id, slot));
CREATE TABLE weapon_kills(match_id INTEGER NOT NULL, slot INTEGER NOT NULL, weapon TEXT NOT NULL,
  kills INTEGER NOT NULL, PRIMARY KEY(match_id, slot, weapon));
PRAGMA user_version = 1;
INSERT INTO logs VALUES(1, 'a.log', 1, 'x', '2024-01-01 20:00:00');
INSERT INTO matches VALUES(1, 'm1', 1, 1, 9, 'time limit', '2024-01-01', 0, 0, 'draw');
INSERT INTO players VALUES(1, 0, 'Ann', 'Blue', 7, 7, 0, 0, 0, 0, 0, 0, 0, 0);
)");
  const Outcome run = RunProgram(VANTOR_CLI, {"--season", dir / "season.db"});
  EXPECT_EQ(run.out, kHeading + "Ann\t1\t0\t0\t1\t7\t7\t0\t0\t0\t0\t0\t0\t0\t0\t1.00\t0\n") << run.err;
  const std::string awards_and_version = "SELECT (SELECT count(*) FROM awards) || ' ' || user_version";
  EXPECT_EQ(Rows(dir / "season.db", awards_and_version + " FROM pragma_user_version"), "0 2\n");
}

struct Refusal {
  const char* name;
  std::string contents;  // the file given as the archive: bytes, or SQL after "sql:"
  std::string message;   // after the archive's path
};

class RefusedArchive : public ::testing::TestWithParam<Refusal> {};

// What is no archive of this version is refused with a message and kept as it is.
TEST_P(RefusedArchive, IsNamedAndLeftAsItIs) {
  ScratchDir dir;
  const std::string db = dir / "season.db";
  if (GetParam().contents.starts_with("sql:"))
    SqliteDb(db, true).Exec(GetParam().contents.substr(4));
  else
    WriteBytes(db, GetParam().contents);
  const std::string before = ReadBytes(db);
  const Outcome run = RunProgram(VANTOR_CLI, {"--season", db});
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.err, "Vantor Log Analyzer: " + db + GetParam().message + "\n");
  EXPECT_EQ(ReadBytes(db), before);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Files, RefusedArchive, ::testing::Values(
    Refusal{"TextFile", "name,frags\r\n", " is not a season archive (not an SQLite database); it is left as it is"},
    Refusal{"AnotherProgramsDatabase", "sql:CREATE TABLE notes(text)",
            " is not a season archive (an SQLite database of another program); it is left as it is"},
    Refusal{"ANewerVersion", "sql:PRAGMA user_version = 3", " was written by a newer version of Vantor Log "
            "Analyzer (archive version 3, this one knows up to 2); it is left as it is"}),
    [](const auto& info) { return std::string(info.param.name); });
// clang-format on

}  // namespace
}  // namespace vantor::testing
