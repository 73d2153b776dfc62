#include "adapters/workbook/xlsx/chart_reader.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>

#include "adapters/workbook/xlsx/chart_names.h"
#include "adapters/workbook/xlsx/chart_text_reader.h"
#include "adapters/workbook/xlsx/chart_words.h"
#include "adapters/workbook/xlsx/relationships.h"
#include "adapters/workbook/xlsx/series_reader.h"
#include "adapters/workbook/xlsx/shape_properties_reader.h"
#include "adapters/workbook/xlsx/xml_part.h"

namespace mirelo::workbook {

namespace {

constexpr std::string_view kFrame = "the frame of the chart";
constexpr std::string_view kPlotPlace = "the place of the plot";

std::string_view ValueOf(pugi::xml_node parent, std::string_view child) {
  return Attribute(Child(parent, child), "val");
}

// A direction that is not told is the usual one.
bool IsOfKind(pugi::xml_node group, const ChartKind& kind) {
  const std::string_view direction = ValueOf(group, "barDir");
  return IsNamed(group.name(), kind.group) && ValueOf(group, "grouping") == kind.grouping &&
         (direction.empty() || kind.direction.empty() || direction == kind.direction);
}

class ChartReader {
 public:
  ChartReader(SheetContext& context, const std::string& part, const ChartBox& place)
      : context_(context), xml_(context.package, part, "chartSpace"), place_(place) {}

  ChartInFile Read() {
    const pugi::xml_node root = xml_.root();
    const pugi::xml_node chart = Child(root, "chart");
    const pugi::xml_node plot = Child(chart, "plotArea");
    if (!plot) throw Damaged(xml_.name(), "the chart has no plot");
    texts_.ReadStandard(Child(root, "txPr"));
    chart_->place = place_;
    ReadTitle(chart);
    const pugi::xml_node group = GroupOf(plot);
    if (!group) return std::move(result_);

    ReadArea(Child(root, "spPr"));
    ReadPlot(plot);
    ReadLegend(Child(chart, "legend"));
    ReadSeries(group);
    ReadAxes(plot);
    ReadExtension(OwnExtension(root));
    ReportSpace(root, losses_);
    ReportChart(chart, losses_);
    ReportPlot(plot, losses_);
    ReportGroup(group, losses_);
    result_.chart = std::move(chart_);
    return std::move(result_);
  }

 private:
  void ReadTitle(pugi::xml_node chart) {
    const pugi::xml_node title = Child(chart, "title");
    if (!title) return;
    chart_->title = texts_.Title(title, place_);
    context_.budget.TakeText(chart_->title->text.size(), xml_.name());
    result_.title = chart_->title->text;
  }

  // What holds the series of a chart of a type that is kept; null for others, whose type is noted.
  pugi::xml_node GroupOf(pugi::xml_node plot) {
    pugi::xml_node group;
    for (const pugi::xml_node child : plot.children()) {
      const std::string_view name = LocalName(child);
      if (!name.ends_with("Chart")) continue;
      result_.type.append(result_.type.empty() ? "" : " and ").append(name);
      if (group) return {};
      group = child;
    }
    const auto kind =
        std::ranges::find_if(kChartKinds, [&](const ChartKind* one) { return IsOfKind(group, *one); });
    if (kind == kChartKinds.end()) {
      for (const char* more : {"grouping", "barDir"}) {
        const std::string_view value = ValueOf(group, more);
        if (!value.empty()) result_.type.append(", ").append(value);
      }
      return {};
    }
    chart_->kind = *kind;
    return group;
  }

  void ReadArea(pugi::xml_node shape) {
    chart_->area = shapes_.Fill(shape);
    shapes_.RefuseLine(shape, kFrame);
    shapes_.RefuseEffects(shape);
  }

  void ReadPlot(pugi::xml_node plot) {
    const pugi::xml_node shape = Child(plot, "spPr");
    chart_->plot = shapes_.Fill(shape);
    chart_->plot_border = shapes_.Line(shape);
    shapes_.RefuseEffects(shape);
    if (const pugi::xml_node manual = Child(Child(plot, "layout"), "manualLayout")) ReadPlotPlace(manual);
  }

