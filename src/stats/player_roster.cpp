#include "stats/player_roster.h"

#include <vector>

#include "analysis/text_ops.h"
#include "analysis/worker_threads.h"
#include "events/message_rules.h"

namespace vantor {

namespace {

// The names of a range of the killers followed by the victims, in the
// order they first come there.
std::vector<TextId> FirstComing(const WorksheetList& killers, const WorksheetList& victims, RowRange rows) {
  std::vector<bool> met(killers.Pool().Size(), false);
  std::vector<TextId> names;
  for (std::size_t row = rows.begin; row < rows.end; ++row) {
    const TextId name = row < killers.Count() ? killers.IdAt(row) : victims.IdAt(row - killers.Count());
    if (met[name]) continue;
    met[name] = true;
    names.push_back(name);
  }
  return names;
}

}  // namespace

// Ranges of the killers and then the victims are read side by side; joined
// in order, the names that first come in each give the roster in the order
// one pass would.
void GetIndividualPlayers(const WorksheetList& killers, const WorksheetList& victims, WorksheetList& roster) {
  const std::size_t rows = killers.Count() + victims.Count(), ranges = RangesFor(rows);
  std::vector<std::vector<TextId>> first(ranges);
  SideBySide(ranges,
             [&](std::size_t r) { first[r] = FirstComing(killers, victims, RangeOf(rows, r, ranges)); });
  // Per pool id: not met yet, or met. The lists share one pool, so a name
  // has the same id as killer and as victim.
  std::vector<bool> met(roster.Pool().Size(), false);
  for (const std::vector<TextId>& names : first) {
    for (const TextId name : names) {
      if (met[name]) continue;
      met[name] = true;
      if (!Contains(roster.Pool().Text(name), kSuicideKiller)) roster.AppendId(name);
    }
  }
}

}  // namespace vantor
