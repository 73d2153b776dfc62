#include "journal/tested_journals.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <fstream>
#include <iterator>

#include "adapters/csv/csv_journal.h"
#include "adapters/sqlite/sqlite_journal.h"

namespace mirelo::testing {

namespace {

namespace fs = std::filesystem;

class Connection {
 public:
  explicit Connection(const fs::path& file) {
    sqlite3_open_v2(file.c_str(), &handle_, SQLITE_OPEN_READWRITE, nullptr);
  }
  ~Connection() { sqlite3_close(handle_); }
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;
  sqlite3* handle() const { return handle_; }

 private:
  sqlite3* handle_ = nullptr;
};

int AddRow(void* rows, int columns, char** values, char**) {
  std::string& row = static_cast<std::vector<std::string>*>(rows)->emplace_back();
  for (int c = 0; c < columns; ++c)
    row.append(c == 0 ? "" : ",").append(values[c] == nullptr ? "" : values[c]);
  return 0;
}

std::vector<std::string> LinesBehindTheFirst(const fs::path& file) {
  std::ifstream stream(file);
  std::vector<std::string> lines;
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  if (!lines.empty()) lines.erase(lines.begin());
  return lines;
}

}  // namespace

const std::vector<DataColumn>& TestColumns() {
  static const std::vector<DataColumn> columns{
      {"Text", host::DataType::Text}, {"52w Low", host::DataType::Real}, {"Volume", host::DataType::Integer}};
  return columns;
}

DataRow TestRow(const std::string& text, double number) { return {text, number, {}}; }

std::string Content(const fs::path& file) {
  std::ifstream stream(file, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(stream), {});
}

std::vector<std::string> Query(const fs::path& file, const std::string& sql) {
  const Connection connection(file);
  std::vector<std::string> rows;
  EXPECT_EQ(sqlite3_exec(connection.handle(), sql.c_str(), AddRow, &rows, nullptr), SQLITE_OK)
      << sqlite3_errmsg(connection.handle());
  return rows;
}

void Change(const fs::path& file, const std::string& sql) {
  std::ofstream(file, std::ios::app);  // made where it is absent
  EXPECT_TRUE(Query(file, sql).empty());
}

const std::vector<TestedJournal>& TestedJournals() {
  static const std::vector<TestedJournal> journals{
      {"Csv", "quotes.csv",
       [](const fs::path& file) { return std::make_unique<csv::CsvJournal>(file, TestColumns()); },
       LinesBehindTheFirst},
      {"Sqlite", "quotes.db",
       [](const fs::path& file) { return std::make_unique<sqlite::SqliteJournal>(file, TestColumns()); },
       [](const fs::path& file) {
         return fs::exists(file) ? Query(file, "SELECT * FROM quotes ORDER BY Number")
                                 : std::vector<std::string>();
       }},
  };
  return journals;
}

}  // namespace mirelo::testing
