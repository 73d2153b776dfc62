// mirelo run --also: the files beside the workbook, asked of the program itself.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "adapters/csv/csv_text.h"
#include "adapters/sqlite/database.h"
#include "app/program.h"
#include "day/quote_journal.h"
#include "support/temp_directory.h"

namespace mirelo::testing {
namespace {

namespace fs = std::filesystem;
using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;

using Arguments = std::vector<std::string>;

class RunAlso : public ::testing::Test {
 protected:
  // A day that asks once for two quotes.
  static Arguments With(const Arguments& more) {
    Arguments arguments{"run", "--demo", "--tickers", "MSFT,IBM", "--set", "UpdateEvery=0"};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return arguments;
  }
  ProgramResult Run(const Arguments& more) { return RunMirelo(folder.path(), With(more)); }

  std::int64_t Number(const fs::path& database, const char* sql) const {
    sqlite::Database opened(database.string());
    const sqlite::Statement statement(opened, sql);
    sqlite::Run run(statement);
    EXPECT_TRUE(run.StepToRow()) << opened.Message();
    return run.Integer(0);
  }
  std::vector<std::string> Lines(const fs::path& file) const {
    std::ifstream stream(file);
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);) lines.push_back(line);
    return lines;
  }
  // A file of that size to which quotes can be appended.
  void FillUp(const fs::path& file, std::size_t size) const {
    std::ofstream stream(file);
    std::string text = "Number," + csv::HeaderLine(day::QuoteJournal::Columns());
    while (text.size() < size) text += "1,2026-11-22T14:05:12.123Z,MSFT,,,,,,,,,,,,,,,,,,\n";
    stream << text;
  }

  TempDirectory folder;
};

TEST_F(RunAlso, KeepsEveryQuoteInEachFile) {
  const auto result = RunMirelo(folder.path(), {"run", "--demo", "--for", "1500ms", "--set", "RowsLimit=1",
                                                "--also", "q.db", "--also", "q.csv"});
  ASSERT_EQ(result.exit_code, 0) << result.err;
  const std::int64_t kept = Number(folder / "q.db", "SELECT count(*) FROM quotes");
  EXPECT_GT(kept, 2);
  EXPECT_THAT(result.out, AllOf(HasSubstr(std::to_string(kept) + " quotes came"),
                                HasSubstr(std::to_string(kept) + " quotes kept in q.db\n"),
                                HasSubstr(std::to_string(kept) + " quotes kept in q.csv\n")));
  EXPECT_EQ(std::ssize(Lines(folder / "q.csv")), kept + 1);
  EXPECT_EQ(
      Number(folder / "q.db", "SELECT count(*) FROM quotes WHERE typeof(Last) = 'real' OR Last IS NULL"),
      kept);
  EXPECT_EQ(Number(folder / "q.db", "SELECT count(*) FROM quotes WHERE julianday(Arrived) IS NULL"), 0);
}

TEST_F(RunAlso, AppendsToTheDayBefore) {
  for (int days = 1; days <= 2; ++days) {
    const auto result = Run({"--also", "q.sqlite"});
    ASSERT_EQ(result.exit_code, 0);
    EXPECT_THAT(result.out, HasSubstr("2 quotes kept in q.sqlite\n"));
    EXPECT_EQ(Number(folder / "q.sqlite", "SELECT max(Number) FROM quotes"), 2 * days);
  }
}

TEST_F(RunAlso, BeginsNoDayWhereAFileIsRefused) {
  std::ofstream(folder / "mine.csv") << "Date,Sum\n2026-11-22,5\n";
  std::ofstream(folder / "mine.db")
      << "Dear reader, this is no database, and it is to stay as it is. Thank you. Here "
         "it ends.\n";
  for (const char* name : {"mine.csv", "mine.db", "missing/q.db"}) {
    SCOPED_TRACE(name);
    const auto result = Run({"--also", name});
    EXPECT_EQ(result.exit_code, 1);
    EXPECT_THAT(result.err, AllOf(HasSubstr(name), HasSubstr("Name another file with --also.")));
    EXPECT_FALSE(fs::exists(folder / "quotes.xlsx"));
  }
  EXPECT_EQ(Lines(folder / "mine.csv").size(), 2U);
}

TEST_F(RunAlso, TakesFilesByTheirEndings) {
  for (const char* name : {"q.txt", "q", "quotes.xlsx"}) {
    const auto result = Run({"--also", name});
    EXPECT_EQ(result.exit_code, 2);
    EXPECT_THAT(result.err, HasSubstr("end it in .db, .sqlite or .sqlite3 for a database"));
  }
  const auto twice = Run({"--also", "q.csv", "--also", "./q.csv"});
  EXPECT_EQ(twice.exit_code, 1);
  EXPECT_THAT(twice.err, HasSubstr("--also names ./q.csv twice"));
}

TEST_F(RunAlso, SaysOnceThatNothingCanBeWrittenAndGoesOn) {
  for (const char* name : {"q.csv", "q.db"}) {
    SCOPED_TRACE(name);
    ASSERT_EQ(Run({"--also", name}).exit_code, 0);
    fs::permissions(folder / name, fs::perms(0444));
    const auto result = Run({"--also", name});
    EXPECT_EQ(result.exit_code, 1);
    const auto told = result.err.find("Quotes are not kept, going on: ");
    ASSERT_NE(told, std::string::npos) << result.err;
    EXPECT_LT(told, result.err.find("\n2 quotes\n")) << "before the first quote";
    EXPECT_EQ(result.err.find("Quotes are not kept", told + 1), std::string::npos);
    EXPECT_THAT(result.err, AllOf(HasSubstr("Make the file, its folder and its file system writable."),
                                  HasSubstr("error: 2 quotes could not be kept in " + std::string(name))));
    EXPECT_THAT(result.out, HasSubstr("Saved in"));
  }
}

TEST_F(RunAlso, SaysThatALimitOfFileSizesIsReached) {
  constexpr std::uint64_t kMost = 4'000'000;
  FillUp(folder / "q.csv", kMost - 20);
  const auto before = Lines(folder / "q.csv");
  const auto result = RunMireloWithin(RLIMIT_FSIZE, kMost, folder.path(), With({"--also", "q.csv"}));
  EXPECT_EQ(result.exit_code, 1);
  EXPECT_THAT(result.err,
              AllOf(HasSubstr("Raise the limit of file sizes (ulimit -f), or make room on the disk."),
                    HasSubstr("quotes could not be kept in q.csv")));
  EXPECT_THAT(result.out, AllOf(HasSubstr("Saved in"), HasSubstr("0 quotes kept in q.csv")));
  EXPECT_EQ(Lines(folder / "q.csv"), before);
}

TEST_F(RunAlso, SaysThatALineWasCutOff) {
  FillUp(folder / "q.csv", 500);
  std::ofstream(folder / "q.csv", std::ios::app) << "2,2026";
  const auto result = Run({"--also", "q.csv"});
  EXPECT_EQ(result.exit_code, 0);
  EXPECT_THAT(result.err, HasSubstr("q.csv ended within a line, which was taken away (6 bytes)"));
}

}  // namespace
}  // namespace mirelo::testing
