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

// The rows of the counts table: the ten counts in their order, then the
// report's class tables and the weapon no class table shows.
const char kCountLabels[] =
    "Frags,Deaths (suicides included),Suicides,Flag Grabs,FC Defends,Flag Captures,Flag Defends,"
    "Base Defends,FC Kills,Sentry Kills,Marine Stats,Rocket Splash,Rocket Hit,Turret Gren,Proxy Gren,"
    "Hyperblaster,Homer,Gunner Stats,Megachaingun,Minigun,Laser Def,Shrapnel Grenade,Engineer Stats,"
    "Super Shotgun,Sentry Rocket,Sentry,Ion Fuser,Cyborg Stats,Kamikazi,Grenade,Lightning Gun,Plasma,"
    "Sentry KillerK,SK Splash,Sentry Kills,Sniper Stats,Headshot,Sniper Rifle,Legshot,Railgun,Pipebombs,"
    "Arsonist Stats,Napalm RL Splash,Napalm RL Hit,Flamethrower,Flame Damage,Napalm Grenade,Freeze Gun,"
    "Assassin/Recon/Nurse Stats,Pistol,Knife,Uzi,Goodyear,Disease,Plague Dart,SSG,Other Stats,"
    "Handgrenade Hit,Handgrenade Splash,Shotgun,Gauntlet,Other weapons,Magnotron Grenade";

// "label|value" per row, every weapon count 0 but those given.
QStringList CountRows(const QList<int>& ten, const QMap<QString, int>& weapons) {
  const QStringList labels = QString(kCountLabels).split(',');
  QStringList rows;
  for (int k = 0; k < labels.size(); ++k) {
    const QString& l = labels[k];
    rows << (l.endsWith("Stats") || l == "Other weapons"
                 ? l
                 : l + "|" + QString::number(k < 10 ? ten[k] : weapons.value(l)));
  }
  return rows;
}

}  // namespace

class PlayerDetailsTest : public QObject {
  Q_OBJECT

  std::unique_ptr<FakeDesktop> desktop_;
  std::unique_ptr<vantor::DisplayStats> window_;

  // The details window that opening a row showed, if any.
  static QWidget* Shown(const QWidgetList& before) {
    for (QWidget* top : QApplication::topLevelWidgets())
      if (top->objectName() == "PlayerDetails" && top->isVisible() && !before.contains(top)) return top;
    return nullptr;
  }
  QWidget* DoubleClickRow(int row) {
    const QWidgetList before = QApplication::topLevelWidgets();
    auto* names = window_->findChild<QListWidget*>("lstName");
    const QPoint at = names->visualItemRect(names->item(row)).center();
    // A double-click as the mouse makes it: a click, then the second press.
    QTest::mouseClick(names->viewport(), Qt::LeftButton, {}, at);
    QTest::mouseDClick(names->viewport(), Qt::LeftButton, {}, at);
    return Shown(before);
  }
  // The cells of each row joined by "|"; a group heading of the counts is alone in its row.
  static QStringList Cells(QWidget* details, const char* table_name) {
    auto* table = details->findChild<QTableWidget*>(table_name);
    QStringList rows;
    for (int r = 0; r < table->rowCount(); ++r) {
      QStringList cells;
      for (int c = 0; c < table->columnCount(); ++c) {
        if (table->item(r, c)) cells << table->item(r, c)->text();
      }
      rows << cells.join('|');
    }
    return rows;
  }
  static QStringList LinesOf(QWidget* details, const QString& count) {
    auto* table = details->findChild<QTableWidget*>("counts");
    for (int r = 0; r < table->rowCount(); ++r)
      if (table->item(r, 0)->text() == count) table->selectRow(r);
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
    desktop_->answers << desktop_->Write("worked.log", kWorkedExample);
    window_->findChild<QAction*>("mnuOpen")->trigger();
  }
  void cleanup() {
    window_.reset();
    desktop_.reset();
  }

