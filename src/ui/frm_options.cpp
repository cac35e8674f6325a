#include "ui/frm_options.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>

#include "report/report_path.h"
#include "ui/desktop.h"
#include "ui/settings.h"

namespace vantor {

namespace {

constexpr char kCaption[] = "Options";
constexpr char kBrowseTitle[] = "Select A Directory";
constexpr int kTextBoxWidth = 320;

template <typename Widget>
Widget* Named(Widget* widget, const char* name) {
  widget->setObjectName(name);
  return widget;
}

QPushButton* Button(const char* text, const char* name) {
  auto* button = Named(new QPushButton(text), name);
  // A dialog makes its buttons answer Enter unless told otherwise.
  button->setAutoDefault(false);
  button->setDefault(false);
  return button;
}

}  // namespace

frmOptions::frmOptions(Desktop& desktop, QWidget* parent)
    : QDialog(parent), desktop_(desktop), browser_(desktop) {
  setObjectName("frmOptions");
  setWindowTitle(kCaption);
  setModal(false);
  setAttribute(Qt::WA_DeleteOnClose);
  auto* grid = new QGridLayout(this);
  CreateDirectoryRows(*grid);
  CreateButtons(*grid);
  SetTabOrder();
  LoadSettings();
}

void frmOptions::CreateDirectoryRows(QGridLayout& grid) {
  Label1 = Named(new QLabel("Input Directory"), "Label1");
  txtInputDir = Named(new QLineEdit, "txtInputDir");
  cmdBrowseIn = Button("Browse", "cmdBrowseIn");
  Label2 = Named(new QLabel("Output Directory"), "Label2");
  txtOutputDir = Named(new QLineEdit, "txtOutputDir");
  cmdBrowseOut = Button("Browse", "cmdBrowseOut");
  txtInputDir->setMinimumWidth(kTextBoxWidth);
  grid.addWidget(Label1, 0, 0);
  grid.addWidget(txtInputDir, 0, 1);
  grid.addWidget(cmdBrowseIn, 0, 2);
  grid.addWidget(Label2, 1, 0);
  grid.addWidget(txtOutputDir, 1, 1);
  grid.addWidget(cmdBrowseOut, 1, 2);
  connect(cmdBrowseIn, &QPushButton::clicked, this, [this] { Browse(txtInputDir); });
  connect(cmdBrowseOut, &QPushButton::clicked, this, [this] { Browse(txtOutputDir); });
}

void frmOptions::CreateButtons(QGridLayout& grid) {
  cmdOK = Button("OK", "cmdOK");
  cmdCancel = Button("Cancel", "cmdCancel");
  auto* row = new QHBoxLayout;
  row->addStretch();
  row->addWidget(cmdOK);
  row->addWidget(cmdCancel);
  grid.addLayout(row, 2, 0, 1, 3);
  connect(cmdOK, &QPushButton::clicked, this, &frmOptions::SaveAndClose);
  connect(cmdCancel, &QPushButton::clicked, this, &QWidget::close);
}

void frmOptions::SetTabOrder() {
  QWidget* const order[] = {txtInputDir, txtOutputDir, cmdBrowseIn, cmdBrowseOut, cmdOK, cmdCancel};
  for (std::size_t i = 1; i < std::size(order); ++i) setTabOrder(order[i - 1], order[i]);
}

void frmOptions::LoadSettings() {
  txtInputDir->setText(ReadSetting(kInputDirSetting));
  txtOutputDir->setText(ReadSetting(kOutputDirSetting));
}

void frmOptions::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) return;
  QDialog::keyPressEvent(event);
}

void frmOptions::Browse(QLineEdit* text_box) {
  const QString chosen = browser_.BrowseForDirectory(this, kBrowseTitle, text_box->text());
  if (!chosen.isEmpty()) text_box->setText(chosen);
}

void frmOptions::SaveAndClose() {
  QString failed = WriteSetting(kInputDirSetting, txtInputDir->text());
  if (failed.isEmpty()) failed = WriteSetting(kOutputDirSetting, txtOutputDir->text());
  if (!failed.isEmpty()) {
    // The dialog stays open with the values, so that nothing typed is lost.
    QMessageBox box(QMessageBox::Critical, "Vantor Log Analyzer",
                    "Could not save the settings to " + failed + ": the file cannot be written.",
                    QMessageBox::Ok, this);
    box.setTextFormat(Qt::PlainText);
    desktop_.Exec(box);
    return;
  }
  close();
}

}  // namespace vantor
