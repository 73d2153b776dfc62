#include "adapters/workbook/xlsx/sheet_reader.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>

#include "adapters/workbook/rules.h"
#include "adapters/workbook/xlsx/cell_reader.h"
#include "adapters/workbook/xlsx/comment_reader.h"
#include "adapters/workbook/xlsx/condition_reader.h"
#include "adapters/workbook/xlsx/drawing_reader.h"
#include "adapters/workbook/xlsx/sheet_losses.h"
#include "adapters/workbook/xlsx/style_layers.h"
#include "adapters/workbook/xlsx/xml_part.h"
#include "spreadsheet/address.h"

namespace mirelo::workbook {

namespace {

constexpr double kGreatestHeight = 409.5;  // points
constexpr double kDigitWidth = 7;          // pixels of a digit in the standard font

// A width in digits, as files have it, in pixels.
std::int32_t PixelsOfWidth(double digits) {
  if (!(digits >= 0)) return ColumnWidth::kStandardPixels;
  return static_cast<std::int32_t>(
      std::min(std::trunc(digits * kDigitWidth + 0.5), double{ColumnWidth::kGreatestPixels}));
}

// Tables have names that formulas elsewhere use; pivot tables have caches, slicers and timelines.
bool IsReferredTo(const Relationships& relationships) {
  return std::any_of(relationships.all().begin(), relationships.all().end(),
                     [](const Relationship& relationship) {
                       return relationship.type == "table" || relationship.type == "pivotTable" ||
                              relationship.type == "slicer" || relationship.type == "timeline";
                     });
}

class SheetReader {
 public:
  SheetReader(SheetContext& context, const std::string& part, Sheet& sheet)
      : context_(context),
        xml_(context.package, part, "worksheet"),
        sheet_(sheet),
        layers_(context.book.styles),
        cells_(context, part, sheet) {}

  SheetStanding Read() {
    const pugi::xml_node root = xml_.root();
    const pugi::xml_node view = Child(Child(root, "sheetViews"), "sheetView");
    ReadView(view);
    ReadStandardWidth(Child(root, "sheetFormatPr"));
    ReadColumns(Child(root, "cols"));
    ReadRows(Child(root, "sheetData"));
    sheet_.styles = layers_.Build(context_.budget, xml_.name());
    cells_.ReportLosses();
    ReadConditions(context_, xml_.name(), root, sheet_);
    const Relationships relationships(context_.package, xml_.name());
    ReadComments(context_, relationships, sheet_);
    ReadCharts(context_, relationships, sheet_);
    ReportSheetLosses(root, relationships, sheet_.name, context_.losses);
    return {Flag(view, "tabSelected", false), IsReferredTo(relationships)};
  }

 private:
  void ReadView(pugi::xml_node view) {
    const pugi::xml_node pane = Child(view, "pane");
    ReadPanes(pane);
    const std::string_view active =
        HasAttribute(pane, "activePane") ? Attribute(pane, "activePane") : "topLeft";
    ForEachChild(view, "selection", [&](pugi::xml_node node) {
      const std::string_view of = HasAttribute(node, "pane") ? Attribute(node, "pane") : "topLeft";
      if (of == active) ReadSelection(node);
    });
  }

  // Of several areas the first that holds the active cell is kept.
  void ReadSelection(pugi::xml_node node) {
    const auto cell = ParseCellName(Attribute(node, "activeCell"));
    if (!cell) return;
    sheet_.active_cell = *cell;
    sheet_.selection = Area::Cell(cell->row, cell->column);
    std::string_view areas = Attribute(node, "sqref");
    while (!areas.empty()) {
      const std::size_t end = std::min(areas.find(' '), areas.size());
      const auto area = ParseAddress(areas.substr(0, end));
      if (area && area->Holds(cell->row, cell->column)) {
        sheet_.selection = *area;
        return;
      }
      areas.remove_prefix(std::min(end + 1, areas.size()));
    }
  }

  void ReadPanes(pugi::xml_node pane) {
    if (!Attribute(pane, "state").starts_with("frozen")) return;
    const auto count = [&](std::string_view name, std::int32_t most) {
      const double split = Number<double>(pane, name).value_or(0);
      return split >= 1 && split < most ? static_cast<std::int32_t>(split) : 0;
    };
    sheet_.frozen_rows = count("ySplit", kRows);
    sheet_.frozen_columns = count("xSplit", kColumns);
  }

  void ReadStandardWidth(pugi::xml_node format) {
    const auto width = Number<double>(format, "defaultColWidth");
    if (width) sheet_.widths = {kColumns, {PixelsOfWidth(*width), false}};
  }

