// RecordRun: what GetIndivStats counted, kept for the exports and the
// details window before the counted events are removed from the lists.

#include "stats/run_record.h"

#include <unordered_set>

#include "analysis/form1.h"
#include "stats/event_index.h"

namespace vantor {

bool RunRecord::FirstSlotOf(std::size_t slot) const {
  for (std::size_t s = 0; s < slot; ++s) {
    if (members[s].strPlayerName == members[slot].strPlayerName) return false;
  }
  return true;
}

namespace {

// Why a roster player stands in neither team.
TeamReason NonMemberReason(const EventIndex& events, std::string_view name, const SourceLines& kill_sources) {
  const auto id = events.Find(name);
  if (!id) return TeamReason::Because(TeamReason::Kind::kNoDecidingEvent);
  const EventIndex::PlayerEvents& player = events.Player(*id);
  if (!player.first_opponent) {
    return TeamReason::Because(player.suicides > 0 && player.frags == 0 && player.deaths == player.suicides
                                   ? TeamReason::Kind::kOnlySuicides
                                   : TeamReason::Kind::kNoDecidingEvent);
  }
  TeamReason reason = TeamReason::Because(TeamReason::Kind::kOpponentWithoutTeam);
  reason.other = events.Name(*player.first_opponent);
  reason.as_killer = player.first_as_killer;
  reason.row = player.first_row;
  if (player.first_row < kill_sources.size()) reason.line = kill_sources[player.first_row];
  return reason;
}

}  // namespace

void Form1::RecordRun(std::size_t nB) {
  if (!keep_provenance_) return;
  auto run = std::make_shared<RunRecord>();
  run->files = SourceFiles;
  run->members = tally;
  run->blue_count = nB;
  run->slot_reasons = List8Reasons;
  run->slot_reasons.insert(run->slot_reasons.end(), List9Reasons.begin(), List9Reasons.end());
  std::unordered_set<TextId> member_ids(List8.Ids().begin(), List8.Ids().end());
  member_ids.insert(List9.Ids().begin(), List9.Ids().end());
  for (std::size_t i = 0; i < List7.Count(); ++i) {
    if (member_ids.count(List7.IdAt(i)) == 0) {
      run->non_members.push_back({List7.At(i), NonMemberReason(Events(), List7.At(i), KillSources)});
    }
  }
  CountedEvents& e = run->events;
  e.pool = List1.SharedPool();
  e.killer = List2.Ids();
  e.victim = List3.Ids();
  e.method = List4.Ids();
  e.kill_sources = KillSources;
  e.flag_text = List5.Ids();
  e.flag_action = List6.Ids();
  e.flag_sources = FlagSources;
  e.destroyer = List10.Ids();
  e.sentry_sources = SentrySources;
  e.unknown = List1.Ids();
  last_run_ = std::move(run);
}

}  // namespace vantor
