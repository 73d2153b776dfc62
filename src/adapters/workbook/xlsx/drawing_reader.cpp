#include "adapters/workbook/xlsx/drawing_reader.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "adapters/workbook/model/sheet_places.h"
#include "adapters/workbook/rules.h"
#include "adapters/workbook/xlsx/chart_names.h"
#include "adapters/workbook/xlsx/chart_reader.h"
#include "adapters/workbook/xlsx/part_words.h"
#include "adapters/workbook/xlsx/style_names.h"
#include "adapters/workbook/xlsx/text_escapes.h"
#include "adapters/workbook/xlsx/xml_part.h"
#include "spreadsheet/text_units.h"

namespace mirelo::workbook {

namespace {

constexpr std::string_view kStandardName = "Chart ";

// What may stand in an anchor. Empty: a frame, which may hold a chart, and what belongs to the anchor.
constexpr std::array kShapeWords = std::to_array<PartWord>({
    {"from", ""},
    {"to", ""},
    {"pos", ""},
    {"ext", ""},
    {"clientData", ""},
    {"graphicFrame", ""},
    {"pic", "pictures"},
    {"sp", "shapes"},
    {"cxnSp", "shapes"},
    {"grpSp", "groups of shapes"},
    {"contentPart", "ink"},
    {"AlternateContent", "shapes of newer programs"},
});

constexpr std::array kChartSheetWords = std::to_array<PartWord>({
    {"sheetPr", ""},
    {"sheetViews", ""},
    {"pageMargins", ""},
    {"drawing", ""},
    {"extLst", ""},
    {"sheetProtection", "protection"},
    {"customSheetViews", "custom views"},
    {"pageSetup", "print settings"},
    {"headerFooter", "page headers and footers"},
    {"legacyDrawing", "shapes"},
    {"legacyDrawingHF", "page headers and footers"},
    {"picture", "a background picture"},
    {"webPublishItems", "web publishing"},
});

// The number of a name that the spreadsheet itself gave; 0 for others.
std::int32_t NumberIn(std::string_view name) {
  if (!name.starts_with(kStandardName)) return 0;
  return std::max(0, ParseWhole<std::int32_t>(name.substr(kStandardName.size())).value_or(0));
}

class DrawingReader {
 public:
  DrawingReader(SheetContext& context, const std::string& part, Sheet& sheet)
      : context_(context),
        xml_(context.package, part, "wsDr"),
        relationships_(context.package, part),
        sheet_(sheet),
        measure_(sheet) {}

  void Read() {
    for (const pugi::xml_node child : xml_.root().children()) {
      if (child.type() == pugi::node_element) ReadAnchor(child);
    }
    sheet_.charts.made = std::max(sheet_.charts.made, static_cast<std::int32_t>(sheet_.charts.all.size()));
  }

 private:
  void ReadAnchor(pugi::xml_node anchor) {
    if (LocalName(anchor) == "AlternateContent") {
      Lose("shapes of newer programs");
      return;
    }
    ReportElements(anchor, kShapeWords, [&](const PartMeaning& meaning) { Lose(meaning.text); });
    ForEachChild(anchor, "graphicFrame", [&](pugi::xml_node frame) { ReadFrame(anchor, frame); });
  }

  void ReadFrame(pugi::xml_node anchor, pugi::xml_node frame) {
    const pugi::xml_node shape = Child(Child(frame, "nvGraphicFramePr"), "cNvPr");
    const std::string name = UnescapeText(Attribute(shape, "name"));
    const pugi::xml_node reference = Child(Child(Child(frame, "graphic"), "graphicData"), "chart");
    if (!reference) {
      Lose("shapes");
      return;
    }
    context_.budget.TakeChart(xml_.name());
    context_.budget.TakeText(name.size(), xml_.name());
    const Relationship* relationship = relationships_.FindId(Attribute(reference, "id"));
    if (relationship == nullptr || relationship->external)
      throw Damaged(xml_.name(), "the chart \"" + name + "\" has no part");
    if (relationship->type != "chart") {
      Lose("the chart \"" + name + "\", of a type of newer programs");
      return;
    }
    ChartInFile read = ReadChart(context_, relationship->target, PlaceOf(anchor));
    const std::string title = read.title.empty() ? name : read.title;
    if (read.chart == nullptr) {
      Lose("the chart \"" + title + "\", of the type \"" + read.type + "\"");
      return;
    }
    read.losses.AddIf(HasAttribute(shape, "descr") || Child(shape, "hlinkClick"),
                      "its description or hyperlink");
    read.losses.AddIf(Flag(shape, "hidden", false), "that it is hidden");
    if (!read.losses.IsEmpty())
      context_.losses.Add(sheet_.name,
                          "not kept of the chart \"" + title + "\": " + read.losses.Text() + ".");
    Add(std::move(read), name, title, PlacementOf(anchor));
  }

