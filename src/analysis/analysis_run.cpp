#include "analysis/analysis_run.h"

#include "analysis/form1.h"

namespace vantor {

namespace {

// The stages both runs share, up to the tallies; the progress positions
// are absolute values in the bar's range.
void AnalyseUpToTallies(Form1& form, int propagation_passes) {
  Host& host = form.host();
  form.ResetTeamColours();
  host.SetProgressVisible(true);
  host.SetProgressValue(10);
  form.KillCheck();
  form.GetIndividualPlayers();
  host.SetProgressValue(20);
  form.SplitByColor();
  for (int pass = 0; pass < propagation_passes; ++pass) form.subCheckTeam();
  host.SetProgressValue(30);
  form.GetIndivStats();
}

}  // namespace

void OpenRun(Form1& form) {
  Host& host = form.host();
  AnalyseUpToTallies(form, 3);
  host.SetProgressValue(host.ProgressMaximum());
  form.subOpenHtml();
  host.SetProgressVisible(false);
}

void ProcessRun(Form1& form) {
  Host& host = form.host();
  host.SetProcessCaption("Processing");
  AnalyseUpToTallies(form, 2);
  host.SetProcessCaption("Process");
  host.SetProgressValue(host.ProgressMaximum());
  form.subOpenHtml();
  host.SetProgressVisible(false);
  form.ClearLists();
}

}  // namespace vantor
