#pragma once
// The program's remembered directories, in the per-user settings store under
// application "Vantor Log Analyzer", section "Main". Values are kept exactly
// as given; an absent key reads as the empty string.

#include <QString>
#include <string_view>

namespace vantor {

QString ReadSetting(std::string_view key);
void WriteSetting(std::string_view key, const QString& value);

}  // namespace vantor
