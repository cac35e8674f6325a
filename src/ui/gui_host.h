#pragma once
// The desktop program's side of the host interface: the main window's
// controls, the settings store and the desktop.

#include <QString>
#include <functional>
#include <string>

#include "analysis/host.h"

class QAction;
class QProgressBar;
class QPushButton;
class QWidget;

namespace vantor {

class Desktop;
class FileOpenDialog;

// Bytes of the log shown in a widget: the game writes Windows-1252.
QString FromLogBytes(std::string_view bytes);

// The controls of the main window the core reads and moves.
struct HostControls {
  QWidget* owner;
  const FileOpenDialog* cmnFile;
  QAction* mnuAppend;
  QProgressBar* prgProgress;
  QPushButton* cmdProcess;
  QProgressBar* const* prgReading;  // the status bar's, made after the host
};

class GuiHost : public Host {
 public:
  GuiHost(Desktop& desktop, HostControls controls);

  // Called whenever the tallies have filled the statistics table.
  void OnStatisticsFilled(std::function<void()> show) { on_filled_ = std::move(show); }

  std::string ChosenLogPath() const override;
  bool AppendChecked() const override;
  void SetProgressVisible(bool visible) override;
  void SetProgressMaximum(std::int64_t maximum) override;
  std::int64_t ProgressMaximum() const override { return maximum_; }
  void SetProgressValue(std::int64_t value) override;
  void ReadingProgress(std::uint64_t bytes_read, std::uint64_t bytes_in_log) override;
  // The statistics table as the tallies filled it, before a Process run
  // emptied it again.
  const StatisticsTable& FilledTable() const { return filled_; }
  void SetProcessCaption(std::string_view caption) override;
  StatisticsTable& Statistics() override { return table_; }
  void StatisticsFilled() override;
  void ShowMessage(std::string_view text, MessageIcon icon) override;
  std::string ReadSetting(std::string_view key) const override;
  // The program's directory; when it cannot be written, the user's own
  // directory for the side files, which the first run that uses it names.
  std::string ProgramDirectory() const override;
  void OpenDocument(const std::string& path) override;

 private:
  void SayWhereSideFilesGo(const std::string& dir) const;

  Desktop& desktop_;
  HostControls controls_;
  std::int64_t maximum_;
  StatisticsTable table_;
  StatisticsTable filled_;
  std::function<void()> on_filled_;
};

}  // namespace vantor
