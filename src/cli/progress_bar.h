#pragma once
// The progress of a run on a terminal: one line on stderr, redrawn in
// place ("\r"), wiped when the run ends. Reading the logs is the first
// four fifths of the bar (by bytes), the analysis the rest; the bar never
// goes back. On a terminal without cursor control (TERM=dumb) it prints a
// plain line at every tenth instead. Drawn only when stderr is a terminal,
// so that logs of scripted runs stay clean.

#include <cstdint>
#include <ostream>
#include <string>

namespace vantor {

class ProgressBar {
 public:
  ProgressBar(std::ostream& out, bool enabled, bool plain = false)
      : out_(out), enabled_(enabled), plain_(plain) {}

  void SetStage(std::string stage);
  // Reading: bytes of all logs read so far, of total.
  void SetRead(std::uint64_t read, std::uint64_t total);
  // The analysis: value of maximum.
  void SetAnalysed(std::int64_t value, std::int64_t maximum);
  // Wipes the line, so that what follows starts on a clean one.
  void Clear();

 private:
  void Advance(int permille);
  void Draw();

  std::ostream& out_;
  bool enabled_;
  bool plain_;
  std::string stage_;
  int permille_ = 0;
  int percent_drawn_ = -1;
  bool drawn_ = false;
};

}  // namespace vantor
