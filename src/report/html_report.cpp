#include "report/html_report.h"

#include <array>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/text_file.h"
#include "report/class_tables.h"
#include "stats/counts.h"

namespace vantor {

namespace {

using Column = StatisticsTable::Column;

constexpr std::string_view kHead =
    "<html><head><meta http-equiv=Content-Type content=text/html; charset=windows-1252>"
    "<meta name=GENERATOR content=Microsoft FrontPage 4.0>"
    "<meta name=ProgId content=FrontPage.Editor.Document>"
    "<title>Vantor Output</title></head><body>";
constexpr std::string_view kTableEnd = "  </table></body></html>";

// The counts of the frag table; the flag table shows those of flag events.
constexpr std::array<CountKind, 3> kFragCounts = {CountKind::kFrags, CountKind::kDeaths,
                                                  CountKind::kSuicides};

std::vector<CountKind> FlagCounts() {
  std::vector<CountKind> kinds;
  for (std::size_t c = 0; c < kCounts.size(); ++c) {
    if (kCounts[c].flag) kinds.push_back(CountKindAt(c));
  }
  return kinds;
}

// A count's column in the statistics table: after the name, in table order.
std::size_t ColumnOf(CountKind kind) { return Column::lstName + 1 + Index(kind); }

class ReportWriter {
 public:
  ReportWriter(std::ostream& out, const TallyTable& tally, std::size_t nB, std::size_t nR,
               const StatisticsTable& table)
      : out_(out), tally_(tally), nB_(nB), nR_(nR), table_(table) {}

  void Write() {
    Line(kHead);
    FragTable();
    FlagTable();
    for (const ClassTable& t : kClassTables) WeaponTable(t);
  }

 private:
  void Line(std::string_view text) { out_ << text << "\r\n"; }

  void PlayerRow(std::size_t slot, const std::vector<Count>& values, const Count* row_total) {
    Line("<TR><td>");
    Line(slot < nB_ ? "<font color=#0000FF>" : "<font color=#FF0000>");
    Line(tally_[slot].strPlayerName + "</font></TD>");
    for (Count v : values) Line("<td>" + std::to_string(v) + "</TD>");
    if (row_total != nullptr) Line("<td><b>" + std::to_string(*row_total) + "</TD>");
    Line("</tr>");
  }

  // One line; the values after the first each open a new bold cell.
  void TotalsRow(const std::vector<std::string>& values) {
    std::string line = "<tr><td><b>Total</b></TD><td><b>";
    for (std::size_t i = 0; i < values.size(); ++i) {
      if (i > 0) line += "</TD><td><b>";
      line += values[i];
    }
    Line(line + "</TD></tr>");
  }

  template <typename Kinds>
  std::vector<std::string> TotalsText(const Kinds& kinds, std::size_t row) const {
    std::vector<std::string> values;
    for (CountKind kind : kinds) values.emplace_back(table_[ColumnOf(kind)].At(row));
    return values;
  }

  template <typename Kinds>
  static std::vector<Count> ValuesOf(const PlayerTally& t, const Kinds& kinds) {
    std::vector<Count> values;
    for (CountKind kind : kinds) values.push_back(CountOf(t, kind));
    return values;
  }

  std::size_t BlueTotalsRow() const { return nB_; }
  std::size_t RedTotalsRow() const { return nB_ + nR_ + 2; }

  // Calls totals(row of the statistics table) after the last member of each team.
  template <typename Totals>
  void AfterRow(std::size_t p, Totals totals) {
    if (p + 1 == nB_) totals(BlueTotalsRow());
    if (p + 1 == nB_ + nR_) totals(RedTotalsRow());
  }

  void FragTable() {
    for (std::string_view l : {"<center><h2>Frag Stats</h2>", "<table border=1><tr>", "<td>Name</TD>",
                               "<td>Frags</TD>", "<td>Deaths</TD>", "<td>Suicides</TD>"}) {
      Line(l);
    }
    for (std::size_t p = 0; p < nB_ + nR_; ++p) {
      PlayerRow(p, ValuesOf(tally_[p], kFragCounts), nullptr);
      AfterRow(p, [&](std::size_t row) { TotalsRow(TotalsText(kFragCounts, row)); });
    }
    Line(kTableEnd);
  }

  void FlagTable() {
    for (std::string_view l :
         {"<h2>Flag Stats</h2>", "<table border=1><tr>", "<TR><td>Name</TD>", "<td>Flag Grabs</TD>",
          "<td>Flag Carrier Def</TD>", "<td>Flag Cap</TD>", "<td>Flag Def</TD>", "<td>Base Def</TD>",
          "<td>Flag Carrier Frag</TD>", "<td>Total Flag Events</TD>", "</tr>"}) {
      Line(l);
    }
    const std::vector<CountKind> flag_counts = FlagCounts();
    Count team_sum = 0;
    for (std::size_t p = 0; p < nB_ + nR_; ++p) {
      const std::vector<Count> values = ValuesOf(tally_[p], flag_counts);
      Count row_total = 0;
      for (Count v : values) row_total += v;
      PlayerRow(p, values, &row_total);
      team_sum += row_total;
      AfterRow(p, [&](std::size_t row) {
        auto totals = TotalsText(flag_counts, row);
        totals.push_back(std::to_string(team_sum));
        TotalsRow(totals);
        team_sum = 0;
      });
    }
    Line(kTableEnd);
  }

  void WeaponTable(const ClassTable& table) {
    Line(table.heading);
    Line("<table border=1><tr>");
    Line("<TR><td>Name</TD>");
    for (const ClassColumn& c : table.columns) Line(c.header);
    Line("</tr>");
    for (std::size_t p = 0; p < nB_ + nR_; ++p) {
      const PlayerTally& t = tally_[p];
      bool shown = false;
      for (const ClassCount& c : table.tested) shown = shown || c.Of(t) >= 1;
      if (!shown) continue;
      std::vector<Count> values;
      for (const ClassColumn& c : table.columns) values.push_back(c.value.Of(t));
      PlayerRow(p, values, nullptr);
    }
    Line(table.closing);
  }

  std::ostream& out_;
  const TallyTable& tally_;
  std::size_t nB_;
  std::size_t nR_;
  const StatisticsTable& table_;
};

}  // namespace

void WriteHtmlReport(std::ostream& out, const TallyTable& tally, std::size_t nB, std::size_t nR,
                     const StatisticsTable& table) {
  ReportWriter(out, tally, nB, nR, table).Write();
}

IoResult WriteReportFile(const std::string& path, const TallyTable& tally, std::size_t nB, std::size_t nR,
                         const StatisticsTable& table) {
  std::ostringstream document;
  WriteHtmlReport(document, tally, nB, nR, table);
  TextFileWriter file(path);
  file.WriteRaw(document.view());
  return file.Commit();
}

}  // namespace vantor
