#include "events/rule_set.h"

#include <bitset>

namespace vantor {

namespace {

// The bytes that follow a space somewhere in a line. Every built-in rule's
// fragment and suffix starts with a space, so a rule whose second byte never
// follows a space in the line cannot match it.
using Followers = std::bitset<256>;

Followers FollowersOf(std::string_view line) {
  Followers seen;
  for (std::size_t at = line.find(' '); at != std::string_view::npos && at + 1 < line.size();
       at = line.find(' ', at + 1)) {
    seen.set(static_cast<unsigned char>(line[at + 1]));
  }
  return seen;
}

bool MayOccur(std::string_view text, const Followers& followers) {
  if (text.size() < 2 || text[0] != ' ') return true;  // no quick test: try the rule
  return followers.test(static_cast<unsigned char>(text[1]));
}

}  // namespace

RuleSet::RuleSet(std::span<const MessageRule> rules) {
  auto texts = std::make_shared<std::deque<std::string>>();
  const auto own = [&](std::string_view text) { return std::string_view(texts->emplace_back(text)); };
  for (MessageRule rule : rules) {
    rule.fragment = own(rule.fragment);
    rule.weapon_suffix = own(rule.weapon_suffix);
    rule.name_recorded = own(rule.name_recorded);
    rules_.push_back(rule);
  }
  texts_ = std::move(texts);
}

const RuleSet& RuleSet::BuiltIn() {
  static const RuleSet built_in(kMessageRules);
  return built_in;
}

Recognition RuleSet::Recognize(std::string_view line) const {
  const Followers followers = FollowersOf(line);
  for (const MessageRule& rule : rules_) {
    if (!MayOccur(rule.fragment, followers)) continue;
    if (!rule.weapon_suffix.empty() && !MayOccur(rule.weapon_suffix, followers)) continue;
    const LineCut cut = CutByRule(rule, line);
    if (cut.Matched()) return {&rule, cut};
  }
  return {};
}

}  // namespace vantor
