// The main window driven through its real controls, with the desktop's
// dialogs answered by FakeDesktop.

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <QAction>
#include <QClipboard>
#include <QDropEvent>
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QProcess>
#include <QProgressBar>
#include <QPushButton>
#include <QScrollBar>
#include <QStatusBar>
#include <QtTest>
#include <memory>

#include "fake_desktop.h"
#include "ui/display_stats.h"

namespace {

const char* const kStatisticsLists[] = {"lstName",        "lstFrags",     "lstDeaths",       "lstSuicides",
                                        "lstFlagGrabs",   "lstFCDefends", "lstFlagCaptures", "lstFlagDefends",
                                        "lstBaseDefends", "lstFCKills",   "lstSentKill"};
const QStringList kHeadings = {"Name",  "Frags", "Deaths", "Suicides", "F Grabs", "FC Def",
                               "F Cap", "F Def", "B Def",  "FC Frag",  "Sentrys"};

// Two players take a flag and so get a team; the other two do not.
// "Ren\xe9" is Windows-1252 for "René".
const char kGameLog[] =
    "^7Dave was railed by Charlie\r\n^7Bravo got the BLUE flag!\r\n^7Ren\xe9 got the RED flag!\r\n"
    "^7Bravo was railed by Ren\xe9\r\n^7Bravo killed himself.\r\n^7Ren\xe9 was knifed by Bravo\r\n"
    "^7Charlie was railed by Ren\xe9\r\n";
const QList<QStringList> kGameTable = {{"René", "2", "1", "0", "1", "0", "0", "0", "0", "0", "0"},
                                       {"Totals", "2", "1", "0", "1", "0", "0", "0", "0", "0", "0"},
                                       QStringList(11, " "),
                                       {"Bravo", "1", "2", "1", "1", "0", "0", "0", "0", "0", "0"},
                                       {"Totals", "1", "2", "1", "1", "0", "0", "0", "0", "0", "0"}};
// Two members: the tallies set the maximum to 250 and pass 30 again, 130,
// 200 and 225; no command can be given meanwhile; the button shows caption
// until the bar is full.
QStringList RunSteps(const QString& caption) {
  QStringList steps;
  for (int value : {10, 20, 30, 130, 200, 225}) steps << QString("%1 1 00000 ").arg(value) + caption;
  return steps << "250 1 00000 Process";
}

}  // namespace

class MainWindowTest : public QObject {
  Q_OBJECT

  std::unique_ptr<FakeDesktop> desktop_;
  std::unique_ptr<vantor::DisplayStats> window_;
  QStringList steps_;  // the window at every move of the progress bar

  template <typename T = QWidget>
  T* Find(const char* name) {
    return window_->findChild<T*>(name);
  }
  void Trigger(const char* item) { Find<QAction>(item)->trigger(); }
  QProgressBar* Progress() { return Find<QProgressBar>("prgProgress"); }
  QWidget* Options() {
    for (QWidget* window : QApplication::topLevelWidgets())
      if (window->objectName() == "frmOptions") return window;
    return nullptr;
  }

  void Open(const QString& answer) {
    desktop_->answers << answer;
    Trigger("mnuOpen");
  }
  QString GameLog() { return desktop_->Write("game.log", kGameLog); }
  // The statistics table as the user reads it: one row of eleven cells per line of its lists.
  QList<QStringList> Table() {
    QList<QStringList> rows;
    for (const char* name : kStatisticsLists) {
      auto* list = Find<QListWidget>(name);
      rows.resize(std::max<qsizetype>(rows.size(), list->count()));
      for (int r = 0; r < list->count(); ++r) rows[r] << list->item(r)->text();
    }
    return rows;
  }
  // A window as the program starts it; the desktop and its settings stay.
  void StartWindow() {
    window_ = std::make_unique<vantor::DisplayStats>(*desktop_);
    window_->show();
    connect(Progress(), &QProgressBar::valueChanged, this, [this](int value) {
      steps_ << QString("%1 %2 %3 ").arg(value).arg(Progress()->isVisible()).arg(Enabled()) +
                    Find<QPushButton>("cmdProcess")->text();
    });
  }
  // Open, Exit, Append, Options and Process: "1" for each that can be given.
  QString Enabled() {
    QString flags;
    for (auto name : {"mnuOpen", "mnuExit", "mnuAppend", "mnuOptions", "cmdProcess"}) {
      flags += window_->findChild<QObject*>(name)->property("enabled").toBool() ? '1' : '0';
    }
    return flags;
  }

