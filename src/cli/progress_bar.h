#pragma once
// The progress of a run on a terminal: one line on stderr, redrawn in
// place ("\r"), wiped when the run ends. Drawn only when stderr is a
// terminal, so that logs of scripted runs stay clean.

#include <cstdint>
#include <ostream>
#include <string>

namespace vantor {

class ProgressBar {
 public:
  ProgressBar(std::ostream& out, bool enabled) : out_(out), enabled_(enabled) {}

  void SetStage(std::string stage);
  void SetRange(std::int64_t maximum) { maximum_ = maximum > 0 ? maximum : 1; }
  void SetValue(std::int64_t value);
  // Wipes the line, so that what follows starts on a clean one.
  void Clear();

 private:
  void Draw();

  std::ostream& out_;
  bool enabled_;
  std::string stage_;
  std::int64_t maximum_ = 1;
  int percent_ = 0;
  bool drawn_ = false;
};

}  // namespace vantor
