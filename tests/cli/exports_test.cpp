// The exports of vantor-cli: JSON exact and valid against the documented
// schema, CSV byte for byte, and the unknown-line summary.

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "support/run_program.h"
#include "support/test_files.h"

namespace vantor::testing {
namespace {

// ",0" n times: the counts of a CSV row that are 0.
std::string Zeros(int n) { return n > 0 ? ",0" + Zeros(n - 1) : ""; }

// Analyses log (as log_name in dir) with one export option writing to file.
std::string ExportOf(const ScratchDir& dir, const std::string& log, const std::string& option,
                     const std::string& file = "", const std::string& log_name = "game.log") {
  WriteBytes(dir / log_name, log);
  std::vector<std::string> args = {"-q", "--side-dir", dir.path(), "--output-dir", dir.path(), option};
  if (!file.empty()) args.push_back(dir / file);
  args.push_back(dir / log_name);
  const Outcome o = RunProgram(VANTOR_CLI, args);
  EXPECT_EQ(o.status, 0);
  EXPECT_EQ(o.err, "");
  return o.out;
}

// Roster names of three characters or more become "<player>", the longer
// of two that start at one place, never inside a "<player>" already put
// in; the most frequent shapes come first, equal counts in text order.
TEST(Exports, UnknownSummaryCountsTheShapesOfUnrecognisedLines) {
  ScratchDir dir;
  EXPECT_EQ(ExportOf(dir,
                     "^1Alice^7 got the BLUE flag!\r\n^4Bravo^7 was railed by ^1Alice\r\n^7Zed cratered.\r\n"
                     "^7Alicea cratered.\r\n^7Al cratered.\r\n^7lay cratered.\r\n^7Zed is now a Sniper\r\n"
                     "^7Alice is now a Sniper\r\n^7Alicea joined Alice\r\n^7Al and lay play\r\n"
                     "^7Match begins!\r\n^7Match begins!\r\n^7Match begins!\r\n",
                     "--unknown-summary"),
            "Unrecognised lines, most frequent shapes first (count, shape):\n3\tMatch begins!\n"
            "2\t<player> is now a Sniper\n1\t<player> joined <player>\n1\tAl and <player> p<player>\n");
  // Twenty shapes at the most: of 21 seen once each, the last in text order is left out.
  std::string shapes, twenty = "Unrecognised lines, most frequent shapes first (count, shape):\n";
  for (char c = 'a'; c <= 'u'; ++c) {
    shapes += std::string("^7odd ") + c + "\r\n";
    if (c < 'u') twenty += std::string("1\todd ") + c + "\n";
  }
  EXPECT_EQ(ExportOf(dir, shapes, "--unknown-summary"), twenty);
}

TEST(Exports, JsonOfASmallRunIsExact) {
  ScratchDir dir;
  ExportOf(dir,
           "^7Ren\xe9 got the BLUE flag!\r\n^7Bravo was railed by Ren\xe9\r\n^7Bravo cratered.\r\n"
           "^7Zed cratered.\r\n",
           "--json", "run.json", "caf\xc3\xa9.log");  // a UTF-8 path stays as it is
  const std::string text = ReadBytes(dir / "run.json");
  const auto json = nlohmann::ordered_json::parse(text);
  EXPECT_EQ(text, json.dump(2) + "\n");
  EXPECT_EQ(json["version"], 2);
  EXPECT_EQ(json["logs"].dump(), "[\"" + (dir / "caf\xc3\xa9.log") + "\"]");
  EXPECT_EQ(json["unknown_lines"], 0);
  // clang-format off
  EXPECT_EQ(json["members"][0]["counts"].dump(), "{\"frags\":0,\"deaths\":2,\"suicides\":1,\"flag_grabs\":0,"
            "\"fc_defends\":0,\"flag_captures\":0,\"flag_defends\":0,\"base_defends\":0,\"fc_kills\":0,\"sentry_kills\":0}");
  EXPECT_EQ(json["members"][0]["team_reason"].dump(), "{\"kind\":\"propagated\",\"team\":\"Blue\",\"pass\":1,"
            "\"other\":\"Ren\xc3\xa9\",\"as_killer\":false,\"log\":0,\"line\":2}");
  EXPECT_EQ(json["members"][1]["team_reason"].dump(),
            "{\"kind\":\"flag_event\",\"team\":\"Red\",\"flag_kind\":\"Flag Grab\",\"log\":0,\"line\":1}");
  EXPECT_EQ(json["non_members"].dump(), "[{\"name\":\"Zed\",\"team_reason\":{\"kind\":\"only_suicides\"}}]");
  EXPECT_EQ(json["kill_matrix"].dump(), "[{\"killer\":\"Ren\xc3\xa9\",\"victim\":\"Bravo\",\"kills\":1}]");
  // A log without markers is one match, to its last line; no capture, a draw.
  const auto& match = json["matches"].at(0);
  EXPECT_EQ(match["first_line"].dump() + match["last_line"].dump() + match["ended"].dump() + match["winner"].dump(),
            "14\"end of the log\"\"draw\"");
  EXPECT_EQ(json["evening"]["awards"][0].dump(), "{\"award\":\"top_fragger\",\"title\":\"Top fragger\","
            "\"winners\":[\"Ren\xc3\xa9\"],\"value\":1.0,\"reason\":\"most frags: 1\"}");
  // clang-format on
  // Every field the schema lists, and no other (Debian's Python has python3-jsonschema).
  const std::string check =
      "import json, sys, jsonschema\n"
      "def strict(node):\n"
      "  if isinstance(node, dict) and 'properties' in node: node['additionalProperties'] = False\n"
      "  for child in node.values() if isinstance(node, dict) else node if isinstance(node, list) else []: "
      "strict(child)\n"
      "schema = json.load(open(sys.argv[2])); strict(schema)\n"
      "jsonschema.validate(json.load(open(sys.argv[1], encoding='utf-8')), schema)\n";
  const Outcome valid =
      RunProgram("/usr/bin/python3",
                 {"-c", check, dir / "run.json", DataPath("../../docs/vantor-statistics.schema.json")});
  EXPECT_EQ(valid.err, "");
  EXPECT_EQ(valid.status, 0);
}

// Quoted where a name holds a comma or a quote, an apostrophe before a
// name a spreadsheet would take for a formula, Windows-1252 as UTF-8.
TEST(Exports, CsvQuotesAwkwardNamesAndDisarmsFormulas) {
  ScratchDir dir;
  ExportOf(
      dir,
      "^7Al,pha got the BLUE flag!\r\n^7\"Q\"uote got the RED flag!\r\n^7Ren\xe9\x80 got the RED flag!\r\n"
      "^7=cmd got the RED flag!\r\n^7\"Q\"uote was railed by Al,pha\r\n^7Ren\xe9\x80 was railed by Al,pha\r\n"
      "^7=cmd was railed by Al,pha\r\n^7+cmd was railed by Al,pha\r\n^7-cmd was railed by Al,pha\r\n"
      "^7@cmd was railed by Al,pha\r\n^7\tcmd was railed by Al,pha\r\n",
      "--csv", "run.csv");
  const std::string header =
      "slot,name,team,frags,deaths,suicides,flag_grabs,fc_defends,flag_captures,flag_defends,base_defends,"
      "fc_kills,sentry_kills,Rocket Splash,Rocket Hit,Turret Grenade,Proximity Grenade,Hyperblaster,"
      "Homing Missile,MegaChaingun,Minigun,Laser Defense,Shrapnel Grenade,Kamikaze,Grenade,Lightning Gun,"
      "Plasmabomb,Sentry Killer,SK Splash,Super Shotgun,Sentry Rocket,Sentry Gun,Magnotron Grenade,"
      "Ion Fuser,Sniper Headshot,Sniper Rifle,Sniper Legshot,Rail Gun,Pipe Bomb,Pistol,Knife,Uzi,"
      "Goodyear Grenade,Handgrenade Hit,Handgrenade Splash,Disease,Plague Dart,Shotgun,"
      "Napalm Rocket Splash,Napalm Rocket Hit,Flamethrower,Flame Damage,Napalm Grenade,Freeze Gun,"
      "Gauntlet\r\n";
  // clang-format off
  EXPECT_EQ(ReadBytes(dir / "run.csv"), header +
            "1,\"\"\"Q\"\"uote\",Blue,0,1,0,1" + Zeros(48) + "\r\n" +
            "2,Ren\xc3\xa9\xe2\x82\xac,Blue,0,1,0,1" + Zeros(48) + "\r\n" +
            "3,'=cmd,Blue,0,1,0,1" + Zeros(48) + "\r\n" +
            "4,'+cmd,Blue,0,1" + Zeros(50) + "\r\n" +
            "5,'-cmd,Blue,0,1" + Zeros(50) + "\r\n" +
            "6,'@cmd,Blue,0,1" + Zeros(50) + "\r\n" +
            "7,'\tcmd,Blue,0,1" + Zeros(50) + "\r\n" +
            "8,\"Al,pha\",Red,7,0,0,1" + Zeros(30) + ",7" + Zeros(17) + "\r\n");
  // clang-format on
}

}  // namespace
}  // namespace vantor::testing