 private slots:
  void init() {
    window_.reset();
    desktop_ = std::make_unique<FakeDesktop>();
    steps_.clear();
    StartWindow();
  }

  void startsWithEmptyListsUnderTheirHeadingsAndProcessFollowsAppend() {
    QCOMPARE(window_->windowTitle(), QString("Vantor Log Analyzer"));
    QStringList menus, found;
    for (QMenu* menu : window_->menuBar()->findChildren<QMenu*>()) {
      menus << menu->title();
      for (QAction* item : menu->actions()) menus << "  " + item->text();
    }
    for (QAction* item : Find<QListWidget>("lstName")->actions())
      menus << "  " + item->text();  // context menu
    QCOMPARE(menus, QStringList({"File", "  Open", "  Exit", "Tools", "  Append", "  Options", "  Copy table",
                                 "  Export as CSV...", "  Export as JSON...", "  Open summary",
                                 "  Add to season archive...", "  Season standings..."}));
    for (QLabel* label : window_->findChildren<QLabel*>()) found << label->text();
    QCOMPARE(found,
             kHeadings + QStringList({"Vantor Log Analyzer 0.80",
                                      "Per-player statistics from capture-the-flag console logs",
                                      "Contact: the Vantor Log Analyzer developers",
                                      "File > Open analyses a log at once. With Tools > Append checked, open "
                                      "several logs, then press Process.",
                                      "No log analysed yet"}));
    for (const char* name : kStatisticsLists) QVERIFY2(Find<QListWidget>(name)->alternatingRowColors(), name);
    QCOMPARE(Table(), QList<QStringList>());
    QCOMPARE(QString("%1..%2").arg(Progress()->minimum()).arg(Progress()->maximum()), QString("0..1000"));
    QVERIFY(Progress()->isHidden());
    QString states;
    for (int toggle = 0; toggle < 3; ++toggle, Trigger("mnuAppend")) {
      states += QString::number(Find<QAction>("mnuAppend")->isChecked()) + Enabled() + " ";
    }
    QCOMPARE(states, QString("011110 111111 011110 "));
  }

  void fileDialogStartsInInputDirElseTheProgramDirectory() {
    Open("");
    FakeDesktop::Store().setValue("Main/InputDir", "");
    Open("");
    FakeDesktop::Store().setValue("Main/InputDir", QDir::tempPath());
    Open("");
    const QString filters = " | Log Files (*.log);;All Files (*) | files";
    const QString in_program = "Open | " + desktop_->dir.path() + filters;
    QCOMPARE(desktop_->dialogs,
             QStringList({in_program, in_program, "Open | " + QDir::tempPath() + filters}));
  }

  // Every run below has the Options dialog open beside the main window.
  void openRunFillsTheListsUntilAppendIsChecked() {
    Trigger("mnuOptions");
    Open(GameLog());
    QCOMPARE(Table(), kGameTable);
    QCOMPARE(desktop_->opened, QList<QUrl>{QUrl::fromLocalFile(desktop_->dir.filePath("game.html"))});
    QCOMPARE(desktop_->messages, QStringList());
    QCOMPARE(steps_, RunSteps("Process"));
    QVERIFY(Progress()->isHidden());
    QCOMPARE(Enabled(), QString("11110"));
    Find<QListWidget>("lstDeaths")->setCurrentRow(3);  // a row selected in one is selected in all
    for (auto name : kStatisticsLists) QCOMPARE(Find<QListWidget>(name)->currentRow(), 3);
    Trigger("mnuAppend");
    QCOMPARE(Table(), QList<QStringList>());
    QVERIFY(Options()->isVisible());
  }

  void processRunAnalysesTheImportsAndEndsEmpty() {
    Trigger("mnuOptions");
    Trigger("mnuAppend");
    Open(GameLog());
    QVERIFY(Table().isEmpty() && desktop_->opened.isEmpty() && steps_.isEmpty());
    Find<QPushButton>("cmdProcess")->click();
    QCOMPARE(steps_, RunSteps("Processing"));
    QCOMPARE(desktop_->opened.size(), 1);
    QCOMPARE(Table(), QList<QStringList>());
    QVERIFY(Progress()->isHidden());
    QCOMPARE(Enabled(), QString("11111"));
    QVERIFY(Options()->isVisible());
  }

