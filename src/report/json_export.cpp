// The JSON export (docs/json-schema.md), built with nlohmann::ordered_json
// so that fields come out in the documented order.

#include <nlohmann/json.hpp>

#include "report/run_outputs.h"
#include "report/windows1252.h"
#include "stats/awards.h"
#include "stats/evening.h"
#include "stats/matches.h"
#include "stats/provenance.h"

namespace vantor {

namespace {

using Json = nlohmann::ordered_json;

// A name or other text from a log (Windows-1252), as UTF-8.
Json Text(std::string_view log_bytes) { return Cp1252ToUtf8(log_bytes); }

constexpr const char* kReasonKinds[] = {"flag_event", "propagated", "no_deciding_event",
                                        "opponent_without_team", "only_suicides"};

Json Reason(const TeamReason& r) {
  Json j = {{"kind", kReasonKinds[static_cast<int>(r.kind)]}};
  if (!r.team.empty()) j["team"] = r.team;
  if (r.kind == TeamReason::Kind::kFlagEvent) j["flag_kind"] = r.flag_kind;
  if (r.kind == TeamReason::Kind::kPropagated) j["pass"] = r.pass;
  if (r.kind == TeamReason::Kind::kPropagated || r.kind == TeamReason::Kind::kOpponentWithoutTeam) {
    j["other"] = Text(r.other);
    j["as_killer"] = r.as_killer;
  }
  if (r.line) {
    j["log"] = static_cast<std::uint64_t>(r.line->file);
    j["line"] = static_cast<std::uint64_t>(r.line->line);
  }
  return j;
}

Json Counts(const CountValues& values) {
  Json j = Json::object();
  for (std::size_t k = 0; k < kCounts.size(); ++k) j[std::string(kCounts[k].export_name)] = values[k];
  return j;
}

Json Weapons(const std::array<Count, kWeaponCount>& weapons) {
  Json j = Json::object();
  for (std::size_t w = 0; w < kWeaponCount; ++w) j[std::string(kWeaponTable[w].method_name)] = weapons[w];
  return j;
}

Json Slot(std::size_t slot, const PlayerTally& t, std::string_view team) {
  return {{"slot", slot + 1},
          {"name", Text(t.strPlayerName)},
          {"team", team},
          {"counts", Counts(ValuesOf(t))},
          {"weapons", Weapons(t.weapons)}};
}

Json Awards(const std::vector<PlayerCounts>& players) {
  Json list = Json::array();
  for (const Award& award : GiveAwards(players)) {
    Json winners = Json::array();
    for (const std::string& name : award.winners) winners.push_back(Text(name));
    list.push_back({{"award", award.row->key},
                    {"title", award.row->title},
                    {"winners", winners},
                    {"value", award.value},
                    {"reason", award.Reason()}});
  }
  return list;
}

Json MatchJson(const Match& m) {
  Json members = Json::array();
  for (std::size_t s = 0; s < m.members.size(); ++s) members.push_back(Slot(s, m.members[s], m.TeamOf(s)));
  return {{"number", m.number},
          {"log", static_cast<std::uint64_t>(m.span.first.file)},
          {"first_line", static_cast<std::uint64_t>(m.span.first.line)},
          {"last_line", static_cast<std::uint64_t>(m.span.last.line)},
          {"ended", m.span.ended},
          {"score", {{"Blue", m.blue_score}, {"Red", m.red_score}}},
          {"winner", m.Winner()},
          {"totals", {{"Blue", Counts(m.Totals(true))}, {"Red", Counts(m.Totals(false))}}},
          {"members", members},
          {"awards", Awards(PlayersOf({m}))}};
}

Json Evening(const std::vector<Match>& matches) {
  const std::vector<PlayerCounts> players = PlayersOf(matches);
  Json list = Json::array();
  for (const PlayerCounts& p : players) {
    const auto ratio = p.FragsPerDeath();
    list.push_back({{"name", Text(p.name)},
                    {"matches", p.matches},
                    {"teams", p.teams},
                    {"counts", Counts(p.counts)},
                    {"frags_per_death", ratio ? Json(*ratio) : Json(nullptr)}});
  }
  return {{"players", list}, {"awards", Awards(players)}};
}

}  // namespace

void WriteJsonExport(std::ostream& out, const RunRecord& run) {
  Json j = {{"format", "vantor-log-analyzer-statistics"}, {"version", kJsonExportVersion}};
  Json& logs = j["logs"] = Json::array();
  for (const std::string& file : run.files) logs.push_back(PathToUtf8(file));
  j["unknown_lines"] = run.events.unknown.Count();
  Json& members = j["members"] = Json::array();
  for (std::size_t s = 0; s < run.members.size(); ++s) {
    members.push_back(Slot(s, run.members[s], run.TeamOf(s)));
    members.back()["team_reason"] = s < run.slot_reasons.size() ? Reason(run.slot_reasons[s]) : Json(nullptr);
  }
  Json& non_members = j["non_members"] = Json::array();
  for (const RunRecord::NonMember& m : run.non_members) {
    non_members.push_back({{"name", Text(m.name)}, {"team_reason", Reason(m.reason)}});
  }
  Json& matrix = j["kill_matrix"] = Json::array();
  for (const KillCount& k : KillMatrix(run)) {
    matrix.push_back({{"killer", Text(k.killer)}, {"victim", Text(k.victim)}, {"kills", k.kills}});
  }
  const std::vector<Match> matches = AnalyseMatches(run);
  Json& match_list = j["matches"] = Json::array();
  for (const Match& m : matches) match_list.push_back(MatchJson(m));
  j["evening"] = Evening(matches);
  out << j.dump(2, ' ', false, Json::error_handler_t::replace) << "\n";
}

}  // namespace vantor
