// The exports of vantor-cli: JSON that validates against the documented
// schema, CSV that a CSV reader reads back with awkward names intact, the
// unknown-line summary, and the report, side files and table unchanged by
// asking for any of them.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "support/run_program.h"
#include "support/test_files.h"

namespace vantor::testing {
namespace {

namespace fs = std::filesystem;

// Debian's Python, which has python3-jsonschema.
constexpr char kPython[] = "/usr/bin/python3";

std::string SourcePath(const std::string& relative) {
  return (fs::path(VANTOR_TEST_DATA_DIR) / "../.." / relative).lexically_normal().string();
}

Outcome Python(const std::string& program, const std::vector<std::string>& args) {
  std::vector<std::string> all = {"-c", program};
  all.insert(all.end(), args.begin(), args.end());
  return RunProgram(kPython, all);
}

TEST(Exports, ReportSideFilesAndTableAreTheSameWithAndWithoutThem) {
  ScratchDir dir;
  const std::string sample = SourcePath("samples/evening.log");
  for (const char* run : {"plain", "exports"}) fs::create_directory(dir / std::string(run));
  const Outcome plain = RunProgram(VANTOR_CLI, {"--table", "--side-dir", dir / "plain", "--output-dir", dir / "plain", sample});
  const Outcome with = RunProgram(VANTOR_CLI, {"--table", "--side-dir", dir / "exports", "--output-dir", dir / "exports",
                                               "--json", dir / "run.json", "--csv", dir / "run.csv", "--unknown-summary", sample});
  ASSERT_EQ(plain.status, 0);
  ASSERT_EQ(with.status, 0);
  EXPECT_EQ(with.out.substr(0, plain.out.size()), plain.out);
  EXPECT_EQ(with.out.substr(plain.out.size()),
            "Unrecognised lines, most frequent shapes first (count, shape):\n"
            "7\t<player> is now a Sniper\n7\t<player> is now an Engineer\n5\t<player> is now a Marine\n5\tMatch begins!\n"
            "5\tTimelimit hit.\n2\t<player> is now a Cyborg\n2\t<player> is now an Assassin\n"
            "2\tTeams are balanced\n1\tVote passed.\n");
  for (const char* file : {"evening.html", "logoutput.txt", "ignored.txt", "chat.txt", "unknown.txt"}) {
    EXPECT_TRUE(ReadBytes(dir / (std::string("plain/") + file)) == ReadBytes(dir / (std::string("exports/") + file)))
        << file;
  }
  const Outcome valid = Python(
      "import json, sys, jsonschema\n"
      "schema = json.load(open(sys.argv[2]))\n"
      "jsonschema.Draft7Validator.check_schema(schema)\n"
      "doc = json.load(open(sys.argv[1], encoding='utf-8'))\n"
      "jsonschema.validate(doc, schema)\n"
      "kills = sum(cell['kills'] for cell in doc['kill_matrix'])\n"
      "frags = sum(m['counts']['frags'] for m in doc['members'])\n"
      "print(len(doc['members']), kills == frags, doc['unknown_lines'])\n",
      {dir / "run.json", SourcePath("docs/vantor-statistics.schema.json")});
  EXPECT_EQ(valid.err, "");
  // Ten members; every player of the sample is a member, so the matrix holds
  // all their frags; the unknown lines are unknown.txt's rows.
  const std::string unknown = ReadBytes(dir / "plain/unknown.txt");
  const auto unknown_rows = std::count(unknown.begin(), unknown.end(), '\n') - 1;  // less the closing empty line
  EXPECT_EQ(valid.out, "10 True " + std::to_string(unknown_rows) + "\n");
}

// Analyses log (as game.log in dir) with one export option writing to file.
void ExportOf(const ScratchDir& dir, const std::string& log, const std::string& option, const std::string& file) {
  WriteBytes(dir / "game.log", log);
  const Outcome o =
      RunProgram(VANTOR_CLI, {"--side-dir", dir.path(), "--output-dir", dir.path(), option, dir / file, dir / "game.log"});
  ASSERT_EQ(o.status, 0) << o.err;
  ASSERT_EQ(o.err, "");
}

TEST(Exports, JsonOfASmallRunIsExact) {
  ScratchDir dir;
  ExportOf(dir,
           "^7Ren\xe9 got the BLUE flag!\r\n^7Bravo was railed by Ren\xe9\r\n^7Bravo cratered.\r\n"
           "^7Zed cratered.\r\n",
           "--json", "run.json");
  const std::string json = ReadBytes(dir / "run.json");
  const std::string expected_start =
      "{\n  \"format\": \"vantor-log-analyzer-statistics\",\n  \"version\": 1,\n  \"logs\": [\"" + (dir / "game.log") +
      "\"],\n  \"unknown_lines\": 0,\n  \"members\": [\n"
      "    {\"slot\": 1, \"name\": \"Bravo\", \"team\": \"Blue\",\n"
      "     \"counts\": {\"frags\": 0, \"deaths\": 2, \"suicides\": 1, \"flag_grabs\": 0, \"fc_defends\": 0, "
      "\"flag_captures\": 0, \"flag_defends\": 0, \"base_defends\": 0, \"fc_kills\": 0, \"sentry_kills\": 0},\n";
  EXPECT_EQ(json.substr(0, expected_start.size()), expected_start);
  const std::string reasons =
      "     \"team_reason\": {\"kind\": \"propagated\", \"team\": \"Blue\", \"pass\": 1, \"other\": \"Ren\xc3\xa9\", "
      "\"as_killer\": false, \"log\": 0, \"line\": 2}},\n";
  EXPECT_NE(json.find(reasons), std::string::npos) << json;
  const std::string end =
      "     \"team_reason\": {\"kind\": \"flag_event\", \"team\": \"Red\", \"flag_kind\": \"Flag Grab\", \"log\": 0, "
      "\"line\": 1}}\n  ],\n  \"non_members\": [\n    {\"name\": \"Zed\", \"team_reason\": {\"kind\": "
      "\"only_suicides\"}}\n  ],\n  \"kill_matrix\": [\n    {\"killer\": \"Ren\xc3\xa9\", \"victim\": \"Bravo\", "
      "\"kills\": 1}\n  ]\n}\n";
  ASSERT_GE(json.size(), end.size());
  EXPECT_EQ(json.substr(json.size() - end.size()), end);
}

TEST(Exports, CsvRoundTripsNamesWithCommasQuotesAndHighBytes) {
  ScratchDir dir;
  ExportOf(dir,
           "^7Al,pha got the BLUE flag!\r\n^7\"Q\"uote got the RED flag!\r\n^7Ren\xe9\x80 got the RED flag!\r\n"
           "^7\"Q\"uote was railed by Al,pha\r\n^7Ren\xe9\x80 was railed by Al,pha\r\n",
           "--csv", "run.csv");
  const std::string csv = ReadBytes(dir / "run.csv");
  EXPECT_EQ(csv.substr(0, 37), "slot,name,team,frags,deaths,suicides,");
  const Outcome read = Python(
      "import csv, sys\n"
      "rows = list(csv.reader(open(sys.argv[1], encoding='utf-8', newline='')))\n"
      "print(len(rows), len(rows[0]))\n"
      "for row in rows[1:]: print('|'.join(row[:5]))\n",
      {dir / "run.csv"});
  EXPECT_EQ(read.err, "");
  EXPECT_EQ(read.out,
            "4 55\n"
            "1|\"Q\"uote|Blue|0|1\n"
            "2|Ren\xc3\xa9\xe2\x82\xac|Blue|0|1\n"
            "3|Al,pha|Red|2|0\n");
}

}  // namespace
}  // namespace vantor::testing
