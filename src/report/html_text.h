#pragma once
// Text from a log, made safe for HTML: decoded from Windows-1252 to UTF-8
// and escaped, so that a name such as "<script>" is shown as text.

#include <string>
#include <string_view>

namespace vantor {

// UTF-8 text with &, <, >, " and ' escaped.
std::string HtmlEscape(std::string_view utf8);
// Log bytes (Windows-1252) decoded and escaped.
std::string HtmlText(std::string_view log_bytes);

}  // namespace vantor
