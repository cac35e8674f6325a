#include "report/report_path.h"

#include <filesystem>
#include <system_error>

#include "analysis/host.h"
#include "analysis/output_plan.h"
#include "analysis/text_ops.h"

namespace vantor {

namespace {

constexpr char kSeparator = '/';

}  // namespace

std::string DeriveReportPath(std::string_view output_dir, std::string_view log_path) {
  if (log_path.empty()) return {};
  std::string report;
  if (output_dir.empty()) {
    report = ReplaceAll(log_path, ".log", ".html");
  } else {
    const std::size_t slash = log_path.rfind(kSeparator);
    const std::string_view tail = slash == std::string_view::npos ? log_path : log_path.substr(slash);
    report = std::string(output_dir) + ReplaceAll(tail, ".log", ".html");
  }
  if (SameFile(report, std::string(log_path))) report += ".html";
  return report;
}

std::string GetReportPath(const Host& host) {
  return DeriveReportPath(host.ReadSetting(kOutputDirSetting), host.ChosenLogPath());
}

}  // namespace vantor
