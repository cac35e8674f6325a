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

QString SideFileNoticeShown() {
  const QSettings store(kApplication, kApplication);
  return store.value(kSideFileNoticeKey, QString()).toString();
}

void RememberSideFileNoticeShown(const QString& dir) {
  QSettings store(kApplication, kApplication);
  store.setValue(kSideFileNoticeKey, dir);
}

QString ArchivePath() {
  const QSettings store(kApplication, kApplication);
  return store.value(kArchivePathKey, QString()).toString();
}

void RememberArchivePath(const QString& path) {
  QSettings store(kApplication, kApplication);
  store.setValue(kArchivePathKey, path);
}

}  // namespace vantor
