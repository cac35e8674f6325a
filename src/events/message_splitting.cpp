#include "events/message_splitting.h"

#include "analysis/text_ops.h"
#include "events/message_rules.h"

namespace vantor {

namespace {

using Kind = LineCut::Kind;

// Names of this length or shorter make a weapon kill unusable.
constexpr long long kShortestUsableName = 3;

long long Length(std::string_view s) { return static_cast<long long>(s.size()); }

LineCut Kill(std::string_view killer, std::string_view victim, std::string_view method) {
  return {Kind::kKill, killer, victim, method};
}

}  // namespace

LineCut CutKill(std::string_view strLine, std::string_view strFragment, std::string_view strMethodName) {
  const long long p = static_cast<long long>(Find(strLine, strFragment));
  if (p == 0) return {};
  const long long L = Length(strLine), F = Length(strFragment);
  return Kill(Mid(strLine, p + F, L - (p + F) + 1), Left(strLine, p - 1), strMethodName);
}

LineCut CutWeaponKill(std::string_view strLine, std::string_view strFragment, std::string_view strSuffix,
                      std::string_view strMethodName) {
  const long long s = static_cast<long long>(Find(strLine, strSuffix));
  if (s == 0) return {};
  const long long p = static_cast<long long>(Find(strLine, strFragment));
  if (p == 0) return {};
  const long long F = Length(strFragment);
  const std::string_view victim = Left(strLine, p - 1);
  // When the suffix stands less than two characters after the fragment the
  // killer's length is negative: the name is empty and the event dropped.
  const std::string_view killer = Mid(strLine, p + F, s - (p + F) - 2);
  if (Length(victim) > kShortestUsableName && Length(killer) > kShortestUsableName) {
    return Kill(killer, victim, strMethodName);
  }
  return {Kind::kConsumed, {}, {}, {}};
}

LineCut CutSentry(std::string_view strLine, std::string_view strFragment) {
  const long long p = static_cast<long long>(Find(strLine, strFragment));
  if (p == 0) return {};
  const long long L = Length(strLine), F = Length(strFragment);
  // A line that ends with the fragment itself gives a negative length: the
  // destroyer's name is then empty.
  return {Kind::kSentry, Mid(strLine, p + F, L - (p + F)), {}, {}};
}

LineCut CutFlag(std::string_view strLine, std::string_view strFragment, std::string_view strFlagAction) {
  const long long p = static_cast<long long>(Find(strLine, strFragment));
  if (p == 0) return {};
  return {Kind::kFlag, Left(strLine, p - 1), strFlagAction, {}};
}

LineCut CutSuicide(std::string_view strLine, std::string_view strFragment) {
  const long long p = static_cast<long long>(Find(strLine, strFragment));
  if (p == 0) return {};
  return Kill(kSuicideKiller, Left(strLine, p - 1), kSuicideMethod);
}

LineCut CutByRule(const MessageRule& rule, std::string_view line) {
  switch (rule.procedure) {
    case Procedure::SplitWeaponKill:
      return CutWeaponKill(line, rule.fragment, rule.weapon_suffix, rule.name_recorded);
    case Procedure::SplitKill:
      return CutKill(line, rule.fragment, rule.name_recorded);
    case Procedure::SplitSentry:
      return CutSentry(line, rule.fragment);
    case Procedure::SplitFlag:
      return CutFlag(line, rule.fragment, rule.name_recorded);
    case Procedure::SplitSuicide:
      return CutSuicide(line, rule.fragment);
  }
  return {};
}

}  // namespace vantor
