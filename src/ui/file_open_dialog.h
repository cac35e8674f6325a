#pragma once
// The log file dialog of the main window. It remembers the full path of the
// file chosen last; a cancelled dialog leaves it empty, which the import
// takes as "no file chosen".

#include <QString>

class QWidget;

namespace vantor {

class Desktop;

class FileOpenDialog {
 public:
  explicit FileOpenDialog(Desktop& desktop) : desktop_(desktop) {}

  // Shows the modal dialog in initial_dir, offering "*.log" files first
  // and all files second.
  void ShowOpen(QWidget* owner, const QString& initial_dir);
  const QString& FileName() const { return file_name_; }
  // As if path had been chosen in the dialog (a log given on the command line).
  void Choose(const QString& path) { file_name_ = path; }

 private:
  Desktop& desktop_;
  QString file_name_;
};

}  // namespace vantor
