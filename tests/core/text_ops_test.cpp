// The string operations the names are cut with, and the colour-code
// stripping built on ReplaceAll. Every expected value is worked out by hand.

#include <gtest/gtest.h>

#include <string>

#include "analysis/log_import.h"
#include "analysis/text_ops.h"

namespace vantor::testing {
namespace {

TEST(TextOps, FindIsOneBasedExactAndCaseSensitive) {
  struct Row { const char* name; std::string text, needle; std::size_t position; };
  const Row rows[] = {
      {"inside", "Alpha was railed by Bravo", " was railed by ", 6},
      {"first of several", "abcabc", "c", 3},
      {"at the start", "abc", "a", 1},
      {"absent", "abc", "d", 0},
      {"case differs", "ABC", "b", 0},
      {"needle longer than text", "ab", "abc", 0},
      {"in the empty text", "", "a", 0},
      {"empty needle", "abc", "", 1},
      {"NUL byte", std::string("a\0b", 3), std::string("\0", 1), 2},
  };
  for (const Row& r : rows) EXPECT_EQ(Find(r.text, r.needle), r.position) << r.name;
}

TEST(TextOps, LeftAndMidGiveFewerCharactersWhenTheTextEndsFirst) {
  EXPECT_EQ(Left("Alpha", 2), "Al");
  EXPECT_EQ(Left("Alpha", 5), "Alpha");
  EXPECT_EQ(Left("Alpha", 9), "Alpha");
  EXPECT_EQ(Left("Alpha", 0), "");
  EXPECT_EQ(Left("Alpha", -1), "");
  EXPECT_EQ(Mid("Alpha", 1, 5), "Alpha");
  EXPECT_EQ(Mid("Alpha", 3, 99), "pha");
  EXPECT_EQ(Mid("Alpha", 5, 1), "a");
  EXPECT_EQ(Mid("Alpha", 6, 1), "");  // starts beyond the text
  EXPECT_EQ(Mid("Alpha", 2, 0), "");
  // A cut whose end lies before its start is empty.
  EXPECT_EQ(Mid("Alpha", 2, -2), "");
}

TEST(TextOps, ReplaceAllIsOneLeftToRightNonOverlappingPass) {
  struct Row { std::string text, from, to, result; };
  const Row rows[] = {
      {"aaaa", "aa", "x", "xx"},
      {"aaa", "aa", "x", "xa"},
      {"^^11", "^1", "", "^1"},  // what a removal forms is not searched again
      {"abc", "b", "bb", "abbc"},
      {"a.log.log", ".log", ".html", "a.html.html"},
      {"abc", "", "x", "abc"},
      {"", "a", "b", ""},
  };
  for (const Row& r : rows) {
    EXPECT_EQ(ReplaceAll(r.text, r.from, r.to), r.result) << r.text << " / " << r.from;
  }
}

// "^1", "^2", ... "^9", "^0" and then "^" are each removed in one pass over
// the result of the step before, so a removal can form a code that a later
// step removes, but never one that an earlier step would have.
TEST(StripColorCodes, RemovesEachCodeInTurnOnTheResultOfTheOneBefore) {
  struct Row { std::string line, stripped; };
  const Row rows[] = {
      {"^1Al^7pha ^4Bravo", "Alpha Bravo"},
      {"^^12", ""},          // "^1" leaves "^2"
      {"^^21", "1"},         // "^2" leaves "^1", whose step has passed
      {"^^^123", ""},        // "^^23", "^3", ""
      {"^7^^77", "7"},       // "^7" leaves "^7" unseen; "^" leaves "7"
      {"^^01", "1"},         // "^0" leaves "^1"
      {"^^90", ""},          // "^9" leaves "^0", removed next
      {"^^09", "9"},         // "^0" leaves "^9", whose step has passed
      {"^1^11", "1"},
      {"^10", "0"},
      {"^a^", "a"},
      {"^^^", ""},
      {"no codes", "no codes"},
      {"", ""},
      {"\x80^7\xff", "\x80\xff"},
  };
  for (const Row& r : rows) EXPECT_EQ(StripColorCodes(r.line), r.stripped) << r.line;
}

}  // namespace
}  // namespace vantor::testing
