#pragma once
// The main window's statistics table as the user reads it: one row of
// eleven cells per line of its lists.

#include <QListWidget>
#include <QStringList>
#include <algorithm>

inline const char* const kStatisticsLists[] = {
    "lstName",         "lstFrags",       "lstDeaths",      "lstSuicides", "lstFlagGrabs", "lstFCDefends",
    "lstFlagCaptures", "lstFlagDefends", "lstBaseDefends", "lstFCKills",  "lstSentKill"};

inline QList<QStringList> StatisticsRows(const QWidget& window) {
  QList<QStringList> rows;
  for (const char* name : kStatisticsLists) {
    auto* list = window.findChild<QListWidget*>(name);
    rows.resize(std::max<qsizetype>(rows.size(), list->count()));
    for (int r = 0; r < list->count(); ++r) rows[r] << list->item(r)->text();
  }
  return rows;
}
