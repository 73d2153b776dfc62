#include "workbook/chart_parts.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace mirelo::testing {

using ::testing::SizeIs;
using ::testing::StartsWith;
using namespace workbook;

std::string ChartParts::RelationshipsPart(std::string_view type, std::string_view target) {
  return "<Relationships><Relationship Id=\"rId1\" Type=\"http://x/" + std::string(type) + "\" Target=\"" +
         std::string(target) + "\"/></Relationships>";
}

std::string ChartParts::Corner(const char* name, int column, int across, int row, int down) {
  return std::string("<xdr:") + name + "><xdr:col>" + std::to_string(column) + "</xdr:col><xdr:colOff>" +
         std::to_string(across) + "</xdr:colOff><xdr:row>" + std::to_string(row) + "</xdr:row><xdr:rowOff>" +
         std::to_string(down) + "</xdr:rowOff></xdr:" + name + ">";
}

std::string ChartParts::Drawing(std::string_view anchors) {
  return "<xdr:wsDr xmlns:xdr=\"urn:x\" xmlns:a=\"urn:a\" xmlns:c=\"urn:c\" xmlns:r=\"urn:r\">" +
         std::string(anchors) + "</xdr:wsDr>";
}

std::string ChartParts::UsualAnchor() {
  return "<xdr:twoCellAnchor>" + Corner("from", 1, 0, 1, 0) + Corner("to", 5, 0, 9, 0) + kFrame +
         "<xdr:clientData/></xdr:twoCellAnchor>";
}

std::string ChartParts::ChartSpace(std::string_view before_plot, std::string_view plot,
                                   std::string_view behind_plot, std::string_view behind_chart) {
  std::string text = "<c:chartSpace xmlns:c=\"urn:c\" xmlns:a=\"urn:a\" xmlns:mc=\"urn:m\"><c:chart>";
  for (const std::string_view piece :
       {before_plot, std::string_view("<c:plotArea>"), plot, std::string_view("</c:plotArea>"), behind_plot,
        std::string_view("</c:chart>"), behind_chart, std::string_view("</c:chartSpace>")})
    text += piece;
  return text;
}

std::string ChartParts::Group(std::string_view series, std::string_view more) {
  return "<c:lineChart><c:grouping val=\"standard\"/>" + std::string(series) + "<c:marker val=\"1\"/>" +
         std::string(more) + "</c:lineChart>" + kAxes;
}

std::string ChartParts::TitleOf(std::string_view text) {
  return "<c:title><c:tx><c:rich><a:p><a:r><a:t>" + std::string(text) +
         "</a:t></a:r></a:p></c:rich></c:tx></c:title>";
}

std::string ChartParts::SeriesWith(std::string_view more) {
  std::string series = kSeries;
  InsertBehind(series, "<c:idx val=\"0\"/>", more);
  return series;
}

Parts ChartParts::WithChart(const std::string& chart, const std::string& drawing) {
  Parts parts = SmallWorkbook("<row r=\"1\"><c r=\"A1\"><v>1</v></c></row>");
  parts["xl/worksheets/_rels/sheet1.xml.rels"] = RelationshipsPart("drawing", "../drawings/drawing1.xml");
  parts[kDrawingPart] = drawing;
  parts[kDrawingRelationships] = RelationshipsPart("chart", "../charts/chart1.xml");
  parts[kChartPart] = chart;
  return parts;
}

Parts ChartParts::WithLast(std::string_view series, std::string_view more) {
  return WithChart(ChartSpace(TitleOf("Last"), Group(series, more)));
}

Parts ChartParts::WithChartSheet(const std::string& chart, const char* more, bool is_in_front) {
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

Chart ChartParts::ChartOf(const Parts& parts) {
  const auto book = Read(parts).book;
  const auto& charts = book->sheets.front()->charts.all;
  return charts.size() == 1 ? *charts.front() : Chart();
}

std::vector<std::string> ChartParts::LostOf(const LoadedBook& loaded) {
  std::vector<std::string> texts;
  for (const Loss& loss : loaded.losses) texts.push_back(loss.text);
  return texts;
}

std::string ChartParts::LostOf(const Parts& parts) {
  const auto losses = LostOf(Read(parts));
  constexpr std::string_view kStart = "Sheet \"Prices\": not kept of the chart \"Last\": ";
  if (losses.empty()) return "";
  EXPECT_THAT(losses, SizeIs(1));
  EXPECT_THAT(losses.front(), StartsWith(kStart));
  return losses.front().substr(std::min(kStart.size(), losses.front().size()));
}

}  // namespace mirelo::testing
