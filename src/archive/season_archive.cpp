#include "archive/season_archive.h"

#include <chrono>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <future>
#include <optional>
#include <set>

#include "archive/archive_schema.h"
#include "archive/match_identity.h"
#include "report/summary_report.h"
#include "stats/awards.h"
#include "stats/evening.h"

namespace vantor {

namespace {

constexpr std::string_view kSqliteHeader{"SQLite format 3\0", 16};

// An empty file is an empty database; anything else must begin as SQLite's files do.
bool LooksLikeSqlite(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::string start(kSqliteHeader.size(), '\0');
  file.read(start.data(), static_cast<std::streamsize>(start.size()));
  return file.gcount() == 0 || start == kSqliteHeader;
}

std::string Refused(const std::string& path, const std::string& why) {
  return path + " is not a season archive (" + why + "); it is left as it is";
}

// Runs the steps after the archive's version, all in one transaction.
void Upgrade(SqliteDb& db) {
  InTransaction(db, [&] {
    const std::int64_t version = db.Value("PRAGMA user_version");
    for (const SchemaStep& step : kSchemaSteps) {
      if (step.version > version) db.Exec(step.statements);
    }
    db.Exec("PRAGMA user_version = " + std::to_string(kArchiveVersion));
  });
}

std::string Refusal(const std::string& path, SqliteDb& db) {
  const std::int64_t version = db.Value("PRAGMA user_version");
  if (version > kArchiveVersion) {
    return path + " was written by a newer version of Vantor Log Analyzer (archive version " +
           std::to_string(version) + ", this one knows up to " + std::to_string(kArchiveVersion) +
           "); it is left as it is";
  }
  if (version == 0 && db.Value("SELECT count(*) FROM sqlite_master") > 0)
    return Refused(path, "an SQLite database of another program");
  return "";
}

}  // namespace

OpenedArchive OpenSeasonArchive(const std::string& path, bool create) {
  std::error_code ec;
  if (!create && !std::filesystem::exists(path, ec))
    return {nullptr, "Could not open the season archive " + path + ": no such file"};
  if (std::filesystem::exists(path, ec) && !LooksLikeSqlite(path))
    return {nullptr, Refused(path, "not an SQLite database")};
  try {
    auto db = std::make_unique<SqliteDb>(path, create);
    // A run killed or a disk filled while writing leaves the journal,
    // which the next opening rolls back.
    db->Exec("PRAGMA journal_mode = DELETE; PRAGMA synchronous = FULL; PRAGMA foreign_keys = ON");
    if (std::string refusal = Refusal(path, *db); !refusal.empty()) return {nullptr, refusal};
    if (db->Value("PRAGMA user_version") < kArchiveVersion) Upgrade(*db);
    return {std::move(db), ""};
  } catch (const SqliteError& e) {
    return {nullptr, "Could not open the season archive " + path + ": " + e.what()};
  }
}

namespace {

// The day a log was last written, as its matches' date: logs carry no
// dates of their own.
std::string ModifiedOn(const std::string& path) {
  std::error_code ec;
  const auto written = std::filesystem::last_write_time(path, ec);
  const std::time_t time = std::chrono::system_clock::to_time_t(std::chrono::file_clock::to_sys(written));
  std::tm local{};
  localtime_r(&time, &local);
  char text[16];
  std::strftime(text, sizeof text, "%Y-%m-%d", &local);
  return text;
}

std::string PlayerInsert() {
  std::string columns = "match_id, slot, name, team", values = "?, ?, ?, ?";
  for (const CountRow& count : kCounts) {
    columns += ", " + std::string(count.export_name);
    values += ", ?";
  }
  return "INSERT INTO players(" + columns + ") VALUES(" + values + ")";
}

class RunWriter {
 public:
  RunWriter(SqliteDb& db, const RunRecord& run) : db_(db), run_(run) {}

