#include "archive/season_page.h"

#include <sstream>

#include "report/html_text.h"
#include "report/summary_report.h"
#include "report/windows1252.h"
#include "stats/awards.h"

namespace vantor {

namespace {

std::string PeriodText(const SeasonPeriod& period) {
  if (period.since.empty() && period.until.empty()) return "every archived match";
  return "matches " + (period.since.empty() ? "" : "from " + period.since) +
         (period.since.empty() || period.until.empty() ? "" : " ") +
         (period.until.empty() ? "" : "until " + period.until);
}

void WriteHeader(std::ostream& out, const Standings& standings, const SeasonPageHeader& header) {
  out << "<header><h1>Season standings</h1><p class=\"muted\">" << kProgramAndVersion << " · written "
      << HtmlEscape(header.written) << " · " << HtmlEscape(PathToUtf8(header.archive)) << " · "
      << HtmlEscape(PeriodText(header.period)) << ": " << standings.matches << " matches</p></header>\n";
}

void WriteTable(std::ostream& out, const Standings& standings) {
  out << "<section id=\"standings\"><h2>Standings</h2><p class=\"muted\">Click a heading to sort.</p>\n"
      << "<div class=\"scroll\"><table class=\"sortable\" id=\"standings-table\"><thead><tr><th>Player</th>"
      << "<th>Matches</th><th>Wins</th><th>Losses</th><th>Draws</th>";
  for (const CountRow& count : kCounts) out << "<th>" << count.label << "</th>";
  out << "<th>Frags per death</th><th>Awards</th></tr></thead><tbody>\n";
  for (const SeasonPlayer& p : standings.players) {
    out << "<tr><td>" << HtmlText(p.name) << "</td><td>" << p.Matches() << "</td><td>" << p.wins
        << "</td><td>" << p.losses << "</td><td>" << p.draws << "</td>";
    for (const Count value : p.counts) out << "<td>" << value << "</td>";
    const auto ratio = p.FragsPerDeath();
    out << "<td>" << (ratio ? AwardValueText(*ratio, true) : "–") << "</td><td>" << p.awards
        << "</td></tr>\n";
  }
  out << "</tbody></table></div>"
      << (standings.players.empty() ? "<p>No archived match in this period.</p>" : "") << "</section>\n";
}

void WriteHistory(std::ostream& out, const SeasonPlayer& p) {
  out << "<details><summary>" << HtmlText(p.name) << " <span class=\"muted\">(" << p.Matches()
      << " matches)</span></summary>\n<div class=\"scroll\"><table><thead><tr><th>played</th><th>team</th>"
      << "<th>result</th><th>Frags</th><th>Deaths</th></tr></thead><tbody>\n";
  for (const SeasonMatch& m : p.history) {
    out << "<tr><td>" << HtmlEscape(m.played_on) << "</td><td class=\""
        << (m.team == "Blue/Red" ? "" : m.team) << "\">" << m.team << "</td><td>" << m.result << "</td><td>"
        << m.frags << "</td><td>" << m.deaths << "</td></tr>\n";
  }
  out << "</tbody></table></div></details>\n";
}

}  // namespace

void WriteSeasonPage(std::ostream& out, const Standings& standings, const SeasonPageHeader& header) {
  out << "<!DOCTYPE html>\n<html lang=\"en\"><head><meta charset=\"utf-8\">\n"
      << "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
      << "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; style-src "
         "'unsafe-inline'; script-src 'unsafe-inline'\">\n<title>Season standings</title><style>"
      << SummaryStyle() << "</style></head><body>\n";
  WriteHeader(out, standings, header);
  WriteTable(out, standings);
  out << "<section id=\"history\"><h2>Each player's matches</h2>\n";
  for (const SeasonPlayer& p : standings.players) WriteHistory(out, p);
  out << "</section>\n<script>" << SummarySortScript() << "</script>\n</body></html>\n";
}

IoResult WriteSeasonPageFile(const std::string& path, const Standings& standings,
                             const SeasonPageHeader& header) {
  std::ostringstream bytes;
  WriteSeasonPage(bytes, standings, header);
  TextFileWriter file(path);
  file.WriteRaw(bytes.view());
  return file.Commit();
}

}  // namespace vantor
