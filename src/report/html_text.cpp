#include "report/html_text.h"

#include "report/windows1252.h"

namespace vantor {

std::string HtmlEscape(std::string_view utf8) {
  std::string out;
  out.reserve(utf8.size());
  for (const char c : utf8) {
    switch (c) {
      case '&':
        out += "&amp;";
        break;
      case '<':
        out += "&lt;";
        break;
      case '>':
        out += "&gt;";
        break;
      case '"':
        out += "&quot;";
        break;
      case '\'':
        out += "&#39;";
        break;
      default:
        out += c;
    }
  }
  return out;
}

std::string HtmlText(std::string_view log_bytes) { return HtmlEscape(Cp1252ToUtf8(log_bytes)); }

}  // namespace vantor
