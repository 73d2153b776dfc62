// The undo list of the person in whose document clients write.

#include <gtest/gtest.h>

#include <com/sun/star/util/XProtectable.hpp>

#include "adapters/calc/objects/interfaces.h"
#include "adapters/calc/objects/properties.h"
#include "calc/open_document.h"
#include "host/excel/border.h"
#include "host/excel/comment.h"
#include "host/excel/font.h"
#include "host/excel/format_conditions.h"
#include "host/excel/interior.h"
#include "host/excel/range.h"
#include "host/excel/worksheet.h"
#include "host/excel/worksheets.h"
#include "support/error_number.h"

namespace mirelo::testing {
namespace {

using namespace host::excel;
using calc::As;
using calc::Properties;

class UndoList : public OpenDocument {};

TEST_F(UndoList, IsKeptForThePersonBehindAWriteThatFoundItEmpty) {
  Cells("A1:B2")->Value(1.0);
  Cells("A1")->Font()->Bold(true);
  Cells("A1")->AddComment("note");
  ASSERT_EQ(StepCount(), 0);
  Type("A3", 2);
  ASSERT_EQ(StepCount(), 1);
  UndoManager()->undo();
  EXPECT_EQ(Typed("A3"), 0);
  EXPECT_EQ(Typed("A1"), 1);
}

TEST_F(UndoList, KeepsWhatThePersonMayDoAgain) {
  Type("A3", 2);
  UndoManager()->undo();
  Cells("A1")->Value(1.0);
  ASSERT_EQ(UndoManager()->getAllRedoActionTitles().getLength(), 1);
  UndoManager()->redo();
  EXPECT_EQ(Typed("A3"), 2);
}

TEST_F(UndoList, KeepsAStepThatAMacroHasBegun) {
  UndoManager()->enterUndoContext("mine");
  Cells("A1")->Value(1.0);
  Type("A3", 2);
  Cells("A1")->Value(2.0);
  UndoManager()->leaveUndoContext();
  EXPECT_EQ(StepTitles(), "mine; ");
}

TEST_F(UndoList, StaysOffWhereAMacroKeepsNone) {
  Properties(document).Set("IsUndoEnabled", false);
  Cells("A1")->Value(1.0);
  EXPECT_FALSE(Properties(document).Get("IsUndoEnabled", true));
}

TEST_F(UndoList, HoldsWhatThePersonDidAndNothingElse) {
  Type("A1", 1);
  const auto steps = StepCount();
  ASSERT_EQ(steps, 1);
  Cells("B1:C2")->Value("quote");
  Cells("B1")->NumberFormat("0.00");
  Cells("B1")->Font()->Bold(true);
  Cells("B1")->Interior()->ColorIndex(3);
  Cells("B1")->HorizontalAlignment(xlHAlignCenter);
  Cells("B1:C2")->Borders(xlEdgeTop)->LineStyle(xlContinuous);
  Cells("B1")->FormatConditions()->Add(xlCellValue, xlGreater, "0")->Font()->ColorIndex(3);
  Cells("B1")->ColumnWidth(20);
  sheet->Columns("B")->AutoFit();
  Cells("C1")->ClearContents();
  Cells("C1:C2")->Clear();
  Cells("B1")->AddComment("note");
  sheet->Rows("9")->Delete(xlShiftUp);
  sheet->Name("Quotes");
  EXPECT_EQ(StepCount(), steps) << StepTitles();
}

TEST_F(UndoList, TakesBackThePersonsStepBehindWhatWasWritten) {
  Type("A1", 1);
  Type("A1", 2);
  Cells("B1")->Value(7.0);
  UndoManager()->undo();
  EXPECT_EQ(Typed("A1"), 1);
  EXPECT_EQ(Typed("B1"), 7);
  Cells("B1")->Value(8.0);
  UndoManager()->redo();
  EXPECT_EQ(Typed("A1"), 2);
  EXPECT_EQ(Typed("B1"), 8);
}

TEST_F(UndoList, TakesNothingOfRowsThatWereFirstWrittenWhileItWasEmpty) {
  Cells("A1:B2")->Value("text");
  Type("D3", 2);
  Cells("A1:B2")->Value("other text");
  Cells("A1:B4")->Value(3.0);
  EXPECT_EQ(StepCount(), 1) << StepTitles();
}

TEST_F(UndoList, TakesNothingOfRowsThatGrowAndShrinkAgain) {
  Cells("A1:B2")->Value("one line");
  Type("D3", 2);
  Cells("A1:B2")->Value("three\nlines\nof text");
  Cells("A1")->Value("one line");
  Cells("A1:A2")->NumberFormat("0.00");
  Cells("A2:B2")->Font()->Size(30);
  Cells("A1:B2")->Value(1.0);
  Cells("A1:B2")->ClearContents();
  VariantArray errors(1, 2, 1, 1);
  errors(1, 1) = "three\nlines\nof text";
  errors(2, 1) = "#N/A";
  Cells("A1:A2")->Value(errors);
  Cells("A1")->Value("#N/A");
  Cells("A1")->Value("two\nlines");
  Cells("A1")->Value(Variant());
  Cells("A1")->Value("two\nlines");
  Cells("A1:A2")->Clear();
  Cells("A1")->Value("two\nlines");
  Cells("A1")->Delete(xlShiftUp);
  EXPECT_EQ(StepCount(), 1) << StepTitles();
}

TEST_F(UndoList, TakesNothingOfRowsThatCellsOfAPersonMadeHigh) {
  Tab()->getCellByPosition(0, 0)->setFormula("three\nlines\nof text");
  Cells("A1:B2")->Value(1.0);
  EXPECT_EQ(StepCount(), 1) << StepTitles();
}

TEST_F(UndoList, IsEmptiedWhereAStepWouldHitAnotherSheet) {
  Type("A1", 1);
  sheets->Add();
  EXPECT_EQ(StepCount(), 0);
}

TEST_F(UndoList, IsEmptiedWhereAStepMayHoldTheBoxOfACommentThatGoes) {
  Type("A1", 1);
  Cells("B1")->AddComment("note");
  Cells("C1")->ClearComments();
  EXPECT_EQ(StepCount(), 1) << "there was none";
  Cells("B1")->ClearComments();
  EXPECT_EQ(StepCount(), 0);
}

TEST_F(UndoList, IsOpenAgainWhenAWriteWasRefused) {
  Protect();
  EXPECT_EQ(NumberOf([&] { Cells("A1")->Value(1.0); }), 1004);
  As<css::util::XProtectable>(Tab())->unprotect("secret");
  const auto steps = StepCount();
  Type("A1", 1);
  EXPECT_EQ(StepCount(), steps + 1);
}

}  // namespace
}  // namespace mirelo::testing
