#pragma once
// A host that records what the core asked of it, as data the tests assert on.

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "analysis/host.h"

namespace vantor::testing {

class FakeHost : public Host {
 public:
  struct Message {
    std::string text;
    MessageIcon icon;
    bool operator==(const Message&) const = default;
  };

  std::string chosen_log;
  bool append = false;
  std::int64_t progress_maximum = 1000;
  std::vector<std::int64_t> progress_values;
  std::vector<bool> visibility_changes;
  std::vector<std::string> captions;
  std::vector<Message> messages;
  std::vector<std::string> opened;
  std::map<std::string, std::string> settings;
  std::string program_dir;
  StatisticsTable table;
  StatisticsTable filled;  // the table as the tallies left it

  std::string ChosenLogPath() const override { return chosen_log; }
  bool AppendChecked() const override { return append; }
  void SetProgressVisible(bool visible) override { visibility_changes.push_back(visible); }
  void SetProgressMaximum(std::int64_t maximum) override { progress_maximum = maximum; }
  std::int64_t ProgressMaximum() const override { return progress_maximum; }
  void SetProgressValue(std::int64_t value) override { progress_values.push_back(value); }
  void SetProcessCaption(std::string_view caption) override { captions.emplace_back(caption); }
  StatisticsTable& Statistics() override { return table; }
  void StatisticsFilled() override { filled = table; }
  void ShowMessage(std::string_view text, MessageIcon icon) override {
    messages.push_back({std::string(text), icon});
  }
  std::string ReadSetting(std::string_view key) const override {
    auto it = settings.find(std::string(key));
    return it == settings.end() ? std::string() : it->second;
  }
  std::string ProgramDirectory() const override { return program_dir; }
  void OpenDocument(const std::string& path) override { opened.push_back(path); }
};

}  // namespace vantor::testing
