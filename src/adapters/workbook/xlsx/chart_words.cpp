#include "adapters/workbook/xlsx/chart_words.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string_view>
#include <vector>

#include "adapters/workbook/rules.h"
#include "adapters/workbook/xlsx/chart_names.h"
#include "adapters/workbook/xlsx/part_words.h"
#include "adapters/workbook/xlsx/xml_part.h"
#include "spreadsheet/charts/chart_kind.h"

namespace mirelo::workbook {

namespace {

constexpr std::string_view kAxisScale = "scales of axes";
constexpr std::string_view kCrossing = "where axes cross";
constexpr std::string_view kGaps = "gaps between columns";
constexpr std::string_view kLabels = "data labels";
constexpr std::string_view kNewer = "features of newer programs";
constexpr std::string_view kSpatial = "the view in three dimensions";

constexpr std::array kSpaceWords = std::to_array<PartWord>({
    {"date1904", ""},
    {"lang", ""},
    {"roundedCorners", ""},    // looked into by itself
    {"AlternateContent", ""},  // the style once more
    {"style", ""},
    {"chart", ""},
    {"spPr", ""},
    {"txPr", ""},
    {"extLst", ""},
    {"clrMapOvr", "a theme of its own"},
    {"pivotSource", "the link to a pivot table"},
    {"protection", "protection"},
    {"externalData", "the link to data of another program"},
    {"printSettings", ""},
    {"userShapes", "shapes drawn into it"},
});

constexpr std::array kChartWords = std::to_array<PartWord>({
    {"title", ""},
    {"autoTitleDeleted", ""},
    {"plotArea", ""},
    {"legend", ""},
    {"plotVisOnly", ""},  // looked into by itself, as is the next
    {"dispBlanksAs", ""},
    {"showDLblsOverMax", ""},
    {"extLst", ""},
    {"pivotFmts", "formats of a pivot chart"},
    {"view3D", kSpatial},
    {"floor", kSpatial},
    {"sideWall", kSpatial},
    {"backWall", kSpatial},
});

constexpr std::array kPlotWords = std::to_array<PartWord>({
    {"layout", ""},
    {"catAx", ""},
    {"valAx", ""},
    {"spPr", ""},
    {"extLst", ""},
    {"dateAx", "its axis of dates"},
    {"serAx", kSpatial},
    {"dTable", "the table of its data"},
});

constexpr std::array kGroupWords = std::to_array<PartWord>({
    {"barDir", ""},
    {"grouping", ""},
    {"varyColors", ""},
    {"ser", ""},
    {"dLbls", ""},
    {"marker", ""},
    {"smooth", ""},
    {"gapWidth", ""},
    {"overlap", ""},
    {"axId", ""},
    {"extLst", ""},
    {"dropLines", "drop lines"},
    {"hiLowLines", "lines from high to low"},
    {"upDownBars", "bars up and down"},
    {"serLines", "lines between columns"},
});

constexpr std::array kSeriesWords = std::to_array<PartWord>({
    {"idx", ""},
    {"order", ""},
    {"spPr", ""},
    {"marker", ""},
    {"dPt", ""},
    {"dLbls", ""},
    {"val", ""},
    {"smooth", ""},
    {"invertIfNegative", ""},
    {"extLst", ""},
    {"cat", "labels of the category axis"},
    {"tx", "names of series"},
    {"errBars", "error bars"},
    {"pictureOptions", "pictures as fills"},
    {"shape", kSpatial},
    {"trendline", "trend lines"},
});

constexpr std::array kPointWords = std::to_array<PartWord>({
    {"idx", ""},
    {"invertIfNegative", ""},
    {"marker", ""},
    {"bubble3D", ""},
    {"spPr", ""},
    {"extLst", ""},
    {"explosion", "slices drawn out"},
    {"pictureOptions", "pictures as fills"},
});

constexpr std::array kAxisWords = std::to_array<PartWord>({
    {"axId", ""},
    {"scaling", ""},  // looked into by itself
    {"delete", ""},
    {"axPos", ""},
    {"majorGridlines", ""},
    {"numFmt", ""},
    {"majorTickMark", ""},
    {"minorTickMark", ""},
    {"tickLblPos", ""},
    {"spPr", ""},
    {"txPr", ""},
    {"crossAx", ""},
    {"crosses", ""},
    {"crossBetween", ""},
    {"auto", ""},
    {"lblAlgn", ""},
    {"lblOffset", ""},
    {"noMultiLvlLbl", ""},
    {"baseTimeUnit", ""},
    {"extLst", ""},
    {"crossesAt", kCrossing},
    {"dispUnits", "units of axes"},
    {"majorTimeUnit", kAxisScale},
    {"majorUnit", kAxisScale},
    {"minorTimeUnit", kAxisScale},
    {"minorUnit", kAxisScale},
    {"minorGridlines", "minor gridlines"},
    {"tickLblSkip", "which labels of axes are left out"},
    {"tickMarkSkip", "which labels of axes are left out"},
    {"title", "titles of axes"},
});

constexpr std::array kLegendWords = std::to_array<PartWord>({
    {"legendPos", ""},
    {"overlay", ""},
    {"spPr", ""},
    {"txPr", ""},
    {"layout", ""},
    {"extLst", ""},
    {"legendEntry", "entries left out of the legend"},
});

// What newer programs put into every chart, which tells nothing of its look.
constexpr std::array<std::string_view, 3> kHarmlessExtensions{
    "{C3380CC4-5D6E-409C-BE32-E72D297353CC}", "{56B9EC1D-385E-4148-901F-78D8002777C0}", kExtension};

void ReportExtensions(pugi::xml_node element, ChartLosses& losses) {
  ForEachChild(Child(element, "extLst"), "ext", [&](pugi::xml_node extension) {
    const std::string_view name = Attribute(extension, "uri");
    const bool is_harmless =
        std::find(kHarmlessExtensions.begin(), kHarmlessExtensions.end(), name) != kHarmlessExtensions.end();
    losses.AddIf(!is_harmless, kNewer);
  });
}

void Report(pugi::xml_node element, std::span<const PartWord> words, ChartLosses& losses) {
  ReportElements(element, words, [&](const PartMeaning& meaning) { losses.Add(meaning.text); });
  ReportExtensions(element, losses);
}

// Whether a child tells a value other than the usual one.
bool IsUnusual(pugi::xml_node element, std::string_view child, std::string_view usual) {
  const pugi::xml_node found = Child(element, child);
  return HasAttribute(found, "val") && Attribute(found, "val") != usual;
}

bool IsOn(pugi::xml_node element, std::string_view child) {
  const pugi::xml_node found = Child(element, child);
  return found && Flag(found, "val", true);
}

void ReportLabels(pugi::xml_node element, ChartLosses& losses) {
  const pugi::xml_node labels = Child(element, "dLbls");
  constexpr std::array<std::string_view, 5> kShown{"showVal", "showCatName", "showSerName", "showPercent",
                                                   "showBubbleSize"};
  const auto shows = [&](pugi::xml_node node) {
    return std::any_of(kShown.begin(), kShown.end(), [&](auto name) { return IsOn(node, name); });
  };
  losses.AddIf(shows(labels), kLabels);
  ForEachChild(labels, "dLbl", [&](pugi::xml_node label) { losses.AddIf(shows(label), kLabels); });
}

}  // namespace

void ReportSpace(pugi::xml_node chart_space, ChartLosses& losses) {
  Report(chart_space, kSpaceWords, losses);
  losses.AddIf(IsOn(chart_space, "roundedCorners"), "rounded corners");
  losses.AddIf(IsUnusual(chart_space, "style", "2"), "its style");
}

void ReportChart(pugi::xml_node chart, ChartLosses& losses) {
  Report(chart, kChartWords, losses);
  losses.AddIf(Child(chart, "plotVisOnly") && !IsOn(chart, "plotVisOnly"), "values of hidden cells");
  losses.AddIf(IsUnusual(chart, "dispBlanksAs", "gap"), "how empty cells are plotted");
}

// The groups of series, which kinds of charts are told by, are looked into by themselves.
void ReportPlot(pugi::xml_node plot_area, ChartLosses& losses) {
  std::vector<PartWord> words(kPlotWords.begin(), kPlotWords.end());
  for (const ChartKind* kind : kChartKinds) words.push_back({kind->group, ""});
  Report(plot_area, words, losses);
}

void ReportGroup(pugi::xml_node group, ChartLosses& losses) {
  Report(group, kGroupWords, losses);
  losses.AddIf(IsOn(group, "varyColors"), "a colour for each point by itself");
  losses.AddIf(
      IsUnusual(group, kColumnKind.detail, kColumnKind.detail_value) || IsUnusual(group, "overlap", "0"),
      kGaps);
  ReportLabels(group, losses);
}

void ReportSeries(pugi::xml_node series, ChartLosses& losses) {
  Report(series, kSeriesWords, losses);
  ReportLabels(series, losses);
}

void ReportPoint(pugi::xml_node point, ChartLosses& losses) { Report(point, kPointWords, losses); }

void ReportAxis(pugi::xml_node axis, ChartLosses& losses) {
  Report(axis, kAxisWords, losses);
  const pugi::xml_node scaling = Child(axis, "scaling");
  losses.AddIf(IsUnusual(scaling, "orientation", "minMax") || Child(scaling, "min") ||
                   Child(scaling, "max") || Child(scaling, "logBase"),
               kAxisScale);
  const pugi::xml_node format = Child(axis, "numFmt");
  losses.AddIf(format && !Flag(format, "sourceLinked", false) && Attribute(format, "formatCode") != "General",
               "number formats of axes");
  losses.AddIf(IsUnusual(axis, "crosses", "autoZero") || IsUnusual(axis, "crossBetween", "between"),
               kCrossing);
  losses.AddIf(IsUnusual(axis, "majorTickMark", "out") || IsUnusual(axis, "minorTickMark", "none"),
               "tick marks");
  losses.AddIf(IsUnusual(axis, "tickLblPos", "nextTo"), "places of the labels of axes");
}

void ReportLegend(pugi::xml_node legend, ChartLosses& losses) {
  Report(legend, kLegendWords, losses);
  losses.AddIf(IsUnusual(legend, "legendPos", "r") || Child(Child(legend, "layout"), "manualLayout"),
               "the place of the legend");
  losses.AddIf(IsOn(legend, "overlay"), "how the legend lies over the plot");
}

pugi::xml_node OwnExtension(pugi::xml_node element) {
  pugi::xml_node own;
  ForEachChild(Child(element, "extLst"), "ext", [&](pugi::xml_node extension) {
    if (Attribute(extension, "uri") == kExtension) own = extension;
  });
  return own;
}

}  // namespace mirelo::workbook
