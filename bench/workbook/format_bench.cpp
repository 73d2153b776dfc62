// Writing blocks and formatting rows: what they cost as the sheet grows.

#include <benchmark/benchmark.h>

#include <cstdint>
#include <vector>

#include "adapters/workbook/spreadsheet.h"
#include "host/excel/font.h"
#include "host/excel/range.h"
#include "host/excel/workbook.h"
#include "host/excel/worksheet.h"
#include "host/excel/worksheets.h"

namespace mirelo {
namespace {

constexpr std::int32_t kColumns = 8;

VariantArray Prices(std::int32_t rows) {
  VariantArray table(1, rows, 1, kColumns);
  for (std::int32_t row = 1; row <= rows; ++row) {
    for (std::int32_t column = 1; column <= kColumns; ++column) table(row, column) = row * 0.25 + column;
  }
  return table;
}

std::shared_ptr<host::excel::Worksheet> NewSheet() {
  return workbook::Spreadsheet::New().Application()->Worksheets()->Item(1);
}

void WriteBlock(benchmark::State& state) {
  const auto rows = static_cast<std::int32_t>(state.range(0));
  const auto range = NewSheet()->Cells(3, 1)->Resize(rows, kColumns);
  const Variant table = Prices(rows);
  for (auto _ : state) range->Value(table);
  state.SetItemsProcessed(state.iterations() * rows);
}

// The least that storing values as values can cost: a copy of the numbers into one array.
void BareBlock(benchmark::State& state) {
  const auto rows = static_cast<std::int32_t>(state.range(0));
  const VariantArray table = Prices(rows);
  std::vector<Variant> cells(static_cast<std::size_t>(rows) * kColumns);
  for (auto _ : state) {
    auto cell = cells.begin();
    for (std::int32_t row = 1; row <= rows; ++row) {
      for (std::int32_t column = 1; column <= kColumns; ++column) *cell++ = table(row, column);
    }
    benchmark::DoNotOptimize(cells.data());
  }
}

void FormatRows(benchmark::State& state) {
  const auto rows = static_cast<std::int32_t>(state.range(0));
  const auto sheet = NewSheet();
  const auto font = sheet->Cells(3, 1)->Resize(rows, kColumns)->Font();
  bool bold = false;
  for (auto _ : state) font->Bold(bold = !bold);
}

BENCHMARK(WriteBlock)->Name("workbook/block")->Arg(5'000)->Unit(benchmark::kMicrosecond);
BENCHMARK(BareBlock)->Name("workbook/bare_block")->Arg(5'000)->Unit(benchmark::kMicrosecond);
BENCHMARK(FormatRows)->Name("workbook/format")->Arg(10)->Arg(1'000'000);

}  // namespace
}  // namespace mirelo