  void doubleClickOnAMemberShowsItsCountsTeamRivalsAndLines() {
    for (int row : {1, 2, 4}) QVERIFY(!DoubleClickRow(row));  // the totals and the blank row are no member
    QWidget* alpha = DoubleClickRow(0);
    QVERIFY(alpha && !alpha->isModal());
    QCOMPARE(alpha->windowTitle(), QString("Alpha (Blue) - Vantor Log Analyzer"));
    QCOMPARE(alpha->findChild<QLabel*>("player")->text(), QString("<b>Alpha</b> (Blue)"));
    QCOMPARE(Cells(alpha, "counts"), CountRows({2, 1, 0, 1, 0, 0, 0, 0, 0, 0}, {{"Railgun", 2}}));
    const QString team =
        "Plays for %1: their Flag Grab was for %1 (worked.log, line %2: %3 got the %4 flag!).";
    QCOMPARE(alpha->findChild<QLabel*>("team")->text(), team.arg("Blue", "1", "Alpha", "RED"));
    QCOMPARE(alpha->findChild<QLabel*>("rivals")->text(),
             QString("Killed most: Charlie (1). Killed most by: Bravo (1)."));  // a tie goes to the first met
    QCOMPARE(Cells(alpha, "killMatrix"), QStringList({"Charlie|1|0", "Bravo|1|1"}));
    alpha->findChild<QTableWidget*>("killMatrix")->sortByColumn(2, Qt::DescendingOrder);  // as a header click
    QCOMPARE(Cells(alpha, "killMatrix"), QStringList({"Bravo|1|1", "Charlie|1|0"}));
    const QStringList railed = {"worked.log, line 4: Bravo was railed by Alpha",
                                "worked.log, line 7: Charlie was railed by Alpha"};
    QCOMPARE(LinesOf(alpha, "Frags"), railed);
    QCOMPARE(LinesOf(alpha, "Railgun"), railed);
    QCOMPARE(LinesOf(alpha, "Deaths (suicides included)"),
             QStringList({"worked.log, line 6: Alpha was knifed by Bravo"}));
    QCOMPARE(LinesOf(alpha, "Suicides"), QStringList());
    QTest::keyClick(alpha, Qt::Key_Escape);
    QVERIFY(!alpha->isVisible());

    // Return on a row does what a double-click does; Ctrl+W closes.
    auto* names = window_->findChild<QListWidget*>("lstName");
    names->setCurrentRow(3);
    const QWidgetList before = QApplication::topLevelWidgets();
    QTest::keyClick(names, Qt::Key_Return);
    QWidget* bravo = Shown(before);
    QVERIFY(bravo);
    QCOMPARE(bravo->windowTitle(), QString("Bravo (Red) - Vantor Log Analyzer"));
    QCOMPARE(Cells(bravo, "counts"), CountRows({1, 2, 1, 1, 0, 0, 0, 0, 0, 0}, {{"Knife", 1}}));
    QCOMPARE(bravo->findChild<QLabel*>("team")->text(), team.arg("Red", "2", "Bravo", "BLUE"));
    QCOMPARE(bravo->findChild<QLabel*>("rivals")->text(),
             QString("Killed most: Alpha (1). Killed most by: Alpha (1)."));
    QCOMPARE(LinesOf(bravo, "Suicides"), QStringList({"worked.log, line 5: Bravo cratered."}));
    QCOMPARE(LinesOf(bravo, "Flag Grabs"), QStringList({"worked.log, line 2: Bravo got the BLUE flag!"}));
    QTest::keyClick(bravo, Qt::Key_W, Qt::ControlModifier);
    QVERIFY(!bravo->isVisible());
  }

  // A name holding markup and 0x80, the euro sign in Windows-1252, is shown as it is.
  void namesAreShownAsTheLogHasThem() {
    desktop_->answers << desktop_->Write("odd.log",
                                         "^7<i>\x80 got the RED flag!\r\n^7Bravo was railed by <i>\x80\r\n");
    window_->findChild<QAction*>("mnuOpen")->trigger();
    QWidget* odd = DoubleClickRow(0);
    QVERIFY(odd);
    QCOMPARE(odd->windowTitle(), QString("<i>€ (Blue) - Vantor Log Analyzer"));
    auto* player = odd->findChild<QLabel*>("player");
    QCOMPARE(FakeDesktop::Displayed(player->text(), player->textFormat()), QString("<i>€ (Blue)"));
    auto* team = odd->findChild<QLabel*>("team");
    QCOMPARE(
        FakeDesktop::Displayed(team->text(), team->textFormat()),
        QString("Plays for Blue: their Flag Grab was for Blue (odd.log, line 1: <i>€ got the RED flag!)."));
  }
};

QTEST_MAIN(PlayerDetailsTest)
#include "player_details_test.moc"
