#pragma once
// KillCheck: every line of List1 that a message rule recognises becomes an
// event row (List2..List4 a kill or suicide, List5/List6 a flag event,
// List10 a destroyed sentry gun) and leaves List1; the unrecognised lines
// stay, in their order. An event row keeps its line's place and text.

#include "analysis/worksheet.h"
#include "events/rule_set.h"

namespace vantor {

void KillCheck(const RuleSet& rules, Worksheet& sheet);

}  // namespace vantor
