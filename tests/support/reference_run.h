#pragma once
// The literal rendering of the statistics stages, given the event lists that
// the engine's recognition left, so that both count from the same rows.

#include "analysis/form1.h"
#include "reference/naive_statistics.h"

namespace vantor::testing {

inline reference::NaiveRun ReferenceRunOf(const Form1& form) {
  reference::NaiveRun naive;
  naive.killer = form.List2.Rows();
  naive.victim = form.List3.Rows();
  naive.method = form.List4.Rows();
  naive.flag_player = form.List5.Rows();
  naive.flag_action = form.List6.Rows();
  naive.sentry = form.List10.Rows();
  return naive;
}

}  // namespace vantor::testing
