// genlog, the benchmarks' log writer: the same bytes for the same seed, the
// size asked for, and every message the analyser knows, in logs that the
// analyser reads as the game's own.

#include <gtest/gtest.h>

#include <cstdlib>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "support/test_files.h"

namespace vantor::testing {
namespace {

std::string Generate(const ScratchDir& dir, const std::string& name, const std::string& seed) {
  const std::string path = dir / name;
  const std::string command = std::string(VANTOR_GENLOG) + " --size 2000000 --seed " + seed + " " + path;
  EXPECT_EQ(std::system(command.c_str()), 0) << command;
  return ReadBytes(path);
}

std::set<std::string> LinesOf(const std::string& bytes) {
  std::set<std::string> lines;
  std::istringstream in(bytes);
  for (std::string line; std::getline(in, line);) lines.insert(line.substr(0, line.size() - 1));
  return lines;
}

TEST(Genlog, SameSeedSameBytesEveryMessageKindAndNothingUnknownButAnnouncements) {
  ScratchDir dir;
  const std::string log = Generate(dir, "a.log", "3");
  EXPECT_EQ(Generate(dir, "b.log", "3"), log);
  EXPECT_NE(Generate(dir, "c.log", "4"), log);
  EXPECT_GE(log.size(), 2000000u);
  EXPECT_LT(log.size(), 2000000u + 200);  // stops within a line of the size asked for
  EXPECT_EQ(log.substr(log.size() - 2), "\r\n");

  const std::string fragments_file = dir / "fragments.txt";
  ASSERT_EQ(std::system((std::string(VANTOR_GENLOG) + " --fragments > " + fragments_file).c_str()), 0);
  // One fragment per rule, in the table's order.
  std::istringstream fragments(ReadBytes(fragments_file));
  std::vector<std::string> rules;
  for (std::string fragment; std::getline(fragments, fragment);) rules.push_back(fragment);
  ASSERT_EQ(rules.size(), 73u);
  EXPECT_EQ(rules.front(), " almost dodged ");
  EXPECT_EQ(rules.back(), " was squished.");
  for (const std::string& fragment : rules) {
    EXPECT_NE(log.find(fragment), std::string::npos) << "never written: \"" << fragment << "\"";
  }

  const std::string command = std::string(VANTOR_CLI) + " --side-dir " + dir.path().string() +
                              " --output-dir " + dir.path().string() + " " + (dir / "a.log");
  ASSERT_EQ(std::system(command.c_str()), 0);
  const std::set<std::string> unknown = LinesOf(ReadBytes(dir / "unknown.txt"));
  EXPECT_EQ(unknown, (std::set<std::string>{"", "Match begins!", "Timelimit hit.", "Teams are balanced"}));
}

}  // namespace
}  // namespace vantor::testing
