// What a person sees of charts in a document, and what becomes of them when that person takes a hand in them:
// read and done by the office's own means.

#include <gtest/gtest.h>

#include <com/sun/star/awt/Gradient.hpp>
#include <com/sun/star/beans/PropertyValue.hpp>
#include <com/sun/star/container/XNameAccess.hpp>
#include <com/sun/star/document/XUndoManagerSupplier.hpp>
#include <com/sun/star/drawing/FillStyle.hpp>
#include <com/sun/star/drawing/LineStyle.hpp>
#include <com/sun/star/drawing/XShapes.hpp>
#include <com/sun/star/frame/DispatchHelper.hpp>
#include <com/sun/star/frame/XDispatchProvider.hpp>
#include <com/sun/star/frame/XModel.hpp>
#include <com/sun/star/frame/XStorable.hpp>
#include <com/sun/star/lang/XMultiServiceFactory.hpp>
#include <com/sun/star/sheet/XSpreadsheet.hpp>
#include <com/sun/star/sheet/XSpreadsheetView.hpp>
#include <com/sun/star/table/XColumnRowRange.hpp>
#include <com/sun/star/util/XProtectable.hpp>
#include <com/sun/star/view/XSelectionSupplier.hpp>

#include "adapters/calc/objects/interfaces.h"
#include "adapters/calc/objects/properties.h"
#include "adapters/calc/objects/spreadsheet_program.h"
#include "calc/drawn_charts.h"
#include "calc/live_office.h"
#include "host/excel/border.h"
#include "host/excel/chart.h"
#include "host/excel/chart_parts.h"
#include "host/excel/charts.h"
#include "host/excel/comment.h"
#include "host/excel/font.h"
#include "host/excel/range.h"
#include "host/excel/series.h"
#include "host/excel/shape.h"
#include "host/excel/shapes.h"
#include "host/excel/workbook.h"
#include "host/excel/worksheet.h"
#include "host/excel/worksheets.h"
#include "spreadsheet/refusals.h"
#include "support/error_number.h"
#include "support/temp_directory.h"

