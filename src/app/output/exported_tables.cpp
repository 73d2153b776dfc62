#include "app/output/exported_tables.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <utility>

#include "automation/date.h"
#include "automation/iso_text.h"
#include "automation/text.h"
#include "automation/variant.h"
#include "day/column_type.h"
#include "host/excel/application.h"
#include "host/excel/constants.h"
#include "host/excel/range.h"
#include "host/excel/worksheet.h"
#include "host/excel/worksheets.h"
#include "snapshot/column_vocabulary.h"
#include "worksheet/quote_table.h"
#include "worksheet/vertical_sheets.h"

namespace mirelo::app {

namespace excel = host::excel;

using host::DataColumn;
using host::DataRow;
using host::DataTable;
using host::DataType;
using host::DataValue;

namespace {

// Both kinds of sheets have their headers there, and their rows below.
constexpr std::int32_t kHeaders = kHeaderRow;
constexpr std::int32_t kFirstRow = kFirstTickerRow;
static_assert(kFirstHistoryRow == kFirstRow);

// Rows that are read at once: an array holds no whole sheet.
constexpr std::int32_t kRowsAtOnce = 4096;

std::string TextIn(excel::Range& cell) { return cell.Value().ToText(); }

DataType TypeOf(const std::string& column) {
  const ColumnRow* const row = FindColumn(UCase(column));
  return row == nullptr ? DataType::Any : day::TypeOf(row->kind);
}

DataValue MomentOf(Date date) {
  constexpr double kEndOfDates = 2'958'466;  // 1 January 10000
  if (date.serial < 0 || date.serial >= kEndOfDates) return date.serial;
  return IsoText(date);
}

DataValue ValueOf(const Variant& cell) {
  switch (cell.type()) {
    case Variant::Type::Integer:
    case Variant::Type::Long:
      return std::int64_t{cell.ToInt32()};
    case Variant::Type::Double:
      return cell.ToDouble() + 0.0;
    case Variant::Type::Boolean:
      return std::string(cell.ToBoolean() ? "TRUE" : "FALSE");
    case Variant::Type::Date:
      return MomentOf(cell.ToDate());
    case Variant::Type::String:
      if (cell.IfText()->empty()) break;
      return *cell.IfText();
    case Variant::Type::Empty:
    case Variant::Type::Object:
    case Variant::Type::Array:
      break;
  }
  return {};
}

bool IsNothing(const DataValue& value) { return std::holds_alternative<std::monostate>(value); }

bool HasColumn(const std::vector<DataColumn>& columns, const std::string& name) {
  return std::ranges::any_of(columns, [&](const auto& column) { return EqualText(column.name, name); });
}

std::string FreeName(const std::vector<DataColumn>& columns, const std::string& name) {
  std::string free = name;
  for (int number = 2; HasColumn(columns, free); ++number) free = name + "_" + std::to_string(number);
  return free;
}

std::vector<DataColumn> ColumnsOf(excel::Worksheet& sheet) {
  std::vector<DataColumn> columns;
  const std::int32_t most = sheet.Columns()->Count();
  for (std::int32_t column = 1; column <= most; ++column) {
    const std::string header = TextIn(*sheet.Cells(kHeaders, column));
    if (header.empty()) break;
    columns.push_back({FreeName(columns, header), TypeOf(header)});
  }
  return columns;
}

void DropEmptyRowsAtTheFoot(std::vector<DataRow>& rows) {
  while (!rows.empty() && std::ranges::all_of(rows.back(), IsNothing)) rows.pop_back();
}

std::vector<DataRow> RowsOf(excel::Worksheet& sheet, std::size_t width) {
  std::vector<DataRow> rows;
  if (width == 0) return rows;
  const std::int32_t last = sheet.Cells(1, 1)->SpecialCells(excel::xlCellTypeLastCell)->Row();
  for (std::int32_t first = kFirstRow; first <= last; first += kRowsAtOnce) {
    const std::int32_t height = std::min(kRowsAtOnce, last - first + 1);
    const Variant block = sheet.Cells(first, 1)->Resize(height, static_cast<std::int32_t>(width))->Value();
    for (std::int32_t r = 1; r <= height; ++r) {
      DataRow& row = rows.emplace_back();
      for (std::int32_t c = 1; c <= static_cast<std::int32_t>(width); ++c) {
        row.push_back(ValueOf(block.IsArray() ? block.AsArray()(r, c) : block));
      }
    }
  }
  DropEmptyRowsAtTheFoot(rows);
  return rows;
}

// As the day takes the tickers of the table: down to the first cell without one.
void CutBehindTheTickers(std::vector<DataRow>& rows) {
  const auto end = std::ranges::find_if(rows, [](const DataRow& row) { return IsNothing(row.front()); });
  rows.erase(end, rows.end());
}

std::size_t PlaceOf(std::vector<DataColumn>& columns, const DataColumn& column) {
  const auto found =
      std::ranges::find_if(columns, [&](const auto& each) { return EqualText(each.name, column.name); });
  const auto place = static_cast<std::size_t>(found - columns.begin());
  if (found == columns.end()) columns.push_back(column);
  return place;
}

}  // namespace

std::vector<ExportedSheet> ExportedSheets(excel::Application& application) {
  std::vector<ExportedSheet> found;
  const auto sheets = application.Worksheets();
  for (std::int32_t i = 1; i <= sheets->Count(); ++i) {
    auto sheet = sheets->Item(i);
    std::string name = sheet->Name();
    if (EqualText(name, kQuoteTable)) {
      found.push_back({std::move(sheet), std::move(name), {}});
    } else if (EqualText(TextIn(*sheet->Range(kSetUpCell)), kSetUpMark)) {
      std::string ticker = TextIn(*sheet->Range(kTickerCell));
      if (!ticker.empty()) found.push_back({std::move(sheet), std::move(name), std::move(ticker)});
    }
  }
  return found;
}

DataTable ReadTable(const ExportedSheet& exported) {
  DataTable table;
  table.name = exported.IsQuoteTable() ? kQuoteTableName : kHistoryName;
  table.columns = ColumnsOf(*exported.sheet);
  table.rows = RowsOf(*exported.sheet, table.columns.size());
  if (exported.IsQuoteTable()) CutBehindTheTickers(table.rows);
  return table;
}

DataTable ReadHistories(const std::vector<ExportedSheet>& sheets) {
  DataTable all{kHistoryName, {{std::string(RowOfColumn(Column::Ticker).name), DataType::Text}}, {}};
  for (const ExportedSheet& exported : sheets) {
    if (exported.IsQuoteTable()) continue;
    DataTable one = ReadTable(exported);
    std::vector<std::size_t> places;
    for (const DataColumn& column : one.columns) places.push_back(PlaceOf(all.columns, column));
    for (DataRow& row : one.rows) {
      DataRow& wide = all.rows.emplace_back(all.columns.size());
      for (std::size_t c = 0; c < places.size(); ++c) wide[places[c]] = std::move(row[c]);
      wide.front() = exported.ticker;
    }
  }
  for (DataRow& row : all.rows) row.resize(all.columns.size());
  return all;
}

}  // namespace mirelo::app
