#include "stats/player_roster.h"

#include <vector>

#include "analysis/text_ops.h"
#include "events/message_rules.h"

namespace vantor {

void GetIndividualPlayers(const WorksheetList& killers, const WorksheetList& victims, WorksheetList& roster) {
  // Per pool id: not met yet, or met. The lists share one pool, so a name
  // has the same id as killer and as victim.
  std::vector<bool> met(roster.Pool().Size(), false);
  auto add = [&](TextId name) {
    if (met[name]) return;
    met[name] = true;
    if (!Contains(roster.Pool().Text(name), kSuicideKiller)) roster.AppendId(name);
  };
  for (TextId killer : killers.Ids()) add(killer);
  for (TextId victim : victims.Ids()) add(victim);
}

}  // namespace vantor
