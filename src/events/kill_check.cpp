#include "events/kill_check.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdint>
#include <future>
#include <system_error>
#include <thread>
#include <vector>

#include "analysis/worker_threads.h"

namespace vantor {

namespace {

// What the rules make of each distinct line, worked out once: a log repeats
// the same obituaries over and over, and the same line always gives the
// same event. Names are kept as ids of the worksheet's pool.
class RecognitionMemo {
 public:
  struct Event {
    LineCut::Kind kind = LineCut::Kind::kNoMatch;
    TextId first = StringPool::kEmpty, second = StringPool::kEmpty, third = StringPool::kEmpty;
  };

  // Every line of the worksheet is in the pool already: sized for them all.
  RecognitionMemo(const RuleSet& rules, StringPool& pool)
      : rules_(rules), pool_(pool), known_(pool.Size(), 0), events_(pool.Size()) {}

  // Recognises the lines not recognised before, in order. The rules are
  // tried, and the names looked up among the texts the pool holds, on every
  // core; then the names not found join the pool one line after the other,
  // as if each line were recognised in turn.
  void RecogniseAll(const std::vector<TextId>& lines) {
    std::vector<TextId> fresh;
    for (const TextId line : lines) {
      if (known_[line]) continue;
      known_[line] = 1;
      fresh.push_back(line);
    }
    LargeVector<LineCut> cuts(fresh.size());
    const std::size_t ranges = RangesFor(fresh.size());
    SideBySide(ranges, [&](std::size_t r) {
      for (std::size_t i = RangeOf(fresh.size(), r, ranges).begin; i < RangeOf(fresh.size(), r, ranges).end;
           ++i) {
        const LineCut cut = rules_.Recognize(pool_.Text(fresh[i])).cut;
        cuts[i] = cut;
        events_[fresh[i]] = {cut.kind, pool_.Find(cut.first), pool_.Find(cut.second), pool_.Find(cut.third)};
      }
    });
    // A name the pool did not hold is interned; an earlier line may have added it since.
    const TextId missing = static_cast<TextId>(pool_.Size());
    for (std::size_t i = 0; i < fresh.size(); ++i) {
      Event& event = events_[fresh[i]];
      if (event.first == missing) event.first = pool_.Intern(cuts[i].first);
      if (event.second == missing) event.second = pool_.Intern(cuts[i].second);
      if (event.third == missing) event.third = pool_.Intern(cuts[i].third);
    }
  }
  // A line recognised before; any thread.
  const Event& Known(TextId line) const { return events_[line]; }

