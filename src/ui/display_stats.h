#pragma once
// DisplayStats: the main window. It offers the commands, shows the progress
// of a run and the statistics table; the analysis itself is Form1's.

#include <QMainWindow>
#include <QPointer>
#include <memory>

#include "report/run_outputs.h"
#include "ui/file_open_dialog.h"
#include "ui/statistics_lists.h"

class QAction;
class QGridLayout;
class QLabel;
class QListWidget;
class QMenu;
class QProgressBar;
class QPushButton;

namespace vantor {

class Desktop;
class Form1;
class GuiHost;
class frmOptions;

class DisplayStats : public QMainWindow {
  Q_OBJECT

 public:
  explicit DisplayStats(Desktop& desktop, QWidget* parent = nullptr);
  ~DisplayStats() override;

  // Logs given on the command line ("Open with"): one is opened as File >
  // Open opens it; several as with Tools > Append checked: each opened in
  // turn, then Process. None: nothing happens.
  void OpenLogsFromCommandLine(const QStringList& paths);

 protected:
  // File > Exit and the close box: Form1 goes first, then the window.
  void closeEvent(QCloseEvent* event) override;
  // Logs dropped on the window: one as File > Open of it, several together.
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;
  // Return on a row of the table opens that player's details.
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void CreateMenus();
  void CreateStatisticsTable(QGridLayout& grid);
  void CreateAboutLabels(QGridLayout& grid);
  void CreateProcessControls(QGridLayout& grid);
  // Keys beside the menus' own: Ctrl+O, Ctrl+Q, Alt+F, Alt+T.
  void CreateShortcuts();
  // What the table shows, the report and its folder, and reading progress.
  void CreateStatusBar();
  void UpdateStatus();
  // The smallest size at which no heading is cut.
  void SetMinimumSizeForHeadings(const QGridLayout& grid);
  void CreateForm1();
  // The table's context menu: the run's exports, as vantor-cli writes them.
  void CreateTableMenu();
  void ExportRun(ExportFormat format);
  void OpenSummary();
  // The season archive (season_actions.cpp).
  void CreateSeasonActions();
  std::string ChooseArchive(bool adding);
  void AddToSeasonArchive();
  void OpenSeasonStandings();

  // The commands.
  void OpenLog();
  void OpenChosenLog();
  void ProcessLogs();
  void ToggleAppend();
  void ShowOptions();

  // Runs a command unless one is under way, then shows the statistics table.
  void RunCommand(void (DisplayStats::*command)());
  // Runs it; running out of memory is said and the window stays usable.
  void RunGuarded(void (DisplayStats::*command)());
  QString InitialLogDirectory() const;
  StatisticsLists Lists() const;
  void ShowStatistics();
  // Double-click on a member's row: that slot's details window.
  void ShowPlayerDetails(int row);

  Desktop& desktop_;
  FileOpenDialog cmnFile;

  QMenu* mnuFile = nullptr;
  QAction* mnuOpen = nullptr;
  QAction* mnuExit = nullptr;
  QMenu* mnuTools = nullptr;
  QAction* mnuAppend = nullptr;
  QAction* mnuOptions = nullptr;
  QPushButton* cmdProcess = nullptr;
  QProgressBar* prgProgress = nullptr;
  QAction* mnuCopyTable = nullptr;
  QAction* mnuExportCsv = nullptr;
  QAction* mnuExportJson = nullptr;
  QAction* mnuOpenSummary = nullptr;
  QAction* mnuAddToArchive = nullptr;
  QAction* mnuSeasonStandings = nullptr;

  StatisticsList* lstName = nullptr;
  StatisticsList* lstFrags = nullptr;
  StatisticsList* lstDeaths = nullptr;
  StatisticsList* lstSuicides = nullptr;
  StatisticsList* lstFlagGrabs = nullptr;
  StatisticsList* lstFCDefends = nullptr;
  StatisticsList* lstFlagCaptures = nullptr;
  StatisticsList* lstFlagDefends = nullptr;
  StatisticsList* lstBaseDefends = nullptr;
  StatisticsList* lstFCKills = nullptr;
  StatisticsList* lstSentKill = nullptr;

  QLabel* statusSummary = nullptr;
  QPushButton* cmdOpenReport = nullptr;
  QPushButton* cmdShowFolder = nullptr;
  QPushButton* cmdOpenSummary = nullptr;
  QProgressBar* prgReading = nullptr;

  QPointer<frmOptions> options_;
  std::unique_ptr<GuiHost> host_;
  std::unique_ptr<Form1> form1_;
  bool running_ = false;
  bool close_pending_ = false;
};

}  // namespace vantor
