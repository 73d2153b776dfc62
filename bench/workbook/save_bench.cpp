// Saving a table of quotes, against the writing library fed directly with the same cells and formats. What is
// measured beyond it is the walk through the sheet, reading the file back, and putting it in place.

#include <benchmark/benchmark.h>
#include <xlsxwriter.h>

#include <cstdint>
#include <string>

#include "adapters/workbook/spreadsheet.h"
#include "host/excel/range.h"
#include "host/excel/workbook.h"
#include "host/excel/worksheet.h"
#include "host/excel/worksheets.h"
#include "support/temp_directory.h"

namespace mirelo {
namespace {

constexpr std::int32_t kTexts = 2;  // the first columns; the others are prices
constexpr std::int32_t kSavedColumns = 8;

std::string TextOf(std::int32_t row, std::int32_t column) {
  return (column == 0 ? "T" : "Company ") + std::to_string(row);
}
double PriceOf(std::int32_t row, std::int32_t column) { return row * 0.25 + column; }

workbook::Spreadsheet Quotes(std::int32_t rows) {
  auto spreadsheet = workbook::Spreadsheet::New();
  const auto range =
      spreadsheet.Application()->Worksheets()->Item(1)->Cells(1, 1)->Resize(rows, kSavedColumns);
  VariantArray table(0, rows - 1, 0, kSavedColumns - 1);
  for (std::int32_t row = 0; row < rows; ++row) {
    for (std::int32_t column = 0; column < kSavedColumns; ++column) {
      if (column < kTexts) {
        table(row, column) = TextOf(row, column);
      } else {
        table(row, column) = PriceOf(row, column);
      }
    }
  }
  range->NumberFormat("0.00");
  range->Value(table);
  return spreadsheet;
}

void Save(benchmark::State& state) {
  const testing::TempDirectory folder;
  auto spreadsheet = Quotes(static_cast<std::int32_t>(state.range(0)));
  for (auto _ : state) spreadsheet.Save(folder / "quotes.xlsx");
}

void BareSave(benchmark::State& state) {
  const testing::TempDirectory folder;
  const std::string file = (folder / "quotes.xlsx").string();
  std::string helpers = folder.path().string();
  const auto rows = static_cast<std::int32_t>(state.range(0));
  for (auto _ : state) {
    lxw_workbook_options options{};
    options.tmpdir = helpers.data();
    lxw_workbook* book = workbook_new_opt(file.c_str(), &options);
    lxw_worksheet* sheet = workbook_add_worksheet(book, "Sheet1");
    lxw_format* format = workbook_add_format(book);
    format_set_num_format_index(format, 2);
    for (std::int32_t row = 0; row < rows; ++row) {
      for (std::int32_t column = 0; column < kSavedColumns; ++column) {
        const auto to_row = static_cast<lxw_row_t>(row);
        const auto to_column = static_cast<lxw_col_t>(column);
        if (column < kTexts) {
          worksheet_write_string(sheet, to_row, to_column, TextOf(row, column).c_str(), format);
        } else {
          worksheet_write_number(sheet, to_row, to_column, PriceOf(row, column), format);
        }
      }
    }
    if (workbook_close(book) != LXW_NO_ERROR) state.SkipWithError("the file cannot be written");
  }
}

BENCHMARK(Save)->Name("workbook/save")->Arg(20'000)->Unit(benchmark::kMillisecond);
BENCHMARK(BareSave)->Name("workbook/bare_save")->Arg(20'000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace mirelo

BENCHMARK_MAIN();
