// How long cells that ask for quotes hold LibreOffice's main thread: thousands of them, most on no screen,
// beside a document's own formulas.

#include <benchmark/benchmark.h>

#include <array>
#include <chrono>
#include <com/sun/star/container/XIndexAccess.hpp>
#include <com/sun/star/sheet/XCellRangeFormula.hpp>
#include <com/sun/star/sheet/XSpreadsheets.hpp>
#include <com/sun/star/table/XCell.hpp>
#include <com/sun/star/table/XCellRange.hpp>
#include <cstddef>
#include <stdexcept>
#include <string>

#include "calc/borrowed_machine.h"
#include "calc/longest_work.h"
#include "calc/office.h"
#include "uno/text.h"

namespace mirelo {
namespace {

using css::uno::Reference;
using css::uno::Sequence;
using css::uno::UNO_QUERY_THROW;
using Formulas = Sequence<Sequence<rtl::OUString>>;

constexpr std::array kAskedColumns{"Last", "Bid", "Ask", "Volume", "Time"};
constexpr sal_Int32 kTickers = 2000;
constexpr sal_Int32 kOwnRows = 20000;
constexpr sal_Int32 kOwnColumns = 5;
constexpr std::chrono::seconds kPatienceWithCells{60};
constexpr std::chrono::seconds kWatched{15};

template <class Formula>
Formulas FormulasOf(sal_Int32 rows, sal_Int32 columns, Formula&& formula) {
  Formulas all(rows);
  for (sal_Int32 row = 0; row < rows; ++row) {
    Sequence<rtl::OUString> cells(columns);
    for (sal_Int32 column = 0; column < columns; ++column)
      cells.getArray()[column] = uno::OfficeText(formula(row, column));
    all.getArray()[row] = cells;
  }
  return all;
}

void PutFormulas(const Reference<css::table::XCellRange>& sheet, const Formulas& formulas) {
  const auto cells =
      sheet->getCellRangeByPosition(0, 0, formulas[0].getLength() - 1, formulas.getLength() - 1);
  Reference<css::sheet::XCellRangeFormula>(cells, UNO_QUERY_THROW)->setFormulaArray(formulas);
}

Reference<css::table::XCellRange> SheetAt(const OpenDocument& document, sal_Int32 place) {
  const Reference<css::container::XIndexAccess> sheets(document.Spreadsheet()->getSheets(), UNO_QUERY_THROW);
  return {sheets->getByIndex(place), UNO_QUERY_THROW};
}

void AwaitQuotes(const Reference<css::table::XCellRange>& sheet) {
  const auto count = sheet->getCellByPosition(static_cast<sal_Int32>(kAskedColumns.size()) + 1, 0);
  const auto until = std::chrono::steady_clock::now() + kPatienceWithCells;
  while (count->getValue() < kTickers * static_cast<double>(kAskedColumns.size())) {
    if (std::chrono::steady_clock::now() > until) throw std::runtime_error("quotes do not come into cells");
    LetTheOfficeRun(std::chrono::milliseconds(250));
    count->setFormula("=COUNT(A1:E2000)");
  }
  count->setFormula("");
}

void HoldOfCells(benchmark::State& state) {
  for (auto _ : state) {
    const OpenDocument document;
    document.Spreadsheet()->getSheets()->insertNewByName("Own", 1);
    PutFormulas(SheetAt(document, 1), FormulasOf(kOwnRows, kOwnColumns, [](sal_Int32 row, sal_Int32 column) {
                  return "=" + std::to_string(row) + "+" + std::to_string(column);
                }));
    const auto asking = SheetAt(document, 0);
    PutFormulas(asking, FormulasOf(kTickers, static_cast<sal_Int32>(kAskedColumns.size()),
                                   [](sal_Int32 row, sal_Int32 column) {
                                     return "=QUOTE(\"T" + std::to_string(row) + "\";\"" +
                                            kAskedColumns[static_cast<std::size_t>(column)] + "\")";
                                   }));
    AwaitQuotes(asking);
    const LongestWork work(BorrowedMachine::Get().machine.loop());
    LetTheOfficeRun(kWatched);
    state.counters["ns_per_item"] = static_cast<double>(work.Longest().count());
  }
}
BENCHMARK(HoldOfCells)->Name("calc/hold_of_cells")->Iterations(1)->Repetitions(1);

}  // namespace
}  // namespace mirelo
