// The two run sequences: their progress steps, captions and what they leave.

#include <gtest/gtest.h>

#include "analysis/analysis_run.h"
#include "analysis/form1.h"
#include "support/fake_host.h"
#include "support/test_files.h"

namespace vantor::testing {
namespace {

using V = std::vector<std::string>;
using Values = std::vector<std::int64_t>;

class RunSequence : public ::testing::Test {
 protected:
  RunSequence() : form_(host_) { host_.program_dir = dir_.path().string(); }

  void Open(const std::string& name, const std::string& bytes) {
    WriteBytes(dir_ / name, bytes);
    host_.chosen_log = dir_ / name;
    form_.LoadFile();
  }

  ScratchDir dir_;
  FakeHost host_;
  Form1 form_;
};

TEST_F(RunSequence, ProcessRunChangesTheCaptionAndEmptiesTheListsButNotTheTallies) {
  host_.append = true;
  Open("a.log", "^7Alpha got the RED flag!\r\n");
  Open("b.log", "^7Bravo was railed by Alpha\r\n^7odd line\r\n");
  ProcessRun(form_);
  EXPECT_EQ(host_.captions, (V{"Processing", "Process"}));
  EXPECT_EQ(host_.visibility_changes, (std::vector<bool>{true, false}));
  EXPECT_EQ(host_.filled[0].Rows(), (V{"Alpha", "Totals", " ", "Bravo", "Totals"}));
  EXPECT_EQ(host_.table.RowCount(), 0u);
  for (const WorksheetList* l :
       {&form_.List1, &form_.List2, &form_.List5, &form_.List7, &form_.List8, &form_.List9, &form_.List10}) {
    EXPECT_EQ(l->Count(), 0u);
  }
  EXPECT_EQ(form_.tally.size(), 2u);
  EXPECT_EQ(form_.tally[1].strPlayerName, "Bravo");
  EXPECT_FALSE(form_.strPlayerTeam.empty());
  EXPECT_EQ(ReadBytes(dir_ / "unknown.txt"), "odd line\r\n\r\n");
  EXPECT_EQ(host_.opened, (V{dir_ / "b.html"}));
}

TEST_F(RunSequence, CancelledOpenStillRunsOverTheEmptyWorksheet) {
  Open("a.log", "^7Alpha got the RED flag!\r\n^7Bravo was railed by Alpha\r\n");
  OpenRun(form_);
  host_.chosen_log.clear();
  form_.LoadFile();
  OpenRun(form_);
  EXPECT_EQ(host_.messages.back().text, "Choose a file!");
  EXPECT_EQ(host_.table[0].Rows(), (V{"Totals", " ", "Totals"}));
  // No member: the tallies set the maximum to 50 and pass 0.8 and 0.9 of it.
  EXPECT_EQ(std::vector(host_.progress_values.end() - 6, host_.progress_values.end()),
            (Values{10, 20, 30, 40, 45, 50}));
  EXPECT_EQ(ReadBytes(dir_ / "unknown.txt"), "\r\n");
  EXPECT_EQ(host_.opened.size(), 1u);  // no log, no report to open
}

TEST_F(RunSequence, ASecondRunForgetsTheTeamsAndReplacesReportAndUnknownLines) {
  Open("a.log", "^7Alpha got the RED flag!\r\n^7Bravo was railed by Alpha\r\n^7 spaced \r\n^7x<&>y\r\n");
  OpenRun(form_);
  EXPECT_EQ(ReadBytes(dir_ / "unknown.txt"), " spaced \r\nx<&>y\r\n\r\n");
  Open("a.log", "^7Bravo was railed by Alpha\r\n");
  OpenRun(form_);
  EXPECT_EQ(host_.table[0].Rows(), (V{"Totals", " ", "Totals"}));
  EXPECT_EQ(ReadBytes(dir_ / "unknown.txt"), "\r\n");
  EXPECT_EQ(ReadBytes(dir_ / "a.html"), ReadBytes(DataPath("report_no_members/expected_report.html")));
  EXPECT_EQ(FilesIn(dir_.path()), (std::set<std::string>{"a.html", "a.log", "chat.txt", "ignored.txt",
                                                         "logoutput.txt", "unknown.txt"}));
  EXPECT_EQ(host_.opened, (V{dir_ / "a.html", dir_ / "a.html"}));
}

TEST_F(RunSequence, UnwritableUnknownLinesAreReportedAndTheReportStillOpens) {
  Open("a.log", "^7Alpha got the RED flag!\r\n");
  host_.program_dir = dir_ / "gone";
  OpenRun(form_);
  EXPECT_EQ(host_.messages.back().text,
            "Could not write " + (dir_ / "gone") + "/unknown.txt: No such file or directory");
  EXPECT_EQ(host_.opened, (V{dir_ / "a.html"}));
}

}  // namespace
}  // namespace vantor::testing