  void Add(ChartInFile read, const std::string& name, const std::string& title, std::int32_t placement) {
    read.chart->name = name.empty() ? FreeName() : name;
    read.chart->placement = placement;
    sheet_.charts.made = std::max(sheet_.charts.made, NumberIn(read.chart->name));
    for (std::size_t i = 0; i < read.formulas.size(); ++i)
      context_.series.push_back({read.chart, i, std::move(read.formulas[i]), sheet_.name, title});
    sheet_.charts.all.push_back(std::move(read.chart));
  }

  std::string FreeName() const { return std::string(kStandardName) + std::to_string(sheet_.charts.made + 1); }

  ChartBox PlaceOf(pugi::xml_node anchor) const {
    const auto [left, top] = CornerOf(anchor, "from", "pos");
    std::int64_t width = LengthIn(Child(anchor, "ext"), "cx");
    std::int64_t height = LengthIn(Child(anchor, "ext"), "cy");
    if (Child(anchor, "to")) {
      const auto [right, bottom] = CornerOf(anchor, "to", "pos");
      width = std::max<std::int64_t>(right - left, 0);
      height = std::max<std::int64_t>(bottom - top, 0);
    }
    const auto points = [](std::int64_t emu) { return static_cast<double>(emu) / double{kEmuPerPoint}; };
    return {points(left), points(top), points(width), points(height)};
  }

  // A corner that is told by a cell or, in anchors without cells, by its distances.
  std::pair<std::int64_t, std::int64_t> CornerOf(pugi::xml_node anchor, std::string_view by_cell,
                                                 std::string_view by_distance) const {
    const pugi::xml_node cell = Child(anchor, by_cell);
    if (!cell) {
      const pugi::xml_node distance = Child(anchor, by_distance);
      if (!distance) throw Damaged(xml_.name(), "an anchor tells no place");
      return {LengthIn(distance, "x"), LengthIn(distance, "y")};
    }
    return {measure_.columns.DistanceOf(MarkIn(cell, "col", "colOff", kColumns)),
            measure_.rows.DistanceOf(MarkIn(cell, "row", "rowOff", kRows))};
  }

  Ruler::Mark MarkIn(pugi::xml_node cell, std::string_view number, std::string_view offset,
                     std::int32_t count) const {
    const auto place = ParseWhole<std::int32_t>(Text(Child(cell, number)));
    if (!place || *place < 0 || *place >= count) throw Damaged(xml_.name(), "an anchor lies off the sheet");
    return {*place + 1, ParseWhole<std::int64_t>(Text(Child(cell, offset))).value_or(0)};
  }

  // At most what a sheet can be long.
  static std::int64_t LengthIn(pugi::xml_node node, std::string_view name) {
    constexpr std::int64_t kMost = std::int64_t{kRows} * 1'000 * kEmuPerPoint;
    return std::clamp<std::int64_t>(Number<std::int64_t>(node, name).value_or(0), 0, kMost);
  }

  static std::int32_t PlacementOf(pugi::xml_node anchor) {
    if (IsNamed(anchor.name(), "oneCellAnchor")) return WithName("oneCell");
    if (IsNamed(anchor.name(), "absoluteAnchor")) return WithName("absolute");
    return WithName(Attribute(anchor, "editAs"));
  }
  static std::int32_t WithName(std::string_view name) {
    return NumberOf(kPlacementNames, name).value_or(kPlacementNames.front().second);
  }

  void Lose(const std::string& what) { context_.losses.Add(sheet_.name, "not kept: " + what + "."); }

  SheetContext& context_;
  XmlPart xml_;
  Relationships relationships_;
  Sheet& sheet_;
  SheetMeasure measure_;
};

}  // namespace

void ReadCharts(SheetContext& context, const Relationships& relationships, Sheet& sheet) {
  for (const Relationship& relationship : relationships.all()) {
    if (relationship.type == "drawing" && !relationship.external)
      DrawingReader(context, relationship.target, sheet).Read();
  }
}

std::shared_ptr<Chart> ReadChartSheet(SheetContext& context, const std::string& part,
                                      const std::string& name) {
  const XmlPart xml(context.package, part, "chartsheet");
  Sheet stand_in(name);
  ReportElements(xml.root(), kChartSheetWords, [&](const PartMeaning& meaning) {
    context.losses.Add(name, "not kept: " + meaning.text + ".");
  });
  ReadCharts(context, Relationships(context.package, part), stand_in);
  if (stand_in.charts.all.empty()) return nullptr;
  std::shared_ptr<Chart> chart = stand_in.charts.all.front();
  chart->name = name;
  chart->placement = Chart().placement;
  chart->place.left = chart->place.top = 0;
  return chart;
}

}  // namespace mirelo::workbook
