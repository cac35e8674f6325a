#pragma once
// The two fixed stage sequences of an analysis run.

namespace vantor {

class Form1;

// After File > Open without Append: three propagation passes; the results
// stay in the worksheet and the statistics table.
void OpenRun(Form1& form);
// Behind the Process button: two propagation passes, the button's caption
// changed for the run, and everything emptied at the end.
void ProcessRun(Form1& form);

}  // namespace vantor
