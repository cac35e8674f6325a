// Recognition of the game's messages: every rule of the table, the worked
// cuts, and the lines whose outcome is easy to get wrong.

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include "analysis/form1.h"
#include "events/message_rules.h"
#include "events/message_splitting.h"
#include "support/fake_host.h"

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

struct RuleSample {
  int rule;
  std::string line;
  std::array<std::string, 6> expected;  // one row per list, "" for none
};

// One line per rule, each recognised by that rule before any other. The
// expected names are worked out by hand from the message formats.
const RuleSample kRuleSamples[] = {
    {1, "Victim almost dodged Killer's Napalm Rocket", {"Killer", "Victim", "Napalm Rocket Splash", "", "", ""}},
    {2, "Victim almost dodged Killer's Rocket", {"Killer", "Victim", "Rocket Splash", "", "", ""}},
    {3, "Victim was popped by Killer's Goodyear Grenade", {"Killer", "Victim", "Goodyear Grenade", "", "", ""}},
    {4, "Victim was fried by Killer's Napalm Grenade", {"Killer", "Victim", "Napalm Grenade", "", "", ""}},
    {5, "Victim was shredded by Killer's Shrapnel Grenade", {"Killer", "Victim", "Shrapnel Grenade", "", "", ""}},
    {6, "Victim caught flak from Killer's Shrapnel Grenade", {"Killer", "Victim", "Shrapnel Grenade", "", "", ""}},
    {7, "Victim was popped by Killer's Grenade", {"Killer", "Victim", "Grenade", "", "", ""}},
    {8, "Victim ate Killer's Napalm Rocket", {"Killer", "Victim", "Napalm Rocket Hit", "", "", ""}},
    {9, "Victim ate Killer's Rocket", {"Killer", "Victim", "Rocket Hit", "", "", ""}},
    {10, "Victim was chewed up by Killer", {"Killer", "Victim", "MegaChaingun", "", "", ""}},
    {11, "Victim saw Killer's Light", {"Killer", "Victim", "Laser Defense", "", "", ""}},
    {12, "Victim didn't survive Killer's Kamikaze run", {"Killer", "Victim", "Kamikaze", "", "", ""}},
    {13, "Victim ate Killer's Homing Missile", {"Killer", "Victim", "Homing Missile", "", "", ""}},
    {14, "Victim swallowed a burst from Killer's Uzi", {"Killer", "Victim", "Uzi", "", "", ""}},
    {15, "Victim was railed by Killer", {"Killer", "Victim", "Rail Gun", "", "", ""}},
    {16, "Victim was electrocuted by Killer", {"Killer", "Victim", "Lightning Gun", "", "", ""}},
    {17, "Victim was gunned down by Killer's Super Shotgun", {"Killer", "Victim", "Super Shotgun", "", "", ""}},
    {18, "Victim 's head was blown off by Killer", {"Killer", "Victim", "Sniper Headshot", "", "", ""}},
    {19, "Victim intercepted Killer's Sentry Killer", {"Killer", "Victim", "Sentry Killer", "", "", ""}},
    {20, "Victim was liquidated by Killer's Sentry Gun Rocket", {"Killer", "Victim", "Sentry Rocket", "", "", ""}},
    {21, "Victim was melted Killer's Plasmabomb", {"Killer", "Victim", "Plasmabomb", "", "", ""}},
    {22, "Victim was laid low by Killer's Sentry Gun", {"Killer", "Victim", "Sentry Gun", "", "", ""}},
    {23, "Victim was sucked into Killer's Magnotron", {"Killer", "Victim", "Magnotron Grenade", "", "", ""}},
    {24, "Victim was sniped by Killer", {"Killer", "Victim", "Sniper Rifle", "", "", ""}},
    {25, "Victim was knifed by Killer", {"Killer", "Victim", "Knife", "", "", ""}},
    {26, "Victim fell for Killer's Pipe Bomb", {"Killer", "Victim", "Pipe Bomb", "", "", ""}},
    {27, "Victim was plugged by Killer's Turret Grenade", {"Killer", "Victim", "Turret Grenade", "", "", ""}},
    {28, "Victim swallowed Killer's Proximity Grenade", {"Killer", "Victim", "Proximity Grenade", "", "", ""}},
    {29, "Victim was broiled by Killer's Flamethrower", {"Killer", "Victim", "Flamethrower", "", "", ""}},
    {30, "Victim was immolated by Killer's Flames", {"Killer", "Victim", "Flame Damage", "", "", ""}},
    {31, "Victim was too close to Killer's Sentry Killer", {"Killer", "Victim", "SK Splash", "", "", ""}},
    {32, "Victim got torn up by Killer's minigun", {"Killer", "Victim", "Minigun", "", "", ""}},
    {33, "Victim caught Killer's Handgrenade", {"Killer", "Victim", "Handgrenade Hit", "", "", ""}},
    {34, "Victim didn't see Killer's Handgrenade", {"Killer", "Victim", "Handgrenade Splash", "", "", ""}},
    {35, "Victim fell prey to Killer's plague", {"Killer", "Victim", "Disease", "", "", ""}},
    {36, "Victim was poisoned by Killer's dart", {"Killer", "Victim", "Plague Dart", "", "", ""}},
    {37, "Victim had his legs blown out from under him by Killer", {"Killer", "Victim", "Sniper Legshot", "", "", ""}},
    {38, "Victim was cored by Killer", {"Killer", "Victim", "Ion Fuser", "", "", ""}},
    {39, "Victim was gunned down by Killer", {"Killer", "Victim", "Shotgun", "", "", ""}},
    {40, "Victim was blasted by Killer", {"Killer", "Victim", "Hyperblaster", "", "", ""}},
    {41, "Victim was assassinated by Killer", {"Killer", "Victim", "Pistol", "", "", ""}},
    {42, "Victim was frozen by Killer", {"Killer", "Victim", "Freeze Gun", "", "", ""}},
    {43, "Victim was pummelled by Killer", {"Killer", "Victim", "Gauntlet", "", "", ""}},
    {44, "Victim was pummeled by Killer", {"Killer", "Victim", "Gauntlet", "", "", ""}},
    {45, "Victim committed suicide while plagued by Killer", {"Killer", "Victim", "Disease", "", "", ""}},
    {46, "Owner's Sentry Gun was destroyed by Wrecker.", {"", "", "", "", "", "Wrecker"}},
    {47, "Carrier defends the BLUE flag.", {"", "", "", "Carrier", "Flag Defense (Blue)", ""}},
    {48, "Carrier got the BLUE flag!", {"", "", "", "Carrier", "Flag Grab (Red)", ""}},
    {49, "Carrier defends the BLUE base.", {"", "", "", "Carrier", "Base Defense (Blue)", ""}},
    {50, "Carrier captured the BLUE flag!", {"", "", "", "Carrier", "Flag Capture (Red)", ""}},
    {51, "Carrier fragged BLUE's flag carrier!", {"", "", "", "Carrier", "FC Frag (Red)", ""}},
    {52, "Carrier defends BLUE's flag carrier against an aggressive enemy", {"", "", "", "Carrier", "FC Defense (Blue)", ""}},
    {53, "Carrier defends BLUE's flag carrier against an agressive enemy", {"", "", "", "Carrier", "FC Defense (Blue)", ""}},
    {54, "Carrier defends the BLUE's flag carrier.", {"", "", "", "Carrier", "FC Defense (Blue)", ""}},
    {55, "Carrier defends the RED flag.", {"", "", "", "Carrier", "Flag Defense (Red)", ""}},
    {56, "Carrier got the RED flag!", {"", "", "", "Carrier", "Flag Grab (Blue)", ""}},
    {57, "Carrier defends the RED base.", {"", "", "", "Carrier", "Base Defense (Red)", ""}},
    {58, "Carrier captured the RED flag!", {"", "", "", "Carrier", "Flag Capture (Blue)", ""}},
    {59, "Carrier fragged RED's flag carrier!", {"", "", "", "Carrier", "FC Frag (Blue)", ""}},
    {60, "Carrier defends RED's flag carrier against an aggressive enemy", {"", "", "", "Carrier", "FC Defense (Red)", ""}},
    {61, "Carrier defends RED's flag carrier against an agressive enemy", {"", "", "", "Carrier", "FC Defense (Red)", ""}},
    {62, "Carrier defends the RED's flag carrier.", {"", "", "", "Carrier", "FC Defense (Red)", ""}},
    {63, "Loser blew himself up.", {"Himself", "Loser", "Suicide", "", "", ""}},
    {64, "Loser killed himself.", {"Himself", "Loser", "Suicide", "", "", ""}},
    {65, "Loser killed herself.", {"Himself", "Loser", "Suicide", "", "", ""}},
    {66, "Loser tripped on his own grenade.", {"Himself", "Loser", "Suicide", "", "", ""}},
    {67, "Loser tripped on her own grenade.", {"Himself", "Loser", "Suicide", "", "", ""}},
    {68, "Loser burned himself.", {"Himself", "Loser", "Suicide", "", "", ""}},
    {69, "Loser was in the wrong place.", {"Himself", "Loser", "Suicide", "", "", ""}},
    {70, "Loser cratered.", {"Himself", "Loser", "Suicide", "", "", ""}},
    {71, "Loser sank like a rock.", {"Himself", "Loser", "Suicide", "", "", ""}},
    {72, "Loser does a back flip into the lava.", {"Himself", "Loser", "Suicide", "", "", ""}},
    {73, "Loser was squished.", {"Himself", "Loser", "Suicide", "", "", ""}},};

