#include "analysis/line_rules.h"

#include <array>

#include "analysis/text_ops.h"

namespace vantor {

namespace {

constexpr std::array<std::string_view, 11> kColorCodes = {"^1", "^2", "^3", "^4", "^5", "^6",
                                                          "^7", "^8", "^9", "^0", "^"};

// Without two carets in a row, removing one code never joins a caret to a
// digit, so the codes can all go in one pass: each caret, with the digit
// after it when there is one. Appended to out, the runs between carets
// copied whole.
void AppendSeparateCodesStripped(std::string& out, std::string_view line) {
  for (std::size_t from = 0;;) {
    const std::size_t caret = line.find('^', from);
    out.append(line.substr(from, caret - from));
    if (caret == std::string_view::npos) return;
    const bool digit = caret + 1 < line.size() && line[caret + 1] >= '0' && line[caret + 1] <= '9';
    from = caret + (digit ? 2 : 1);
  }
}

const TextSearcher kSentryDown("Sentry Gun was destroyed by ");
// Lines with these texts are never kept, coloured or not.
const TextSearcher kNeverKept[] = {TextSearcher("entered the game"), TextSearcher("connected"),
                                   TextSearcher("Unpure client detected"),
                                   TextSearcher("Server command overflow")};

}  // namespace

void AppendColorCodesStripped(std::string& out, std::string_view line) {
  if (line.find("^^") == std::string_view::npos) return AppendSeparateCodesStripped(out, line);
  std::string text(line);
  for (std::string_view code : kColorCodes) {
    if (text.find(code) != std::string::npos) text = ReplaceAll(text, code, "");
  }
  out.append(text);
}

std::string StripColorCodes(std::string_view line) {
  std::string text;
  text.reserve(line.size());
  AppendColorCodesStripped(text, line);
  return text;
}

LineFate ClassifyBeforeNeverKept(std::string_view line, bool has_colon, bool has_code7) {
  // Anything with a colon is somebody talking; coloured chat is kept apart.
  if (has_colon) return has_code7 ? LineFate::kChat : LineFate::kIgnored;
  if (!has_code7 && !kSentryDown.In(line)) return LineFate::kIgnored;
  return LineFate::kKept;
}

bool HoldsANeverKeptText(std::string_view line) {
  for (const TextSearcher& never_kept : kNeverKept) {
    if (never_kept.In(line)) return true;
  }
  return false;
}

}  // namespace vantor
