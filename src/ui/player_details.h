#pragma once
// The details of one member slot, in a window of its own (not modal): the
// ten counts and the weapon counts grouped as the report groups them, who
// the player killed and was killed by most, the player's row and column of
// the kill matrix, how the team was decided, and for the selected count
// the log lines behind it (file, line number and text).

#include <QWidget>
#include <memory>

#include "stats/provenance.h"
#include "stats/run_record.h"

class QLabel;
class QListWidget;
class QTableWidget;

namespace vantor {

class PlayerDetails : public QWidget {
  Q_OBJECT

 public:
  PlayerDetails(std::shared_ptr<const RunRecord> run, std::size_t slot, QWidget* parent = nullptr);

 protected:
  // Escape and Ctrl+W close the window, as they close other such windows.
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void CreateCountsTable();
  void CreateKillsTable();
  void LayOut();
  void FillCounts();
  void FillKillMatrix(const std::vector<KillCount>& matrix);
  void AddCountRow(const QString& label, std::size_t count_kind, Count value);
  void AddGroupRow(const QString& heading);
  void ShowLinesOfSelectedCount();

  std::shared_ptr<const RunRecord> run_;
  std::size_t slot_;
  QTableWidget* counts_;
  QLabel* player_;  // the name and team
  QLabel* team_;
  QLabel* rivals_;
  QTableWidget* kills_;  // the player's row and column of the kill matrix
  QListWidget* lines_;
};

// How the team of a player was decided, as a sentence that names the
// deciding line (file, line number and text) when there is one.
QString ExplainTeam(const RunRecord& run, const TeamReason& reason);

// One log line of the run: "file, line N: text".
QString DescribeLine(const RunRecord& run, const EventSource& source);

}  // namespace vantor
