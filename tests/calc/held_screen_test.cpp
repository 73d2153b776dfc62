// What a person sees of a document in LibreOffice while clients hold its screen still, and what stands in it
// then.

#include <gtest/gtest.h>

#include <com/sun/star/awt/Toolkit.hpp>
#include <com/sun/star/awt/XToolkitExperimental.hpp>
#include <com/sun/star/container/XNamed.hpp>
#include <com/sun/star/frame/XModel.hpp>
#include <com/sun/star/sheet/XCellRangeAddressable.hpp>
#include <com/sun/star/table/CellHoriJustify.hpp>
#include <com/sun/star/view/XSelectionSupplier.hpp>
#include <cstdint>
#include <memory>
#include <string>

#include "adapters/calc/objects/interfaces.h"
#include "adapters/calc/objects/properties.h"
#include "calc/live_office.h"
#include "calc/open_document.h"
#include "host/excel/border.h"
#include "host/excel/font.h"
#include "host/excel/interior.h"
#include "host/excel/range.h"
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

}  // namespace
}  // namespace mirelo::testing
