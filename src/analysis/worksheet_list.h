#pragma once
// One list of the worksheet: an ordered sequence of strings (rows) that
// carries an intermediate result from one stage of a run to the next.
//
// Rows are kept as ids of a string pool, which the lists of one worksheet
// share: a name costs its bytes once however many events mention it, and
// stages can compare and index rows by id. A list asked to keep places
// carries, for every row, the log line it came from; every operation keeps
// the places in step with the rows.

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "analysis/large_array.h"
#include "analysis/source_line.h"
#include "analysis/string_pool.h"

namespace vantor {

class WorksheetList {
 public:
  WorksheetList() : pool_(std::make_shared<StringPool>()) {}
  explicit WorksheetList(std::shared_ptr<StringPool> pool) : pool_(std::move(pool)) {}

  // Reading at or beyond the row count yields the empty string: several
  // stages read one row past the last on purpose.
  std::string_view At(std::size_t row) const { return pool_->Text(IdAt(row)); }
  TextId IdAt(std::size_t row) const { return row < ids_.size() ? ids_[row] : StringPool::kEmpty; }
  std::size_t Count() const { return ids_.size(); }
  bool Empty() const { return ids_.empty(); }

  // place is kept only by a list that keeps places.
  void Append(std::string_view row, const EventSource& place = {}) { AppendId(pool_->Intern(row), place); }
  // id must come from this list's pool.
  void AppendId(TextId id, const EventSource& place = {}) {
    ids_.push_back(id);
    if (keeps_places_) places_.push_back(place);
  }
  // Appends rows without places.
  void AppendIds(const std::vector<TextId>& ids) {
    ids_.insert(ids_.end(), ids.begin(), ids.end());
    if (keeps_places_) places_.resize(ids_.size());
  }
  void Clear() {
    ids_.clear();
    places_.clear();
  }
  // Empties the list and moves it to another pool, so that a worksheet can
  // drop the texts of an earlier run.
  void Rebind(std::shared_ptr<StringPool> pool);

  // Whether rows carry places; switching empties the list.
  void KeepPlaces(bool keep);
  bool KeepsPlaces() const { return keeps_places_; }
  // The row's place; empty when the list keeps none.
  EventSource PlaceAt(std::size_t row) const { return row < places_.size() ? places_[row] : EventSource{}; }

  // Keeps, in order, only the rows for which keep(row index) is true: the
  // same result as removing the others one by one, at linear cost.
  template <typename Keep>
  void RetainIf(Keep keep);

  std::vector<std::string> Rows() const;
  const TextIds& Ids() const { return ids_; }
  const StringPool& Pool() const { return *pool_; }
  StringPool& Pool() { return *pool_; }
  std::shared_ptr<StringPool> SharedPool() const { return pool_; }
  // Adds n rows, each to be set in place before it is read (from several
  // threads, a row each).
  void Grow(std::size_t n) {
    ids_.resize(ids_.size() + n);
    if (keeps_places_) places_.resize(ids_.size());
  }
  void SetIdAt(std::size_t row, TextId id, const EventSource& place = {}) {
    ids_[row] = id;
    if (keeps_places_) places_[row] = place;
  }
  void Reserve(std::size_t n) {
    ids_.reserve(n);
    if (keeps_places_) places_.reserve(n);
  }
  void ShrinkToFit() {
    ids_.shrink_to_fit();
    places_.shrink_to_fit();
  }

 private:
  std::shared_ptr<StringPool> pool_;
  TextIds ids_;
  bool keeps_places_ = false;
  LargeVector<EventSource> places_;  // parallel to ids_ while keeps_places_
};

template <typename Keep>
void WorksheetList::RetainIf(Keep keep) {
  std::size_t out = 0;
  for (std::size_t in = 0; in < ids_.size(); ++in) {
    if (!keep(in)) continue;
    if (keeps_places_) places_[out] = places_[in];
    ids_[out++] = ids_[in];
  }
  ids_.resize(out);
  if (keeps_places_) places_.resize(out);
}

}  // namespace vantor