  // The id of the log's new row; none when its content was archived before.
  std::optional<std::int64_t> AddLog(const LogFacts& log, const std::string& now, ArchiveOutcome& outcome) {
    Statement known(db_.Handle(), "SELECT archived_at FROM logs WHERE sha256 = ?");
    if (known.Bind(1, log.sha256).Step()) {
      outcome.notices.push_back(log.path + " was archived on " + known.Text(0) +
                                "; it is not recorded again");
      return std::nullopt;
    }
    Statement add(db_.Handle(), "INSERT INTO logs(name, size, sha256, archived_at) VALUES(?, ?, ?, ?)");
    add.Bind(1, log.path)
        .Bind(2, static_cast<std::int64_t>(log.size))
        .Bind(3, log.sha256)
        .Bind(4, now)
        .Step();
    return db_.LastRowId();
  }

  // Whether the match was new. An archived match that its log cut short
  // and that this match continues is replaced by it.
  bool AddMatch(const Match& m, const MatchDigests& digests, std::int64_t log_id) {
    const std::string& identity = digests.identity;
    Statement known(db_.Handle(), "SELECT 1 FROM matches WHERE identity = ?");
    if (known.Bind(1, identity).Step()) return false;
    ReplaceBeginningOf(digests);
    Statement add(
        db_.Handle(),
        "INSERT INTO matches(identity, log_id, first_line, last_line, ended, played_on, blue_score, "
        "red_score, winner) VALUES(?, ?, ?, ?, ?, ?, ?, ?, ?)");
    add.Bind(1, identity).Bind(2, log_id).Bind(3, static_cast<std::int64_t>(m.span.first.line));
    add.Bind(4, static_cast<std::int64_t>(m.span.last.line)).Bind(5, m.span.ended);
    add.Bind(6, ModifiedOn(run_.files[m.span.first.file])).Bind(7, std::int64_t{m.blue_score});
    add.Bind(8, std::int64_t{m.red_score}).Bind(9, m.Winner()).Step();
    const std::int64_t id = db_.LastRowId();
    AddPlayers(m, id);
    AddAwards(m, id);
    return true;
  }

 private:
  void ReplaceBeginningOf(const MatchDigests& digests) {
    for (const auto& [lines, digest] : digests.beginnings) {
      const std::optional<std::int64_t> id = CutShortMatch(digest);
      if (!id) continue;
      for (const char* table : {"awards", "weapon_kills", "players"}) {
        Statement gone(db_.Handle(), std::string("DELETE FROM ") + table + " WHERE match_id = ?");
        gone.Bind(1, *id).Step();
      }
      Statement gone(db_.Handle(), "DELETE FROM matches WHERE id = ?");
      gone.Bind(1, *id).Step();
    }
  }

  // The archived match with that identity that ended with its log, if any.
  std::optional<std::int64_t> CutShortMatch(const std::string& identity) {
    Statement cut(db_.Handle(), "SELECT id FROM matches WHERE identity = ? AND ended = ?");
    if (!cut.Bind(1, identity).Bind(2, kEndOfLogHow).Step()) return std::nullopt;
    return cut.Int(0);
  }

  void AddPlayers(const Match& m, std::int64_t id) {
    Statement player(db_.Handle(), PlayerInsert());
    Statement weapon(db_.Handle(),
                     "INSERT INTO weapon_kills(match_id, slot, weapon, kills) VALUES(?, ?, ?, ?)");
    for (std::size_t slot = 0; slot < m.members.size(); ++slot) {
      const PlayerTally& tally = m.members[slot];
      player.Bind(1, id).Bind(2, static_cast<std::int64_t>(slot)).BindBlob(3, tally.strPlayerName);
      player.Bind(4, m.TeamOf(slot));
      const CountValues values = ValuesOf(tally);
      for (std::size_t k = 0; k < values.size(); ++k)
        player.Bind(static_cast<int>(k) + 5, std::int64_t{values[k]});
      player.Step();
      player.Reset();
      for (std::size_t w = 0; w < kWeaponCount; ++w) {
        const CountKind kind = WeaponCount(static_cast<Weapon>(w));
        if (CountOf(tally, kind) == 0) continue;
        weapon.Bind(1, id).Bind(2, static_cast<std::int64_t>(slot)).Bind(3, CountName(kind));
        weapon.Bind(4, std::int64_t{CountOf(tally, kind)}).Step();
        weapon.Reset();
      }
    }
  }

