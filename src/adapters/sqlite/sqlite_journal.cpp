#include "adapters/sqlite/sqlite_journal.h"

#include <fcntl.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <string>
#include <thread>
#include <utility>

#include "adapters/sqlite/data_rows.h"
#include "adapters/sqlite/file_kind.h"
#include "adapters/sqlite/lock_holder.h"
#include "automation/text.h"

namespace mirelo::sqlite {

namespace fs = std::filesystem;

namespace {

constexpr mode_t kMode = 0666;  // as far as the umask allows
constexpr std::int32_t kLocked = 70;
constexpr const char* kJournalSource = "Mirelo.SqliteJournal";

// Ends what Append has begun, unless it was brought to its end.
class Transaction {
 public:
  explicit Transaction(Database& database) : database_(database) {}
  ~Transaction() {
    if (database_.IsInTransaction()) database_.Execute("ROLLBACK");
  }
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;

 private:
  Database& database_;
};

// SQLite opens a file that is there. Without waiting for somebody at the other end of a pipe.
std::string Made(const fs::path& file) {
  const int descriptor = ::open(file.c_str(), O_RDWR | O_CREAT | O_NONBLOCK | O_NOCTTY | O_CLOEXEC, kMode);
  if (descriptor < 0) host::RaiseJournalFailure(file.string(), errno);
  struct stat status {};
  const bool is_file = ::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
  ::close(descriptor);
  if (is_file) return file.string();
  throw host::NoJournal(file.string(), "it is no regular file", kJournalSource);
}

}  // namespace

SqliteJournal::SqliteJournal(const fs::path& file, std::vector<host::DataColumn> columns)
    : columns_(std::move(columns)), path_(file), database_(Made(file)) {
  database_.BusyTimeout(kPatience);
  CheckFile();
  Check(database_.Execute("PRAGMA synchronous = NORMAL"));
  // Whose the file is must stand in the file itself, and not in its log alone, before it has one.
  PrepareTable();
  UseWriteAheadLog();
  insert_.emplace(database_, InsertInto(kTable, columns_).c_str());
  Check(insert_->prepared());
}

void SqliteJournal::Append(std::span<const host::DataRow> rows) {
  if (database_.HasMoved()) throw host::JournalReplaced(path_.string(), kJournalSource);
  Check(database_.Execute("BEGIN IMMEDIATE"));
  const Transaction transaction(database_);
  for (const host::DataRow& row : rows) {
    Run run(*insert_);
    BindRow(run, row);
    if (const int result = run.Step(); result != SQLITE_DONE) Check(result);
  }
  Check(database_.Execute("COMMIT"));
}

void SqliteJournal::Settle() noexcept {
  static_cast<void>(database_.Execute("PRAGMA wal_checkpoint(PASSIVE)"));
}

void SqliteJournal::CheckFile() const {
  switch (KindOf(database_.FileStart(kHeaderSize), kApplicationId)) {
    case FileKind::Empty:
    case FileKind::Ours:
      return;
    case FileKind::OfOthers:
      Refuse("it is a database of something else");
    case FileKind::NoDatabase:
      Refuse("it is no database");
  }
}

// Another process may be about to do the same.
void SqliteJournal::PrepareTable() {
  Check(database_.Execute("BEGIN IMMEDIATE"));
  const Transaction transaction(database_);
  const std::int64_t version = ReadInteger("PRAGMA user_version");
  if (ReadInteger("PRAGMA application_id") == 0 && ReadInteger("SELECT count(*) FROM sqlite_schema") == 0) {
    MakeTable();
  } else if (version > kVersion) {
    Refuse("a newer version of Mirelo has made it (version " + std::to_string(version) + ", this one knows " +
           std::to_string(kVersion) + ")");
  } else {
    AddMissingColumns();
  }
  Check(database_.Execute("COMMIT"));
}

void SqliteJournal::MakeTable() {
  std::string sql =
      std::string("CREATE TABLE ") + kTable + " (" + QuotedName(kNumber) + " INTEGER PRIMARY KEY";
  for (const host::DataColumn& column : columns_) sql += ", " + ColumnDefinition(column);
  sql += "); PRAGMA application_id = " + std::to_string(kApplicationId) +
         "; PRAGMA user_version = " + std::to_string(kVersion);
  Check(database_.Execute(sql.c_str()));
}

void SqliteJournal::AddMissingColumns() {
  std::vector<std::string> names;
  {
    const Statement read(database_, "SELECT name FROM pragma_table_info('quotes')");
    Check(read.prepared());
    Run run(read);
    while (run.StepToRow()) names.emplace_back(run.Bytes(0));
  }
  const auto is_missing = [&](const std::string& name) {
    return std::ranges::none_of(names, [&](const auto& each) { return EqualText(each, name); });
  };
  if (is_missing(kNumber)) Refuse("its table quotes is none that Mirelo has made");
  for (const host::DataColumn& column : columns_) {
    if (!is_missing(column.name)) continue;
    const std::string sql = std::string("ALTER TABLE ") + kTable + " ADD COLUMN " + ColumnDefinition(column);
    Check(database_.Execute(sql.c_str()));
  }
}

// The first change to this mode needs the file for itself, and SQLite gives up at once when another process
// has it open in that moment. Some file systems have no memory to share between processes: there a rollback
// journal does, more slowly.
void SqliteJournal::UseWriteAheadLog() {
  const auto deadline = std::chrono::steady_clock::now() + kPatience;
  for (;;) {
    const int result = database_.Execute("PRAGMA journal_mode = WAL");
    const bool is_busy = (result & 0xFF) == SQLITE_BUSY;
    if (!is_busy || std::chrono::steady_clock::now() >= deadline) return Check(result);
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
}

std::int64_t SqliteJournal::ReadInteger(const char* sql) {
  const Statement statement(database_, sql);
  Run run(statement);
  if (!run.StepToRow()) Check(database_.LastResult());
  return run.Integer(0);
}

// SQLite calls a disk that is full by that name only where it meets it in the file or its log.
void SqliteJournal::Check(int result) {
  const int reason = database_.SystemError();
  switch (result & 0xFF) {
    case SQLITE_OK:
      return;
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
      Refuse("it is damaged: " + database_.Message());
    case SQLITE_BUSY:
      throw RuntimeError(kLocked, path_.string() + " is locked by " + LockHolder(database_), kJournalSource);
    case SQLITE_FULL:
      host::RaiseJournalFailure(path_.string(), reason == EFBIG || reason == EDQUOT ? reason : ENOSPC);
    case SQLITE_NOMEM:
      throw Errors::OutOfMemory();
    case SQLITE_IOERR:
    case SQLITE_CANTOPEN:
      // Beside the file its log and index are made, so a name that leads nowhere is no reason here.
      if (reason != 0 && reason != ENOENT) host::RaiseJournalFailure(path_.string(), reason);
      break;
    default:
      break;
  }
  throw RuntimeError(Errors::PathFileAccess().Number(),
                     path_.string() + " cannot be written: " + database_.Message(), kJournalSource);
}

void SqliteJournal::Refuse(const std::string& why) const {
  throw host::NoJournal(path_.string(), why, kJournalSource);
}

}  // namespace mirelo::sqlite
