// The hostile inputs whose handling the desktop program shows differently
// from vantor-cli: message boxes, the decoded names in the statistics table
// and the details window, the report handed to the desktop, the side files
// when the program's directory cannot be written. One row per input, each
// with the messages as displayed, the report opened, the table, every file
// afterwards, and every file that was there unchanged.

#include <QAction>
#include <QCryptographicHash>
#include <QDir>
#include <QLabel>
#include <QListWidget>
#include <QtTest>
#include <functional>
#include <memory>

#include <unistd.h>

#include "fake_desktop.h"
#include "statistics_rows.h"
#include "ui/display_stats.h"

class HostileInputsTest;

namespace {

using Table = QList<QStringList>;

struct GuiHostile {
  const char* name = "";
  QString log;      // the name chosen in the file dialog, in the logs' directory
  QByteArray bytes;  // its content; null for no file
  std::function<void(HostileInputsTest&)> prepare;
  QStringList shown;  // messages as displayed; {L} the logs' directory, {U} the user's data directory
  QString report;     // the report handed to the desktop, in the logs' directory; empty for none
  Table table;
  QStringList logs;  // every file in the logs' directory afterwards
  QString side_dir = "program";  // "program" or "user": where the four side files are
  bool needs_permissions = false;
  std::function<void(HostileInputsTest&)> check = nullptr;
};

// "<b>&amp;\"Q'" and the Windows-1252 bytes of the euro sign, e-acute and y-diaeresis.
const QByteArray kOddName = "<b>&amp;\"Q'\x80\xe9\xff";
const QString kOddNameShown = QString("<b>&amp;\"Q'") + QChar(0x20AC) + QChar(0xE9) + QChar(0xFF);

QStringList Counts(const QString& name, const QString& counts) { return QStringList{name} + counts.split(' '); }
QStringList Totals(const QString& counts) { return Counts("Totals", counts); }
const QStringList kBlank(11, " ");
const QString kNone = "0 0 0 0 0 0 0 0 0 0";

QByteArray FlagPlayers(int count) {
  QByteArray bytes;
  for (int i = 1; i <= count; ++i) {
    const QByteArray name = "Player" + QByteArray::number(i).rightJustified(3, '0');
    bytes += "^7" + name + " got the BLUE flag!\r\n^7" + name + " cratered.\r\n";
  }
  return bytes;
}

Table FlagPlayersTable(int count) {
  Table rows = {Totals(kNone), kBlank};
  for (int i = 1; i <= count; ++i) rows << Counts("Player" + QString::number(i).rightJustified(3, '0'), "0 1 1 1 0 0 0 0 0 0");
  return rows << Totals(QString("0 %1 %1 %1 0 0 0 0 0 0").arg(count));
}

QMap<QString, QByteArray> Checksums(const QString& dir) {
  QMap<QString, QByteArray> sums;
  for (const QString& name : QDir(dir).entryList(QDir::Files | QDir::Hidden)) {
    QFile file(QDir(dir).filePath(name));
    QCryptographicHash hash(QCryptographicHash::Sha256);
    if (file.open(QIODevice::ReadOnly) && hash.addData(&file)) sums[name] = hash.result();
  }
  return sums;
}

}  // namespace

Q_DECLARE_METATYPE(GuiHostile)

class HostileInputsTest : public QObject {
  Q_OBJECT

 public:
  std::unique_ptr<FakeDesktop> desktop_;
  std::unique_ptr<vantor::DisplayStats> window_;
  std::unique_ptr<QTemporaryDir> logs_, user_;

  void Open(const QString& path) {
    desktop_->answers << path;
    window_->findChild<QAction*>("mnuOpen")->trigger();
  }
  QString Expand(QString text) const {
    return text.replace("{L}", logs_->path()).replace("{U}", user_->path());
  }
  // The label as the user reads it in the details window of a row.
  QString DetailsLabel(int row, const char* label) {
    auto* names = window_->findChild<QListWidget*>("lstName");
    emit names->itemDoubleClicked(names->item(row));
    for (QWidget* top : QApplication::topLevelWidgets()) {
      if (top->objectName() != "PlayerDetails" || !top->isVisible()) continue;
      auto* found = top->findChild<QLabel*>(label);
      const QString text = FakeDesktop::Displayed(found->text(), found->textFormat());
      delete top;
      return text;
    }
    return "no details window";
  }

