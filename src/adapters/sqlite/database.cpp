#include "adapters/sqlite/database.h"

#include <sqlite3.h>

#include <algorithm>

namespace mirelo::sqlite {

Database::Database(const std::string& path) : path_(path) {
  sqlite3* connection = nullptr;
  sqlite3_open_v2(path.c_str(), &connection,
                  SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE, nullptr);
  connection_.reset(connection);
}

void Database::Close::operator()(sqlite3* connection) const { sqlite3_close_v2(connection); }

std::string Database::FileStart(std::size_t count) const {
  sqlite3_file* file = nullptr;
  sqlite3_file_control(handle(), "main", SQLITE_FCNTL_FILE_POINTER, &file);
  sqlite3_int64 size = 0;
  if (file == nullptr || file->pMethods == nullptr) return {};
  if (file->pMethods->xFileSize(file, &size) != SQLITE_OK) return {};
  std::string bytes(std::min(count, static_cast<std::size_t>(size)), '\0');
  const int read = file->pMethods->xRead(file, bytes.data(), static_cast<int>(bytes.size()), 0);
  return read == SQLITE_OK ? bytes : std::string();
}

std::string Database::Bytes() const {
  sqlite3_int64 size = 0;
  const std::unique_ptr<unsigned char, decltype(&sqlite3_free)> bytes(
      sqlite3_serialize(handle(), "main", &size, 0), &sqlite3_free);
  if (bytes == nullptr) return {};
  return {reinterpret_cast<const char*>(bytes.get()), static_cast<std::size_t>(size)};
}

std::string Database::FilePath() const {
  const char* path = sqlite3_db_filename(handle(), "main");
  return path == nullptr ? "" : path;
}

void Database::EmptyLogAtEnd(bool wanted) {
  sqlite3_db_config(handle(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, wanted ? 0 : 1, nullptr);
}

void Database::BusyTimeout(std::chrono::milliseconds timeout) {
  sqlite3_busy_timeout(handle(), static_cast<int>(timeout.count()));
}

int Database::Execute(const char* sql) { return sqlite3_exec(handle(), sql, nullptr, nullptr, nullptr); }

std::int64_t Database::Changes() const { return sqlite3_changes64(handle()); }

std::int64_t Database::LastInsertedId() const { return sqlite3_last_insert_rowid(handle()); }

bool Database::IsInTransaction() const { return sqlite3_get_autocommit(handle()) == 0; }

bool Database::HasMoved() const {
  int moved = 0;
  sqlite3_file_control(handle(), "main", SQLITE_FCNTL_HAS_MOVED, &moved);
  return moved != 0;
}

std::string Database::Message() const { return sqlite3_errmsg(handle()); }

int Database::LastResult() const { return sqlite3_extended_errcode(handle()); }

// The files know what they met themselves; the connection misses what came with a commit.
int Database::SystemError() const {
  for (const int which : {SQLITE_FCNTL_JOURNAL_POINTER, SQLITE_FCNTL_FILE_POINTER}) {
    sqlite3_file* file = nullptr;
    sqlite3_file_control(handle(), "main", which, &file);
    if (file == nullptr || file->pMethods == nullptr) continue;
    int error = 0;
    file->pMethods->xFileControl(file, SQLITE_FCNTL_LAST_ERRNO, &error);
    if (error != 0) return error;
  }
  return sqlite3_system_errno(handle());
}

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

Run& Run::BindReal(double number) {
  sqlite3_bind_double(statement_.handle(), ++parameters_, number);
  return *this;
}

Run& Run::BindText(std::string_view text) {
  const char* data = text.data() == nullptr ? "" : text.data();
  sqlite3_bind_text64(statement_.handle(), ++parameters_, data, text.size(), SQLITE_STATIC, SQLITE_UTF8);
  return *this;
}

Run& Run::BindNull() {
  sqlite3_bind_null(statement_.handle(), ++parameters_);
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
