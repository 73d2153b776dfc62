#include "conformance.h"

namespace mirelo::testing {
namespace {

using namespace host::excel;

class Selection : public Spreadsheets {
 protected:
  std::string ActiveCell() { return application->ActiveCell()->Address(false, false); }
};

TEST_P(Selection, IsA1OfTheOneSheetAtFirst) {
  EXPECT_EQ(application->ActiveSheet()->Name(), "Sheet1");
  EXPECT_EQ(ActiveCell(), "A1");
}

TEST_P(Selection, ActivatesTheFirstCellOfARange) {
  Range("C3")->Select();
  EXPECT_EQ(ActiveCell(), "C3");
  Range("D4:B2")->Select();
  EXPECT_EQ(ActiveCell(), "B2");
  Range("5:7")->Select();
  EXPECT_EQ(ActiveCell(), "A5");
}

TEST_P(Selection, OfASheetBringsItToTheFront) {
  const auto added = sheets->Add();
  EXPECT_EQ(application->ActiveSheet()->Name(), "Sheet2") << "a new sheet is the active one";
  sheet->Select();
  EXPECT_EQ(application->ActiveSheet()->Name(), "Sheet1");
  added->Select();
  EXPECT_EQ(application->ActiveSheet()->Name(), "Sheet2");
}

TEST_P(Selection, IsEachSheetsOwn) {
  Range("C3")->Select();
  const auto added = sheets->Add();
  EXPECT_EQ(ActiveCell(), "A1");
  added->Range("B2")->Select();
  sheet->Select();
  EXPECT_EQ(ActiveCell(), "C3");
  added->Select();
  EXPECT_EQ(ActiveCell(), "B2");
}

TEST_P(Selection, OfCellsIsRefusedOnASheetBehind) {
  sheets->Add();
  EXPECT_EQ(NumberOf([&] { Range("C3")->Select(); }), 1004);
  sheet->Select();
  EXPECT_EQ(ActiveCell(), "A1");
}

TEST_P(Selection, StaysWhenCellsChange) {
  Range("C3:D4")->Select();
  Put("C3", 1.0);
  sheet->Rows("1:2")->Delete(xlShiftUp);
  sheet->Cells()->Clear();
  EXPECT_EQ(ActiveCell(), "C3");
}

// As a client does that looks around on another sheet and puts everything back.
TEST_P(Selection, CanBeRememberedAndPutBack) {
  Range("C3")->Select();
  const auto remembered_sheet = application->ActiveSheet();
  const auto remembered_cell = application->ActiveCell();
  sheets->Add()->Name("Other");
  application->Worksheets()->Item("other")->Select();
  application->Range("A2")->Select();
  EXPECT_EQ(ActiveCell(), "A2");

  ASSERT_EQ(remembered_sheet->Type(), -4167);
  remembered_sheet->Select();
  remembered_cell->Select();
  EXPECT_EQ(application->ActiveSheet()->Name(), "Sheet1");
  EXPECT_EQ(ActiveCell(), "C3");
}

TEST_P(Selection, IsNotMovedByWritingElsewhere) {
  sheets->Add();
  Put("B2", 1.0);
  EXPECT_EQ(application->ActiveSheet()->Name(), "Sheet2");
}

class FrontSheet : public Spreadsheets {};

TEST_P(FrontSheet, IsWhereTheApplicationFindsCells) {
  Put("B2", "behind");
  const auto front = sheets->Add();
  front->Range("B2")->Value("front");
  EXPECT_EQ(application->Range("B2")->Value(), Variant("front"));
  EXPECT_EQ(application->Cells(2, 2)->Value(), Variant("front"));
  EXPECT_EQ(application->Cells()->Address(), sheet->Cells()->Address());
  EXPECT_EQ(application->Range("B2")->Worksheet()->Name(), front->Name());
  EXPECT_EQ(NumberOf([&] { application->Range("B"); }), 1004);
}

TEST_P(FrontSheet, IsOneOfTheApplicationsSheets) {
  EXPECT_EQ(application->Worksheets()->Count(), 1);
  EXPECT_EQ(application->Worksheets()->Item(application->ActiveSheet()->Name())->Name(), "Sheet1");
  EXPECT_EQ(application->ActiveSheet()->TypeName(), "Worksheet");
}

MIRELO_AGAINST_ALL(Selection);
MIRELO_AGAINST_ALL(FrontSheet);

}  // namespace
}  // namespace mirelo::testing
