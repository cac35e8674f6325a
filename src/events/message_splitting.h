#pragma once
// Cutting the player names out of a recognised line. Each Cut function
// tests one rule against a line and says what it makes of it; the rule's
// procedure (SplitKill, SplitWeaponKill, ...) chooses the function.

#include <string_view>

namespace vantor {

struct MessageRule;

// What one message rule makes of a line. The texts view the line or the
// rule table.
struct LineCut {
  enum class Kind {
    kNoMatch,   // the rule does not apply
    kConsumed,  // the rule applies, but the line gives no event
    kKill,      // first: killer ("Himself" for a suicide), second: victim, third: method
    kSentry,    // first: the destroyer of a sentry gun
    kFlag,      // first: the player text, second: the flag action
  };
  Kind kind = Kind::kNoMatch;
  std::string_view first, second, third;

  bool Matched() const { return kind != Kind::kNoMatch; }
};

// "Victim <fragment>Killer": killer is everything after the fragment.
LineCut CutKill(std::string_view strLine, std::string_view strFragment, std::string_view strMethodName);
// "Victim <fragment>Killer's<suffix>": the two characters before the suffix
// are dropped unseen. A name of three characters or fewer on either side
// consumes the line without an event.
LineCut CutWeaponKill(std::string_view strLine, std::string_view strFragment, std::string_view strSuffix,
                      std::string_view strMethodName);
// "Owner<fragment>Destroyer." : the line's last character is never part of
// the destroyer's name.
LineCut CutSentry(std::string_view strLine, std::string_view strFragment);
// "Player<fragment>...": whatever follows the fragment is ignored.
LineCut CutFlag(std::string_view strLine, std::string_view strFragment, std::string_view strFlagAction);
// "Player<fragment>": recorded with the killer "Himself", method "Suicide".
LineCut CutSuicide(std::string_view strLine, std::string_view strFragment);

// The cut of one rule of the table, by its procedure.
LineCut CutByRule(const MessageRule& rule, std::string_view line);

}  // namespace vantor
