#pragma once
// What the import does with each line of a log: keep it, ignore it, or keep
// it apart as chat, and the line without its colour codes.

#include <string>
#include <string_view>

namespace vantor {

// The line without its colour codes ("^1" to "^9", "^0", removed in this
// order, each on the result of the one before) and without any caret left.
std::string StripColorCodes(std::string_view line);

// The same, written at to (room for line.size() bytes); returns where it ends.
char* PutColorCodesStripped(char* to, std::string_view line);

// What the import does with one line of the log.
enum class LineFate { kKept, kIgnored, kChat };
// In two steps: all but the texts that are never kept (kKept: kept unless
// the line holds one of them), given whether the line holds a colon and a
// "^7"; and whether it holds one of those texts. A line the import kept
// before is kept again without the second step.
LineFate ClassifyBeforeNeverKept(std::string_view line, bool has_colon, bool has_code7);
bool HoldsANeverKeptText(std::string_view line);

}  // namespace vantor
