#include "charts_on_sheet.h"

namespace mirelo::testing {
namespace {

using namespace host::excel;

class ChartOnSheet : public ChartedSheet {};

TEST_P(ChartOnSheet, IsSelectedWithItsSheetInFront) {
  const auto other = sheets->Add();
  const auto chart = AddChart();
  EXPECT_EQ(application->ActiveSheet()->Name(), "Sheet1");
  EXPECT_EQ(application->ActiveSheet()->Type(), xlSheetWorksheet);
  EXPECT_EQ(application->Selection()->TypeName(), "Shape");
  EXPECT_EQ(application->ActiveCell()->Address(), "$A$1");
  EXPECT_EQ(other->Shapes()->Count(), 0);
}

TEST_P(ChartOnSheet, StandsInTheMiddleOfWhatIsSeen) {
  const auto shape = ShapeOf(AddChart());
  const auto seen = application->ActiveWindow()->VisibleRange();
  EXPECT_EQ(shape->Width(), 360);
  EXPECT_EQ(shape->Height(), 216);
  EXPECT_NEAR(shape->Left() + shape->Width() / 2, seen->Width() / 2, 0.75);
  EXPECT_NEAR(shape->Top() + shape->Height() / 2, seen->Height() / 2, 0.75);
}

TEST_P(ChartOnSheet, IsNamedAfterItsSheetAndItsShape) {
  const auto chart = AddChart();
  EXPECT_EQ(chart->Name(), "Sheet1 Chart 1");
  EXPECT_EQ(chart->Parent()->TypeName(), "ChartObject") << "which stands between the sheet and the chart";
  EXPECT_EQ(SheetOf(chart)->Name(), "Sheet1");
  EXPECT_EQ(chart->Type(), xlSheetChart);
  sheet->Name("Quotes (ABC)");
  EXPECT_EQ(chart->Name(), "Quotes (ABC) Chart 1");
  EXPECT_EQ(NumberOf([&] { chart->Name("Other"); }), 1004);
}

TEST_P(ChartOnSheet, IsCountedAmongThoseOfItsSheet) {
  const auto first = AddChart();
  const auto second = AddChart();
  const auto other = sheets->Add();
  const auto elsewhere = AddChartSheet()->Location(xlLocationAsObject, other->Name());
  EXPECT_EQ(first->Index(), 1);
  EXPECT_EQ(second->Index(), 2);
  EXPECT_EQ(elsewhere->Index(), 1);
  EXPECT_EQ(elsewhere->Name(), other->Name() + " Chart 1");
  EXPECT_EQ(application->Charts()->Count(), 0) << "none of them is a sheet";
}

TEST_P(ChartOnSheet, LeavesTheObjectOfItsChartSheetGoodForNothing) {
  const auto before = AddChartSheet();
  before->HasTitle(true);
  const auto title = before->ChartTitle();
  const auto series = before->SeriesCollection(1);
  const auto now = before->Location(xlLocationAsObject, "Sheet1");
  EXPECT_EQ(NumberOf([&] { before->Name(); }), 1004);
  EXPECT_EQ(NumberOf([&] { before->Index(); }), 1004);
  EXPECT_EQ(NumberOf([&] { before->Select(); }), 1004);
  EXPECT_EQ(NumberOf([&] { before->Location(xlLocationAsObject, "Sheet1"); }), 1004);
  EXPECT_EQ(NumberOf([&] { title->Text(); }), 1004);
  EXPECT_EQ(NumberOf([&] { series->Values(); }), 1004);
  EXPECT_TRUE(now->HasTitle()) << "the chart itself is as it was";
}

TEST_P(ChartOnSheet, CanBeMovedToAnotherSheet) {
  const auto other = sheets->Add();
  CountByTens("B3", 5);
  const auto moved = AddChart()->Location(xlLocationAsObject, other->Name());
  EXPECT_EQ(Shapes()->Count(), 0);
  EXPECT_EQ(other->Shapes()->Count(), 1);
  EXPECT_EQ(SheetOf(moved)->Name(), other->Name());
  EXPECT_EQ(application->ActiveSheet()->Name(), other->Name());
  EXPECT_EQ(moved->SeriesCollection(1)->Values().AsArray()(1), Variant(10.0)) << "of the first sheet still";
}

TEST_P(ChartOnSheet, IsSelectedThroughTheChart) {
  const auto chart = AddChart();
  sheets->Add();
  chart->Select();
  EXPECT_EQ(application->ActiveSheet()->Name(), "Sheet1");
  EXPECT_EQ(application->Selection()->TypeName(), "Shape");
}

TEST_P(ChartOnSheet, RaisesErrorsInAllMembersOnceItIsGone) {
  const auto chart = AddChart();
  chart->HasTitle(true);
  chart->Axes(xlValue, xlPrimary)->HasMajorGridlines(true);
  const auto holder = std::dynamic_pointer_cast<ChartObject>(chart->Parent());
  const auto axis = chart->Axes(xlValue, xlPrimary);
  const auto labels = axis->TickLabels();
  const auto gridlines = axis->MajorGridlines();
  const auto plot = chart->PlotArea();
  const auto fill = chart->ChartArea()->Fill();
  const auto color = fill->ForeColor();
  const auto title = chart->ChartTitle();
  const auto series = chart->SeriesCollection(1);
  const auto point = series->Points(1);
  const auto line = point->Border();
  ShapeOf(chart)->Delete();
  const std::function<void()> calls[] = {
      [&] { chart->Name(); },
      [&] { chart->Parent(); },
      [&] { holder->Parent(); },
      [&] { chart->Index(); },
      [&] { chart->Select(); },
      [&] { chart->ChartType(); },
      [&] { chart->ChartType(xlLineMarkers); },
      [&] { chart->SetSourceData(*Range("A1"), xlColumns); },
      [&] { chart->Location(xlLocationAsObject, "Sheet1"); },
      [&] { chart->HasAxis(xlValue, xlPrimary); },
      [&] { chart->HasAxis(xlValue, xlPrimary, true); },
      [&] { chart->Axes(xlValue, xlPrimary); },
      [&] { chart->HasLegend(); },
      [&] { chart->HasLegend(false); },
      [&] { chart->HasTitle(); },
      [&] { chart->HasTitle(true); },
      [&] { chart->ChartTitle(); },
      [&] { chart->ChartArea(); },
      [&] { chart->PlotArea(); },
      [&] { chart->SeriesCollection(1); },
      [&] { axis->HasMajorGridlines(); },
      [&] { labels->AutoScaleFont(); },
      [&] { labels->Font(); },
      [&] { gridlines->Border(); },
      [&] { plot->Width(); },
      [&] { plot->Width(10); },
      [&] { plot->Border(); },
      [&] { plot->Fill(); },
      [&] { fill->Visible(); },
      [&] { fill->TwoColorGradient(msoGradientVertical, 1); },
      [&] { color->SchemeColor(); },
      [&] { title->Left(); },
      [&] { title->Top(1); },
      [&] { title->Interior(); },
      [&] { series->MarkerStyle(); },
      [&] { series->Values(Range("A1")); },
      [&] { point->MarkerBackgroundColorIndex(); },
      [&] { line->ColorIndex(3); },
  };
  int number = 0;
  for (const auto& call : calls) EXPECT_EQ(NumberOf(call), 1004) << "call " << number++;
}

class ChartKind : public ChartedSheet {};

TEST_P(ChartKind, IsALineWithMarkersOrColumns) {
  const auto chart = AddChart();
  EXPECT_EQ(chart->ChartType(), xlColumnClustered);
  chart->ChartType(xlLineMarkers);
  EXPECT_EQ(chart->ChartType(), 65);
  for (const std::int32_t other : {0, 4, 5, 52, -4120})
    EXPECT_EQ(NumberOf([&] { chart->ChartType(static_cast<XlChartType>(other)); }), 1004) << other;
  EXPECT_EQ(chart->ChartType(), xlLineMarkers);
}

class ChartSource : public ChartedSheet {};

TEST_P(ChartSource, GivesASeriesForEachColumn) {
  CountByTens("B3", 4);
  Put("C3:C6", 7.0);
  const auto chart = AddChart("B3:D6");
  EXPECT_EQ(chart->SeriesCollection(1)->Values().AsArray()(4), Variant(40.0));
  EXPECT_EQ(chart->SeriesCollection(2)->Values().AsArray()(4), Variant(7.0));
  EXPECT_TRUE(chart->SeriesCollection(3)->Values().AsArray()(4).IsEmpty());
  for (const std::int32_t index : {-1, 0, 4})
    EXPECT_EQ(NumberOf([&] { chart->SeriesCollection(index); }), 1004) << index;
}

TEST_P(ChartSource, KeepsTheLooksOfTheFirstSeriesWhenItIsSetAnew) {
  const auto chart = AddChart("B3:D6");
  chart->SeriesCollection(1)->MarkerSize(9);
  const auto third = chart->SeriesCollection(3);
  chart->SetSourceData(*Range("F1:F2"), xlColumns);
  EXPECT_EQ(chart->SeriesCollection(1)->MarkerSize(), 9);
  EXPECT_EQ(chart->SeriesCollection(1)->Values().AsArray().UBound(), 2);
  EXPECT_EQ(NumberOf([&] { chart->SeriesCollection(2); }), 1004);
  EXPECT_EQ(NumberOf([&] { third->MarkerSize(); }), 1004);
}

TEST_P(ChartSource, IsRefusedByRowsForManyColumnsAndFromOtherWorkbooks) {
  const auto chart = AddChart();
  EXPECT_EQ(NumberOf([&] { chart->SetSourceData(*Range("B3:B7"), xlRows); }), 1004);
  EXPECT_EQ(NumberOf([&] { chart->SetSourceData(*Range("A1:IV2"), xlColumns); }), 1004);
  EXPECT_EQ(NumberOf([&] { chart->SetSourceData(*Range("A1:IU2"), xlColumns); }), 0) << "255 columns";
  const auto other = GetParam().application();
  EXPECT_EQ(NumberOf([&] { chart->SetSourceData(*other->Range("A1"), xlColumns); }), 1004);
}

TEST_P(ChartSource, DoesNotBreakWhenItsSheetIsRenamed) {
  CountByTens("B3", 5);
  const auto chart = AddChart();
  sheet->Name("Dovanta2_Quotes(ABC)");
  EXPECT_EQ(chart->SeriesCollection(1)->Values().AsArray()(2), Variant(20.0));
}

class ChartLegend : public ChartedSheet {};

TEST_P(ChartLegend, IsThereUntilItIsTurnedOff) {
  const auto chart = AddChart();
  EXPECT_TRUE(chart->HasLegend());
  chart->HasLegend(false);
  EXPECT_FALSE(chart->HasLegend());
}

MIRELO_AGAINST_ALL(ChartOnSheet);
MIRELO_AGAINST_ALL(ChartKind);
MIRELO_AGAINST_ALL(ChartSource);
MIRELO_AGAINST_ALL(ChartLegend);

}  // namespace
}  // namespace mirelo::testing
