// mirelo run, and the workbook that it leaves.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>

#include "adapters/workbook/spreadsheet.h"
#include "app/program.h"
#include "host/excel/range.h"
#include "host/excel/workbook.h"
#include "host/excel/worksheet.h"
#include "host/excel/worksheets.h"
#include "quotetracker/server.h"
#include "support/temp_directory.h"

namespace mirelo::testing {
namespace {

namespace excel = host::excel;
using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

std::shared_ptr<excel::Worksheet> QuoteSheetOf(const workbook::Spreadsheet& spreadsheet) {
  return spreadsheet.Application()->ActiveWorkbook()->Worksheets()->Item("Dovanta2_Quotes");
}

std::string TextAt(excel::Worksheet& sheet, std::int32_t row, std::int32_t column) {
  return sheet.Cells(row, column)->Value().ToText();
}

class Run : public ::testing::Test {
 protected:
  ProgramResult RunWith(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "run");
    return RunMirelo(folder_.path(), arguments);
  }

  TempDirectory folder_;
};

TEST_F(Run, DemonstratesWithoutSettingsAndLeavesAWorkbook) {
  const auto result = RunWith({"--demo", "--updates", "2", "--tickers", "MSFT,IBM"});
  ASSERT_EQ(result.exit_code, 0) << result.err;
  EXPECT_THAT(result.out,
              AllOf(HasSubstr("MSFT"), HasSubstr("IBM"), HasSubstr((folder_ / "quotes.xlsx").string())));
  EXPECT_THAT(result.err, HasSubstr("Update 2 of 2"));

  const auto spreadsheet = workbook::Spreadsheet::Open(folder_ / "quotes.xlsx");
  EXPECT_THAT(spreadsheet.Losses(), IsEmpty());
  const auto sheet = QuoteSheetOf(spreadsheet);
  EXPECT_EQ(TextAt(*sheet, 1, 1), "SnapShot( 1 sec)");
  EXPECT_EQ(TextAt(*sheet, 2, 1), "Ticker");
  EXPECT_EQ(TextAt(*sheet, 2, 7), "Time");
  EXPECT_EQ(TextAt(*sheet, 3, 1), "MSFT");
  EXPECT_EQ(TextAt(*sheet, 4, 1), "IBM");
  EXPECT_EQ(sheet->Cells(3, 2)->Value().type(), Variant::Type::Double);
  EXPECT_EQ(sheet->Cells(3, 6)->Value().type(), Variant::Type::Date);
  EXPECT_TRUE(sheet->Cells(5, 1)->Value().IsEmpty());
}

TEST_F(Run, LeavesTheUsersSettingsAloneWhenItDemonstrates) {
  RunWith({"--demo", "--updates", "1"});
  EXPECT_FALSE(std::filesystem::exists(folder_ / "home/.local"));
}

TEST_F(Run, KeepsWhatElseTheWorkbookHolds) {
  {
    auto mine = workbook::Spreadsheet::New();
    const auto sheet = mine.Application()->ActiveWorkbook()->Worksheets()->Item(1);
    sheet->Name("Mine");
    sheet->Cells(7, 3)->Value(Variant(42.0));
    mine.Save(folder_ / "quotes.xlsx");
  }
  ASSERT_EQ(RunWith({"--demo", "--updates", "1"}).exit_code, 0);
  const auto spreadsheet = workbook::Spreadsheet::Open(folder_ / "quotes.xlsx");
  EXPECT_EQ(TextAt(*spreadsheet.Application()->ActiveWorkbook()->Worksheets()->Item("Mine"), 7, 3), "42");
}

TEST_F(Run, LeavesNoOldTickersWhenTheListShrinks) {
  ASSERT_EQ(RunWith({"--demo", "--updates", "1", "--tickers", "A,B,C,D"}).exit_code, 0);
  ASSERT_EQ(RunWith({"--demo", "--updates", "1", "--tickers", "E,F"}).exit_code, 0);
  const auto spreadsheet = workbook::Spreadsheet::Open(folder_ / "quotes.xlsx");
  const auto sheet = QuoteSheetOf(spreadsheet);
  EXPECT_EQ(TextAt(*sheet, 3, 1), "E");
  EXPECT_EQ(TextAt(*sheet, 4, 1), "F");
  EXPECT_TRUE(sheet->Cells(5, 1)->Value().IsEmpty());
  EXPECT_TRUE(sheet->Cells(6, 1)->Value().IsEmpty());
}

TEST_F(Run, RefusesADamagedWorkbookAndLeavesItAsItIs) {
  std::ofstream(folder_ / "quotes.xlsx") << "no workbook";
  const auto result = RunWith({"--demo", "--updates", "1"});
  EXPECT_EQ(result.exit_code, 1);
  EXPECT_THAT(result.err, HasSubstr("quotes.xlsx"));
  EXPECT_EQ(std::filesystem::file_size(folder_ / "quotes.xlsx"), 11U);
}

TEST_F(Run, AsksForTickersWhenItIsNoDemonstration) {
  const auto result = RunWith({});
  EXPECT_EQ(result.exit_code, 2);
  EXPECT_THAT(result.err, HasSubstr("--tickers"));
}

TEST_F(Run, SavesNothingWhenNoQuoteEverCame) {
  RunMirelo(folder_.path(), {"settings", "set", "HTTPPort", "1"});
  const auto result = RunWith({"--tickers", "MSFT", "--updates", "1"});
  EXPECT_EQ(result.exit_code, 1);
  EXPECT_FALSE(std::filesystem::exists(folder_ / "quotes.xlsx"));
}

}  // namespace
}  // namespace mirelo::testing
