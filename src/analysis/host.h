#pragma once
// What the analysis core needs from the window that hosts it: the chosen
// log, the Append state, the progress bar, the statistics table, message
// boxes, the settings, the program directory and the desktop's document
// opener. The GUI, the command-line twin and the tests' fake implement it.

#include <cstdint>
#include <string>
#include <string_view>

#include "analysis/statistics_table.h"

namespace vantor {

enum class MessageIcon { kNone, kCritical };

class Host {
 public:
  virtual ~Host() = default;

  // Full path of the log file chosen last; empty when none was chosen.
  virtual std::string ChosenLogPath() const = 0;
  // Whether Tools > Append is checked.
  virtual bool AppendChecked() const = 0;

  virtual void SetProgressVisible(bool visible) = 0;
  virtual void SetProgressMaximum(std::int64_t maximum) = 0;
  virtual std::int64_t ProgressMaximum() const = 0;
  virtual void SetProgressValue(std::int64_t value) = 0;
  // How much of the log being imported has been read: called as the import
  // goes, so that a host can show it and keep its window painted.
  virtual void ReadingProgress(std::uint64_t /*bytes_read*/, std::uint64_t /*bytes_in_log*/) {}
  // Caption of the Process button.
  virtual void SetProcessCaption(std::string_view caption) = 0;

  virtual StatisticsTable& Statistics() = 0;
  // Called once the tallies have filled the statistics table, before the
  // report is written, so that a host can show or keep the rows.
  virtual void StatisticsFilled() {}

  // A message box with OK only, captioned with the program's title.
  virtual void ShowMessage(std::string_view text, MessageIcon icon) = 0;

  // A setting of the section "Main"; empty when absent.
  virtual std::string ReadSetting(std::string_view key) const = 0;
  // Directory that holds the program; the side files are written there.
  virtual std::string ProgramDirectory() const = 0;
  // Asks the desktop to open a document with its default program.
  virtual void OpenDocument(const std::string& path) = 0;
};

}  // namespace vantor
