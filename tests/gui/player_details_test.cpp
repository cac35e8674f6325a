// The details window of a member, opened by a double-click on its row of
// the statistics table, on the worked example of the tallies: Alpha (Blue)
// railed Bravo and Charlie, Bravo (Red) knifed Alpha and killed himself;
// Charlie's first fight is with Dave, who has no team either.

#include <QAction>
#include <QLabel>
#include <QListWidget>
#include <QTableWidget>
#include <QtTest>
#include <memory>

#include "fake_desktop.h"
#include "ui/display_stats.h"

namespace {

const char kWorkedExample[] =
    "^7Alpha got the RED flag!\r\n^7Bravo got the BLUE flag!\r\n^7Charlie was knifed by Dave\r\n"
    "^7Bravo was railed by Alpha\r\n^7Bravo cratered.\r\n^7Alpha was knifed by Bravo\r\n"
    "^7Charlie was railed by Alpha\r\n";

}  // namespace

class PlayerDetailsTest : public QObject {
  Q_OBJECT

  std::unique_ptr<FakeDesktop> desktop_;
  std::unique_ptr<vantor::DisplayStats> window_;

  // The details window the double-click opened, if any.
  QWidget* DoubleClickRow(int row) {
    const QWidgetList before = QApplication::topLevelWidgets();
    auto* names = window_->findChild<QListWidget*>("lstName");
    const QPoint at = names->visualItemRect(names->item(row)).center();
    // A double-click as the mouse makes it: a click, then the second press.
    QTest::mouseClick(names->viewport(), Qt::LeftButton, {}, at);
    QTest::mouseDClick(names->viewport(), Qt::LeftButton, {}, at);
    for (QWidget* top : QApplication::topLevelWidgets()) {
      if (top->objectName() == "PlayerDetails" && top->isVisible() && !before.contains(top)) return top;
    }
    return nullptr;
  }
  // "label=value" for each row of the counts table; group headings alone.
  static QStringList Counts(QWidget* details) {
    auto* table = details->findChild<QTableWidget*>("counts");
    QStringList rows;
    for (int r = 0; r < table->rowCount(); ++r) {
      rows << (table->item(r, 1) ? table->item(r, 0)->text() + "=" + table->item(r, 1)->text()
                                 : table->item(r, 0)->text());
    }
    return rows;
  }
  static QStringList Cells(QWidget* details, const char* table_name) {
    auto* table = details->findChild<QTableWidget*>(table_name);
    QStringList rows;
    for (int r = 0; r < table->rowCount(); ++r) {
      QStringList cells;
      for (int c = 0; c < table->columnCount(); ++c) cells << table->item(r, c)->text();
      rows << cells.join('|');
    }
    return rows;
  }
  static QStringList LinesOf(QWidget* details, const QString& count) {
    auto* table = details->findChild<QTableWidget*>("counts");
    for (int r = 0; r < table->rowCount(); ++r) {
      if (table->item(r, 0)->text() == count) table->selectRow(r);
    }
    QStringList lines;
    auto* list = details->findChild<QListWidget*>("sourceLines");
    for (int i = 0; i < list->count(); ++i) lines << list->item(i)->text();
    return lines;
  }

 private slots:
  void init() {
    desktop_ = std::make_unique<FakeDesktop>();
    window_ = std::make_unique<vantor::DisplayStats>(*desktop_);
    window_->show();
    QFile log(desktop_->dir.filePath("worked.log"));
    QVERIFY(log.open(QIODevice::WriteOnly) && log.write(kWorkedExample) > 0);
    log.close();
    desktop_->answers << log.fileName();
    window_->findChild<QAction*>("mnuOpen")->trigger();
  }
  void cleanup() {
    window_.reset();
    desktop_.reset();
  }

  void doubleClickOnAMemberShowsItsCountsTeamRivalsAndLines() {
    QWidget* details = DoubleClickRow(0);
    QVERIFY(details);
    QCOMPARE(details->windowTitle(), QString("Alpha (Blue) - Vantor Log Analyzer"));
    QVERIFY(!details->isModal());
    const QStringList counts = Counts(details);
    QCOMPARE(counts.mid(0, 10), QStringList({"Frags=2", "Deaths=1", "Suicides=0", "Flag Grabs=1",
                                             "FC Defends=0", "Flag Captures=0", "Flag Defends=0",
                                             "Base Defends=0", "FC Kills=0", "Sentry Kills=0"}));
    QCOMPARE(counts.at(10), QString("Marine Stats"));
    QVERIFY(counts.contains("Sniper Stats"));
    QVERIFY(counts.contains("Railgun=2"));
    QVERIFY(counts.contains("Knife=0"));
    QCOMPARE(details->findChild<QLabel*>("team")->text(),
             QString("Blue: seeded by a Flag Grab event (worked.log, line 1)."));
    QCOMPARE(details->findChild<QLabel*>("rivals")->text(),
             QString("Killed most: Charlie (1). Killed most by: Bravo (1)."));  // a tie goes to the first met
    QCOMPARE(Cells(details, "killMatrix"), QStringList({"Charlie|1|0", "Bravo|1|1"}));
    QCOMPARE(LinesOf(details, "Frags"), QStringList({"worked.log, line 4", "worked.log, line 7"}));
    QCOMPARE(LinesOf(details, "Railgun"), QStringList({"worked.log, line 4", "worked.log, line 7"}));
    QCOMPARE(LinesOf(details, "Deaths"), QStringList({"worked.log, line 6"}));
    QCOMPARE(LinesOf(details, "Suicides"), QStringList());
  }

  void theRedMemberAndRowsThatAreNoMember() {
    QVERIFY(!DoubleClickRow(1));  // Blue's totals
    QVERIFY(!DoubleClickRow(2));  // the blank row
    QWidget* bravo = DoubleClickRow(3);
    QVERIFY(bravo);
    QCOMPARE(bravo->windowTitle(), QString("Bravo (Red) - Vantor Log Analyzer"));
    const QStringList counts = Counts(bravo);
    QCOMPARE(counts.mid(0, 3), QStringList({"Frags=1", "Deaths=2", "Suicides=1"}));
    QVERIFY(counts.contains("Knife=1"));
    QCOMPARE(LinesOf(bravo, "Suicides"), QStringList({"worked.log, line 5"}));
    QCOMPARE(LinesOf(bravo, "Flag Grabs"), QStringList({"worked.log, line 2"}));
    QVERIFY(!DoubleClickRow(4));  // Red's totals
  }
};

QTEST_MAIN(PlayerDetailsTest)
#include "player_details_test.moc"
