#include "seeds.h"

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "adapters/workbook/spreadsheet.h"
#include "adapters/workbook/xlsx/workbook_writer.h"
#include "host/excel/border.h"
#include "host/excel/comment.h"
#include "host/excel/font.h"
#include "host/excel/format_conditions.h"
#include "host/excel/interior.h"
#include "host/excel/range.h"
#include "host/excel/shape.h"
#include "host/excel/workbook.h"
#include "host/excel/worksheet.h"
#include "host/excel/worksheets.h"
#include "workbook/chart_models.h"

namespace mirelo::fuzzing {

namespace {

using testing::InsertBehind;
using testing::Parts;
using testing::ReplaceIn;
using testing::SmallWorkbook;

Parts QuoteTable() {
  auto spreadsheet = workbook::Spreadsheet::New();
  const auto sheet = spreadsheet.Application()->ActiveWorkbook()->Worksheets()->Add();
  sheet->Name("Dovanta2_Quotes");
  sheet->Range("A1")->Value("SnapShot( 60 sec)");
  sheet->Range("A2:C2")->Value(VariantArray::OfTexts({"Ticker", "Last", "Date"}));
  sheet->Range("A2:C2")->Font()->Bold(true);
  sheet->Range("A2:C2")->Interior()->ColorIndex(15);
  sheet->Range("A3")->Value("MSFT");
  sheet->Range("B3")->Value(28.35);
  sheet->Range("C3")->Value("1/20/2011 8:36");
  sheet->Range("A4:B4")->Value("#N/A");
  sheet->Range("C4")->Value(true);
  sheet->Range("D:E")->NumberFormat("0.00");
  sheet->Range("6:6")->HorizontalAlignment(host::excel::xlHAlignCenter);
  sheet->Range("A:C")->AutoFit();
  sheet->Range("A2:C4")->Borders(host::excel::xlInsideVertical)->ColorIndex(15);
  sheet->Range("A2:C4")->Borders(host::excel::xlEdgeTop)->Weight(host::excel::xlMedium);
  sheet->Range("B2")->AddComment("Charts (Last & Volume)")->Shape()->ScaleWidth(1.48, host::excel::msoFalse);
  const auto conditions = sheet->Range("B3:B9")->FormatConditions();
  conditions->Add(host::excel::xlCellValue, host::excel::xlGreater, "0")->Font()->ColorIndex(10);
  conditions->Add(host::excel::xlCellValue, host::excel::xlLess, "0")->Font()->Bold(true);
  sheet->Range("B3:C4")->Select();

  const auto file =
      std::filesystem::temp_directory_path() / ("fuzz-seed-" + std::to_string(getpid()) + ".xlsx");
  spreadsheet.Save(file);
  std::ifstream in(file, std::ios::binary);
  const std::string bytes(std::istreambuf_iterator<char>(in), {});
  std::filesystem::remove(file);
  return testing::Unzip(bytes);
}

Parts EveryKindOfCell() {
  return SmallWorkbook(
      R"(<row r="1" s="3" customFormat="1" ht="20" customHeight="1"><c r="A1" s="2" t="s"><v>0</v></c><c r="B1"><v>1</v></c>)"
      R"(<c r="C1" t="b"><v>1</v></c><c r="D1" t="e"><v>#DIV/0!</v></c><c r="E1" t="str"><f>A1</f><v>x_x000D_</v></c></row>)"
      R"(<row r="3" hidden="1"><c r="A3" t="inlineStr"><is><r><rPr><b/></rPr><t xml:space="preserve"> a </t></r></is></c>)"
      R"(<c r="B3" s="1" t="d"><v>2011-01-20T08:36:13.5Z</v></c><c><v>-1.5E-3</v></c></row>)");
}

Parts EveryKindOfLook() {
  Parts parts =
      SmallWorkbook(R"(<row r="2"><c r="B2" s="1"><v>60</v></c><c r="C2" s="3"><v>0.5</v></c></row>)");
  std::string& styles = parts["xl/styles.xml"];
  InsertBehind(styles, "spreadsheetml/2006/main\">",
               R"(<numFmts><numFmt numFmtId="164" formatCode="[Red]+ 0.00;&quot;x&quot;- #,##0%;0E+00"/>)"
               R"(<numFmt numFmtId="14" formatCode="[h]:mm:ss.00 AM/PM dddd"/></numFmts>)");
  ReplaceIn(styles, "numFmtId=\"2\"", "numFmtId=\"164\"");
  InsertBehind(styles, "<fonts>",
               R"(<font><i/><u val="double"/><sz val="9"/><color theme="4" tint="-0.25"/></font>)");
  InsertBehind(styles, "<borders>",
               R"(<border diagonalUp="1"><left style="thin"><color indexed="10"/></left></border>)");
  ReplaceIn(parts["xl/workbook.xml"], "<workbookPr/>", "<workbookPr date1904=\"1\"/>");
  ReplaceIn(
      parts[testing::kSheetPart], "<sheetData>",
      R"(<sheetViews><sheetView><pane ySplit="1" state="frozen"/></sheetView></sheetViews><sheetFormatPr )"
      R"(defaultColWidth="9"/><cols><col min="2" max="3" width="12.5" style="2" hidden="1"/></cols><sheetData>)");
  InsertBehind(parts[testing::kSheetPart], "</sheetData>",
               R"(<mergeCells><mergeCell ref="A1:B1"/></mergeCells>)");
  InsertBehind(parts["xl/workbook.xml"], "<sheets>",
               R"(<sheet name="Hidden" sheetId="2" state="hidden" r:id="rId1"/>)");
  return parts;
}

Parts CommentsAndConditions() {
  Parts parts = SmallWorkbook(R"(<row r="1"><c r="A1"><v>-1</v></c></row>)");
  parts["xl/comments1.xml"] =
      R"(<comments><authors><author>A. Person</author></authors><commentList><comment ref="A1" authorId="0"><text>)"
      R"(<r><rPr><b/><sz val="9"/><rFont val="Arial"/></rPr><t>one_x000A_</t></r><r><t xml:space="preserve"> two</t>)"
      R"(</r></text></comment><comment ref="B3" authorId="0"><text><t>x</t></text></comment></commentList></comments>)";
  parts["xl/drawings/vmlDrawing1.vml"] =
      R"(<xml xmlns:v="urn:v" xmlns:x="urn:x"><v:shape style="width:108pt;height:2in" fillcolor="#ccffcc">)"
      R"(<x:ClientData ObjectType="Note"><x:Row>0</x:Row><x:Column>0</x:Column><x:Visible/></x:ClientData></v:shape>)"
      R"(<v:shape style="width:5cm"><x:ClientData ObjectType="Button"/></v:shape></xml>)";
  parts["xl/worksheets/_rels/sheet1.xml.rels"] =
      R"(<Relationships><Relationship Id="c" Type="http://x/comments" Target="../comments1.xml"/>)"
      R"(<Relationship Id="v" Type="http://x/vmlDrawing" Target="../drawings/vmlDrawing1.vml"/></Relationships>)";
  ReplaceIn(
      parts[testing::kSheetPart], "<sheetData>",
      R"(<sheetViews><sheetView><selection activeCell="B2" sqref="A1 B2:C3"/></sheetView></sheetViews><sheetData>)");
  InsertBehind(
      parts[testing::kSheetPart], "</sheetData>",
      R"(<conditionalFormatting sqref="A1:B9 D:D"><cfRule type="cellIs" dxfId="0" priority="2" )"
      R"(operator="between" stopIfTrue="1"><formula>1</formula><formula>"x"</formula></cfRule><cfRule )"
      R"(type="expression" priority="1"><formula>A1&gt;0</formula></cfRule></conditionalFormatting>)");
  InsertBehind(
      parts["xl/styles.xml"], "</cellXfs>",
      R"(<dxfs><dxf><font><b/><color rgb="FFFF0000"/></font><numFmt numFmtId="2" formatCode="0.00"/><fill>)"
      R"(<patternFill><bgColor rgb="FFFFFF00"/></patternFill></fill><border><left style="thin"/></border>)"
      R"(</dxf></dxfs>)");
  return parts;
}

Parts PartsOfSaved(const workbook::Book& book) {
  const auto file =
      std::filesystem::temp_directory_path() / ("fuzz-seed-" + std::to_string(getpid()) + ".xlsx");
  workbook::WriteWorkbook(book, file);
  std::ifstream in(file, std::ios::binary);
  const std::string bytes(std::istreambuf_iterator<char>(in), {});
  std::filesystem::remove(file);
  return testing::Unzip(bytes);
}

Parts TickerCharts() {
  const auto book = testing::BookWithHistory(6);
  testing::AddTickerCharts(book->sheets.front(), 6);
  book->AddChartSheet()->series.push_back(book->sheets.front()->charts.all.front()->series.front());
  return PartsOfSaved(*book);
}

// A chart as other programs write it, with much that is lost.
Parts ForeignChart() {
  Parts parts = SmallWorkbook(R"(<row r="1"><c r="A1"><v>1</v></c></row>)");
  parts["xl/worksheets/_rels/sheet1.xml.rels"] =
      R"(<Relationships><Relationship Id="d" Type="http://x/drawing" Target="../drawings/drawing1.xml"/></Relationships>)";
  parts["xl/drawings/_rels/drawing1.xml.rels"] =
      R"(<Relationships><Relationship Id="rId1" Type="http://x/chart" Target="../charts/chart1.xml"/></Relationships>)";
  parts["xl/drawings/drawing1.xml"] =
      R"(<d:wsDr xmlns:d="urn:d" xmlns:a="urn:a" xmlns:c="urn:c" xmlns:r="urn:r"><d:oneCellAnchor><d:from>)"
      R"(<d:col>1</d:col><d:colOff>9525</d:colOff><d:row>2</d:row><d:rowOff>0</d:rowOff></d:from><d:ext cx="2540000" )"
      R"(cy="965200"/><d:graphicFrame><d:nvGraphicFramePr><d:cNvPr id="2" name="Chart 1" descr="x"/></d:nvGraphicFramePr>)"
      R"(<a:graphic><a:graphicData><c:chart r:id="rId1"/></a:graphicData></a:graphic></d:graphicFrame></d:oneCellAnchor>)"
      R"(<d:absoluteAnchor><d:pos x="0" y="0"/><d:ext cx="9" cy="9"/><d:sp/></d:absoluteAnchor></d:wsDr>)";
  parts["xl/charts/chart1.xml"] =
      R"(<c:chartSpace xmlns:c="urn:c" xmlns:a="urn:a"><c:chart><c:title><c:tx><c:rich><a:bodyPr rot="0"/><a:p><a:pPr>)"
      R"(<a:defRPr sz="1400" b="0"><a:solidFill><a:schemeClr val="accent1"><a:lumMod val="65000"/></a:schemeClr></a:solidFill>)"
      R"(<a:latin typeface="Arial"/></a:defRPr></a:pPr><a:r><a:t>Two</a:t></a:r><a:br/><a:r><a:rPr i="1"/><a:t>lines</a:t>)"
      R"(</a:r></a:p></c:rich></c:tx><c:layout><c:manualLayout><c:xMode val="edge"/><c:x val="0.25"/></c:manualLayout></c:layout>)"
      R"(<c:overlay val="1"/></c:title><c:plotArea><c:layout><c:manualLayout><c:layoutTarget val="outer"/><c:xMode val="edge"/>)"
      R"(<c:yMode val="edge"/><c:x val="0"/><c:y val="0"/><c:w val="1"/><c:h val="0.5"/></c:manualLayout></c:layout><c:lineChart>)"
      R"(<c:grouping val="standard"/><c:ser><c:idx val="0"/><c:tx><c:v>n</c:v></c:tx><c:spPr><a:ln w="28575"><a:solidFill>)"
      R"(<a:sysClr val="window" lastClr="FFFFFF"/></a:solidFill><a:prstDash val="dash"/></a:ln></c:spPr><c:marker>)"
      R"(<c:symbol val="star"/><c:size val="9"/><c:spPr><a:noFill/></c:spPr></c:marker><c:dPt><c:idx val="3"/><c:spPr><a:ln>)"
      R"(<a:noFill/></a:ln></c:spPr></c:dPt><c:dLbls><c:showVal val="1"/></c:dLbls><c:val><c:numRef><c:f>Prices!$A$1:$A$5</c:f>)"
      R"(</c:numRef></c:val><c:smooth val="1"/></c:ser><c:marker val="1"/></c:lineChart><c:dateAx><c:delete val="1"/></c:dateAx>)"
      R"(<c:valAx><c:majorGridlines/><c:txPr><a:p><a:pPr><a:defRPr sz="800"/></a:pPr></a:p></c:txPr></c:valAx><c:spPr>)"
      R"(<a:gradFill><a:gsLst><a:gs pos="0"><a:srgbClr val="112233"/></a:gs><a:gs pos="50000"><a:srgbClr val="445566"/></a:gs>)"
      R"(<a:gs pos="100000"><a:srgbClr val="112233"/></a:gs></a:gsLst><a:lin ang="16200000"/></a:gradFill><a:effectLst>)"
      R"(<a:outerShdw/></a:effectLst></c:spPr></c:plotArea><c:legend><c:legendPos val="b"/></c:legend></c:chart><c:txPr><a:p>)"
      R"(<a:pPr><a:defRPr sz="1200"/></a:pPr></a:p></c:txPr></c:chartSpace>)";
  return parts;
}

// Sheets that are kept as they stand: names of their own, prefixes, a table, a chart sheet, a picture.
Parts SheetsOfAPerson() {
  Parts parts = SmallWorkbook(
      R"(<row r="1"><c r="A1" s="2" t="s"><v>0</v></c><c r="B1"><f>Rate</f><v>1</v></c></row>)"
      R"(<row r="2"><c r="A2"><f t="shared" ref="A2:A3" si="0">Two!B2+'Two:Prices'!$A1</f><v>2</v></c>)"
      R"(<c r="B2" t="str"><f t="array" ref="B2:B3">SUMIF(A1:A3,"x",Prices!C:C)</f><v>x</v></c></row>)"
      R"(<row r="3"><c r="A3"><f t="shared" si="0"/><v>3</v></c><c r="B3" t="e"><v>#N/A</v></c></row>)"
      R"(<row r="4"><c r="A4"><f t="dataTable" ref="A4:A5" r1="A1"/><v>4</v></c></row>)"
      R"(<row r="5"><c r="A5"><v>5</v></c><c r="B5" t="b"><f>T[[#This Row],[a]]&amp;[1]X!A1&amp;OFFSET(A1,1,1)</f><v>1</v></c></row>)");
  InsertBehind(parts[testing::kSheetPart], "</sheetData>",
               R"(<mergeCells><mergeCell ref="A1:B1"/></mergeCells><drawing r:id="d"/>)");
  ReplaceIn(parts[testing::kSheetPart], "<sheetData>",
            R"(<sheetViews><sheetView tabSelected='1' workbookViewId="0"/></sheetViews><sheetData>)");
  InsertBehind(
      parts["xl/workbook.xml"], R"(r:id="rId1"/>)",
      R"(<sheet name="Two" sheetId="7" r:id="rId8" state="veryHidden"/><sheet name="Chart1" sheetId="3" r:id="rId9"/>)");
  InsertBehind(
      parts["xl/workbook.xml"], "</sheets>",
      R"(<definedNames><definedName name="Rate">Prices!$A$1</definedName><definedName name="_xlnm.Print_Area" )"
      R"(localSheetId="1">Two!$A$1</definedName></definedNames>)");
  InsertBehind(parts["xl/_rels/workbook.xml.rels"], "package/2006/relationships\">",
               R"(<Relationship Id="rId8" Type="http://x/worksheet" Target="/xl/worksheets/sheet2.xml"/>)"
               R"(<Relationship Id="rId9" Type="http://x/chartsheet" Target="chartsheets/sheet1.xml"/>)");
  parts["xl/worksheets/sheet2.xml"] =
      R"(<x:worksheet xmlns:x="http://schemas.openxmlformats.org/spreadsheetml/2006/main"><x:sheetData/></x:worksheet>)";
  parts["xl/chartsheets/sheet1.xml"] =
      R"(<chartsheet><sheetViews><sheetView tabSelected="1"/></sheetViews></chartsheet>)";
  parts["xl/worksheets/_rels/sheet1.xml.rels"] =
      R"(<Relationships><Relationship Id="d" Type="http://x/drawing" Target="../drawings/drawing1.xml"/>)"
      R"(<Relationship Id="t" Type="http://x/table" Target="../tables/table1.xml"/></Relationships>)";
  parts["xl/drawings/drawing1.xml"] = R"(<w><twoCellAnchor><pic/></twoCellAnchor></w>)";
  parts["xl/drawings/_rels/drawing1.xml.rels"] =
      R"(<Relationships><Relationship Id="i" Type="http://x/image" Target="../media/image1.png"/></Relationships>)";
  parts["xl/media/image1.png"] = "picture";
  parts["xl/tables/table1.xml"] = R"(<table name="T" displayName="T" ref="C1:C5"/>)";
  return parts;
}

}  // namespace

const std::vector<Parts>& Seeds() {
  static const std::vector<Parts> seeds{
      QuoteTable(),   EveryKindOfCell(), EveryKindOfLook(), CommentsAndConditions(),
      TickerCharts(), ForeignChart(),    SheetsOfAPerson(), SmallWorkbook()};
  return seeds;
}

}  // namespace mirelo::fuzzing
