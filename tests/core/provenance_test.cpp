// Why each number is what it is. Lines are numbered as a text editor
// numbers them; on generated logs, the lines behind every count of every
// slot are exactly the rows the counting procedures count (checked against
// the literal one-row-at-a-time rendering of those procedures), and every
// member's team, and every other roster player's lack of one, is explained
// by the event that decided it.

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <optional>
#include <sstream>

#include "analysis/form1.h"
#include "reference/naive_statistics.h"
#include "support/reference_run.h"
#include "stats/provenance.h"
#include "support/event_log_generator.h"
#include "support/fake_host.h"
#include "support/test_files.h"

namespace vantor::testing {
namespace {

using Kind = TeamReason::Kind;

// A log in a scratch directory, imported with places kept (in Append mode
// when there are several), then recognised and split into teams.
struct Analysis {
  ScratchDir dir;
  FakeHost host;
  Form1 form{host};

  Analysis(const std::vector<std::string>& logs, int passes) {
    host.program_dir = dir.path();
    host.append = logs.size() > 1;
    form.KeepProvenance(true);
    for (std::size_t i = 0; i < logs.size(); ++i) {
      host.chosen_log = dir / ("game" + std::to_string(i) + ".log");
      WriteBytes(host.chosen_log, logs[i]);
      form.LoadFile();
    }
    form.ResetTeamColours();
    form.KillCheck();
    form.GetIndividualPlayers();
    form.SplitByColor();
    for (int pass = 0; pass < passes; ++pass) form.subCheckTeam();
  }
};

// "text@file:line" for every row of List1 after the import.
std::vector<std::string> PlacedRows(const Form1& form) {
  std::vector<std::string> rows;
  for (std::size_t r = 0; r < form.List1.Count(); ++r) {
    const SourceLine at = r < form.List1Sources.size() ? form.List1Sources[r] : SourceLine::At(99, 0);
    rows.push_back(form.List1.At(r) + "@" + std::to_string(at.file) + ":" + std::to_string(at.line));
  }
  return rows;
}

TEST(SourceLines, ImportNumbersLinesAsATextEditorDoes) {
  const std::string long_line(1048575, 'x');  // its CR is the read piece's last byte, its LF the next's first
  const struct {
    const char* name;
    std::string log;
    std::vector<std::string> rows;
  } cases[] = {
      {"LF ends", "^7a\n^7b\n", {"a@0:1", "b@0:2"}},
      {"CR LF ends", "^7a\r\n^7b\r\n", {"a@0:1", "b@0:2"}},
      {"CR ends", "^7a\r^7b\r", {"a@0:1", "b@0:2"}},
      {"empty lines of every ending count", "\r\n^7a\n\n\r^7b\r\n", {"a@0:2", "b@0:5"}},
      {"LF then CR ends two lines", "^7a\n\r^7b\n", {"a@0:1", "b@0:3"}},
      {"lines not kept are numbered too", "plain\r\n^7x: hello\r\n^7a\r\n", {"a@0:3"}},
      {"identical lines keep their own numbers", "^7a\n^7a\r\n^7a\r", {"a@0:1", "a@0:2", "a@0:3"}},
      {"a last line without an end is not imported", "^7a\n^7b", {"a@0:1"}},
      {"CR LF across two read pieces", long_line + "\r\n^7a\r\n", {"a@0:2"}},
  };
  for (const auto& c : cases) {
    Analysis analysis({c.log}, 0);
    // KillCheck has kept the unknown rows (all of them here) in step.
    EXPECT_EQ(PlacedRows(analysis.form), c.rows) << c.name;
  }
}

TEST(SourceLines, EachLogOfAnAppendKeepsItsOwnNumbering) {
  Analysis analysis({"^7a\r\n^7b\r\n", "x\n^7c\n"}, 0);
  EXPECT_EQ(PlacedRows(analysis.form), (std::vector<std::string>{"a@0:1", "b@0:2", "c@1:2"}));
  EXPECT_EQ(analysis.form.SourceFiles, (std::vector<std::string>{analysis.dir / "game0.log", analysis.dir / "game1.log"}));
}

// A generated log: "^7" before each line, ended as the seed says, so that
// line n of the file is lines[n - 1].
std::string LogOf(const std::vector<std::string>& lines, std::uint32_t seed) {
  const char* const end = seed % 3 == 0 ? "\r\n" : seed % 3 == 1 ? "\n" : "\r";
  std::string bytes;
  for (const std::string& line : lines) bytes += "^7" + line + end;
  return bytes;
}

constexpr int kPasses = 3;

// The lines with all but the first two flag events turned into chatter: few
// seeded players, so teams spread along long chains of kills, and some
// players stay without one.
std::vector<std::string> WithFewFlagEvents(std::vector<std::string> lines) {
  int flags = 0;
  for (std::string& line : lines) {
    const bool flag = line.find(" flag") != std::string::npos || line.find(" base.") != std::string::npos;
    if (flag && ++flags > 2) line = "unrecognised chatter";
  }
  return lines;
}

// One generated run, stopped before the tallies, with what they are given.
struct GeneratedRun {
  std::vector<std::string> lines;
  Analysis analysis;
  bool made_up = false;

