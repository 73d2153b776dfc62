// A table of quotes as a day writes it into an open document, and what the office itself needs for the same
// cells.

#include <benchmark/benchmark.h>

#include <array>
#include <chrono>
#include <com/sun/star/container/XNameAccess.hpp>
#include <com/sun/star/document/XUndoManagerSupplier.hpp>
#include <com/sun/star/sheet/XCellRangeData.hpp>
#include <com/sun/star/sheet/XSpreadsheets.hpp>
#include <com/sun/star/table/XCellRange.hpp>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "adapters/calc/objects/spreadsheet_program.h"
#include "calc/office.h"
#include "day/day_tables.h"
#include "day/quote_rows.h"
#include "worksheet/desk.h"

namespace mirelo {
namespace {

using css::uno::Any;
using css::uno::Reference;
using css::uno::Sequence;
using css::uno::UNO_QUERY_THROW;

constexpr std::int32_t kTableRows = 500;
constexpr const char* kWrittenColumns =
    "Date,Time,Last,Bid,Ask,Change,Volume,High,Low,BidSize,AskSize,LastVolume";
constexpr std::int32_t kWrittenCount = 12;

// Measures what is done, and notes it for one time that it is.
template <class Act>
void Measured(benchmark::State& state, Act&& act) {
  const auto start = std::chrono::steady_clock::now();
  act();
  const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
  state.SetIterationTime(taken.count());
  auto& counter = state.counters["ns_per_item"];
  counter = benchmark::Counter(counter.value + taken.count() * 1e9, benchmark::Counter::kAvgIterations);
}

// The quote table as Go leaves it in a document, and a day of it.
class TableOfADay {
 public:
  TableOfADay() {
    if (desk_.Go(application_, kTableRows, Desk::Fields::None).count() < 0)
      throw std::runtime_error("Go was refused");
    tables_ = std::make_unique<day::DayTables>(*application_, desk_.Facade());
  }

  // Quotes of all tickers, which differ from one round to the next.
  void Take(int round) {
    for (std::size_t ticker = 0; ticker < tables_->Tickers().size(); ++ticker)
      tables_->Take(ticker, Quote(static_cast<int>(ticker), round));
  }
  void Write() { tables_->Write(); }

  Reference<css::sheet::XCellRangeData> Cells() const {
    const Reference<css::container::XNameAccess> sheets(document_.Spreadsheet()->getSheets(),
                                                        UNO_QUERY_THROW);
    const Reference<css::table::XCellRange> sheet(sheets->getByName("Dovanta2_Quotes"), UNO_QUERY_THROW);
    return {sheet->getCellRangeByPosition(1, 2, kWrittenCount, kTableRows + 1), UNO_QUERY_THROW};
  }
  // As there, nothing is kept for the user's undo.
  void KeepNoSteps() const {
    Reference<css::document::XUndoManagerSupplier>(document_.Model(), UNO_QUERY_THROW)
        ->getUndoManager()
        ->lock();
  }

 private:
  day::QuoteRow Quote(int ticker, int round) const {
    day::QuoteRow row;
    for (const std::string& column : tables_->Columns()) {
      const std::string number = std::to_string(ticker * 25 + round) + ".25";
      const std::string text = column == "Ticker" ? tables_->Tickers()[static_cast<std::size_t>(ticker)]
                               : column == "Date" ? "11/23/2026"
                               : column == "Time" ? (round == 0 ? "09:30:00" : "09:30:01")
                                                  : number;
      row.push_back(day::ReadValue(day::ReadingOf(column), text));
    }
    return row;
  }

  const OpenDocument document_;
  const std::shared_ptr<host::excel::Application> application_ =
      calc::ApplicationOf(OfficeContext(), document_.Spreadsheet());
  Desk desk_{std::string("Ticker,") + kWrittenColumns};
  std::unique_ptr<day::DayTables> tables_;
};

void Block(benchmark::State& state) {
  TableOfADay table;
  int round = 0;
  for (auto _ : state) {
    table.Take(round++ % 2);
    Measured(state, [&] { table.Write(); });
  }
}
BENCHMARK(Block)->Name("calc/block")->UseManualTime()->Unit(benchmark::kMillisecond);

// The same cells, as they stand there, in a table of its own.
void BareBlock(benchmark::State& state) {
  TableOfADay table;
  std::array<Sequence<Sequence<Any>>, 2> rounds;
  for (std::size_t round = 0; round < rounds.size(); ++round) {
    table.Take(static_cast<int>(round));
    table.Write();
    rounds[round] = table.Cells()->getDataArray();
  }
  table.KeepNoSteps();
  const auto cells = table.Cells();
  std::size_t round = 0;
  for (auto _ : state) {
    Measured(state, [&] { cells->setDataArray(rounds[round++ % rounds.size()]); });
  }
}
BENCHMARK(BareBlock)->Name("calc/bare_block")->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace mirelo
