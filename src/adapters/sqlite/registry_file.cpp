#include "adapters/sqlite/registry_file.h"

#include <sqlite3.h>

#include <cerrno>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <string>
#include <system_error>
#include <thread>

#include "adapters/sqlite/file_kind.h"
#include "adapters/sqlite/lock_holder.h"
#include "adapters/sqlite/private_file.h"
#include "automation/runtime_error.h"

namespace mirelo::sqlite {

namespace fs = std::filesystem;
using std::chrono::milliseconds;

namespace {

constexpr std::int64_t kApplicationId = 0x4D72656C;  // "Mrel": tells a registry from other databases
constexpr std::int64_t kLayout = 1;                  // grows when the tables below change
constexpr std::int64_t kRoots = 4;

constexpr std::int32_t kNoAccess = 75;        // path/file access error
constexpr std::int32_t kInvalidFormat = 321;  // invalid file format
constexpr const char* kDiskFull = "the disk is full";
constexpr const char* kSource = "Mirelo.SqliteRegistry";

// Ids of keys that were stored are never given again (AUTOINCREMENT), so that a handle of a deleted key finds
// no other key; those of keys that went with a transaction are. The
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
  explicit RegistryFile(Database& database) : database_(database) {}

  void CheckKind() const;
  void CheckHeader() const;
  void Execute(const std::string& sql) const { Check(database_.Execute(sql.c_str())); }
  bool HasLayout() const;
  void MakeLayout() const;
  void CheckForDamage() const;
  void UseWriteAheadLog(milliseconds busy_timeout) const;
  Statement Prepare(const char* sql) const;

 private:
  bool LayoutIsThere() const;
  std::int64_t ReadInteger(const char* sql) const;
  void Check(int result) const;
  [[noreturn]] void Fail(std::int32_t number, const std::string& why) const;
  [[noreturn]] void FailAsDamaged(const std::string& how) const {
    Fail(kInvalidFormat, "is damaged: " + how);
  }

  Database& database_;
};

std::string Sentence(const Database& database, const std::string& what) {
  return "The settings file " + database.path() + " " + what;
}

// SQLite calls a disk that is full by that name only where it meets it in the file or its log; elsewhere, and
// at limits, it has "disk I/O error" for all.
std::string ReasonOf(const Database& database, int result) {
  if ((result & 0xFF) == SQLITE_FULL) return kDiskFull;
  if ((result & 0xFF) != SQLITE_IOERR) return database.Message();
  switch (database.SystemError()) {
    case ENOSPC:
    case EDQUOT:
      return kDiskFull;
    case EFBIG:
      return "it has reached the limit of file sizes (ulimit -f)";
    default:
      return database.Message();
  }
}

}  // namespace

Database OpenRegistryFile(const fs::path& path, milliseconds busy_timeout) {
  MakePrivateFile(path);
  Database database(path.string());
  database.BusyTimeout(busy_timeout);
  const RegistryFile file(database);
  file.CheckKind();
  file.CheckHeader();
  // What a crash has left in the log stays there until it is known that the file is good.
  std::error_code ignored;
  database.EmptyLogAtEnd(!fs::exists(database.LogPath(), ignored));
  file.Execute("PRAGMA foreign_keys = ON; PRAGMA synchronous = FULL");
  if (!file.HasLayout()) file.MakeLayout();
  file.CheckForDamage();

  database.EmptyLogAtEnd(true);
  file.UseWriteAheadLog(busy_timeout);
  // The log and its index take their modes from the file.
  for (const auto& ours : {database.FilePath(), database.LogPath(), database.LogIndexPath()}) {
    TakeFromGroupAndOthers(ours);
  }
  return database;
}

std::string WhyRefused(const Database& database, int result) {
  if ((result & 0xFF) == SQLITE_BUSY) return Sentence(database, "is locked by " + LockHolder(database));
  return Sentence(database, "cannot be used: " + ReasonOf(database, result));
}

Statement PrepareForLayout(Database& database, const char* sql) {
  return RegistryFile(database).Prepare(sql);
}

namespace {

void RegistryFile::CheckKind() const {
  std::error_code unknown;
  const fs::file_type kind = fs::status(database_.path(), unknown).type();
  if (kind == fs::file_type::not_found) Fail(kNoAccess, "is a link that leads nowhere");
  if (unknown == std::errc::too_many_symbolic_link_levels)
    Fail(kNoAccess, "is a link that leads back to itself");
  if (unknown) Fail(kNoAccess, "cannot be used: " + unknown.message());
  if (kind != fs::file_type::regular) Fail(kNoAccess, "is no file");
}

void RegistryFile::CheckHeader() const {
  switch (KindOf(database_.FileStart(kHeaderSize), kApplicationId)) {
    case FileKind::Empty:
    case FileKind::Ours:
      return;
    case FileKind::OfOthers:
      Fail(kInvalidFormat, "is a database of another program");
    case FileKind::NoDatabase:
      FailAsDamaged("it is no database");
  }
}

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

// A registry has its tables and its roots even when nothing is stored in it: without them it would pass for
// one that is empty, and everything for not set.
void RegistryFile::CheckForDamage() const {
  const Statement check(database_, "PRAGMA quick_check(1)");
  Run run(check);
  if (!run.StepToRow()) Check(database_.LastResult());
  if (run.Bytes(0) != "ok") FailAsDamaged(std::string(run.Bytes(0)));

  Prepare("SELECT id, key, folded, name, type, data FROM value");
  Prepare("SELECT id, parent, folded, name FROM key");
  if (ReadInteger("SELECT count(*) FROM key WHERE parent IS NULL") != kRoots)
    FailAsDamaged("a root is missing");
}

Statement RegistryFile::Prepare(const char* sql) const {
  Statement statement(database_, sql);
  if ((statement.prepared() & 0xFF) == SQLITE_ERROR) FailAsDamaged(database_.Message());
  Check(statement.prepared());
  return statement;
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
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
      FailAsDamaged(database_.Message());
    default:
      throw RuntimeError(kNoAccess, WhyRefused(database_, result), kSource);
  }
}

void RegistryFile::Fail(std::int32_t number, const std::string& why) const {
  throw RuntimeError(number, Sentence(database_, why), kSource);
}

}  // namespace

}  // namespace mirelo::sqlite
