#pragma once
// The rule table of the message classifier: the game's message texts, in
// the order they are tried. The first rule that matches a line wins.

#include <array>
#include <cstddef>
#include <string_view>

namespace vantor {

enum class Procedure { SplitWeaponKill, SplitKill, SplitSentry, SplitFlag, SplitSuicide };

struct MessageRule {
  int number;  // the rule's place in the matching order
  Procedure procedure;
  std::string_view fragment;       // must occur in the line
  std::string_view weapon_suffix;  // must also occur; SplitWeaponKill only
  std::string_view name_recorded;  // method or flag action; empty for sentries
};

inline constexpr std::size_t kRuleCount = 73;
extern const std::array<MessageRule, kRuleCount> kMessageRules;

inline constexpr std::string_view kSuicideKiller = "Himself";
inline constexpr std::string_view kSuicideMethod = "Suicide";

}  // namespace vantor