TEST(KillCheck, EveryRuleRecognisesItsOwnMessage) {
  ASSERT_EQ(std::size(kRuleSamples), 73u);
  for (const RuleSample& sample : kRuleSamples) {
    SCOPED_TRACE("rule " + std::to_string(sample.rule) + ": " + sample.line);
    const Classified result = Classify({sample.line});
    for (std::size_t list = 0; list < 6; ++list) {
      EXPECT_EQ(result.events[list], One(sample.expected[list])) << "list index " << list;
    }
    EXPECT_TRUE(result.unknown.empty());
  }
}

TEST(MessageRules, TableIsNumberedInMatchingOrder) {
  ASSERT_EQ(kMessageRules.size(), 73u);
  for (std::size_t i = 0; i < kMessageRules.size(); ++i) {
    EXPECT_EQ(kMessageRules[i].number, static_cast<int>(i) + 1);
  }
  EXPECT_EQ(kMessageRules[17].fragment, " 's head was blown off by ");
  EXPECT_EQ(kMessageRules[43].fragment, " was pummeled by ");
  EXPECT_EQ(kMessageRules[52].fragment, " defends BLUE's flag carrier against an agressive enemy");
  EXPECT_EQ(kMessageRules[45].fragment, " Sentry Gun was destroyed by ");
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
