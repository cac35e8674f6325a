#pragma once
// What the windows ask of the desktop: running a modal dialog (the file
// dialog, the folder browser, a message box), opening a document with its
// default program, and where the program file lives. The program uses this
// class as it is; tests and the screenshot tool derive from it to answer
// the dialogs without blocking and to record what would have been opened.

#include <QString>

class QDialog;
class QUrl;

namespace vantor {

class Desktop {
 public:
  virtual ~Desktop() = default;

  // Shows the dialog modally and returns its result code
  // (QDialog::Accepted, QDialog::Rejected or a button of a message box).
  virtual int Exec(QDialog& dialog);
  virtual void OpenUrl(const QUrl& url);
  // The directory that contains the program file.
  virtual QString ProgramDirectory() const;
};

}  // namespace vantor
