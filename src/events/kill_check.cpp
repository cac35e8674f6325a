// KillCheck: every line of List1 that a message rule recognises becomes an
// event and leaves List1; the unrecognised lines stay, in their order.

#include <vector>

#include "analysis/form1.h"
#include "events/message_matcher.h"
#include "stats/event_index.h"

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

  explicit RecognitionMemo(StringPool& pool) : pool_(pool) {}

  const Event& Of(TextId line) {
    if (line >= known_.size()) {
      known_.resize(pool_.Size(), false);
      events_.resize(pool_.Size());
    }
    if (!known_[line]) {
      events_[line] = Recognise(pool_.Text(line));
      known_[line] = true;
    }
    return events_[line];
  }

 private:
  Event Recognise(std::string_view line) {
    const LineCut cut = RecognizeLine(line).cut;
    return {cut.kind, pool_.Intern(cut.first), pool_.Intern(cut.second), pool_.Intern(cut.third)};
  }

  StringPool& pool_;
  std::vector<bool> known_;
  std::vector<Event> events_;
};

void Record(Form1& form, const RecognitionMemo::Event& event) {
  switch (event.kind) {
    case LineCut::Kind::kKill:
      form.List2.AppendId(event.first);
      form.List3.AppendId(event.second);
      form.List4.AppendId(event.third);
      break;
    case LineCut::Kind::kSentry: form.List10.AppendId(event.first); break;
    case LineCut::Kind::kFlag:
      form.List5.AppendId(event.first);
      form.List6.AppendId(event.second);
      break;
    case LineCut::Kind::kNoMatch:
    case LineCut::Kind::kConsumed: break;
  }
}

// The place and text of row's line go with its event, when places are kept.
void RecordSource(Form1& form, LineCut::Kind kind, std::size_t row, TextId line) {
  if (row >= form.List1Sources.size()) return;
  const EventSource source{form.List1Sources[row], line};
  switch (kind) {
    case LineCut::Kind::kKill: form.KillSources.push_back(source); break;
    case LineCut::Kind::kSentry: form.SentrySources.push_back(source); break;
    case LineCut::Kind::kFlag: form.FlagSources.push_back(source); break;
    case LineCut::Kind::kNoMatch:
    case LineCut::Kind::kConsumed: break;
  }
}

}  // namespace

void Form1::KillCheck() {
  events_.reset();
  RecognitionMemo memo(List1.Pool());
  std::vector<bool> kept(List1.Count());
  // One walk in row order: each row's event is recorded as the row is met,
  // and a row stays only when no rule recognised it and it is not blank.
  List1.RetainIf([&](std::size_t row) {
    const TextId line = List1.IdAt(row);
    const RecognitionMemo::Event& event = memo.Of(line);
    Record(*this, event);
    RecordSource(*this, event.kind, row, line);
    return kept[row] = event.kind == LineCut::Kind::kNoMatch && line != StringPool::kEmpty;
  });
  RetainSources(List1Sources, kept);
  List1Sources.shrink_to_fit();  // most rows were recognised: let their places go
}

}  // namespace vantor
