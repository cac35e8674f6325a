// RecordRun: what GetIndivStats counted, kept for the exports and the
// details window, taken from the lists as the counting left them.

#include "stats/run_record.h"

#include <unordered_set>
#include <utility>

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
TeamReason NonMemberReason(const EventIndex& events, std::string_view name, const EventSources& kill_sources) {
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
  if (player.first_row < kill_sources.size()) reason.line = kill_sources[player.first_row].place;
  return reason;
}

// The roster players in neither team, in roster order, each with why.
std::vector<RunRecord::NonMember> NonMembers(const Form1& form, const EventIndex& events) {
  std::unordered_set<TextId> member_ids(form.List8.Ids().begin(), form.List8.Ids().end());
  member_ids.insert(form.List9.Ids().begin(), form.List9.Ids().end());
  std::vector<RunRecord::NonMember> non_members;
  for (std::size_t i = 0; i < form.List7.Count(); ++i) {
    if (member_ids.count(form.List7.IdAt(i)) != 0) continue;
    non_members.push_back({form.List7.At(i), NonMemberReason(events, form.List7.At(i), form.KillSources)});
  }
  return non_members;
}

// Moves the kill events, as counted, into e (a large log has millions),
// and puts back those the counting left: the same rows, in the same order,
// as removing the counted ones would leave.
void TakeKillEvents(Form1& form, CountedEvents& e, const std::vector<bool>& keep) {
  e.killer = form.List2.TakeIds();
  e.victim = form.List3.TakeIds();
  e.method = form.List4.TakeIds();
  e.kill_sources = std::exchange(form.KillSources, {});
  for (std::size_t m = 0; m < e.killer.size(); ++m) {
    if (!keep[m]) continue;
    form.List2.AppendId(e.killer[m]);
    form.List3.AppendId(e.victim[m]);
    form.List4.AppendId(e.method[m]);
    if (m < e.kill_sources.size()) form.KillSources.push_back(e.kill_sources[m]);
  }
}

}  // namespace

void Form1::RecordRun(std::size_t nB, const std::vector<bool>& keep) {
  auto run = std::make_shared<RunRecord>();
  run->files = SourceFiles;
  run->members = tally;
  run->blue_count = nB;
  run->slot_reasons = List8Reasons;
  run->slot_reasons.insert(run->slot_reasons.end(), List9Reasons.begin(), List9Reasons.end());
  run->non_members = NonMembers(*this, Events());
  CountedEvents& e = run->events;
  e.pool = List1.SharedPool();
  TakeKillEvents(*this, e, keep);
  events_.reset();
  e.flag_text = List5.Ids();
  e.flag_action = List6.Ids();
  e.flag_sources = FlagSources;
  e.destroyer = List10.Ids();
  e.sentry_sources = SentrySources;
  e.unknown = List1.Ids();
  last_run_ = std::move(run);
}

}  // namespace vantor