 private:
  const RuleSet& rules_;
  StringPool& pool_;
  LargeVector<std::uint8_t> known_;  // bytes, not bits: read for every row
  LargeVector<Event> events_;
};

// How many rows the kill (List2..List4), flag (List5, List6) and sentry
// (List10) lists hold: a marker's events_before, in that order.
using EventCounts = std::array<std::size_t, 3>;

std::size_t* CounterOf(EventCounts& counts, LineCut::Kind kind) {
  switch (kind) {
    case LineCut::Kind::kKill:
      return &counts[0];
    case LineCut::Kind::kFlag:
      return &counts[1];
    case LineCut::Kind::kSentry:
      return &counts[2];
    case LineCut::Kind::kNoMatch:
    case LineCut::Kind::kConsumed:
      break;
  }
  return nullptr;
}

// A stretch of List1's rows: the distinct lines it holds, in the order they
// first come, with how often each comes; the event rows it starts at; and,
// once its events are recorded, the rows that stay in List1.
struct Stretch {
  RowRange rows;
  std::vector<TextId> first_seen;
  std::vector<std::uint32_t> times;  // by id
  EventCounts before{};
  std::vector<TextId> stays;
  std::vector<EventSource> stay_places;  // when the list keeps places
};

// Which lines each range holds, on every core; then every distinct line
// is recognised once (names join the pool in the order their lines first
// come in List1), the events of each range are counted from how often its
// lines come, and room is made for them all: the ranges can then be filled
// side by side, each at its own place in the event lists.
std::vector<Stretch> RecogniseAndCount(Worksheet& sheet, RecognitionMemo& memo, std::size_t ranges) {
  const TextIds& lines = sheet.List1.Ids();
  std::vector<Stretch> cut(ranges);
  SideBySide(ranges, [&](std::size_t r) {
    Stretch& range = cut[r];
    range.rows = RangeOf(lines.size(), r, ranges);
    range.times.assign(sheet.List1.Pool().Size(), 0);
    for (std::size_t row = range.rows.begin; row < range.rows.end; ++row) {
      if (range.times[lines[row]]++ == 0) range.first_seen.push_back(lines[row]);
    }
  });
  std::vector<TextId> first_seen;
  for (const Stretch& range : cut)
    first_seen.insert(first_seen.end(), range.first_seen.begin(), range.first_seen.end());
  memo.RecogniseAll(first_seen);
  EventCounts counts = {sheet.List2.Count(), sheet.List5.Count(), sheet.List10.Count()};
  const EventCounts start = counts;
  for (Stretch& range : cut) {
    range.before = counts;
    for (const TextId line : range.first_seen) {
      if (std::size_t* counter = CounterOf(counts, memo.Known(line).kind)) *counter += range.times[line];
    }
    range.times = {};
  }
  for (WorksheetList* list : {&sheet.List2, &sheet.List3, &sheet.List4}) list->Grow(counts[0] - start[0]);
  for (WorksheetList* list : {&sheet.List5, &sheet.List6}) list->Grow(counts[1] - start[1]);
  sheet.List10.Grow(counts[2] - start[2]);
  return cut;
}

void Record(Worksheet& sheet, const RecognitionMemo::Event& event, const EventSource& source,
            EventCounts& at) {
  switch (event.kind) {
    case LineCut::Kind::kKill:
      sheet.List2.SetIdAt(at[0], event.first, source);
      sheet.List3.SetIdAt(at[0], event.second);
      sheet.List4.SetIdAt(at[0]++, event.third);
      break;
    case LineCut::Kind::kSentry:
      sheet.List10.SetIdAt(at[2]++, event.first, source);
      break;
    case LineCut::Kind::kFlag:
      sheet.List5.SetIdAt(at[1], event.first, source);
      sheet.List6.SetIdAt(at[1]++, event.second);
      break;
    case LineCut::Kind::kNoMatch:
    case LineCut::Kind::kConsumed:
      break;
  }
}

// The row at which each marker learns how many events each list holds: its
// kept_before, or a later marker's before it, as the markers are met in
// order while the rows go by.
std::vector<std::size_t> MarkerRows(const Worksheet& sheet) {
  std::vector<std::size_t> rows;
  std::size_t row = 0;
  for (const MarkerPlace& marker : sheet.Markers) rows.push_back(row = std::max(row, marker.kept_before));
  return rows;
}

// Records the events of a range's rows in place, and keeps the rows that
// stay in List1: those no rule recognised that are not blank.
void FillRange(Worksheet& sheet, const RecognitionMemo& memo, const std::vector<std::size_t>& marker_rows,
               Stretch& range) {
  const WorksheetList& lines = sheet.List1;
  EventCounts at = range.before;
  auto marker = std::lower_bound(marker_rows.begin(), marker_rows.end(), range.rows.begin);
  for (std::size_t row = range.rows.begin; row < range.rows.end; ++row) {
    for (; marker != marker_rows.end() && *marker <= row; ++marker)
      sheet.Markers[static_cast<std::size_t>(marker - marker_rows.begin())].events_before = at;
    const TextId line = lines.IdAt(row);
    const RecognitionMemo::Event& event = memo.Known(line);
    const EventSource source{lines.PlaceAt(row).place, line};
    Record(sheet, event, source, at);
    if (event.kind != LineCut::Kind::kNoMatch || line == StringPool::kEmpty) continue;
    range.stays.push_back(line);
    if (lines.KeepsPlaces()) range.stay_places.push_back(lines.PlaceAt(row));
  }
}

}  // namespace

void KillCheck(const RuleSet& rules, Worksheet& sheet) {
  WorksheetList& lines = sheet.List1;
  RecognitionMemo memo(rules, lines.Pool());
  // A core that still hashes the logs (for the summary or the archive) is left to it.
  const bool hashing =
      std::any_of(sheet.PendingDigests.begin(), sheet.PendingDigests.end(), [](const auto& pending) {
        return pending.wait_for(std::chrono::seconds(0)) == std::future_status::timeout;
      });
  const std::size_t cores = WorkerThreads() - (!hashing || WorkerThreads() == 1 ? 0 : 1);
  const std::size_t ranges = std::max<std::size_t>(1, std::min<std::size_t>(cores, lines.Count()));
  std::vector<Stretch> cut = RecogniseAndCount(sheet, memo, ranges);
  const std::vector<std::size_t> marker_rows = MarkerRows(sheet);
  SideBySide(cut.size(), [&](std::size_t r) { FillRange(sheet, memo, marker_rows, cut[r]); });
  // Markers after the last row learn the totals.
  const EventCounts totals = {sheet.List2.Count(), sheet.List5.Count(), sheet.List10.Count()};
  for (std::size_t m = 0; m < marker_rows.size(); ++m) {
    if (marker_rows[m] >= lines.Count()) sheet.Markers[m].events_before = totals;
  }
  // Most rows were recognised: the list is made anew from those that stay.
  lines.Clear();
  lines.ShrinkToFit();
  for (const Stretch& range : cut) {
    for (std::size_t i = 0; i < range.stays.size(); ++i)
      lines.AppendId(range.stays[i], i < range.stay_places.size() ? range.stay_places[i] : EventSource{});
  }
}

}  // namespace vantor
