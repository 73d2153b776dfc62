#include <gmock/gmock.h>

#include "workbook/chart_models.h"
#include "workbook/workbook_files.h"

#include "adapters/workbook/xlsx/workbook_reader.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using namespace workbook;

constexpr const char* kDrawingPart = "xl/drawings/drawing1.xml";
constexpr const char* kDrawingRelationships = "xl/drawings/_rels/drawing1.xml.rels";
constexpr const char* kChartPart = "xl/charts/chart1.xml";

std::string RelationshipsPart(std::string_view type, std::string_view target) {
  return "<Relationships><Relationship Id=\"rId1\" Type=\"http://x/" + std::string(type) + "\" Target=\"" +
         std::string(target) + "\"/></Relationships>";
}

std::string Corner(const char* name, int column, int across, int row, int down) {
  return std::string("<xdr:") + name + "><xdr:col>" + std::to_string(column) + "</xdr:col><xdr:colOff>" +
         std::to_string(across) + "</xdr:colOff><xdr:row>" + std::to_string(row) + "</xdr:row><xdr:rowOff>" +
         std::to_string(down) + "</xdr:rowOff></xdr:" + name + ">";
}

constexpr const char* kFrame =
    "<xdr:graphicFrame><xdr:nvGraphicFramePr><xdr:cNvPr id=\"2\" name=\"Chart 7\"/></xdr:nvGraphicFramePr>"
    "<a:graphic><a:graphicData><c:chart r:id=\"rId1\"/></a:graphicData></a:graphic></xdr:graphicFrame>";

std::string Drawing(std::string_view anchors) {
  return "<xdr:wsDr xmlns:xdr=\"urn:x\" xmlns:a=\"urn:a\" xmlns:c=\"urn:c\" xmlns:r=\"urn:r\">" +
         std::string(anchors) + "</xdr:wsDr>";
}
std::string UsualAnchor() {
  return "<xdr:twoCellAnchor>" + Corner("from", 1, 0, 1, 0) + Corner("to", 5, 0, 9, 0) + kFrame +
         "<xdr:clientData/></xdr:twoCellAnchor>";
}

constexpr const char* kAxes = "<c:catAx><c:axId val=\"1\"/></c:catAx><c:valAx><c:axId val=\"2\"/></c:valAx>";
constexpr const char* kSeries =
    "<c:ser><c:idx val=\"0\"/><c:val><c:numRef><c:f>Prices!$A$1:$A$5</c:f></c:numRef></c:val></c:ser>";

std::string ChartSpace(std::string_view before_plot, std::string_view plot, std::string_view behind_plot = "",
                       std::string_view behind_chart = "") {
  std::string text = "<c:chartSpace xmlns:c=\"urn:c\" xmlns:a=\"urn:a\" xmlns:mc=\"urn:m\"><c:chart>";
  for (const std::string_view piece :
       {before_plot, std::string_view("<c:plotArea>"), plot, std::string_view("</c:plotArea>"), behind_plot,
        std::string_view("</c:chart>"), behind_chart, std::string_view("</c:chartSpace>")})
    text += piece;
  return text;
}
std::string Group(std::string_view series, std::string_view more = "") {
  return "<c:lineChart><c:grouping val=\"standard\"/>" + std::string(series) + "<c:marker val=\"1\"/>" +
         std::string(more) + "</c:lineChart>" + kAxes;
}
std::string TitleOf(std::string_view text) {
  return "<c:title><c:tx><c:rich><a:p><a:r><a:t>" + std::string(text) +
         "</a:t></a:r></a:p></c:rich></c:tx></c:title>";
}
// A series with more in it.
std::string SeriesWith(std::string_view more) {
  std::string series = kSeries;
  InsertBehind(series, "<c:idx val=\"0\"/>", more);
  return series;
}

// A workbook with a chart "Last" on its sheet "Prices".
Parts WithChart(const std::string& chart, const std::string& drawing = Drawing(UsualAnchor())) {
  Parts parts = SmallWorkbook("<row r=\"1\"><c r=\"A1\"><v>1</v></c></row>");
  parts["xl/worksheets/_rels/sheet1.xml.rels"] = RelationshipsPart("drawing", "../drawings/drawing1.xml");
  parts[kDrawingPart] = drawing;
  parts[kDrawingRelationships] = RelationshipsPart("chart", "../charts/chart1.xml");
  parts[kChartPart] = chart;
  return parts;
}
Parts WithLast(std::string_view series, std::string_view more = "") {
  return WithChart(ChartSpace(TitleOf("Last"), Group(series, more)));
}

