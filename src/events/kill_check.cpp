#include "events/kill_check.h"

#include <cstdint>
#include <vector>

namespace vantor {

namespace {

// What the rules make of each distinct line, worked out once: a log repeats
// the same obituaries over and over, and the same line always gives the
// same event. Names are kept as ids of the worksheet's pool.
class RecognitionMemo {
 public:
  struct Event {
    LineCut::Kind kind;
    TextId first, second, third;
  };

  // Every line of the worksheet is in the pool already: sized for them all.
  RecognitionMemo(const RuleSet& rules, StringPool& pool)
      : rules_(rules), pool_(pool), known_(pool.Size(), 0), events_(pool.Size()) {}

  const Event& Of(TextId line) {
    if (!known_[line]) {
      events_[line] = Recognise(pool_.Text(line));
      known_[line] = 1;
    }
    return events_[line];
  }

 private:
  Event Recognise(std::string_view line) {
    const LineCut cut = rules_.Recognize(line).cut;
    return {cut.kind, pool_.Intern(cut.first), pool_.Intern(cut.second), pool_.Intern(cut.third)};
  }

  const RuleSet& rules_;
  StringPool& pool_;
  std::vector<std::uint8_t> known_;  // bytes, not bits: read for every row
  std::vector<Event> events_;
};

void Record(Worksheet& sheet, const RecognitionMemo::Event& event, const EventSource& source) {
  switch (event.kind) {
    case LineCut::Kind::kKill:
      sheet.List2.AppendId(event.first, source);
      sheet.List3.AppendId(event.second);
      sheet.List4.AppendId(event.third);
      break;
    case LineCut::Kind::kSentry:
      sheet.List10.AppendId(event.first, source);
      break;
    case LineCut::Kind::kFlag:
      sheet.List5.AppendId(event.first, source);
      sheet.List6.AppendId(event.second);
      break;
    case LineCut::Kind::kNoMatch:
    case LineCut::Kind::kConsumed:
      break;
  }
}

// Each kind of event counted first, so that the event lists are made at
// their final size instead of growing (and copying themselves) as they fill.
void ReserveEventLists(Worksheet& sheet, RecognitionMemo& memo) {
  std::size_t kills = 0, sentries = 0, flags = 0;
  for (const TextId line : sheet.List1.Ids()) {
    const LineCut::Kind kind = memo.Of(line).kind;
    kills += kind == LineCut::Kind::kKill;
    sentries += kind == LineCut::Kind::kSentry;
    flags += kind == LineCut::Kind::kFlag;
  }
  for (WorksheetList* list : {&sheet.List2, &sheet.List3, &sheet.List4}) list->Reserve(list->Count() + kills);
  for (WorksheetList* list : {&sheet.List5, &sheet.List6}) list->Reserve(list->Count() + flags);
  sheet.List10.Reserve(sheet.List10.Count() + sentries);
}

// Each marker at or before row learns how many events each list holds then.
void CountEventsBefore(Worksheet& sheet, std::size_t row, std::size_t& next_marker) {
  for (; next_marker < sheet.Markers.size() && sheet.Markers[next_marker].kept_before <= row; ++next_marker) {
    sheet.Markers[next_marker].events_before = {sheet.List2.Count(), sheet.List5.Count(),
                                                sheet.List10.Count()};
  }
}

}  // namespace

void KillCheck(const RuleSet& rules, Worksheet& sheet) {
  WorksheetList& lines = sheet.List1;
  RecognitionMemo memo(rules, lines.Pool());
  ReserveEventLists(sheet, memo);
  std::size_t next_marker = 0;
  // One walk in row order: each row's event is recorded as the row is met,
  // and a row stays only when no rule recognised it and it is not blank.
  lines.RetainIf([&](std::size_t row) {
    CountEventsBefore(sheet, row, next_marker);
    const TextId line = lines.IdAt(row);
    const RecognitionMemo::Event& event = memo.Of(line);
    Record(sheet, event, {lines.PlaceAt(row).place, line});
    return event.kind == LineCut::Kind::kNoMatch && line != StringPool::kEmpty;
  });
  CountEventsBefore(sheet, static_cast<std::size_t>(-1), next_marker);
  lines.ShrinkToFit();  // most rows were recognised: let their places go
}

}  // namespace vantor