  // Odd seeds have few flag events. Two players come last: one who only
  // kills himself, and one killed only by himself and a player called Himself.
  explicit GeneratedRun(std::uint32_t seed)
      : lines(Generate(seed)), analysis({LogOf(lines, seed)}, kPasses) {}

  static std::vector<std::string> Generate(std::uint32_t seed) {
    std::vector<std::string> lines =
        GenerateEventLines({seed, 150 + static_cast<int>(seed) * 3, 6 + static_cast<int>(seed % 7)});
    if (seed % 2 == 1) lines = WithFewFlagEvents(std::move(lines));
    lines.insert(lines.end(), {"Zulu killed himself.", "Yankee was railed by Himself", "Zulu cratered.", "Yankee cratered."});
    return lines;
  }

  // A name in both teams cannot come out of team assignment on its own; it
  // is made here (its copied reason is not checked), to check a second slot.
  void ListFirstBlueAlsoAsRed() {
    Form1& form = analysis.form;
    if (form.List8.Count() == 0) return;
    form.List9.Append(form.List8.At(0));
    form.List9Reasons.push_back(form.List8Reasons[0]);
    made_up = true;
  }
  // The generated line an event's place points at, without its colour code.
  const std::string& LineAt(const SourceLine& at) const { return lines.at(at.line - 1); }
};

// Each event's place holds its own line: the line's text as imported, and
// the names the event carries.
void ExpectEventsAtTheirLines(const GeneratedRun& g) {
  const Form1& form = g.analysis.form;
  ASSERT_EQ(form.KillSources.size(), form.List2.Count());
  ASSERT_EQ(form.FlagSources.size(), form.List5.Count());
  ASSERT_EQ(form.SentrySources.size(), form.List10.Count());
  const auto expect_at = [&](const EventSource& source, std::initializer_list<std::string> names) {
    ASSERT_EQ(form.List1.Pool().Text(source.text), g.LineAt(source.place));
    for (const std::string& name : names) ASSERT_NE(g.LineAt(source.place).find(name), std::string::npos) << name;
  };
  for (std::size_t m = 0; m < form.List2.Count(); ++m) expect_at(form.KillSources[m], {form.List3.At(m)});
  for (std::size_t j = 0; j < form.List5.Count(); ++j) expect_at(form.FlagSources[j], {form.List5.At(j)});
  for (std::size_t s = 0; s < form.List10.Count(); ++s) expect_at(form.SentrySources[s], {form.List10.At(s)});
  for (std::size_t r = 0; r < form.List1.Count(); ++r) ASSERT_EQ(form.List1.At(r), g.LineAt(form.List1Sources[r]));
}

TEST(Provenance, EveryCountHasExactlyTheLinesItsCountingCounted) {
  for (std::uint32_t seed = 1; seed <= 60; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    GeneratedRun g(seed);
    if (seed % 4 == 0) g.ListFirstBlueAlsoAsRed();
    Form1& form = g.analysis.form;
    ExpectEventsAtTheirLines(g);
    reference::NaiveRun naive = ReferenceRunOf(form);
    naive.blue = form.List8.Rows();
    naive.red = form.List9.Rows();
    naive.Tallies();
    const EventSources kills = form.KillSources, flags = form.FlagSources, sentries = form.SentrySources;
    form.GetIndivStats();
    // The counted events left the lists, with their places; the rest stayed.
    ASSERT_EQ(form.List2.Rows(), naive.killer);
    ASSERT_EQ(form.List3.Rows(), naive.victim);
    ASSERT_EQ(form.List4.Rows(), naive.method);
    ExpectEventsAtTheirLines(g);

    const RunRecord* run = form.LastRun();
    ASSERT_NE(run, nullptr);
    ASSERT_EQ(run->members.size(), naive.slots.size());
    for (std::size_t slot = 0; slot < naive.slots.size(); ++slot) {
      for (std::size_t k = 0; k < kCountKinds; ++k) {
        const auto kind = static_cast<CountKind>(k);
        const EventSources& places = k == 9 ? sentries : k >= 3 && k <= 8 ? flags : kills;
        std::vector<std::string> expected, found;
        for (std::size_t row : naive.slots[slot].counted[k]) expected.push_back(g.LineAt(places[row].place));
        for (const EventSource& at : LinesOf(*run, slot, kind)) {
          ASSERT_EQ(run->Text(at.text), g.LineAt(at.place));
          found.push_back(run->Text(at.text));
        }
        ASSERT_EQ(found, expected) << run->members[slot].strPlayerName << " " << CountName(kind);
        ASSERT_EQ(CountOf(run->members[slot], kind), static_cast<Count>(found.size()));
      }
    }
  }
}

// The kill and suicide events as team assignment saw them (the tallies
// remove counted ones), with their places.
struct KillEvents {
  std::vector<std::string> killer, victim, method;
  EventSources places;

