// GetIndividualPlayers: the roster List7, the distinct killers and victims
// in order of first appearance, killers before victims.

#include <vector>

#include "analysis/form1.h"
#include "analysis/text_ops.h"
#include "events/message_rules.h"

namespace vantor {

void Form1::GetIndividualPlayers() {
  // Per pool id: not met yet, or met. The lists share one pool, so a name
  // has the same id as killer and as victim.
  std::vector<bool> met(List2.Pool().Size(), false);
  auto add = [&](TextId name) {
    if (met[name]) return;
    met[name] = true;
    // "Himself" marks a suicide, not a player; so does any name holding it.
    if (!Contains(List2.Pool().Text(name), kSuicideKiller)) List7.AppendId(name);
  };
  for (TextId killer : List2.Ids()) add(killer);
  for (TextId victim : List3.Ids()) add(victim);
}

}  // namespace vantor
