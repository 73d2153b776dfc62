#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <vector>

#include "adapters/sqlite/database.h"
#include "host/journal.h"

namespace mirelo::sqlite {

// A journal in the table "quotes" of a database of its own. Several processes may append to it at once. It
// has a write-ahead log with PRAGMA synchronous = NORMAL: what was appended outlives this process, however
// that ends; when the machine loses its power the last rows may be missing, but the database is whole.
class SqliteJournal final : public host::Journal {
 public:
  static constexpr std::int64_t kApplicationId = 0x4D724A6C;  // "MrJl": tells a journal from other databases
  static constexpr std::int64_t kVersion = 1;  // grows when what is told of a row changes, not with a column
  static constexpr const char* kTable = "quotes";
  static constexpr const char* kNumber = "Number";  // the primary key, in front of the columns

  // How long another process's lock is waited for.
  static constexpr std::chrono::milliseconds kPatience{100};

  // Columns that an older version did not know are added to its table, where they are NULL; those of a newer
  // one stay NULL in new rows. Raises host::JournalRefused for a file that is no such database, is of a newer
  // version, or damaged.
  SqliteJournal(const std::filesystem::path& file, std::vector<host::DataColumn> columns);

  void Append(std::span<const host::DataRow> rows) override;
  void Settle() noexcept override;

 private:
  void CheckFile() const;
  void PrepareTable();
  void MakeTable();
  void AddMissingColumns();
  void UseWriteAheadLog();
  std::int64_t ReadInteger(const char* sql);
  void Check(int result);
  [[noreturn]] void Refuse(const std::string& why) const;

  std::vector<host::DataColumn> columns_;
  std::filesystem::path path_;
  Database database_;
  std::optional<Statement> insert_;
};

}  // namespace mirelo::sqlite
