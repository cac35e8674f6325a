#pragma once
// Form1 is the top of the analysis core: the worksheet (List1 to List10),
// the tally table and the team colours, with the stages of a run as short
// delegations to the stage folders (events/, stats/, report/), which get
// what they read and fill as arguments and never see Form1. It is never
// shown; the host window provides everything visible.

#include <memory>
#include <string>
#include <vector>

#include "analysis/host.h"
#include "analysis/output_plan.h"
#include "analysis/worksheet.h"
#include "events/rule_set.h"
#include "stats/event_index.h"
#include "stats/run_record.h"
#include "stats/tally_table.h"
#include "stats/team_assignment.h"

namespace vantor {

class Form1 : public Worksheet {
 public:
  // rules: the message rules KillCheck recognises lines by.
  explicit Form1(Host& host, RuleSet rules = RuleSet::BuiltIn());
  Form1(const Form1&) = delete;
  Form1& operator=(const Form1&) = delete;

  // How each member got its team, parallel to List8 and List9.
  TeamReasons reasons;
  // Team colour recorded per slot by the flag counting: "Blue", "Red" or "".
  TeamColours strPlayerTeam;
  // One slot per team member of the last run (Blue first, then Red).
  TallyTable tally;
  // The logs and outputs of the run, so that no output replaces a log.
  OutputPlan plan;
  // Whether the four side files are written at all.
  bool write_side_files = true;
  // The report's path when the user named it; derived from the log when empty.
  std::string report_override;

  // Empties the ten lists in order, then the statistics table.
  void ClearLists();
  // Forgets the team colours of earlier runs, so that the same log always
  // gives the same teams. Every run starts with it.
  void ResetTeamColours() { strPlayerTeam.clear(); }

  // Stages of a run, in the order the runs call them.
  void LoadFile();
  void KillCheck();
  void GetIndividualPlayers();
  void SplitByColor();
  void subCheckTeam();
  void GetIndivStats();
  void OutputToHTML(std::size_t nB, std::size_t nR);
  void subOpenHtml();

  Host& host() { return host_; }
  // What the last GetIndivStats counted, with the why of every count and
  // every team (the lines behind them when places are kept); none before
  // the first run.
  std::shared_ptr<const RunRecord> LastRun() const { return last_run_; }
  // The report path of the last OutputToHTML; empty when no log was chosen.
  const std::string& ReportPath() const { return report_path_; }
  // Whether the last OutputToHTML put this run's report in place.
  bool ReportWritten() const { return report_written_; }

 private:
  // The event index of this run's event lists, built once they are final.
  const EventIndex& Events();
  void OpenReport();

  Host& host_;
  RuleSet rules_;
  std::unique_ptr<EventIndex> events_;
  std::shared_ptr<const RunRecord> last_run_;
  int propagation_pass_ = 0;
  std::string report_path_;
  bool report_written_ = false;
};

}  // namespace vantor
