// What is read of the charts of a file.

#include <gmock/gmock.h>

#include <cstdint>
#include <string>

#include "workbook/chart_models.h"
#include "workbook/chart_parts.h"

namespace mirelo::testing {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using namespace workbook;

TEST_F(ChartParts, AreReadWithoutLossWhenTheyHoldNothingElse) {
  const LoadedBook loaded = Read(WithLast(kSeries));
  EXPECT_THAT(LostOf(loaded), IsEmpty());
  const auto& charts = loaded.book->sheets.front()->charts;
  ASSERT_THAT(charts.all, SizeIs(1));
  EXPECT_EQ(charts.all.front()->name, "Chart 7");
  EXPECT_EQ(charts.made, 7) << "so that no other chart gets its name";
  EXPECT_EQ(charts.all.front()->title->text, "Last");
  EXPECT_EQ(charts.all.front()->series.front().values, (Area{1, 1, 5, 1}));
}

TEST_F(ChartParts, LieWhereTheirAnchorsSay) {
  const std::string two = Corner("from", 1, 9525, 2, 12700) + Corner("to", 4, 0, 12, 0) + kFrame;
  const std::string one =
      Corner("from", 1, 9525, 2, 12700) + "<xdr:ext cx=\"1270000\" cy=\"635000\"/>" + kFrame;
  const std::string free =
      "<xdr:pos x=\"12700\" y=\"25400\"/><xdr:ext cx=\"1270000\" cy=\"635000\"/>" + std::string(kFrame);
  const struct {
    std::string anchor;
    ChartBox place;
    std::int32_t placement;
  } cases[] = {
      {"<xdr:twoCellAnchor>" + two + "</xdr:twoCellAnchor>", {48.75, 31, 143.25, 149}, 1},
      {"<xdr:twoCellAnchor editAs=\"oneCell\">" + two + "</xdr:twoCellAnchor>", {48.75, 31, 143.25, 149}, 2},
      {"<xdr:twoCellAnchor editAs=\"absolute\">" + two + "</xdr:twoCellAnchor>", {48.75, 31, 143.25, 149}, 3},
      {"<xdr:oneCellAnchor>" + one + "</xdr:oneCellAnchor>", {48.75, 31, 100, 50}, 2},
      {"<xdr:absoluteAnchor>" + free + "</xdr:absoluteAnchor>", {1, 2, 100, 50}, 3},
      {"<xdr:twoCellAnchor>" + Corner("from", 5, 0, 5, 0) + Corner("to", 1, 0, 1, 0) + kFrame +
           "</xdr:twoCellAnchor>",
       {240, 75, 0, 0},
       1},
  };
  for (const auto& [anchor, place, placement] : cases) {
    SCOPED_TRACE(anchor);
    const Chart chart = ChartOf(WithChart(ChartSpace("", Group(kSeries)), Drawing(anchor)));
    EXPECT_EQ(chart.place, place);
    EXPECT_EQ(chart.placement, placement);
  }
}

TEST_F(ChartParts, HangOnTheWidthsAndHeightsOfTheirSheet) {
  Parts parts = WithLast(kSeries);
  ReplaceIn(
      parts[kSheetPart], "<sheetData>",
      "<cols><col min=\"1\" max=\"1\" width=\"20\" customWidth=\"1\"/><col min=\"3\" max=\"3\" hidden=\"1\" "
      "width=\"9\"/></cols><sheetData>");
  ReplaceIn(parts[kSheetPart], "<row r=\"1\">", "<row r=\"1\" ht=\"40\" customHeight=\"1\">");
  InsertBehind(parts[kSheetPart], "</row>", "<row r=\"4\" hidden=\"1\"/>");
  EXPECT_EQ(ChartOf(parts).place, (ChartBox{105, 40, 3 * 48, 7 * 15}));
}

TEST_F(ChartParts, FindTheirCellsOnSheetsThatComeLater) {
  Parts parts = WithLast(kSeries);
  ReplaceIn(parts[kChartPart], "Prices!$A$1:$A$5", "'it''s later'!$B$2:$K$2");
  InsertBehind(parts["xl/workbook.xml"], "r:id=\"rId1\"/>",
               "<sheet name=\"It's later\" sheetId=\"2\" r:id=\"rId9\"/>");
  InsertBehind(parts["xl/_rels/workbook.xml.rels"], "package/2006/relationships\">",
               "<Relationship Id=\"rId9\" Type=\"http://x/worksheet\" Target=\"worksheets/sheet2.xml\"/>");
  parts["xl/worksheets/sheet2.xml"] = "<worksheet/>";
  const LoadedBook loaded = Read(parts);
  EXPECT_THAT(LostOf(loaded), IsEmpty());
  const ChartSeries& series = loaded.book->sheets.front()->charts.all.front()->series.front();
  EXPECT_EQ(series.values, (Area{2, 2, 2, 11}));
  EXPECT_EQ(series.sheet.lock(), loaded.book->sheets[1]);
}

TEST_F(ChartParts, TakeColorsFromTheThemeAndMakeThemLighter) {
  const struct {
    const char* color;
    Color expected;
  } cases[] = {
      {"<a:srgbClr val=\"123456\"/>", 0x123456},
      {"<a:schemeClr val=\"accent1\"/>", 0x4F81BD},
      {"<a:schemeClr val=\"bg1\"><a:lumMod val=\"50000\"/></a:schemeClr>", 0x808080},
      {"<a:schemeClr val=\"tx1\"><a:lumMod val=\"50000\"/><a:lumOff val=\"50000\"/></a:schemeClr>", 0x808080},
      {"<a:sysClr val=\"windowText\" lastClr=\"010203\"/>", 0x010203},
      {"<a:prstClr val=\"red\"/>", 0xFF0000},
  };
  for (const auto& [color, expected] : cases) {
    SCOPED_TRACE(color);
    const Parts parts = WithLast(
        SeriesWith(std::string("<c:spPr><a:ln><a:solidFill>") + color + "</a:solidFill></a:ln></c:spPr>"));
    EXPECT_EQ(ChartOf(parts).series.front().line.color, expected);
    EXPECT_EQ(LostOf(parts), "");
  }
}

TEST_F(ChartParts, HaveMarkersOnlyWhereTheFileWantsThem) {
  Parts parts = WithLast(kSeries);
  EXPECT_EQ(ChartOf(parts).series.front().marker, -4105) << "the chart's own choice";
  ReplaceIn(parts[kChartPart], "<c:marker val=\"1\"/>", "");
  EXPECT_EQ(ChartOf(parts).series.front().marker, -4142) << "none";
}

TEST_F(ChartParts, HaveFontsAsLargeAsOtherProgramsShowThem) {
  Parts parts = WithLast(kSeries);
  EXPECT_EQ(ChartOf(parts).title->size, 18);
  EXPECT_TRUE(ChartOf(parts).title->bold);
  EXPECT_EQ(ChartOf(parts).value.label_size, 10);
  InsertBehind(parts[kChartPart], "</c:chart>",
               "<c:txPr><a:p><a:pPr><a:defRPr sz=\"1500\" b=\"0\"/></a:pPr></a:p></c:txPr>");
  EXPECT_EQ(ChartOf(parts).title->size, 18);
  EXPECT_FALSE(ChartOf(parts).title->bold);
  EXPECT_EQ(ChartOf(parts).value.label_size, 15);
}

TEST_F(ChartParts, ThatAreDamagedAreRefusedByName) {
  const std::string usual = ChartSpace("", Group(kSeries));
  const auto refusal = [&](const std::string& anchor) { return Refusal(WithChart(usual, Drawing(anchor))); };
  EXPECT_THAT(Refusal(WithChart("<c:chartSpace><c:chart>")),
              HasSubstr("xl/charts/chart1.xml: this is no well-formed XML"));
  EXPECT_THAT(Refusal(WithChart("<x/>")),
              HasSubstr("xl/charts/chart1.xml: its root element is not \"chartSpace\""));
  EXPECT_THAT(Refusal(WithChart("<c:chartSpace><c:chart/></c:chartSpace>")),
              HasSubstr("xl/charts/chart1.xml: the chart has no plot"));
  EXPECT_THAT(Refusal(WithChart(usual, "<x/>")),
              HasSubstr("xl/drawings/drawing1.xml: its root element is not \"wsDr\""));
  EXPECT_THAT(refusal("<xdr:twoCellAnchor>" + std::string(kFrame) + "</xdr:twoCellAnchor>"),
              HasSubstr("xl/drawings/drawing1.xml: an anchor tells no place"));
  for (const auto& [column, row] : {std::pair{-1, 0}, {kColumns, 0}, {0, -1}, {0, kRows}}) {
    EXPECT_THAT(
        refusal("<xdr:twoCellAnchor>" + Corner("from", column, 0, row, 0) + kFrame + "</xdr:twoCellAnchor>"),
        HasSubstr("xl/drawings/drawing1.xml: an anchor lies off the sheet"));
  }
  for (const char* number : {"-1", "1048576", "x", ""}) {
    EXPECT_THAT(Refusal(WithLast(SeriesWith(std::string("<c:dPt><c:idx val=\"") + number + "\"/></c:dPt>"))),
                HasSubstr("xl/charts/chart1.xml: a point of a chart has no number"));
  }
  Parts no_part = WithLast(kSeries);
  no_part.erase(kChartPart);
  EXPECT_THAT(Refusal(no_part), HasSubstr("xl/charts/chart1.xml: this part is missing"));
  Parts no_link = WithLast(kSeries);
  no_link.erase(kDrawingRelationships);
  EXPECT_THAT(Refusal(no_link), HasSubstr("xl/drawings/drawing1.xml: the chart \"Chart 7\" has no part"));
  Parts no_drawing = WithLast(kSeries);
  no_drawing.erase(kDrawingPart);
  EXPECT_THAT(Refusal(no_drawing), HasSubstr("xl/drawings/drawing1.xml: this part is missing"));
}

TEST_F(ChartParts, AreSoughtInTheWholeFileNotOnlyInTheUsualPlace) {
  Parts parts = WithLast(kSeries);
  parts["elsewhere/c.xml"] = parts[kChartPart];
  parts.erase(kChartPart);
  parts[kDrawingRelationships] = RelationshipsPart("chart", "/elsewhere/c.xml");
  EXPECT_EQ(ChartOf(parts).title->text, "Last");
}

TEST_F(ChartParts, CountAgainstTheLimits) {
  LoadLimits limits;
  limits.charts = 1;
  EXPECT_EQ(Refusal(WithLast(kSeries), limits), "");
  EXPECT_THAT(
      Refusal(WithChart(ChartSpace("", Group(kSeries)), Drawing(UsualAnchor() + UsualAnchor())), limits),
      HasSubstr("xl/drawings/drawing1.xml: too many charts"));
  limits = {};
  limits.chart_series = 1;
  EXPECT_THAT(Refusal(WithLast(std::string(kSeries) + kSeries), limits),
              HasSubstr("xl/charts/chart1.xml: too many series of charts"));
  limits = {};
  limits.chart_points = 10;
  const auto point = [](int number) {
    return WithLast(SeriesWith("<c:dPt><c:idx val=\"" + std::to_string(number) + "\"/></c:dPt>"));
  };
  EXPECT_EQ(Refusal(point(9), limits), "");
  EXPECT_THAT(Refusal(point(10), limits), HasSubstr("xl/charts/chart1.xml: too many points of charts"));
  limits = {};
  limits.text_bytes = 100;
  EXPECT_THAT(Refusal(WithChart(ChartSpace(TitleOf(std::string(200, 'x')), Group(kSeries))), limits),
              HasSubstr("xl/charts/chart1.xml: too much text"));
}

}  // namespace
}  // namespace mirelo::testing
