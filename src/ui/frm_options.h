#pragma once
// frmOptions: the Options dialog. Shows the remembered input and output
// directories for editing; OK stores them, Cancel and the close box do not.
// It is not modal and is deleted when it closes.

#include <QDialog>

#include "ui/browse_directorys_only.h"

class QGridLayout;
class QLabel;
class QLineEdit;
class QPushButton;

namespace vantor {

class Desktop;

class frmOptions : public QDialog {
  Q_OBJECT

 public:
  explicit frmOptions(Desktop& desktop, QWidget* parent = nullptr);

 protected:
  // Neither Enter nor Escape answers the dialog: only its buttons do.
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void CreateDirectoryRows(QGridLayout& grid);
  void CreateButtons(QGridLayout& grid);
  void SetTabOrder();
  void LoadSettings();

  void Browse(QLineEdit* text_box);
  void SaveAndClose();

  Desktop& desktop_;
  BrowseDirectorysOnly browser_;
  QLabel* Label1 = nullptr;
  QLineEdit* txtInputDir = nullptr;
  QPushButton* cmdBrowseIn = nullptr;
  QLabel* Label2 = nullptr;
  QLineEdit* txtOutputDir = nullptr;
  QPushButton* cmdBrowseOut = nullptr;
  QPushButton* cmdOK = nullptr;
  QPushButton* cmdCancel = nullptr;
};

}  // namespace vantor
