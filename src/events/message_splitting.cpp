#include "events/message_splitting.h"

#include "analysis/form1.h"
#include "analysis/text_ops.h"
#include "events/message_rules.h"

namespace vantor {

namespace {

// Names of this length or shorter make a weapon kill unusable.
constexpr long long kShortestUsableName = 3;

void AppendKill(Form1& form, std::string_view killer, std::string_view victim,
                std::string_view method) {
  form.List3.Append(victim);
  form.List2.Append(killer);
  form.List4.Append(method);
}

long long Length(std::string_view s) { return static_cast<long long>(s.size()); }

}  // namespace

void subBlankLine(Form1& form, bool blnMatched, std::size_t intRow) {
  if (blnMatched) form.List1.Set(intRow, "");
}

bool SplitKill(Form1& form, std::string_view strLine, std::string_view strFragment,
               std::string_view strMethodName, std::size_t intRow) {
  const long long p = static_cast<long long>(Find(strLine, strFragment));
  if (p == 0) return false;
  const long long L = Length(strLine), F = Length(strFragment);
  AppendKill(form, Mid(strLine, p + F, L - (p + F) + 1), Left(strLine, p - 1), strMethodName);
  subBlankLine(form, true, intRow);
  return true;
}

bool SplitWeaponKill(Form1& form, std::string_view strLine, std::string_view strFragment,
                     std::string_view strSuffix, std::string_view strMethodName,
                     std::size_t intRow) {
  const long long s = static_cast<long long>(Find(strLine, strSuffix));
  const long long p = static_cast<long long>(Find(strLine, strFragment));
  if (p == 0 || s == 0) return false;
  const long long F = Length(strFragment);
  const std::string_view victim = Left(strLine, p - 1);
  // When the suffix stands less than two characters after the fragment the
  // killer's length is negative: the name is empty and the event dropped.
  const std::string_view killer = Mid(strLine, p + F, s - (p + F) - 2);
  if (Length(victim) > kShortestUsableName && Length(killer) > kShortestUsableName) {
    AppendKill(form, killer, victim, strMethodName);
  }
  subBlankLine(form, true, intRow);
  return true;
}

bool SplitSentry(Form1& form, std::string_view strLine, std::string_view strFragment,
                 std::size_t intRow) {
  const long long p = static_cast<long long>(Find(strLine, strFragment));
  if (p == 0) return false;
  const long long L = Length(strLine), F = Length(strFragment);
  // A line that ends with the fragment itself gives a negative length: the
  // destroyer's name is then empty.
  form.List10.Append(Mid(strLine, p + F, L - (p + F)));
  subBlankLine(form, true, intRow);
  return true;
}

bool SplitFlag(Form1& form, std::string_view strLine, std::string_view strFragment,
               std::string_view strFlagAction, std::size_t intRow) {
  const long long p = static_cast<long long>(Find(strLine, strFragment));
  if (p == 0) return false;
  form.List5.Append(Left(strLine, p - 1));
  form.List6.Append(strFlagAction);
  subBlankLine(form, true, intRow);
  return true;
}

bool SplitSuicide(Form1& form, std::string_view strLine, std::string_view strFragment,
                  std::size_t intRow) {
  const long long p = static_cast<long long>(Find(strLine, strFragment));
  if (p == 0) return false;
  AppendKill(form, kSuicideKiller, Left(strLine, p - 1), kSuicideMethod);
  subBlankLine(form, true, intRow);
  return true;
}

}  // namespace vantor
