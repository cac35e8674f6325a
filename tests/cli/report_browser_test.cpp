// The sample evening's report rendered by a real browser: the document is not
// well-formed, yet every table heading and every member row must be shown.

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

#include "support/test_files.h"

namespace vantor::testing {
namespace {

constexpr const char* kChromium = "/usr/bin/chromium";

std::vector<std::vector<std::string>> TableRows(const std::string& printed) {
  std::vector<std::vector<std::string>> rows;
  std::istringstream lines(printed);
  for (std::string line; std::getline(lines, line);) {
    std::vector<std::string> cells;
    std::istringstream fields(line);
    for (std::string cell; std::getline(fields, cell, '\t');) cells.push_back(cell);
    rows.push_back(cells);
  }
  return rows;
}

std::size_t Occurrences(const std::string& text, const std::string& part) {
  std::size_t n = 0;
  for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++n;
  return n;
}

TEST(ReportInBrowser, ChromiumShowsEveryHeadingAndEveryMemberRow) {
  if (!std::filesystem::exists(kChromium)) GTEST_SKIP() << "no browser at " << kChromium;
  ScratchDir dir;
  const std::string sample = DataPath("../../samples/evening.log");
  const std::string analyse = std::string(VANTOR_CLI) + " --table --side-dir " + dir.path().string() +
                              " --output-dir " + dir.path().string() + " " + sample + " >" + (dir / "table");
  ASSERT_EQ(std::system(analyse.c_str()), 0);
  // "timeout" only guards against a browser that never exits; it finishes in about a second.
  const std::string render =
      std::string("timeout 300 ") + kChromium +
      " --headless --no-sandbox --disable-gpu --disable-quic --no-first-run"
      " --disable-background-networking --disable-component-update --disable-sync"
      " --user-data-dir=" + (dir / "profile") + " --dump-dom file://" + (dir / "evening.html") +
      " >" + (dir / "dom.html") + " 2>/dev/null";
  ASSERT_EQ(std::system(render.c_str()), 0);
  const std::string dom = ReadBytes(dir / "dom.html");
  std::size_t at = 0;
  for (const char* heading : {"Frag Stats", "Flag Stats", "Marine Stats", "Gunner Stats",
                              "Engineer Stats", "Cyborg Stats", "Sniper Stats", "Arsonist Stats",
                              "Assassin/Recon/Nurse Stats", "Other Stats"}) {
    at = dom.find("<h2>" + std::string(heading) + "</h2>", at);
    EXPECT_NE(at, std::string::npos) << heading << " missing or out of order";
  }
  // Each member's frag row, as cells, in the team's colour.
  const char* colour = "0000FF";
  int members[2] = {0, 0};
  for (const auto& row : TableRows(ReadBytes(dir / "table"))) {
    if (row.size() != 11 || row[0] == "Name" || row[0] == " ") continue;
    if (row[0] == "Totals") {
      colour = "FF0000";
      continue;
    }
    ++members[colour[0] == 'F'];
    const std::regex frag_row("<tr><td>\\s*<font color=\"#" + std::string(colour) + "\">\\s*" + row[0] +
                              "</font></td>\\s*<td>" + row[1] + "</td>\\s*<td>" + row[2] +
                              "</td>\\s*<td>" + row[3] + "</td>\\s*</tr>");
    EXPECT_TRUE(std::regex_search(dom, frag_row)) << row[0];
  }
  EXPECT_EQ(members[0], 5);
  EXPECT_EQ(members[1], 5);
  // Every member row of all ten tables reaches the rendered document.
  const std::string report = ReadBytes(dir / "evening.html");
  EXPECT_EQ(Occurrences(dom, "<font color=\"#0000FF\">"), Occurrences(report, "<font color=#0000FF>"));
  EXPECT_EQ(Occurrences(dom, "<font color=\"#FF0000\">"), Occurrences(report, "<font color=#FF0000>"));
  EXPECT_GT(Occurrences(report, "<font color="), 40u);
}

}  // namespace
}  // namespace vantor::testing
