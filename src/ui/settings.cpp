#include "ui/settings.h"

#include <QSettings>

namespace vantor {

namespace {

constexpr char kApplication[] = "Vantor Log Analyzer";
constexpr char kSection[] = "Main";
constexpr char kSideFileNoticeKey[] = "Notices/SideFileDirectory";
constexpr char kArchivePathKey[] = "Archive/Path";

QString KeyPath(std::string_view key) {
  return QString(kSection) + '/' + QString::fromUtf8(key.data(), static_cast<qsizetype>(key.size()));
}

}  // namespace

QString ReadSetting(std::string_view key) {
  const QSettings store(kApplication, kApplication);
  return store.value(KeyPath(key), QString()).toString();
}

QString WriteSetting(std::string_view key, const QString& value) {
  QSettings store(kApplication, kApplication);
  store.setValue(KeyPath(key), value);
  store.sync();
  return store.status() == QSettings::NoError ? QString() : store.fileName();
}

namespace {

// A value kept outside "Main" (the program's own memory, not a setting).
QString Remembered(const char* key) {
  const QSettings store(kApplication, kApplication);
  return store.value(key, QString()).toString();
}

void Remember(const char* key, const QString& value) {
  QSettings store(kApplication, kApplication);
  store.setValue(key, value);
}

}  // namespace

QString SideFileNoticeShown() { return Remembered(kSideFileNoticeKey); }
void RememberSideFileNoticeShown(const QString& dir) { Remember(kSideFileNoticeKey, dir); }
QString ArchivePath() { return Remembered(kArchivePathKey); }
void RememberArchivePath(const QString& path) { Remember(kArchivePathKey, path); }

}  // namespace vantor