namespace mirelo::testing {
namespace {

using namespace host::excel;
using calc::As;
using calc::OfficeChart;
using calc::Properties;
namespace Refusals = spreadsheet::Refusals;

constexpr sal_Int32 kRed = 0xFF0000;   // colour 3 of the palette
constexpr sal_Int32 kLime = 0x00FF00;  // colour 4
constexpr sal_Int32 kBlue = 0x0000FF;  // colour 5

TEST_F(DrawnCharts, ShowWhatWasToldOfTheirParts) {
  const auto chart = AddChart();
  chart->HasLegend(false);
  chart->HasAxis(xlCategory, xlPrimary, false);
  const auto values = chart->Axes(xlValue, xlPrimary);
  values->TickLabels()->Font()->Size(8);
  values->HasMajorGridlines(true);
  values->MajorGridlines()->Border()->ColorIndex(3);
  values->MajorGridlines()->Border()->LineStyle(xlDot);
  chart->HasTitle(true);
  chart->ChartTitle()->Text("Last");
  chart->ChartTitle()->Font()->Size(9);
  chart->ChartTitle()->Font()->Bold(false);
  chart->ChartTitle()->Font()->ColorIndex(5);
  chart->PlotArea()->Border()->ColorIndex(4);
  chart->ChartArea()->Fill()->TwoColorGradient(msoGradientHorizontal, 1);
  chart->ChartArea()->Fill()->ForeColor()->SchemeColor(3);
  chart->ChartArea()->Fill()->BackColor()->SchemeColor(5);

  const OfficeChart seen = Seen();
  EXPECT_EQ(&seen.Kind(), &spreadsheet::kLineKind);
  EXPECT_EQ(CellsSeen(), "$Sheet1.$B$2:$B$6");
  EXPECT_FALSE(seen.Whole().Get("HasLegend", true));
  EXPECT_FALSE(seen.Diagram().Get("HasXAxis", true));
  EXPECT_TRUE(seen.Diagram().Get("HasYAxis", false));
  EXPECT_EQ(seen.ValueAxis().Get("CharHeight", 0.0F), 8);
  EXPECT_EQ(seen.ValueGrid().Get("LineColor", sal_Int32{0}), kRed);
  EXPECT_EQ(seen.ValueGrid().Get("LineStyle", css::drawing::LineStyle_NONE), css::drawing::LineStyle_DASH);
  EXPECT_EQ(seen.Title().Get("String", rtl::OUString()), "Last");
  EXPECT_EQ(seen.Title().Get("CharHeight", 0.0F), 9);
  EXPECT_EQ(seen.Title().Get("CharWeight", 0.0F), 100);
  EXPECT_EQ(seen.Title().Get("CharColor", sal_Int32{0}), kBlue);
  EXPECT_EQ(seen.Wall().Get("LineColor", sal_Int32{0}), kLime);
  EXPECT_EQ(seen.Area().Get("FillStyle", css::drawing::FillStyle_NONE), css::drawing::FillStyle_GRADIENT);
  const auto gradients =
      As<css::container::XNameAccess>(As<css::lang::XMultiServiceFactory>(seen.document)
                                          ->createInstance("com.sun.star.drawing.GradientTable"));
  css::awt::Gradient gradient;
  gradients->getByName(seen.Area().Get("FillGradientName", rtl::OUString())) >>= gradient;
  EXPECT_EQ(gradient.StartColor, kRed);
  EXPECT_EQ(gradient.EndColor, kBlue);
}

TEST_F(DrawnCharts, ColorTheMarkersOfPointsAndLeaveTheLine) {
  const auto series = AddChart()->SeriesCollection(1);
  series->Border()->ColorIndex(5);
  series->MarkerStyle(xlMarkerStyleDiamond);
  series->Points(2)->MarkerBackgroundColorIndex(3);
  series->Points(2)->MarkerForegroundColorIndex(4);
  series->Points(3)->Border()->ColorIndex(4);
  EXPECT_EQ(Properties(Seen().Series()[0]).Get("Color", sal_Int32{0}), kBlue);
  EXPECT_EQ(MarkerSeen(1).FillColor, kRed);
  EXPECT_EQ(MarkerSeen(1).BorderColor, kLime);
  EXPECT_EQ(MarkerSeen(1).StandardSymbol, 1);
  EXPECT_EQ(MarkerSeen(2).FillColor, kLime) << "in place of the line of one point";
  EXPECT_EQ(MarkerSeen(3).FillColor, kBlue);
  series->MarkerBackgroundColorIndex(xlColorIndexAutomatic);
  series->MarkerForegroundColorIndex(xlColorIndexAutomatic);
  EXPECT_EQ(MarkerSeen(1).FillColor, kBlue) << "it has lost what was its own";
}

TEST_F(DrawnCharts, ColorEachColumn) {
  const auto series = AddChart(xlColumnClustered)->SeriesCollection(1);
  series->Points(2)->MarkerBackgroundColorIndex(3);
  const auto colors = [this](sal_Int32 point) {
    return Properties(Seen().Series()[0]->getDataPointByIndex(point)).Get("Color", sal_Int32{0});
  };
  EXPECT_EQ(&Seen().Kind(), &spreadsheet::kColumnKind);
  EXPECT_EQ(colors(1), kRed);
  EXPECT_NE(colors(2), kRed);
}

TEST_F(DrawnCharts, HaveASeriesForEachColumnAndLoseThoseThatAreGone) {
  const auto chart = AddChart();
  chart->SetSourceData(*sheet->Range("B2:D6"), xlColumns);
  ASSERT_EQ(Seen().Series().size(), 3U);
  EXPECT_EQ(calc::ValuesOf(Seen().Series()[2])->getSourceRangeRepresentation(), "$Sheet1.$D$2:$D$6");
  chart->SetSourceData(*sheet->Range("C3:C4"), xlColumns);
  ASSERT_EQ(Seen().Series().size(), 1U);
  EXPECT_EQ(CellsSeen(), "$Sheet1.$C$3:$C$4");
}

TEST_F(DrawnCharts, WaitWhileTheScreenIsNotUpdated) {
  const auto chart = AddChart();
  application->ScreenUpdating(false);
  chart->HasTitle(true);
  chart->SeriesCollection(1)->Values(sheet->Range("B3:B7"));
  EXPECT_FALSE(Seen().Whole().Get("HasMainTitle", true));
  EXPECT_TRUE(chart->HasTitle());
  application->ScreenUpdating(true);
  EXPECT_TRUE(Seen().Whole().Get("HasMainTitle", false));
  EXPECT_EQ(CellsSeen(), "$Sheet1.$B$3:$B$7");
}

// What a person does.

TEST_F(DrawnCharts, AreWhereAPersonHasPutThem) {
  const auto chart = AddChart();
  const auto shape = sheet->Shapes()->Item(1);
  Seen().shape->setPosition({2540, 5080});
  Seen().shape->setSize({10160, 5080});
  EXPECT_NEAR(shape->Left(), 72, 0.05);
  EXPECT_NEAR(shape->Top(), 144, 0.05);
  EXPECT_NEAR(shape->Width(), 288, 0.05);
  chart->HasLegend(false);
  EXPECT_EQ(Seen().shape->getPosition().X, 2540) << "nothing moves it back";
}

TEST_F(DrawnCharts, HaveTheNamesAndTextsThatAPersonGives) {
  const auto chart = AddChart();
  chart->HasTitle(true);
  Properties(Seen().shape).Set("Name", rtl::OUString("Mine"));
  Seen().Title().Set("String", rtl::OUString("My title"));
  EXPECT_EQ(sheet->Shapes()->Item("mine")->Chart()->Name(), "Sheet1 Mine");
  EXPECT_EQ(chart->ChartTitle()->Text(), "My title");
  Seen().Whole().Set("HasMainTitle", false);
  EXPECT_FALSE(chart->HasTitle());
}

TEST_F(DrawnCharts, KeepTheColorsThatAPersonGivesUntilOthersAreTold) {
  const auto series = AddChart()->SeriesCollection(1);
  series->Border()->ColorIndex(5);
  Properties(Seen().Series()[0]).Set("Color", kLime);
  series->Points(2)->MarkerBackgroundColorIndex(3);
  EXPECT_EQ(Properties(Seen().Series()[0]).Get("Color", sal_Int32{0}), kLime);
  series->Border()->ColorIndex(3);
  EXPECT_EQ(Properties(Seen().Series()[0]).Get("Color", sal_Int32{0}), kRed);
}

TEST_F(DrawnCharts, AreGoneOnceAPersonDeletesThem) {
  const auto chart = AddChart();
  application->ScreenUpdating(false);
  chart->HasTitle(true);
  Page()->remove(Seen().shape);
  EXPECT_EQ(NumberOf([&] { chart->HasTitle(); }), 1004);
  EXPECT_EQ(sheet->Shapes()->Count(), 0);
  EXPECT_EQ(NumberOf([&] { application->ScreenUpdating(true); }), 0) << "what waited for it is forgotten";
}

// The office ends at the loss of a drawing that is selected.
TEST_F(DrawnCharts, AreTakenOffWhileASecondWindowHasThemSelected) {
  const auto chart = AddChart();
  const auto model = As<css::frame::XModel>(document);
  const auto first = model->getCurrentController();
  const auto frame = As<css::frame::XDispatchProvider>(first->getFrame());
  css::frame::DispatchHelper::create(LiveOffice::Get().Context())
      ->executeDispatch(frame, ".uno:NewWindow", "", 0, {});
  const auto second = model->getCurrentController();
  ASSERT_NE(second, first);
  As<css::view::XSelectionSupplier>(second)->select(css::uno::Any(Seen().shape));
  model->setCurrentController(first);
  sheet->Shapes()->Item(1)->Delete();
  const css::uno::Any selected = As<css::view::XSelectionSupplier>(second)->getSelection();
  EXPECT_FALSE(calc::IfAs<css::drawing::XShapes>(selected).is());
  EXPECT_EQ(sheet->Shapes()->Count(), 0);
}

TEST_F(DrawnCharts, AreTakenOffWhileSelectedBesideOthers) {
  AddChart();
  AddChart();
  Select({Seen(0).shape, Seen(1).shape});
  sheet->Shapes()->Item(2)->Delete();
  EXPECT_FALSE(HasDrawingsSelected());
  EXPECT_EQ(sheet->Shapes()->Count(), 1);
}

TEST_F(DrawnCharts, AreGoneWithTheirSheet) {
  const auto other = application->ActiveWorkbook()->Worksheets()->Add();
  const auto chart = AddChart()->Location(xlLocationAsObject, other->Name());
  chart->HasTitle(true);
  document->getSheets()->removeByName(calc::OfficeText("Sheet2"));
  EXPECT_EQ(NumberOf([&] { chart->HasTitle(); }), 1004);
  application->ScreenUpdating(false);
  EXPECT_EQ(NumberOf([&] { application->ScreenUpdating(true); }), 0);
  sheet->Range("A1")->Value(1.0);
  EXPECT_EQ(sheet->Range("A1")->Value(), Variant(1.0));
}

TEST_F(DrawnCharts, AreSelectedWithTheirHiddenSheetOnlyWhereNobodySeesIt) {
  const auto other = application->ActiveWorkbook()->Worksheets()->Add();
  sheet->Select();
  Properties(Sheet("Sheet2")).Set("IsVisible", false);
  EXPECT_EQ(NumberOf([&] { other->Select(); }), 1004);
  application->ScreenUpdating(false);
  other->Select();
  EXPECT_EQ(application->ActiveSheet()->Name(), "Sheet2");
  application->ScreenUpdating(true);
  EXPECT_EQ(application->ActiveSheet()->Name(), "Sheet1");
  EXPECT_FALSE(Properties(Sheet("Sheet2")).Get("IsVisible", true));
}

TEST_F(DrawnCharts, AreNeitherSelectedOnAHiddenSheetNorMovedThere) {
  const auto other = application->ActiveWorkbook()->Worksheets()->Add();
  const auto chart = AddChart();
  chart->Location(xlLocationAsObject, "Sheet2");
  other->Range("A1")->AddComment("x");
  sheet->Select();
  Properties(Sheet("Sheet2")).Set("IsVisible", false);
  ExpectRefusal(Refusals::HiddenSheetBroughtToFront(), [&] { other->Select(); });
  ExpectRefusal(Refusals::ChartOnAHiddenSheet(), [&] { other->Shapes()->Item(1)->Select(); });
  ExpectRefusal(Refusals::CommentOnAHiddenSheet(), [&] { other->Shapes()->Item(2)->Select(); });
  const auto second = AddChart();
  ExpectRefusal(Refusals::ChartToAHiddenSheet(), [&] { second->Location(xlLocationAsObject, "Sheet2"); });
}

TEST_F(DrawnCharts, AreDrawnAlsoWhereTheSheetThatWasSelectedIsGone) {
  const auto other = application->ActiveWorkbook()->Worksheets()->Add();
  sheet->Select();
  const auto chart = AddChart();
  application->ScreenUpdating(false);
  chart->HasTitle(true);
  other->Select();
  document->getSheets()->removeByName(calc::OfficeText("Sheet2"));
  EXPECT_EQ(NumberOf([&] { application->ScreenUpdating(true); }), 0);
  EXPECT_TRUE(Seen().Whole().Get("HasMainTitle", false));
}

TEST_F(DrawnCharts, ThatAPersonHasMadeAreFound) {
  AddChartOfAPerson();
  ASSERT_EQ(sheet->Shapes()->Count(), 1);
  const auto chart = sheet->Shapes()->Item(1)->Chart();
  EXPECT_EQ(chart->ChartType(), xlColumnClustered);
  EXPECT_EQ(chart->SeriesCollection(1)->Values().AsArray().UBound(), 8);
  EXPECT_NEAR(sheet->Shapes()->Item(1)->Top(), 144, 0.05);
  chart->SeriesCollection(1)->Values(sheet->Range("C3:C10"));
  EXPECT_EQ(CellsSeen(), "$Sheet1.$C$3:$C$10");
}

TEST_F(DrawnCharts, FollowRowsThatAPersonInserts) {
  const auto chart = AddChart();
  sheet->Range("B2")->Value(7.0);
  As<css::table::XColumnRowRange>(Sheet())->getRows()->insertByIndex(0, 3);
  EXPECT_EQ(chart->SeriesCollection(1)->Values().AsArray()(1), Variant(7.0));
}

TEST_F(DrawnCharts, AreNotPutOnASheetThatAPersonHasProtectedNorTakenOffIt) {
  const auto chart = AddChart();
  As<css::util::XProtectable>(Sheet())->protect("");
  EXPECT_EQ(NumberOf([&] { AddChart(); }), 1004);
  EXPECT_EQ(NumberOf([&] { sheet->Shapes()->Item(1)->Delete(); }), 1004);
  EXPECT_EQ(sheet->Shapes()->Count(), 1);
  chart->SeriesCollection(1)->Points(1)->MarkerBackgroundColorIndex(3);
  EXPECT_EQ(MarkerSeen(0).FillColor, kRed) << "it goes on showing the day";
}

TEST_F(DrawnCharts, LeaveTheStepsThatAPersonCanUndo) {
  sheet->Range("A1")->Value(1.0);
  const auto steps = As<css::document::XUndoManagerSupplier>(document)->getUndoManager();
  As<css::table::XColumnRowRange>(Sheet())->getRows()->insertByIndex(20, 1);
  const auto before = steps->getAllUndoActionTitles();
  ASSERT_TRUE(before.hasElements());
  const auto chart = AddChart();
  chart->HasTitle(true);
  sheet->Shapes()->Item(1)->Left(90);
  EXPECT_EQ(steps->getAllUndoActionTitles(), before);
}

TEST_F(DrawnCharts, AreSavedWithTheDocument) {
  const TempDirectory folder;
  sheet = application->ActiveWorkbook()->Worksheets()->Add();
  document->getSheets()->moveByName("Sheet2", 2);
  As<css::sheet::XSpreadsheetView>(As<css::frame::XModel>(document)->getCurrentController())
      ->setActiveSheet(Sheet());
  for (const double top : {0.0, 76.5}) {
    application->ScreenUpdating(false);  // so the sheet is behind
    const auto chart = AddChart();
    chart->HasTitle(true);
    chart->ChartTitle()->Text("Last");
    const auto shape = sheet->Shapes()->Item(chart->Index());
    shape->Left(200.25);
    shape->Top(top);
    shape->Height(76.5);
    shape->Width(150);
    chart->SeriesCollection(1)->Points(2)->MarkerBackgroundColorIndex(3);
    application->ActiveWorkbook()->Worksheets()->Item("Sheet1")->Select();
    application->ScreenUpdating(true);
  }
  sheet->Columns("B")->AutoFit();
  for (const std::string format : {"calc8", "Calc Office Open XML"}) {
    SCOPED_TRACE(format);
    const css::beans::PropertyValue filter("FilterName", 0, css::uno::Any(calc::OfficeText(format)),
                                           css::beans::PropertyState_DIRECT_VALUE);
    const auto url = calc::OfficeText("file://" + (folder / format).string());
    As<css::frame::XStorable>(document)->storeToURL(
        url, css::uno::Sequence<css::beans::PropertyValue>(&filter, 1));
    const auto again = calc::ApplicationOf(LiveOffice::Get().Context(), LiveOffice::Get().OpenBeside(url));
    const auto shapes = again->ActiveWorkbook()->Worksheets()->Item("Sheet2")->Shapes();
    ASSERT_EQ(shapes->Count(), 2);
    EXPECT_EQ(shapes->Item(2)->Name(), "Chart 2");
    EXPECT_NEAR(shapes->Item(2)->Top(), 76.5, 0.8);
    EXPECT_EQ(shapes->Item(2)->Chart()->ChartTitle()->Text(), "Last");
  }
}

}  // namespace
}  // namespace mirelo::testing
