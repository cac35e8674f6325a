#include "ui/gui_host.h"

#include <QAction>
#include <QCoreApplication>
#include <QDesktopServices>
#include <QMessageBox>
#include <QProgressBar>
#include <QPushButton>
#include <QSettings>
#include <QStringDecoder>
#include <QUrl>

namespace vantor {

QString FromLogBytes(const std::string& bytes) {
  QStringDecoder decoder("windows-1252");
  if (!decoder.isValid()) return QString::fromLatin1(bytes.data(), static_cast<qsizetype>(bytes.size()));
  return decoder.decode(QByteArrayView(bytes.data(), static_cast<qsizetype>(bytes.size())));
}

GuiHost::GuiHost(QWidget* owner, QProgressBar* progress, QPushButton* process, QAction* append)
    : owner_(owner), progress_(progress), process_(process), append_(append) {}

bool GuiHost::AppendChecked() const { return append_->isChecked(); }

void GuiHost::SetProgressVisible(bool visible) { progress_->setVisible(visible); }

void GuiHost::SetProgressMaximum(std::int64_t maximum) {
  maximum_ = maximum;
  progress_->setMaximum(static_cast<int>(std::min<std::int64_t>(maximum, INT32_MAX)));
}

void GuiHost::SetProgressValue(std::int64_t value) {
  progress_->setValue(static_cast<int>(std::min<std::int64_t>(value, INT32_MAX)));
}

void GuiHost::SetProcessCaption(std::string_view caption) {
  process_->setText(QString::fromUtf8(caption.data(), static_cast<qsizetype>(caption.size())));
}

void GuiHost::ShowMessage(std::string_view text, MessageIcon icon) {
  QMessageBox box(icon == MessageIcon::kCritical ? QMessageBox::Critical : QMessageBox::NoIcon,
                  "Vantor Log Analyzer", FromLogBytes(std::string(text)), QMessageBox::Ok, owner_);
  box.exec();
}

std::string GuiHost::ReadSetting(std::string_view key) const {
  QSettings settings("Vantor Log Analyzer", "Vantor Log Analyzer");
  settings.beginGroup("Main");
  return settings.value(QString::fromUtf8(key.data(), static_cast<qsizetype>(key.size())), "")
      .toString()
      .toStdString();
}

std::string GuiHost::ProgramDirectory() const {
  return QCoreApplication::applicationDirPath().toStdString();
}

void GuiHost::OpenDocument(const std::string& path) {
  QDesktopServices::openUrl(QUrl::fromLocalFile(QString::fromStdString(path)));
}

}  // namespace vantor