class ChartParts : public WorkbookFiles {
 protected:
  static LoadedBook Read(const Parts& parts) { return ReadWorkbook(Zip(parts), {}); }
  static Chart ChartOf(const Parts& parts) {
    const auto book = Read(parts).book;
    const auto& charts = book->sheets.front()->charts.all;
    return charts.size() == 1 ? *charts.front() : Chart();
  }
  static std::vector<std::string> LostOf(const LoadedBook& loaded) {
    std::vector<std::string> texts;
    for (const Loss& loss : loaded.losses) texts.push_back(loss.text);
    return texts;
  }
  static std::string LostOf(const Parts& parts) {
    const auto losses = LostOf(Read(parts));
    constexpr std::string_view kStart = "Sheet \"Prices\": not kept of the chart \"Last\": ";
    if (losses.empty()) return "";
    EXPECT_THAT(losses, SizeIs(1));
    EXPECT_THAT(losses.front(), ::testing::StartsWith(kStart));
    return losses.front().substr(std::min(kStart.size(), losses.front().size()));
  }
};

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

TEST_F(ChartParts, OfATypeThatIsNotKeptAreNamed) {
  const struct {
    std::string plot;
    const char* type;
  } cases[] = {
      {"<c:pieChart/>", "pieChart"},
      {"<c:barChart><c:barDir val=\"bar\"/><c:grouping val=\"clustered\"/></c:barChart>",
       "barChart, clustered, bar"},
      {"<c:barChart><c:barDir val=\"col\"/><c:grouping val=\"stacked\"/></c:barChart>",
       "barChart, stacked, col"},
      {"<c:lineChart><c:grouping val=\"percentStacked\"/></c:lineChart>", "lineChart, percentStacked"},
      {Group(kSeries) + Group(kSeries), "lineChart and lineChart"},
      {"<c:scatterChart/>", "scatterChart"},
      {"", ""},
  };
  for (const auto& [plot, type] : cases) {
    SCOPED_TRACE(type);
    const LoadedBook loaded = Read(WithChart(ChartSpace(TitleOf("Shares"), plot)));
    EXPECT_THAT(loaded.book->sheets.front()->charts.all, IsEmpty());
    EXPECT_THAT(LostOf(loaded),
                ElementsAre("Sheet \"Prices\": not kept: the chart \"Shares\", of the type \"" +
                            std::string(type) + "\"."));
  }
  EXPECT_THAT(LostOf(Read(WithChart(ChartSpace("", "<c:pieChart/>")))),
              ElementsAre("Sheet \"Prices\": not kept: the chart \"Chart 7\", of the type \"pieChart\"."))
      << "one without a title goes by its name";
}

TEST_F(ChartParts, SayWhatIsLostOfASeries) {
  const struct {
    const char* element;
    const char* lost;
  } cases[] = {
      {"<c:tx><c:v>x</c:v></c:tx>", "names of series."},
      {"<c:cat><c:strRef/></c:cat>", "labels of the category axis."},
      {"<c:trendline><c:x/></c:trendline>", "trend lines."},
      {"<c:errBars><c:x/></c:errBars>", "error bars."},
      {"<c:dLbls><c:showVal val=\"1\"/></c:dLbls>", "data labels."},
      {"<c:dLbls><c:dLbl><c:showVal val=\"1\"/></c:dLbl></c:dLbls>", "data labels."},
      {"<c:dLbls><c:showVal val=\"0\"/></c:dLbls>", ""},
      {"<c:novelty val=\"1\"/>", "what the file calls \"novelty\"."},
      {"<c:spPr><a:ln w=\"12345\"/></c:spPr>", "widths of lines."},
      {"<c:spPr><a:ln w=\"19050\"><a:prstDash val=\"lgDash\"/></a:ln></c:spPr>", "kinds of dashes."},
      {"<c:spPr><a:ln w=\"19050\" cap=\"rnd\"><a:solidFill><a:srgbClr "
       "val=\"FF0000\"/></a:solidFill><a:round/></a:ln></c:spPr>",
       ""},
      {"<c:spPr><a:ln><a:solidFill><a:srgbClr val=\"FF0000\"><a:alpha "
       "val=\"50000\"/></a:srgbClr></a:solidFill></a:ln></c:spPr>",
       "shades and transparency of colours."},
      {"<c:spPr><a:ln><a:tailEnd type=\"arrow\"/></a:ln></c:spPr>", "heads of lines."},
      {"<c:spPr><a:effectLst><a:glow rad=\"1\"/></a:effectLst></c:spPr>", "shadows and other effects."},
      {"<c:marker><c:symbol val=\"picture\"/></c:marker>", "pictures as markers."},
      {"<c:marker><c:spPr><a:gradFill><a:gsLst><a:gs pos=\"0\"><a:srgbClr "
       "val=\"FF0000\"/></a:gs></a:gsLst></a:gradFill></c:spPr></c:marker>",
       "gradients other than of two colours."},
      {"<c:dPt><c:idx val=\"1\"/><c:marker><c:symbol val=\"star\"/></c:marker></c:dPt>",
       "shapes and sizes of single markers."},
      {"<c:extLst><c:ext uri=\"{C3380CC4-5D6E-409C-BE32-E72D297353CC}\"/></c:extLst>", ""},
      {"<c:extLst><c:ext uri=\"{novelty}\"/></c:extLst>", "features of newer programs."},
  };
  for (const auto& [element, lost] : cases) {
    SCOPED_TRACE(element);
    EXPECT_EQ(LostOf(WithLast(SeriesWith(element))), lost);
  }
}

