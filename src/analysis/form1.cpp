#include "analysis/form1.h"

#include "analysis/log_import.h"
#include "events/kill_check.h"
#include "report/html_report.h"
#include "report/report_path.h"
#include "report/unknown_lines.h"
#include "stats/player_roster.h"
#include "stats/player_tallies.h"

namespace vantor {

namespace {

void Report(Host& host, const IoResult& result) {
  if (!result.ok) host.ShowMessage(result.message, MessageIcon::kCritical);
}

}  // namespace

Form1::Form1(Host& host, RuleSet rules) : host_(host), rules_(std::move(rules)) {}

void Form1::ClearLists() {
  Empty();
  plan.ClearRun();
  reasons = {};
  events_.reset();
  host_.Statistics().Clear();
}

const EventIndex& Form1::Events() {
  // Stages called on their own, without KillCheck, get it here.
  if (!events_) events_ = std::make_unique<EventIndex>(*this);
  return *events_;
}

void Form1::LoadFile() {
  if (!host_.AppendChecked()) ClearLists();
  const std::string file_name = host_.ChosenLogPath();
  if (file_name.empty()) return host_.ShowMessage(kChooseAFile, MessageIcon::kNone);
  plan.AddLog(file_name);
  ImportLog(file_name, write_side_files ? host_.ProgramDirectory() : "", host_, plan, *this);
}

void Form1::KillCheck() {
  vantor::KillCheck(rules_, *this);
  events_ = std::make_unique<EventIndex>(*this);  // the event lists are final until the counting
}

void Form1::GetIndividualPlayers() { vantor::GetIndividualPlayers(List2, List3, List7); }

void Form1::SplitByColor() {
  propagation_pass_ = 0;
  vantor::SplitByColor(*this, Events(), tally, strPlayerTeam, reasons);
}

void Form1::subCheckTeam() { vantor::subCheckTeam(*this, Events(), ++propagation_pass_, reasons); }

void Form1::GetIndivStats() {
  const std::size_t nB = List8.Count();
  const std::size_t nR = List9.Count();
  const auto maximum = static_cast<std::int64_t>((nB + nR) * 100 + 50);
  host_.SetProgressMaximum(maximum);
  CountTallies(*this, Events(), tally, strPlayerTeam,
               [&](std::int64_t value) { host_.SetProgressValue(value); });
  host_.SetProgressValue(maximum * 8 / 10);
  FillStatisticsTable(tally, nB, host_.Statistics());
  host_.StatisticsFilled();
  last_run_ = RecordRun(*this, Events(), tally, reasons, UncountedEvents(*this), propagation_pass_);
  events_.reset();  // the counted events have left the lists
  OutputToHTML(nB, nR);
  host_.SetProgressValue(maximum * 9 / 10);
}

void Form1::OutputToHTML(std::size_t nB, std::size_t nR) {
  report_path_ = report_override.empty() ? GetReportPath(host_) : report_override;
  report_written_ = false;
  if (report_path_.empty()) return;  // no log chosen: nothing to name a report after
  if (auto refusal = plan.Check("report", report_path_)) return Report(host_, {false, *refusal});
  const IoResult result = WriteReportFile(report_path_, tally, nB, nR, host_.Statistics());
  Report(host_, result);
  report_written_ = result.ok;
}

void Form1::subOpenHtml() {
  if (!write_side_files) return OpenReport();
  const std::string unknown = host_.ProgramDirectory() + std::string(kUnknownFile);
  if (auto refusal = plan.Check(kUnknownFile.substr(1), unknown)) {
    Report(host_, {false, *refusal});
  } else {
    Report(host_, WriteUnknownLines(List1, unknown));
  }
  OpenReport();
}

void Form1::OpenReport() {
  // A report that could not be written is not opened: what lies at its
  // path, if anything, is from an earlier run.
  if (report_written_) host_.OpenDocument(report_path_);
}

}  // namespace vantor
