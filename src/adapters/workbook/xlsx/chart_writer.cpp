#include "adapters/workbook/xlsx/chart_writer.h"

#include <cstddef>
#include <string>
#include <string_view>

#include "adapters/workbook/rules.h"
#include "adapters/workbook/xlsx/chart_names.h"
#include "adapters/workbook/xlsx/chart_text_writer.h"
#include "adapters/workbook/xlsx/series_writer.h"
#include "adapters/workbook/xlsx/shape_properties_writer.h"
#include "adapters/workbook/xlsx/xml_text.h"
#include "spreadsheet/charts/chart_layout.h"

namespace mirelo::workbook {

namespace {

constexpr const char* kCategoryAxis = "1";
constexpr const char* kValueAxis = "2";

// The full name of an element of charts.
std::string Named(std::string_view word) { return "c:" + std::string(word); }

// The order of elements is the format's; other programs refuse any other.
class ChartWriter {
 public:
  ChartWriter(const Chart& chart, const Book& book) : chart_(chart), book_(book) {}

  std::string Write() {
    pugi::xml_document document;
    pugi::xml_node root = document.append_child("c:chartSpace");
    root.append_attribute("xmlns:c") = "http://schemas.openxmlformats.org/drawingml/2006/chart";
    root.append_attribute("xmlns:a") = "http://schemas.openxmlformats.org/drawingml/2006/main";
    AppendValue(root, "c:roundedCorners", "0");
    WriteChart(root.append_child("c:chart"));
    WriteArea(root);
    WriteExtension(root);
    return XmlText(document);
  }

 private:
  void WriteChart(pugi::xml_node node) {
    if (chart_.title) AppendTitle(node, chart_);
    AppendValue(node, "c:autoTitleDeleted", chart_.title ? "0" : "1");
    WritePlot(node.append_child("c:plotArea"));
    if (chart_.legend) {
      pugi::xml_node legend = node.append_child("c:legend");
      AppendValue(legend, "c:legendPos", "r");
      AppendValue(legend, "c:overlay", "0");
    }
    AppendValue(node, "c:plotVisOnly", "1");
    AppendValue(node, "c:dispBlanksAs", "gap");
  }

  void WritePlot(pugi::xml_node node) {
    WritePlotPlace(node.append_child("c:layout"));
    const ChartKind& kind = *chart_.kind;
    pugi::xml_node group = node.append_child(Named(kind.group).c_str());
    if (!kind.direction.empty()) AppendValue(group, "c:barDir", kind.direction);
    AppendValue(group, "c:grouping", kind.grouping);
    AppendValue(group, "c:varyColors", "0");
    for (std::size_t i = 0; i < chart_.series.size(); ++i) AppendSeries(group, chart_, i, book_);
    AppendValue(group, Named(kind.detail).c_str(), kind.detail_value);
    AppendValue(group, "c:axId", kCategoryAxis);
    AppendValue(group, "c:axId", kValueAxis);
    WriteCategoryAxis(node.append_child("c:catAx"));
    WriteValueAxis(node.append_child("c:valAx"));
    if (chart_.plot.look == Look::Automatic && chart_.plot_border.look == Look::Automatic) return;
    const pugi::xml_node shape = AppendShape(node);
    AppendFill(shape, chart_.plot);
    AppendLine(shape, chart_.plot_border);
  }

  void WritePlotPlace(pugi::xml_node layout) const {
    if (!chart_.plot_place) return;
    const ChartBox place = PlotBox(chart_);
    pugi::xml_node manual = layout.append_child("c:manualLayout");
    AppendValue(manual, "c:layoutTarget", "outer");  // with the labels of its axes
    AppendValue(manual, "c:xMode", "edge");
    AppendValue(manual, "c:yMode", "edge");
    AppendValue(manual, "c:x", ExactNumberText(place.left / chart_.place.width));
    AppendValue(manual, "c:y", ExactNumberText(place.top / chart_.place.height));
    AppendValue(manual, "c:w", ExactNumberText(place.width / chart_.place.width));
    AppendValue(manual, "c:h", ExactNumberText(place.height / chart_.place.height));
  }

  void WriteCategoryAxis(pugi::xml_node node) const {
    WriteAxis(node, chart_.category, kCategoryAxis, "b", kValueAxis);
    AppendValue(node, "c:auto", "1");
    AppendValue(node, "c:lblAlgn", "ctr");
    AppendValue(node, "c:lblOffset", "100");
    AppendValue(node, "c:noMultiLvlLbl", "0");
  }

  void WriteValueAxis(pugi::xml_node node) const {
    WriteAxis(node, chart_.value, kValueAxis, "l", kCategoryAxis);
    AppendValue(node, "c:crossBetween", "between");
  }

  static void WriteAxis(pugi::xml_node node, const ChartAxis& axis, const char* id, const char* side,
                        const char* crossed) {
    AppendValue(node, "c:axId", id);
    AppendValue(node.append_child("c:scaling"), "c:orientation", "minMax");
    AppendValue(node, "c:delete", axis.on ? "0" : "1");
    AppendValue(node, "c:axPos", side);
    if (axis.gridlines) {
      pugi::xml_node lines = node.append_child("c:majorGridlines");
      if (axis.gridline.look != Look::Automatic) AppendLine(AppendShape(lines), axis.gridline);
    }
    pugi::xml_node format = node.append_child("c:numFmt");
    format.append_attribute("formatCode") = "General";
    format.append_attribute("sourceLinked") = 1;
    AppendValue(node, "c:majorTickMark", "out");
    AppendValue(node, "c:minorTickMark", "none");
    AppendValue(node, "c:tickLblPos", "nextTo");
    AppendTextProperties(node, {axis.label_size, axis.label_bold, axis.label_color});
    AppendValue(node, "c:crossAx", crossed);
    AppendValue(node, "c:crosses", "autoZero");
  }

  void WriteArea(pugi::xml_node root) const {
    if (chart_.area.look != Look::Automatic) AppendFill(AppendShape(root), chart_.area);
  }

  // Whether fonts scale with the chart, and the fill of the title beneath its colour.
  void WriteExtension(pugi::xml_node root) const {
    pugi::xml_node more = AppendExtension(root).append_child("m:letters");
    more.append_attribute("categoryScales") = chart_.category.scales ? 1 : 0;
    more.append_attribute("valueScales") = chart_.value.scales ? 1 : 0;
    if (!chart_.title) return;
    more.append_attribute("titleScales") = chart_.title->scales ? 1 : 0;
    more.append_attribute("titlePattern") = chart_.title->pattern;
    if (chart_.title->pattern_color != kAutomatic)
      more.append_attribute("titlePatternColor") = ColorText(chart_.title->pattern_color).c_str();
  }

  const Chart& chart_;
  const Book& book_;
};

}  // namespace

std::string ChartXml(const Chart& chart, const Book& book) { return ChartWriter(chart, book).Write(); }

}  // namespace mirelo::workbook
