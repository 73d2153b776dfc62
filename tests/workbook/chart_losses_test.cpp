// What is told of charts of a file that are not kept as they are.

#include <gmock/gmock.h>

#include <string>

#include "workbook/chart_parts.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using namespace workbook;

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