TEST_F(ChartParts, SayWhatIsLostOfTheWhole) {
  const struct {
    const char* mark;  // behind which it stands
    const char* element;
    const char* lost;
  } cases[] = {
      {"<c:marker val=\"1\"/>", "<c:dropLines><c:x/></c:dropLines>", "drop lines."},
      {"<c:marker val=\"1\"/>", "<c:varyColors val=\"1\"/>", "a colour for each point by itself."},
      {"</c:valAx>", "<c:dTable><c:x/></c:dTable>", "the table of its data."},
      {"</c:valAx>", "<c:layout><c:manualLayout><c:layoutTarget val=\"inner\"/></c:manualLayout></c:layout>",
       "the place of the plot."},
      {"<c:axId val=\"2\"/>", "<c:title><c:x/></c:title>", "titles of axes."},
      {"<c:axId val=\"2\"/>", "<c:scaling><c:min val=\"0\"/></c:scaling>", "scales of axes."},
      {"<c:axId val=\"2\"/>", "<c:scaling><c:orientation val=\"maxMin\"/></c:scaling>", "scales of axes."},
      {"<c:axId val=\"2\"/>", "<c:minorGridlines><c:x/></c:minorGridlines>", "minor gridlines."},
      {"<c:axId val=\"2\"/>", "<c:numFmt formatCode=\"0.00\" sourceLinked=\"0\"/>",
       "number formats of axes."},
      {"<c:axId val=\"2\"/>", "<c:crosses val=\"max\"/>", "where axes cross."},
      {"<c:axId val=\"2\"/>", "<c:tickLblPos val=\"low\"/>", "places of the labels of axes."},
      {"<c:axId val=\"2\"/>", "<c:spPr><a:ln w=\"9525\"/></c:spPr>", "lines of axes."},
      {"<c:axId val=\"2\"/>",
       "<c:txPr><a:bodyPr rot=\"5400000\"/><a:p><a:pPr><a:defRPr i=\"1\"><a:latin "
       "typeface=\"Arial\"/></a:defRPr>"
       "</a:pPr></a:p></c:txPr>",
       "the direction of texts, italic, underlined and other letters, fonts."},
      {"</c:plotArea>", "<c:legend><c:legendPos val=\"b\"/></c:legend>", "the place of the legend."},
      {"</c:plotArea>", "<c:legend><c:legendEntry><c:x/></c:legendEntry></c:legend>",
       "entries left out of the legend."},
      {"</c:plotArea>", "<c:plotVisOnly val=\"0\"/>", "values of hidden cells."},
      {"</c:plotArea>", "<c:dispBlanksAs val=\"zero\"/>", "how empty cells are plotted."},
      {"</c:plotArea>", "<c:view3D><c:x/></c:view3D>", "the view in three dimensions."},
      {"</c:chart>", "<c:spPr><a:ln w=\"9525\"/></c:spPr>", "the frame of the chart."},
      {"</c:chart>", "<c:spPr><a:blipFill/></c:spPr>", "patterns and pictures as fills."},
      {"</c:chart>", "<c:roundedCorners val=\"1\"/>", "rounded corners."},
      {"</c:chart>", "<c:style val=\"26\"/>", "its style."},
      {"</c:chart>", "<c:userShapes r:id=\"x\"/>", "shapes drawn into it."},
      {"</c:chart>", "<mc:AlternateContent><mc:Choice/></mc:AlternateContent>", ""},
      {"<a:t>Last</a:t></a:r>", "<a:r><a:rPr b=\"0\"/><a:t></a:t></a:r>", "formats within the title."},
      {"</c:tx>", "<c:overlay val=\"1\"/>", "how the title lies over the plot."},
  };
  for (const auto& [mark, element, lost] : cases) {
    SCOPED_TRACE(element);
    Parts parts = WithLast(kSeries);
    InsertBehind(parts[kChartPart], mark, element);
    EXPECT_EQ(LostOf(parts), lost);
  }
}

