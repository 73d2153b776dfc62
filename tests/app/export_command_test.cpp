// mirelo export, asked of the program itself.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sqlite3.h>
#include <sys/stat.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "adapters/csv/csv_text.h"
#include "adapters/workbook/spreadsheet.h"
#include "app/child_process.h"
#include "app/program.h"
#include "automation/date.h"
#include "day/quote_journal.h"
#include "host/excel/application.h"
#include "host/excel/range.h"
#include "host/excel/worksheet.h"
#include "host/excel/worksheets.h"
#include "support/built_program.h"
#include "support/temp_directory.h"

namespace mirelo::testing {
namespace {

namespace fs = std::filesystem;
using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

using Arguments = std::vector<std::string>;
using Rows = std::vector<std::string>;

constexpr const char* kFile = "quotes.xlsx";
constexpr const char* kOfMsft = "Quotes_Vertical(MSFT)";

// What a file holds, byte for byte.
std::string Content(const fs::path& file) {
  std::ifstream stream(file, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(stream), {});
}

// The rows of a query, their values joined by bars, each behind its type.
Rows Query(const fs::path& file, const std::string& sql) {
  sqlite3* database = nullptr;
  sqlite3_open_v2(file.c_str(), &database, SQLITE_OPEN_READONLY, nullptr);
  sqlite3_stmt* statement = nullptr;
  EXPECT_EQ(sqlite3_prepare_v2(database, sql.c_str(), -1, &statement, nullptr), SQLITE_OK)
      << sqlite3_errmsg(database);
  Rows rows;
  while (sqlite3_step(statement) == SQLITE_ROW) {
    std::string& row = rows.emplace_back();
    for (int column = 0; column < sqlite3_column_count(statement); ++column) {
      static constexpr const char* kTypes[] = {"", "i", "r", "t", "b", ""};
      const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement, column));
      row += (column == 0 ? "" : "|") + std::string(kTypes[sqlite3_column_type(statement, column)]);
      if (text != nullptr) row += std::string(":") + text;
    }
  }
  sqlite3_finalize(statement);
  sqlite3_close(database);
  return rows;
}

// A workbook as a day leaves it, with a sheet of the user's own.
class Export : public ::testing::Test {
 protected:
  Export() {
    NewSheet("Dovanta2_Quotes");
    PutRow(1, {"SnapShot( 60 sec)"});
    PutRow(2, {"Ticker", "Last", "Tick", "Volume", "Date", "Time"});
    PutRow(3, {"MSFT", 27.12345678901234, "'+", 1904700.0, day_, time_});
    PutRow(4, {"IBM", 143.5, Variant(), 0.0, day_, time_});
    PutRow(6, {"a note below"});
    NewSheet(kOfMsft);
    PutRow(1, {"Ticker:", "MSFT"});
    PutRow(2, {"Last", "LastVolume", "Time"});
    PutRow(3, {27.0, 100.0, time_});
    PutRow(4, {Variant(), Variant(), Variant()});
    PutRow(5, {0.1, Variant(), time_});
    NewSheet("Quotes_Vertical(IBM)");
    PutRow(1, {"Ticker:", "IBM"});
    PutRow(2, {"Bid", "Last"});
    PutRow(3, {"'n/a", 143.5});
  }

  void NewSheet(const char* name) {
    sheet_ = spreadsheet_.Application()->Worksheets()->Add();
    sheet_->Name(name);
  }
  void PutRow(std::int32_t row, const std::vector<Variant>& values) {
    std::int32_t column = 0;
    for (const Variant& value : values) {
      ++column;
      if (!value.IsEmpty()) sheet_->Cells(row, column)->Value(value);
    }
  }

  ProgramResult Run(Arguments arguments = {}) {
    if (!fs::exists(folder_ / kFile)) spreadsheet_.Save(folder_ / kFile);
    arguments.insert(arguments.begin(), {"export", kFile});
    return RunMirelo(folder_.path(), arguments);
  }

  TempDirectory folder_;
  workbook::Spreadsheet spreadsheet_ = workbook::Spreadsheet::New();
  std::shared_ptr<host::excel::Worksheet> sheet_;
  Date day_ = ToDate({.year = 2026, .month = 11, .day = 22, .hour = 0});
  Date time_{(14 * 3600 + 5 * 60 + 9) / 86400.0};
};

TEST_F(Export, GivesTheQuoteTableAsCommaSeparatedValues) {
  const auto result = Run();
  EXPECT_EQ(result.exit_code, 0);
  EXPECT_THAT(result.err, IsEmpty());
  EXPECT_EQ(result.out,
            "Ticker,Last,Tick,Volume,Date,Time\n"
            "MSFT,27.12345678901234,'+,1904700,2026-11-22,14:05:09\n"
            "IBM,143.5,,0,2026-11-22,14:05:09\n");
}

TEST_F(Export, GivesAHistoryByItsSheetsName) {
  const auto result = Run({"--sheet", "quotes_vertical(msft)", "--format", "csv"});
  EXPECT_EQ(result.exit_code, 0) << result.err;
  EXPECT_EQ(result.out, "Last,LastVolume,Time\n27,100,14:05:09\n,,\n0.1,,14:05:09\n");
}

