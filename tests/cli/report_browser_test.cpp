// A report written for the sample evening, rendered by a real browser: the
// document is not well-formed, yet every table heading and member row must
// be shown.

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <regex>

#include "support/test_files.h"

namespace vantor::testing {
namespace {

constexpr const char* kChromium = "/usr/bin/chromium";

TEST(ReportInBrowser, ChromiumRendersEveryHeadingAndMemberRow) {
  if (!std::filesystem::exists(kChromium)) GTEST_SKIP() << "Debian's chromium is not installed";
  ScratchDir dir;
  const std::string sample = std::string(VANTOR_TEST_DATA_DIR) + "/../../samples/evening.log";
  const std::string analyse = std::string(VANTOR_CLI) + " --side-dir " + dir.path().string() +
                              " --output-dir " + dir.path().string() + " " + sample + " >/dev/null";
  ASSERT_EQ(std::system(analyse.c_str()), 0);
  const std::string render =
      std::string(kChromium) +
      " --headless --no-sandbox --disable-gpu --disable-quic --no-first-run"
      " --disable-background-networking --disable-component-update --disable-sync"
      " --user-data-dir=" + (dir / "profile") + " --dump-dom file://" + (dir / "evening.html") +
      " >" + (dir / "dom.html") + " 2>/dev/null";
  ASSERT_EQ(std::system(render.c_str()), 0);
  const std::string dom = ReadBytes(dir / "dom.html");
  for (const char* heading : {"Frag Stats", "Flag Stats", "Marine Stats", "Gunner Stats",
                              "Engineer Stats", "Cyborg Stats", "Sniper Stats", "Arsonist Stats",
                              "Assassin/Recon/Nurse Stats", "Other Stats"}) {
    EXPECT_NE(dom.find("<h2>" + std::string(heading) + "</h2>"), std::string::npos) << heading;
  }
  // A member's name follows its colour on a line of its own.
  auto shown = [&](const std::string& colour, const std::string& name) {
    return std::regex_search(dom, std::regex("<font color=\"#" + colour + "\">\\s*" + name + "</font>"));
  };
  for (const char* blue : {"Ace", "Blaze", "Cobalt", "Drift", "Ember"}) EXPECT_TRUE(shown("0000FF", blue)) << blue;
  for (const char* red : {"Fury", "Grim", "Havoc", "Ion", "Jinx"}) EXPECT_TRUE(shown("FF0000", red)) << red;
}

}  // namespace
}  // namespace vantor::testing
