// mirelo show, asked of the program itself.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <fstream>

#include "adapters/workbook/spreadsheet.h"
#include "app/program.h"
#include "app/terminal_program.h"
#include "host/excel/font.h"
#include "host/excel/format_conditions.h"
#include "host/excel/interior.h"
#include "host/excel/range.h"
#include "host/excel/workbook.h"
#include "host/excel/worksheet.h"
#include "host/excel/worksheets.h"
#include "support/temp_directory.h"

namespace mirelo::testing {
namespace {

using namespace host::excel;
using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

using Arguments = std::vector<std::string>;

constexpr const char* kShownFile = "quotes.xlsx";

// A workbook with the sheets "Quotes", in front, and "Sheet1".
class Show : public ::testing::Test {
 protected:
  Show() { sheet->Name("Quotes"); }

  void Put(std::string_view address, const Variant& value) { sheet->Range(address)->Value(value); }
  void PutQuotes() {
    Put("A1", "SnapShot( 60 sec)");
    Put("A2", "Ticker");
    Put("B2", "Last");
    Put("C2", "Change");
    sheet->Range("A2:C2")->Font()->Bold(true);
    Put("A3", "MSFT");
    Put("B3", 27.5);
    Put("C3", -0.25);
    Put("A4", "IBM");
    Put("B4", 143.631);
    Put("C4", 0.5);
    sheet->Range("B3:B4")->NumberFormat("0.00");
    sheet->Range("C3:C4")->NumberFormat("+ 0.00;- 0.00");
    const auto conditions = sheet->Range("C3:C4")->FormatConditions();
    conditions->Add(xlCellValue, xlGreater, "0")->Font()->ColorIndex(10);
    conditions->Add(xlCellValue, xlLess, "0")->Font()->ColorIndex(3);
  }

  ProgramResult Run(const Arguments& arguments = {}) { return RunMirelo(folder.path(), Saved(arguments)); }
  ProgramResult RunInTerminal(int columns, const Arguments& arguments = {},
                              const std::map<std::string, std::string>& environment = {}) {
    return RunMireloInTerminal(folder.path(), Saved(arguments), columns, environment);
  }

  TempDirectory folder;
  workbook::Spreadsheet spreadsheet = workbook::Spreadsheet::New();
  std::shared_ptr<Worksheet> sheet = spreadsheet.Application()->Worksheets()->Add();

