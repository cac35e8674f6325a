#pragma once
// One list of the worksheet: an ordered sequence of strings (rows) that
// carries an intermediate result from one stage of a run to the next.
//
// Rows are kept as ids of a string pool, which the lists of one worksheet
// share: a name costs its bytes once however many events mention it, and
// stages can compare and index rows by id.

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "analysis/string_pool.h"

namespace vantor {

class WorksheetList {
 public:
  WorksheetList() : pool_(std::make_shared<StringPool>()) {}
  explicit WorksheetList(std::shared_ptr<StringPool> pool) : pool_(std::move(pool)) {}

  // Reading at or beyond the row count yields the empty string: several
  // stages read one row past the last on purpose.
  const std::string& At(std::size_t row) const { return pool_->Text(IdAt(row)); }
  TextId IdAt(std::size_t row) const { return row < ids_.size() ? ids_[row] : StringPool::kEmpty; }
  std::size_t Count() const { return ids_.size(); }
  bool Empty() const { return ids_.empty(); }

  void Append(std::string_view row) { ids_.push_back(pool_->Intern(row)); }
  // id must come from this list's pool.
  void AppendId(TextId id) { ids_.push_back(id); }
  // Overwrites a row in place; a row beyond the end is ignored.
  void Set(std::size_t row, std::string_view text);
  // Removes one row; the rows behind it move up by one.
  void RemoveAt(std::size_t row);
  void Clear() { ids_.clear(); }
  // Empties the list, handing over its rows' ids (of this list's pool).
  std::vector<TextId> TakeIds() { return std::exchange(ids_, {}); }
  // Empties the list and moves it to another pool, so that a worksheet can
  // drop the texts of an earlier run.
  void Rebind(std::shared_ptr<StringPool> pool);

  // Keeps, in order, only the rows for which keep(row index) is true: the
  // same result as removing the others one by one, at linear cost.
  template <typename Keep>
  void RetainIf(Keep keep);

  std::vector<std::string> Rows() const;
  const std::vector<TextId>& Ids() const { return ids_; }
  const StringPool& Pool() const { return *pool_; }
  StringPool& Pool() { return *pool_; }
  std::shared_ptr<const StringPool> SharedPool() const { return pool_; }
  void Reserve(std::size_t n) { ids_.reserve(n); }

 private:
  std::shared_ptr<StringPool> pool_;
  std::vector<TextId> ids_;
};

template <typename Keep>
void WorksheetList::RetainIf(Keep keep) {
  std::size_t out = 0;
  for (std::size_t in = 0; in < ids_.size(); ++in) {
    if (keep(in)) ids_[out++] = ids_[in];
  }
  ids_.resize(out);
}

}  // namespace vantor
