#include "adapters/workbook/xlsx/series_writer.h"

#include <cstdint>
#include <memory>
#include <string>
#include <utility>

#include "adapters/workbook/rules.h"
#include "adapters/workbook/xlsx/chart_names.h"
#include "adapters/workbook/xlsx/chart_text_writer.h"
#include "adapters/workbook/xlsx/shape_properties_writer.h"
#include "adapters/workbook/xlsx/xml_text.h"
#include "spreadsheet/address.h"

namespace mirelo::workbook {

namespace {

// Values that a part tells for programs that do not compute. Those of longer series are left to the cells.
constexpr std::int32_t kMostCached = 100'000;

constexpr const char* kGone = "#REF!";

std::string FormulaOf(const Sheet& sheet, const Area& cells) {
  std::string formula = "'";
  for (const char c : sheet.name) formula.append(c == '\'' ? 2 : 1, c);
  return formula + "'!" + AddressText(cells, true, true);
}

// What is plotted of a cell that is not empty: text is zero, and an error or what nobody has calculated
// leaves a gap, for which the format has this one word.
std::string PlottedText(const CellValue& value) {
  if (const double* number = value.IfNumber()) return ExactNumberText(*number);
  if (const bool* boolean = value.IfBoolean()) return *boolean ? "1" : "0";
  return value.IfError() != nullptr || value.IsNotCalculated() ? "#N/A" : "0";
}

class SeriesWriter {
 public:
  SeriesWriter(const Chart& chart, std::size_t index, const Book& book)
      : series_(chart.series[index]), index_(index), has_markers_(chart.kind->has_markers), book_(book) {}

  void Write(pugi::xml_node node) const {
    AppendValue(node, "c:idx", std::to_string(index_));
    AppendValue(node, "c:order", std::to_string(index_));
    AppendLooks(node, series_.line, series_.background, series_.shadow);
    if (has_markers_) {
      AppendMarker(node, "c:marker", series_.background, series_.foreground);
    } else {
      AppendValue(node, "c:invertIfNegative", "0");
    }
    for (std::size_t i = 0; i < series_.points.size(); ++i) {
      if (series_.points[i] != ChartPoint()) WritePoint(node.append_child("c:dPt"), i, series_.points[i]);
    }
    WriteValues(node.append_child("c:val"));
    if (has_markers_) {
      AppendValue(node, "c:smooth", series_.smooth ? "1" : "0");
    } else {
      WriteLineOfColumns(AppendExtension(node));
    }
  }

 private:
  void AppendLooks(pugi::xml_node node, const ChartLine& line, const PointColor& fill, bool shadow) const {
    const bool has_fill = !has_markers_ && fill.look != Look::Automatic;
    if (line.look == Look::Automatic && !has_fill && !shadow) return;
    pugi::xml_node shape = AppendShape(node);
    if (has_fill) AppendFill(shape, fill);
    AppendLine(shape, line);
    if (shadow) AppendShadow(shape);
  }

  void AppendMarker(pugi::xml_node node, const char* name, const PointColor& background,
                    const PointColor& foreground) const {
    pugi::xml_node marker = node.append_child(name);
    const std::string symbol(WordOf(kMarkerNames, series_.marker));
    if (series_.marker != host::excel::xlMarkerStyleAutomatic && !symbol.empty())
      AppendValue(marker, "c:symbol", symbol);
    AppendValue(marker, "c:size", std::to_string(series_.marker_size));
    if (background.look == Look::Automatic && foreground.look == Look::Automatic) return;
    pugi::xml_node shape = AppendShape(marker);
    AppendFill(shape, background);
    AppendLine(shape, foreground);
  }

  void WritePoint(pugi::xml_node node, std::size_t number, const ChartPoint& point) const {
    AppendValue(node, "c:idx", std::to_string(number));
    const bool has_edge = point.foreground.look != Look::Automatic;
    if (!has_markers_) AppendValue(node, "c:invertIfNegative", "0");
    if (has_markers_ && (has_edge || point.background.look != Look::Automatic))
      AppendMarker(node, "c:marker", point.background, point.foreground);
    AppendValue(node, "c:bubble3D", "0");
    AppendLooks(node, point.line, point.background, false);
    if (!has_markers_ && has_edge)
      AppendLine(AppendExtension(node).append_child("m:marker"), point.foreground);
  }

  // What columns have for the day on which they become a line.
  void WriteLineOfColumns(pugi::xml_node extension) const {
    AppendMarker(extension, "m:marker", {}, series_.foreground);
    AppendValue(extension, "m:smooth", series_.smooth ? "1" : "0");
  }

  void WriteValues(pugi::xml_node node) const {
    pugi::xml_node reference = node.append_child("c:numRef");
    const std::shared_ptr<Sheet> sheet = SheetOf(series_);
    if (!series_.values || sheet == nullptr || book_.IndexOf(*sheet) == book_.sheets.size()) {
      AppendText(reference, "c:f", kGone);
      return;
    }
    AppendText(reference, "c:f", FormulaOf(*sheet, *series_.values));
    WriteCache(reference, *sheet, *series_.values);
  }

  static void WriteCache(pugi::xml_node reference, const Sheet& sheet, const Area& cells) {
    if (cells.Cells() > kMostCached) return;
    pugi::xml_node cache = reference.append_child("c:numCache");
    AppendText(cache, "c:formatCode", "General");
    AppendValue(cache, "c:ptCount", std::to_string(cells.Cells()));
    sheet.cells.ForEach(cells, [&](std::int32_t row, std::int32_t column, const CellValue& value) {
      pugi::xml_node point = cache.append_child("c:pt");
      point.append_attribute("idx") = row - cells.first_row + column - cells.first_column;
      AppendText(point, "c:v", PlottedText(value));
    });
  }

  const ChartSeries& series_;
  std::size_t index_;
  bool has_markers_;
  const Book& book_;
};

}  // namespace

void AppendSeries(pugi::xml_node group, const Chart& chart, std::size_t index, const Book& book) {
  SeriesWriter(chart, index, book).Write(group.append_child("c:ser"));
}

}  // namespace mirelo::workbook
