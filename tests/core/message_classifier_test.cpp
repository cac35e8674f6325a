// Recognition of the game's messages: every rule of the table, and the lines
// whose cuts or outcome are easy to get wrong.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "analysis/form1.h"
#include "support/fake_host.h"
#include "support/rule_samples.h"

namespace vantor::testing {
namespace {

using V = std::vector<std::string>;

// What KillCheck appended to List2, List3, List4, List5, List6 and List10,
// each row quoted, then the lines it left unknown.
std::string Classify(const V& lines) {
  FakeHost host;
  Form1 form(host);
  for (const std::string& line : lines) form.List1.Append(line);
  form.KillCheck();
  std::string outcome;
  for (const WorksheetList* list :
       {&form.List2, &form.List3, &form.List4, &form.List5, &form.List6, &form.List10, &form.List1}) {
    for (const std::string& row : list->Rows()) outcome += "'" + row + "'";
    outcome += list == &form.List1 ? "" : "|";
  }
  return outcome;
}

TEST(KillCheck, EveryRuleRecognisesItsOwnMessage) {
  ASSERT_EQ(std::size(kRuleSamples), 73u);
  for (int number = 1; const RuleSample& sample : kRuleSamples) {
    ASSERT_EQ(sample.rule, number++);
    std::string expected;
    for (const std::string& row : sample.expected) expected += (row.empty() ? "" : "'" + row + "'") + "|";
    EXPECT_EQ(Classify({sample.line}), expected) << "rule " << sample.rule << ": " << sample.line;
  }
}

TEST(KillCheck, LinesWhoseOutcomeIsEasyToGetWrong) {
  const struct {
    const char *name, *line, *outcome;
  } cases[] = {
      {"three-character victim is consumed", "Ace almost dodged Bravo's Rocket", "||||||"},
      {"three-character killer is consumed", "Alpha almost dodged Bob's Rocket", "||||||"},
      {"three-character victim in a plain kill", "Ace was railed by Bravo", "'Bravo'|'Ace'|'Rail Gun'||||"},
      {"two characters before the suffix dropped", "Alpha almost dodged BravoXY Rocket",
       "'Bravo'|'Alpha'|'Rocket Splash'||||"},
      {"sentry line without full stop", "Delta's Sentry Gun was destroyed by Echo", "|||||'Ech'|"},
      {"kill ending with its fragment", "Alpha was railed by ", "''|'Alpha'|'Rail Gun'||||"},
      {"flag text after the fragment", "Alpha got the BLUE flag! again", "|||'Alpha'|'Flag Grab (Red)'||"},
      {"kill wins over flag", "Alpha was railed by Bravo got the RED flag!",
       "'Bravo got the RED flag!'|'Alpha'|'Rail Gun'||||"},
      // A cut whose end lies before its start is empty: the event is dropped.
      {"suffix inside the victim's name", "Al Rocketeer almost dodged Bravo", "||||||"},
      {"sentry line ending with the fragment", "Delta's Sentry Gun was destroyed by ", "|||||''|"},
      {"apostrophe without blank", "Alpha's head was blown off by Bravo",
       "||||||'Alpha's head was blown off by Bravo'"},
      {"case matters", "ALPHA WAS RAILED BY BRAVO", "||||||'ALPHA WAS RAILED BY BRAVO'"},
      {"case matters for suicides", "Alpha Killed Himself.", "||||||'Alpha Killed Himself.'"},
  };
  for (const auto& c : cases) EXPECT_EQ(Classify({c.line}), c.outcome) << c.name;
}

// Row counts beyond 16 bits, blank rows swept, unknown lines kept in order.
TEST(KillCheck, SweepsBlankRowsAndKeepsUnknownLinesInOrderInLongLogs) {
  V lines(40000, "Al was railed by Bo");
  lines.insert(lines.begin(), {"noise one", ""});
  lines.push_back("the last line is unknown");
  std::string expected;
  for (const std::string row : {"'Bo'", "'Al'", "'Rail Gun'"}) {
    for (int i = 0; i < 40000; ++i) expected += row;
    expected += "|";
  }
  EXPECT_EQ(Classify(lines), expected + "|||'noise one''the last line is unknown'");
}

}  // namespace
}  // namespace vantor::testing
