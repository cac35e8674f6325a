#pragma once
// The season archive: an SQLite file that keeps every archived run's logs,
// matches, players with their counts, and awards, so that a season can be
// added up. A run is recorded in one transaction, whole or not at all; a
// log whose content is already archived, and a match already archived
// (archive/match_identity.h), are not recorded again.

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "archive/sqlite_db.h"
#include "stats/run_record.h"

namespace vantor {

struct OpenedArchive {
  std::unique_ptr<SqliteDb> db;  // none when refused
  std::string refusal;           // the message that says why
};

// Opens the archive at path, made when missing if create is set, and brings
// an older archive's tables to the current version. A file that is no
// archive of this program, or one written by a newer version, is refused
// and left untouched.
OpenedArchive OpenSeasonArchive(const std::string& path, bool create);

struct ArchiveOutcome {
  bool ok = true;
  std::string message;               // why nothing was recorded
  std::vector<std::string> notices;  // the logs that were archived before
  std::size_t matches_recorded = 0;
  std::size_t matches_known = 0;  // already in the archive
};

// Records run (analysed with places kept) in the archive at path; now is
// when, "YYYY-MM-DD HH:MM:SS".
ArchiveOutcome ArchiveRun(const std::string& path, const RunRecord& run, const std::string& now);

// What a user reads after archiving: "recorded 2 matches in season.db
// (1 was archived before)".
std::string ArchiveReport(const std::string& path, const ArchiveOutcome& outcome);

}  // namespace vantor
