// The shapes of unrecognised lines: the roster's names of three characters
// or more become "<player>", and equal shapes are counted together.

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "report/run_outputs.h"

namespace vantor::testing {
namespace {

// A run whose members are members, other roster players others, and whose
// unrecognised lines are lines.
RunRecord RunOf(const std::vector<std::string>& members, const std::vector<std::string>& others,
                const std::vector<std::string>& lines) {
  RunRecord run;
  for (const std::string& name : members) run.members.push_back(PlayerTally{.strPlayerName = name});
  for (const std::string& name : others) run.non_members.push_back({name, {}});
  auto pool = std::make_shared<StringPool>();
  for (const std::string& line : lines) run.events.unknown.push_back(pool->Intern(line));
  run.events.pool = pool;
  return run;
}

TEST(UnknownLineShapes, NamesBecomePlaceholdersAndEqualShapesAreCountedTogether) {
  const struct {
    const char* name;
    RunRecord run;
    std::size_t limit;
    std::vector<std::string> shapes;
  } cases[] = {
      {"members and others alike, most frequent first",
       RunOf({"Alice"}, {"Bravo"}, {"Bravo is now a Sniper", "Match begins!", "Alice is now a Sniper"}), 20,
       {"2\t<player> is now a Sniper", "1\tMatch begins!"}},
      {"the longer of two names starting at one place", RunOf({"Alice", "Alicea"}, {}, {"Alicea joined Alice"}), 20,
       {"1\t<player> joined <player>"}},
      {"a name is not looked for inside a placeholder", RunOf({"Charlie", "lay"}, {}, {"Charlie and lay play"}), 20,
       {"1\t<player> and <player> p<player>"}},
      {"names shorter than three characters stay", RunOf({"Al", "Bob"}, {}, {"Al met Bob"}), 20, {"1\tAl met <player>"}},
      {"equal counts in text order, cut at the limit", RunOf({}, {}, {"b", "c", "a", "c"}), 2, {"2\tc", "1\ta"}},
  };
  for (const auto& c : cases) EXPECT_EQ(UnknownLineShapes(c.run, c.limit), c.shapes) << c.name;
}

}  // namespace
}  // namespace vantor::testing
