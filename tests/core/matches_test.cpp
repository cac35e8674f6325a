// Matches cut along the engine's markers, each analysed from its own
// events, and the awards given over players' counts.

#include "stats/matches.h"

#include <gtest/gtest.h>

#include "analysis/analysis_run.h"
#include "analysis/worker_threads.h"
#include "stats/awards.h"
#include "support/session.h"

namespace vantor::testing {
namespace {

// The run of logs (several: Append, then Process), with its markers.
std::shared_ptr<const RunRecord> RunOf(const std::vector<std::string>& logs) {
  Session s;
  s.host.append = logs.size() > 1;
  s.form.RecordsMarkers = true;
  for (std::size_t i = 0; i < logs.size(); ++i) s.Open("m" + std::to_string(i) + ".log", logs[i]);
  logs.size() > 1 ? ProcessRun(s.form) : OpenRun(s.form);
  return s.form.LastRun();
}

// "log:first-last (how) blue:red winner Blue=names Red=names" per match.
std::vector<std::string> MatchesOf(const std::vector<std::string>& logs) {
  std::vector<std::string> lines;
  for (const Match& m : AnalyseMatches(*RunOf(logs))) {
    std::string line = std::to_string(m.span.first.file) + ":" + std::to_string(m.span.first.line) + "-" +
                       std::to_string(m.span.last.line) + " (" + std::string(m.span.ended) + ") " +
                       std::to_string(m.blue_score) + ":" + std::to_string(m.red_score) + " " +
                       std::string(m.Winner());
    for (std::size_t s = 0; s < m.members.size(); ++s) {
      line += (s == 0 || s == m.blue_count ? " " + std::string(m.TeamOf(s)) + "=" : ",") +
              m.members[s].strPlayerName;
    }
    lines.push_back(line);
  }
  return lines;
}

// The roster comes from kills: a player with flag events only has no team.
const std::string kABlueBRed = "A^7 got the RED flag!\nB^7 got the BLUE flag!\nB^7 was railed by A^7\n";
const std::string kBBlueARed = "B^7 got the RED flag!\nA^7 got the BLUE flag!\nA^7 was railed by B^7\n";

struct SplitCase {
  std::string name;
  std::vector<std::string> logs;
  std::vector<std::string> matches;
};

class MatchSplit : public ::testing::TestWithParam<SplitCase> {};

// The rows are recognised in one range or in several side by side: the cuts are the same.
TEST_P(MatchSplit, CutsAlongTheMarkers) {
  for (const unsigned threads : {1u, 3u}) {
    SetWorkerThreads(threads);
    EXPECT_EQ(MatchesOf(GetParam().logs), GetParam().matches) << threads << " threads";
  }
  SetWorkerThreads(0);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Logs, MatchSplit, ::testing::Values(
    SplitCase{"NoMarkersIsOneMatch", {kABlueBRed + "A^7 captured the RED flag!\n"},
              {"0:1-4 (end of the log) 1:0 Blue Blue=A Red=B"}},
    // Line 1 holds no event; the capture on line 7 falls in the intermission.
    SplitCase{"IntermissionBelongsToNoMatchAndTeamsChangeSides",
              {"junk\nCL_InitCGame: 0.5 seconds\n" + kABlueBRed + "Timelimit hit.\nB^7 captured the BLUE flag!\n"
               "CL_InitCGame: 0.5 seconds\n" + kBBlueARed + "A^7 captured the BLUE flag!\nA^7 hit the fraglimit.\n"
               "A^7 got the BLUE flag!\n"},
              {"0:2-6 (time limit) 0:0 draw Blue=A Red=B", "0:8-13 (a player hit the frag limit) 0:1 Red Blue=B Red=A"}},
    SplitCase{"FragmentsWithoutEventsAreNoMatch",
              {"CL_InitCGame: 0.4 seconds\n----- CL_Shutdown -----\nlogfile opened on Sat Jun 15 20:15:00 2024\n"
               "CL_InitCGame: 0.4 seconds\n" + kABlueBRed + "CL_InitCGame: 0.4 seconds\n" + kABlueBRed +
               "----- CL_Shutdown -----\n"},
              {"0:4-7 (map reloaded) 0:0 draw Blue=A Red=B", "0:8-11 (the client left) 0:0 draw Blue=A Red=B"}},
    SplitCase{"ChatAndColouredTextQuotingAMarkerAreNoMarker",
              {kABlueBRed + "A^7: Timelimit hit.\n^5Timelimit hit.^7\nB^7: x^7 hit the fraglimit.\n"
               "CL_InitCGame: ^1x seconds\n" + kABlueBRed},
              {"0:1-10 (end of the log) 0:0 draw Blue=A Red=B"}},
    SplitCase{"EachLogBeginsAMatch", {kABlueBRed + "Red hit the capturelimit.\n", kBBlueARed},
              {"0:1-4 (Red hit the capture limit) 0:0 draw Blue=A Red=B", "1:1-3 (end of the log) 0:0 draw Blue=B Red=A"}},
    // The last match has a destroyed sentry gun and no member.
    SplitCase{"EveryLimitAndANewSessionEndAMatch",
              {kABlueBRed + "Blue hit the capturelimit.\nCL_InitCGame: 1 seconds\n" + kABlueBRed + "Red hit the fraglimit.\n"
               "CL_InitCGame: 1 seconds\n" + kABlueBRed + "Blue hit the fraglimit.\nCL_InitCGame: 1 seconds\n"
               "D's Sentry Gun was destroyed by E.\nlogfile opened on Sat Jun 15 20:15:00 2024\n"},
              {"0:1-4 (Blue hit the capture limit) 0:0 draw Blue=A Red=B", "0:5-9 (Red hit the frag limit) 0:0 draw Blue=A Red=B",
               "0:10-14 (Blue hit the frag limit) 0:0 draw Blue=A Red=B", "0:15-16 (a new session began) 0:0 draw"}}),
    [](const auto& info) { return info.param.name; });
// clang-format on

// The first map of the sample evening, alone in a log, is one match whose
// counts are exactly the run's.
TEST(Matches, AOneMatchLogCountsAsTheWholeRun) {
  const std::string evening = ReadBytes(DataPath("../../samples/evening.log"));
  const auto run = RunOf({evening.substr(0, evening.find("Timelimit hit."))});
  const std::vector<Match> matches = AnalyseMatches(*run);
  ASSERT_EQ(matches.size(), 1u);
  EXPECT_EQ(matches[0].members.size(), 10u);
  EXPECT_EQ(matches[0].blue_count, run->blue_count);
  EXPECT_EQ(matches[0].members, run->members);
}

struct AwardCase {
  std::string name;
  std::vector<std::pair<std::string, CountValues>> players;  // each name with its ten counts
  std::size_t award;                                         // row of kAwards
  std::vector<std::string> winners;
  std::string reason;
};

class Awards : public ::testing::TestWithParam<AwardCase> {};

TEST_P(Awards, GoToTheLeadersOfEnoughCandidates) {
  std::vector<PlayerCounts> players;
  for (const auto& [name, counts] : GetParam().players) players.push_back({name, counts});
  const Award award = GiveAwards(players)[GetParam().award];
  EXPECT_EQ(award.winners, GetParam().winners);
  EXPECT_EQ(award.Reason(), GetParam().reason);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(
    Counts, Awards,
    ::testing::Values(
        AwardCase{"UniqueLeader", {{"A", {3, 0}}, {"B", {1, 0}}}, 0, {"A"}, "most frags: 3"},
        AwardCase{"TieIsShared", {{"A", {2, 0}}, {"B", {2, 0}}, {"C", {1, 0}}}, 0, {"A", "B"}, "most frags: 2"},
        AwardCase{"NobodyReachesOne", {{"A", {0, 1}}, {"B", {0, 0}}}, 0, {}, "not given: nobody reached 1"},
        AwardCase{"OneCandidateIsTooFew", {{"A", {5, 0}}}, 0, {}, "not given: fewer than two players could win it"},
        AwardCase{"RatioNeedsFiveDeaths", {{"A", {10, 4}}, {"B", {12, 6}}, {"C", {5, 5}}}, 6, {"B"},
                  "best frags per death, of those with 5 deaths or more: 2.00"},
        AwardCase{"RatioWithOneCandidate", {{"A", {10, 2}}, {"B", {12, 6}}}, 6, {},
                  "not given: fewer than two players could win it"},
        AwardCase{"DefenderSumsFlagAndBaseDefences", {{"A", {0, 0, 0, 0, 3, 0, 1, 1}}, {"B", {0, 0, 0, 0, 0, 0, 0, 3}}},
                  2, {"B"}, "most flag and base defences: 3"},
        AwardCase{"MostDeaths", {{"A", {0, 4}}, {"B", {9, 3}}}, 8, {"A"}, "most deaths: 4"}),
    [](const auto& info) { return info.param.name; });
// clang-format on

}  // namespace
}  // namespace vantor::testing
