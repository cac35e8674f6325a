#include "report/summary_report.h"

#include <filesystem>
#include <sstream>

#include "report/html_text.h"
#include "report/run_outputs.h"
#include "report/sha256.h"
#include "report/summary_charts.h"
#include "report/windows1252.h"
#include "stats/awards.h"
#include "stats/evening.h"

namespace vantor {

namespace {

// Light and dark from the reader's preference; tables scroll sideways on a
// phone instead of squeezing; print drops the colours of the screen.
constexpr std::string_view kStyle = R"(
:root{color-scheme:light dark;--bg:#fff;--fg:#1b1b1f;--muted:#5b5b66;--line:#d6d6de;--blue:#1f5fd1;--red:#c8322b;--heat:0%}
@media (prefers-color-scheme:dark){:root{--bg:#16161a;--fg:#e8e8ee;--muted:#a0a0ad;--line:#3a3a44;--blue:#6d9dff;--red:#ff6b61}}
*{box-sizing:border-box}body{margin:0 auto;max-width:72rem;padding:1rem;background:var(--bg);color:var(--fg);font:16px/1.45 system-ui,sans-serif}
h1{font-size:1.6rem;margin:.2rem 0}h2{font-size:1.25rem;margin-top:2rem;border-bottom:1px solid var(--line)}
.muted,figcaption{color:var(--muted);font-size:.9rem}.scroll{overflow-x:auto}
table{border-collapse:collapse;margin:.5rem 0}th,td{padding:.25rem .5rem;border-bottom:1px solid var(--line);text-align:right;white-space:nowrap}
th:first-child,td:first-child{text-align:left}.sortable th{cursor:pointer}
.Blue{color:var(--blue)}.Red{color:var(--red)}.hash{font-family:monospace;word-break:break-all;white-space:normal}
.heat td{background:color-mix(in srgb,var(--red) var(--heat),transparent);min-width:2rem}
.vertical{writing-mode:vertical-rl}svg{width:100%;max-width:40rem;height:auto}svg text{fill:var(--fg);font-size:12px}
.bars rect{fill:var(--blue)}polyline{fill:none;stroke-width:2}polyline.blue{stroke:var(--blue)}polyline.red{stroke:var(--red)}
circle.blue{fill:var(--blue)}circle.red{fill:var(--red)}ul.awards{padding-left:1.2rem}
@media print{.heat td{print-color-adjust:exact}section{break-inside:avoid-page}}
)";

// Sorting by a click on a column heading; the tables read the same without it.
constexpr std::string_view kSortScript = R"(
document.querySelectorAll('table.sortable th').forEach(function(th,i){th.addEventListener('click',function(){
var body=th.closest('table').tBodies[0],rows=Array.from(body.rows),up=th.dataset.up!=='1';th.dataset.up=up?'1':'0';
rows.sort(function(a,b){var x=a.cells[i].textContent,y=b.cells[i].textContent,m=parseFloat(x),n=parseFloat(y);
var c=isNaN(m)||isNaN(n)?x.localeCompare(y):m-n;return up?c:-c;});rows.forEach(function(r){body.appendChild(r);});});});
)";

std::string LogName(const RunRecord& run, std::size_t file) {
  if (file >= run.files.size()) return "log " + std::to_string(file + 1);
  return HtmlEscape(PathToUtf8(std::filesystem::path(run.files[file]).filename().string()));
}

std::string Result(const Match& m) {
  const std::string winner = m.Winner() == "draw" ? "a draw" : std::string(m.Winner()) + " wins";
  return "<span class=\"Blue\">Blue " + std::to_string(m.blue_score) + "</span> – <span class=\"Red\">" +
         std::to_string(m.red_score) + " Red</span>, " + winner;
}

void WriteHeader(std::ostream& out, const SummaryHeader& header) {
  out << "<header><h1>Evening summary</h1><p class=\"muted\">" << kProgramAndVersion << " · run of "
      << HtmlEscape(header.run_date)
      << "</p>\n<div class=\"scroll\"><table id=\"logs\"><thead><tr><th>log</th>"
      << "<th>bytes</th><th>SHA-256</th></tr></thead><tbody>\n";
  for (const LogFacts& log : header.logs) {
    out << "<tr><td>" << HtmlEscape(PathToUtf8(log.path)) << "</td><td>" << log.size
        << "</td><td class=\"hash\">" << (log.sha256.empty() ? "could not be read" : log.sha256)
        << "</td></tr>\n";
  }
  out << "</tbody></table></div></header>\n";
}

void WriteMatchList(std::ostream& out, const RunRecord& run, const std::vector<Match>& matches) {
  out << "<section id=\"matches\"><h2>Matches</h2>\n<ol class=\"match-list\">\n";
  for (const Match& m : matches) {
    out << "<li><a href=\"#match-" << m.number << "\">Match " << m.number << "</a>: " << Result(m)
        << " <span class=\"muted\">(ended: " << HtmlEscape(m.span.ended) << "; "
        << LogName(run, m.span.first.file) << ", lines " << m.span.first.line << "–" << m.span.last.line
        << ")</span></li>\n";
  }
  out << "</ol>" << (matches.empty() ? "<p>No match holds an event.</p>" : "") << "</section>\n";
}

void WriteCountHeadings(std::ostream& out) {
  for (const CountRow& count : kCounts) out << "<th>" << count.label << "</th>";
}

void WriteCountCells(std::ostream& out, const CountValues& values) {
  for (const Count value : values) out << "<td>" << value << "</td>";
}

void WriteEveningTable(std::ostream& out, const std::vector<PlayerCounts>& players, std::size_t matches) {
  out << "<section id=\"evening\"><h2>The evening</h2><p class=\"muted\">Click a heading to sort.</p>\n"
      << "<div class=\"scroll\"><table class=\"sortable\" id=\"evening-table\"><thead><tr><th>Player</th>"
      << "<th>Matches</th><th>Team per match</th>";
  WriteCountHeadings(out);
  out << "<th>Frags per death</th></tr></thead><tbody>\n";
  for (const PlayerCounts& p : players) {
    std::string teams;
    for (std::size_t m = 0; m < matches; ++m)
      teams += (m ? " " : "") + (p.teams[m].empty() ? "–" : p.teams[m]);
    out << "<tr><td>" << HtmlText(p.name) << "</td><td>" << p.matches << "</td><td>" << teams << "</td>";
    WriteCountCells(out, p.counts);
    const auto ratio = p.FragsPerDeath();
    out << "<td>" << (ratio ? AwardValueText(*ratio, true) : "–") << "</td></tr>\n";
  }
  out << "</tbody></table></div></section>\n";
}

void WriteAwards(std::ostream& out, const std::vector<PlayerCounts>& players) {
  out << "<ul class=\"awards\">\n";
  for (const Award& award : GiveAwards(players)) {
    std::string winners;
    for (const std::string& name : award.winners) winners += (winners.empty() ? "" : ", ") + HtmlText(name);
    out << "<li><b>" << award.row->title << "</b>: " << (winners.empty() ? "–" : winners)
        << " <span class=\"muted\">(" << HtmlEscape(award.Reason()) << ")</span></li>\n";
  }
  out << "</ul>\n";
}

void WriteMatch(std::ostream& out, const RunRecord& run, const Match& m) {
  out << "<section id=\"match-" << m.number << "\"><h2>Match " << m.number << ": " << Result(m)
      << "</h2>\n<div class=\"scroll\"><table class=\"sortable\"><thead><tr><th>Player</th><th>Team</th>";
  WriteCountHeadings(out);
  out << "</tr></thead><tbody>\n";
  for (std::size_t slot = 0; slot < m.members.size(); ++slot) {
    out << "<tr class=\"" << m.TeamOf(slot) << "\"><td>" << HtmlText(m.members[slot].strPlayerName)
        << "</td><td>" << m.TeamOf(slot) << "</td>";
    WriteCountCells(out, ValuesOf(m.members[slot]));
    out << "</tr>\n";
  }
  out << "</tbody><tfoot>";
  for (const bool blue : {true, false}) {
    out << "<tr class=\"" << (blue ? "Blue" : "Red") << "\"><th>Totals</th><th>" << (blue ? "Blue" : "Red")
        << "</th>";
    WriteCountCells(out, m.Totals(blue));
    out << "</tr>";
  }
  out << "</tfoot></table></div>\n<h3>Awards</h3>\n";
  WriteAwards(out, PlayersOf({m}));
  out << "<h3>Timeline</h3>\n";
  WriteTimeline(out, run, m);
  out << "</section>\n";
}

void WriteUnknownShapes(std::ostream& out, const RunRecord& run) {
  out << "<section id=\"unknown\"><h2>Unrecognised lines, most frequent shapes</h2>\n<div "
         "class=\"scroll\"><table>"
      << "<thead><tr><th>shape</th><th>lines</th></tr></thead><tbody>\n";
  for (const std::string& line : UnknownLineShapes(run, 10)) {
    const std::size_t tab = line.find('\t');
    out << "<tr><td>" << HtmlText(line.substr(tab + 1)) << "</td><td>" << line.substr(0, tab)
        << "</td></tr>\n";
  }
  out << "</tbody></table></div></section>\n";
}

}  // namespace

std::vector<LogFacts> DescribeLogs(const std::vector<std::string>& files,
                                   const std::vector<std::string>& digests) {
  std::vector<LogFacts> logs;
  for (const std::string& file : files) {
    std::error_code ec;
    const std::uintmax_t size = std::filesystem::file_size(file, ec);
    const std::size_t i = logs.size();
    const bool known = i < digests.size() && !digests[i].empty();
    logs.push_back({file, ec ? 0 : size, known ? digests[i] : FileSha256(file).value_or("")});
  }
  return logs;
}

void WriteSummary(std::ostream& out, const RunRecord& run, const std::vector<Match>& matches,
                  const SummaryHeader& header) {
  out << "<!DOCTYPE html>\n<html lang=\"en\"><head><meta charset=\"utf-8\">\n"
      << "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
      << "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; style-src "
         "'unsafe-inline'; "
         "script-src 'unsafe-inline'\">\n<title>Evening summary</title><style>"
      << kStyle << "</style></head><body>\n";
  WriteHeader(out, header);
  WriteMatchList(out, run, matches);
  const std::vector<PlayerCounts> players = PlayersOf(matches);
  WriteEveningTable(out, players, matches.size());
  out << "<section id=\"awards\"><h2>Awards of the evening</h2>\n";
  WriteAwards(out, players);
  out << "</section>\n";
  for (const Match& m : matches) WriteMatch(out, run, m);
  out << "<section id=\"kill-matrix\"><h2>Who killed whom</h2>\n";
  WriteKillHeatMap(out, KillMatrix(run));
  out << "</section>\n<section id=\"weapons\"><h2>Kills by weapon, by player class</h2>\n";
  WriteWeaponClassBars(out, matches);
  out << "</section>\n";
  WriteUnknownShapes(out, run);
  out << "<script>" << kSortScript << "</script>\n</body></html>\n";
}

IoResult WriteSummaryFile(const std::string& path, const RunRecord& run, const std::string& run_date) {
  std::ostringstream bytes;
  WriteSummary(bytes, run, AnalyseMatches(run), {run_date, DescribeLogs(run.files, run.file_digests)});
  TextFileWriter file(path);
  file.WriteRaw(bytes.view());
  return file.Commit();
}

std::string_view SummaryStyle() { return kStyle; }

std::string_view SummarySortScript() { return kSortScript; }

std::string SummaryPathFor(const std::string& report_path) {
  const std::size_t slash = report_path.rfind('/');
  const std::size_t dot = report_path.rfind('.');
  const bool has_extension = dot != std::string::npos && (slash == std::string::npos || dot > slash + 1);
  return has_extension ? report_path.substr(0, dot) + "-summary" + report_path.substr(dot)
                       : report_path + "-summary.html";
}

}  // namespace vantor
