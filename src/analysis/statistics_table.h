#pragma once
// The statistics table the main window shows: eleven parallel columns of
// text, one row per team member, totals row or separator row.

#include <array>
#include <cstddef>
#include <string_view>

#include "analysis/worksheet_list.h"

namespace vantor {

class StatisticsTable {
 public:
  static constexpr std::size_t kColumns = 11;
  // The columns in their fixed order: the name, then the ten counts in the
  // order of the count table (stats/counts.h), which gives their headings.
  enum Column : std::size_t {
    lstName,
    lstFrags,
    lstDeaths,
    lstSuicides,
    lstFlagGrabs,
    lstFCDefends,
    lstFlagCaptures,
    lstFlagDefends,
    lstBaseDefends,
    lstFCKills,
    lstSentKill
  };

  WorksheetList& operator[](std::size_t column) { return columns_[column]; }
  const WorksheetList& operator[](std::size_t column) const { return columns_[column]; }

  // Rows of the first column; the others always hold as many.
  std::size_t RowCount() const { return columns_[lstName].Count(); }
  // Empties the columns one after the other, in their order.
  void Clear();

 private:
  std::array<WorksheetList, kColumns> columns_;
};

}  // namespace vantor
