// One log that uses every message rule, run from the import to the report.
// Each rule's sample line appears as many times as the rule's number, so
// that every count is a different sum of rule numbers and a count that
// lands in the wrong column shows. Kira (Blue by her flag events) kills
// Vicky with every weapon rule; Rhea (Red by hers) destroys Kira's sentry
// gun and commits every kind of suicide. Vicky's first fight makes her Red
// in the first propagation pass, Ghost Blue in the second, Shade Red in the
// third; Wraith would need a fourth and Nomad only kills himself. Every
// expected number below is worked out by hand from those rules.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "analysis/analysis_run.h"
#include "stats/provenance.h"
#include "support/rule_samples.h"
#include "support/session.h"

namespace vantor::testing {
namespace {

using V = std::vector<std::string>;
using Ints = std::vector<int>;

// Only the first: "Sentry Killer" names a weapon, not the killer.
std::string ReplaceFirst(std::string line, const std::string& from, const std::string& to) {
  return line.find(from) == std::string::npos ? line : line.replace(line.find(from), from.size(), to);
}

std::string EveryRuleLog() {
  std::string log;
  for (const RuleSample& s : kRuleSamples) {
    std::string line = s.line;
    const bool blue_flag = s.expected[4].ends_with("(Blue)");
    line = ReplaceFirst(line, "Carrier", blue_flag ? "^4Kira^7" : "^1Rhea^7");
    for (const char* kira : {"Killer", "Owner"}) line = ReplaceFirst(line, kira, "^4Kira^7");
    for (const char* rhea : {"Loser", "Wrecker"}) line = ReplaceFirst(line, rhea, "^1Rhea^7");
    line = ReplaceFirst(line, "Victim", "^1Vicky^7");
    for (int i = 0; i < s.rule; ++i) log += line + "\n";
  }
  return log +
         "^4Kira^7: gg, reconnected fine\r\n^1Rhea^7 entered the game\r\n^1Vicky^7 was railed by ^4Ghost\r\n"
         "^4Ghost^7 was knifed by ^1Shade\r\n^1Shade^7 was sniped by ^2Wraith\r\n^2Nomad^7 cratered.\r\n"
         "^3Vote^7 passed\r\n";
}

std::string Cells(const std::string& colour, const std::string& name, const Ints& counts) {
  std::string row = "<TR><td>\r\n<font color=#" + colour + ">\r\n" + name + "</font></TD>\r\n";
  for (int n : counts) row += "<td>" + std::to_string(n) + "</TD>\r\n";
  return row + "</tr>\r\n";
}
std::string Blue(const std::string& name, const Ints& counts) { return Cells("0000FF", name, counts); }
std::string Red(const std::string& name, const Ints& counts) { return Cells("FF0000", name, counts); }
std::string Total(const Ints& counts) {
  std::string row = "<tr><td><b>Total</b></TD>";
  for (int n : counts) row += "<td><b>" + std::to_string(n) + "</TD>";
  return row + "</tr>\r\n";
}

std::string Cells(const std::vector<KillCount>& matrix) {
  std::string cells;
  for (const KillCount& cell : matrix)
    cells += cell.killer + ">" + cell.victim + ":" + std::to_string(cell.kills) + " ";
  return cells;
}

TEST(EveryRuleRun, OpenRunCountsEveryRuleIntoItsColumn) {
  Session session;
  auto& [dir, host, form] = session;
  session.Open("night.log", EveryRuleLog());
  OpenRun(form);
  const std::vector<V> rows = {{"Kira", "1035", "0", "0", "56", "159", "58", "47", "49", "59", "0"},
                               {"Ghost", "1", "1", "0", "0", "0", "0", "0", "0", "0", "0"},
                               {"Totals", "1036", "1", "0", "56", "159", "58", "47", "49", "59", "0"},
                               V(11, " "),
                               {"Rhea", "0", "748", "748", "48", "183", "50", "55", "57", "51", "46"},
                               {"Vicky", "0", "1036", "0", "0", "0", "0", "0", "0", "0", "0"},
                               {"Shade", "1", "1", "0", "0", "0", "0", "0", "0", "0", "0"},
                               {"Totals", "1", "1785", "748", "48", "183", "50", "55", "57", "51", "46"}};
  ASSERT_EQ(host.table.RowCount(), rows.size());
  for (std::size_t r = 0; r < rows.size(); ++r) {
    for (std::size_t c = 0; c < 11; ++c) EXPECT_EQ(host.table[c].At(r), rows[r][c]) << r << "," << c;
  }
  EXPECT_EQ(form.List2.Rows(), (V{"Wraith", "Himself"}));  // what no member's count took
  // Killers, then victims, in order of first appearance; suicides are nobody's kill.
  EXPECT_EQ(Cells(KillMatrix(*form.LastRun())),
            "Kira>Vicky:1035 Ghost>Vicky:1 Shade>Ghost:1 Wraith>Shade:1 ");
  EXPECT_EQ(ReadBytes(dir / "chat.txt"), "Kira: gg, reconnected fine\r\n");
  EXPECT_EQ(ReadBytes(dir / "unknown.txt"), "Vote passed\r\n\r\n");
  EXPECT_TRUE(host.messages.empty());
  EXPECT_EQ(host.opened, V{dir / "night.html"});

  // Each table's rows in order; Magnotron Grenade kills are in no table.
  const std::string report = ReadBytes(dir / "night.html");
  const std::vector<std::pair<const char*, V>> tables = {
      {"<h2>Frag Stats</h2>",
       {Blue("Kira", {1035, 0, 0}), Blue("Ghost", {1, 1, 0}), Total({1036, 1, 0}), Red("Rhea", {0, 748, 748}),
        Red("Vicky", {0, 1036, 0}), Red("Shade", {1, 1, 0}), Total({1, 1785, 748})}},
      {"<h2>Flag Stats</h2>", {Total({56, 159, 58, 47, 49, 59, 428}), Total({48, 183, 50, 55, 57, 51, 444})}},
      {"<h2>Marine Stats</h2>", {Blue("Kira", {2, 9, 27, 28, 40, 13})}},
      {"<h2>Gunner Stats</h2>", {Blue("Kira", {10, 32, 11, 11})}},
      {"<h2>Engineer Stats</h2>", {Blue("Kira", {17, 20, 22, 38})}},
      {"<h2>Cyborg Stats</h2>",
       {Blue("Kira", {12, 7, 16, 21, 19, 31, 0}), Red("Rhea", {0, 0, 0, 0, 0, 0, 46})}},
      {"<h2>Sniper Stats</h2>", {Blue("Kira", {18, 24, 37, 15, 26}), Blue("Ghost", {0, 0, 0, 1, 0})}},
      {"<h2>Arsonist Stats</h2>", {Blue("Kira", {1, 8, 29, 30, 4, 42})}},
      {"<h2>Assassin/Recon/Nurse Stats</h2>",
       {Blue("Kira", {41, 25, 14, 3, 80, 36, 17}), Red("Shade", {0, 1, 0, 0, 0, 0, 0})}},
      {"<h2>Other Stats</h2>", {Blue("Kira", {33, 34, 39, 87})}}};
  std::size_t at = 0;
  for (const auto& [heading, table_rows] : tables) {
    at = report.find(std::string(heading) + "\r\n", at);
    const std::size_t end = report.find("</body></html>\r\n", at);
    ASSERT_NE(at, std::string::npos) << heading;
    for (const std::string& row : table_rows) {
      const std::size_t found = report.find(row, at);
      EXPECT_LT(found, end) << heading << "\n" << row;
      at = std::min(found + row.size(), end);
    }
    EXPECT_EQ(report.find("<font color", at), report.find("<font color", end))
        << heading << ": a row too many";
  }
}

// Thousands of names count their cells apart from a table of every pair,
// in the same order.
TEST(KillMatrixOfManyNames, CountsByKillerThenVictimInOrderOfFirstAppearance) {
  Session session;
  std::string log;
  for (int i = 0; i < 5000; ++i)
    log += "^1V" + std::to_string(i) + "^7 was railed by ^4K" + std::to_string(i) + "\n";
  session.Open("crowd.log", log + "^1V1^7 was railed by ^4K0\n^1V0^7 was railed by ^4K0\n");
  OpenRun(session.form);
  const std::vector<KillCount> matrix = KillMatrix(*session.form.LastRun());
  ASSERT_EQ(matrix.size(), 5001u);
  EXPECT_EQ(Cells({matrix[0], matrix[1], matrix[2], matrix[5000]}), "K0>V0:2 K0>V1:1 K1>V1:1 K4999>V4999:1 ");
}

}  // namespace
}  // namespace vantor::testing
