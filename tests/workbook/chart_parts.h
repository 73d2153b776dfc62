#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "adapters/workbook/xlsx/workbook_reader.h"
#include "workbook/workbook_files.h"

namespace mirelo::testing {

// Workbooks with a chart, built of the parts of their files.
class ChartParts : public WorkbookFiles {
 protected:
  static constexpr const char* kDrawingPart = "xl/drawings/drawing1.xml";
  static constexpr const char* kDrawingRelationships = "xl/drawings/_rels/drawing1.xml.rels";
  static constexpr const char* kChartPart = "xl/charts/chart1.xml";

  static constexpr const char* kFrame =
      "<xdr:graphicFrame><xdr:nvGraphicFramePr><xdr:cNvPr id=\"2\" name=\"Chart 7\"/></xdr:nvGraphicFramePr>"
      "<a:graphic><a:graphicData><c:chart r:id=\"rId1\"/></a:graphicData></a:graphic></xdr:graphicFrame>";
  static constexpr const char* kAxes =
      "<c:catAx><c:axId val=\"1\"/></c:catAx><c:valAx><c:axId val=\"2\"/></c:valAx>";
  static constexpr const char* kSeries =
      "<c:ser><c:idx val=\"0\"/><c:val><c:numRef><c:f>Prices!$A$1:$A$5</c:f></c:numRef></c:val></c:ser>";

  static std::string RelationshipsPart(std::string_view type, std::string_view target);
  static std::string Corner(const char* name, int column, int across, int row, int down);
  static std::string Drawing(std::string_view anchors);
  static std::string UsualAnchor();

  static std::string ChartSpace(std::string_view before_plot, std::string_view plot,
                                std::string_view behind_plot = "", std::string_view behind_chart = "");
  static std::string Group(std::string_view series, std::string_view more = "");
  static std::string TitleOf(std::string_view text);
  // A series with more in it.
  static std::string SeriesWith(std::string_view more);

  // A workbook with a chart "Last" on its sheet "Prices".
  static Parts WithChart(const std::string& chart, const std::string& drawing = Drawing(UsualAnchor()));
  static Parts WithLast(std::string_view series, std::string_view more = "");

  // A chart sheet "Market" behind, or in front of, the sheet "Prices".
  static Parts WithChartSheet(const std::string& chart, const char* more = "", bool is_in_front = false);

  static workbook::LoadedBook Read(const Parts& parts) { return workbook::ReadWorkbook(Zip(parts), {}); }
  static workbook::Chart ChartOf(const Parts& parts);
  static std::vector<std::string> LostOf(const workbook::LoadedBook& loaded);
  // What is lost of the chart "Last", without the words that say so.
  static std::string LostOf(const Parts& parts);
};

}  // namespace mirelo::testing
