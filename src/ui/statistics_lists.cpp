#include "ui/statistics_lists.h"

#include <QListWidget>
#include <QScrollBar>
#include <QStringList>
#include <memory>

#include "ui/gui_host.h"

namespace vantor {

namespace {

// Applies change to every list but the one that moved. A list that cannot
// follow (it is already at its end) reports its own value back; the guard
// keeps that echo from moving the others again.
template <typename Change>
void Follow(const StatisticsLists& lists, QListWidget* source, bool& busy, Change change) {
  if (busy) return;
  busy = true;
  for (QListWidget* list : lists) {
    if (list != source) change(list);
  }
  busy = false;
}

}  // namespace

void LinkStatisticsLists(const StatisticsLists& lists) {
  auto busy = std::make_shared<bool>(false);
  for (QListWidget* source : lists) {
    QObject::connect(source->verticalScrollBar(), &QScrollBar::valueChanged, source,
                     [lists, source, busy](int top) {
                       Follow(lists, source, *busy,
                              [top](QListWidget* list) { list->verticalScrollBar()->setValue(top); });
                     });
    QObject::connect(source, &QListWidget::currentRowChanged, source, [lists, source, busy](int row) {
      Follow(lists, source, *busy, [row](QListWidget* list) { list->setCurrentRow(row); });
    });
  }
}

void ShowStatisticsTable(const StatisticsLists& lists, const StatisticsTable& table) {
  for (std::size_t column = 0; column < lists.size(); ++column) {
    QStringList rows;
    for (const std::string& row : table[column].Rows()) rows.append(FromLogBytes(row));
    lists[column]->clear();
    lists[column]->addItems(rows);
  }
}

}  // namespace vantor
