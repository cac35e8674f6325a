// A whole run over a small log: the statistics table of the worked example.

#include <gtest/gtest.h>

#include "analysis/analysis_run.h"
#include "analysis/form1.h"
#include "support/fake_host.h"
#include "support/test_files.h"

namespace vantor::testing {
namespace {

std::vector<std::string> Column(const StatisticsTable& t, std::size_t c) { return t[c].Rows(); }

TEST(OpenRun, WorkedExampleFillsTheTableTeamByTeam) {
  ScratchDir dir;
  WriteBytes(dir / "game.log",
             "^7Dave was railed by Charlie\r\n"
             "^7Bravo got the BLUE flag!\r\n"
             "^7Alpha got the RED flag!\r\n"
             "^7Bravo was railed by Alpha\r\n"
             "^7Bravo killed himself.\r\n"
             "^7Alpha was knifed by Bravo\r\n"
             "^7Charlie was railed by Alpha\r\n");
  FakeHost host;
  host.program_dir = dir.path().string();
  host.chosen_log = dir / "game.log";
  Form1 form(host);
  form.LoadFile();
  OpenRun(form);
  EXPECT_EQ(Column(host.table, 0),
            (std::vector<std::string>{"Alpha", "Totals", " ", "Bravo", "Totals"}));
  EXPECT_EQ(Column(host.table, 1), (std::vector<std::string>{"2", "2", " ", "1", "1"}));
  EXPECT_EQ(Column(host.table, 2), (std::vector<std::string>{"1", "1", " ", "2", "2"}));
  EXPECT_EQ(Column(host.table, 3), (std::vector<std::string>{"0", "0", " ", "1", "1"}));
  EXPECT_EQ(host.opened, (std::vector<std::string>{dir / "game.html"}));
  EXPECT_EQ(form.tally[0].WeaponKills(Weapon::RailGun), 2);
  EXPECT_EQ(form.tally[1].WeaponKills(Weapon::Knife), 1);
  // Only the kill between the two players without a team is left.
  EXPECT_EQ(form.List2.Rows(), (std::vector<std::string>{"Charlie"}));
  EXPECT_EQ(form.List3.Rows(), (std::vector<std::string>{"Dave"}));
}

}  // namespace
}  // namespace vantor::testing
