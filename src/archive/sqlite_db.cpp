#include "archive/sqlite_db.h"

namespace vantor {

namespace {

void Check(sqlite3* db, int code) {
  if (code != SQLITE_OK && code != SQLITE_ROW && code != SQLITE_DONE) throw SqliteError(sqlite3_errmsg(db));
}

}  // namespace

Statement::Statement(sqlite3* db, std::string_view sql) : db_(db) {
  Check(db_, sqlite3_prepare_v2(db_, sql.data(), static_cast<int>(sql.size()), &stmt_, nullptr));
}

Statement::~Statement() { sqlite3_finalize(stmt_); }

Statement& Statement::Bind(int index, std::int64_t value) {
  Check(db_, sqlite3_bind_int64(stmt_, index, value));
  return *this;
}

Statement& Statement::Bind(int index, double value) {
  Check(db_, sqlite3_bind_double(stmt_, index, value));
  return *this;
}

Statement& Statement::Bind(int index, std::string_view text) {
  Check(db_, sqlite3_bind_text(stmt_, index, text.data(), static_cast<int>(text.size()), SQLITE_TRANSIENT));
  return *this;
}

Statement& Statement::BindBlob(int index, std::string_view bytes) {
  Check(db_, sqlite3_bind_blob(stmt_, index, bytes.data(), static_cast<int>(bytes.size()), SQLITE_TRANSIENT));
  return *this;
}

bool Statement::Step() {
  const int code = sqlite3_step(stmt_);
  Check(db_, code);
  return code == SQLITE_ROW;
}

void Statement::Reset() {
  sqlite3_reset(stmt_);
  sqlite3_clear_bindings(stmt_);
}

std::int64_t Statement::Int(int column) const { return sqlite3_column_int64(stmt_, column); }

double Statement::Real(int column) const { return sqlite3_column_double(stmt_, column); }

std::string Statement::Text(int column) const {
  const auto* bytes = static_cast<const char*>(sqlite3_column_blob(stmt_, column));
  return bytes ? std::string(bytes, static_cast<std::size_t>(sqlite3_column_bytes(stmt_, column))) : "";
}

SqliteDb::SqliteDb(const std::string& path, bool create) {
  const int flags = SQLITE_OPEN_READWRITE | (create ? SQLITE_OPEN_CREATE : 0);
  const int code = sqlite3_open_v2(path.c_str(), &db_, flags, nullptr);
  if (code != SQLITE_OK) {
    const std::string why = db_ ? sqlite3_errmsg(db_) : sqlite3_errstr(code);
    sqlite3_close(db_);
    throw SqliteError(why);
  }
  // A second program writing the same archive waits its turn instead of failing.
  sqlite3_busy_timeout(db_, 30000);
}

SqliteDb::~SqliteDb() { sqlite3_close(db_); }

void SqliteDb::Exec(std::string_view sql) {
  char* error = nullptr;
  const std::string text(sql);
  if (sqlite3_exec(db_, text.c_str(), nullptr, nullptr, &error) == SQLITE_OK) return;
  const std::string why = error ? error : sqlite3_errmsg(db_);
  sqlite3_free(error);
  throw SqliteError(why);
}

std::int64_t SqliteDb::Value(std::string_view sql) {
  Statement statement(db_, sql);
  return statement.Step() ? statement.Int(0) : 0;
}

}  // namespace vantor
