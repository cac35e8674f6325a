// The engine's shortcuts against the plain procedures they stand for, on
// many generated inputs: interning in batches, the prepared text search,
// the one-pass colour stripping and the rule prefilter.

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "analysis/log_import.h"
#include "analysis/string_pool.h"
#include "analysis/text_ops.h"
#include "events/rule_set.h"
#include "events/message_rules.h"

namespace vantor::testing {
namespace {

// Random text over a small alphabet, so that codes, carets, spaces and
// message words meet often.
std::string RandomText(std::mt19937& rng, const std::vector<std::string>& pieces, int max_pieces) {
  std::string text;
  const int n = std::uniform_int_distribution<int>(0, max_pieces)(rng);
  for (int i = 0; i < n; ++i) text += pieces[std::uniform_int_distribution<std::size_t>(0, pieces.size() - 1)(rng)];
  return text;
}

TEST(StringPool, BatchesGiveTheIdsOfOneByOneAndTextsStayPut) {
  std::mt19937 rng(5);
  const std::vector<std::string> pieces = {"a", "b", "^7", " ", "Alpha", ""};
  std::vector<std::string> texts;
  for (int i = 0; i < 20000; ++i) texts.push_back(RandomText(rng, pieces, 6));
  StringPool single, batched;
  std::vector<TextId> one_by_one;
  for (const std::string& t : texts) one_by_one.push_back(single.Intern(t));
  const std::string& first = single.Text(1);  // must survive the growth below
  const std::string first_copy = first;
  std::vector<std::string_view> views(texts.begin(), texts.end());
  std::vector<TextId> ids;
  batched.InternAll(views, ids);
  EXPECT_EQ(ids, one_by_one);
  EXPECT_EQ(single.Intern(""), 0u);
  for (int i = 0; i < 50000; ++i) single.Intern("grow" + std::to_string(i));
  EXPECT_EQ(first, first_copy);
  for (std::size_t i = 0; i < texts.size(); ++i) ASSERT_EQ(single.Text(one_by_one[i]), texts[i]);
}

TEST(TextSearcher, AgreesWithAPlainSearch) {
  std::mt19937 rng(7);
  const std::vector<std::string> pieces = {"con", "nected", "connected", "d", " ", "ente", "red", "c"};
  const std::vector<std::string> needles = {"connected", "entered the game", "c", "dd", "", "nnec"};
  for (int i = 0; i < 20000; ++i) {
    const std::string text = RandomText(rng, pieces, 8);
    for (const std::string& needle : needles) {
      ASSERT_EQ(TextSearcher(needle).In(text), text.find(needle) != std::string::npos)
          << "needle \"" << needle << "\" in \"" << text << "\"";
    }
  }
}

// Each code, then the lone caret, removed in turn from the result so far.
std::string StripOneCodeAtATime(std::string text) {
  for (const char* code : {"^1", "^2", "^3", "^4", "^5", "^6", "^7", "^8", "^9", "^0", "^"}) {
    text = ReplaceAll(text, code, "");
  }
  return text;
}

TEST(StripColorCodes, OnePassGivesWhatCodeByCodeRemovalGives) {
  std::mt19937 rng(11);
  const std::vector<std::string> pieces = {"^", "1", "7", "0", "x", "^^", "^7", "9"};
  for (int i = 0; i < 50000; ++i) {
    const std::string line = RandomText(rng, pieces, 7);
    ASSERT_EQ(StripColorCodes(line), StripOneCodeAtATime(line)) << line;
  }
}

// The first rule of the table whose cut matches, trying every rule.
int FirstRuleTried(std::string_view line) {
  for (const MessageRule& rule : kMessageRules) {
    if (CutByRule(rule, line).Matched()) return rule.number;
  }
  return 0;
}

TEST(RecognizeLine, SkipsOnlyRulesThatCannotMatch) {
  std::mt19937 rng(13);
  std::vector<std::string> pieces = {"Al", "pha", "'s", " ", "x"};
  for (const MessageRule& rule : kMessageRules) {
    pieces.emplace_back(rule.fragment);
    if (!rule.weapon_suffix.empty()) pieces.emplace_back(rule.weapon_suffix);
  }
  int recognised = 0;
  for (int i = 0; i < 30000; ++i) {
    const std::string line = RandomText(rng, pieces, 5);
    const Recognition found = RecognizeLine(line);
    const int number = found.rule != nullptr ? found.rule->number : 0;
    ASSERT_EQ(number, FirstRuleTried(line)) << line;
    recognised += number != 0;
  }
  EXPECT_GT(recognised, 10000);  // the inputs really exercise the rules
}

}  // namespace
}  // namespace vantor::testing
