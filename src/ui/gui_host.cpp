#include "ui/gui_host.h"

#include <QAction>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMessageBox>
#include <QProgressBar>
#include <QPushButton>
#include <QStandardPaths>
#include <QStringDecoder>
#include <QUrl>
#include <algorithm>
#include <limits>

#include "analysis/side_file_directory.h"
#include "ui/desktop.h"
#include "ui/file_open_dialog.h"
#include "ui/settings.h"

namespace vantor {

namespace {

constexpr char kTitle[] = "Vantor Log Analyzer";

// The bar counts in int; a larger range is cut off at the top.
int BarPosition(std::int64_t value) {
  return static_cast<int>(std::clamp<std::int64_t>(value, 0, std::numeric_limits<int>::max()));
}

// Messages name paths and the system's reasons, both in the local encoding.
QString FromLocalBytes(std::string_view bytes) {
  return QFile::decodeName(QByteArray(bytes.data(), static_cast<qsizetype>(bytes.size())));
}

}  // namespace

QString FromLogBytes(std::string_view bytes) {
  QStringDecoder decoder("windows-1252");
  const QByteArrayView view(bytes.data(), static_cast<qsizetype>(bytes.size()));
  return decoder.isValid() ? decoder.decode(view) : QString::fromLatin1(view);
}

GuiHost::GuiHost(Desktop& desktop, HostControls controls)
    : desktop_(desktop), controls_(controls), maximum_(controls.prgProgress->maximum()) {}

std::string GuiHost::ChosenLogPath() const {
  return QFile::encodeName(controls_.cmnFile->FileName()).toStdString();
}

bool GuiHost::AppendChecked() const { return controls_.mnuAppend->isChecked(); }

void GuiHost::SetProgressVisible(bool visible) { controls_.prgProgress->setVisible(visible); }

void GuiHost::SetProgressMaximum(std::int64_t maximum) {
  maximum_ = maximum;
  controls_.prgProgress->setMaximum(BarPosition(maximum));
}

void GuiHost::SetProgressValue(std::int64_t value) {
  controls_.prgProgress->setValue(BarPosition(value));
  // A run holds the one thread from start to end: let the window repaint,
  // but leave clicks and keys queued until the run is over.
  QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

void GuiHost::SetProcessCaption(std::string_view caption) {
  controls_.cmdProcess->setText(QString::fromUtf8(caption.data(), static_cast<qsizetype>(caption.size())));
}

void GuiHost::StatisticsFilled() {
  filled_ = table_;
  if (on_filled_) on_filled_();
}

void GuiHost::ReadingProgress(std::uint64_t bytes_read, std::uint64_t bytes_in_log) {
  QProgressBar* bar = *controls_.prgReading;
  if (bar == nullptr || bytes_in_log == 0) return;
  bar->setVisible(bytes_read < bytes_in_log);
  bar->setValue(static_cast<int>(std::min(bytes_read, bytes_in_log) * 1000 / bytes_in_log));
  // Reading a large log takes a while: the window is painted meanwhile,
  // while clicks and keys wait until the run is over.
  QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

void GuiHost::ShowMessage(std::string_view text, MessageIcon icon) {
  QMessageBox box(icon == MessageIcon::kCritical ? QMessageBox::Critical : QMessageBox::NoIcon, kTitle,
                  FromLocalBytes(text), QMessageBox::Ok, controls_.owner);
  box.setTextFormat(Qt::PlainText);  // a path holding "<b>" is shown as it is
  desktop_.Exec(box);
}

std::string GuiHost::ReadSetting(std::string_view key) const {
  return QFile::encodeName(vantor::ReadSetting(key)).toStdString();
}

std::string GuiHost::ProgramDirectory() const {
  const std::string program_dir = QFile::encodeName(desktop_.ProgramDirectory()).toStdString();
  const SideFileDirectory side = ChooseSideFileDirectory(program_dir);
  if (side.path != program_dir) SayWhereSideFilesGo(side.path);
  return side.path;
}

void GuiHost::SayWhereSideFilesGo(const std::string& dir) const {
  // Said once: the settings remember it across sessions, until the place changes.
  if (SideFileNoticeShown() == FromLocalBytes(dir)) return;
  RememberSideFileNoticeShown(FromLocalBytes(dir));
  QMessageBox box(QMessageBox::Information, kTitle, FromLocalBytes(SideFileNotice(dir)), QMessageBox::Ok,
                  controls_.owner);
  box.setTextFormat(Qt::PlainText);  // a folder name is shown as it is, never as markup
  desktop_.Exec(box);
}

void GuiHost::OpenDocument(const std::string& path) {
  desktop_.OpenUrl(QUrl::fromLocalFile(FromLocalBytes(path)));
}

}  // namespace vantor