  void ReadPlotPlace(pugi::xml_node manual) {
    const auto share = [&](std::string_view name) { return Number<double>(Child(manual, name), "val"); };
    const auto left = share("x");
    const auto top = share("y");
    const auto width = share("w");
    const auto height = share("h");
    const bool is_plain = ValueOf(manual, "xMode") == "edge" && ValueOf(manual, "yMode") == "edge" &&
                          ValueOf(manual, "wMode") != "edge" && ValueOf(manual, "hMode") != "edge" &&
                          ValueOf(manual, "layoutTarget") != "inner";
    losses_.AddIf(!is_plain, kPlotPlace);
    if (!is_plain || !left || !top || !width || !height) return;
    chart_->plot_place = ChartBox{PartOf(place_.width, *left), PartOf(place_.height, *top),
                                  PartOf(place_.width, *width), PartOf(place_.height, *height)};
  }

  void ReadLegend(pugi::xml_node legend) {
    chart_->legend = static_cast<bool>(legend);
    shapes_.Refuse(Child(legend, "spPr"), "the look of the legend");
    losses_.AddIf(static_cast<bool>(Child(legend, "txPr")), "the look of the legend");
    ReportLegend(legend, losses_);
  }

  void ReadSeries(pugi::xml_node group) {
    const bool has_markers = Flag(Child(group, "marker"), "val", static_cast<bool>(Child(group, "marker")));
    SeriesReader reader(shapes_, losses_, context_.budget, xml_.name(), *chart_->kind, has_markers);
    ForEachChild(group, "ser", [&](pugi::xml_node node) {
      SeriesReader::Result read = reader.Read(node);
      chart_->series.push_back(std::move(read.series));
      result_.formulas.push_back(std::move(read.formula));
    });
  }

  void ReadAxes(pugi::xml_node plot) {
    const pugi::xml_node dates = Child(plot, "dateAx");
    ReadAxis(dates ? dates : Child(plot, "catAx"), chart_->category);
    ReadAxis(Child(plot, "valAx"), chart_->value);
  }

  void ReadAxis(pugi::xml_node node, ChartAxis& axis) {
    axis.on = static_cast<bool>(node) &&
              !Flag(Child(node, "delete"), "val", static_cast<bool>(Child(node, "delete")));
    const pugi::xml_node lines = Child(node, "majorGridlines");
    axis.gridlines = static_cast<bool>(lines);
    axis.gridline = shapes_.Line(Child(lines, "spPr"));
    shapes_.RefuseEffects(Child(lines, "spPr"));
    shapes_.Refuse(Child(node, "spPr"), "lines of axes");
    texts_.ReadAxisFont(Child(node, "txPr"), axis);
    ReportAxis(node, losses_);
  }

  // What the format has no words for.
  void ReadExtension(pugi::xml_node extension) {
    const pugi::xml_node letters = Child(extension, "letters");
    chart_->category.scales = Flag(letters, "categoryScales", false);
    chart_->value.scales = Flag(letters, "valueScales", false);
    if (!chart_->title) return;
    chart_->title->scales = Flag(letters, "titleScales", false);
    chart_->title->pattern = Number<std::int32_t>(letters, "titlePattern").value_or(chart_->title->pattern);
    const std::string_view color = Attribute(letters, "titlePatternColor");
    Color value = kAutomatic;
    const auto [end, error] = std::from_chars(color.data(), color.data() + color.size(), value, 16);
    if (color.size() == 6 && error == std::errc() && end == color.data() + color.size() && value >= 0)
      chart_->title->pattern_color = value;
  }

  SheetContext& context_;
  XmlPart xml_;
  ChartBox place_;
  ChartInFile result_;
  ChartLosses& losses_ = result_.losses;
  std::shared_ptr<Chart> chart_ = std::make_shared<Chart>();
  ShapePropertiesReader shapes_{context_.colors, losses_};
  ChartTextReader texts_{shapes_, losses_};
};

}  // namespace

ChartInFile ReadChart(SheetContext& context, const std::string& part, const ChartBox& place) {
  return ChartReader(context, part, place).Read();
}

}  // namespace mirelo::workbook