TEST_F(ChartParts, SayWhichCellsTheyCannotPlot) {
  for (const char* formula : {"[1]Prices!$A$1:$A$5", "Elsewhere!$A$1:$A$5", "Prices!$A$1:$B$5",
                              "(Prices!$A$1,Prices!$A$3)", "A1:A5", "Prices!Name", "Prices!$A$1048577"}) {
    SCOPED_TRACE(formula);
    std::string series = kSeries;
    ReplaceIn(series, "Prices!$A$1:$A$5", formula);
    const LoadedBook loaded = Read(WithLast(series));
    EXPECT_THAT(
        LostOf(loaded),
        ElementsAre(std::string("Sheet \"Prices\": not kept of the chart \"Last\": the cells of a series (") +
                    formula + ")."));
    EXPECT_FALSE(loaded.book->sheets.front()->charts.all.front()->series.front().values.has_value());
  }
  std::string gone = kSeries;
  ReplaceIn(gone, "Prices!$A$1:$A$5", "Prices!#REF!");
  EXPECT_THAT(LostOf(Read(WithLast(gone))), IsEmpty()) << "they were gone before";
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

TEST_F(ChartParts, HaveLettersAsLargeAsOtherProgramsShowThem) {
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

// A chart sheet behind (or in front of) the sheet "Prices".
Parts WithChartSheet(const std::string& chart, const char* more = "", bool is_in_front = false) {
  Parts parts =
      WithChart(chart, Drawing("<xdr:absoluteAnchor><xdr:pos x=\"0\" y=\"0\"/><xdr:ext cx=\"9144000\" "
                               "cy=\"6096000\"/>" +
                               std::string(kFrame) + "</xdr:absoluteAnchor>"));
  parts.erase("xl/worksheets/_rels/sheet1.xml.rels");
  parts["xl/chartsheets/sheet1.xml"] = std::string("<chartsheet>") + more + "</chartsheet>";
  parts["xl/chartsheets/_rels/sheet1.xml.rels"] = RelationshipsPart("drawing", "../drawings/drawing1.xml");
  InsertBehind(parts["xl/workbook.xml"], is_in_front ? "<sheets>" : "r:id=\"rId1\"/>",
               "<sheet name=\"Market\" sheetId=\"2\" r:id=\"rId9\"/>");
  InsertBehind(parts["xl/_rels/workbook.xml.rels"], "package/2006/relationships\">",
               "<Relationship Id=\"rId9\" Type=\"http://x/chartsheet\" Target=\"chartsheets/sheet1.xml\"/>");
  return parts;
}

TEST_F(ChartParts, MayFillASheetOfTheirOwn) {
  const LoadedBook loaded = Read(WithChartSheet(ChartSpace(TitleOf("Last"), Group(kSeries))));
  EXPECT_THAT(LostOf(loaded), IsEmpty());
  ASSERT_THAT(loaded.book->chart_sheets, SizeIs(1));
  const Chart& chart = *loaded.book->chart_sheets.front();
  EXPECT_EQ(chart.name, "Market");
  EXPECT_EQ(chart.place, (ChartBox{0, 0, 720, 480}));
  EXPECT_EQ(chart.series.front().sheet.lock(), loaded.book->sheets.front());
  EXPECT_EQ(loaded.book->front_chart, nullptr);
}

TEST_F(ChartParts, SayWhatIsLostOfAChartSheet) {
  const std::string usual = ChartSpace("", Group(kSeries));
  EXPECT_THAT(LostOf(Read(WithChartSheet(usual, "<pageSetup orientation=\"landscape\"/>"))),
              ElementsAre("Sheet \"Market\": not kept: print settings."));
  EXPECT_THAT(LostOf(Read(WithChartSheet(usual, "", true))),
              ElementsAre("Workbook: not kept: that chart sheets stand before worksheets."));
  EXPECT_THAT(LostOf(Read(WithChartSheet(ChartSpace("", "<c:pieChart/>")))),
              ElementsAre("Sheet \"Market\": not kept: the chart \"Chart 7\", of the type \"pieChart\".",
                          "Workbook: not kept: \"Market\", a chart sheet."));
  Parts hidden = WithChartSheet(usual);
  ReplaceIn(hidden["xl/workbook.xml"], "r:id=\"rId9\"", "r:id=\"rId9\" state=\"hidden\"");
  EXPECT_THAT(LostOf(Read(hidden)), ElementsAre("Sheet \"Market\": not kept: that it is hidden."));
  Parts renamed = WithChartSheet(usual);
  ReplaceIn(renamed["xl/workbook.xml"], "Market", "PRICES");
  EXPECT_THAT(
      LostOf(Read(renamed)),
      ElementsAre("Sheet \"PRICES\" is renamed to \"Chart2\": Another sheet bears this name already."));
}

}  // namespace
}  // namespace mirelo::testing
