#include "ui/display_stats.h"

#include <QAction>
#include <QClipboard>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QDateTime>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QGridLayout>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QListWidget>
#include <QLocale>
#include <QMenuBar>
#include <QMimeData>
#include <QProgressBar>
#include <QPushButton>
#include <QShortcut>
#include <QStatusBar>
#include <QTimer>
#include <QUrl>
#include <utility>

#include "analysis/analysis_run.h"
#include "analysis/form1.h"
#include "analysis/log_import.h"
#include "analysis/run_lock.h"
#include "report/report_path.h"
#include "report/run_outputs.h"
#include "report/summary_report.h"
#include "stats/counts.h"
#include "ui/command_lock.h"
#include "ui/desktop.h"
#include "ui/frm_options.h"
#include "ui/gui_host.h"
#include "ui/player_details.h"
#include "ui/settings.h"

namespace vantor {

namespace {

constexpr char kCaption[] = "Vantor Log Analyzer";
constexpr char kTitleText[] = "Vantor Log Analyzer 0.80";
constexpr char kCreditText[] = "Per-player statistics from capture-the-flag console logs";
constexpr char kContactText[] = "Contact: the Vantor Log Analyzer developers";
constexpr char kNoticeText[] =
    "File > Open analyses a log at once. With Tools > Append checked, open several logs, "
    "then press Process.";
constexpr char kAboutFont[] = "Times New Roman";
constexpr QSize kStartSize(900, 520);

// The window is one grid: the headings along the top; under the first five
// headings the about labels, the Process button, the progress bar and the
// notice above five short lists; under the other six, full-height lists.
enum GridRow {
  kHeadingRow,
  kTitleRow,
  kCreditRow,
  kContactRow,
  kProcessRow,
  kProgressRow,
  kNoticeRow,
  kListRow
};
constexpr int kLeftColumns = 5;
// "Name" is a little more than twice as wide as a count column.
constexpr int kNameStretch = 9;
constexpr int kCountStretch = 4;

// Widths come from the column stretches alone, never from the texts.
template <typename Widget>
Widget* Sized(Widget* widget) {
  widget->setSizePolicy(QSizePolicy::Ignored, widget->sizePolicy().verticalPolicy());
  widget->setMinimumWidth(0);
  return widget;
}

QLabel* AboutLabel(const char* text, int point_size) {
  auto* label = Sized(new QLabel(text));
  if (point_size > 0) {
    QFont font(kAboutFont, point_size);
    font.setStyleHint(QFont::Serif);
    label->setFont(font);
  }
  return label;
}

// A heading starts where the text of its list starts, inside the frame.
QLabel* Heading(std::string_view text) {
  auto* label = Sized(new QLabel(QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()))));
  label->setIndent(3);
  return label;
}

StatisticsList* NewStatisticsList(const char* name) {
  auto* list = Sized(new StatisticsList);
  list->setObjectName(name);
  list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  list->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  return list;
}

}  // namespace

DisplayStats::DisplayStats(Desktop& desktop, QWidget* parent)
    : QMainWindow(parent), desktop_(desktop), cmnFile(desktop) {
  setWindowTitle(kCaption);
  auto* central = new QWidget(this);
  auto* grid = new QGridLayout(central);
  grid->setHorizontalSpacing(2);
  setCentralWidget(central);
  CreateMenus();
  CreateStatisticsTable(*grid);
  CreateAboutLabels(*grid);
  CreateProcessControls(*grid);
  CreateForm1();
  CreateShortcuts();
  CreateStatusBar();
  SetMinimumSizeForHeadings(*grid);
  setAcceptDrops(true);
  resize(kStartSize);
}

// The program destroys the window only after every window has closed; a
// dialog still open here belongs to a test or an embedding program.
DisplayStats::~DisplayStats() { delete options_; }

void DisplayStats::CreateMenus() {
  auto add_item = [](QMenu* menu, const char* text, const char* name) {
    QAction* item = menu->addAction(text);
    item->setObjectName(name);
    return item;
  };
  mnuFile = menuBar()->addMenu("File");
  mnuFile->setObjectName("mnuFile");
  mnuOpen = add_item(mnuFile, "Open", "mnuOpen");
  mnuExit = add_item(mnuFile, "Exit", "mnuExit");
  mnuTools = menuBar()->addMenu("Tools");
  mnuTools->setObjectName("mnuTools");
  mnuAppend = add_item(mnuTools, "Append", "mnuAppend");
  mnuAppend->setCheckable(true);
  mnuOptions = add_item(mnuTools, "Options", "mnuOptions");
  connect(mnuOpen, &QAction::triggered, this, [this] { RunCommand(&DisplayStats::OpenLog); });
  connect(mnuExit, &QAction::triggered, this, &QWidget::close);
  connect(mnuAppend, &QAction::triggered, this, &DisplayStats::ToggleAppend);
  connect(mnuOptions, &QAction::triggered, this, &DisplayStats::ShowOptions);
}