  void ReadColumns(pugi::xml_node columns) {
    std::int32_t count = 0;
    ForEachChild(columns, "col", [&](pugi::xml_node node) {
      const auto first = Number<std::int32_t>(node, "min");
      const auto last = Number<std::int32_t>(node, "max");
      if (!first || !last || *first < 1 || *last < *first || *last > kColumns || ++count > kColumns) {
        throw Damaged(xml_.name(), "the list of columns is damaged");
      }
      const auto width = Number<double>(node, "width");
      sheet_.widths.Apply(*first, *last, [&](ColumnWidth& old) {
        if (width) old.pixels = PixelsOfWidth(*width);
        old.hidden = Flag(node, "hidden", false);
      });
      if (HasAttribute(node, "style")) layers_.SetColumns(*first, *last, StyleAt(Attribute(node, "style")));
    });
  }

  void ReadRows(pugi::xml_node rows) {
    std::vector<RunMap<RowHeight>::Patch> heights;
    std::int32_t row = 0;
    ForEachChild(rows, "row", [&](pugi::xml_node node) {
      row = NumberBehind(row, Attribute(node, "r"));
      if (Flag(node, "customFormat", false)) layers_.SetRow(row, StyleAt(Attribute(node, "s")));
      if (const RowHeight height = HeightOf(node); height != RowHeight())
        heights.push_back({row, row, height});
      ReadCells(node, row);
    });
    context_.budget.TakeFormatRuns(heights.size(), xml_.name());
    sheet_.heights = RunMap<RowHeight>::Overlay(sheet_.heights, heights);
  }

  // A row's number, which lies behind the one before; the next one when it is not told.
  std::int32_t NumberBehind(std::int32_t previous, std::string_view text) const {
    const auto number = text.empty() ? previous + 1 : ParseWhole<std::int32_t>(text).value_or(0);
    if (number <= previous || number > kRows) {
      throw Damaged(xml_.name(), "row \"" + std::string(text) + "\" is out of order or off the sheet");
    }
    return number;
  }

  static RowHeight HeightOf(pugi::xml_node row) {
    RowHeight height;
    height.hidden = Flag(row, "hidden", false);
    const auto points = Number<double>(row, "ht");
    if (points && Flag(row, "customHeight", false) && *points > 0)
      height.points = std::min(*points, kGreatestHeight);
    return height;
  }

  void ReadCells(pugi::xml_node row_node, std::int32_t row) {
    std::int32_t column = 0;
    ForEachChild(row_node, "c", [&](pugi::xml_node node) {
      const CellAttributes cell = AttributesOf(node);
      column = ColumnBehind(column, row, cell.address);
      const bool is_empty = !node.first_child();
      if (!is_empty) {
        context_.budget.TakeCell(xml_.name());
      } else {
        context_.budget.TakeBlankCell(xml_.name());
      }
      const StyleId style = StyleAt(cell.style);
      layers_.SetCell(row, column, style, is_empty);
      cells_.Read(node, cell.type, row, column, style);
    });
  }

  // Gathered in one pass, cells being what a file has most of.
  struct CellAttributes {
    std::string_view address;
    std::string_view style;
    std::string_view type;
  };
  static CellAttributes AttributesOf(pugi::xml_node node) {
    CellAttributes cell;
    for (pugi::xml_attribute at = node.first_attribute(); at; at = at.next_attribute()) {
      const std::string_view name = at.name();
      if (name == "r") cell.address = at.value();
      if (name == "s") cell.style = at.value();
      if (name == "t") cell.type = at.value();
    }
    return cell;
  }

  // A cell's column, which lies behind the one before; the next one when it is not told.
  std::int32_t ColumnBehind(std::int32_t previous, std::int32_t row, std::string_view name) const {
    std::int32_t column = previous + 1;
    if (!name.empty()) {
      const auto place = ParseCellName(name);
      column = place && place->row == row ? place->column : 0;
    }
    if (column <= previous || column > kColumns) {
      throw Damaged(xml_.name(), "cell \"" + std::string(name) + "\" of row " + std::to_string(row) +
                                     " is out of order or off the sheet");
    }
    return column;
  }

  // The style of a number in the file, the first one when it is not told.
  StyleId StyleAt(std::string_view number) const {
    if (number.empty()) return context_.styles.front();
    const auto index = ParseWhole<std::size_t>(number);
    if (!index || *index >= context_.styles.size()) {
      throw Damaged(xml_.name(), "format \"" + std::string(number) + "\" does not exist");
    }
    return context_.styles[*index];
  }

  SheetContext& context_;
  XmlPart xml_;
  Sheet& sheet_;
  StyleLayers layers_;
  CellReader cells_;
};

}  // namespace

SheetStanding ReadSheet(SheetContext& context, const std::string& part, Sheet& sheet) {
  return SheetReader(context, part, sheet).Read();
}

}  // namespace mirelo::workbook
