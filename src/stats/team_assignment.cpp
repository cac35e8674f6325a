// Team assignment: flag events seed the teams, then each propagation pass
// puts an opponent of a Blue member into Red and an opponent of a Red
// member into Blue, along each player's first deciding kill event.

#include <string>
#include <unordered_set>
#include <vector>

#include "analysis/form1.h"
#include "analysis/text_ops.h"
#include "stats/event_index.h"

namespace vantor {

namespace {

// Copies: the team lists grow during the pass.
using NameSet = std::unordered_set<std::string>;

NameSet Members(const WorksheetList& team) {
  const std::vector<std::string> rows = team.Rows();
  return NameSet(rows.begin(), rows.end());
}

std::optional<SourceLine> SourceAt(const EventSources& sources, std::size_t row) {
  if (row < sources.size()) return sources[row].place;
  return std::nullopt;
}

// The flag event that seeded a player's team: that of the last kind asked
// for that credited a coloured event, as the colour left behind is its.
TeamReason SeedReason(const FlagCredit& flags, const EventSources& flag_sources, std::string_view team) {
  TeamReason reason = TeamReason::Because(TeamReason::Kind::kFlagEvent, std::string(team));
  for (std::size_t k = 0; k < kFlagKindCount; ++k) {
    if (flags.colours[k].empty()) continue;
    reason.flag_kind = std::string(kFlagKindNames[k]);
    reason.row = flags.rows[k];
    reason.line = flags.rows[k] ? SourceAt(flag_sources, *flags.rows[k]) : std::nullopt;
  }
  return reason;
}

}  // namespace

void Form1::SplitByColor() {
  const std::size_t n = List7.Count();
  if (strPlayerTeam.size() < n) strPlayerTeam.resize(n);
  if (tally.size() < n) tally.resize(n);
  std::vector<FlagCredit> credits;
  credits.reserve(n);
  for (std::size_t i = 0; i < n; ++i) {
    const FlagCredit& flags = credits.emplace_back(GetFlagInfo(List7.At(i)));
    PlayerTally& slot = tally[i];
    slot.strPlayerName = List7.At(i);
    slot.intFlagDefends = flags.counts[Index(FlagKind::FlagDefense)];
    slot.intBaseDefends = flags.counts[Index(FlagKind::BaseDefense)];
    slot.intFCKills = flags.counts[Index(FlagKind::FCFrag)];
    slot.intFCDefends = flags.counts[Index(FlagKind::FCDefense)];
    slot.intFlagGrabs = flags.counts[Index(FlagKind::FlagGrab)];
    slot.intFlagCaptures = flags.counts[Index(FlagKind::FlagCapture)];
    // The colour that stays is the one of the last kind asked for that
    // credited a coloured event.
    for (std::string_view colour : flags.colours) {
      if (!colour.empty()) strPlayerTeam[i] = colour;
    }
  }
  propagation_pass_ = 0;
  for (std::size_t i = 0; i < n; ++i) {
    if (strPlayerTeam[i] != kBlue && strPlayerTeam[i] != kRed) continue;
    const bool blue = strPlayerTeam[i] == kBlue;
    AppendMember(blue ? List8 : List9, blue ? List8Reasons : List9Reasons, tally[i].strPlayerName,
                 SeedReason(credits[i], FlagSources, strPlayerTeam[i]));
  }
}

void Form1::AppendMember(WorksheetList& team, std::vector<TeamReason>& reasons, const std::string& name,
                         TeamReason reason) {
  team.Append(name);
  reasons.push_back(std::move(reason));
}

void Form1::subCheckTeam() {
  ++propagation_pass_;
  // Members appended during this pass become known only in the next one.
  const NameSet blue = Members(List8);
  const NameSet red = Members(List9);
  const EventIndex& events = Events();
  const std::size_t roster = List7.Count();
  for (std::size_t i = 0; i < roster; ++i) {
    const std::string name = List7.At(i);
    if (blue.count(name) != 0 || red.count(name) != 0) continue;
    const auto id = events.Find(name);
    if (!id) continue;
    const EventIndex::PlayerEvents& player = events.Player(*id);
    if (!player.first_opponent) continue;
    const std::string& other = events.Name(*player.first_opponent);
    auto reason = [&](std::string_view team) {
      return TeamReason{TeamReason::Kind::kPropagated, std::string(team), "", propagation_pass_, other,
                        player.first_as_killer, player.first_row, SourceAt(KillSources, player.first_row)};
    };
    if (blue.count(other) != 0) AppendMember(List9, List9Reasons, name, reason(kRed));
    if (red.count(other) != 0) AppendMember(List8, List8Reasons, name, reason(kBlue));
  }
}

}  // namespace vantor
