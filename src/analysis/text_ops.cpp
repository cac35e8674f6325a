#include "analysis/text_ops.h"

namespace vantor {

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
