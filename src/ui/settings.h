#pragma once
// The program's remembered directories, in the per-user settings store under
// application "Vantor Log Analyzer", section "Main". Values are kept exactly
// as given; an absent key reads as the empty string.

#include <QString>
#include <string_view>

namespace vantor {

QString ReadSetting(std::string_view key);
// Writes the value through to the store's file; the path of that file when
// it could not be written, else empty.
QString WriteSetting(std::string_view key, const QString& value);

// The directory the user was last told the side files go to, kept apart
// from "Main" (section "Notices", key "SideFileDirectory"); empty when the
// user was never told.
QString SideFileNoticeShown();
void RememberSideFileNoticeShown(const QString& dir);

// The season archive last chosen, kept apart from "Main" (section
// "Archive", key "Path"); empty when none was.
QString ArchivePath();
void RememberArchivePath(const QString& path);

}  // namespace vantor