 private slots:
  void init() {
    user_ = std::make_unique<QTemporaryDir>();
    qputenv("XDG_DATA_HOME", user_->path().toLocal8Bit());
    logs_ = std::make_unique<QTemporaryDir>();
    desktop_ = std::make_unique<FakeDesktop>();
    window_ = std::make_unique<vantor::DisplayStats>(*desktop_);
    window_->show();
  }
  void cleanup() {
    for (QWidget* top : QApplication::topLevelWidgets()) {
      if (top->objectName() == "PlayerDetails") delete top;
    }
    window_.reset();
    desktop_.reset();
    QFile::setPermissions(logs_->path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    logs_.reset();
    user_.reset();
    qunsetenv("XDG_DATA_HOME");
  }

  void hostileLogGivesItsMessagesReportTableAndFiles_data();
  void hostileLogGivesItsMessagesReportTableAndFiles();
};

namespace {

const QByteArray kCratered = "^7Alpha cratered.\r\n";

QList<GuiHostile> Catalogue() {
  return {
      {"names with markup, quotes and high bytes", "game.log", "^7" + kOddName + " got the BLUE flag!\r\n^7Bravo was railed by " + kOddName + "\r\n", nullptr, {},
       "game.html",
       {Counts("Bravo", "0 1 0 0 0 0 0 0 0 0"), Totals("0 1 0 0 0 0 0 0 0 0"), kBlank,
        Counts(kOddNameShown, "1 0 0 1 0 0 0 0 0 0"), Totals("1 0 0 1 0 0 0 0 0 0")},
       {"game.html", "game.log"}, "program", false,
       [](HostileInputsTest& t) {
         QCOMPARE(t.DetailsLabel(0, "rivals"), "Killed most: nobody. Killed most by: " + kOddNameShown + " (1).");
         QCOMPARE(t.DetailsLabel(0, "team"),
                  "Blue, from propagation pass 1: the player's first fight with another player was a death by " +
                      kOddNameShown + ", a Red member (game.log, line 2: Bravo was railed by " + kOddNameShown +
                      ").");
         QCOMPARE(t.DetailsLabel(3, "rivals"), "Killed most: Bravo (1). Killed most by: nobody.");
       }},
      {"a directory named with markup given as the log", "<i>dir.log", {}, [](HostileInputsTest& t) { QVERIFY(QDir(t.logs_->path()).mkdir("<i>dir.log")); },
       {"Could not read {L}/<i>dir.log: Is a directory"}, "<i>dir.html", {Totals(kNone), kBlank, Totals(kNone)},
       {"<i>dir.html", "<i>dir.log"}},
      {"an unreadable file", "game.log", kCratered,
       [](HostileInputsTest& t) { QVERIFY(QFile::setPermissions(t.logs_->path() + "/game.log", {})); },
       {"Could not read {L}/game.log: Permission denied"}, "game.html", {Totals(kNone), kBlank, Totals(kNone)},
       {"game.html", "game.log"}, "program", true},
      {"an output directory that does not exist", "game.log", kCratered,
       [](HostileInputsTest& t) { FakeDesktop::Store().setValue("Main/OutputDir", t.logs_->path() + "/<u>missing"); },
       {"Could not write {L}/<u>missing/game.html: No such file or directory"}, "", {Totals(kNone), kBlank, Totals(kNone)},
       {"game.log"}},
      {"a program directory that cannot be written", "game.log", kCratered,
       [](HostileInputsTest& t) {
         // Below a file, no directory can be written by anybody, root included.
         QFile file(t.logs_->path() + "/not-a-directory");
         QVERIFY(file.open(QIODevice::WriteOnly));
         t.desktop_->program_dir = file.fileName() + "/program";
       },
       {"Side files (logoutput.txt, ignored.txt, chat.txt, unknown.txt) are written to {U}/vantor-log-analyzer, "
        "because the program's directory cannot be written."},
       "game.html", {Totals(kNone), kBlank, Totals(kNone)}, {"game.html", "game.log", "not-a-directory"}, "user"},
      {"a log named game.LOG", "game.LOG", kCratered, nullptr, {}, "game.LOG.html", {}, {"game.LOG", "game.LOG.html"}},
      {"a log without extension", "game", kCratered, nullptr, {}, "game.html", {}, {"game", "game.html"}},
      {"250 players with flag events", "game.log", FlagPlayers(250), nullptr, {}, "game.html", FlagPlayersTable(250), {"game.html", "game.log"}},
      {"one player with 45,000 frags", "game.log", "^7Alpha got the BLUE flag!\r\n" + QByteArray("^7Bravo was railed by Alpha\r\n").repeated(45000),
       nullptr, {}, "game.html",
       {Counts("Bravo", "0 45000 0 0 0 0 0 0 0 0"), Totals("0 45000 0 0 0 0 0 0 0 0"), kBlank,
        Counts("Alpha", "45000 0 0 1 0 0 0 0 0 0"), Totals("45000 0 0 1 0 0 0 0 0 0")},
       {"game.html", "game.log"}},
  };
}

}  // namespace

void HostileInputsTest::hostileLogGivesItsMessagesReportTableAndFiles_data() {
  QTest::addColumn<GuiHostile>("row");
  for (const GuiHostile& row : Catalogue()) QTest::newRow(row.name) << row;
}

void HostileInputsTest::hostileLogGivesItsMessagesReportTableAndFiles() {
  QFETCH(GuiHostile, row);
  if (row.needs_permissions && ::geteuid() == 0) {
    QSKIP("The tests run as root, for whom file permissions do not stop reading; vantor-cli's catalogue "
          "runs this row as \"nobody\".");
  }
  const QString log = logs_->filePath(row.log);
  if (!row.bytes.isNull()) {
    QFile file(log);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(row.bytes) == row.bytes.size());
  }
  if (row.prepare) row.prepare(*this);
  const auto before = Checksums(logs_->path());
  Open(log);
  QStringList shown;
  for (const QString& message : row.shown) shown << Expand(message);
  QCOMPARE(desktop_->shown, shown);
  QCOMPARE(desktop_->opened, row.report.isEmpty() ? QList<QUrl>() : QList<QUrl>{QUrl::fromLocalFile(logs_->filePath(row.report))});
  if (!row.table.isEmpty()) QCOMPARE(StatisticsRows(*window_), row.table);
  QCOMPARE(QDir(logs_->path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden), row.logs);
  const QString side_dir = row.side_dir == "user" ? user_->filePath("vantor-log-analyzer") : desktop_->dir.path();
  QCOMPARE(QDir(side_dir).entryList({"*.txt"}, QDir::Files),
           QStringList({"chat.txt", "ignored.txt", "logoutput.txt", "unknown.txt"}));
  const auto after = Checksums(logs_->path());
  for (auto it = before.begin(); it != before.end(); ++it) QCOMPARE(after.value(it.key()), it.value());
  if (row.check) row.check(*this);
}

QTEST_MAIN(HostileInputsTest)
#include "hostile_inputs_test.moc"
