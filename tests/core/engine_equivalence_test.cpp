// The indexed engine against the literal one-row-at-a-time rendering of the
// same rules, on many generated logs: same roster, teams, tally table,
// statistics table, progress and leftover events.

#include <gtest/gtest.h>

#include "analysis/form1.h"
#include "reference/naive_statistics.h"
#include "support/reference_run.h"
#include "support/event_log_generator.h"
#include "support/fake_host.h"

namespace vantor::testing {
namespace {

// A name in both teams cannot come out of team assignment on its own, but
// the tallies must still count it as their rules say: when asked for, the
// first Blue member is also listed as Red.
void ExpectSameRun(const EventLogOptions& options, int passes, bool member_in_both = false) {
  SCOPED_TRACE("seed " + std::to_string(options.seed) + ", passes " + std::to_string(passes));
  FakeHost host;
  Form1 form(host);
  for (const std::string& line : GenerateEventLines(options)) form.List1.Append(line);
  form.KillCheck();
  reference::NaiveRun naive = ReferenceRunOf(form);
  naive.Roster();
  naive.Teams(passes);
  if (member_in_both && !naive.blue.empty()) naive.red.push_back(naive.blue[0]);
  naive.Tallies();

  form.ResetTeamColours();
  form.GetIndividualPlayers();
  form.SplitByColor();
  for (int p = 0; p < passes; ++p) form.subCheckTeam();
  if (member_in_both && form.List8.Count() > 0) form.List9.Append(form.List8.At(0));
  form.GetIndivStats();

  ASSERT_EQ(form.List7.Rows(), naive.roster);
  ASSERT_EQ(form.List8.Rows(), naive.blue);
  ASSERT_EQ(form.List9.Rows(), naive.red);
  for (std::size_t c = 0; c < 11; ++c) ASSERT_EQ(host.table[c].Rows(), naive.table[c]) << "column " << c;
  ASSERT_EQ(form.tally.size(), naive.slots.size());
  for (std::size_t s = 0; s < naive.slots.size(); ++s) {
    const PlayerTally& t = form.tally[s];
    ASSERT_EQ(t.strPlayerName, naive.slots[s].name);
    const std::array<Count, 10> counts = {t.intFrags, t.intDeaths, t.intSuicides, t.intFlagGrabs,
                                          t.intFCDefends, t.intFlagCaptures, t.intFlagDefends,
                                          t.intBaseDefends, t.intFCKills, t.intSentKills};
    ASSERT_EQ(counts, naive.slots[s].counts) << "slot " << s;
    ASSERT_EQ(t.weapons, naive.slots[s].weapons) << "slot " << s;
  }
  ASSERT_EQ(host.progress_values, naive.progress);
  ASSERT_EQ(host.progress_maximum, naive.maximum);
  ASSERT_EQ(form.List2.Rows(), naive.killer);
  ASSERT_EQ(form.List3.Rows(), naive.victim);
  ASSERT_EQ(form.List4.Rows(), naive.method);
  const std::size_t colours = std::min(form.strPlayerTeam.size(), naive.team_colour.size());
  for (std::size_t i = 0; i < colours; ++i) ASSERT_EQ(form.strPlayerTeam[i], naive.team_colour[i]) << i;
}

TEST(EngineEquivalence, IndexedEngineMatchesTheLiteralRulesOnGeneratedLogs) {
  for (std::uint32_t seed = 1; seed <= 300; ++seed) {
    const EventLogOptions options{seed, static_cast<int>(20 + seed % 7 * 60),
                                  static_cast<int>(3 + seed % 21)};
    ExpectSameRun(options, 3);
    ExpectSameRun(options, 2);
    ExpectSameRun(options, 3, true);
    if (::testing::Test::HasFatalFailure()) return;
  }
}

}  // namespace
}  // namespace vantor::testing
