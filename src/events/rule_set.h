#pragma once
// A set of message rules in matching order: the first rule that matches a
// line wins. The built-in set holds the game's 73 messages; another set can
// be handed to the classifier without touching it.

#include <deque>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "events/message_rules.h"
#include "events/message_splitting.h"

namespace vantor {

struct Recognition {
  const MessageRule* rule = nullptr;  // none: no rule matches
  LineCut cut;
};

class RuleSet {
 public:
  // The rules in matching order; the set keeps its own copy of their texts.
  explicit RuleSet(std::span<const MessageRule> rules);
  // The game's messages, kMessageRules.
  static const RuleSet& BuiltIn();

  std::span<const MessageRule> Rules() const { return rules_; }

  // Tries the rules in order, skipping at once those whose texts cannot
  // occur in the line, and returns the first match: the same result as
  // trying every rule in turn.
  Recognition Recognize(std::string_view line) const;

 private:
  // Shared by copies, so that the rules' views stay valid.
  std::shared_ptr<const std::deque<std::string>> texts_;
  std::vector<MessageRule> rules_;
};

}  // namespace vantor
