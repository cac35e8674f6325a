// Whole reports compared byte for byte with hand-written documents, and the
// rows that depend on where the team totals stand in the statistics table.

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include "support/session.h"

namespace vantor::testing {
namespace {

struct Teams {
  std::vector<std::string> blue, red;
  std::vector<std::array<std::string, 3>> events;  // killer, victim, method
  std::vector<std::array<std::string, 2>> flags;   // player, action
  std::vector<std::string> sentries;
};

// Runs the tallies on a worksheet whose teams are already split and returns
// the report they write beside the log.
std::string ReportFor(const Teams& t) {
  Session session;
  auto& [dir, host, form] = session;
  host.chosen_log = dir / "match.log";
  for (const auto& [killer, victim, method] : t.events) {
    form.List2.Append(killer);
    form.List3.Append(victim);
    form.List4.Append(method);
  }
  for (const auto& [player, action] : t.flags) {
    form.List5.Append(player);
    form.List6.Append(action);
  }
  for (const std::string& s : t.sentries) form.List10.Append(s);
  for (const std::string& b : t.blue) form.List8.Append(b);
  for (const std::string& r : t.red) form.List9.Append(r);
  form.GetIndivStats();
  EXPECT_TRUE(host.messages.empty());
  return ReadBytes(dir / "match.html");
}

TEST(OutputToHTML, WholeReportsMatchTheHandWrittenDocuments) {
  const std::string bea = "<Bo>&Bea";
  const struct {
    const char* folder;
    Teams teams;
  } cases[] = {
      // clang-format off
      {"report_no_members", {}},
      {"report_only_red",
       {{},
        {"Rex", "Zed"},
        {{"Rex", "Vick", "Knife"}, {"Rex", "Vick", "Rail Gun"}, {"Zed", "Rex", "Rocket Splash"},
         {"Himself", "Zed", "Suicide"}, {"Zed", "Vick", "Hyperblaster"}},
        {{"Rex", "Flag Grab (Red)"}, {"Rex", "Flag Capture (Red)"}, {"Zed", "Base Defense (Red)"}},
        {}}},
      // Anja has only Super Shotgun kills and Bea Minigun but no MegaChaingun
      // or Laser Defense: neither gets a row in those classes' tables.
      {"report_two_blue_one_red",
       {{"Anja", bea},
        {"Cyra"},
        {{"Anja", "Cyra", "Super Shotgun"}, {"Anja", "Cyra", "Super Shotgun"},
         {bea, "Cyra", "Minigun"}, {bea, "Cyra", "Rocket Hit"}, {bea, "Cyra", "Plasmabomb"},
         {bea, "Anja", "Pistol"}, {"Cyra", bea, "Sentry Gun"}, {"Cyra", "Anja", "MegaChaingun"},
         {"Cyra", "Anja", "Shrapnel Grenade"}, {"Cyra", bea, "Sniper Headshot"},
         {"Cyra", "Anja", "Flamethrower"}, {"Cyra", bea, "Shotgun"}, {"Cyra", "Anja", "Gauntlet"},
         {"Himself", "Cyra", "Suicide"}, {"Himself", "Anja", "Suicide"},
         {"Cyra", "Anja", "Super Shotgun"}, {bea, "Cyra", "Super Shotgun"}},
        {{"Anja", "Flag Capture (Blue)"}, {"Anja", "Flag Grab (Blue)"}, {bea, "FC Defense (Blue)"},
         {bea, "Base Defense (Blue)"}, {"Cyra", "Flag Defense (Red)"}, {"Cyra", "FC Frag (Red)"}},
        {"Cyra", "Cyra"}}},
      // clang-format on
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.folder);
    EXPECT_EQ(ReportFor(c.teams), ReadBytes(DataPath(std::string(c.folder) + "/expected_report.html")));
  }
}

// Which class table (1 Marine .. 8 Other, '-' none) shows a member whose one
// count is a kill with each weapon in turn, in weapon order, then a sentry
// gun destroyed: only the kills a table tests for bring a row into it.
TEST(OutputToHTML, AClassTableShowsAMemberOnlyForAKillWithOneOfItsDecidingWeapons) {
  std::string shown;
  for (std::size_t w = 0; w <= kWeaponCount; ++w) {
    Teams ida{{"Ida"}, {}, {}, {}, {}};
    if (w < kWeaponCount) ida.events = {{"Ida", "Vic", std::string(kWeaponTable[w].method_name)}};
    if (w == kWeaponCount) ida.sentries = {"Ida"};
    const std::string report = ReportFor(ida);
    const std::size_t row = report.find("Ida</font>", report.find("<h2>Marine Stats</h2>"));
    int tables = 0;
    for (std::size_t h = report.find("<h2>"); h < row; h = report.find("<h2>", h + 1)) ++tables;
    shown += row == std::string::npos ? '-' : static_cast<char>('0' + tables - 2);
  }
  EXPECT_EQ(shown, "11----2-2-4--4---33-355-5-7777887786666--84");
}

TEST(OutputToHTML, OnlyBlueMembersGetTheRedTotalsFromTwoRowsBelowTheBlueTotals) {
  Session session;
  auto& [dir, host, form] = session;
  host.chosen_log = dir / "match.log";
  form.tally.resize(2);
  form.tally[0].strPlayerName = "Ida";
  form.tally[0].intFlagGrabs = 2;
  form.tally[1].strPlayerName = "Jo";
  form.tally[1].intDeaths = 4;
  form.tally[1].intFCKills = 1;
  // Distinct texts in the totals rows show which row each total is read from.
  for (const std::vector<std::string>& row :
       {std::vector<std::string>{"Ida", "0", "0", "0", "2", "0", "0", "0", "0", "0", "0"},
        {"Jo", "0", "4", "0", "0", "0", "0", "0", "0", "1", "0"},
        {"Totals", "b1", "b2", "b3", "b4", "b5", "b6", "b7", "b8", "b9", "b10"},
        std::vector<std::string>(11, " "),
        {"Totals", "r1", "r2", "r3", "r4", "r5", "r6", "r7", "r8", "r9", "r10"}}) {
    for (std::size_t c = 0; c < row.size(); ++c) host.table[c].Append(row[c]);
  }
  form.OutputToHTML(2, 0);
  const std::string report = ReadBytes(dir / "match.html");
  // Both members are Blue, and the Red totals follow the Blue ones; the team
  // flag sum starts again from 0 after the Blue totals row.
  // clang-format off
  for (const std::string& expected : {std::string(
           "<font color=#0000FF>\r\nJo</font></TD>\r\n<td>0</TD>\r\n<td>4</TD>\r\n<td>0</TD>\r\n</tr>\r\n"
           "<tr><td><b>Total</b></TD><td><b>b1</TD><td><b>b2</TD><td><b>b3</TD></tr>\r\n"
           "<tr><td><b>Total</b></TD><td><b>r1</TD><td><b>r2</TD><td><b>r3</TD></tr>\r\n  </table></body></html>\r\n"),
       std::string("<td><b>2</TD>\r\n</tr>\r\n<TR><td>\r\n<font color=#0000FF>\r\nJo</font></TD>\r\n"),
       std::string("<td><b>1</TD>\r\n</tr>\r\n<tr><td><b>Total</b></TD><td><b>b4</TD><td><b>b5</TD><td><b>b6</TD>"
           "<td><b>b7</TD><td><b>b8</TD><td><b>b9</TD><td><b>3</TD></tr>\r\n<tr><td><b>Total</b></TD><td><b>r4</TD>"
           "<td><b>r5</TD><td><b>r6</TD><td><b>r7</TD><td><b>r8</TD><td><b>r9</TD><td><b>0</TD></tr>\r\n"
           "  </table></body></html>\r\n")}) {
    // clang-format on
    EXPECT_NE(report.find(expected), std::string::npos) << expected << "\nin\n" << report;
  }
}

}  // namespace
}  // namespace vantor::testing
