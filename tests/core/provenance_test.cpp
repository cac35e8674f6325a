// Why each number is what it is, on generated logs: the log lines behind
// every count of every slot number exactly the count and each names the
// player; every member's team is explained by an event that names its
// team, every other roster player's lack of one by a reason.

#include <gtest/gtest.h>

#include <set>
#include <sstream>

#include "analysis/form1.h"
#include "stats/provenance.h"
#include "support/event_log_generator.h"
#include "support/fake_host.h"
#include "support/test_files.h"

namespace vantor::testing {
namespace {

using Kind = TeamReason::Kind;

// The log of lines, each coloured and ended by CR LF: line n of the file
// is lines[n - 1].
std::string LogOf(const std::vector<std::string>& lines) {
  std::string bytes;
  for (const std::string& line : lines) bytes += "^7" + line + "\r\n";
  return bytes;
}

// A log in a scratch directory, imported with places kept, up to the teams.
struct Analysis {
  ScratchDir dir;
  FakeHost host;
  Form1 form{host};

  explicit Analysis(const std::string& bytes, int passes) {
    host.program_dir = dir.path();
    host.chosen_log = dir / "game.log";
    WriteBytes(host.chosen_log, bytes);
    form.KeepProvenance(true);
    form.LoadFile();
    form.ResetTeamColours();
    form.KillCheck();
    form.GetIndividualPlayers();
    form.SplitByColor();
    for (int pass = 0; pass < passes; ++pass) form.subCheckTeam();
  }
};

void ExpectEveryCountExplained(const EventLogOptions& options, bool member_in_both) {
  SCOPED_TRACE("seed " + std::to_string(options.seed));
  const std::vector<std::string> lines = GenerateEventLines(options);
  Analysis analysis(LogOf(lines), 3);
  Form1& form = analysis.form;
  const FakeHost& host = analysis.host;
  // A name in both teams cannot come out of team assignment on its own; it
  // is made here (its made-up reason is not checked), to check the counts of
  // a second slot.
  const bool made_up = member_in_both && form.List8.Count() > 0;
  if (made_up) {
    form.List9.Append(form.List8.At(0));
    form.List9Reasons.push_back(form.List8Reasons[0]);
  }
  const std::vector<std::string> blue = form.List8.Rows(), red = form.List9.Rows(), roster = form.List7.Rows();
  form.GetIndivStats();
  const RunRecord* run = form.LastRun();
  ASSERT_NE(run, nullptr);
  ASSERT_EQ(run->files, std::vector<std::string>{host.chosen_log});

  for (std::size_t slot = 0; slot < run->members.size(); ++slot) {
    const PlayerTally& tally = run->members[slot];
    for (std::size_t k = 0; k < kCountKinds; ++k) {
      const auto kind = static_cast<CountKind>(k);
      const SourceLines found = LinesOf(*run, slot, kind);
      ASSERT_EQ(static_cast<Count>(found.size()), CountOf(tally, kind)) << tally.strPlayerName << " " << CountName(kind);
      for (const SourceLine& at : found) {
        ASSERT_GE(at.line, 1u);
        ASSERT_LE(at.line, lines.size());
        ASSERT_NE(lines[at.line - 1].find(tally.strPlayerName), std::string::npos)
            << "line " << at.line << " does not name " << tally.strPlayerName;
      }
    }
  }

  ASSERT_EQ(run->slot_reasons.size(), blue.size() + red.size());
  for (std::size_t slot = 0; slot + (made_up ? 1 : 0) < run->slot_reasons.size(); ++slot) {
    const TeamReason& why = run->slot_reasons[slot];
    ASSERT_EQ(why.team, slot < blue.size() ? "Blue" : "Red") << slot;
    ASSERT_TRUE(why.kind == Kind::kFlagEvent || why.kind == Kind::kPropagated) << slot;
    ASSERT_TRUE(why.line.has_value());
    const std::string& name = run->members[slot].strPlayerName;
    ASSERT_NE(lines[why.line->line - 1].find(name), std::string::npos) << "line " << why.line->line;
    if (why.kind == Kind::kFlagEvent) {
      // The deciding flag event credits the member's own team.
      const std::string& action = run->Text(run->events.flag_action[*why.row]);
      ASSERT_NE(action.find("(" + why.team + ")"), std::string::npos) << action;
      ASSERT_NE(action.find(why.flag_kind), std::string::npos) << action;
    } else {
      const auto& others = why.team == "Blue" ? red : blue;
      ASSERT_NE(std::find(others.begin(), others.end(), why.other), others.end()) << why.other;
      ASSERT_GE(why.pass, 1);
      ASSERT_LE(why.pass, 3);
    }
  }
  std::set<std::string> members(blue.begin(), blue.end());
  members.insert(red.begin(), red.end());
  std::vector<std::string> outside;
  for (const std::string& name : roster) {
    if (members.count(name) == 0) outside.push_back(name);
  }
  ASSERT_EQ(run->non_members.size(), outside.size());
  for (std::size_t i = 0; i < outside.size(); ++i) {
    ASSERT_EQ(run->non_members[i].name, outside[i]);
    const Kind kind = run->non_members[i].reason.kind;
    ASSERT_TRUE(kind == Kind::kNoDecidingEvent || kind == Kind::kOpponentWithoutTeam || kind == Kind::kOnlySuicides);
    if (kind == Kind::kOpponentWithoutTeam) {
      ASSERT_EQ(members.count(run->non_members[i].reason.other), 0u);
    }
  }
}

TEST(Provenance, EveryCountHasExactlyItsLinesAndEveryTeamItsReason) {
  for (std::uint32_t seed = 1; seed <= 60; ++seed) {
    ExpectEveryCountExplained({seed, 150 + static_cast<int>(seed) * 3, 6 + static_cast<int>(seed % 7)}, seed % 4 == 0);
  }
}

TEST(Provenance, KillMatrixCountsEveryKillButNoSuicide) {
  Analysis analysis(
      "^7Bravo was railed by Alpha\r\n^7Alpha cratered.\r\n^7Charlie was railed by Alpha\r\n"
      "^7Bravo was knifed by Alpha\r\n^7Alpha was sniped by Bravo\r\n"
      "^7Bravo committed suicide while plagued by Charlie\r\n^7Delta cratered.\r\n",
      0);
  Form1& form = analysis.form;
  form.GetIndivStats();
  const std::vector<KillCount> matrix = KillMatrix(*form.LastRun());
  std::ostringstream cells;
  for (const KillCount& c : matrix) cells << c.killer << ">" << c.victim << "=" << c.kills << " ";
  EXPECT_EQ(cells.str(), "Alpha>Bravo=2 Alpha>Charlie=1 Bravo>Alpha=1 Charlie>Bravo=1 ");
  // Nobody has a team, as no flag event seeds one; each says why.
  std::ostringstream why;
  for (const RunRecord::NonMember& m : form.LastRun()->non_members) {
    why << m.name << ":" << static_cast<int>(m.reason.kind) << ":" << m.reason.other << ":"
        << (m.reason.line ? m.reason.line->line : 0) << " ";
  }
  // 3 = the first deciding event's other party had no team; 4 = only suicides.
  EXPECT_EQ(why.str(), "Alpha:3:Bravo:1 Bravo:3:Alpha:1 Charlie:3:Alpha:3 Delta:4::0 ");
}

}  // namespace
}  // namespace vantor::testing
