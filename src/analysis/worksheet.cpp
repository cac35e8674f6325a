#include "analysis/worksheet.h"

namespace vantor {

void Worksheet::Empty() {
  const auto pool = std::make_shared<StringPool>();
  for (WorksheetList* list :
       {&List1, &List2, &List3, &List4, &List5, &List6, &List7, &List8, &List9, &List10}) {
    list->Rebind(pool);
  }
  SourceFiles.clear();
  PendingDigests.clear();
  SourceDigests.clear();
  SpanDigests.clear();
  LinesRead = 0;
  Markers.clear();
}

void Worksheet::AwaitDigests() {
  for (auto& pending : PendingDigests) {
    auto [log, stretches] = pending.get();
    SourceDigests.push_back(std::move(log));
    for (std::string& stretch : stretches) SpanDigests.push_back(std::move(stretch));
  }
  PendingDigests.clear();
}

void Worksheet::KeepPlaces(bool keep) {
  for (WorksheetList* list : {&List1, &List2, &List5, &List10}) list->KeepPlaces(keep);
  Empty();
}

}  // namespace vantor
