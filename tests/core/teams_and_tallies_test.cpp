// Roster, team assignment and tallies on small hand-made event lists.

#include <gtest/gtest.h>

#include "support/session.h"

namespace vantor::testing {
namespace {

using V = std::vector<std::string>;

struct Kill {
  std::string killer, victim, method;
};

class Stages : public ::testing::Test, protected Session {
 protected:
  void Events(const std::vector<Kill>& kills) {
    for (const Kill& k : kills) {
      form.List2.Append(k.killer);
      form.List3.Append(k.victim);
      form.List4.Append(k.method);
    }
  }
  void Flag(const std::string& player, const std::string& action) {
    form.List5.Append(player);
    form.List6.Append(action);
  }
  void Teams(int passes) {
    form.ResetTeamColours();
    form.GetIndividualPlayers();
    form.SplitByColor();
    for (int p = 0; p < passes; ++p) form.subCheckTeam();
  }
  V Column(std::size_t c) const { return host.table[c].Rows(); }
};

// The event lists are laid out by hand, several kills a line.
// clang-format off
TEST_F(Stages, RosterListsKillersFirstAndNeverHimself) {
  Events({{"Himself", "Alpha", "Suicide"}, {"Bravo", "Charlie", "Rail Gun"}, {"NotHimself", "alpha", "Knife"},
          {"Bravo", "Himself2", "Knife"}, {"Alpha", "", "Knife"}});
  form.List10.Append("Sentryman");
  Flag("Flagman", "Flag Grab (Red)");
  form.GetIndividualPlayers();
  EXPECT_EQ(form.List7.Rows(), (V{"Bravo", "Alpha", "Charlie", "alpha", ""}));
}

TEST_F(Stages, FlagEventsSeedTeamsByTheLastKindCounted) {
  Events({{"Alpha", "Bravo", "Knife"}, {"Carl", "Dora", "Knife"}, {"Eve", "Al", "Knife"}, {"Alice", "Zed", "Knife"},
          {"lph", "ph", "Knife"}});
  Flag("Bravo", "Flag Grab (Red)");
  Flag("Alpha", "Flag Capture (Red)");  // capture decides over the later defence
  Flag("Alpha", "Flag Defense (Blue)");
  Flag("Alice", "Flag Grab (Blue)");
  Flag("AliceAl", "Flag Grab (Blue)");
  Teams(0);
  // Al is part of Alice and of Alpha, and twice of AliceAl: credited once with
  // the events of each text, and Alpha's capture, the last kind counted, makes
  // Al Red. lph and ph, nested inside Alpha and inside each other, get Alpha's
  // events too.
  EXPECT_EQ(form.List8.Rows(), (V{"Alice"}));
  EXPECT_EQ(form.List9.Rows(), (V{"Alpha", "lph", "Bravo", "Al", "ph"}));
  form.GetIndivStats();
  EXPECT_EQ(Column(0), (V{"Alice", "Totals", " ", "Alpha", "lph", "Bravo", "Al", "ph", "Totals"}));
  EXPECT_EQ(Column(4), (V{"2", "2", " ", "0", "0", "1", "2", "0", "3"}));
  EXPECT_EQ(Column(6), (V{"0", "0", " ", "1", "1", "0", "1", "1", "4"}));
  EXPECT_EQ(Column(7), (V{"0", "0", " ", "1", "1", "0", "1", "1", "4"}));
}

TEST_F(Stages, PropagationFollowsOnlyTheFirstDecidingEventOnePassAtATime) {
  // Blue seed A; B killed A; C killed B; D killed C and needs a third pass;
  // E's first kill is of a player without a team; F only kills himself.
  Events({{"Himself", "B", "Suicide"}, {"B", "A", "Knife"}, {"C", "B", "Knife"}, {"D", "C", "Knife"},
          {"E", "X", "Knife"}, {"E", "A", "Knife"}, {"Himself", "F", "Suicide"}});
  Flag("A", "Flag Grab (Blue)");
  Teams(2);
  EXPECT_EQ(form.List8.Rows(), (V{"A", "C"}));
  EXPECT_EQ(form.List9.Rows(), (V{"B"}));
}

TEST_F(Stages, NameInBothTeamsFindsItsConsumedEventsGoneAtItsSecondSlot) {
  Events({{"Alpha", "Zed", "Knife"}, {"Himself", "Alpha", "Suicide"}, {"Zed", "Alpha", "Knife"}, {"Zed", "alpha", "Knife"}});
  form.List10.Append("Alpha");
  Flag("Alphabet", "Flag Grab (Blue)");
  form.List8.Append("Alpha");
  form.List9.Append("Alpha");
  form.GetIndivStats();
  EXPECT_EQ(Column(1), (V{"1", "1", " ", "1", "1"}));   // frags
  EXPECT_EQ(Column(2), (V{"2", "2", " ", "1", "1"}));   // deaths less the suicide
  EXPECT_EQ(Column(3), (V{"1", "1", " ", "0", "0"}));   // suicides
  EXPECT_EQ(Column(4), (V{"1", "1", " ", "1", "1"}));   // flag grabs of Alphabet
  EXPECT_EQ(Column(10), (V{"1", "1", " ", "1", "1"}));  // sentries
  EXPECT_EQ(form.tally[0].WeaponKills(Weapon::Knife), 1);
  EXPECT_EQ(form.tally[1].WeaponKills(Weapon::Knife), 0);
  // The kills by the teamless Zed stay.
  EXPECT_EQ(form.List2.Rows(), (V{"Zed", "Zed"}));
}

TEST_F(Stages, CountsBeyondSixteenBitsAreExact) {
  Events(std::vector<Kill>(40001, {"Alpha", "Bravo", "Knife"}));
  form.List8.Append("Alpha");
  form.GetIndivStats();
  EXPECT_EQ(Column(1), (V{"40001", "40001", " ", "0"}));
  EXPECT_EQ(form.tally[0].WeaponKills(Weapon::Knife), 40001);
}
// clang-format on

}  // namespace
}  // namespace vantor::testing
