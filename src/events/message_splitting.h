#pragma once
// Cutting the player names out of a recognised line. Each Cut function
// tests one rule against a line and says what it makes of it; each Split
// procedure does the same against row intRow of List1 and, on a match,
// appends the event, blanks the row and returns true.

#include <cstddef>
#include <string_view>

namespace vantor {

class Form1;
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
LineCut CutWeaponKill(std::string_view strLine, std::string_view strFragment,
                      std::string_view strSuffix, std::string_view strMethodName);
// "Owner<fragment>Destroyer." : the line's last character is never part of
// the destroyer's name.
LineCut CutSentry(std::string_view strLine, std::string_view strFragment);
// "Player<fragment>...": whatever follows the fragment is ignored.
LineCut CutFlag(std::string_view strLine, std::string_view strFragment, std::string_view strFlagAction);
// "Player<fragment>": recorded with the killer "Himself", method "Suicide".
LineCut CutSuicide(std::string_view strLine, std::string_view strFragment);

// The cut of one rule of the table, by its procedure.
LineCut CutByRule(const MessageRule& rule, std::string_view line);

// Appends the event of a cut to the worksheet's event lists.
void RecordCut(Form1& form, const LineCut& cut);

bool SplitKill(Form1& form, std::string_view strLine, std::string_view strFragment,
               std::string_view strMethodName, std::size_t intRow);
bool SplitWeaponKill(Form1& form, std::string_view strLine, std::string_view strFragment,
                     std::string_view strSuffix, std::string_view strMethodName,
                     std::size_t intRow);
bool SplitSentry(Form1& form, std::string_view strLine, std::string_view strFragment,
                 std::size_t intRow);
bool SplitFlag(Form1& form, std::string_view strLine, std::string_view strFragment,
               std::string_view strFlagAction, std::size_t intRow);
bool SplitSuicide(Form1& form, std::string_view strLine, std::string_view strFragment,
                  std::size_t intRow);

void subBlankLine(Form1& form, bool blnMatched, std::size_t intRow);

}  // namespace vantor