TEST_F(Export, GivesJsonWithTypedValues) {
  const auto result = Run({"--sheet", kOfMsft, "--format", "json"});
  EXPECT_EQ(result.exit_code, 0) << result.err;
  EXPECT_EQ(result.out,
            "{\"Last\":27,\"LastVolume\":100,\"Time\":\"14:05:09\"}\n"
            "{\"Last\":null,\"LastVolume\":null,\"Time\":null}\n"
            "{\"Last\":0.1,\"LastVolume\":null,\"Time\":\"14:05:09\"}\n");
}

TEST_F(Export, GivesADatabaseWithTypedColumns) {
  const auto result = Run({"--sheet", kOfMsft, "--output", "msft.db"});
  ASSERT_EQ(result.exit_code, 0) << result.err;
  EXPECT_THAT(result.out, IsEmpty());
  const auto file = folder_ / "msft.db";
  EXPECT_THAT(Query(file, "SELECT * FROM history ORDER BY rowid"),
              ElementsAre("t:MSFT|r:27.0|i:100|t:14:05:09", "t:MSFT|||", "t:MSFT|r:0.1||t:14:05:09"));
  EXPECT_THAT(Query(file, "SELECT type FROM pragma_table_info('history')"),
              ElementsAre("t:TEXT", "t:REAL", "t:INTEGER", "t:TEXT"));
  EXPECT_THAT(Query(file, "PRAGMA user_version"), ElementsAre("i:1"));
}

TEST_F(Export, GivesAllHistoriesWithTheirTickersInFront) {
  EXPECT_EQ(Run({"--all"}).out,
            "Ticker,Bid,Last,LastVolume,Time\n"
            "IBM,n/a,143.5,,\n"
            "MSFT,,27,100,14:05:09\n"
            "MSFT,,,,\n"
            "MSFT,,0.1,,14:05:09\n");
}

TEST_F(Export, GivesADatabaseOfAllHistoriesAndTheTable) {
  ASSERT_EQ(Run({"--all", "--format", "sqlite", "--output", "all"}).exit_code, 0);
  const auto file = folder_ / "all";
  EXPECT_THAT(Query(file, "SELECT Ticker, count(*), max(Last) FROM history GROUP BY Ticker ORDER BY Ticker"),
              ElementsAre("t:IBM|i:1|r:143.5", "t:MSFT|i:3|r:27.0"));
  EXPECT_THAT(Query(file, "SELECT Bid FROM history WHERE Ticker = 'IBM'"), ElementsAre("t:n/a"));
  EXPECT_THAT(Query(file, "SELECT Ticker, Last, Tick, Volume, Date FROM quote_table WHERE Ticker = 'MSFT'"),
              ElementsAre("t:MSFT|r:27.1234567890123|t:+|i:1904700|t:2026-11-22"));
}

TEST_F(Export, ListsWhatThereIs) {
  EXPECT_EQ(Run({"--list"}).out,
            "Sheet                  Holds\n"
            "---------------------  -------------------\n"
            "Quotes_Vertical(IBM)   the history of IBM\n"
            "Quotes_Vertical(MSFT)  the history of MSFT\n"
            "Dovanta2_Quotes        the quote table\n");
}

TEST_F(Export, NamesTheSheetsThatThereAreForOneThatIsNot) {
  const auto result = Run({"--sheet", "Sheet1", "--output", "x.csv"});
  EXPECT_EQ(result.exit_code, 1);
  EXPECT_THAT(result.err, AllOf(HasSubstr("\"Sheet1\""), HasSubstr(kOfMsft), HasSubstr("Dovanta2_Quotes")));
  EXPECT_FALSE(fs::exists(folder_ / "x.csv"));
}

TEST_F(Export, ReplacesAnOlderExportAsAWholeAndKeepsItsMode) {
  for (const char* name : {"out.csv", "out.json", "out.db"}) {
    SCOPED_TRACE(name);
    ASSERT_EQ(Run({"--all", "--output", name}).exit_code, 0);
    const auto before = Content(folder_ / name);
    ::chmod((folder_ / name).c_str(), 0640);
    ASSERT_EQ(Run({"--all", "--output", name}).exit_code, 0);
    EXPECT_EQ(Content(folder_ / name), before);
    EXPECT_EQ(fs::status(folder_ / name).permissions(), fs::perms(0640));
  }
}

