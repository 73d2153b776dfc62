#include "adapters/workbook/xlsx/sheet_changes.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "adapters/workbook/model/book.h"
#include "adapters/workbook/xlsx/chart_writer.h"

namespace mirelo::workbook {

namespace {

bool IsAsLoaded(const CellGrid& a, const CellGrid& b, const std::vector<CellPlace>& but) {
  const auto count_counting = [&](const CellGrid& cells) {
    return cells.Count() -
           static_cast<std::size_t>(std::count_if(but.begin(), but.end(), [&](const CellPlace& cell) {
             return cells.Find(cell.row, cell.column) != nullptr;
           }));
  };
  if (count_counting(a) != count_counting(b)) return false;
  bool is_same = true;
  a.ForEach(Area::Sheet(), [&](std::int32_t row, std::int32_t column, const CellValue& value) {
    if (!is_same || std::binary_search(but.begin(), but.end(), CellPlace{row, column})) return;
    const CellValue* other = b.Find(row, column);
    is_same = other != nullptr && value == *other;
  });
  return is_same;
}

bool IsAsLoaded(const Comments& a, const Comments& b) {
  return std::equal(a.all().begin(), a.all().end(), b.all().begin(), b.all().end(),
                    [](const auto& one, const auto& other) {
                      return one.first == other.first && *one.second == *other.second;
                    });
}

bool IsAsLoaded(const Conditions& a, const Conditions& b) {
  return std::equal(a.all().begin(), a.all().end(), b.all().begin(), b.all().end(),
                    [](const auto& one, const auto& other) {
                      return one->areas == other->areas && one->op == other->op &&
                             one->formula1 == other->formula1 && one->formula2 == other->formula2 &&
                             one->format == other->format && one->stop_if_true == other->stop_if_true;
                    });
}

std::string NameOfSheet(const ChartSeries& series) {
  const auto held = SheetOf(series);
  return held == nullptr ? "" : held->name;
}

bool HasFollowed(const std::optional<Area>& now, const std::optional<Area>& loaded) {
  if (now == loaded || !now) return true;
  return loaded && now->first_column == loaded->first_column && now->last_column == loaded->last_column &&
         now->first_row <= loaded->first_row && now->last_row <= loaded->last_row &&
         now->Rows() <= loaded->Rows();
}

bool IsAsLoaded(const ChartSeries& a, const ChartSeries& b, const std::string& own_sheet) {
  if (NameOfSheet(a) != NameOfSheet(b)) return false;
  return a.values == b.values || (NameOfSheet(b) != own_sheet && HasFollowed(a.values, b.values));
}

bool IsAsLoaded(const SheetCharts& a, const SheetCharts& b, const std::string& own_sheet) {
  return std::equal(a.all.begin(), a.all.end(), b.all.begin(), b.all.end(),
                    [&](const auto& one, const auto& other) { return IsUnchanged(*one, *other, own_sheet); });
}

}  // namespace

bool IsUnchanged(const Sheet& sheet, const Sheet& loaded) { return IsUnchanged(sheet, loaded, {}); }

bool IsUnchanged(const Sheet& sheet, const Sheet& loaded, const std::vector<CellPlace>& but) {
  return sheet.hidden == loaded.hidden && sheet.widths == loaded.widths && sheet.heights == loaded.heights &&
         sheet.frozen_rows == loaded.frozen_rows && sheet.frozen_columns == loaded.frozen_columns &&
         sheet.styles == loaded.styles && IsAsLoaded(sheet.cells, loaded.cells, but) &&
         IsAsLoaded(sheet.comments, loaded.comments) && IsAsLoaded(sheet.conditions, loaded.conditions) &&
         IsAsLoaded(sheet.charts, loaded.charts, loaded.name);
}

// A part that a chart is written to tells all of it. Without a book it tells no cells and so not their values
// either, which change with other sheets.
bool IsUnchanged(const Chart& chart, const Chart& loaded, const std::string& own_sheet) {
  const Book none;
  return chart.name == loaded.name && chart.place == loaded.place && chart.placement == loaded.placement &&
         std::equal(chart.series.begin(), chart.series.end(), loaded.series.begin(), loaded.series.end(),
                    [&](const auto& one, const auto& other) { return IsAsLoaded(one, other, own_sheet); }) &&
         ChartXml(chart, none) == ChartXml(loaded, none);
}

}  // namespace mirelo::workbook
