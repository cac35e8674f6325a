#pragma once
// The eleven list controls that show the statistics table side by side.

#include <array>

#include "analysis/statistics_table.h"

class QListWidget;

namespace vantor {

using StatisticsLists = std::array<QListWidget*, StatisticsTable::kColumns>;

// Makes the lists behave as one table: scrolling one scrolls the others to
// the same top row, and a row selected in one is selected in all.
void LinkStatisticsLists(const StatisticsLists& lists);

// Replaces the rows of every list by the rows of its column. Player names
// are bytes from the log, in the game's code page.
void ShowStatisticsTable(const StatisticsLists& lists, const StatisticsTable& table);

}  // namespace vantor
