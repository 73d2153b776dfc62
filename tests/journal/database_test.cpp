#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "adapters/sqlite/database.h"
#include "adapters/sqlite/sqlite_journal.h"
#include "journal/tested_journals.h"
#include "support/child_process.h"
#include "support/error_number.h"
#include "support/temp_directory.h"

namespace mirelo::testing {
namespace {

using sqlite::SqliteJournal;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

class JournalDatabase : public ::testing::Test {
 protected:
  std::string Refusal() const {
    try {
      const SqliteJournal journal(file, TestColumns());
    } catch (const host::JournalRefused& refused) {
      return refused.Description();
    }
    return {};
  }
  void Append(const std::string& text) const {
    SqliteJournal(file, TestColumns()).Append(std::vector<DataRow>{TestRow(text)});
  }

  TempDirectory folder;
  std::filesystem::path file = folder / "quotes.db";
};

TEST_F(JournalDatabase, HasTypedColumnsAndItsVersion) {
  Append("a");
  EXPECT_THAT(Query(file, "SELECT name, type FROM pragma_table_info('quotes')"),
              ElementsAre("Number,INTEGER", "Text,TEXT", "52w Low,REAL", "Volume,INTEGER"));
  EXPECT_THAT(Query(file, "PRAGMA user_version"), ElementsAre("1"));
  EXPECT_THAT(Query(file, "PRAGMA journal_mode"), ElementsAre("wal"));
  EXPECT_THAT(Query(file, "SELECT typeof(Text), typeof(\"52w Low\"), typeof(Volume) FROM quotes"),
              ElementsAre("text,real,null"));
}

TEST_F(JournalDatabase, LeavesNothingBesideItBehindItsEnd) {
  Append("a");
  EXPECT_FALSE(std::filesystem::exists(file.string() + "-wal"));
}

TEST_F(JournalDatabase, GetsColumnsThatAnOlderVersionDidNotKnow) {
  {
    SqliteJournal older(file, {{"Text", host::DataType::Text}});
    older.Append(std::vector<DataRow>{{std::string("old")}});
  }
  Append("new");
  EXPECT_THAT(Query(file, "SELECT Number, Text, \"52w Low\" FROM quotes"),
              ElementsAre("1,old,", "2,new,1.5"));
}

TEST_F(JournalDatabase, LeavesColumnsOfANewerVersionEmpty) {
  Append("a");
  Change(file, "ALTER TABLE quotes ADD COLUMN Yield REAL");
  Append("b");
  EXPECT_THAT(Query(file, "SELECT Text, Yield FROM quotes"), ElementsAre("a,", "b,"));
}

TEST_F(JournalDatabase, IsRefusedWhenANewerVersionHasMadeIt) {
  Append("a");
  Change(file, "PRAGMA user_version = 2");
  EXPECT_THAT(Refusal(), HasSubstr("a newer version of Mirelo has made it (version 2, this one knows 1)"));
}

TEST_F(JournalDatabase, IsRefusedWhenItIsAnotherPrograms) {
  Change(file, "CREATE TABLE quotes (x)");
  EXPECT_THAT(Refusal(), HasSubstr("it is a database of something else"));
  EXPECT_THAT(Query(file, "SELECT name FROM pragma_table_info('quotes')"), ElementsAre("x"));
}

TEST_F(JournalDatabase, IsRefusedWithoutItsTable) {
  Append("a");
  Change(file, "DROP TABLE quotes; CREATE TABLE quotes (x)");
  EXPECT_THAT(Refusal(), HasSubstr("its table quotes is none that Mirelo has made"));
}

// What the first process has appended stands in the log alone then.
TEST_F(JournalDatabase, GoesOnBehindAProcessThatWasKilledInItsFirstMoments) {
  ChildProcess writer([&](const ChildProcess::Test& test) {
    SqliteJournal journal(file, TestColumns());
    journal.Append(std::vector<DataRow>{TestRow("a")});
    test.Report(1);
    std::int32_t never = 0;
    test.Await(never);
  });
  std::int32_t appended = 0;
  ASSERT_TRUE(writer.Read(appended));
  writer.Kill();
  writer.Finish();
  Append("b");
  EXPECT_THAT(Query(file, "SELECT Text FROM quotes"), ElementsAre("a", "b"));
}

TEST_F(JournalDatabase, TakesSeveralProcessesAtOnce) {
  constexpr int kWriters = 3;
  constexpr int kBatches = 40;
  std::vector<std::unique_ptr<ChildProcess>> writers;
  for (int writer = 0; writer < kWriters; ++writer) {
    writers.push_back(std::make_unique<ChildProcess>([&](const ChildProcess::Test&) {
      std::unique_ptr<SqliteJournal> journal;
      const auto try_again = [](const auto& what) {
        for (;;) {
          try {
            return what();
          } catch (const RuntimeError& error) {
            if (error.Number() != 70) throw;
          }
        }
      };
      try_again([&] { journal = std::make_unique<SqliteJournal>(file, TestColumns()); });
      for (int batch = 0; batch < kBatches; ++batch)
        try_again([&] { journal->Append(std::vector<DataRow>(5, TestRow("x"))); });
    }));
  }
  for (const auto& writer : writers) EXPECT_TRUE(writer->Finish());
  EXPECT_THAT(Query(file, "SELECT count(*), max(Number) FROM quotes"), ElementsAre("600,600"));
}

TEST_F(JournalDatabase, WaitsNoLongerThanItsPatienceForALock) {
  SqliteJournal journal(file, TestColumns());
  sqlite::Database other(file.string());
  ASSERT_EQ(other.Execute("BEGIN IMMEDIATE"), 0);
  const auto start = std::chrono::steady_clock::now();
  const RuntimeError error = ErrorOf([&] { journal.Append(std::vector<DataRow>{TestRow("a")}); });
  EXPECT_EQ(error.Number(), 70);
  EXPECT_THAT(error.Description(), HasSubstr("is locked by"));
  EXPECT_LT(std::chrono::steady_clock::now() - start, 20 * SqliteJournal::kPatience);
  other.Execute("ROLLBACK");
  journal.Append(std::vector<DataRow>{TestRow("a")});
}

}  // namespace
}  // namespace mirelo::testing
