#include "stats/team_assignment.h"

#include <unordered_set>

namespace vantor {

namespace {

// By pool id, whether the name stands in the team: a copy, as the team
// lists grow during the pass (the lists of a worksheet share one pool).
std::vector<bool> Members(const WorksheetList& team) {
  std::vector<bool> members(team.Pool().Size(), false);
  for (TextId name : team.Ids()) members[name] = true;
  return members;
}

// The place of an event row, when its list keeps places.
std::optional<SourceLine> PlaceOf(const WorksheetList& events, std::size_t row) {
  if (!events.KeepsPlaces() || row >= events.Count()) return std::nullopt;
  return events.PlaceAt(row).place;
}

// The flag event that seeded a player's team: that of the last kind asked
// for that credited a coloured event, as the colour left behind is its.
TeamReason SeedReason(const FlagCredit& flags, const WorksheetList& flag_events, std::string_view team) {
  TeamReason reason = TeamReason::Because(TeamReason::Kind::kFlagEvent, std::string(team));
  for (std::size_t k = 0; k < kFlagKindCount; ++k) {
    if (flags.colours[k].empty()) continue;
    reason.flag_kind = std::string(kFlagKindNames[k]);
    reason.row = flags.rows[k];
    reason.line = flags.rows[k] ? PlaceOf(flag_events, *flags.rows[k]) : std::nullopt;
  }
  return reason;
}

void AppendMember(Worksheet& sheet, TeamReasons& reasons, const std::string& name, TeamReason reason) {
  const bool blue = reason.team == kBlue;
  (blue ? sheet.List8 : sheet.List9).Append(name);
  (blue ? reasons.blue : reasons.red).push_back(std::move(reason));
}

}  // namespace

void SplitByColor(Worksheet& sheet, const EventIndex& events, TallyTable& tally, TeamColours& strPlayerTeam,
                  TeamReasons& reasons) {
  const std::size_t n = sheet.List7.Count();
  if (strPlayerTeam.size() < n) strPlayerTeam.resize(n);
  if (tally.size() < n) tally.resize(n);
  std::vector<FlagCredit> credits;
  credits.reserve(n);
  for (std::size_t i = 0; i < n; ++i) {
    const FlagCredit& flags = credits.emplace_back(events.FlagsOf(sheet.List7.IdAt(i), sheet.List7.At(i)));
    tally[i].strPlayerName = sheet.List7.At(i);
    for (const CountRow& count : kCounts) {
      if (count.flag) tally[i].*count.field = flags.counts[Index(*count.flag)];
    }
    // The colour that stays is the one of the last kind asked for that
    // credited a coloured event.
    for (std::string_view colour : flags.colours) {
      if (!colour.empty()) strPlayerTeam[i] = colour;
    }
  }
  for (std::size_t i = 0; i < n; ++i) {
    if (strPlayerTeam[i] != kBlue && strPlayerTeam[i] != kRed) continue;
    AppendMember(sheet, reasons, tally[i].strPlayerName,
                 SeedReason(credits[i], sheet.List5, strPlayerTeam[i]));
  }
}

void subCheckTeam(Worksheet& sheet, const EventIndex& events, int pass, TeamReasons& reasons) {
  const std::vector<bool> blue = Members(sheet.List8);
  const std::vector<bool> red = Members(sheet.List9);
  const std::size_t roster = sheet.List7.Count();
  for (std::size_t i = 0; i < roster; ++i) {
    const TextId name_id = sheet.List7.IdAt(i);
    if (blue[name_id] || red[name_id]) continue;
    const auto id = events.Find(name_id);
    if (!id) continue;
    const EventIndex::PlayerEvents& player = events.Player(*id);
    if (!player.first_opponent) continue;
    const std::string name(sheet.List7.At(i));
    const std::string& other = events.Name(*player.first_opponent);
    const TextId other_id = events.TextOf(*player.first_opponent);
    auto reason = [&](std::string_view team) {
      return TeamReason{TeamReason::Kind::kPropagated,
                        std::string(team),
                        "",
                        pass,
                        other,
                        player.first_as_killer,
                        player.first_row,
                        PlaceOf(sheet.List2, player.first_row)};
    };
    if (other_id < blue.size() && blue[other_id]) AppendMember(sheet, reasons, name, reason(kRed));
    if (other_id < red.size() && red[other_id]) AppendMember(sheet, reasons, name, reason(kBlue));
  }
}

TeamReason NonMemberReason(const EventIndex& events, std::string_view name, const WorksheetList& killers) {
  const auto id = events.Find(name);
  if (!id) return TeamReason::Because(TeamReason::Kind::kNoDecidingEvent);
  const EventIndex::PlayerEvents& player = events.Player(*id);
  if (!player.first_opponent) {
    const bool only_suicides = player.suicides > 0 && player.frags == 0 && player.deaths == player.suicides;
    return TeamReason::Because(only_suicides ? TeamReason::Kind::kOnlySuicides
                                             : TeamReason::Kind::kNoDecidingEvent);
  }
  TeamReason reason = TeamReason::Because(TeamReason::Kind::kOpponentWithoutTeam);
  reason.other = events.Name(*player.first_opponent);
  reason.as_killer = player.first_as_killer;
  reason.row = player.first_row;
  reason.line = PlaceOf(killers, player.first_row);
  return reason;
}

}  // namespace vantor