void DisplayStats::CreateStatisticsTable(QGridLayout& grid) {
  const std::array<std::pair<StatisticsList * DisplayStats::*, const char*>, StatisticsTable::kColumns>
      columns = {{{&DisplayStats::lstName, "lstName"},
                  {&DisplayStats::lstFrags, "lstFrags"},
                  {&DisplayStats::lstDeaths, "lstDeaths"},
                  {&DisplayStats::lstSuicides, "lstSuicides"},
                  {&DisplayStats::lstFlagGrabs, "lstFlagGrabs"},
                  {&DisplayStats::lstFCDefends, "lstFCDefends"},
                  {&DisplayStats::lstFlagCaptures, "lstFlagCaptures"},
                  {&DisplayStats::lstFlagDefends, "lstFlagDefends"},
                  {&DisplayStats::lstBaseDefends, "lstBaseDefends"},
                  {&DisplayStats::lstFCKills, "lstFCKills"},
                  {&DisplayStats::lstSentKill, "lstSentKill"}}};
  for (int c = 0; c < static_cast<int>(columns.size()); ++c) {
    const std::string_view heading = ColumnHeading(c);
    grid.addWidget(Heading(heading), kHeadingRow, c);
    StatisticsList* list = this->*columns[c].first = NewStatisticsList(columns[c].second);
    // The five left lists share the bottom row; the six right ones reach up
    // to their headings.
    const bool left = c < kLeftColumns;
    grid.addWidget(list, left ? kListRow : kTitleRow, c, left ? 1 : kListRow - kTitleRow + 1, 1);
    grid.setColumnStretch(c, c == 0 ? kNameStretch : kCountStretch);
  }
  grid.setRowStretch(kListRow, 1);
  // One scroll bar for the short lists on the left, one for the tall lists
  // on the right; the lists move together either way.
  lstFlagGrabs->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
  lstSentKill->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
  LinkStatisticsLists(Lists());
  CreateTableMenu();
  for (StatisticsList* list : Lists()) {
    connect(list, &QListWidget::itemDoubleClicked, this,
            [this, list](QListWidgetItem* item) { ShowPlayerDetails(list->row(item)); });
    list->installEventFilter(this);
    list->setContextMenuPolicy(Qt::ActionsContextMenu);
    list->addActions(
        {mnuCopyTable, mnuExportCsv, mnuExportJson, mnuOpenSummary, mnuAddToArchive, mnuSeasonStandings});
  }
}

void DisplayStats::CreateTableMenu() {
  mnuCopyTable = new QAction("Copy table", this);
  mnuCopyTable->setObjectName("mnuCopyTable");
  connect(mnuCopyTable, &QAction::triggered, this, [this] {
    if (host_) QGuiApplication::clipboard()->setText(StatisticsTableText(host_->FilledTable()));
  });
  mnuExportCsv = new QAction("Export as CSV...", this);
  mnuExportCsv->setObjectName("mnuExportCsv");
  mnuExportJson = new QAction("Export as JSON...", this);
  mnuExportJson->setObjectName("mnuExportJson");
  connect(mnuExportCsv, &QAction::triggered, this, [this] { ExportRun(ExportFormat::kCsv); });
  connect(mnuExportJson, &QAction::triggered, this, [this] { ExportRun(ExportFormat::kJson); });
  mnuOpenSummary = new QAction("Open summary", this);
  mnuOpenSummary->setObjectName("mnuOpenSummary");
  connect(mnuOpenSummary, &QAction::triggered, this, &DisplayStats::OpenSummary);
  CreateSeasonActions();
}

// The evening's summary, written beside the report ("game.html" gives
// "game-summary.html") and handed to the desktop.
void DisplayStats::OpenSummary() {
  const std::shared_ptr<const RunRecord> run = form1_ ? form1_->LastRun() : nullptr;
  if (!run || running_ || !form1_->ReportWritten()) return;
  const std::string path = SummaryPathFor(form1_->ReportPath());
  OutputPlan plan;
  for (const std::string& log : run->files) plan.Declare(log);
  plan.Check("report", form1_->ReportPath());
  const auto refusal = plan.Check("summary", path);
  const std::string date = QDateTime::currentDateTime().toString("yyyy-MM-dd HH:mm").toStdString();
  const IoResult result = refusal ? IoResult{false, *refusal} : WriteSummaryFile(path, *run, date);
  if (!result.ok) return host_->ShowMessage(result.message, MessageIcon::kCritical);
  host_->OpenDocument(path);
}

