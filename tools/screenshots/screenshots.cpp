// Pictures of the real windows for the documentation: the main window after
// File > Open on a log, a player's details, the Options dialog, and the main
// window after File > Open on a log of many players with its table scrolled
// part way.
//
//   vantor_screenshots LOG MANY_PLAYERS_LOG OUTPUT_DIR
//
// The windows are the program's own; only the desktop is stood in for: the
// file dialog answers with LOG, message boxes go to stderr, the report is
// not opened, and settings and side files stay in a scratch directory.

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QFileDialog>
#include <QListWidget>
#include <QMessageBox>
#include <QScrollBar>
#include <QSettings>
#include <QTableWidget>
#include <QTemporaryDir>
#include <cstdio>

#include "report/report_path.h"
#include "scripted_desktop.h"
#include "ui/display_stats.h"
#include "ui/settings.h"

namespace {

bool Save(QWidget& widget, const QString& path) {
  QApplication::processEvents();
  const bool saved = widget.grab().save(path);
  std::fprintf(stderr, "%s %s\n", saved ? "wrote" : "could not write", qPrintable(path));
  return saved;
}

void Trigger(QWidget& window, const char* item) {
  window.findChild<QAction*>(item)->trigger();
  QApplication::processEvents();
}

QWidget* TopLevel(const char* name) {
  for (QWidget* top : QApplication::topLevelWidgets()) {
    if (top->objectName() == name && top->isVisible()) return top;
  }
  return nullptr;
}

// The details of the first member, as a double-click on its row opens them,
// with its frags selected to show their log lines.
bool SavePlayerDetails(QWidget& window, const QString& path) {
  auto* names = window.findChild<QListWidget*>("lstName");
  if (names == nullptr || names->count() == 0) return false;
  emit names->itemDoubleClicked(names->item(0));
  QWidget* details = TopLevel("PlayerDetails");
  if (details == nullptr) return false;
  details->findChild<QTableWidget*>("counts")->selectRow(0);
  const bool saved = Save(*details, path);
  details->close();
  return saved;
}

// A second window, opened on a log of many players: the table scrolled a
// third of the way, its rows read across, and the status bar below.
bool SaveManyPlayers(const char* log, const QString& path) {
  vantor::tools::ScriptedSession session(log);
  // Wide enough for the status bar's whole line; still too short for 40 rows.
  session.window.resize(1040, 600);
  session.window.show();
  Trigger(session.window, "mnuOpen");
  auto* names = session.window.findChild<QListWidget*>("lstName");
  if (names == nullptr || names->count() < 40) return false;
  // The right-hand lists carry the scroll bar the user drags; the others follow.
  QScrollBar* bar = session.window.findChild<QListWidget*>("lstSentKill")->verticalScrollBar();
  bar->setValue(bar->maximum() / 3);
  // A row selected in one list is selected in all: the picture shows a row read across.
  names->setCurrentRow(names->indexAt(QPoint(4, 4)).row() + 2);
  return Save(session.window, path);
}

}  // namespace

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  if (argc != 4) {
    std::fprintf(stderr, "usage: vantor_screenshots LOG MANY_PLAYERS_LOG OUTPUT_DIR\n");
    return 2;
  }
  const QDir out(QString::fromLocal8Bit(argv[3]));
  vantor::tools::ScriptedSession session(argv[1]);
  const QString& log = session.log;
  vantor::DisplayStats& window = session.window;
  window.show();
  Trigger(window, "mnuOpen");
  bool saved = Save(window, out.filePath("main-window.png"));
  saved = SavePlayerDetails(window, out.filePath("player-details.png")) && saved;

  vantor::WriteSetting(vantor::kInputDirSetting, QFileInfo(log).absolutePath());
  vantor::WriteSetting(vantor::kOutputDirSetting, QDir::home().filePath("Vantor reports"));
  Trigger(window, "mnuOptions");
  // The Options dialog is a window of its own, not a child of the main one.
  QWidget* options = TopLevel("frmOptions");
  saved = options && Save(*options, out.filePath("options.png")) && saved;
  if (options != nullptr) options->close();
  saved = SaveManyPlayers(argv[2], out.filePath("main-window-40-players.png")) && saved;
  return saved ? 0 : 1;
}
