#include "automation/date.h"
#include "host/excel/application.h"
#include "host/excel/chart.h"
#include "host/excel/charts.h"
#include "host/excel/interior.h"
#include "worksheet/sheet_test.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class LastCell : public SheetTest {
 protected:
  LastCell() {
    sheet->Name("Quotes");
    form.frmAppSettings(&mGlobal::AppSettings());
    form.Owner(&*facade);
  }
  ~LastCell() override { EXPECT_THAT(CallStack(), IsEmpty()); }

  void Format(std::string_view address) { Range(address)->Interior()->ColorIndex(3); }
  std::string LastOf(const char* name) { return form.GotoLastCell(name, "A2"); }
  std::string Selected() {
    return book->ActiveSheet()->Name() + "!" + application->ActiveCell()->Address(false, false);
  }
};

// The size of a sheet

TEST_F(LastCell, ShowsHowFarASheetReachesWhateverItHolds) {
  for (const char* address : {"A1", "C7", "Z100"}) {
    SCOPED_TRACE(address);
    Put(address, "x");
    std::int32_t row_limit = 0;
    std::int32_t last_column = 0;
    form.GiveSheetLimits("quotes", row_limit, last_column);
    EXPECT_EQ(row_limit, sheet->Rows()->Count() - 1);
    EXPECT_EQ(last_column, sheet->Columns()->Count());
  }
}

TEST_F(LastCell, IsReportedMissingForASheetThatIsNotThere) {
  std::int32_t row_limit = 1;
  std::int32_t last_column = 2;
  Answers({"ABORT"});
  form.GiveSheetLimits("Nothing", row_limit, last_column);
  EXPECT_THAT(ReportedErrors(), ElementsAre(9));
  EXPECT_EQ(row_limit, 1);
  EXPECT_EQ(last_column, 2);
}

TEST_F(LastCell, GivesTheLimitsOnceTheSheetIsThere) {
  sheet->Name("Other");
  Answers({"RETRY"});
  Mend([this] { sheet->Name("Quotes"); });
  std::int32_t row_limit = 0;
  std::int32_t last_column = 0;
  form.GiveSheetLimits("Quotes", row_limit, last_column);
  EXPECT_EQ(last_column, sheet->Columns()->Count());
}

// The last cell that is used

TEST_F(LastCell, IsTheOneThatHoldsAValue) {
  Put("A2", "Ticker");
  Put("C9", 1);
  EXPECT_EQ(LastOf("Quotes"), "C9");
}

TEST_F(LastCell, MayHoldAValueOfAnyType) {
  Put("A2", "Ticker");
  for (const Variant& value :
       {Variant(0), Variant(12.5), Variant(false), Variant(Date{40563}), Variant("text"), Variant("#N/A")}) {
    SCOPED_TRACE(value.TypeName());
    Put("C9", value);
    EXPECT_EQ(LastOf("Quotes"), "C9");
  }
}

TEST_F(LastCell, IsInTheLastRowAndColumnThatHoldSomethingWhenItIsEmptyItself) {
  Put("A4", "x");
  Put("B2", "x");
  Format("D8");
  EXPECT_EQ(LastOf("Quotes"), "B4");
}

TEST_F(LastCell, IsNotOneThatHoldsASingleBlank) {
  Put("A4", "x");
  Put("B2", "x");
  Put("C5", " ");
  EXPECT_EQ(LastOf("Quotes"), "B4");  // the search ends where it began
  Put("C5", "  ");
  EXPECT_EQ(LastOf("Quotes"), "C5");
}

TEST_F(LastCell, IsThatOfTheNamedSheetWhicheverIsInFront) {
  Put("B5", "x");
  const auto other = sheets->Add();
  other->Range("H9")->Value("x");
  EXPECT_EQ(LastOf("Quotes"), "B5");
}

TEST_F(LastCell, IsReportedMissingOnASheetThatIsNotThere) {
  Range("F3")->Select();
  Answers({"ABORT"});
  EXPECT_EQ(LastOf("Nothing"), "");
  EXPECT_THAT(ReportedErrors(), ElementsAre(9));
  EXPECT_EQ(Selected(), "Quotes!F3");
}

TEST_F(LastCell, IsFoundOnceTheSheetIsThere) {
  Put("B5", "x");
  sheet->Name("Other");
  Answers({"RETRY"});
  Mend([this] { sheet->Name("Quotes"); });
  EXPECT_EQ(LastOf("Quotes"), "B5");
}

TEST_F(LastCell, IsReportedMissingOnAnEmptySheet) {
  Answers({"ABORT"});
  EXPECT_EQ(LastOf("Quotes"), "");
  EXPECT_THAT(ReportedErrors(), ElementsAre(91));
}

// What was selected before is selected again.

TEST_F(LastCell, LeavesTheSheetAndTheCellSelectedThatWere) {
  Put("B5", "x");
  const auto other = sheets->Add();
  other->Name("Other");
  other->Range("H9")->Select();
  LastOf("Quotes");
  EXPECT_EQ(Selected(), "Other!H9");
}

TEST_F(LastCell, LeavesTheCellSelectedOnItsOwnSheet) {
  Put("B5", "x");
  Range("F3")->Select();
  LastOf("Quotes");
  EXPECT_EQ(Selected(), "Quotes!F3");
}

TEST_F(LastCell, BringsAChartSheetBackToTheFront) {
  Put("B5", "x");
  Range("F3")->Select();
  const auto chart = application->Charts()->Add();
  EXPECT_EQ(LastOf("Quotes"), "B5");
  EXPECT_EQ(application->ActiveSheet()->Name(), chart->Name());
  EXPECT_EQ(application->ActiveSheet()->Type(), host::excel::xlSheetChart);
  EXPECT_EQ(application->ActiveCell(), nullptr);
}

}  // namespace
}  // namespace mirelo::testing
