#include <gmock/gmock.h>

#include <algorithm>

#include "adapters/workbook/xlsx/workbook_reader.h"
#include "adapters/workbook/xlsx/workbook_writer.h"
#include "host/excel/border.h"
#include "host/excel/comment.h"
#include "host/excel/font.h"
#include "host/excel/format_conditions.h"
#include "host/excel/interior.h"
#include "host/excel/shape.h"
#include "workbook/chart_models.h"
#include "workbook/script.h"
#include "workbook/workbook_files.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::StartsWith;
using workbook::Spreadsheet;

// With another program, openpyxl, at the other end.
class Interchange : public WorkbookFiles {};

TEST_F(Interchange, AnotherProgramSeesTheQuoteTable) {
  auto spreadsheet = Spreadsheet::New();
  const auto sheet = BookOf(spreadsheet)->Worksheets()->Add();
  sheet->Name("Dovanta2_Quotes");
  sheet->Range("A1")->Value("SnapShot( 60 sec)");
  sheet->Range("A2:D2")->Value(VariantArray::OfTexts({"Ticker", "Last", "Date", "Change"}));
  sheet->Range("A2:D2")->Font()->Bold(true);
  sheet->Range("A2:D2")->Font()->ColorIndex(2);
  sheet->Range("A2:D2")->Interior()->ColorIndex(11);
  sheet->Range("A2:D2")->HorizontalAlignment(host::excel::xlHAlignCenter);
  sheet->Range("B3:B4")->NumberFormat("0.00");
  sheet->Range("C3:C4")->NumberFormat("mm/dd/yyyy");
  sheet->Range("A3")->Value("MSFT");
  sheet->Range("B3")->Value("28.35");
  sheet->Range("C3")->Value("1/20/2011");
  sheet->Range("D3")->Value("-5%");
  sheet->Range("A4")->Value("=IBM");
  sheet->Range("A4:A5")->Interior()->ColorIndex(36);
  sheet->Range("B4")->Value("#N/A");
  sheet->Range("C4")->Value(true);
  sheet->Range("A:A")->AutoFit();
  sheet->Range("A2:B2")->Borders(host::excel::xlEdgeBottom)->Weight(host::excel::xlMedium);
  sheet->Range("A2:B2")->Borders(host::excel::xlEdgeBottom)->ColorIndex(16);
  sheet->Range("B2")->AddComment("Charts (Last & Volume)");
  const auto conditions = sheet->Range("D3:D9")->FormatConditions();
  conditions->Add(host::excel::xlCellValue, host::excel::xlGreater, "0")->Font()->ColorIndex(10);
  conditions->Add(host::excel::xlCellValue, host::excel::xlLess, "0")->Font()->ColorIndex(3);
  spreadsheet.Save(File());

  EXPECT_THAT(RunScript("check_with_openpyxl.py", File()),
              ElementsAre("active\tDovanta2_Quotes", "sheet\tDovanta2_Quotes",
                          "A1\ts\t'SnapShot( 60 sec)'\tGeneral\t-\t-\t-\tgeneral",
                          "A2\ts\t'Ticker'\tGeneral\tbold\tFFFFFFFF\tFF000080\tcenter",
                          "border\tA2\tbottom=medium,FF808080",
                          "B2\ts\t'Last'\tGeneral\tbold\tFFFFFFFF\tFF000080\tcenter",
                          "border\tB2\tbottom=medium,FF808080", "comment\tB2\t'Charts (Last & Volume)'",
                          "C2\ts\t'Date'\tGeneral\tbold\tFFFFFFFF\tFF000080\tcenter",
                          "D2\ts\t'Change'\tGeneral\tbold\tFFFFFFFF\tFF000080\tcenter",
                          "A3\ts\t'MSFT'\tGeneral\t-\t-\t-\tgeneral",                                   //
                          "B3\tn\t28.35\t0.00\t-\t-\t-\tgeneral",                                       //
                          "C3\td\tdatetime.datetime(2011, 1, 20, 0, 0)\tmm/dd/yyyy\t-\t-\t-\tgeneral",  //
                          "D3\tn\t-0.05\t0%\t-\t-\t-\tgeneral",                                         //
                          "A4\ts\t'=IBM'\tGeneral\t-\t-\tFFFFFF99\tgeneral",                            //
                          "B4\ts\t'#N/A'\t0.00\t-\t-\t-\tgeneral",                                      //
                          "C4\tb\tTrue\tmm/dd/yyyy\t-\t-\t-\tgeneral",                                  //
                          "A5\tn\tNone\tGeneral\t-\t-\tFFFFFF99\tgeneral",                              //
                          "rule\tD3:D9\tcellIs\tgreaterThan\t0\tFF008000",
                          "rule\tD3:D9\tcellIs\tlessThan\t0\tFFFF0000",  //
                          StartsWith("width\tA\t"), "sheet\tSheet1"));
}

