#include "analysis/statistics_table.h"

namespace vantor {

void StatisticsTable::Clear() {
  for (auto& column : columns_) column.Clear();
}

}  // namespace vantor
