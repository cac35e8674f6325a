#pragma once
// The desktop program's side of the host interface: the main window's
// controls, the settings store and the desktop's document opener.

#include <QString>
#include <string>

#include "analysis/host.h"

class QProgressBar;
class QPushButton;
class QAction;
class QWidget;

namespace vantor {

// Bytes of the log shown in a widget: the log's code page is Windows-1252.
QString FromLogBytes(const std::string& bytes);

class GuiHost : public Host {
 public:
  GuiHost(QWidget* owner, QProgressBar* progress, QPushButton* process, QAction* append);

  void SetChosenLogPath(std::string path) { chosen_ = std::move(path); }

  std::string ChosenLogPath() const override { return chosen_; }
  bool AppendChecked() const override;
  void SetProgressVisible(bool visible) override;
  void SetProgressMaximum(std::int64_t maximum) override;
  std::int64_t ProgressMaximum() const override { return maximum_; }
  void SetProgressValue(std::int64_t value) override;
  void SetProcessCaption(std::string_view caption) override;
  StatisticsTable& Statistics() override { return table_; }
  void ShowMessage(std::string_view text, MessageIcon icon) override;
  std::string ReadSetting(std::string_view key) const override;
  std::string ProgramDirectory() const override;
  void OpenDocument(const std::string& path) override;

 private:
  QWidget* owner_;
  QProgressBar* progress_;
  QPushButton* process_;
  QAction* append_;
  std::string chosen_;
  std::int64_t maximum_ = 1000;
  StatisticsTable table_;
};

}  // namespace vantor