TEST_F(Interchange, ReadsWhatAnotherProgramWrote) {
  EXPECT_THAT(RunScript("write_with_openpyxl.py", File()), ElementsAre());
  const auto spreadsheet = Spreadsheet::Open(File());
  const auto sheets = BookOf(spreadsheet)->Worksheets();
  ASSERT_EQ(sheets->Count(), 3);
  EXPECT_EQ(SheetOf(spreadsheet)->Name(), "Second");
  EXPECT_EQ(sheets->Item("Second")->Range("C3")->Value(), Variant("there"));

  const auto sheet = sheets->Item("Quotes");
  EXPECT_EQ(sheet->Range("A1")->Value(), Variant("SnapShot( 60 sec)"));
  EXPECT_EQ(sheet->Range("A2")->Text(), "28.35");
  EXPECT_EQ(sheet->Range("A3")->Text(), "2011-01-20 8:36:13");
  EXPECT_EQ(sheet->Range("A4")->Value(), Variant(true));
  EXPECT_EQ(sheet->Range("A5")->Value(), Variant("Übergröße €"));
  EXPECT_TRUE(sheet->Range("A6")->Value().IsEmpty()) << "a formula that nobody computed";
  EXPECT_EQ(sheet->Range("A7")->Value().ToDate().serial, 61.0);
  EXPECT_EQ(sheet->Range("B1")->Font()->Bold(), Variant(true));
  EXPECT_EQ(sheet->Range("B1")->Font()->ColorIndex(), Variant(3));
  EXPECT_EQ(sheet->Range("B1")->Interior()->ColorIndex(), Variant(15));
  EXPECT_EQ(sheet->Range("B1")->HorizontalAlignment(), Variant(-4108));
  EXPECT_EQ(sheet->Range("B1")->Borders(host::excel::xlEdgeBottom)->Weight(), Variant(-4138));
  EXPECT_EQ(sheet->Range("B1")->Borders(host::excel::xlEdgeBottom)->ColorIndex(), Variant(16));
  EXPECT_EQ(sheet->Range("B1")->Comment()->Text(), "Charts (Last & Volume)");
  EXPECT_EQ(sheet->Range("B1")->Comment()->Shape()->Height(), 24);
  EXPECT_EQ(sheet->Range("B1")->Comment()->Shape()->Width(), 141.75);
  EXPECT_EQ(sheet->Range("B2")->Comment()->Text(), "plain");
  const auto conditions = sheet->Range("D3:D9")->FormatConditions();
  ASSERT_EQ(conditions->Count(), 2);
  EXPECT_EQ(conditions->Item(1)->Font()->ColorIndex(), Variant(10));
  EXPECT_EQ(conditions->Item(2)->Font()->ColorIndex(), Variant(3));
  EXPECT_THAT(
      AllLosses(spreadsheet),
      ElementsAre(
          "Sheet \"Quotes\": not kept: formulas that are not calculated (cells: 1), which leave nothing.",
          "Sheet \"Quotes\": not kept: conditional formats other than comparisons with a value (rules: "
          "1).",
          "Sheet \"Charts\": not kept of the chart \"Last\": tick marks.",
          "Sheet \"Charts\": not kept of the chart \"Chart 2\": tick marks.",
          "Sheet \"Charts\": not kept: the chart \"Shares\", of the type \"pieChart\"."));
}

