#include "adapters/sqlite/registry_file.h"

#include <sqlite3.h>

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <thread>

#include "adapters/sqlite/private_file.h"
#include "automation/runtime_error.h"

namespace mirelo::sqlite {

namespace fs = std::filesystem;
using std::chrono::milliseconds;

namespace {

constexpr std::int64_t kApplicationId = 0x4D72656C;  // "Mrel": tells a registry from other databases
constexpr std::int64_t kLayout = 1;                  // grows when the tables below change

// Ids are never given twice (AUTOINCREMENT), so that a handle of a deleted key never finds another key. The
// root keys' ids are their handles. `folded` is the name as it is found, `name` the name as it was made. A
// key that others hang from cannot be deleted (REFERENCES); its values go with it.
constexpr const char* kMakeLayout = R"sql(
CREATE TABLE key (
  id     INTEGER PRIMARY KEY AUTOINCREMENT,
  parent INTEGER REFERENCES key (id),
  folded BLOB NOT NULL,
  name   BLOB NOT NULL,
  UNIQUE (parent, folded)
) STRICT;
CREATE TABLE value (
  id     INTEGER PRIMARY KEY,
  key    INTEGER NOT NULL REFERENCES key (id) ON DELETE CASCADE,
  folded BLOB NOT NULL,
  name   BLOB NOT NULL,
  type   INTEGER NOT NULL,
  data   BLOB NOT NULL,
  UNIQUE (key, folded)
) STRICT;
INSERT INTO key (id, parent, folded, name) VALUES
  (0x80000000, NULL, CAST('HKEY_CLASSES_ROOT' AS BLOB), CAST('HKEY_CLASSES_ROOT' AS BLOB)),
  (0x80000001, NULL, CAST('HKEY_CURRENT_USER' AS BLOB), CAST('HKEY_CURRENT_USER' AS BLOB)),
  (0x80000002, NULL, CAST('HKEY_LOCAL_MACHINE' AS BLOB), CAST('HKEY_LOCAL_MACHINE' AS BLOB)),
  (0x80000003, NULL, CAST('HKEY_USERS' AS BLOB), CAST('HKEY_USERS' AS BLOB));
)sql";

std::string MarkLayout() {
  return "PRAGMA application_id = " + std::to_string(kApplicationId) +
         "; PRAGMA user_version = " + std::to_string(kLayout);
}

// A file on its way to being a registry that can be used.
class RegistryFile {
 public:
  RegistryFile(const fs::path& path, Database& database) : path_(path), database_(database) {}

  void Execute(const std::string& sql) const { Check(database_.Execute(sql.c_str())); }
  bool HasLayout() const;
  void MakeLayout() const;
  void UseWriteAheadLog(milliseconds busy_timeout) const;
  void CheckForDamage() const;

 private:
  bool LayoutIsThere() const;
  std::int64_t ReadInteger(const char* sql) const;
  void Check(int result) const;
  [[noreturn]] void Fail(std::int32_t number, const std::string& why) const;

  const fs::path& path_;
  Database& database_;
};

constexpr std::int32_t kNoAccess = 75;        // path/file access error
constexpr std::int32_t kInvalidFormat = 321;  // invalid file format

}  // namespace

Database OpenRegistryFile(const fs::path& path, milliseconds busy_timeout) {
  MakePrivateFile(path);
  Database database(path.string());
  database.BusyTimeout(busy_timeout);
  const RegistryFile file(path, database);
  file.Execute("PRAGMA foreign_keys = ON; PRAGMA synchronous = FULL");
  if (!file.HasLayout()) file.MakeLayout();
  file.UseWriteAheadLog(busy_timeout);
  file.CheckForDamage();
  return database;
}

namespace {

bool RegistryFile::HasLayout() const {
  Execute("BEGIN");  // one state of the file for all that is read of it
  const bool has_layout = LayoutIsThere();
  Execute("COMMIT");
  return has_layout;
}

void RegistryFile::MakeLayout() const {
  Execute("BEGIN IMMEDIATE");
  if (!LayoutIsThere()) Execute(kMakeLayout + MarkLayout());  // another process may have been first
  Execute("COMMIT");
}

// Whether this is a registry, false for a file that is still empty.
bool RegistryFile::LayoutIsThere() const {
  const std::int64_t tables = ReadInteger("SELECT count(*) FROM sqlite_schema");
  const std::int64_t application = ReadInteger("PRAGMA application_id");
  const std::int64_t layout = ReadInteger("PRAGMA user_version");
  if (tables == 0 && application == 0 && layout == 0) return false;
  if (application != kApplicationId) Fail(kInvalidFormat, "is a database of another program");
  if (layout > kLayout) {
    Fail(kInvalidFormat, "was written by a newer version of Mirelo (layout " + std::to_string(layout) +
                             ", this version knows " + std::to_string(kLayout) + ")");
  }
  return true;
}

// The first change to this mode needs the file for itself, and SQLite gives up at once when another process
// has it open in that moment.
void RegistryFile::UseWriteAheadLog(milliseconds busy_timeout) const {
  const auto deadline = std::chrono::steady_clock::now() + busy_timeout;
  for (;;) {
    const int result = database_.Execute("PRAGMA journal_mode = WAL");
    const bool busy = (result & 0xFF) == SQLITE_BUSY;
    if (!busy || std::chrono::steady_clock::now() >= deadline) return Check(result);
    std::this_thread::sleep_for(milliseconds(1));
  }
}

void RegistryFile::CheckForDamage() const {
  const Statement check(database_, "PRAGMA quick_check(1)");
  Run run(check);
  if (!run.StepToRow()) Check(database_.LastResult());
  if (run.Bytes(0) != "ok") Fail(kInvalidFormat, "is damaged: " + std::string(run.Bytes(0)));
}

std::int64_t RegistryFile::ReadInteger(const char* sql) const {
  const Statement statement(database_, sql);
  Run run(statement);
  if (!run.StepToRow()) Check(database_.LastResult());
  return run.Integer(0);
}

void RegistryFile::Check(int result) const {
  switch (result & 0xFF) {
    case SQLITE_OK:
      return;
    case SQLITE_BUSY:
      Fail(kNoAccess, "is locked by another program");
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
      Fail(kInvalidFormat, "is damaged: " + database_.Message());
    default:
      Fail(kNoAccess, "cannot be used: " + database_.Message());
  }
}

void RegistryFile::Fail(std::int32_t number, const std::string& why) const {
  throw RuntimeError(number, "The settings file " + path_.string() + " " + why, "Mirelo.SqliteRegistry");
}

}  // namespace

}  // namespace mirelo::sqlite
