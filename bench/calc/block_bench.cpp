// A table of quotes as it is written into a sheet, and what the office itself needs for the same cells.

#include <benchmark/benchmark.h>

#include <array>
#include <com/sun/star/container/XIndexAccess.hpp>
#include <com/sun/star/document/XUndoManagerSupplier.hpp>
#include <com/sun/star/sheet/XCellRangeData.hpp>
#include <com/sun/star/table/XCellRange.hpp>
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>

#include "adapters/calc/objects/spreadsheet_program.h"
#include "automation/variant.h"
#include "calc/office.h"
#include "host/excel/application.h"
#include "host/excel/range.h"
#include "uno/text.h"

namespace mirelo {
namespace {

using css::uno::Any;
using css::uno::Reference;
using css::uno::Sequence;
using css::uno::UNO_QUERY_THROW;

constexpr std::int32_t kRows = 500;
constexpr std::int32_t kColumns = 12;
constexpr std::int32_t kTextColumns = 2;

std::string Text(std::int32_t row, std::int32_t column) {
  return (column == 1 ? "TCK" : "Company ") + std::to_string(row);
}
double Price(std::int32_t row, std::int32_t column, int round) { return row * 0.25 + column + round * 0.01; }

VariantArray Values(int round) {
  VariantArray values(1, kRows, 1, kColumns);
  for (std::int32_t row = 1; row <= kRows; ++row) {
    for (std::int32_t column = 1; column <= kColumns; ++column) {
      values(row, column) =
          column <= kTextColumns ? Variant(Text(row, column)) : Variant(Price(row, column, round));
    }
  }
  return values;
}

Sequence<Sequence<Any>> Data(int round) {
  Sequence<Sequence<Any>> data(kRows);
  for (std::int32_t row = 1; row <= kRows; ++row) {
    Sequence<Any> cells(kColumns);
    for (std::int32_t column = 1; column <= kColumns; ++column) {
      cells.getArray()[column - 1] =
          column <= kTextColumns ? Any(uno::OfficeText(Text(row, column))) : Any(Price(row, column, round));
    }
    data.getArray()[row - 1] = cells;
  }
  return data;
}

void Block(benchmark::State& state) {
  const OpenDocument document;
  const auto application = calc::ApplicationOf(OfficeContext(), document.Spreadsheet());
  const auto cells = application->Range("A3")->Resize(kRows, kColumns);
  const std::array rounds{Values(0), Values(1)};
  std::size_t round = 0;
  for (auto _ : state) {
    state.PauseTiming();
    VariantArray values = rounds[++round % rounds.size()];
    state.ResumeTiming();
    cells->Value(std::move(values));
  }
}
BENCHMARK(Block)->Name("calc/block")->Unit(benchmark::kMillisecond);

// Nothing is kept for the user's undo, as there.
void BareBlock(benchmark::State& state) {
  const OpenDocument document;
  Reference<css::document::XUndoManagerSupplier>(document.Model(), UNO_QUERY_THROW)->getUndoManager()->lock();
  const Reference<css::container::XIndexAccess> sheets(document.Spreadsheet()->getSheets(), UNO_QUERY_THROW);
  const Reference<css::table::XCellRange> sheet(sheets->getByIndex(0), UNO_QUERY_THROW);
  const Reference<css::sheet::XCellRangeData> cells(
      sheet->getCellRangeByPosition(0, 2, kColumns - 1, 2 + kRows - 1), UNO_QUERY_THROW);
  const std::array rounds{Data(0), Data(1)};
  std::size_t round = 0;
  for (auto _ : state) cells->setDataArray(rounds[++round % rounds.size()]);
}
BENCHMARK(BareBlock)->Name("calc/bare_block")->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace mirelo
