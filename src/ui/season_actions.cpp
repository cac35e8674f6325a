// The table's season archive actions: adding the run to an archive, and
// the archive's standings as a page.

#include <QAction>
#include <QDateTime>
#include <QFile>
#include <QFileDialog>

#include "analysis/form1.h"
#include "archive/season_archive.h"
#include "archive/season_page.h"
#include "archive/season_standings.h"
#include "ui/desktop.h"
#include "ui/display_stats.h"
#include "ui/gui_host.h"
#include "ui/settings.h"

namespace vantor {

namespace {

std::string Now(const char* format) { return QDateTime::currentDateTime().toString(format).toStdString(); }

// "season.db" gives "season-standings.html", beside the archive.
std::string StandingsPathFor(const std::string& archive) {
  const std::size_t slash = archive.rfind('/');
  const std::size_t dot = archive.rfind('.');
  const bool has_suffix = dot != std::string::npos && (slash == std::string::npos || dot > slash + 1);
  return (has_suffix ? archive.substr(0, dot) : archive) + "-standings.html";
}

}  // namespace

void DisplayStats::CreateSeasonActions() {
  mnuAddToArchive = new QAction("Add to season archive...", this);
  mnuAddToArchive->setObjectName("mnuAddToArchive");
  connect(mnuAddToArchive, &QAction::triggered, this, &DisplayStats::AddToSeasonArchive);
  mnuSeasonStandings = new QAction("Season standings...", this);
  mnuSeasonStandings->setObjectName("mnuSeasonStandings");
  connect(mnuSeasonStandings, &QAction::triggered, this, &DisplayStats::OpenSeasonStandings);
}

// The archive the user chooses, starting at the one chosen last; empty
// when the dialog is cancelled.
std::string DisplayStats::ChooseArchive(bool adding) {
  QFileDialog dialog(this, adding ? "Add to season archive" : "Season standings");
  dialog.setAcceptMode(adding ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
  dialog.setFileMode(adding ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
  dialog.setOption(QFileDialog::DontConfirmOverwrite);  // an archive is added to, never replaced
  dialog.setNameFilters({"Season archives (*.db)", "All files (*)"});
  dialog.setDefaultSuffix("db");
  if (!ArchivePath().isEmpty()) dialog.selectFile(ArchivePath());
  if (desktop_.Exec(dialog) != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return "";
  RememberArchivePath(dialog.selectedFiles().first());
  return QFile::encodeName(dialog.selectedFiles().first()).toStdString();
}

void DisplayStats::AddToSeasonArchive() {
  const std::shared_ptr<const RunRecord> run = form1_ ? form1_->LastRun() : nullptr;
  if (!run || running_) return;
  const std::string path = ChooseArchive(true);
  if (path.empty()) return;
  OutputPlan plan;
  for (const std::string& log : run->files) plan.Declare(log);
  if (const auto refusal = plan.Check("season archive", path))
    return host_->ShowMessage(*refusal, MessageIcon::kCritical);
  const ArchiveOutcome outcome = ArchiveRun(path, *run, Now("yyyy-MM-dd HH:mm:ss"));
  if (!outcome.ok) return host_->ShowMessage(outcome.message, MessageIcon::kCritical);
  std::string text;
  for (const std::string& notice : outcome.notices) text += notice + "\n";
  text += ArchiveReport(path, outcome);
  host_->ShowMessage(text, MessageIcon::kNone);
}

void DisplayStats::OpenSeasonStandings() {
  const std::string archive = ChooseArchive(false);
  if (archive.empty()) return;
  const Standings standings = ReadStandings(archive, {});
  if (!standings.refusal.empty()) return host_->ShowMessage(standings.refusal, MessageIcon::kCritical);
  const std::string page = StandingsPathFor(archive);
  OutputPlan plan;
  plan.Declare(archive);
  const auto refusal = plan.Check("season standings", page);
  const IoResult result = refusal
                              ? IoResult{false, *refusal}
                              : WriteSeasonPageFile(page, standings, {archive, {}, Now("yyyy-MM-dd HH:mm")});
  if (!result.ok) return host_->ShowMessage(result.message, MessageIcon::kCritical);
  host_->OpenDocument(page);
}

}  // namespace vantor
