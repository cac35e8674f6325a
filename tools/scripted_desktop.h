#pragma once
// A desktop for the tools that drive the real windows: the file dialog
// answers with a given log, message boxes go to stderr, documents are not
// opened, and the program directory is a given (scratch) directory.

#include <QDialog>
#include <QFileDialog>
#include <QMessageBox>
#include <QString>
#include <QUrl>
#include <cstdio>

#include "ui/desktop.h"

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

}  // namespace vantor::tools
