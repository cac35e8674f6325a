#pragma once
// Form1 holds the worksheet (List1 to List10), the tally table and the
// team colours, and performs the stages of an analysis run. It is never
// shown; the host window provides everything visible.

#include <array>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/host.h"
#include "analysis/source_line.h"
#include "analysis/worksheet_list.h"
#include "stats/flag_kinds.h"
#include "stats/run_record.h"
#include "stats/tally_table.h"

namespace vantor {

class EventIndex;

class Form1 {
 public:
  explicit Form1(Host& host);
  ~Form1();
  Form1(const Form1&) = delete;
  Form1& operator=(const Form1&) = delete;

  // The worksheet. Rows of List2/List3/List4 are parallel (killer, victim,
  // method of one kill or suicide), as are List5/List6 (player text and
  // action of one flag event).
  WorksheetList List1;   // kept log lines; after KillCheck, the unknown ones
  WorksheetList List2;   // killer, "Himself" for a suicide
  WorksheetList List3;   // victim
  WorksheetList List4;   // method
  WorksheetList List5;   // flag event player text
  WorksheetList List6;   // flag action
  WorksheetList List7;   // roster
  WorksheetList List8;   // Blue members
  WorksheetList List9;   // Red members
  WorksheetList List10;  // destroyers of sentry guns

  // Where rows came from, kept only after KeepProvenance(true) (for the
  // exports and the details window; nothing else reads them): the logs of
  // the run by index, then per row its log and line, parallel to List1,
  // to List2..List4, to List5/List6 and to List10 (these with the text of
  // the event's line).
  std::vector<std::string> SourceFiles;
  SourceLines List1Sources;
  EventSources KillSources, FlagSources, SentrySources;
  void KeepProvenance(bool keep) { keep_provenance_ = keep; }
  bool KeepsProvenance() const { return keep_provenance_; }
  // What the last GetIndivStats counted, with the why of every count and
  // every team; none before the first, or without provenance.
  const RunRecord* LastRun() const { return last_run_.get(); }
  std::shared_ptr<const RunRecord> SharedLastRun() const { return last_run_; }

  // How each member got its team, parallel to List8 and List9.
  std::vector<TeamReason> List8Reasons, List9Reasons;

  // Team colour recorded per slot by the flag counting: "Blue", "Red" or "".
  std::vector<std::string> strPlayerTeam;
  // One slot per team member of the last run (Blue first, then Red).
  TallyTable tally;

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

  Host& host() { return host_; }
  // Whether the last OutputToHTML put this run's report in place.
  bool ReportWritten() const { return report_written_; }

 private:
  // The flag events credited to clnMember, by kind, with the colours they
  // leave behind.
  FlagCredit GetFlagInfo(std::string_view clnMember);
  const EventIndex& Events();
  void EmptyListsWithANewPool();
  void CountKillEvents(std::size_t nB, std::size_t nR);
  void CountFlagEvents(std::size_t nB, std::size_t nR);
  void FillStatisticsTable(std::size_t nB, std::size_t nR);
  // Per event row, whether the counting left it (true) or consumed it.
  std::vector<bool> UncountedEvents() const;
  void RemoveCountedEvents(const std::vector<bool>& keep);
  // Keeps what the run counted for the exports and the details window:
  // takes the event lists as they were counted and leaves the uncounted
  // rows, as RemoveCountedEvents does.
  void RecordRun(std::size_t nB, const std::vector<bool>& keep);
  void AppendMember(WorksheetList& team, std::vector<TeamReason>& reasons, const std::string& name,
                    TeamReason reason);

  Host& host_;
  // Built from the event lists on first use in a run; dropped whenever the
  // event lists change.
  std::unique_ptr<EventIndex> events_;
  std::shared_ptr<const RunRecord> last_run_;
  bool keep_provenance_ = false;
  int propagation_pass_ = 0;
  bool report_written_ = false;
};

}  // namespace vantor