  void AddAwards(const Match& m, std::int64_t id) {
    Statement award(db_.Handle(), "INSERT INTO awards(match_id, award, name, value) VALUES(?, ?, ?, ?)");
    for (const Award& given : GiveAwards(PlayersOf({m}))) {
      for (const std::string& name : given.winners) {
        award.Bind(1, id).Bind(2, given.row->key).BindBlob(3, name).Bind(4, given.value).Step();
        award.Reset();
      }
    }
  }

  SqliteDb& db_;
  const RunRecord& run_;
};

// The line counts of the archived matches that ended with their log: a
// longer match of a log that kept growing may begin with one of them.
std::set<std::uint64_t> CutShortLengths(SqliteDb& db) {
  std::set<std::uint64_t> lengths;
  Statement cut(db.Handle(), "SELECT DISTINCT last_line - first_line + 1 FROM matches WHERE ended = ?");
  cut.Bind(1, kEndOfLogHow);
  while (cut.Step()) lengths.insert(static_cast<std::uint64_t>(cut.Int(0)));
  return lengths;
}

void Record(SqliteDb& db, const RunRecord& run, const std::vector<LogFacts>& logs,
            const std::vector<Match>& matches, const std::vector<MatchDigests>& identities,
            const std::string& now, ArchiveOutcome& outcome) {
  RunWriter writer(db, run);
  std::vector<std::optional<std::int64_t>> log_ids;
  for (const LogFacts& log : logs) log_ids.push_back(writer.AddLog(log, now, outcome));
  for (std::size_t m = 0; m < matches.size(); ++m) {
    const auto& log_id = log_ids[matches[m].span.first.file];
    if (!log_id) continue;  // its log was archived before, and so was the match
    ++(writer.AddMatch(matches[m], identities[m], *log_id) ? outcome.matches_recorded
                                                           : outcome.matches_known);
  }
}

ArchiveOutcome Failed(std::string message) {
  ArchiveOutcome outcome;
  outcome.ok = false;
  outcome.message = std::move(message);
  return outcome;
}

}  // namespace

ArchiveOutcome ArchiveRun(const std::string& path, const RunRecord& run, const std::string& now) {
  const std::vector<Match> matches = AnalyseMatches(run);
  // The logs' digests are worked out beside the matches' identities.
  OpenedArchive archive = OpenSeasonArchive(path, true);
  if (!archive.db) return Failed(archive.refusal);
  // A thread when one can be had; else the digests are worked out at get().
  auto described = std::async(std::launch::async | std::launch::deferred,
                              [&] { return DescribeLogs(run.files, run.file_digests); });
  const std::set<std::uint64_t> beginnings = CutShortLengths(*archive.db);
  // The import worked the identities out when asked; the beginnings of
  // matches a log cut short need the logs read again.
  const auto identities = beginnings.empty() && run.span_digests.size() == SplitMatches(run.markers).size()
                              ? IdentitiesOfSpans(run.span_digests, matches)
                              : MatchIdentities(run.files, matches, beginnings);
  const std::vector<LogFacts> logs = described.get();
  for (const LogFacts& log : logs) {
    if (log.sha256.empty() || !identities)
      return Failed("Could not read " + log.path + " again to archive it");
  }
  if (!identities) return Failed("Could not read the logs again to archive them");
  ArchiveOutcome outcome;
  try {
    InTransaction(*archive.db, [&] { Record(*archive.db, run, logs, matches, *identities, now, outcome); });
  } catch (const SqliteError& e) {
    return Failed("Could not record the run in the season archive " + path + ": " + e.what() +
                  "; the archive holds what it held before");
  }
  return outcome;
}

std::string ArchiveReport(const std::string& path, const ArchiveOutcome& outcome) {
  const std::size_t n = outcome.matches_recorded;
  std::string text = "recorded " + std::to_string(n) + (n == 1 ? " match in " : " matches in ") + path;
  if (outcome.matches_known > 0) {
    text += " (" + std::to_string(outcome.matches_known) +
            (outcome.matches_known == 1 ? " was archived before)" : " were archived before)");
  }
  return text;
}

}  // namespace vantor
