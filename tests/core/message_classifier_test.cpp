// Recognition of the game's messages: every rule of the table, the worked
// cuts, and the lines whose outcome is easy to get wrong.

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include "analysis/form1.h"
#include "support/fake_host.h"
#include "support/rule_samples.h"

namespace vantor::testing {
namespace {

// What one run of KillCheck appended: List2, List3, List4, List5, List6, List10.
using Events = std::array<std::vector<std::string>, 6>;

struct Classified {
  Events events;
  std::vector<std::string> unknown;
};

Classified Classify(const std::vector<std::string>& lines) {
  FakeHost host;
  Form1 form(host);
  for (const std::string& line : lines) form.List1.Append(line);
  form.KillCheck();
  return {{form.List2.Rows(), form.List3.Rows(), form.List4.Rows(), form.List5.Rows(),
           form.List6.Rows(), form.List10.Rows()},
          form.List1.Rows()};
}

std::vector<std::string> One(const std::string& s) {
  return s.empty() ? std::vector<std::string>{} : std::vector<std::string>{s};
}

TEST(KillCheck, EveryRuleRecognisesItsOwnMessage) {
  ASSERT_EQ(std::size(kRuleSamples), 73u);
  for (int number = 1; const RuleSample& sample : kRuleSamples) ASSERT_EQ(sample.rule, number++);
  for (const RuleSample& sample : kRuleSamples) {
    SCOPED_TRACE("rule " + std::to_string(sample.rule) + ": " + sample.line);
    const Classified result = Classify({sample.line});
    for (std::size_t list = 0; list < 6; ++list) {
      EXPECT_EQ(result.events[list], One(sample.expected[list])) << "list index " << list;
    }
    EXPECT_TRUE(result.unknown.empty());
  }
}

struct LineCase {
  const char* name;
  std::string line;
  Events expected;
  bool stays_unknown;
};

TEST(KillCheck, LinesWhoseOutcomeIsEasyToGetWrong) {
  using V = std::vector<std::string>;
  const LineCase cases[] = {
      {"worked cut: plain kill", "Alpha was railed by Bravo",
       {V{"Bravo"}, V{"Alpha"}, V{"Rail Gun"}, V{}, V{}, V{}}, false},
      {"worked cut: sentry", "Delta's Sentry Gun was destroyed by Echo.",
       {V{}, V{}, V{}, V{}, V{}, V{"Echo"}}, false},
      {"worked cut: flag", "Alpha got the BLUE flag!",
       {V{}, V{}, V{}, V{"Alpha"}, V{"Flag Grab (Red)"}, V{}}, false},
      {"worked cut: suicide", "Alpha killed himself.",
       {V{"Himself"}, V{"Alpha"}, V{"Suicide"}, V{}, V{}, V{}}, false},
      {"napalm suffix before rocket", "Alpha almost dodged Bravo's Napalm Rocket",
       {V{"Bravo"}, V{"Alpha"}, V{"Napalm Rocket Splash"}, V{}, V{}, V{}}, false},
      {"plain rocket", "Alpha almost dodged Bravo's Rocket",
       {V{"Bravo"}, V{"Alpha"}, V{"Rocket Splash"}, V{}, V{}, V{}}, false},
      {"super shotgun", "Alpha was gunned down by Bravo's Super Shotgun",
       {V{"Bravo"}, V{"Alpha"}, V{"Super Shotgun"}, V{}, V{}, V{}}, false},
      {"shotgun takes the rest", "Alpha was gunned down by Bravo",
       {V{"Bravo"}, V{"Alpha"}, V{"Shotgun"}, V{}, V{}, V{}}, false},
      {"headshot", "Alpha 's head was blown off by Bravo",
       {V{"Bravo"}, V{"Alpha"}, V{"Sniper Headshot"}, V{}, V{}, V{}}, false},
      {"defence credits the named colour", "Alpha defends the BLUE flag.",
       {V{}, V{}, V{}, V{"Alpha"}, V{"Flag Defense (Blue)"}, V{}}, false},
      {"suicide", "Alpha blew himself up.",
       {V{"Himself"}, V{"Alpha"}, V{"Suicide"}, V{}, V{}, V{}}, false},
      {"three-character victim is consumed", "Ace almost dodged Bravo's Rocket",
       {V{}, V{}, V{}, V{}, V{}, V{}}, false},
      {"three-character victim in a plain kill counts", "Ace was railed by Bravo",
       {V{"Bravo"}, V{"Ace"}, V{"Rail Gun"}, V{}, V{}, V{}}, false},
      {"two characters before the suffix dropped unseen", "Alpha almost dodged BravoXY Rocket",
       {V{"Bravo"}, V{"Alpha"}, V{"Rocket Splash"}, V{}, V{}, V{}}, false},
      {"sentry line without full stop", "Delta's Sentry Gun was destroyed by Echo",
       {V{}, V{}, V{}, V{}, V{}, V{"Ech"}}, false},
      {"kill ending with its fragment", "Alpha was railed by ",
       {V{""}, V{"Alpha"}, V{"Rail Gun"}, V{}, V{}, V{}}, false},
      {"flag text after the fragment", "Alpha got the BLUE flag! again",
       {V{}, V{}, V{}, V{"Alpha"}, V{"Flag Grab (Red)"}, V{}}, false},
      {"kill wins over flag", "Alpha was railed by Bravo got the RED flag!",
       {V{"Bravo got the RED flag!"}, V{"Alpha"}, V{"Rail Gun"}, V{}, V{}, V{}}, false},
      // A cut whose end lies before its start is empty: the event is dropped.
      {"suffix inside the victim's name", "Al Rocketeer almost dodged Bravo",
       {V{}, V{}, V{}, V{}, V{}, V{}}, false},
      {"sentry line ending with the fragment", "Delta's Sentry Gun was destroyed by ",
       {V{}, V{}, V{}, V{}, V{}, V{""}}, false},
      {"apostrophe without blank", "Alpha's head was blown off by Bravo", {}, true},
      {"case matters", "ALPHA WAS RAILED BY BRAVO", {}, true},
      {"case matters for suicides", "Alpha Killed Himself.", {}, true},
  };
  for (const LineCase& c : cases) {
    SCOPED_TRACE(c.name);
    const Classified result = Classify({c.line});
    EXPECT_EQ(result.events, c.expected);
    EXPECT_EQ(result.unknown, c.stays_unknown ? V{c.line} : V{});
  }
}

TEST(KillCheck, SweepsBlankRowsAndKeepsUnknownLinesInOrder) {
  const Classified result =
      Classify({"noise one", "", "Alpha was railed by Bravo", "noise two", "Alpha was railed by Bravo"});
  EXPECT_EQ(result.unknown, (std::vector<std::string>{"noise one", "noise two"}));
  EXPECT_EQ(result.events[0], (std::vector<std::string>{"Bravo", "Bravo"}));
}

TEST(KillCheck, ClassifiesLogsBeyondSixteenBitRowCounts) {
  std::vector<std::string> lines(40000, "Alpha was railed by Bravo");
  lines.push_back("the last line is unknown");
  const Classified result = Classify(lines);
  EXPECT_EQ(result.events[0].size(), 40000u);
  EXPECT_EQ(result.unknown, (std::vector<std::string>{"the last line is unknown"}));
}

}  // namespace
}  // namespace vantor::testing
