#include "analysis/worksheet_list.h"

namespace vantor {

namespace {
const std::string kNoRow;
}

const std::string& WorksheetList::At(std::size_t row) const {
  return row < rows_.size() ? rows_[row] : kNoRow;
}

void WorksheetList::Set(std::size_t row, std::string_view text) {
  if (row < rows_.size()) rows_[row].assign(text);
}

void WorksheetList::RemoveAt(std::size_t row) {
  if (row < rows_.size()) rows_.erase(rows_.begin() + static_cast<std::ptrdiff_t>(row));
}

}  // namespace vantor
