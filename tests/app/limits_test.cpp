// Commands in a shell that limits the size of files or the memory of programs: they end with a message, by no
// signal, and touch nothing that they cannot finish.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "adapters/workbook/spreadsheet.h"
#include "app/program.h"
#include "host/excel/application.h"
#include "host/excel/range.h"
#include "host/excel/worksheet.h"
#include "quotetracker/server.h"
#include "support/sanitized.h"
#include "support/temp_directory.h"

namespace mirelo::testing {
namespace {

using ::testing::AllOf;
using ::testing::AnyOf;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::UnorderedElementsAre;

constexpr std::int32_t kRows = 5000;
constexpr std::int32_t kColumns = 8;

// A workbook of a person's that takes some memory, and room on the disk.
class Limits : public ::testing::Test {
 protected:
  Limits() {
    auto spreadsheet = workbook::Spreadsheet::New();
    VariantArray table(1, kRows, 1, kColumns);
    for (std::int32_t row = 1; row <= kRows; ++row) {
      for (std::int32_t column = 1; column <= kColumns; ++column)
        table(row, column) =
            column < 3 ? Variant("text " + std::to_string(row * column)) : Variant(row * 1.37 / column);
    }
    spreadsheet.Application()->Range("A1")->Resize(kRows, kColumns)->Value(table);
    spreadsheet.Save(File());
  }

  std::filesystem::path File() const { return folder_ / "quotes.xlsx"; }
  std::string Bytes() const {
    std::ifstream in(File(), std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
  }
  std::vector<std::string> Listing() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder_.path()))
      names.push_back(entry.path().filename().string());
    return names;
  }
  std::vector<std::string> Words(const std::string& command) const {
    return {command, "--tickers",     "MSFT",       "--http-port", std::to_string(server_.HttpPort()),
            "--set", "UpdateEvery=0", "--workbook", "quotes.xlsx"};
  }
  ProgramResult RunWithin(int resource, std::uint64_t most, const std::string& command) const {
    return RunMireloWithin(resource, most, folder_.path(), Words(command));
  }

  TempDirectory folder_;
  quotetracker::Server server_;
};

TEST_F(Limits, OfFileSizesAreToldWithWhatToDo) {
  constexpr std::uint64_t kFileSize = 100 << 10;
  auto without_workbook = Words("go");
  without_workbook.resize(without_workbook.size() - 2);
  ASSERT_EQ(RunMirelo(folder_.path(), without_workbook).exit_code, 0) << "what it has to store is stored";
  const std::string old = Bytes();
  const auto go = RunWithin(RLIMIT_FSIZE, kFileSize, "go");
  EXPECT_EQ(go.exit_code, 1);
  EXPECT_THAT(go.err,
              AllOf(HasSubstr("error: Cannot save"), HasSubstr("Raise the limit of file sizes (ulimit -f)"),
                    Not(HasSubstr("[ERROR]")), Not(HasSubstr(".."))));
  const auto run = RunWithin(RLIMIT_FSIZE, kFileSize, "run");
  EXPECT_EQ(run.exit_code, 1);
  EXPECT_THAT(run.err,
              AllOf(HasSubstr("1 quote\n"), HasSubstr("Not saved, going on: "), HasSubstr("(ulimit -f)"),
                    HasSubstr("could not be saved"), Not(HasSubstr("[ERROR]"))));
  EXPECT_EQ(Bytes(), old);
  EXPECT_THAT(Listing(), UnorderedElementsAre("home", "quotes.xlsx"));
}

TEST_F(Limits, OfFileSizesAreToldWhereTheyLeaveNoRoomForSettings) {
  constexpr std::uint64_t kFileSize = 4 << 10;
  const auto result =
      RunMireloWithin(RLIMIT_FSIZE, kFileSize, folder_.path(), {"settings", "set", "Seconds", "5"});
  EXPECT_EQ(result.exit_code, 1);
  EXPECT_THAT(result.err, HasSubstr("error: The settings file "));
}

// The dialog's own report of a failure says no more than that a setting could not be stored.
TEST_F(Limits, OfFileSizesAreToldWhereTheDialogMeetsThem) {
  constexpr std::uint64_t kFileSize = 80 << 10;
  for (const char* command : {"go", "run"}) {
    SCOPED_TRACE(command);
    std::filesystem::remove_all(folder_ / "home");  // with what the one before has stored
    const auto result = RunWithin(RLIMIT_FSIZE, kFileSize, command);
    EXPECT_EQ(result.exit_code, 1);
    EXPECT_THAT(result.err, AllOf(HasSubstr("Failed saving the application setting"),
                                  HasSubstr("it has reached the limit of file sizes (ulimit -f)\n"),
                                  HasSubstr("error: the dialog has reported a failure\n")));
  }
}

// The limits go from too little to load the workbook, over too little to save it, to enough.
TEST_F(Limits, OfMemoryAreToldWhereverTheyAreMet) {
  if (kIsSanitized) GTEST_SKIP() << "the sanitizers take more memory than there is";
  constexpr std::uint64_t kMegabyte = 1 << 20;
  int refused = 0;
  int saved = 0;
  for (std::uint64_t most = 34; most <= 54; most += 4) {
    SCOPED_TRACE(std::to_string(most) + " MB");
    const std::string old = Bytes();
    const auto result = RunWithin(RLIMIT_AS, most * kMegabyte, "go");
    if (result.exit_code == 0) {
      ++saved;
      std::ofstream(File(), std::ios::binary) << old;
      continue;
    }
    EXPECT_EQ(result.exit_code, 1) << result.err;
    EXPECT_THAT(result.err, AnyOf(HasSubstr("Out of memory.\nLet the program have more (ulimit -v)"),
                                  HasSubstr("Memory may be short.")));
    EXPECT_EQ(Bytes(), old);
    ++refused;
  }
  EXPECT_GE(refused, 2);
  EXPECT_GE(saved, 1);
  EXPECT_THAT(Listing(), UnorderedElementsAre("home", "quotes.xlsx"));
}

}  // namespace
}  // namespace mirelo::testing
