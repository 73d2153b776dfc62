// What tests/excel does not see of a document in LibreOffice: the person who works in it meanwhile.

#include <gtest/gtest.h>

#include <array>
#include <com/sun/star/awt/Toolkit.hpp>
#include <com/sun/star/awt/XToolkitExperimental.hpp>
#include <com/sun/star/container/XIndexAccess.hpp>
#include <com/sun/star/container/XNamed.hpp>
#include <com/sun/star/document/XUndoManagerSupplier.hpp>
#include <com/sun/star/frame/XModel.hpp>
#include <com/sun/star/frame/XStorable.hpp>
#include <com/sun/star/sheet/CellDeleteMode.hpp>
#include <com/sun/star/sheet/XCellRangeAddressable.hpp>
#include <com/sun/star/sheet/XCellRangeMovement.hpp>
#include <com/sun/star/sheet/XSheetConditionalEntries.hpp>
#include <com/sun/star/sheet/XSpreadsheet.hpp>
#include <com/sun/star/sheet/XSpreadsheetView.hpp>
#include <com/sun/star/sheet/XSpreadsheets.hpp>
#include <com/sun/star/table/CellHoriJustify.hpp>
#include <com/sun/star/table/XColumnRowRange.hpp>
#include <com/sun/star/table/XTableColumns.hpp>
#include <com/sun/star/table/XTableRows.hpp>
#include <com/sun/star/util/CellProtection.hpp>
#include <com/sun/star/util/XCloseable.hpp>
#include <com/sun/star/util/XProtectable.hpp>
#include <com/sun/star/view/XSelectionSupplier.hpp>
#include <cstdint>
#include <memory>
#include <string>

#include "adapters/calc/objects/interfaces.h"
#include "adapters/calc/objects/properties.h"
#include "adapters/calc/objects/spreadsheet_program.h"
#include "calc/live_office.h"
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
using calc::OfficeText;
using calc::Properties;
using calc::Reference;
using calc::TextOf;

class OpenDocument : public ::testing::Test {
 protected:
  Reference<css::sheet::XSpreadsheet> Tab(std::string_view name = "Sheet1") const {
    return As<css::sheet::XSpreadsheet>(document->getSheets()->getByName(OfficeText(name)));
  }
  // What the person does, by the office's own means and in its undo list.
  void Type(std::string_view address, double number) const {
    Tab()->getCellRangeByName(OfficeText(address))->getCellByPosition(0, 0)->setValue(number);
  }
  double Typed(std::string_view address) const {
    return Tab()->getCellRangeByName(OfficeText(address))->getCellByPosition(0, 0)->getValue();
  }
  Reference<css::document::XUndoManager> Steps() const {
    return As<css::document::XUndoManagerSupplier>(document)->getUndoManager();
  }
  sal_Int32 StepCount() const { return Steps()->getAllUndoActionTitles().getLength(); }
  // The titles of the steps, from the latest back.
  std::string StepTitles() const {
    std::string titles;
    for (const rtl::OUString& title : Steps()->getAllUndoActionTitles()) titles += TextOf(title) + "; ";
    return titles;
  }
  Reference<css::sheet::XSpreadsheetView> View() const {
    return As<css::sheet::XSpreadsheetView>(As<css::frame::XModel>(document)->getCurrentController());
  }
  std::string TabInFront() const {
    return TextOf(As<css::container::XNamed>(View()->getActiveSheet())->getName());
  }
  void Protect(std::string_view name = "Sheet1") const {
    As<css::util::XProtectable>(Tab(name))->protect("secret");
  }
  void CloseDocument() const { As<css::util::XCloseable>(document)->close(true); }

  std::shared_ptr<Range> Cells(std::string_view address) const { return sheet->Range(address); }

  LiveOffice::Document document = LiveOffice::Get().NewDocument();
  // What is held for a document may outlive a test, and hears when its document is closed after that.
  std::shared_ptr<int> times_gone = std::make_shared<int>(0);
  std::shared_ptr<Application> application =
      calc::ApplicationOf(LiveOffice::Get().Context(), document, [gone = times_gone] { ++*gone; });
  std::shared_ptr<Worksheets> sheets = application->Worksheets();
  std::shared_ptr<Worksheet> sheet = sheets->Item(1);
};

class UndoList : public OpenDocument {};

