#include "adapters/sqlite/export_image.h"

#include <sqlite3.h>

#include "adapters/sqlite/data_rows.h"
#include "adapters/sqlite/database.h"
#include "automation/runtime_error.h"

namespace mirelo::sqlite {

namespace {

void Check(const Database& database, int result) {
  if (result == SQLITE_OK || result == SQLITE_DONE) return;
  if ((result & 0xFF) == SQLITE_NOMEM) throw Errors::OutOfMemory();
  throw RuntimeError(Errors::PathFileAccess().Number(), "cannot make the database: " + database.Message());
}

void Fill(Database& database, const host::DataTable& table) {
  Check(database, database.Execute(CreateTable(table.name, table.columns).c_str()));
  const Statement insert(database, InsertInto(table.name, table.columns).c_str());
  Check(database, insert.prepared());
  for (const host::DataRow& row : table.rows) {
    Run run(insert);
    BindRow(run, row);
    Check(database, run.Step());
  }
}

}  // namespace

std::string ExportImage(const std::vector<host::DataTable>& tables) {
  Database database = Database::InMemory();
  const std::string marks = "PRAGMA application_id = " + std::to_string(kExportApplicationId) +
                            "; PRAGMA user_version = " + std::to_string(kExportVersion) + "; BEGIN";
  Check(database, database.Execute(marks.c_str()));
  for (const host::DataTable& table : tables) Fill(database, table);
  Check(database, database.Execute("COMMIT"));
  std::string bytes = database.Bytes();
  if (bytes.empty()) throw Errors::OutOfMemory();
  return bytes;
}

}  // namespace mirelo::sqlite
