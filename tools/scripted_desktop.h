#pragma once
// A desktop for the tools that drive the real windows: the file dialog
// answers with a given log, message boxes go to stderr, documents are not
// opened, and the program directory is a given (scratch) directory.

#include <QDialog>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QSettings>
#include <QString>
#include <QTemporaryDir>
#include <QUrl>
#include <cstdio>

#include "report/report_path.h"
#include "ui/desktop.h"
#include "ui/display_stats.h"
#include "ui/settings.h"

namespace vantor::tools {

class ScriptedDesktop : public Desktop {
 public:
  ScriptedDesktop(QString log, QString program_dir)
      : log_(std::move(log)), program_dir_(std::move(program_dir)) {}

  int Exec(QDialog& dialog) override {
    if (auto* box = qobject_cast<QMessageBox*>(&dialog)) {
      std::fprintf(stderr, "message: %s\n", qPrintable(box->text()));
      return QMessageBox::Ok;
    }
    qobject_cast<QFileDialog*>(&dialog)->selectFile(log_);
    return QDialog::Accepted;
  }
  void OpenUrl(const QUrl&) override {}
  QString ProgramDirectory() const override { return program_dir_; }

 private:
  QString log_;
  QString program_dir_;
};

// The main window over a scripted desktop whose file dialog answers with
// log; settings, side files and reports stay in a scratch directory.
struct ScriptedSession {
  explicit ScriptedSession(const char* log_argument)
      : log(QFileInfo(QString::fromLocal8Bit(log_argument)).absoluteFilePath()),
        desktop(log, UseScratchSettings(scratch)),
        window(desktop) {}

  static QString UseScratchSettings(const QTemporaryDir& dir) {
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, dir.path());
    WriteSetting(kOutputDirSetting, dir.path());
    return dir.path();
  }

  QTemporaryDir scratch;
  QString log;
  ScriptedDesktop desktop;
  DisplayStats window;
};

}  // namespace vantor::tools
