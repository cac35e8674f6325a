// The season archive of vantor-cli: runs recorded exactly and never twice,
// standings that add up, and an archive that stays sound when a writer is
// killed, when it is old, or when it is no archive at all.

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
  ASSERT_EQ(RunProgram(VANTOR_GENLOG, {"--maps", maps, "--players", "8", "--seed", seed, "--truth",
                                       dir / (name + ".truth"), dir / name})
                .status,
            0);
}

Outcome Archive(const ScratchDir& dir, const std::string& log) {
  return RunProgram(VANTOR_CLI,
                    {"--no-side-files", "-o", dir.path(), "--archive", dir / "season.db", dir / log});
}

const std::string kMatchesAsPlayed =
    "SELECT 'match ' || m.id, m.blue_score, m.red_score, m.winner,"
    " (SELECT group_concat(name, ',') FROM (SELECT name FROM players WHERE match_id = m.id AND team = 'Blue' "
    "ORDER BY name)),"
    " (SELECT group_concat(name, ',') FROM (SELECT name FROM players WHERE match_id = m.id AND team = 'Red' "
    "ORDER BY name))"
    " FROM matches m ORDER BY m.id";

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
// only its new matches.
TEST_P(ArchivingAgain, CountsNothingTwice) {
  ScratchDir dir;
  Generate(dir, "3", "5", "evening.log");
  Generate(dir, "2", "6", "more.log");
  ASSERT_EQ(Archive(dir, "evening.log").status, 0);
  WriteBytes(dir / "second.log", GetParam().second == "grown"
                                     ? ReadBytes(dir / "evening.log") + ReadBytes(dir / "more.log")
                                     : ReadBytes(dir / "evening.log"));
  const Outcome again = Archive(dir, "second.log");
  EXPECT_EQ(again.status, 0);
  EXPECT_EQ(again.err.find("vantor-cli: " + dir / "second.log" + GetParam().notice) == 0,
            !GetParam().notice.empty())
      << again.err;
  EXPECT_EQ(Rows(dir / "season.db", "SELECT count(*) FROM matches"), GetParam().matches_after);
  EXPECT_EQ(Rows(dir / "season.db", "PRAGMA integrity_check"), "ok\n");
}

INSTANTIATE_TEST_SUITE_P(Logs, ArchivingAgain,
                         ::testing::Values(Rerun{"TheSameContentUnderAnotherName", "copy",
                                                 " was archived on ", "3\n"},
                                           Rerun{"ALogThatGrew", "grown", "", "5\n"}),
                         [](const auto& info) { return std::string(info.param.name); });

}  // namespace
}  // namespace vantor::testing
