#pragma once
// vantor-cli's season archive: recording a run (--archive) and showing the
// standings (--season).

#include <functional>
#include <string_view>

#include "analysis/form1.h"
#include "cli/cli_host.h"
#include "cli/cli_options.h"

namespace vantor {

using Notice = std::function<void(std::string_view)>;

// Records the run just made in options.archive; failures go to host.
void ArchiveLastRun(const CliOptions& options, CliHost& host, Form1& form, const Notice& say);

// Prints the standings of options.season as a table, or writes them as a
// page to options.summary; the exit status.
int ShowSeason(const CliOptions& options, const Notice& say);

}  // namespace vantor
