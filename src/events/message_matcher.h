#pragma once
// Recognising a line: the first rule of the table that matches it wins.

#include <string_view>

#include "events/message_rules.h"
#include "events/message_splitting.h"

namespace vantor {

struct Recognition {
  const MessageRule* rule = nullptr;  // none: no rule matches
  LineCut cut;
};

// Tries the rules in table order, skipping at once those whose texts cannot
// occur in the line, and returns the first match: the same result as
// trying every rule in turn.
Recognition RecognizeLine(std::string_view line);

}  // namespace vantor
