#include "report/open_report.h"

#include <string>

#include "analysis/form1.h"
#include "analysis/text_file.h"
#include "report/report_path.h"

namespace vantor {

void subOpenHtml(Form1& form) {
  Host& host = form.host();
  TextFileWriter unknown(host.ProgramDirectory() + kUnknownFile);
  for (const std::string& row : form.List1.Rows()) unknown.WriteLine(row);
  unknown.WriteLine("");
  const IoResult result = unknown.Commit();
  if (!result.ok) host.ShowMessage(result.message, MessageIcon::kCritical);
  // A report that could not be written is not opened: what lies at its
  // path, if anything, is from an earlier run.
  if (form.ReportWritten()) host.OpenDocument(GetReportPath(host));
}

}  // namespace vantor
