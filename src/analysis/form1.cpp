#include "analysis/form1.h"

#include "stats/event_index.h"

namespace vantor {

Form1::Form1(Host& host) : host_(host) {}
Form1::~Form1() = default;

void Form1::ClearLists() {
  for (WorksheetList* list : {&List1, &List2, &List3, &List4, &List5, &List6, &List7, &List8,
                              &List9, &List10}) {
    list->Clear();
  }
  events_.reset();
  host_.Statistics().Clear();
}

const EventIndex& Form1::Events() {
  if (!events_) events_ = std::make_unique<EventIndex>(*this);
  return *events_;
}

FlagCredit Form1::GetFlagInfo(std::string_view clnMember) { return Events().FlagsOf(clnMember); }

}  // namespace vantor
