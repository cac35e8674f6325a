#include "analysis/line_rules.h"

#include <array>
#include <cstring>

#include "analysis/text_ops.h"

namespace vantor {

namespace {

constexpr std::array<std::string_view, 11> kColorCodes = {"^1", "^2", "^3", "^4", "^5", "^6",
                                                          "^7", "^8", "^9", "^0", "^"};

// Without two carets in a row, removing one code never joins a caret to a
// digit, so the codes can all go in one pass: each caret, with the digit
// after it when there is one. Written at to; null, with nothing written
// that counts, when two carets stand together.
char* PutSeparateCodesStripped(char* to, std::string_view line) {
  const char *from = line.data(), *end = from + line.size();
  for (;;) {
    const auto* caret =
        static_cast<const char*>(std::memchr(from, '^', static_cast<std::size_t>(end - from)));
    const char* run_end = caret != nullptr ? caret : end;
    std::memcpy(to, from, static_cast<std::size_t>(run_end - from));
    to += run_end - from;
    if (caret == nullptr) return to;
    from = caret + 1;
    if (from < end && *from == '^') return nullptr;
    if (from < end && *from >= '0' && *from <= '9') ++from;
  }
}

const TextSearcher kSentryDown("Sentry Gun was destroyed by ");
// Lines with these texts are never kept, coloured or not.
const TextSearcher kNeverKept[] = {TextSearcher("entered the game"), TextSearcher("connected"),
                                   TextSearcher("Unpure client detected"),
                                   TextSearcher("Server command overflow")};

}  // namespace

char* PutColorCodesStripped(char* to, std::string_view line) {
  if (char* end = PutSeparateCodesStripped(to, line)) return end;
  std::string text(line);
  for (std::string_view code : kColorCodes) {
    if (text.find(code) != std::string::npos) text = ReplaceAll(text, code, "");
  }
  std::memcpy(to, text.data(), text.size());
  return to + text.size();
}

std::string StripColorCodes(std::string_view line) {
  std::string text(line.size(), '\0');
  text.resize(static_cast<std::size_t>(PutColorCodesStripped(text.data(), line) - text.data()));
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
