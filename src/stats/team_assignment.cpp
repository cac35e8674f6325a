// Team assignment: flag events seed the teams, then each propagation pass
// puts an opponent of a Blue member into Red and an opponent of a Red
// member into Blue, along each player's first deciding kill event.

#include <string>
#include <unordered_set>
#include <vector>

#include "analysis/form1.h"
#include "analysis/text_ops.h"
#include "stats/event_index.h"

namespace vantor {

namespace {

// Copies: the team lists grow during the pass.
using NameSet = std::unordered_set<std::string>;

NameSet Members(const WorksheetList& team) {
  const std::vector<std::string> rows = team.Rows();
  return NameSet(rows.begin(), rows.end());
}

}  // namespace

void Form1::SplitByColor() {
  const std::size_t n = List7.Count();
  if (strPlayerTeam.size() < n) strPlayerTeam.resize(n);
  if (tally.size() < n) tally.resize(n);
  for (std::size_t i = 0; i < n; ++i) {
    const FlagCredit flags = GetFlagInfo(List7.At(i));
    PlayerTally& slot = tally[i];
    slot.strPlayerName = List7.At(i);
    slot.intFlagDefends = flags.counts[Index(FlagKind::FlagDefense)];
    slot.intBaseDefends = flags.counts[Index(FlagKind::BaseDefense)];
    slot.intFCKills = flags.counts[Index(FlagKind::FCFrag)];
    slot.intFCDefends = flags.counts[Index(FlagKind::FCDefense)];
    slot.intFlagGrabs = flags.counts[Index(FlagKind::FlagGrab)];
    slot.intFlagCaptures = flags.counts[Index(FlagKind::FlagCapture)];
    // The colour that stays is the one of the last kind asked for that
    // credited a coloured event.
    for (std::string_view colour : flags.colours) {
      if (!colour.empty()) strPlayerTeam[i] = colour;
    }
  }
  for (std::size_t i = 0; i < n; ++i) {
    if (strPlayerTeam[i] == kBlue) List8.Append(tally[i].strPlayerName);
    if (strPlayerTeam[i] == kRed) List9.Append(tally[i].strPlayerName);
  }
}

void Form1::subCheckTeam() {
  // Members appended during this pass become known only in the next one.
  const NameSet blue = Members(List8);
  const NameSet red = Members(List9);
  const EventIndex& events = Events();
  const std::size_t roster = List7.Count();
  for (std::size_t i = 0; i < roster; ++i) {
    const std::string name = List7.At(i);
    if (blue.count(name) != 0 || red.count(name) != 0) continue;
    const auto id = events.Find(name);
    if (!id) continue;
    const auto opponent = events.Player(*id).first_opponent;
    if (!opponent) continue;
    const std::string& other = events.Name(*opponent);
    if (blue.count(other) != 0) List9.Append(name);
    if (red.count(other) != 0) List8.Append(name);
  }
}

}  // namespace vantor
