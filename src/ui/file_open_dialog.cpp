#include "ui/file_open_dialog.h"

#include <QFileDialog>

#include "ui/desktop.h"

namespace vantor {

namespace {

constexpr char kCaption[] = "Open";
constexpr char kLogFilter[] = "Log Files (*.log);;All Files (*)";

}  // namespace

void FileOpenDialog::ShowOpen(QWidget* owner, const QString& initial_dir) {
  QFileDialog dialog(owner, kCaption, initial_dir, kLogFilter);
  dialog.setAcceptMode(QFileDialog::AcceptOpen);
  dialog.setFileMode(QFileDialog::ExistingFile);
  const bool chosen = desktop_.Exec(dialog) == QDialog::Accepted;
  file_name_ = chosen ? dialog.selectedFiles().value(0) : QString();
}

}  // namespace vantor
