#include "analysis/form1.h"

#include "stats/event_index.h"

namespace vantor {

Form1::Form1(Host& host) : host_(host) { EmptyListsWithANewPool(); }
Form1::~Form1() = default;

void Form1::EmptyListsWithANewPool() {
  // One pool for all ten lists, so a name has one id wherever it stands;
  // a fresh one per emptying, so that texts of earlier runs are let go.
  const auto pool = std::make_shared<StringPool>();
  for (WorksheetList* list : {&List1, &List2, &List3, &List4, &List5, &List6, &List7, &List8,
                              &List9, &List10}) {
    list->Rebind(pool);
  }
}

void Form1::ClearLists() {
  EmptyListsWithANewPool();
  SourceFiles.clear();
  List1Sources.clear();
  for (EventSources* sources : {&KillSources, &FlagSources, &SentrySources}) sources->clear();
  List8Reasons.clear();
  List9Reasons.clear();
  events_.reset();
  host_.Statistics().Clear();
}

const EventIndex& Form1::Events() {
  if (!events_) events_ = std::make_unique<EventIndex>(*this);
  return *events_;
}

FlagCredit Form1::GetFlagInfo(std::string_view clnMember) { return Events().FlagsOf(clnMember); }

}  // namespace vantor
