#pragma once
// One list of the worksheet: an ordered sequence of strings (rows) that
// carries an intermediate result from one stage of a run to the next.

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace vantor {

class WorksheetList {
 public:
  // Reading at or beyond the row count yields the empty string: several
  // stages read one row past the last on purpose.
  const std::string& At(std::size_t row) const;
  std::size_t Count() const { return rows_.size(); }
  bool Empty() const { return rows_.empty(); }

  void Append(std::string_view row) { rows_.emplace_back(row); }
  void Append(std::string&& row) { rows_.push_back(std::move(row)); }
  void Append(const char* row) { rows_.emplace_back(row); }
  // Overwrites a row in place; a row beyond the end is ignored.
  void Set(std::size_t row, std::string_view text);
  // Removes one row; the rows behind it move up by one.
  void RemoveAt(std::size_t row);
  void Clear() { rows_.clear(); }

  // Keeps, in order, only the rows for which keep(row index) is true: the
  // same result as removing the others one by one, at linear cost.
  template <typename Keep>
  void RetainIf(Keep keep);

  const std::vector<std::string>& Rows() const { return rows_; }
  void Reserve(std::size_t n) { rows_.reserve(n); }

 private:
  std::vector<std::string> rows_;
};

template <typename Keep>
void WorksheetList::RetainIf(Keep keep) {
  std::size_t out = 0;
  for (std::size_t in = 0; in < rows_.size(); ++in) {
    if (!keep(in)) continue;
    if (out != in) rows_[out] = std::move(rows_[in]);
    ++out;
  }
  rows_.resize(out);
}

}  // namespace vantor
