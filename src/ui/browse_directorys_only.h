#pragma once
// The folder browser of the Options dialog: a modal dialog that offers
// directories only.

#include <QString>

class QWidget;

namespace vantor {

class Desktop;

class BrowseDirectorysOnly {
 public:
  explicit BrowseDirectorysOnly(Desktop& desktop) : desktop_(desktop) {}

  // Opens at startPath and returns the full path of the chosen directory,
  // or the empty string when the user cancels.
  QString BrowseForDirectory(QWidget* owner, const QString& title, const QString& startPath);

 private:
  Desktop& desktop_;
};

}  // namespace vantor
