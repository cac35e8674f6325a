#pragma once
// A desktop for the GUI tests: it answers file dialogs and folder browsers
// from a script, records every dialog and document instead of showing it,
// and keeps side files and settings in a private directory.

#include <QFile>
#include <QFileDialog>
#include <QMessageBox>
#include <QSettings>
#include <QTemporaryDir>
#include <QTextDocument>
#include <QTextDocumentFragment>
#include <QUrl>

#include "ui/desktop.h"

class FakeDesktop : public vantor::Desktop {
 public:
  QStringList answers;   // one per file dialog or folder browser; "" cancels
  QStringList messages;  // "caption | text | icon | buttons"
  QStringList shown;     // each message's text as its box displays it
  QStringList dialogs;   // "title | directory | filters | file mode"
  QList<QUrl> opened;
  QTemporaryDir dir;  // the settings store, and the program directory
  QString program_dir = dir.path();

  FakeDesktop() {
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, dir.path());
    QFile(dir.filePath("CMakeCache.txt")).open(QIODevice::WriteOnly);  // a program in its build tree
  }

  int Exec(QDialog& dialog) override {
    if (auto* box = qobject_cast<QMessageBox*>(&dialog)) {
      messages << QString("%1 | %2 | %3 | %4")
                      .arg(box->windowTitle(), box->text())
                      .arg(box->icon())  // 0 none, 3 critical
                      .arg(box->standardButtons() == QMessageBox::Ok ? "OK" : "other");
      shown << Displayed(box->text(), box->textFormat());
      return QMessageBox::Ok;
    }
    auto& files = dynamic_cast<QFileDialog&>(dialog);
    dialogs << QString("%1 | %2 | %3 | %4")
                   .arg(files.windowTitle(), files.directory().absolutePath(), files.nameFilters().join(";;"))
                   .arg(files.fileMode() == QFileDialog::Directory &&
                                files.testOption(QFileDialog::ShowDirsOnly)
                            ? "folders"
                            : "files");
    const QString answer = answers.isEmpty() ? QString() : answers.takeFirst();
    if (!answer.isEmpty()) files.selectFile(answer);
    return answer.isEmpty() ? QDialog::Rejected : QDialog::Accepted;
  }
  void OpenUrl(const QUrl& url) override { opened << url; }
  // Writes a file of that name into dir and returns its path.
  QString Write(const QString& name, const QByteArray& bytes) {
    QFile file(dir.filePath(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
      qFatal("cannot write %s", qPrintable(name));
    return file.fileName();
  }
  QString ProgramDirectory() const override { return program_dir; }

  // What a label or message box shows of text: rich text loses its markup.
  static QString Displayed(const QString& text, Qt::TextFormat format) {
    const bool rich = format == Qt::RichText || (format == Qt::AutoText && Qt::mightBeRichText(text));
    return rich ? QTextDocumentFragment::fromHtml(text).toPlainText() : text;
  }

  // The store as the program sees it; an absent setting is invalid.
  static QSettings Store() { return QSettings("Vantor Log Analyzer", "Vantor Log Analyzer"); }
};
