// The tables of a working day: saving them, against the writing library fed directly with the same cells and
// formats, and the memory that formatted but empty rows take.

#include <benchmark/benchmark.h>
#include <malloc.h>
#include <xlsxwriter.h>

#include <cstdint>
#include <memory>
#include <string>

#include "adapters/workbook/spreadsheet.h"
#include "host/excel/border.h"
#include "host/excel/comment.h"
#include "host/excel/font.h"
#include "host/excel/format_conditions.h"
#include "host/excel/interior.h"
#include "host/excel/range.h"
#include "host/excel/shape.h"
#include "host/excel/workbook.h"
#include "host/excel/worksheet.h"
#include "host/excel/worksheets.h"
#include "support/temp_directory.h"

namespace mirelo {
namespace {

using namespace host::excel;

constexpr std::int32_t kFields = 4;
constexpr const char* kNames[kFields] = {"Last", "Volume", "Date", "Change"};
constexpr const char* kFormats[kFields] = {"0.00", "#,##0", "mm/dd/yyyy", "+ 0.00;- 0.00"};
constexpr std::int32_t kFirstRow = 3;
constexpr std::int32_t kFormattedRows = 36'000;
constexpr std::int32_t kFilledRows = 9'000;
constexpr const char* kMark = "Charts (Last & Volume)";

double ValueOf(std::int32_t row, std::int32_t field) { return row * 0.25 + field * 1000 + 0.01; }

void FormatHistory(Worksheet& sheet, std::int32_t rows) {
  for (std::int32_t field = 0; field < kFields; ++field) {
    const auto cells = sheet.Cells(kFirstRow, field + 1)->Resize(rows, 1);
    cells->NumberFormat(kFormats[field]);
    if (field >= 2) cells->HorizontalAlignment(xlHAlignCenter);
  }
  const auto conditions = sheet.Cells(kFirstRow, kFields)->Resize(rows, 1)->FormatConditions();
  conditions->Add(xlCellValue, xlGreater, "0")->Font()->ColorIndex(10);
  conditions->Add(xlCellValue, xlLess, "0")->Font()->ColorIndex(3);
}

// One ticker's history: headers, rows of quotes, and formats for many more rows to come.
workbook::Spreadsheet History() {
  auto spreadsheet = workbook::Spreadsheet::New();
  const auto sheet = spreadsheet.Application()->Worksheets()->Item(1);
  for (std::int32_t field = 0; field < kFields; ++field) sheet->Cells(2, field + 1)->Value(kNames[field]);
  const auto header = sheet->Cells(2, 1)->Resize(1, kFields);
  header->Font()->Bold(true);
  header->Interior()->ColorIndex(15);
  sheet->Cells(2, 1)->AddComment(kMark)->Shape()->ScaleWidth(1.48, msoFalse);
  FormatHistory(*sheet, kFormattedRows);
  VariantArray table(1, kFilledRows, 1, kFields);
  for (std::int32_t row = 1; row <= kFilledRows; ++row) {
    for (std::int32_t field = 0; field < kFields; ++field) table(row, field + 1) = ValueOf(row, field);
  }
  sheet->Cells(kFirstRow, 1)->Resize(kFilledRows, kFields)->Value(table);
  return spreadsheet;
}

void SaveTable(benchmark::State& state) {
  const testing::TempDirectory folder;
  auto spreadsheet = History();
  for (auto _ : state) spreadsheet.Save(folder / "history.xlsx");
}

void BareHistory(const std::string& file, std::string helpers, benchmark::State& state) {
  lxw_workbook_options options{};
  options.tmpdir = helpers.data();
  lxw_workbook* book = workbook_new_opt(file.c_str(), &options);
  lxw_worksheet* sheet = workbook_add_worksheet(book, "Sheet1");
  lxw_format* header = workbook_add_format(book);
  format_set_bold(header);
  format_set_bg_color(header, 0xC0C0C0);
  lxw_format* formats[kFields];
  for (std::int32_t field = 0; field < kFields; ++field) {
    const auto column = static_cast<lxw_col_t>(field);
    formats[field] = workbook_add_format(book);
    format_set_num_format(formats[field], kFormats[field]);
    if (field >= 2) format_set_align(formats[field], LXW_ALIGN_CENTER);
    worksheet_write_string(sheet, 1, column, kNames[field], header);
  }
  for (std::int32_t row = 1; row <= kFormattedRows; ++row) {
    const auto to_row = static_cast<lxw_row_t>(row + kFirstRow - 2);
    for (std::int32_t field = 0; field < kFields; ++field) {
      const auto to_column = static_cast<lxw_col_t>(field);
      if (row <= kFilledRows) {
        worksheet_write_number(sheet, to_row, to_column, ValueOf(row, field), formats[field]);
      } else {
        worksheet_write_blank(sheet, to_row, to_column, formats[field]);
      }
    }
  }
  worksheet_write_comment(sheet, 1, 0, kMark);
  const std::pair<std::uint8_t, lxw_color_t> conditions[] = {
      {LXW_CONDITIONAL_CRITERIA_GREATER_THAN, 0x008000}, {LXW_CONDITIONAL_CRITERIA_LESS_THAN, 0xFF0000}};
  for (const auto& [criteria, color] : conditions) {
    lxw_conditional_format rule{};
    rule.type = LXW_CONDITIONAL_TYPE_CELL;
    rule.criteria = criteria;
    rule.format = workbook_add_format(book);
    format_set_font_color(rule.format, color);
    worksheet_conditional_format_range(sheet, kFirstRow - 1, kFields - 1, kFormattedRows + kFirstRow - 2,
                                       kFields - 1, &rule);
  }
  if (workbook_close(book) != LXW_NO_ERROR) state.SkipWithError("the file cannot be written");
}

void BareSaveTable(benchmark::State& state) {
  const testing::TempDirectory folder;
  for (auto _ : state) BareHistory((folder / "history.xlsx").string(), folder.path().string(), state);
}

std::size_t BytesInUse() {
  const struct mallinfo2 heap = mallinfo2();
  return heap.uordblks + heap.hblkhd;
}

// The memory that a sheet formatted so far down takes, formats and conditions of all fields together.
void FormattedRows(benchmark::State& state) {
  const auto rows = static_cast<std::int32_t>(state.range(0));
  std::size_t bytes = 0;
  for (auto _ : state) {
    const std::size_t before = BytesInUse();
    const auto spreadsheet = workbook::Spreadsheet::New();
    FormatHistory(*spreadsheet.Application()->Worksheets()->Item(1), rows);
    bytes = BytesInUse() - before;
  }
  state.counters["bytes"] = static_cast<double>(bytes);
}

BENCHMARK(SaveTable)->Name("table/save")->Unit(benchmark::kMillisecond);
BENCHMARK(BareSaveTable)->Name("table/bare_save")->Unit(benchmark::kMillisecond);
BENCHMARK(FormattedRows)->Name("table/formatted_rows")->Arg(20)->Arg(36'000);

}  // namespace
}  // namespace mirelo
