#pragma once
// A thin owner of an SQLite connection and its statements. Every failure
// throws SqliteError with SQLite's own text; the archive's functions catch
// it at their boundary and report it as a message.

#include <sqlite3.h>

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

namespace vantor {

struct SqliteError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

class Statement {
 public:
  Statement(sqlite3* db, std::string_view sql);
  ~Statement();
  Statement(const Statement&) = delete;
  Statement& operator=(const Statement&) = delete;

  // Parameters are numbered from 1, as SQLite numbers them.
  Statement& Bind(int index, std::int64_t value);
  Statement& Bind(int index, double value);
  Statement& Bind(int index, std::string_view text);
  Statement& BindBlob(int index, std::string_view bytes);
  // Whether a row is ready; false when the statement is done.
  bool Step();
  // Makes the statement ready to run again with new parameters.
  void Reset();

  int Columns() const { return sqlite3_column_count(stmt_); }
  std::int64_t Int(int column) const;
  double Real(int column) const;
  std::string Text(int column) const;

 private:
  sqlite3* db_;
  sqlite3_stmt* stmt_ = nullptr;
};

class SqliteDb {
 public:
  // Opens path for reading and writing, creating it when create is set.
  SqliteDb(const std::string& path, bool create);
  ~SqliteDb();
  SqliteDb(const SqliteDb&) = delete;
  SqliteDb& operator=(const SqliteDb&) = delete;

  void Exec(std::string_view sql);
  // The first column of the first row of sql, an integer.
  std::int64_t Value(std::string_view sql);
  std::int64_t LastRowId() const { return sqlite3_last_insert_rowid(db_); }
  sqlite3* Handle() const { return db_; }

 private:
  sqlite3* db_ = nullptr;
};

// Runs the statements between BEGIN IMMEDIATE and COMMIT; rolls back when
// any of them throws, and throws on.
template <typename Body>
void InTransaction(SqliteDb& db, Body&& body) {
  db.Exec("BEGIN IMMEDIATE");
  try {
    body();
    db.Exec("COMMIT");
  } catch (...) {
    sqlite3_exec(db.Handle(), "ROLLBACK", nullptr, nullptr, nullptr);
    throw;
  }
}

}  // namespace vantor
