#include "ui/desktop.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QDialog>
#include <QUrl>

namespace vantor {

int Desktop::Exec(QDialog& dialog) { return dialog.exec(); }

void Desktop::OpenUrl(const QUrl& url) { QDesktopServices::openUrl(url); }

QString Desktop::ProgramDirectory() const { return QCoreApplication::applicationDirPath(); }

}  // namespace vantor
