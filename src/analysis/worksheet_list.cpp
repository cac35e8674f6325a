#include "analysis/worksheet_list.h"

namespace vantor {

void WorksheetList::Set(std::size_t row, std::string_view text) {
  if (row < ids_.size()) ids_[row] = pool_->Intern(text);
}

void WorksheetList::RemoveAt(std::size_t row) {
  if (row < ids_.size()) ids_.erase(ids_.begin() + static_cast<std::ptrdiff_t>(row));
}

void WorksheetList::Rebind(std::shared_ptr<StringPool> pool) {
  ids_.clear();
  ids_.shrink_to_fit();
  pool_ = std::move(pool);
}

std::vector<std::string> WorksheetList::Rows() const {
  std::vector<std::string> rows;
  rows.reserve(ids_.size());
  for (TextId id : ids_) rows.push_back(pool_->Text(id));
  return rows;
}

}  // namespace vantor