  explicit KillEvents(const Form1& form)
      : killer(form.List2.Rows()), victim(form.List3.Rows()), method(form.List4.Rows()), places(form.KillSources) {}

  // The first event in which name is the killer, or the victim of another
  // player: the one that decides the team.
  std::optional<std::size_t> FirstDecidingRow(const std::string& name) const {
    for (std::size_t m = 0; m < killer.size(); ++m) {
      if (killer[m] == name || (victim[m] == name && killer[m] != "Himself")) return m;
    }
    return std::nullopt;
  }
  bool OnlySuicides(const std::string& name) const {
    for (std::size_t m = 0; m < killer.size(); ++m) {
      if (killer[m] == name || (victim[m] == name && method[m] != "Suicide")) return false;
    }
    return true;
  }
};

// The flag event whose colour a player keeps: the last credited one of the
// last kind, in the order team assignment asks for the kinds.
std::optional<std::pair<std::string, std::size_t>> SeedingFlagEvent(const Form1& form, const std::string& name) {
  std::optional<std::pair<std::string, std::size_t>> seed;
  for (const char* kind : {"Flag Defense", "Base Defense", "FC Frag", "FC Defense", "Flag Grab", "Flag Capture"}) {
    for (std::size_t j = 0; j < form.List5.Count(); ++j) {
      if (form.List6.At(j).find(kind) != std::string::npos && form.List5.At(j).find(name) != std::string::npos) {
        seed = {{kind, j}};
      }
    }
  }
  return seed;
}

// The pass from which each member is known: 0 when seeded.
std::map<std::string, int> KnownFrom(const Form1& form) {
  std::map<std::string, int> known;
  const auto add = [&](const WorksheetList& team, const std::vector<TeamReason>& reasons) {
    for (std::size_t i = 0; i < team.Count(); ++i) {
      const int pass = reasons[i].kind == Kind::kPropagated ? reasons[i].pass : 0;
      const auto [it, added] = known.try_emplace(team.At(i), pass);
      if (!added) it->second = std::min(it->second, pass);
    }
  };
  add(form.List8, form.List8Reasons);
  add(form.List9, form.List9Reasons);
  return known;
}

// The deciding kill of a reason is the player's first deciding row, with
// its other party and place.
void ExpectDecidingKill(const KillEvents& events, const std::string& name, const TeamReason& why) {
  const std::optional<std::size_t> m = events.FirstDecidingRow(name);
  ASSERT_TRUE(m.has_value());
  ASSERT_EQ(why.row, m);
  ASSERT_EQ(why.as_killer, events.killer[*m] == name);
  ASSERT_EQ(why.other, why.as_killer ? events.victim[*m] : events.killer[*m]);
  ASSERT_TRUE(why.line.has_value());
  ASSERT_TRUE(*why.line == events.places[*m].place);
}

void ExpectMemberExplained(const Form1& form, const std::string& name, const std::string& team, const TeamReason& why) {
  SCOPED_TRACE(team + " member " + name);
  ASSERT_EQ(why.team, team);
  if (why.kind == Kind::kPropagated) {
    ExpectDecidingKill(KillEvents(form), name, why);
    const std::vector<std::string> others = (team == "Blue" ? form.List9 : form.List8).Rows();
    ASSERT_NE(std::find(others.begin(), others.end(), why.other), others.end());
    ASSERT_EQ(why.pass, KnownFrom(form).at(why.other) + 1);  // the first pass in which the other was known
    return;
  }
  ASSERT_EQ(why.kind, Kind::kFlagEvent);
  const auto seed = SeedingFlagEvent(form, name);
  ASSERT_TRUE(seed.has_value());
  ASSERT_EQ(why.flag_kind, seed->first);
  ASSERT_EQ(why.row, seed->second);
  ASSERT_NE(form.List6.At(seed->second).find("(" + team + ")"), std::string::npos);
  ASSERT_TRUE(why.line.has_value() && *why.line == form.FlagSources[seed->second].place);
}

void ExpectNonMemberExplained(const KillEvents& events, const std::map<std::string, int>& known,
                              const std::string& name, const TeamReason& why) {
  SCOPED_TRACE("without a team: " + name);
  ASSERT_EQ(why.team, "");
  if (events.FirstDecidingRow(name)) {
    ASSERT_EQ(why.kind, Kind::kOpponentWithoutTeam);
    ExpectDecidingKill(events, name, why);
    // The other party had no team, or got one only in the last pass.
    const auto other = known.find(why.other);
    ASSERT_TRUE(other == known.end() || other->second == kPasses) << why.other;
    return;
  }
  ASSERT_EQ(why.kind, events.OnlySuicides(name) ? Kind::kOnlySuicides : Kind::kNoDecidingEvent);
}

TEST(Provenance, EveryTeamAndEveryLackOfOneIsExplainedByItsDecidingEvent) {
  std::map<Kind, int> seen;
  for (std::uint32_t seed = 1; seed <= 60; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    GeneratedRun g(seed);
    Form1& form = g.analysis.form;
    ASSERT_EQ(form.List8Reasons.size(), form.List8.Count());
    ASSERT_EQ(form.List9Reasons.size(), form.List9.Count());
    for (std::size_t i = 0; i < form.List8.Count(); ++i) ExpectMemberExplained(form, form.List8.At(i), "Blue", form.List8Reasons[i]);
    for (std::size_t i = 0; i < form.List9.Count(); ++i) ExpectMemberExplained(form, form.List9.At(i), "Red", form.List9Reasons[i]);
    const KillEvents events(form);
    const std::map<std::string, int> known = KnownFrom(form);
    std::vector<std::string> outside;
    for (const std::string& name : form.List7.Rows()) {
      if (known.count(name) == 0) outside.push_back(name);
    }
    form.GetIndivStats();
    const RunRecord& run = *form.LastRun();
    ASSERT_EQ(run.slot_reasons.size(), form.List8.Count() + form.List9.Count());
    for (const TeamReason& why : run.slot_reasons) ++seen[why.kind];
    ASSERT_EQ(run.non_members.size(), outside.size());
    for (std::size_t i = 0; i < outside.size(); ++i) {
      ASSERT_EQ(run.non_members[i].name, outside[i]);
      ExpectNonMemberExplained(events, known, outside[i], run.non_members[i].reason);
      ++seen[run.non_members[i].reason.kind];
    }
  }
  // The generated logs give every kind of reason.
  for (const Kind kind : {Kind::kFlagEvent, Kind::kPropagated, Kind::kNoDecidingEvent, Kind::kOpponentWithoutTeam,
                          Kind::kOnlySuicides}) {
    EXPECT_GT(seen[kind], 0) << static_cast<int>(kind);
  }
}

TEST(Provenance, KillMatrixCountsEveryKillButNoSuicide) {
  Analysis analysis({"^7Bravo was railed by Alpha\r\n^7Alpha cratered.\r\n^7Charlie was railed by Alpha\r\n"
                     "^7Bravo was knifed by Alpha\r\n^7Alpha was sniped by Bravo\r\n"
                     "^7Bravo committed suicide while plagued by Charlie\r\n^7Delta cratered.\r\n"
                     "^7Echo cratered.\r\n^7Echo was railed by Himself\r\n"},
                    0);
  Form1& form = analysis.form;
  form.GetIndivStats();
  const std::vector<KillCount> matrix = KillMatrix(*form.LastRun());
  std::ostringstream cells;
  for (const KillCount& c : matrix) cells << c.killer << ">" << c.victim << "=" << c.kills << " ";
  // A player called Himself is no suicide marker where the method is a weapon.
  EXPECT_EQ(cells.str(), "Alpha>Bravo=2 Alpha>Charlie=1 Bravo>Alpha=1 Charlie>Bravo=1 Himself>Echo=1 ");
  // Nobody has a team, as no flag event seeds one; each says why:
  // name:kind:other:as killer:line.
  std::ostringstream why;
  for (const RunRecord::NonMember& m : form.LastRun()->non_members) {
    why << m.name << ":" << static_cast<int>(m.reason.kind) << ":" << m.reason.other << ":" << m.reason.as_killer
        << ":" << (m.reason.line ? m.reason.line->line : 0) << " ";
  }
  // 2 = no deciding event (a death by "Himself" decides nothing, yet is no
  // suicide); 3 = the first deciding event's other party had no team;
  // 4 = only suicides.
  EXPECT_EQ(why.str(), "Alpha:3:Bravo:1:1 Bravo:3:Alpha:0:1 Charlie:3:Alpha:0:3 Delta:4::0:0 Echo:2::0:0 ");
}

}  // namespace
}  // namespace vantor::testing