TEST_F(Export, TakesThePlaceOfNothingThatWouldBeMissed) {
  sqlite3* others = nullptr;
  sqlite3_open((folder_ / "others.db").c_str(), &others);
  sqlite3_exec(others, "CREATE TABLE mine (x)", nullptr, nullptr, nullptr);
  sqlite3_close(others);
  std::ofstream(folder_ / "letter.txt") << "Dear reader";
  std::ofstream(folder_ / "kept.csv") << "Number," << csv::HeaderLine(day::QuoteJournal::Columns());
  const Arguments refused[] = {
      {"--output", kFile},
      {"--format", "json", "--output", "others.db"},
      {"--format", "sqlite", "--output", "others.db"},
      {"--format", "sqlite", "--output", "letter.txt"},
      {"--output", "kept.csv"},
  };
  ASSERT_EQ(Run().exit_code, 0);
  for (const Arguments& arguments : refused) {
    SCOPED_TRACE(::testing::PrintToString(arguments));
    const auto file = folder_ / arguments.back();
    const auto before = Content(file);
    const auto result = Run(arguments);
    EXPECT_EQ(result.exit_code, 1);
    EXPECT_THAT(result.err, HasSubstr("Name another file with --output."));
    EXPECT_EQ(Content(file), before);
  }
}

TEST_F(Export, LeavesADatabaseAloneThatIsInUse) {
  ASSERT_EQ(Run({"--output", "out.db"}).exit_code, 0);
  std::ofstream(folder_ / "out.db-wal") << "log";
  EXPECT_EQ(Run({"--output", "out.db"}).exit_code, 1);
}

TEST_F(Export, SaysWhyItCannotWriteAndLeavesNothing) {
  const auto result = Run({"--output", "missing/out.csv"});
  EXPECT_EQ(result.exit_code, 1);
  EXPECT_THAT(result.err, HasSubstr("cannot write missing/out.csv"));
  EXPECT_EQ(Run({"--format", "sqlite"}).exit_code, 2) << "no file for it";
  EXPECT_EQ(Run({"--format", "ods"}).exit_code, 2);
}

TEST_F(Export, NumbersHeadersThatAreThereTwice) {
  NewSheet("Quotes_Vertical(X)");
  PutRow(1, {"Ticker:", "X"});
  PutRow(2, {"Last", "last", "Last_2"});
  PutRow(3, {1.0, 2.0, 3.0});
  EXPECT_EQ(Run({"--sheet", "Quotes_Vertical(X)"}).out, "Last,last_2,Last_2_2\n1,2,3\n");
  ASSERT_EQ(Run({"--sheet", "Quotes_Vertical(X)", "--output", "x.db"}).exit_code, 0);
  EXPECT_THAT(Query(folder_ / "x.db", "SELECT Last, last_2, Last_2_2 FROM history"),
              ElementsAre("r:1.0|r:2.0|r:3.0"));
}

TEST_F(Export, KeepsHostileTextsToTheirFields) {
  const std::string ticker = "X\"); DROP TABLE history; --\n=1+1,\033[2J";
  const std::string header = "=Last\"\n; --";
  NewSheet("Quotes_Vertical(Y)");
  PutRow(1, {"Ticker:", "'" + ticker});
  PutRow(2, {"Bid", header});
  PutRow(3, {"'=HYPERLINK(\"http://x\")", "'@x"});
  const Arguments all{"--sheet", "Quotes_Vertical(Y)"};
  EXPECT_EQ(Run(all).out, "Bid,\"'=Last\"\"\\n; --\"\n\"'=HYPERLINK(\"\"http://x\"\")\",'@x\n");
  ASSERT_EQ(Run({"--sheet", "Quotes_Vertical(Y)", "--output", "y.db"}).exit_code, 0);
  EXPECT_THAT(Query(folder_ / "y.db", "SELECT * FROM history"),
              ElementsAre("t:" + ticker + "|t:=HYPERLINK(\"http://x\")|t:@x"));
  EXPECT_THAT(Run({"--all"}).out, HasSubstr("\n\"X\"\"); DROP TABLE history; --\\n=1+1,\\u001B[2J\","));
}

TEST_F(Export, ReadsAWorkbookThatADaySavesMeanwhile) {
  const std::string day = "cd '" + folder_.path().string() + "' && HOME=$PWD exec '" +
                          BuiltProgram("mirelo") +
                          "' run --demo --workbook day.xlsx --save-every 10ms >/dev/null 2>&1";
  app::ChildProcess mirelo("/bin/sh", {"-c", day});
  while (!fs::exists(folder_ / "day.xlsx")) std::this_thread::sleep_for(std::chrono::milliseconds(10));
  constexpr int kExports = 12;
  for (int i = 0; i < kExports; ++i) {
    const auto result = RunMirelo(folder_.path(), {"export", "day.xlsx", "--format", "json"});
    EXPECT_EQ(result.exit_code, 0) << result.err;
    EXPECT_EQ(std::ranges::count(result.out, '\n'), 6) << "a line for each ticker";
  }
  mirelo.Signal(SIGINT);
  EXPECT_EQ(mirelo.Wait(std::chrono::seconds(60)), 0);
}

TEST_F(Export, SaysSoOfAWorkbookWithoutTables) {
  workbook::Spreadsheet::New().Save(folder_ / kFile);
  const auto result = Run();
  EXPECT_EQ(result.exit_code, 1);
  EXPECT_THAT(result.err, HasSubstr("it has neither a quote table nor a history"));
  EXPECT_EQ(Run({"--all"}).exit_code, 1);
}

}  // namespace
}  // namespace mirelo::testing
