#include "cli/archive_commands.h"

#include <ctime>
#include <iostream>

#include "archive/season_archive.h"
#include "archive/season_page.h"
#include "archive/season_standings.h"

namespace vantor {

namespace {

std::string Now(const char* format) {
  const std::time_t now = std::time(nullptr);
  char text[32];
  std::strftime(text, sizeof text, format, std::localtime(&now));
  return text;
}

}  // namespace

void ArchiveLastRun(const CliOptions& options, CliHost& host, Form1& form, const Notice& say) {
  const auto run = form.LastRun();
  if (!options.archive || !run) return;
  // The archive is an output like the others: it never replaces a log.
  if (const auto refusal = form.plan.Check("season archive", *options.archive)) {
    return host.ShowMessage(*refusal, MessageIcon::kCritical);
  }
  const ArchiveOutcome outcome = ArchiveRun(*options.archive, *run, Now("%Y-%m-%d %H:%M:%S"));
  if (!outcome.ok) return host.ShowMessage(outcome.message, MessageIcon::kCritical);
  if (options.quiet) return;
  for (const std::string& notice : outcome.notices) say(notice);
  say(ArchiveReport(*options.archive, outcome));
}

int ShowSeason(const CliOptions& options, const Notice& say) {
  CliHost host("", "", false, std::cerr, false, false);
  const SeasonPeriod period{options.since.value_or(""), options.until.value_or("")};
  const Standings standings = ReadStandings(*options.season, period);
  if (!standings.refusal.empty()) {
    host.ShowMessage(standings.refusal, MessageIcon::kCritical);
    return 1;
  }
  if (!options.summary || options.table) WriteStandingsTable(std::cout, standings.players);
  if (options.summary) {
    OutputPlan plan;
    plan.Declare(*options.season);  // the page never replaces the archive
    const auto refusal = plan.Check("season standings", *options.summary);
    const IoResult result = refusal ? IoResult{false, *refusal}
                                    : WriteSeasonPageFile(*options.summary, standings,
                                                          {*options.season, period, Now("%Y-%m-%d %H:%M")});
    if (!result.ok) host.ShowMessage(result.message, MessageIcon::kCritical);
    if (result.ok && !options.quiet) say("season standings written to " + *options.summary);
  }
  std::cout.flush();
  return host.ShowedMessage() || !std::cout ? 1 : 0;
}

}  // namespace vantor