 private:
  // Saves the workbook, and completes the command.
  Arguments Saved(Arguments arguments) {
    spreadsheet.Save(folder.path() / kShownFile);
    arguments.insert(arguments.begin(), {"show", kShownFile});
    return arguments;
  }
};

TEST_F(Show, PrintsTheSheetInFrontInItsNumberFormats) {
  PutQuotes();
  const auto result = Run();
  EXPECT_EQ(result.exit_code, 0);
  EXPECT_THAT(result.err, IsEmpty());
  EXPECT_EQ(result.out,
            "     A       B       C\n"
            "1  SnapShot( 60 sec)\n"
            "2  Ticker  Last    Change\n"
            "3  MSFT     27.50  - 0.25\n"
            "4  IBM     143.63  + 0.50\n");
}

TEST_F(Show, PrintsColoursInATerminal) {
  PutQuotes();
  sheet->Range("A3:C3")->Interior()->ColorIndex(24);
  const auto result = RunInTerminal(80);
  EXPECT_EQ(result.exit_code, 0);
  EXPECT_THAT(result.out, HasSubstr("\033[1m Ticker  Last    Change \033[0m")) << "bold";
  EXPECT_THAT(result.out, HasSubstr("\033[38;5;16;48;5;189m MSFT     27.50 \033[0m")) << "filled";
  EXPECT_THAT(result.out, HasSubstr("\033[38;5;196;48;5;189m - 0.25 \033[0m")) << "fallen";
  EXPECT_THAT(result.out, HasSubstr("\033[38;5;28m + 0.50 \033[0m")) << "risen";
  EXPECT_THAT(result.out, HasSubstr(" IBM     143.63 ")) << "neither";
}

TEST_F(Show, PrintsAllColoursWhereTheTerminalHasThem) {
  PutQuotes();
  const auto result = RunInTerminal(80, {}, {{"COLORTERM", "truecolor"}});
  EXPECT_THAT(result.out, HasSubstr("\033[38;2;255;0;0m - 0.25 \033[0m"));
}

TEST_F(Show, PrintsPlainTextWhereNoColoursAreWanted) {
  PutQuotes();
  const std::string plain = Run().out;
  EXPECT_EQ(RunInTerminal(80, {"--no-color"}).out, plain);
  EXPECT_EQ(RunInTerminal(80, {}, {{"NO_COLOR", "1"}}).out, plain);
  EXPECT_EQ(RunInTerminal(80, {}, {{"TERM", "dumb"}}).out, plain);
  EXPECT_THAT(RunInTerminal(80, {}, {{"NO_COLOR", ""}}).out, HasSubstr("\033[")) << "which asks for nothing";
}

TEST_F(Show, CutsAWideSheetToTheTerminalAndSaysSo) {
  PutQuotes();
  const auto result = RunInTerminal(25, {"--no-color"});
  EXPECT_EQ(result.exit_code, 0);
  EXPECT_THAT(result.out, AllOf(HasSubstr("3  MSFT     27.50\n"), Not(HasSubstr("Change\n"))));
  EXPECT_THAT(result.out, HasSubstr("Column C is left out for want of room; --range C1:C4 shows the rest."));
  EXPECT_THAT(RunInTerminal(80).out, Not(HasSubstr("left out")));
}

TEST_F(Show, CutsALongSheetAndSaysSo) {
  for (std::int32_t row = 1; row <= 250; ++row) sheet->Cells(row, 1)->Value(Variant(row));
  const auto hundred = Run();
  EXPECT_THAT(hundred.out, AllOf(HasSubstr("\n100  100\n"), Not(HasSubstr("101"))));
  EXPECT_EQ(hundred.err,
            "Rows 101 to 250 are left out; --range A101:A200 shows what comes next, --rows 0 all.\n");
  EXPECT_THAT(Run({"--rows", "249"}).err, HasSubstr("Row 250 is left out; --range A250:A250 "));

  const auto all = Run({"--rows", "0"});
  EXPECT_THAT(all.out, HasSubstr("\n250  250\n"));
  EXPECT_THAT(all.err, IsEmpty());
}

TEST_F(Show, TakesAnyNumberOfRows) {
  PutQuotes();
  for (const char* range : {"A3:C4", "4:4", "C:C"}) {
    const auto all = Run({"--range", range, "--rows", "0"});
    const auto most = Run({"--range", range, "--rows", "2147483647"});
    EXPECT_EQ(most.exit_code, 0) << range;
    EXPECT_THAT(most.out, AllOf(Not(IsEmpty()), all.out)) << range;
    EXPECT_THAT(most.err, IsEmpty()) << range;
  }
}

TEST_F(Show, PrintsTheCellsOfARange) {
  PutQuotes();
  const auto corner = Run({"--range", "c4:B3"});
  EXPECT_EQ(corner.out,
            "     B       C\n"
            "3   27.50  - 0.25\n"
            "4  143.63  + 0.50\n");
  EXPECT_EQ(Run({"--range", "C:C"}).out,
            "     C\n"
            "1\n"
            "2  Change\n"
            "3  - 0.25\n"
            "4  + 0.50\n")
      << "of whole columns what is filled";
  EXPECT_EQ(Run({"--range", "4:4"}).out,
            "    A     B       C\n"
            "4  IBM  143.63  + 0.50\n");
  EXPECT_EQ(Run({"--range", "F9"}).out,
            "    F\n"
            "9\n");
}

TEST_F(Show, RefusesWhatIsNoRange) {
  for (const char* range : {"foo", "A0", "A1:", "XFE1"}) {
    const auto result = Run({"--range", range});
    EXPECT_EQ(result.exit_code, 2) << range;
    EXPECT_THAT(result.err, AllOf(HasSubstr(range), HasSubstr("Write A1:F20")));
    EXPECT_THAT(result.out, IsEmpty());
  }
}

TEST_F(Show, PrintsTheSheetOfANameInLettersOfEitherCase) {
  Put("A1", "here");
  spreadsheet.Application()->Worksheets()->Item("Sheet1")->Range("A1")->Value("there");
  EXPECT_THAT(Run({"sheet1"}).out, HasSubstr("there"));
  EXPECT_THAT(Run({"--sheet", "SHEET1"}).out, HasSubstr("there"));
  EXPECT_THAT(Run({"Quotes"}).out, HasSubstr("here"));
}

TEST_F(Show, NamesTheSheetsWhenTheOneAskedForIsAbsent) {
  const auto result = Run({"Prices"});
  EXPECT_EQ(result.exit_code, 1);
  EXPECT_EQ(result.err, "error: quotes.xlsx has no sheet \"Prices\"; it has: Quotes, Sheet1\n");
}

TEST_F(Show, ListsTheSheetsWithTheirSizes) {
  PutQuotes();
  const auto result = Run({"--list"});
  EXPECT_EQ(result.exit_code, 0);
  EXPECT_EQ(result.out,
            "Sheet   Rows  Columns  In front\n"
            "------  ----  -------  --------\n"
            "Quotes     4        3  yes\n"
            "Sheet1     0        0\n");
  EXPECT_EQ(Run({"--list", "Quotes"}).exit_code, 2) << "which names a sheet as well";
}

TEST_F(Show, PrintsCommentsBelowOnRequest) {
  PutQuotes();
  sheet->Range("A3")->AddComment("Charts\n(Last & Volume)");
  sheet->Range("B4")->AddComment("delayed");
  EXPECT_THAT(Run().out, Not(HasSubstr("delayed")));
  EXPECT_THAT(Run({"--comments"}).out, HasSubstr("+ 0.50\n"
                                                 "\n"
                                                 "A3: Charts\n"
                                                 "    (Last & Volume)\n"
                                                 "\n"
                                                 "B4: delayed\n"));
  EXPECT_THAT(Run({"--comments", "--range", "B:B"}).out, Not(HasSubstr("Charts")));
  EXPECT_THAT(Run({"--comments", "--range", "C:C"}).err, HasSubstr("No cell of these has a comment."));
}

TEST_F(Show, SaysThatThereIsNothingOnAnEmptySheet) {
  const auto result = Run();
  EXPECT_EQ(result.exit_code, 0);
  EXPECT_THAT(result.out, IsEmpty());
  EXPECT_EQ(result.err, "There is nothing on the sheet.\n");
}

TEST_F(Show, PrintsNothingThatATerminalWouldObey) {
  Put("A1", "a\033[2Jb");
  sheet->Range("A1")->AddComment("c\033]0;d\007");
  const auto result = RunInTerminal(80, {"--no-color", "--comments"});
  EXPECT_THAT(result.out, AllOf(HasSubstr("a"), HasSubstr("A1: c"), Not(HasSubstr("\033"))));
}

TEST_F(Show, NamesTheFileThatItCannotRead) {
  const auto absent = RunMirelo(folder.path(), {"show", "absent.xlsx"});
  EXPECT_EQ(absent.exit_code, 1);
  EXPECT_THAT(absent.err, HasSubstr("absent.xlsx"));

  std::ofstream(folder.path() / "text.xlsx") << "no workbook";
  const auto other = RunMirelo(folder.path(), {"show", "text.xlsx"});
  EXPECT_EQ(other.exit_code, 1);
  EXPECT_THAT(other.err, HasSubstr("text.xlsx"));
}

TEST_F(Show, LeavesTheFileAsItIs) {
  PutQuotes();
  Run();
  const auto time = std::filesystem::last_write_time(folder.path() / kShownFile);
  RunMirelo(folder.path(), {"show", kShownFile});
  EXPECT_EQ(std::filesystem::last_write_time(folder.path() / kShownFile), time);
}

}  // namespace
}  // namespace mirelo::testing
