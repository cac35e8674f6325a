#include "ui/browse_directorys_only.h"

#include <QFileDialog>

#include "ui/desktop.h"

namespace vantor {

QString BrowseDirectorysOnly::BrowseForDirectory(QWidget* owner, const QString& title,
                                                 const QString& startPath) {
  QFileDialog dialog(owner, title, startPath);
  dialog.setFileMode(QFileDialog::Directory);
  dialog.setOption(QFileDialog::ShowDirsOnly);
  if (desktop_.Exec(dialog) != QDialog::Accepted) return QString();
  return dialog.selectedFiles().value(0);
}

}  // namespace vantor
