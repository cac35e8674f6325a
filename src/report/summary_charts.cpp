#include "report/summary_charts.h"

#include <algorithm>
#include <string>
#include <unordered_map>

#include "report/class_tables.h"
#include "report/html_text.h"

namespace vantor {

namespace {

// The players of the matrix in order of first appearance, killers first.
std::vector<std::string> MatrixPlayers(const std::vector<KillCount>& matrix) {
  std::vector<std::string> names;
  for (const bool killers : {true, false}) {
    for (const KillCount& k : matrix) {
      const std::string& name = killers ? k.killer : k.victim;
      if (std::find(names.begin(), names.end(), name) == names.end()) names.push_back(name);
    }
  }
  return names;
}

// A header cell's text: "<td>Rocket Splash</TD>" gives "Rocket Splash".
std::string_view HeaderText(std::string_view cell) {
  cell.remove_prefix(cell.find('>') + 1);
  return cell.substr(0, cell.find('<'));
}

}  // namespace

void WriteKillHeatMap(std::ostream& out, const std::vector<KillCount>& matrix) {
  const std::vector<std::string> names = MatrixPlayers(matrix);
  std::unordered_map<std::string, Count> kills;
  Count most = 1;
  for (const KillCount& k : matrix) {
    kills[k.killer + '\n' + k.victim] = k.kills;
    most = std::max(most, k.kills);
  }
  out << "<div class=\"scroll\"><table class=\"heat\"><thead><tr><th>killer \\ victim</th>";
  for (const std::string& victim : names) out << "<th class=\"vertical\">" << HtmlText(victim) << "</th>";
  out << "</tr></thead><tbody>\n";
  for (const std::string& killer : names) {
    out << "<tr><th>" << HtmlText(killer) << "</th>";
    for (const std::string& victim : names) {
      const auto at = kills.find(killer + '\n' + victim);
      const Count n = at == kills.end() ? 0 : at->second;
      out << "<td style=\"--heat:" << (n * 100 / most) << "%\">" << (n ? std::to_string(n) : "") << "</td>";
    }
    out << "</tr>\n";
  }
  out << "</tbody></table></div>\n";
}

void WriteWeaponClassBars(std::ostream& out, const std::vector<Match>& matches) {
  for (const ClassTable& table : kClassTables) {
    std::vector<Count> totals(table.columns.size());
    for (const Match& match : matches) {
      for (const PlayerTally& slot : match.members) {
        for (std::size_t c = 0; c < totals.size(); ++c) totals[c] += table.columns[c].value.Of(slot);
      }
    }
    const Count most = std::max<Count>(1, *std::max_element(totals.begin(), totals.end()));
    const std::size_t height = 22 * totals.size();
    out << "<figure class=\"bars\"><figcaption>" << HtmlEscape(HeaderText(table.heading))
        << "</figcaption><svg viewBox=\"0 0 400 " << height << "\" role=\"img\">\n";
    for (std::size_t c = 0; c < totals.size(); ++c) {
      const std::size_t y = 22 * c;
      out << "<text x=\"0\" y=\"" << y + 15 << "\">" << HtmlEscape(HeaderText(table.columns[c].header))
          << "</text><rect x=\"150\" y=\"" << y + 3 << "\" height=\"16\" width=\"" << totals[c] * 200 / most
          << "\"/><text x=\"" << 155 + totals[c] * 200 / most << "\" y=\"" << y + 15 << "\">" << totals[c]
          << "</text>\n";
    }
    out << "</svg></figure>\n";
  }
}

namespace {

struct Moment {
  SourceLine place;
  bool blue;
  bool capture;  // else a frag
};

bool Earlier(const Moment& a, const Moment& b) {
  return a.place.file != b.place.file ? a.place.file < b.place.file : a.place.line < b.place.line;
}

// The frags of the match's members and its captures, in log order.
std::vector<Moment> MomentsOf(const RunRecord& run, const Match& match) {
  std::unordered_map<std::string_view, bool> blue;
  for (std::size_t s = 0; s < match.members.size(); ++s)
    blue.emplace(match.members[s].strPlayerName, s < match.blue_count);
  std::vector<Moment> moments;
  const CountedEvents& e = run.events;
  for (auto [row, end] = RowsIn(e.killer, kKillEvents, match.span); row < end; ++row) {
    const auto team = blue.find(e.killer.At(row));
    if (team != blue.end()) moments.push_back({e.killer.PlaceAt(row).place, team->second, false});
  }
  for (auto [row, end] = RowsIn(e.flag_text, kFlagEvents, match.span); row < end; ++row) {
    const std::string_view action = e.flag_action.At(row);
    if (action.starts_with("Flag Capture")) {
      moments.push_back({e.flag_text.PlaceAt(row).place, action.ends_with("(Blue)"), true});
    }
  }
  std::stable_sort(moments.begin(), moments.end(), Earlier);
  return moments;
}

}  // namespace

void WriteTimeline(std::ostream& out, const RunRecord& run, const Match& match) {
  const std::vector<Moment> moments = MomentsOf(run, match);
  Count frags[2] = {0, 0};
  for (const Moment& m : moments) frags[m.blue ? 0 : 1] += m.capture ? 0 : 1;
  const double x_step = 600.0 / static_cast<double>(std::max<std::size_t>(1, moments.size()));
  const double y_step = 100.0 / static_cast<double>(std::max<Count>(1, std::max(frags[0], frags[1])));
  std::string lines[2] = {"0,110", "0,110"}, marks;
  Count so_far[2] = {0, 0};
  for (std::size_t i = 0; i < moments.size(); ++i) {
    const int team = moments[i].blue ? 0 : 1;
    const double x = x_step * static_cast<double>(i + 1);
    so_far[team] += moments[i].capture ? 0 : 1;
    const double y = 110 - y_step * static_cast<double>(so_far[team]);
    lines[team] += " " + std::to_string(static_cast<int>(x)) + "," + std::to_string(static_cast<int>(y));
    if (moments[i].capture) {
      marks += "<circle class=\"" + std::string(team == 0 ? "blue" : "red") + "\" cx=\"" +
               std::to_string(static_cast<int>(x)) + "\" cy=\"" + std::to_string(static_cast<int>(y)) +
               "\" r=\"5\"><title>capture</title></circle>";
    }
  }
  out << "<figure class=\"timeline\"><svg viewBox=\"0 0 600 120\" role=\"img\"><title>Frags of each team "
         "in log order; dots are captures</title>\n<polyline class=\"blue\" points=\""
      << lines[0] << "\"/><polyline class=\"red\" points=\"" << lines[1] << "\"/>" << marks
      << "</svg><figcaption>Blue " << frags[0] << " frags, Red " << frags[1]
      << " frags; dots mark captures</figcaption></figure>\n";
}

}  // namespace vantor
