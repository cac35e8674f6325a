#include "analysis/text_ops.h"

namespace vantor {

TextSearcher::TextSearcher(std::string_view needle) : needle_(needle) {
  for (std::size_t& skip : skip_) skip = needle_.size();
  for (std::size_t i = 0; i + 1 < needle_.size(); ++i) {
    skip_[static_cast<unsigned char>(needle_[i])] = needle_.size() - 1 - i;
  }
}

bool TextSearcher::In(std::string_view text) const {
  const std::size_t m = needle_.size();
  if (m == 0) return true;
  for (std::size_t at = 0; at + m <= text.size(); at += skip_[static_cast<unsigned char>(text[at + m - 1])]) {
    if (text[at + m - 1] == needle_[m - 1] && text.compare(at, m - 1, needle_, 0, m - 1) == 0) {
      return true;
    }
  }
  return false;
}

std::string ReplaceAll(std::string_view text, std::string_view from, std::string_view to) {
  std::string out;
  out.reserve(text.size());
  std::size_t start = 0;
  for (std::size_t at = text.find(from); at != std::string_view::npos && !from.empty();
       at = text.find(from, start)) {
    out.append(text.substr(start, at - start));
    out.append(to);
    start = at + from.size();
  }
  out.append(text.substr(start));
  return out;
}

}  // namespace vantor
