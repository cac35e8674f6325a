#pragma once
// The eleven list controls that show the statistics table side by side.

#include <QListWidget>
#include <array>

#include "analysis/statistics_table.h"

namespace vantor {

// One column of the statistics table. The left lists start lower than the
// right ones and show fewer rows; every list scrolls as far as the list
// that shows fewest rows needs, so that all can show the same top row.
class StatisticsList : public QListWidget {
 public:
  using QListWidget::QListWidget;
  void SetPeers(const std::array<StatisticsList*, StatisticsTable::kColumns>& peers) { peers_ = peers; }
  // The rows this list shows whole.
  int VisibleRows() const;

 protected:
  void updateGeometries() override;

 private:
  std::array<StatisticsList*, StatisticsTable::kColumns> peers_{};
};

using StatisticsLists = std::array<StatisticsList*, StatisticsTable::kColumns>;

// Makes the lists behave as one table: scrolling one shows the same top row
// in the others, and a row selected in one is selected in all.
void LinkStatisticsLists(const StatisticsLists& lists);

// Replaces the rows of every list by the rows of its column: player names
// (bytes of the log, in the game's code page) in their team's colour, the
// counts right-aligned, the totals rows in bold.
void ShowStatisticsTable(const StatisticsLists& lists, const StatisticsTable& table);

// The table as tab-separated text, headings first, one line per row.
QString StatisticsTableText(const StatisticsTable& table);

}  // namespace vantor