  void sideFilesOfAnInstalledProgramGoToTheUsersStateDirectory() {
    desktop_->program_dir = desktop_->dir.filePath("not-made/bin");  // no build tree, never written
    const QString data = desktop_->dir.filePath("data"), other = desktop_->dir.filePath("other");
    qputenv("XDG_STATE_HOME", QFile::encodeName(data));
    Open(GameLog());
    Open(GameLog());
    StartWindow();  // the next session: only the settings remember what was said
    Open(GameLog());
    qputenv("XDG_STATE_HOME", QFile::encodeName(other));
    Open(GameLog());
    const QString side = data + "/vantor-log-analyzer";
    const QString notice =
        "Vantor Log Analyzer | Side files (logoutput.txt, ignored.txt, chat.txt, unknown.txt) "
        "are written to %1. | 1 | OK";
    QCOMPARE(desktop_->messages, QStringList({notice.arg(side), notice.arg(other + "/vantor-log-analyzer")}));
    QCOMPARE(FakeDesktop::Store().value("Notices/SideFileDirectory").toString(),
             other + "/vantor-log-analyzer");
    for (auto name : {"/logoutput.txt", "/ignored.txt", "/chat.txt", "/unknown.txt"})
      QVERIFY(QFile::exists(side + name));
    QCOMPARE(desktop_->opened.size(), 4);  // the reports still go next to the log
    QVERIFY(!QDir(desktop_->program_dir).exists());
    qunsetenv("XDG_STATE_HOME");
  }

  void failedImportShowsItsMessageAsPlainTextAndTheWindowStaysUsable_data() {
    QTest::addColumn<QStringList>("answer_and_message");
    QTest::newRow("dialog cancelled") << QStringList{"", "Choose a file! | 0"};
    QTest::newRow("file missing") << QStringList{"missing.log", "File Not Found | 3"};
    QTest::newRow("a directory named with markup") << QStringList{
        "<i>dir.log", "Could not read {dir}/<i>dir.log: it is a directory, not a log file | 3"};
  }
  void failedImportShowsItsMessageAsPlainTextAndTheWindowStaysUsable() {
    QFETCH(QStringList, answer_and_message);
    const QString answer = answer_and_message[0];
    QString message = answer_and_message[1];
    if (answer.startsWith('<')) QVERIFY(QDir(desktop_->dir.path()).mkdir(answer));
    Open(answer.isEmpty() ? answer : desktop_->dir.filePath(answer));
    message.replace("{dir}", desktop_->dir.path());
    QCOMPARE(desktop_->messages, QStringList{"Vantor Log Analyzer | " + message + " | OK"});
    QCOMPARE(desktop_->shown, QStringList{message.section(" | ", 0, 0)});  // markup shown, not applied
    const QStringList totals = QStringList{"Totals"} + QStringList(10, "0");
    QCOMPARE(Table(), QList<QStringList>({totals, QStringList(11, " "), totals}));
    Open(GameLog());
    QCOMPARE(Table(), kGameTable);
  }

  void closingLeavesOptionsOpenAndWaitsForARun_data() {
    QTest::addColumn<QString>("how");
    QTest::newRow("File > Exit") << "exit";
    QTest::newRow("close box") << "close";
    QTest::newRow("close box during a run") << "run";
  }
  void closingLeavesOptionsOpenAndWaitsForARun() {
    QFETCH(QString, how);
    Trigger("mnuOptions");
    if (how == "exit") Trigger("mnuExit");
    if (how == "close") window_->close();
    if (how == "run") connect(Progress(), &QProgressBar::valueChanged, window_.get(), &QWidget::close);
    if (how == "run") Open(GameLog());
    QVERIFY(!window_->isVisible());
    QVERIFY(Options()->isVisible());
    // Only a window without a transient parent keeps the program running.
    QVERIFY(!Options()->windowHandle()->transientParent());
    QCOMPARE(Table(), how == "run" ? kGameTable : QList<QStringList>());
  }