TEST_F(UndoList, IsKeptForThePersonBehindAWriteThatFoundItEmpty) {
  Cells("A1:B2")->Value(1.0);
  Cells("A1")->Font()->Bold(true);
  Cells("A1")->AddComment("note");
  ASSERT_EQ(StepCount(), 0);
  Type("A3", 2);
  ASSERT_EQ(StepCount(), 1);
  Steps()->undo();
  EXPECT_EQ(Typed("A3"), 0);
  EXPECT_EQ(Typed("A1"), 1);
}

TEST_F(UndoList, KeepsWhatThePersonMayDoAgain) {
  Type("A3", 2);
  Steps()->undo();
  Cells("A1")->Value(1.0);
  ASSERT_EQ(Steps()->getAllRedoActionTitles().getLength(), 1);
  Steps()->redo();
  EXPECT_EQ(Typed("A3"), 2);
}

TEST_F(UndoList, KeepsAStepThatAMacroHasBegun) {
  Steps()->enterUndoContext("mine");
  Cells("A1")->Value(1.0);
  Type("A3", 2);
  Cells("A1")->Value(2.0);
  Steps()->leaveUndoContext();
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
  Steps()->undo();
  EXPECT_EQ(Typed("A1"), 1);
  EXPECT_EQ(Typed("B1"), 7);
  Cells("B1")->Value(8.0);
  Steps()->redo();
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
  Steps()->undo();
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

class HeldScreen : public OpenDocument {
 protected:
  std::shared_ptr<Worksheet> behind = sheets->Add();
  void SetUp() override {
    sheet->Select();
    Cells("C3")->Select();
    application->ScreenUpdating(false);
  }
  std::string Selected() const {
    const auto cells =
        As<css::sheet::XCellRangeAddressable>(As<css::view::XSelectionSupplier>(View())->getSelection());
    const auto address = cells->getRangeAddress();
    return std::to_string(address.StartRow + 1) + "," + std::to_string(address.StartColumn + 1);
  }
};

TEST_F(HeldScreen, LeavesThePersonWhereTheyAreWhileClientsSelect) {
  behind->Select();
  behind->Range("B2")->Select();
  EXPECT_EQ(application->ActiveSheet()->Name(), "Sheet2");
  EXPECT_EQ(application->ActiveCell()->Address(), "$B$2");
  EXPECT_EQ(application->ActiveCell()->Worksheet()->Name(), "Sheet2");
  EXPECT_EQ(TabInFront(), "Sheet1");
  EXPECT_EQ(Selected(), "3,3");
}

TEST_F(HeldScreen, ShowsWhatWasSelectedInTheEnd) {
  behind->Select();
  behind->Range("B2")->Select();
  application->ScreenUpdating(true);
  EXPECT_EQ(TabInFront(), "Sheet2");
  EXPECT_EQ(Selected(), "2,2");
}

TEST_F(HeldScreen, MovesNobodyWhenClientsPutEverythingBack) {
  const auto front = application->ActiveSheet();
  const auto cell = application->ActiveCell();
  behind->Select();
  behind->Range("B2")->Select();
  front->Select();
  cell->Select();
  View()->setActiveSheet(Tab("Sheet2"));  // the person, meanwhile
  application->ScreenUpdating(true);
  EXPECT_EQ(TabInFront(), "Sheet2");
  EXPECT_EQ(Selected(), "1,1");
}

TEST_F(HeldScreen, RefusesCellsOfASheetThatIsNotInFrontThere) {
  EXPECT_EQ(NumberOf([&] { behind->Range("B2")->Select(); }), 1004);
  behind->Select();
  EXPECT_EQ(NumberOf([&] { Cells("A1")->Select(); }), 1004);
}

TEST_F(HeldScreen, IsPaintedOnceInTheEnd) {
  const auto model = As<css::frame::XModel>(document);
  EXPECT_TRUE(model->hasControllersLocked());
  Cells("A1")->Value(1.0);
  EXPECT_TRUE(model->hasControllersLocked());
  application->ScreenUpdating(true);
  EXPECT_FALSE(model->hasControllersLocked());
}

TEST_F(HeldScreen, IsPaintedAgainWhenTheOfficeHandlesItsEvents) {
  Reference<css::awt::XToolkitExperimental>(css::awt::Toolkit::create(LiveOffice::Get().Context()),
                                            css::uno::UNO_QUERY_THROW)
      ->processEventsToIdle();
  EXPECT_FALSE(As<css::frame::XModel>(document)->hasControllersLocked());
  EXPECT_FALSE(application->ScreenUpdating());
  application->ScreenUpdating(true);
  EXPECT_FALSE(As<css::frame::XModel>(document)->hasControllersLocked());
}

// Formats that are told while the screen is held still wait to be laid together.
class HeldFormats : public OpenDocument {
 protected:
  std::shared_ptr<Worksheet> other = sheets->Add();
  void SetUp() override { application->ScreenUpdating(false); }

  void LetTheOfficeHandleItsEvents() const {
    Reference<css::awt::XToolkitExperimental>(css::awt::Toolkit::create(LiveOffice::Get().Context()),
                                              css::uno::UNO_QUERY_THROW)
        ->processEventsToIdle();
  }
  // As the office has it.
  template <class Value>
  Value Stands(std::string_view property, std::string_view cell, std::string_view tab = "Sheet1") const {
    return Properties(Tab(tab)->getCellRangeByName(OfficeText(cell))).Get(property, Value{});
  }
  sal_Int32 Ground(std::string_view cell, std::string_view tab = "Sheet1") const {
    return Stands<sal_Int32>("CellBackColor", cell, tab);
  }
  static constexpr std::int32_t kRed = 3;
  static constexpr std::int32_t kBlue = 5;
  static constexpr sal_Int32 kRedInOffice = 0xFF0000;
  static constexpr sal_Int32 kBlueInOffice = 0x0000FF;
};

TEST_F(HeldFormats, StandInTheDocumentWhenTheScreenIsLetGo) {
  for (const char* column : {"A3:A9", "B3:B9", "D3:D9"}) {
    Cells(column)->NumberFormat("0.00");
    Cells(column)->HorizontalAlignment(xlHAlignCenter);
  }
  Cells("A2:D2")->Font()->Bold(true);
  Cells("A2:D2")->Font()->Size(14);
  Cells("A2:D2")->Interior()->ColorIndex(kRed);
  application->ScreenUpdating(true);
  for (const char* cell : {"A3", "A9", "B5", "D9"}) {
    EXPECT_EQ(Stands<css::table::CellHoriJustify>("HoriJustify", cell), css::table::CellHoriJustify_CENTER)
        << cell;
    EXPECT_EQ(Cells(cell)->NumberFormat(), Variant("0.00")) << cell;
  }
  for (const char* cell : {"C3", "A10", "E9"}) {
    EXPECT_EQ(Stands<css::table::CellHoriJustify>("HoriJustify", cell), css::table::CellHoriJustify_STANDARD)
        << cell;
  }
  EXPECT_EQ(Ground("C2"), kRedInOffice);
  EXPECT_EQ(Stands<float>("CharHeight", "D2"), 14);
  EXPECT_GT(Stands<float>("CharWeight", "A2"), 100);
}

TEST_F(HeldFormats, AreReadBackAtOnce) {
  Cells("A1:B2")->Interior()->ColorIndex(kRed);
  EXPECT_EQ(Cells("B2")->Interior()->ColorIndex(), Variant(kRed));
  Cells("A1")->NumberFormat("@");
  Cells("A1")->Value("1");
  EXPECT_EQ(Cells("A1")->Value(), Variant("1"));
}

TEST_F(HeldFormats, LieOverEachOtherInTheOrderInWhichTheyWereTold) {
  Cells("A1:C3")->Interior()->ColorIndex(kRed);
  Cells("B2")->Interior()->ColorIndex(kBlue);
  Cells("C1:C3")->Font()->Bold(true);
  Cells("A1:C1")->Interior()->ColorIndex(kBlue);
  Cells("A1:C3")->NumberFormat("0.00");
  Cells("A1:C3")->NumberFormat("General");
  application->ScreenUpdating(true);
  EXPECT_EQ(Ground("A2"), kRedInOffice);
  EXPECT_EQ(Ground("B2"), kBlueInOffice);
  EXPECT_EQ(Ground("A1"), kBlueInOffice);
  EXPECT_EQ(Ground("C3"), kRedInOffice);
  EXPECT_EQ(Cells("B2")->NumberFormat(), Variant("General"));
}

TEST_F(HeldFormats, StandInTheDocumentBeforeThePersonActs) {
  Cells("A1")->Interior()->ColorIndex(kRed);
  LetTheOfficeHandleItsEvents();
  EXPECT_EQ(Ground("A1"), kRedInOffice);
  Cells("A2")->Interior()->ColorIndex(kBlue);  // the screen is still held, and the person acts
  EXPECT_EQ(Ground("A2"), kBlueInOffice);
}

TEST_F(HeldFormats, LeaveThePersonsStepsToTheUndoList) {
  Cells("A1")->Value(1.0);
  Cells("A1")->Interior()->ColorIndex(kRed);
  LetTheOfficeHandleItsEvents();
  Type("A2", 2);
  EXPECT_EQ(StepCount(), 1);
  application->ScreenUpdating(true);
  Type("A3", 3);
  EXPECT_EQ(StepCount(), 2);
}

TEST_F(HeldFormats, LeaveTheUndoListOpenWhenTheScreenIsLetGo) {
  Cells("A1")->Value(1.0);
  sheets->Add();
  Cells("A1")->Value(2.0);
  application->ScreenUpdating(true);
  Type("A3", 3);
  EXPECT_EQ(StepCount(), 1);
}

TEST_F(HeldFormats, FollowTheirSheet) {
  Cells("A1")->Interior()->ColorIndex(kRed);
  document->getSheets()->moveByName("Sheet1", 0);  // a macro of the person's, say
  As<css::container::XNamed>(Tab("Sheet1"))->setName("Moved");
  application->ScreenUpdating(true);
  EXPECT_EQ(Ground("A1", "Moved"), kRedInOffice);
  EXPECT_NE(Ground("A1", "Sheet2"), kRedInOffice);
}

TEST_F(HeldFormats, GoWithTheirSheet) {
  other->Range("A1")->Interior()->ColorIndex(kRed);
  document->getSheets()->removeByName("Sheet2");
  EXPECT_EQ(NumberOf([&] { other->Range("A1")->Value(); }), 1004);
  EXPECT_EQ(NumberOf([&] { Cells("A1")->Value(1.0); }), 0);
  application->ScreenUpdating(true);
  EXPECT_NE(Ground("A1"), kRedInOffice);
}

TEST_F(HeldFormats, GoWithTheirDocument) {
  Cells("A1")->Interior()->ColorIndex(kRed);
  CloseDocument();
  EXPECT_EQ(NumberOf([&] { Cells("A1")->Value(); }), 1004);
  EXPECT_EQ(NumberOf([&] { application->ScreenUpdating(true); }), 1004);
}

TEST_F(HeldFormats, AreRefusedWhereTheyAreTold) {
  application->ScreenUpdating(true);
  Protect();
  application->ScreenUpdating(false);
  EXPECT_EQ(NumberOf([&] { Cells("A1")->Interior()->ColorIndex(kRed); }), 1004);
  EXPECT_EQ(NumberOf([&] { Cells("A1")->HorizontalAlignment(xlHAlignCenter); }), 1004);
  EXPECT_EQ(NumberOf([&] { Cells("A1:B2")->Borders(xlEdgeTop)->LineStyle(xlContinuous); }), 1004);
  EXPECT_EQ(NumberOf([&] { other->Range("A1")->Interior()->ColorIndex(kRed); }), 0);
}

// What lines of cells that lie beside and over each other come to, whichever way.
std::string LinesOf(Worksheet& sheet) {
  const auto draw = [&](const char* cells, XlBordersIndex index, std::int32_t style, std::int32_t weight,
                        std::int32_t color) {
    const auto border = sheet.Range(cells)->Borders(index);
    border->LineStyle(style);
    if (style == xlLineStyleNone) return;
    border->Weight(weight);
    border->ColorIndex(color);
  };
  draw("B2:D4", xlEdgeLeft, xlContinuous, xlThin, 3);
  draw("B2:D4", xlInsideVertical, xlDash, xlMedium, 5);
  draw("B2:D4", xlEdgeBottom, xlDouble, xlThick, 15);
  draw("E2:E4", xlEdgeLeft, xlContinuous, xlMedium, 3);  // those of the block's right edge
  draw("B2:D4", xlEdgeRight, xlContinuous, xlThin, 5);
  draw("B5:D6", xlEdgeTop, xlLineStyleNone, 0, 0);
  draw("C3", xlEdgeTop, xlContinuous, xlThick, 3);
  draw("B2:D4", xlInsideHorizontal, xlContinuous, xlThin, 15);
  draw("B2:B4", xlInsideVertical, xlContinuous, xlThin, 15);  // there is none
  std::string told;
  for (const char* cell :
       {"B2", "C2", "D2", "B3", "C3", "D3", "B4", "C4", "D4", "E2", "E3", "B5", "C5", "A3"}) {
    told += cell;
    for (const auto index : {xlEdgeLeft, xlEdgeTop, xlEdgeRight, xlEdgeBottom}) {
      const auto border = sheet.Range(cell)->Borders(index);
      told += " " + border->LineStyle().ToText() + "/" + border->Weight().ToText() + "/" +
              border->ColorIndex().ToText();
    }
    told += "\n";
  }
  return told;
}

TEST_F(HeldFormats, DrawTheLinesThatTheyDrawElsewhere) {
  const std::string held = LinesOf(*sheet);
  application->ScreenUpdating(true);
  EXPECT_EQ(held, LinesOf(*other));
}

class WrittenBlocks : public OpenDocument {};

// The office dies of an element that is nothing.
TEST_F(WrittenBlocks, MayHaveEveryKindOfValueAndNone) {
  VariantArray values(1, 3, 1, 3);
  values(1, 1) = 1.5;
  values(1, 2) = "text";
  values(1, 3) = true;
  values(2, 1) = Date{40563};
  values(2, 3) = "#N/A";
  values(3, 2) = "";
  Cells("A1:D4")->Value(values);
  const Variant read = Cells("A1:D4")->Value();
  const VariantArray& array = read.AsArray();
  EXPECT_EQ(array(1, 1), Variant(1.5));
  EXPECT_EQ(array(1, 2), Variant("text"));
  EXPECT_EQ(array(1, 3), Variant(true));
  EXPECT_EQ(array(2, 1), Variant(Date{40563}));
  EXPECT_TRUE(array(2, 2).IsEmpty());
  EXPECT_EQ(array(2, 3), Variant("#N/A"));
  EXPECT_TRUE(array(3, 2).IsEmpty());
  EXPECT_EQ(array(4, 4), Variant("#N/A")) << "behind the array's end";
}

// The office takes comments off cells that are written as a block.
TEST_F(WrittenBlocks, KeepTheCommentsOfTheirCells) {
  Cells("B2")->AddComment("mine");
  for (const char* address : {"A1:C3", "B2", "B1:B3"}) {
    Cells(address)->Value(7.0);
    ASSERT_NE(Cells("B2")->Comment(), nullptr) << address;
    EXPECT_EQ(Cells("B2")->Comment()->Text(), "mine");
    EXPECT_EQ(Cells("B2")->Value(), Variant(7.0));
  }
  Cells("A1:C3")->Value("007");
  EXPECT_EQ(Cells("B2")->Value(), Variant(7.0));
  Cells("A1:C3")->Value("'007");
  EXPECT_EQ(Cells("B2")->Value(), Variant("007"));
  EXPECT_EQ(Cells("B2")->NumberFormat(), Variant("General"));
  Cells("A1:C3")->Value(VariantArray(1, 3, 1, 3));
  EXPECT_TRUE(Cells("B2")->Value().IsEmpty());
  EXPECT_NE(Cells("B2")->Comment(), nullptr);
}

TEST_F(WrittenBlocks, LeaveTheFormatOfTextsThatLookLikeNumbers) {
  Cells("A1:A3")->NumberFormat("0.00");
  VariantArray texts(1, 3, 1, 1);
  texts(1, 1) = "'12";
  texts(2, 1) = "3M";
  texts(3, 1) = "'TRUE";
  Cells("A1:A3")->Value(texts);
  EXPECT_EQ(Cells("A1:A3")->NumberFormat(), Variant("0.00"));
  EXPECT_EQ(Cells("A1")->Value(), Variant("12"));
  EXPECT_EQ(Cells("A3")->Value(), Variant("TRUE"));
}

TEST_F(WrittenBlocks, HaveRowsAsHighAsTheirTextsWhetherThePersonHasStepsOrNot) {
  const auto height = [&](std::int32_t row) { return sheet->Cells(row, 1)->Height(); };
  const double of_one_line = height(9);
  Cells("A1")->Value("three\nlines\nof text");
  EXPECT_GT(height(1), 2 * of_one_line);
  Type("A3", 2);
  Cells("A2")->Value("three\nlines\nof text");
  EXPECT_NEAR(height(2), height(1), 1);
}

TEST_F(WrittenBlocks, LetRowsGrowAndShrinkWhileThePersonHasSteps) {
  const auto height = [&](std::int32_t row) { return sheet->Cells(row, 1)->Height(); };
  const double of_one_line = height(9);
  Properties(Tab()->getCellRangeByName("A3")).Set("IsTextWrapped", true);
  Type("D9", 2);
  Cells("A1:A4")->Value("one line");
  Cells("A1:A2")->Value("three\nlines\nof text");
  EXPECT_GT(height(1), 2 * of_one_line);
  EXPECT_GT(height(2), 2 * of_one_line);
  Cells("A2")->Value(1.0);
  EXPECT_NEAR(height(2), of_one_line, 1);
  Cells("A1")->ClearContents();
  EXPECT_NEAR(height(1), of_one_line, 1);
  Cells("A3")->Value("text that is wrapped in a column of this width, and that takes some lines");
  EXPECT_GT(height(3), 2 * of_one_line);
  EXPECT_NEAR(height(4), of_one_line, 1);
}

// Letters that a person has made large, in cells with contents, without, and below all that is filled.
TEST_F(WrittenBlocks, HaveRowsOfTheUsualHeightWhereLargeLettersAreCleared) {
  const auto height = [&](std::int32_t row) { return sheet->Cells(row, 1)->Height(); };
  const double of_one_line = height(9);
  Type("A1", 1);
  for (const char* cells : {"A1", "B2", "A5", "C30", "A31:XFD31"}) {
    const Properties letters(Tab()->getCellRangeByName(OfficeText(cells)));
    letters.Set("CharHeight", 36.0F);
  }
  for (const std::int32_t row : {1, 2, 5, 30, 31}) ASSERT_GT(height(row), 2 * of_one_line) << row;
  const std::string steps = StepTitles();
  ASSERT_FALSE(steps.empty());
  Cells("A1:C4")->Clear();
  sheet->Rows("5")->Clear();
  Cells("A20:H30")->Clear();
  sheet->Rows("31")->Clear();
  for (const std::int32_t row : {1, 2, 5, 30, 31}) EXPECT_NEAR(height(row), of_one_line, 1) << row;
  EXPECT_EQ(StepTitles(), steps);
}

TEST_F(WrittenBlocks, HaveRowsAsHighAsTheirLettersWhileThePersonHasSteps) {
  const auto height = [&](std::int32_t row) { return sheet->Cells(row, 1)->Height(); };
  const double of_one_line = height(9);
  Type("A1", 1);
  const std::string steps = StepTitles();
  Cells("A1:A2")->Font()->Size(36);
  EXPECT_GT(height(1), 2 * of_one_line);
  EXPECT_GT(height(2), 2 * of_one_line);
  EXPECT_EQ(StepTitles(), steps);
  Cells("A1")->Font()->Size(10);
  EXPECT_NEAR(height(1), of_one_line, 1);
  EXPECT_GT(height(2), 2 * of_one_line);
  EXPECT_EQ(StepTitles(), steps);
}

TEST_F(WrittenBlocks, LeaveRowsAsHighAsThePersonMadeThem) {
  const auto rows = As<css::table::XColumnRowRange>(Tab())->getRows();
  Properties(rows->getByIndex(1)).Set("Height", sal_Int32{2000});
  Cells("A1:A3")->Value("three\nlines\nof text");
  EXPECT_EQ(Properties(rows->getByIndex(1)).Get("Height", sal_Int32{0}), 2000);
  EXPECT_EQ(Properties(rows->getByIndex(0)).Get("Height", sal_Int32{0}),
            Properties(rows->getByIndex(2)).Get("Height", sal_Int32{0}));
}

TEST_F(WrittenBlocks, LeaveHeightsAloneWhereAMacroHoldsThem) {
  Type("D9", 2);
  Properties(document).Set("IsAdjustHeightEnabled", false);
  const double height = sheet->Cells(1, 1)->Height();
  Cells("A1")->Value("three\nlines\nof text");
  EXPECT_EQ(sheet->Cells(1, 1)->Height(), height);
  EXPECT_FALSE(Properties(document).Get("IsAdjustHeightEnabled", true));
}

TEST_F(WrittenBlocks, ReachTheSheetsLastRow) {
  Cells("XFD1048575:XFD1048576")->Value(1.0);
  EXPECT_EQ(Cells("XFD1048576")->Value(), Variant(1.0));
  EXPECT_EQ(Cells("XFD1048576")->End(xlUp)->Row(), 1'048'575);
}

TEST_F(WrittenBlocks, LeaveHiddenColumnsHiddenWhenColumnsAreFitted) {
  Cells("A1:C1")->Value("a text that is wider than its column");
  const auto column = [&](sal_Int32 number) {
    return Properties(As<css::table::XColumnRowRange>(Tab())->getColumns()->getByIndex(number));
  };
  column(1).Set("IsVisible", false);
  sheet->Columns("A:C")->AutoFit();
  EXPECT_FALSE(column(1).Get("IsVisible", true));
  EXPECT_GT(column(2).Get("Width", sal_Int32{0}), 4000);
}

class AlignedColumns : public OpenDocument {
 protected:
  css::table::CellHoriJustify InOffice(std::string_view address) const {
    const auto cell = Tab()->getCellRangeByName(OfficeText(address))->getCellByPosition(0, 0);
    return Properties(cell).Get("HoriJustify", css::table::CellHoriJustify_BLOCK);
  }
};

TEST_F(AlignedColumns, AreAlignedWhereSomeOfTheirCellsAreSoAlready) {
  Cells("B2:B4")->HorizontalAlignment(xlHAlignCenter);
  Cells("B1:B9")->HorizontalAlignment(xlHAlignCenter);
  EXPECT_EQ(InOffice("B1"), css::table::CellHoriJustify_CENTER);
  EXPECT_EQ(InOffice("B9"), css::table::CellHoriJustify_CENTER);
  Cells("B1:B9")->HorizontalAlignment(xlHAlignGeneral);
  EXPECT_EQ(InOffice("B3"), css::table::CellHoriJustify_STANDARD);
}

TEST_F(AlignedColumns, AreAlignedWhereNobodyEverTouchedTheLastOfThem) {
  Cells("B1:B9")->HorizontalAlignment(xlHAlignCenter);
  Cells("B1:Z9")->HorizontalAlignment(xlHAlignCenter);
  EXPECT_EQ(InOffice("Z1"), css::table::CellHoriJustify_CENTER);
}

TEST_F(AlignedColumns, AreAlignedWhereTheWholeSheetOrARowIsOtherwise) {
  sheet->Rows("5")->HorizontalAlignment(xlHAlignCenter);
  Cells("AZ1:AZ9")->HorizontalAlignment(xlHAlignGeneral);
  EXPECT_EQ(InOffice("AZ5"), css::table::CellHoriJustify_STANDARD);
  sheet->Cells()->HorizontalAlignment(xlHAlignCenter);
  Cells("BZ1:BZ9")->HorizontalAlignment(xlHAlignGeneral);
  EXPECT_EQ(InOffice("BZ5"), css::table::CellHoriJustify_STANDARD);
}

class ShownConditions : public OpenDocument {
 protected:
  // The conditions that the office itself has on a cell, by which it is drawn.
  sal_Int32 DrawnOn(std::string_view address) const {
    const Properties cell(Tab()->getCellRangeByName(OfficeText(address)));
    return As<css::sheet::XSheetConditionalEntries>(cell.Get("ConditionalFormat"))->getCount();
  }
};

TEST_F(ShownConditions, AreThoseThatTheOfficeDrawsBy) {
  const auto conditions = Cells("B2:D9")->FormatConditions();
  conditions->Add(xlCellValue, xlGreater, "0")->Font()->ColorIndex(10);
  conditions->Add(xlCellValue, xlLess, "0")->Font()->ColorIndex(3);
  EXPECT_EQ(DrawnOn("C4"), 2);
  Cells("C4:C5")->FormatConditions()->Delete();
  EXPECT_EQ(DrawnOn("C4"), 0);
  EXPECT_EQ(DrawnOn("C6"), 2);
  Cells("B2:B3")->FormatConditions()->Add(xlCellValue, xlEqual, "7");
  EXPECT_EQ(DrawnOn("B2"), 3);
  EXPECT_EQ(DrawnOn("B4"), 2);
  EXPECT_EQ(Cells("B2:D9")->FormatConditions()->Count(), 3) << "each is counted once";
  Cells("C6:C7")->Delete(xlShiftUp);
  EXPECT_EQ(DrawnOn("C6"), 2);
  EXPECT_EQ(DrawnOn("C8"), 0);
  EXPECT_EQ(DrawnOn("D9"), 2);
}

}  // namespace
}  // namespace mirelo::testing
