#include "stats/run_record.h"

#include <unordered_set>
#include <utility>

namespace vantor {

bool RunRecord::FirstSlotOf(std::size_t slot) const {
  for (std::size_t s = 0; s < slot; ++s) {
    if (members[s].strPlayerName == members[slot].strPlayerName) return false;
  }
  return true;
}

namespace {

// The roster players in neither team, in roster order, each with why.
std::vector<RunRecord::NonMember> NonMembers(const Worksheet& sheet, const EventIndex& events) {
  std::unordered_set<TextId> member_ids(sheet.List8.Ids().begin(), sheet.List8.Ids().end());
  member_ids.insert(sheet.List9.Ids().begin(), sheet.List9.Ids().end());
  std::vector<RunRecord::NonMember> non_members;
  for (std::size_t i = 0; i < sheet.List7.Count(); ++i) {
    if (member_ids.count(sheet.List7.IdAt(i)) != 0) continue;
    non_members.push_back(
        {std::string(sheet.List7.At(i)), NonMemberReason(events, sheet.List7.At(i), sheet.List2)});
  }
  return non_members;
}

// Moves the kill events, as counted, into e (a large log has millions),
// and puts back those the counting left.
void TakeKillEvents(Worksheet& sheet, CountedEvents& e, const std::vector<bool>& keep) {
  e.killer = std::exchange(sheet.List2, WorksheetList(sheet.List2.SharedPool()));
  e.victim = std::exchange(sheet.List3, WorksheetList(sheet.List3.SharedPool()));
  e.method = std::exchange(sheet.List4, WorksheetList(sheet.List4.SharedPool()));
  sheet.List2.KeepPlaces(e.killer.KeepsPlaces());
  for (std::size_t m = 0; m < e.killer.Count(); ++m) {
    if (!keep[m]) continue;
    sheet.List2.AppendId(e.killer.IdAt(m), e.killer.PlaceAt(m));
    sheet.List3.AppendId(e.victim.IdAt(m));
    sheet.List4.AppendId(e.method.IdAt(m));
  }
}

}  // namespace

std::shared_ptr<const RunRecord> RecordRun(Worksheet& sheet, const EventIndex& events,
                                           const TallyTable& tally, const TeamReasons& reasons,
                                           const std::vector<bool>& keep, int passes) {
  sheet.AwaitDigests();
  auto run = std::make_shared<RunRecord>();
  run->files = sheet.SourceFiles;
  run->file_digests = sheet.SourceDigests;
  run->span_digests = sheet.SpanDigests;
  run->lines_read = sheet.LinesRead;
  run->members = tally;
  run->blue_count = sheet.List8.Count();
  run->slot_reasons = reasons.blue;
  run->slot_reasons.insert(run->slot_reasons.end(), reasons.red.begin(), reasons.red.end());
  run->non_members = NonMembers(sheet, events);
  CountedEvents& e = run->events;
  TakeKillEvents(sheet, e, keep);
  e.flag_text = sheet.List5;
  e.flag_action = sheet.List6;
  e.destroyer = sheet.List10;
  e.unknown = sheet.List1;
  run->markers = sheet.Markers;
  run->passes = passes;
  return run;
}

}  // namespace vantor
