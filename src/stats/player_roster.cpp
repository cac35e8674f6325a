// GetIndividualPlayers: the roster List7, the distinct killers and victims
// in order of first appearance, killers before victims.

#include <string_view>
#include <unordered_set>

#include "analysis/form1.h"
#include "analysis/text_ops.h"
#include "events/message_rules.h"

namespace vantor {

void Form1::GetIndividualPlayers() {
  std::unordered_set<std::string_view> seen;
  auto add = [&](const std::string& name) {
    // "Himself" marks a suicide, not a player; so does any name holding it.
    if (Contains(name, kSuicideKiller)) return;
    if (seen.insert(name).second) List7.Append(name);
  };
  for (const std::string& killer : List2.Rows()) add(killer);
  for (const std::string& victim : List3.Rows()) add(victim);
}

}  // namespace vantor
