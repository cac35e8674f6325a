#pragma once
// The details of one member slot, in a window of its own (not modal): the
// ten counts and the weapon counts grouped as the report groups them, who
// the player killed and was killed by most, how the team was decided, and
// for the selected count the log lines behind it.

#include <QWidget>
#include <memory>

#include "stats/run_record.h"

class QLabel;
class QListWidget;
class QTableWidget;

namespace vantor {

class PlayerDetails : public QWidget {
  Q_OBJECT

 public:
  PlayerDetails(std::shared_ptr<const RunRecord> run, std::size_t slot, QWidget* parent = nullptr);

 private:
  void FillCounts();
  void FillKillMatrix();
  void AddCountRow(const QString& label, std::size_t count_kind, Count value);
  void AddGroupRow(const QString& heading);
  void ShowLinesOfSelectedCount();

  std::shared_ptr<const RunRecord> run_;
  std::size_t slot_;
  QTableWidget* counts_;
  QLabel* team_;
  QLabel* rivals_;
  QTableWidget* kills_;  // the player's row and column of the kill matrix
  QListWidget* lines_;
};

// How the team of a player was decided, as a sentence.
QString ExplainTeam(const RunRecord& run, const TeamReason& reason);

}  // namespace vantor
