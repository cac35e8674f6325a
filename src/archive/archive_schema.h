#pragma once
// The season archive's tables, version by version: an archive at version
// n is brought to the current version by running the steps after n in
// order, and a new archive by running them all, so that an upgraded
// archive and a new one have the same tables. The version is SQLite's
// PRAGMA user_version.

#include <array>
#include <string_view>

namespace vantor {

struct SchemaStep {
  int version;              // the version the archive has after the step
  std::string_view change;  // what the step adds, for the decisions and the tests
  std::string_view statements;
};

inline constexpr int kArchiveVersion = 2;

extern const std::array<SchemaStep, kArchiveVersion> kSchemaSteps;

}  // namespace vantor
