#include "analysis/worksheet_list.h"

namespace vantor {

void WorksheetList::Rebind(std::shared_ptr<StringPool> pool) {
  ids_ = {};
  places_ = {};
  pool_ = std::move(pool);
}

void WorksheetList::KeepPlaces(bool keep) {
  keeps_places_ = keep;
  Clear();
}

std::vector<std::string> WorksheetList::Rows() const {
  std::vector<std::string> rows;
  rows.reserve(ids_.size());
  for (TextId id : ids_) rows.emplace_back(pool_->Text(id));
  return rows;
}

}  // namespace vantor
