#pragma once
// Cutting the player names out of a recognised line. Each procedure tests
// one rule against row intRow of List1; on a match it appends the event,
// blanks the row and returns true; otherwise it changes nothing.

#include <cstddef>
#include <string_view>

namespace vantor {

class Form1;

// "Victim <fragment>Killer": killer is everything after the fragment.
bool SplitKill(Form1& form, std::string_view strLine, std::string_view strFragment,
               std::string_view strMethodName, std::size_t intRow);
// "Victim <fragment>Killer's<suffix>": the two characters before the suffix
// are dropped unseen. A name of three characters or fewer on either side
// consumes the line without an event.
bool SplitWeaponKill(Form1& form, std::string_view strLine, std::string_view strFragment,
                     std::string_view strSuffix, std::string_view strMethodName,
                     std::size_t intRow);
// "Owner<fragment>Destroyer." : the line's last character is never part of
// the destroyer's name.
bool SplitSentry(Form1& form, std::string_view strLine, std::string_view strFragment,
                 std::size_t intRow);
// "Player<fragment>...": whatever follows the fragment is ignored.
bool SplitFlag(Form1& form, std::string_view strLine, std::string_view strFragment,
               std::string_view strFlagAction, std::size_t intRow);
// "Player<fragment>": recorded with the killer "Himself", method "Suicide".
bool SplitSuicide(Form1& form, std::string_view strLine, std::string_view strFragment,
                  std::size_t intRow);

void subBlankLine(Form1& form, bool blnMatched, std::size_t intRow);

}  // namespace vantor
