#pragma once
// The command-line host: messages go to stderr, the settings come from the
// command line only (never from the desktop program's settings), and the
// statistics table can be printed as tab-separated text.

#include <cstdint>
#include <ostream>
#include <string>

#include "analysis/host.h"
#include "cli/progress_bar.h"

namespace vantor {

class CliHost : public Host {
 public:
  CliHost(std::string output_dir, std::string program_dir, bool open_report, std::ostream& err,
          bool show_progress = false, bool plain_progress = false);

  void SetChosenLogPath(std::string path) { chosen_ = std::move(path); }
  // The bytes of the logs read before the current one, and of all of them.
  void SetReading(std::uint64_t before, std::uint64_t total) {
    read_before_ = before;
    read_total_ = total;
  }
  void SetAppend(bool append) { append_ = append; }
  // The statistics table as the tallies filled it, before a run could
  // empty it again.
  const StatisticsTable& FilledTable() const { return filled_; }
  bool ShowedMessage() const { return messages_ > 0; }

  std::string ChosenLogPath() const override { return chosen_; }
  bool AppendChecked() const override { return append_; }
  void SetProgressVisible(bool visible) override;
  void SetProgressMaximum(std::int64_t maximum) override;
  std::int64_t ProgressMaximum() const override { return maximum_; }
  void SetProgressValue(std::int64_t value) override { progress_.SetAnalysed(value, maximum_); }
  void ReadingProgress(std::uint64_t bytes_read, std::uint64_t) override {
    progress_.SetRead(read_before_ + bytes_read, read_total_);
  }
  ProgressBar& Progress() { return progress_; }
  void SetProcessCaption(std::string_view) override {}
  StatisticsTable& Statistics() override { return table_; }
  void StatisticsFilled() override;
  void ShowMessage(std::string_view text, MessageIcon icon) override;
  std::string ReadSetting(std::string_view key) const override;
  std::string ProgramDirectory() const override { return program_dir_; }
  void OpenDocument(const std::string& path) override;

 private:
  std::string output_dir_;
  std::string program_dir_;
  bool open_report_;
  std::ostream& err_;
  std::string chosen_;
  bool append_ = false;
  std::int64_t maximum_ = 1000;
  StatisticsTable table_;
  StatisticsTable filled_;
  int messages_ = 0;
  std::uint64_t read_before_ = 0, read_total_ = 0;
  ProgressBar progress_;
};

}  // namespace vantor
