#include "adapters/workbook/xlsx/sheet_reader.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>

#include "adapters/workbook/address.h"
#include "adapters/workbook/xlsx/cell_reader.h"
#include "adapters/workbook/xlsx/sheet_losses.h"
#include "adapters/workbook/xlsx/style_layers.h"
#include "adapters/workbook/xlsx/xml_part.h"

namespace mirelo::workbook {

namespace {

constexpr double kGreatestHeight = 409.5;  // points
constexpr double kDigitWidth = 7;          // pixels of a digit in the standard font

// A width in digits, as files have it, in pixels.
std::int32_t PixelsOf(double digits) {
  if (!(digits >= 0)) return ColumnWidth::kStandardPixels;
  return static_cast<std::int32_t>(
      std::min(std::trunc(digits * kDigitWidth + 0.5), double{ColumnWidth::kGreatestPixels}));
}

class SheetReader {
 public:
  SheetReader(SheetContext& context, const std::string& part, Sheet& sheet)
      : context_(context),
        xml_(context.package, part, "worksheet"),
        sheet_(sheet),
        cells_(context, part, sheet) {}

  void Read() {
    const pugi::xml_node root = xml_.root();
    ReadPanes(Child(Child(Child(root, "sheetViews"), "sheetView"), "pane"));
    ReadStandardWidth(Child(root, "sheetFormatPr"));
    ReadColumns(Child(root, "cols"));
    ReadRows(Child(root, "sheetData"));
    sheet_.styles = layers_.Build(context_.budget, xml_.name());
    cells_.ReportLosses();
    ReportSheetLosses(root, Relationships(context_.package, xml_.name()), sheet_.name, context_.losses);
  }

 private:
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
    if (width) sheet_.widths = {kColumns, {PixelsOf(*width), false}};
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
        if (width) old.pixels = PixelsOf(*width);
        old.hidden = Flag(node, "hidden", false);
      });
      if (HasAttribute(node, "style")) layers_.SetColumns(*first, *last, StyleOf(node, "style"));
    });
  }

  void ReadRows(pugi::xml_node rows) {
    std::vector<RunMap<RowHeight>::Patch> heights;
    std::int32_t row = 0;
    ForEachChild(rows, "row", [&](pugi::xml_node node) {
      row = NumberBehind(row, Attribute(node, "r"));
      if (Flag(node, "customFormat", false)) layers_.SetRow(row, StyleOf(node, "s"));
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
      column = ColumnBehind(column, row, Attribute(node, "r"));
      context_.budget.TakeCell(xml_.name());
      const StyleId style = StyleOf(node, "s");
      layers_.SetCell(row, column, style);
      cells_.Read(node, row, column, style);
    });
  }

  // A cell's column, which lies behind the one before; the next one when it is not told.
  std::int32_t ColumnBehind(std::int32_t previous, std::int32_t row, std::string_view address) const {
    std::int32_t column = previous + 1;
    if (!address.empty()) {
      const auto area = ParseAddress(address);
      const bool is_in_row = area && area->Cells() == 1 && area->first_row == row;
      column = is_in_row ? area->first_column : 0;
    }
    if (column <= previous || column > kColumns) {
      throw Damaged(xml_.name(), "cell \"" + std::string(address) + "\" of row " + std::to_string(row) +
                                     " is out of order or off the sheet");
    }
    return column;
  }

  // The style that an attribute names, the first one when it is absent.
  StyleId StyleOf(pugi::xml_node node, std::string_view attribute) const {
    const std::string_view text = Attribute(node, attribute);
    if (text.empty()) return context_.styles.front();
    const auto index = ParseWhole<std::size_t>(text);
    if (!index || *index >= context_.styles.size()) {
      throw Damaged(xml_.name(), "format \"" + std::string(text) + "\" does not exist");
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

void ReadSheet(SheetContext& context, const std::string& part, Sheet& sheet) {
  SheetReader(context, part, sheet).Read();
}

}  // namespace mirelo::workbook
