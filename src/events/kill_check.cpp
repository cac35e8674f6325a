// KillCheck: every line of List1 that a message rule recognises becomes an
// event and leaves List1; the unrecognised lines stay, in their order.

#include "analysis/form1.h"
#include "events/message_rules.h"
#include "events/message_splitting.h"
#include "stats/event_index.h"

namespace vantor {

namespace {

bool ApplyRule(Form1& form, const MessageRule& rule, std::string_view line, std::size_t row) {
  switch (rule.procedure) {
    case Procedure::SplitWeaponKill:
      return SplitWeaponKill(form, line, rule.fragment, rule.weapon_suffix, rule.name_recorded, row);
    case Procedure::SplitKill:
      return SplitKill(form, line, rule.fragment, rule.name_recorded, row);
    case Procedure::SplitSentry:
      return SplitSentry(form, line, rule.fragment, row);
    case Procedure::SplitFlag:
      return SplitFlag(form, line, rule.fragment, rule.name_recorded, row);
    case Procedure::SplitSuicide:
      return SplitSuicide(form, line, rule.fragment, row);
  }
  return false;
}

}  // namespace

void Form1::KillCheck() {
  events_.reset();
  // Recognised rows are only blanked while the list is walked, so the rows
  // still to come keep their indexes; the sweep below removes them.
  const std::size_t n = List1.Count();
  for (std::size_t i = 0; i < n; ++i) {
    const std::string line = List1.At(i);
    for (const MessageRule& rule : kMessageRules) {
      if (ApplyRule(*this, rule, line, i)) break;
    }
  }
  List1.RetainIf([this](std::size_t row) { return !List1.At(row).empty(); });
}

}  // namespace vantor
