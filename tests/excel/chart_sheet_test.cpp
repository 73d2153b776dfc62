#include "charts_on_sheet.h"

namespace mirelo::testing {
namespace {

using namespace host::excel;

class ChartSheets : public ChartedSheet {};

TEST_P(ChartSheets, AreNoneAtFirst) {
  EXPECT_EQ(application->Charts()->Count(), 0);
  EXPECT_EQ(book->Charts()->Count(), 0);
  EXPECT_EQ(application->Charts()->TypeName(), "Sheets");
}

TEST_P(ChartSheets, ComeToTheFrontWhenTheyAreNew) {
  const auto chart = application->Charts()->Add();
  EXPECT_EQ(chart->Name(), "Chart1");
  EXPECT_EQ(chart->TypeName(), "Chart");
  EXPECT_EQ(chart->Type(), xlSheetChart);
  EXPECT_EQ(chart->ChartType(), xlColumnClustered);
  EXPECT_EQ(NumberOf([&] { chart->SeriesCollection(1); }), 1004) << "it is empty";
  EXPECT_EQ(application->ActiveSheet()->Name(), "Chart1");
  EXPECT_EQ(application->ActiveSheet()->Type(), xlSheetChart);
  EXPECT_EQ(book->ActiveSheet()->Name(), "Chart1");
}

TEST_P(ChartSheets, AreNotAmongTheWorksheets) {
  application->Charts()->Add();
  EXPECT_EQ(sheets->Count(), 1);
  EXPECT_EQ(NumberOf([&] { sheets->Item("Chart1"); }), 9);
  EXPECT_EQ(sheet->Index(), 1);
}

TEST_P(ChartSheets, AreFoundByTheirPlaceAndTheirName) {
  application->Charts()->Add();
  const auto second = application->Charts()->Add();
  EXPECT_EQ(second->Name(), "Chart2");
  EXPECT_EQ(second->Index(), 2);
  EXPECT_EQ(book->Charts()->Count(), 2);
  EXPECT_EQ(application->Charts()->Item(1)->Name(), "Chart1");
  EXPECT_EQ(application->Charts()->Item("CHART2")->Index(), 2);
  for (const std::int32_t index : {-1, 0, 3})
    EXPECT_EQ(NumberOf([&] { application->Charts()->Item(index); }), 9) << index;
  EXPECT_EQ(NumberOf([&] { application->Charts()->Item("Sheet1"); }), 9);
}

TEST_P(ChartSheets, AreFoundAmongAllSheets) {
  application->Charts()->Add();
  EXPECT_EQ(book->Sheets("chart1")->Type(), xlSheetChart);
  EXPECT_EQ(book->Sheets("sheet1")->Type(), xlSheetWorksheet);
  EXPECT_EQ(NumberOf([&] { book->Sheets("Sheet2"); }), 9);
  EXPECT_EQ(NumberOf([&] { book->Sheets(""); }), 9);
}

TEST_P(ChartSheets, HaveNoCells) {
  application->Charts()->Add();
  EXPECT_EQ(application->ActiveCell(), nullptr);
  EXPECT_EQ(application->Selection(), nullptr);
  EXPECT_EQ(NumberOf([&] { application->Range("A1"); }), 1004);
  EXPECT_EQ(NumberOf([&] { application->Cells(); }), 1004);
  EXPECT_EQ(NumberOf([&] { application->Cells(1, 1); }), 1004);
  EXPECT_EQ(NumberOf([&] { application->ActiveWindow()->VisibleRange(); }), 1004);
  EXPECT_EQ(NumberOf([&] { Range("A1")->Select(); }), 1004) << "the worksheet is behind";
}

TEST_P(ChartSheets, GoBehindWhenAWorksheetIsSelectedAndComeBack) {
  Range("C3")->Select();
  const auto chart = application->Charts()->Add();
  sheet->Select();
  EXPECT_EQ(application->ActiveSheet()->Name(), "Sheet1");
  EXPECT_EQ(application->ActiveCell()->Address(), "$C$3");
  chart->Select();
  EXPECT_EQ(application->ActiveSheet()->Name(), "Chart1");
  sheets->Add();
  EXPECT_EQ(application->ActiveSheet()->Name(), "Sheet2") << "a new worksheet comes to the front, too";
}

TEST_P(ChartSheets, ShareTheirNamesWithTheWorksheets) {
  const auto chart = application->Charts()->Add();
  EXPECT_EQ(NumberOf([&] { chart->Name("SHEET1"); }), 1004);
  EXPECT_EQ(NumberOf([&] { sheet->Name("chart1"); }), 1004);
  EXPECT_EQ(NumberOf([&] { chart->Name("a:b"); }), 1004);
  EXPECT_EQ(chart->Name(), "Chart1");
  EXPECT_EQ(sheet->Name(), "Sheet1");
  chart->Name("CHART1");
  EXPECT_EQ(chart->Name(), "CHART1") << "its own name in other letters";
  chart->Name("Sheet2");
  EXPECT_EQ(application->ActiveSheet()->Name(), "Sheet2");
  EXPECT_EQ(sheets->Add()->Name(), "Sheet3");
}

TEST_P(ChartSheets, AreNamedByANumberThatIsFree) {
  sheet->Name("Chart1");
  EXPECT_EQ(application->Charts()->Add()->Name(), "Chart2");
}

TEST_P(ChartSheets, LieInTheWorkbook) {
  const auto chart = application->Charts()->Add();
  const auto parent = std::dynamic_pointer_cast<Workbook>(chart->Parent());
  ASSERT_NE(parent, nullptr);
  EXPECT_EQ(parent->Name(), book->Name());
}

TEST_P(ChartSheets, PlotCellsOfAWorksheet) {
  CountByTens("B3", 5);
  const auto values = AddChartSheet()->SeriesCollection(1)->Values();
  ASSERT_EQ(values.AsArray().UBound(), 5);
  EXPECT_EQ(values.AsArray()(5), Variant(50.0));
}

TEST_P(ChartSheets, AreGoneOnceTheirChartLiesOnAWorksheet) {
  const auto chart = AddChartSheet();
  const auto other = application->Charts()->Add();
  chart->Location(xlLocationAsObject, "sheet1");
  EXPECT_EQ(application->Charts()->Count(), 1);
  EXPECT_EQ(other->Index(), 1);
  EXPECT_EQ(application->ActiveSheet()->Name(), "Sheet1");
  EXPECT_EQ(NumberOf([&] { book->Sheets("Chart1"); }), 9);
}

TEST_P(ChartSheets, StayWhenTheirChartCannotBeMoved) {
  const auto chart = AddChartSheet();
  EXPECT_EQ(NumberOf([&] { chart->Location(xlLocationAsNewSheet, "Sheet1"); }), 1004);
  EXPECT_EQ(NumberOf([&] { chart->Location(xlLocationAsObject, "Sheet2"); }), 9);
  EXPECT_EQ(NumberOf([&] { chart->Location(xlLocationAsObject, "Chart1"); }), 9) << "no worksheet";
  EXPECT_EQ(application->ActiveSheet()->Name(), "Chart1");
  EXPECT_EQ(chart->Index(), 1);
  EXPECT_EQ(Shapes()->Count(), 0);
}

MIRELO_AGAINST_ALL(ChartSheets);

}  // namespace
}  // namespace mirelo::testing
