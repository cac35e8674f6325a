// The two run sequences: their progress steps, captions and what they leave.

#include <gtest/gtest.h>

#include "analysis/analysis_run.h"
#include "support/session.h"

namespace vantor::testing {
namespace {

using V = std::vector<std::string>;
using Values = std::vector<std::int64_t>;

class RunSequence : public ::testing::Test, protected Session {};

TEST_F(RunSequence, ProcessRunChangesTheCaptionAndEmptiesTheListsButNotTheTallies) {
  host.append = true;
  Open("a.log", "^7Alpha got the RED flag!\r\n");
  Open("b.log", "^7Bravo was railed by Alpha\r\n^7odd line\r\n");
  ProcessRun(form);
  EXPECT_EQ(host.filled[0].Rows(), (V{"Alpha", "Totals", " ", "Bravo", "Totals"}));
  EXPECT_EQ(host.table.RowCount(), 0u);
  for (const WorksheetList* l :
       {&form.List1, &form.List2, &form.List5, &form.List7, &form.List8, &form.List9, &form.List10}) {
    EXPECT_EQ(l->Count(), 0u);
  }
  EXPECT_EQ(form.tally.size(), 2u);
  EXPECT_EQ(form.tally[1].strPlayerName, "Bravo");
  EXPECT_FALSE(form.strPlayerTeam.empty());
  EXPECT_EQ(ReadBytes(dir / "unknown.txt"), "odd line\r\n\r\n");
  EXPECT_EQ(host.opened, (V{dir / "b.html"}));
}

TEST_F(RunSequence, CancelledOpenStillRunsOverTheEmptyWorksheet) {
  Open("a.log", "^7Alpha got the RED flag!\r\n^7Bravo was railed by Alpha\r\n");
  OpenRun(form);
  host.chosen_log.clear();
  form.LoadFile();
  OpenRun(form);
  EXPECT_EQ(host.messages.back().text, "Choose a file!");
  EXPECT_EQ(host.table[0].Rows(), (V{"Totals", " ", "Totals"}));
  // No member: the tallies set the maximum to 50 and pass 0.8 and 0.9 of it.
  EXPECT_EQ(std::vector(host.progress_values.end() - 6, host.progress_values.end()),
            (Values{10, 20, 30, 40, 45, 50}));
  EXPECT_EQ(ReadBytes(dir / "unknown.txt"), "\r\n");
  EXPECT_EQ(host.opened.size(), 1u);  // no log, no report to open
}

TEST_F(RunSequence, ASecondRunForgetsTheTeamsAndReplacesReportAndUnknownLines) {
  Open("a.log", "^7Alpha got the RED flag!\r\n^7Bravo was railed by Alpha\r\n^7 spaced \r\n^7x<&>y\r\n");
  OpenRun(form);
  EXPECT_EQ(ReadBytes(dir / "unknown.txt"), " spaced \r\nx<&>y\r\n\r\n");
  Open("a.log", "^7Bravo was railed by Alpha\r\n");
  OpenRun(form);
  EXPECT_EQ(host.table[0].Rows(), (V{"Totals", " ", "Totals"}));
  EXPECT_EQ(ReadBytes(dir / "unknown.txt"), "\r\n");
  EXPECT_EQ(ReadBytes(dir / "a.html"), ReadBytes(DataPath("report_no_members/expected_report.html")));
  EXPECT_EQ(FilesIn(dir.path()), (std::set<std::string>{"a.html", "a.log", "chat.txt", "ignored.txt",
                                                        "logoutput.txt", "unknown.txt"}));
  EXPECT_EQ(host.opened, (V{dir / "a.html", dir / "a.html"}));
}

TEST_F(RunSequence, UnwritableUnknownLinesAreReportedAndTheReportStillOpens) {
  Open("a.log", "^7Alpha got the RED flag!\r\n");
  host.program_dir = dir / "gone";
  OpenRun(form);
  EXPECT_EQ(host.messages.back().text,
            "Could not write " + (dir / "gone") + "/unknown.txt: No such file or directory");
  EXPECT_EQ(host.opened, (V{dir / "a.html"}));
}

}  // namespace
}  // namespace vantor::testing