TEST_F(Interchange, AnotherProgramSeesCharts) {
  const auto book = BookWithHistory(5);
  const auto& sheet = book->sheets.front();
  AddTickerCharts(sheet, 5);
  sheet->charts.all.back()->series.front().points.clear();
  book->AddChartSheet();
  workbook::WriteWorkbook(*book, File());

  std::vector<std::string> lines = RunScript("check_with_openpyxl.py", File());
  lines.erase(lines.begin(), std::find_if(lines.begin(), lines.end(), [](const std::string& line) {
                return line.starts_with("chart\t");
              }));
  EXPECT_THAT(lines, ElementsAre("chart\tLineChart\tLast\t5,0",
                                 "series\t'Quotes_Vertical(MSFT)'!$D$3:$D$7\tdiamond,6\t-\t-\t-",
                                 "values\t28.35,28.35,28.4,28.52,28.47",  //
                                 "point\t0\tC0C0C0\t808080\t808080",      //
                                 "point\t1\tC0C0C0\t808080\t808080",      //
                                 "point\t2\t00FF00\t008000\t008000",      //
                                 "point\t3\t00FF00\t008000\t008000",      //
                                 "point\t4\tFF0000\t993300\t993300",      //
                                 "chart\tBarChart\tLastVolume\t5,5",
                                 "series\t'Quotes_Vertical(MSFT)'!$E$3:$E$7\t-\t-\t-\t-",
                                 "values\t100,800,400,1100,700", "chart sheet\tChart1"));
}

TEST_F(Interchange, ReadsChartsThatAnotherProgramWrote) {
  EXPECT_THAT(RunScript("write_with_openpyxl.py", File()), ElementsAre());
  const std::string bytes = BytesOf(File());
  const auto book = workbook::ReadWorkbook(bytes, {}).book;
  const auto sheet = book->FindSheet("Charts");
  ASSERT_EQ(sheet->charts.all.size(), 2u);

  const Chart& line = *sheet->charts.all[0];
  EXPECT_EQ(line.kind, &workbook::kLineKind);
  EXPECT_EQ(line.place.left, 5 * 48);
  EXPECT_EQ(line.place.top, 15);
  EXPECT_NEAR(line.place.width, 15 / 2.54 * 72, 0.01) << "15 cm";
  EXPECT_NEAR(line.place.height, 7.5 / 2.54 * 72, 0.01);
  EXPECT_EQ(line.placement, 2) << "it moves with the cell that it hangs on";
  EXPECT_EQ(line.title->text, "Last");
  EXPECT_FALSE(line.legend);
  ASSERT_EQ(line.series.size(), 1u);
  const workbook::ChartSeries& series = line.series.front();
  EXPECT_EQ(series.values, (spreadsheet::Area{3, 4, 9, 4}));
  EXPECT_EQ(series.sheet.lock(), sheet);
  EXPECT_EQ(series.line, (workbook::ChartLine{workbook::Look::Own, 1, -4138, 0x993300}));
  EXPECT_EQ(series.marker, 2);
  EXPECT_EQ(series.marker_size, 6);
  EXPECT_EQ(series.background, (workbook::PointColor{workbook::Look::Own, 0x00FF00}));
  EXPECT_EQ(series.foreground, (workbook::PointColor{workbook::Look::Own, 0x008000}));
  ASSERT_EQ(series.points.size(), 3u);
  EXPECT_EQ(series.points[1], workbook::ChartPoint());
  EXPECT_EQ(series.points[2].line.color, 0xFF0000);
  EXPECT_EQ(series.points[2].background.color, 0x0000FF);
  EXPECT_EQ(series.points[2].foreground.color, 0x000080);

  const Chart& columns = *sheet->charts.all[1];
  EXPECT_EQ(columns.kind, &workbook::kColumnKind);
  EXPECT_EQ(columns.place.top, 19 * 15);
  EXPECT_FALSE(columns.title.has_value());
  EXPECT_TRUE(columns.legend);
}

}  // namespace
}  // namespace mirelo::testing
