#include "adapters/sqlite/database.h"

#include <sqlite3.h>

namespace mirelo::sqlite {

Database::Database(const std::string& path) {
  sqlite3* connection = nullptr;
  sqlite3_open_v2(path.c_str(), &connection,
                  SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE, nullptr);
  connection_.reset(connection);
}

void Database::Close::operator()(sqlite3* connection) const { sqlite3_close_v2(connection); }

void Database::BusyTimeout(std::chrono::milliseconds timeout) {
  sqlite3_busy_timeout(handle(), static_cast<int>(timeout.count()));
}

int Database::Execute(const char* sql) { return sqlite3_exec(handle(), sql, nullptr, nullptr, nullptr); }

std::int64_t Database::Changes() const { return sqlite3_changes64(handle()); }

std::int64_t Database::LastInsertedId() const { return sqlite3_last_insert_rowid(handle()); }

bool Database::HasMoved() const {
  int moved = 0;
  sqlite3_file_control(handle(), "main", SQLITE_FCNTL_HAS_MOVED, &moved);
  return moved != 0;
}

std::string Database::Message() const { return sqlite3_errmsg(handle()); }

int Database::LastResult() const { return sqlite3_extended_errcode(handle()); }

Statement::Statement(Database& database, const char* sql) {
  sqlite3_stmt* statement = nullptr;
  prepared_ = sqlite3_prepare_v3(database.handle(), sql, -1, SQLITE_PREPARE_PERSISTENT, &statement, nullptr);
  statement_.reset(statement);
}

void Statement::Finalize::operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }

Run::~Run() { sqlite3_reset(statement_.handle()); }

Run& Run::Bind(std::int64_t integer) {
  sqlite3_bind_int64(statement_.handle(), ++parameters_, integer);
  return *this;
}

Run& Run::Bind(std::string_view bytes) {
  // A null pointer would bind NULL, and no bytes are a value.
  const char* data = bytes.data() == nullptr ? "" : bytes.data();
  sqlite3_bind_blob64(statement_.handle(), ++parameters_, data, bytes.size(), SQLITE_STATIC);
  return *this;
}

int Run::Step() {
  if (statement_.handle() == nullptr) return statement_.prepared();
  return sqlite3_step(statement_.handle());
}

bool Run::StepToRow() { return Step() == SQLITE_ROW; }

std::int64_t Run::Integer(int column) const { return sqlite3_column_int64(statement_.handle(), column); }

std::string_view Run::Bytes(int column) const {
  const auto* data = static_cast<const char*>(sqlite3_column_blob(statement_.handle(), column));
  const auto size = static_cast<std::size_t>(sqlite3_column_bytes(statement_.handle(), column));
  return size == 0 ? std::string_view() : std::string_view(data, size);
}

}  // namespace mirelo::sqlite