void DisplayStats::ExportRun(ExportFormat format) {
  const std::shared_ptr<const RunRecord> run = form1_ ? form1_->LastRun() : nullptr;
  if (!run || running_) return;
  const bool csv = format == ExportFormat::kCsv;
  QFileDialog dialog(this, csv ? "Export as CSV" : "Export as JSON");
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setNameFilters({csv ? "CSV files (*.csv)" : "JSON files (*.json)", "All files (*)"});
  dialog.setDefaultSuffix(csv ? "csv" : "json");
  if (desktop_.Exec(dialog) != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return;
  const std::string path = QFile::encodeName(dialog.selectedFiles().first()).toStdString();
  // The run may be over and its worksheet emptied: its logs and report
  // are what the export must not replace.
  OutputPlan plan;
  for (const std::string& log : run->files) plan.Declare(log);
  if (form1_->ReportWritten()) plan.Check("report", form1_->ReportPath());
  const auto refusal = plan.Check(csv ? "CSV" : "JSON", path);
  const IoResult result = refusal ? IoResult{false, *refusal} : WriteExportFile(format, *run, path);
  if (!result.ok) host_->ShowMessage(result.message, MessageIcon::kCritical);
}

void DisplayStats::CreateAboutLabels(QGridLayout& grid) {
  grid.addWidget(AboutLabel(kTitleText, 12), kTitleRow, 0, 1, kLeftColumns);
  grid.addWidget(AboutLabel(kCreditText, 9), kCreditRow, 0, 1, kLeftColumns);
  grid.addWidget(AboutLabel(kContactText, 0), kContactRow, 0, 1, kLeftColumns);
  QLabel* notice = AboutLabel(kNoticeText, 0);
  notice->setWordWrap(true);
  grid.addWidget(notice, kNoticeRow, 0, 1, kLeftColumns);
}

void DisplayStats::CreateProcessControls(QGridLayout& grid) {
  cmdProcess = new QPushButton("Process");
  cmdProcess->setObjectName("cmdProcess");
  cmdProcess->setEnabled(false);
  connect(cmdProcess, &QPushButton::clicked, this, [this] { RunCommand(&DisplayStats::ProcessLogs); });
  grid.addWidget(cmdProcess, kProcessRow, 0, 1, kLeftColumns, Qt::AlignLeft);
  prgProgress = Sized(new QProgressBar);
  prgProgress->setObjectName("prgProgress");
  prgProgress->setRange(0, 1000);
  // The bar comes and goes with every run; its place stays reserved so
  // that the lists do not jump.
  QSizePolicy policy = prgProgress->sizePolicy();
  policy.setRetainSizeWhenHidden(true);
  prgProgress->setSizePolicy(policy);
  prgProgress->hide();
  grid.addWidget(prgProgress, kProgressRow, 0, 1, kLeftColumns);
}

void DisplayStats::CreateShortcuts() {
  mnuOpen->setShortcut(QKeySequence::Open);
  mnuExit->setShortcut(QKeySequence("Ctrl+Q"));
  // Mnemonics without an "&" in the captions, which stay as they are.
  for (const auto& [keys, menu] : {std::pair{"Alt+F", mnuFile}, std::pair{"Alt+T", mnuTools}}) {
    auto* shortcut = new QShortcut(QKeySequence(keys), this);
    QMenu* const target = menu;
    connect(shortcut, &QShortcut::activated, this,
            [this, target] { menuBar()->setActiveAction(target->menuAction()); });
  }
}

void DisplayStats::CreateStatusBar() {
  statusSummary = new QLabel("No log analysed yet");
  statusSummary->setObjectName("statusSummary");
  statusSummary->setTextFormat(Qt::PlainText);
  prgReading = new QProgressBar;
  prgReading->setObjectName("prgReading");
  prgReading->setRange(0, 1000);
  prgReading->setMaximumWidth(160);
  prgReading->hide();
  cmdOpenReport = new QPushButton("Open report");
  cmdOpenReport->setObjectName("cmdOpenReport");
  cmdShowFolder = new QPushButton("Show folder");
  cmdShowFolder->setObjectName("cmdShowFolder");
  cmdOpenSummary = new QPushButton("Open summary");
  cmdOpenSummary->setObjectName("cmdOpenSummary");
  connect(cmdOpenSummary, &QPushButton::clicked, this, &DisplayStats::OpenSummary);
  const auto open = [this](bool folder) {
    const QString report = QFile::decodeName(form1_->ReportPath().c_str());
    desktop_.OpenUrl(QUrl::fromLocalFile(folder ? QFileInfo(report).absolutePath() : report));
  };
  connect(cmdOpenReport, &QPushButton::clicked, this, [open] { open(false); });
  connect(cmdShowFolder, &QPushButton::clicked, this, [open] { open(true); });
  statusBar()->addWidget(statusSummary, 1);
  statusBar()->addPermanentWidget(prgReading);
  statusBar()->addPermanentWidget(cmdOpenReport);
  statusBar()->addPermanentWidget(cmdShowFolder);
  statusBar()->addPermanentWidget(cmdOpenSummary);
  UpdateStatus();
}

void DisplayStats::UpdateStatus() {
  const std::shared_ptr<const RunRecord> run = form1_ ? form1_->LastRun() : nullptr;
  const bool report = run && form1_->ReportWritten();
  cmdOpenReport->setEnabled(report);
  cmdShowFolder->setEnabled(report);
  cmdOpenSummary->setEnabled(report);
  if (!run) return;
  // After a Process run the table is empty by design; the status still says what was analysed.
  const QString logs = run->files.size() == 1 ? QFileInfo(QFile::decodeName(run->files[0].c_str())).fileName()
                                              : QString("%1 logs").arg(run->files.size());
  QString text = QString("%1: %2 players, %3 lines")
                     .arg(logs)
                     .arg(run->members.size())
                     .arg(static_cast<qulonglong>(run->lines_read));
  if (report) text += ". Report: " + QFile::decodeName(form1_->ReportPath().c_str());
  statusSummary->setText(text);
}

void DisplayStats::SetMinimumSizeForHeadings(const QGridLayout& grid) {
  // Column widths follow the stretches alone: the widest heading per
  // stretch unit sets the unit.
  int unit = 1, stretch = 0;
  for (int c = 0; c < static_cast<int>(StatisticsTable::kColumns); ++c) {
    const auto* heading = static_cast<const QLabel*>(grid.itemAtPosition(kHeadingRow, c)->widget());
    const int width = heading->fontMetrics().horizontalAdvance(heading->text()) + 2 * heading->indent() + 8;
    unit = std::max(unit, (width + grid.columnStretch(c) - 1) / grid.columnStretch(c));
    stretch += grid.columnStretch(c);
  }
  setMinimumWidth(unit * stretch + grid.horizontalSpacing() * static_cast<int>(StatisticsTable::kColumns) +
                  24);
  setMinimumHeight(420);
}

void DisplayStats::dragEnterEvent(QDragEnterEvent* event) {
  if (!running_ && event->mimeData()->hasUrls()) event->acceptProposedAction();
}

void DisplayStats::dropEvent(QDropEvent* event) {
  QStringList logs;
  for (const QUrl& url : event->mimeData()->urls()) {
    if (url.isLocalFile()) logs << url.toLocalFile();
  }
  event->acceptProposedAction();
  // After the drop has ended: a run must not hold the program it came from.
  QTimer::singleShot(0, this, [this, logs] { OpenLogsFromCommandLine(logs); });
}

bool DisplayStats::eventFilter(QObject* watched, QEvent* event) {
  auto* list = dynamic_cast<StatisticsList*>(watched);
  const auto* key = event->type() == QEvent::KeyPress ? static_cast<QKeyEvent*>(event) : nullptr;
  if (list == nullptr || key == nullptr || (key->key() != Qt::Key_Return && key->key() != Qt::Key_Enter)) {
    return QMainWindow::eventFilter(watched, event);
  }
  ShowPlayerDetails(list->currentRow());
  return true;
}

void DisplayStats::CreateForm1() {
  host_ = std::make_unique<GuiHost>(
      desktop_, HostControls{this, &cmnFile, mnuAppend, prgProgress, cmdProcess, &prgReading});
  host_->OnStatisticsFilled([this] { ShowStatistics(); });
  form1_ = std::make_unique<Form1>(*host_);
  // The details window explains every number, so the run keeps the places.
  form1_->KeepPlaces(true);
  form1_->RecordsMarkers = true;
}

void DisplayStats::ShowPlayerDetails(int row) {
  const std::shared_ptr<const RunRecord> run = form1_ ? form1_->LastRun() : nullptr;
  if (!run || lstName->count() == 0) return;
  // Rows: the Blue members, Blue's totals, the blank row, the Red members, Red's totals.
  const auto blue = static_cast<int>(run->blue_count);
  const int red = static_cast<int>(run->members.size()) - blue;
  int slot = -1;
  if (row >= 0 && row < blue) slot = row;
  if (row >= blue + 2 && row < blue + 2 + red) slot = row - 2;
  if (slot < 0) return;
  auto* details = new PlayerDetails(run, static_cast<std::size_t>(slot), this);
  details->show();
}

void DisplayStats::closeEvent(QCloseEvent* event) {
  if (running_) {
    // A run cannot be cut short; the window closes as soon as it is over.
    close_pending_ = true;
    event->ignore();
    return;
  }
  form1_.reset();
  event->accept();
}

void DisplayStats::RunCommand(void (DisplayStats::*command)()) {
  if (running_ || !form1_) return;
  running_ = true;
  {
    CommandLock lock({mnuOpen, mnuExit, mnuAppend, mnuOptions, cmdProcess});
    const std::string side_dir = host_->ProgramDirectory();
    const RunLock run_lock(side_dir, [&] {
      statusBar()->showMessage("Waiting for another run that writes into " +
                               QFile::decodeName(side_dir.c_str()));
      QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    });
    statusBar()->clearMessage();
    RunGuarded(command);
  }
  running_ = false;
  ShowStatistics();
  UpdateStatus();
  if (close_pending_) close();
}

void DisplayStats::RunGuarded(void (DisplayStats::*command)()) {
  try {
    (this->*command)();
  } catch (const std::bad_alloc&) {
    // What the run held is let go, and the window goes on.
    form1_->ClearLists();
    const QString log = QFile::decodeName(host_->ChosenLogPath().c_str());
    host_->ShowMessage(QFile::encodeName("Not enough memory to analyse " + log).toStdString(),
                       MessageIcon::kCritical);
  }
}

void DisplayStats::OpenLog() {
  cmnFile.ShowOpen(this, InitialLogDirectory());
  OpenChosenLog();
}

void DisplayStats::OpenChosenLog() {
  form1_->LoadFile();
  if (!mnuAppend->isChecked()) OpenRun(*form1_);
}

void DisplayStats::OpenLogsFromCommandLine(const QStringList& paths) {
  if (paths.size() > 1 && !mnuAppend->isChecked()) mnuAppend->trigger();
  QStringList logs;
  for (const QString& path : paths)
    logs << QFile::decodeName(ResolvedLogPath(QFile::encodeName(path).toStdString()).c_str());
  // All are known before the first is read: no side file may replace a later one.
  for (const QString& log : logs) form1_->plan.Declare(QFile::encodeName(log).toStdString());
  for (const QString& log : logs) {
    cmnFile.Choose(log);
    RunCommand(&DisplayStats::OpenChosenLog);
  }
  if (paths.size() > 1) cmdProcess->click();
}

void DisplayStats::ProcessLogs() { ProcessRun(*form1_); }

void DisplayStats::ToggleAppend() {
  // The menu item has already moved its check mark; emptying the lists
  // before or after that is all the same to the core, which reads the mark
  // only when a log is opened.
  if (!form1_) return;
  form1_->ClearLists();
  cmdProcess->setEnabled(mnuAppend->isChecked());
  ShowStatistics();
}

void DisplayStats::ShowOptions() {
  // Without a parent the dialog is a window of its own: closing the main
  // window neither closes it nor ends the program while it is open. A
  // closed dialog is only waiting to be deleted, so Options opens afresh.
  if (!options_ || options_->isHidden()) options_ = new frmOptions(desktop_);
  options_->show();
  options_->raise();
  options_->activateWindow();
}

QString DisplayStats::InitialLogDirectory() const {
  const QString input_dir = ReadSetting(kInputDirSetting);
  return input_dir.isEmpty() ? desktop_.ProgramDirectory() : input_dir;
}

StatisticsLists DisplayStats::Lists() const {
  return {lstName,         lstFrags,       lstDeaths,      lstSuicides, lstFlagGrabs, lstFCDefends,
          lstFlagCaptures, lstFlagDefends, lstBaseDefends, lstFCKills,  lstSentKill};
}

void DisplayStats::ShowStatistics() {
  if (host_) ShowStatisticsTable(Lists(), host_->Statistics());
}

}  // namespace vantor
