#include "archive/archive_schema.h"

namespace vantor {

// Names are kept as the log's bytes (BLOB), as the statistics table shows
// them; a player's counts are columns named as in the JSON export.
const std::array<SchemaStep, kArchiveVersion> kSchemaSteps = {{
    {1, "logs, matches, players and their weapon kills", R"(
CREATE TABLE logs(
  id INTEGER PRIMARY KEY, name TEXT NOT NULL, size INTEGER NOT NULL,
  sha256 TEXT NOT NULL UNIQUE, archived_at TEXT NOT NULL);
CREATE TABLE matches(
  id INTEGER PRIMARY KEY, identity TEXT NOT NULL UNIQUE, log_id INTEGER NOT NULL REFERENCES logs(id),
  first_line INTEGER NOT NULL, last_line INTEGER NOT NULL, ended TEXT NOT NULL, played_on TEXT NOT NULL,
  blue_score INTEGER NOT NULL, red_score INTEGER NOT NULL, winner TEXT NOT NULL);
CREATE INDEX matches_played_on ON matches(played_on);
CREATE TABLE players(
  match_id INTEGER NOT NULL REFERENCES matches(id), slot INTEGER NOT NULL, name BLOB NOT NULL,
  team TEXT NOT NULL, frags INTEGER NOT NULL, deaths INTEGER NOT NULL, suicides INTEGER NOT NULL,
  flag_grabs INTEGER NOT NULL, fc_defends INTEGER NOT NULL, flag_captures INTEGER NOT NULL,
  flag_defends INTEGER NOT NULL, base_defends INTEGER NOT NULL, fc_kills INTEGER NOT NULL,
  sentry_kills INTEGER NOT NULL, PRIMARY KEY(match_id, slot));
CREATE TABLE weapon_kills(
  match_id INTEGER NOT NULL REFERENCES matches(id), slot INTEGER NOT NULL, weapon TEXT NOT NULL,
  kills INTEGER NOT NULL, PRIMARY KEY(match_id, slot, weapon));
)"},
    // Matches archived at version 1 keep no awards; they count for
    // everything else in the standings.
    {2, "the awards of each match", R"(
CREATE TABLE awards(
  match_id INTEGER NOT NULL REFERENCES matches(id), award TEXT NOT NULL, name BLOB NOT NULL,
  value REAL NOT NULL);
CREATE INDEX awards_match ON awards(match_id);
)"},
}};

}  // namespace vantor