  void keysDropsAndTheStatusBarSayWhatWasAnalysed() {
    window_->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(window_.get()));
    QTest::keyClick(window_.get(), Qt::Key_O, Qt::ControlModifier);  // Ctrl+O is File > Open
    QCOMPARE(desktop_->dialogs.size(), 1);
    QTest::keyClick(window_.get(), Qt::Key_Q, Qt::ControlModifier);  // Ctrl+Q is File > Exit
    QVERIFY(!window_->isVisible());
    StartWindow();
    window_->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(window_.get()));
    for (const auto& [key, menu] : {std::pair{Qt::Key_F, "mnuFile"}, std::pair{Qt::Key_T, "mnuTools"}}) {
      QTest::keyClick(window_.get(), key, Qt::AltModifier);
      QCOMPARE(window_->menuBar()->activeAction(), Find<QMenu>(menu)->menuAction());
      QCOMPARE(QApplication::activePopupWidget(), Find<QMenu>(menu));
      QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Escape);
    }
    // Three read pieces: the status bar shows how far reading has come.
    const QString log = GameLog(),
                  second = desktop_->Write("second.log", kGameLog + QByteArray(3 << 20, '\n'));
    QList<int> read;
    connect(Find<QProgressBar>("prgReading"), &QProgressBar::valueChanged, this,
            [&read](int v) { read << v; });
    const auto drop = [&](const QStringList& paths) {
      QMimeData data;
      QList<QUrl> urls;
      for (const QString& p : paths) urls << QUrl::fromLocalFile(p);
      data.setUrls(urls);
      QDragEnterEvent enter(QPoint(10, 10), Qt::CopyAction, &data, Qt::LeftButton, {});
      QApplication::sendEvent(window_.get(), &enter);
      QDropEvent event(QPointF(10, 10), Qt::CopyAction, &data, Qt::LeftButton, {});
      QApplication::sendEvent(window_.get(), &event);
      QCoreApplication::processEvents();  // the drop is analysed once it has ended
    };
    drop({log});
    QCOMPARE(Table(), kGameTable);
    const QString report = desktop_->dir.filePath("game.html");
    QCOMPARE(Find<QLabel>("statusSummary")->text(), "game.log: 2 players, 7 lines. Report: " + report);
    desktop_->opened.clear();
    Find<QPushButton>("cmdOpenReport")->click();
    QCOMPARE(desktop_->opened, QList<QUrl>{QUrl::fromLocalFile(report)});
    Find<QPushButton>("cmdOpenSummary")->click();  // written beside the report, then opened
    const QString summary = desktop_->dir.filePath("game-summary.html");
    QCOMPARE(desktop_->opened.last(), QUrl::fromLocalFile(summary));
    QFile page(summary);
    QVERIFY(page.open(QIODevice::ReadOnly) && page.readAll().contains("Ren\xc3\xa9"));
    drop({log, second});  // together, as Append and Process: the table ends empty
    QCOMPARE(Table(), QList<QStringList>());
    QCOMPARE(Find<QLabel>("statusSummary")->text(),
             "2 logs: 2 players, 3145742 lines. Report: " + desktop_->dir.filePath("second.html"));
    QCOMPARE(read, QList<int>({1000, 333, 666, 999, 1000}));  // per thousand, a piece of 1 MiB at a time
    desktop_->opened.clear();
    Find<QPushButton>("cmdShowFolder")->click();
    QCOMPARE(desktop_->opened, QList<QUrl>{QUrl::fromLocalFile(desktop_->dir.path())});
  }

  // The window's JSON export is the file vantor-cli writes for the same log.
  void jsonExportIsTheCommandLinesFile() {
    const QString log = GameLog(), json = desktop_->dir.filePath("window.json");
    Open(log);
    desktop_->answers << json;
    Find<QAction>("mnuExportJson")->trigger();
    QProcess cli;
    cli.start(VANTOR_CLI, {"-q", "--no-side-files", "--json", "-", "-o", desktop_->dir.filePath("cli"), log});
    QVERIFY(cli.waitForFinished(-1) && cli.exitCode() == 0);
    QFile written(json);
    QVERIFY(written.open(QIODevice::ReadOnly));
    QCOMPARE(written.readAll(), cli.readAllStandardOutput());
  }

  void tableReadsAcrossCopiesAndExports() {
    QByteArray log = "^7Red00 got the BLUE flag!\r\n";
    for (int i = 1; i < 40; ++i)
      log += QString("^7P%1 was railed by Red00\r\n").arg(i, 2, 10, QChar('0')).toLatin1();
    const QString forty = desktop_->Write("forty.log", log);
    Open(forty);
    auto* names = Find<QListWidget>("lstName");
    QCOMPARE(names->count(), 43);  // 39 Blue, Totals, blank, Red00, Totals
    for (int top : {5, names->verticalScrollBar()->maximum()}) {
      names->verticalScrollBar()->setValue(top);
      QCoreApplication::processEvents();  // the lists lay their rows out
      // Every list shows the same top row.
      for (const char* list : kStatisticsLists)
        QCOMPARE(Find<QListWidget>(list)->indexAt(QPoint(2, 2)).row(), top);
    }
    QCOMPARE(names->item(0)->foreground().color(), QColor(0, 0, 255));
    QCOMPARE(names->item(41)->foreground().color(), QColor(255, 0, 0));
    QVERIFY(Find<QListWidget>("lstFrags")->item(39)->font().bold());
    QCOMPARE(Find<QListWidget>("lstFrags")->item(0)->textAlignment(), int(Qt::AlignRight | Qt::AlignVCenter));
    QCOMPARE(names->item(0)->data(Qt::TextAlignmentRole),
             QVariant());  // names keep the list's left alignment
    for (QLabel* heading : window_->findChildren<QLabel*>()) {
      if (kHeadings.contains(heading->text())) {
        window_->resize(window_->minimumSize());
        QVERIFY2(heading->width() >= heading->fontMetrics().horizontalAdvance(heading->text()),
                 qPrintable(heading->text()));
      }
    }
    Find<QAction>("mnuCopyTable")->trigger();
    const QStringList copied = QGuiApplication::clipboard()->text().split('\n');
    QCOMPARE(copied.size(), 45);
    QCOMPARE(copied[0], kHeadings.join('\t'));
    QCOMPARE(copied[42], QString("Red00\t39\t0\t0\t1\t0\t0\t0\t0\t0\t0"));
    desktop_->answers << desktop_->dir.filePath("forty.csv") << forty;
    Find<QAction>("mnuExportCsv")->trigger();
    Find<QAction>("mnuExportJson")->trigger();  // over the log: refused, the log kept
    QFile csv(desktop_->dir.filePath("forty.csv"));
    QVERIFY(csv.open(QIODevice::ReadOnly) && csv.readAll().startsWith("slot,name,team,frags,"));
    QStringList saved;  // the title and filters of the two save dialogs
    for (const QString& dialog : desktop_->dialogs.mid(1))
      saved << dialog.section(" | ", 0, 0) + " | " + dialog.section(" | ", 2);
    QCOMPARE(saved, QStringList({"Export as CSV | CSV files (*.csv);;All files (*) | files",
                                 "Export as JSON | JSON files (*.json);;All files (*) | files"}));
    QCOMPARE(desktop_->messages.join(""), "Vantor Log Analyzer | Did not write " + forty +
                                              ": it is the log " + forty + " of this run | 3 | OK");
  }

  // The program's directory takes its side files: a log there named like one is read, not replaced.
  void aLogNamedLikeASideFileIsKept() {
    const QString log = desktop_->Write("chat.txt", kGameLog);
    Open(log);
    QCOMPARE(Table(), kGameTable);
    QCOMPARE(desktop_->messages, QStringList{"Vantor Log Analyzer | Did not write " + log +
                                             ": it is the log " + log + " of this run | 3 | OK"});
    QFile file(log);
    QVERIFY(file.open(QIODevice::ReadOnly) && file.readAll() == kGameLog);
  }

  // Another run holds the side directory: the status bar says so while the window waits its turn.
  void aRunWaitsForAnotherRunIntoTheSideDirectory() {
    const int other = ::open(QFile::encodeName(desktop_->dir.path()).constData(), O_RDONLY | O_DIRECTORY);
    QVERIFY(::flock(other, LOCK_EX) == 0);
    QString said;
    QTimer::singleShot(0, this, [&] {  // runs while the window waits, then lets it go on
      said = window_->statusBar()->currentMessage();
      ::close(other);
    });
    Open(GameLog());
    QCOMPARE(said, "Waiting for another run that writes into " + desktop_->dir.path());
    QCOMPARE(Table(), kGameTable);
  }
};

QTEST_MAIN(MainWindowTest)
#include "main_window_test.moc"
