#pragma once
// The last step of a run: the unrecognised lines go to "unknown.txt" in the
// program's directory, and the report is handed to the desktop.

namespace vantor {

class Form1;

inline constexpr const char* kUnknownFile = "/unknown.txt";

void subOpenHtml(Form1& form);

}  // namespace vantor
