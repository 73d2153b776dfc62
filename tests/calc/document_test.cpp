// What a person does with a document of LibreOffice, or with its sheets, while clients hold it.

#include <gtest/gtest.h>

#include <com/sun/star/container/XNamed.hpp>
#include <com/sun/star/sheet/CellDeleteMode.hpp>
#include <com/sun/star/sheet/XCellRangeMovement.hpp>
#include <com/sun/star/util/CellProtection.hpp>
#include <com/sun/star/util/XProtectable.hpp>
#include <functional>
#include <string>

#include "adapters/calc/objects/interfaces.h"
#include "adapters/calc/objects/properties.h"
#include "calc/open_document.h"
#include "host/excel/border.h"
#include "host/excel/comment.h"
#include "host/excel/font.h"
#include "host/excel/format_conditions.h"
#include "host/excel/interior.h"
#include "host/excel/range.h"
#include "host/excel/workbook.h"
#include "host/excel/worksheet.h"
#include "host/excel/worksheets.h"
#include "support/error_number.h"

namespace mirelo::testing {
namespace {

using namespace host::excel;
using calc::As;
using calc::Properties;

class ProtectedSheet : public OpenDocument {};

TEST_F(ProtectedSheet, IsNotWrittenAndSaysWhatToDo) {
  Type("A1", 5);
  Cells("B1")->AddComment("note");
  Protect();
  const std::function<void()> changes[] = {
      [&] { Cells("A1")->Value(1.0); },
      [&] { Cells("A1")->Value(Variant()); },
      [&] { Cells("A1:B2")->Value("x"); },
      [&] { Cells("A1")->NumberFormat("0.00"); },
      [&] { Cells("A1")->Font()->Bold(true); },
      [&] { Cells("A1")->Interior()->ColorIndex(3); },
      [&] { Cells("A1")->Borders(xlEdgeTop)->LineStyle(xlContinuous); },
      [&] { Cells("A1")->FormatConditions()->Add(xlCellValue, xlGreater, "0"); },
      [&] { Cells("A1")->AddComment("x"); },
      [&] { Cells("B1")->ClearComments(); },
      [&] { Cells("A1")->Clear(); },
      [&] { Cells("A1")->ColumnWidth(20); },
      [&] { sheet->Rows("1")->Delete(xlShiftUp); },
  };
  for (const auto& change : changes) {
    const RuntimeError error = ErrorOf(change);
    EXPECT_EQ(error.Number(), 1004);
    EXPECT_EQ(error.Description(),
              "The sheet \"Sheet1\" is protected. Take its protection off (Tools, Protect Sheet) to have it "
              "written.");
  }
  EXPECT_EQ(Cells("A1")->Value(), Variant(5.0));
  EXPECT_EQ(Cells("B1")->Comment()->Text(), "note");
  EXPECT_EQ(Cells("A1")->Font()->Bold(), Variant(false));
}

TEST_F(ProtectedSheet, IsWrittenInCellsThatThePersonLeftOpen) {
  Properties(Tab()->getCellRangeByName("B2:C3"))
      .Set("CellProtection", css::util::CellProtection(false, false, false, false));
  Protect();
  Cells("B2:C3")->Value(1.0);
  EXPECT_EQ(Typed("C3"), 1);
  EXPECT_EQ(NumberOf([&] { Cells("B2:D3")->Value(2.0); }), 1004);
  EXPECT_EQ(Typed("C3"), 1);
}

TEST_F(ProtectedSheet, IsReadAsEver) {
  Type("A1", 5);
  Protect();
  EXPECT_EQ(Cells("A1")->Value(), Variant(5.0));
  EXPECT_EQ(Cells("A1")->End(xlDown)->Row(), 1'048'576);
}

TEST_F(ProtectedSheet, OfTheWholeDocumentKeepsItsNeighboursAndName) {
  As<css::util::XProtectable>(document)->protect("secret");
  EXPECT_EQ(NumberOf([&] { sheets->Add(); }), 1004);
  EXPECT_NE(ErrorOf([&] { sheet->Name("x"); }).Description().find("Protect Spreadsheet Structure"),
            std::string::npos);
  EXPECT_EQ(sheets->Count(), 1);
  EXPECT_EQ(sheet->Name(), "Sheet1");
  Cells("A1")->Value(1.0);
  EXPECT_EQ(Typed("A1"), 1);
}

class ClosedDocument : public OpenDocument {};

TEST_F(ClosedDocument, RaisesAnErrorThatAPersonCanActOn) {
  const auto range = Cells("A1");
  const auto font = range->Font();
  CloseDocument();
  const std::function<void()> calls[] = {
      [&] { range->Value(); },
      [&] { range->Value(1.0); },
      [&] { range->Text(); },
      [&] { font->Bold(); },
      [&] { font->Bold(true); },
      [&] { range->Find("*", *range, xlByRows, xlNext); },
      [&] { sheet->Name(); },
      [&] { sheets->Add(); },
      [&] { sheets->Item("Sheet1"); },
      [&] { application->ActiveSheet(); },
      [&] { sheet->Select(); },
      [&] { application->ActiveWorkbook()->Name(); },
      [&] { sheet->Rows("1")->Delete(xlShiftUp); },
  };
  for (const auto& call : calls) {
    const RuntimeError error = ErrorOf(call);
    EXPECT_EQ(error.Number(), 1004);
    EXPECT_EQ(error.Description(), "The document is no longer open in LibreOffice. Open it again to go on.");
  }
}

TEST_F(ClosedDocument, TellsOnce) {
  EXPECT_EQ(*times_gone, 0);
  CloseDocument();
  EXPECT_EQ(*times_gone, 1);
}

TEST_F(ClosedDocument, TellsNobodyWhoHasForgottenIt) {
  application.reset();
  sheets.reset();
  sheet.reset();
  CloseDocument();
  EXPECT_EQ(*times_gone, 0);
}

class SheetsOfAPerson : public OpenDocument {};

TEST_F(SheetsOfAPerson, AreFollowedWhenTheyAreRenamedAndMoved) {
  const auto other = sheets->Add();
  As<css::container::XNamed>(Tab())->setName("My own name");
  document->getSheets()->moveByName("My own name", 0);
  Cells("A1")->Value(1.0);
  EXPECT_EQ(sheet->Name(), "My own name");
  EXPECT_EQ(sheet->Index(), 1);
  EXPECT_EQ(other->Index(), 2);
  EXPECT_EQ(Tab("My own name")->getCellByPosition(0, 0)->getValue(), 1);
  EXPECT_EQ(Tab("Sheet2")->getCellByPosition(0, 0)->getValue(), 0);
}

// The office's own object of a deleted sheet stands for the next one.
TEST_F(SheetsOfAPerson, TakeNothingToTheirNeighboursWhenTheyAreDeleted) {
  const auto added = sheets->Add();
  document->getSheets()->removeByName("Sheet2");
  const RuntimeError error = ErrorOf([&] { added->Range("A1")->Value(1.0); });
  EXPECT_EQ(error.Number(), 1004);
  EXPECT_NE(error.Description().find("\"Sheet2\" is no longer there"), std::string::npos);
  EXPECT_EQ(NumberOf([&] { added->Name(); }), 1004);
  EXPECT_EQ(NumberOf([&] { added->Select(); }), 1004);
  EXPECT_EQ(Typed("A1"), 0);
}

TEST_F(SheetsOfAPerson, AreBackWhenTheirDeletionIsUndone) {
  const auto added = sheets->Add();
  document->getSheets()->removeByName("Sheet2");
  EXPECT_EQ(NumberOf([&] { added->Range("A1")->Value(1.0); }), 1004);
  UndoManager()->undo();
  added->Range("A1")->Value(1.0);
  EXPECT_EQ(Tab("Sheet2")->getCellByPosition(0, 0)->getValue(), 1);
}

TEST_F(SheetsOfAPerson, AreTheSameWhenAllTheirRowsAreTakenOut) {
  const auto before = sheets->Add();
  As<css::sheet::XCellRangeMovement>(Tab())->removeRange({1, 0, 0, 16'383, 1'048'575},
                                                         css::sheet::CellDeleteMode_ROWS);
  Cells("A1")->Value(1.0);
  Cells("XFD1048576")->Value(2.0);
  EXPECT_EQ(Typed("A1"), 1);
  EXPECT_TRUE(before->Range("A1")->Value().IsEmpty());
}

}  // namespace
}  // namespace mirelo::testing
