#include "ui/statistics_lists.h"

#include <QScrollBar>
#include <QStringList>
#include <algorithm>
#include <memory>
#include <sstream>

#include "report/run_outputs.h"
#include "ui/gui_host.h"

namespace vantor {

namespace {

// Applies change to every list but the one that moved; the guard keeps a
// list's echo from moving the others again.
template <typename Change>
void Follow(const StatisticsLists& lists, StatisticsList* source, bool& busy, Change change) {
  if (busy) return;
  busy = true;
  for (StatisticsList* list : lists) {
    if (list != source) change(list);
  }
  busy = false;
}

constexpr const char* kTotals = "Totals";
const QColor kBlueName(0x00, 0x00, 0xFF), kRedName(0xFF, 0x00, 0x00);  // as the report colours them

}  // namespace

int StatisticsList::VisibleRows() const {
  const int row = count() > 0 ? std::max(1, sizeHintForRow(0)) : std::max(1, fontMetrics().height());
  return viewport()->height() / row;
}

void StatisticsList::updateGeometries() {
  QListWidget::updateGeometries();
  int fewest = VisibleRows();
  for (const StatisticsList* peer : peers_) {
    if (peer != nullptr) fewest = std::min(fewest, peer->VisibleRows());
  }
  verticalScrollBar()->setRange(0, std::max(0, count() - fewest));
}

void LinkStatisticsLists(const StatisticsLists& lists) {
  auto busy = std::make_shared<bool>(false);
  for (StatisticsList* source : lists) {
    source->SetPeers(lists);
    source->setAlternatingRowColors(true);
    QObject::connect(source->verticalScrollBar(), &QScrollBar::valueChanged, source,
                     [lists, source, busy](int top) {
                       Follow(lists, source, *busy, [top](StatisticsList* list) {
                         QScrollBar* bar = list->verticalScrollBar();
                         bar->setMaximum(std::max(bar->maximum(), top));
                         bar->setValue(top);
                       });
                     });
    QObject::connect(source, &QListWidget::currentRowChanged, source, [lists, source, busy](int row) {
      Follow(lists, source, *busy, [row](StatisticsList* list) { list->setCurrentRow(row); });
    });
  }
}

void ShowStatisticsTable(const StatisticsLists& lists, const StatisticsTable& table) {
  const WorksheetList& names = table[StatisticsTable::lstName];
  std::vector<std::size_t> totals;  // Blue's, then Red's
  for (std::size_t r = 0; r < names.Count(); ++r) {
    if (names.At(r) == kTotals) totals.push_back(r);
  }
  for (std::size_t column = 0; column < lists.size(); ++column) {
    lists[column]->clear();
    for (std::size_t r = 0; r < table[column].Count(); ++r) {
      auto* item = new QListWidgetItem(FromLogBytes(table[column].At(r)), lists[column]);
      if (column > 0) item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
      if (std::find(totals.begin(), totals.end(), r) != totals.end()) {
        QFont bold = item->font();
        bold.setBold(true);
        item->setFont(bold);
      } else if (column == 0 && !totals.empty() && r != totals[0] + 1) {
        item->setForeground(r < totals[0] ? kBlueName : kRedName);
      }
    }
  }
}

QString StatisticsTableText(const StatisticsTable& table) {
  std::ostringstream text;
  WriteStatisticsTable(text, table);
  return FromLogBytes(text.str());
}

}  // namespace vantor
