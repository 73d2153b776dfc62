// The road of a streamed quote through a working day: from the bytes that the socket hands over to the cells
// of the quote table and of its history. Times are per quote; what it is compared with is the same bytes,
// decoded, published, taken and freed.

#include <benchmark/benchmark.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "adapters/headless/system_clock.h"
#include "adapters/workbook/spreadsheet.h"
#include "automation/text.h"
#include "automation/variant.h"
#include "day/day_tables.h"
#include "host/excel/application.h"
#include "host/excel/range.h"
#include "host/excel/worksheet.h"
#include "host/excel/worksheets.h"
#include "streaming/realistic_records.h"
#include "support/idle_loop.h"
#include "support/stream_rig.h"

namespace mirelo::bench {
namespace {

constexpr int kRecords = 20'000;
constexpr int kTickers = 100;
constexpr std::int32_t kNoLimit = 0;
constexpr std::int32_t kUsualLimit = 20;         // of a history's rows, unless it is set
constexpr std::int32_t kFormattedRows = 36'000;  // of a history without a limit
constexpr const char* kColumns = "Ticker,Last,Change,Bid,Ask,Volume,LastVolume,Date,Time";
constexpr const char* kFields = "Last,LastVolume,Time";

// A workbook as Go leaves it: the quote table, and a history for each ticker.
class Tables {
 public:
  Tables(const std::vector<std::string>& tickers, std::int32_t rows) {
    const auto sheets = application_->Worksheets();
    const auto table = sheets->Add();
    table->Name("Dovanta2_Quotes");
    SetUp(*table, kColumns, static_cast<std::int32_t>(tickers.size()));
    std::int32_t row = 3;
    for (const std::string& ticker : tickers) {
      table->Cells(row++, 1)->Value("'" + ticker);
      const auto sheet = sheets->Add();
      sheet->Name("Quotes_Vertical(" + ticker + ")");
      sheet->Cells(1, 1)->Value("Ticker:");
      sheet->Cells(1, 2)->Value("'" + ticker);
      SetUp(*sheet, kFields, rows);
    }
  }
  host::excel::Application& Application() { return *application_; }

 private:
  static void SetUp(host::excel::Worksheet& sheet, const char* names, std::int32_t rows) {
    std::int32_t column = 1;
    for (const std::string& name : Split(names, ",")) {
      sheet.Cells(2, column)->Value(name);
      const auto cells = sheet.Cells(3, column)->Resize(rows, 1);
      if (name == "Date") {
        cells->NumberFormat("mm/dd/yyyy");
      } else if (name == "Time") {
        cells->NumberFormat("hh:mm:ss");
      } else if (name.ends_with("Volume")) {
        cells->NumberFormat("#,##0");
      } else if (name != "Ticker") {
        cells->NumberFormat("0.00");
      }
      ++column;
    }
  }

  workbook::Spreadsheet spreadsheet_ = workbook::Spreadsheet::New();
  std::shared_ptr<host::excel::Application> application_ = spreadsheet_.Application();
};

class Rig {
 public:
  explicit Rig(std::int32_t rows_limit = kUsualLimit) : rig_(loop_) {
    rig_.host.Use(clock_);
    rig_.Setting("ListRight", kColumns);
    rig_.Setting("VerticalTable", 1);
    rig_.Setting("RowsLimit", rows_limit);
    rig_.Setting("BuildCharts", 0);
    rig_.Renew();
    rig_.stream->DovantaFormatUserDate("mm/dd/yyyy");
    rig_.stream->connect();
  }

  // Each quote is taken in the handler of its own event.
  template <class Use>
  void TakeWith(Use use) {
    rig_.stream->QTDatas.Subscribe([this, use] {
      for (const auto& quote : *rig_.stream->GetQTData()) use(*quote);
      rig_.stream->FreeQTDataBuffer();
    });
  }
  void Deliver(const std::string& chunk) { rig_.Deliver(chunk); }
  cMirelo& Facade() { return *rig_.facade; }

 private:
  testing::IdleLoop loop_;
  headless::SystemClock clock_;
  testing::StreamRig rig_;
};

RealisticRecords Records() {
  return RealisticRecords({.symbols = kTickers, .records = kRecords, .moving = true});
}

std::vector<std::string> TickersOf(const RealisticRecords& records) {
  std::vector<std::string> tickers;
  Rig rig;
  rig.TakeWith([&](const cQTData& quote) { tickers.push_back(quote.Symbol()); });
  for (const std::string& chunk : records.Opening()) rig.Deliver(chunk);
  return tickers;
}

void CountQuotes(benchmark::State& state, std::int64_t quotes) {
  if (quotes < state.iterations() * kRecords * 98 / 100)
    state.SkipWithError("too few records were published");
  state.counters["ns_per_item"] =
      benchmark::Counter(1e-9 * static_cast<double>(state.iterations()) * kRecords,
                         benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

void Publish(benchmark::State& state) {
  const RealisticRecords records = Records();
  const std::vector<std::string> chunks = records.Chunks();
  Rig rig;
  std::int64_t taken = 0;
  rig.TakeWith([&](const cQTData& quote) {
    benchmark::DoNotOptimize(quote.Last_Price());
    ++taken;
  });
  for (auto _ : state) {
    for (const std::string& chunk : chunks) rig.Deliver(chunk);
  }
  CountQuotes(state, taken);
}

// What came in a chunk is written behind it. Histories have no limit, so that a quote writes its own row, or
// they are full, so that all their rows move up for it.
void Road(benchmark::State& state, std::int32_t rows_limit) {
  const RealisticRecords records = Records();
  const std::vector<std::string> chunks = records.Chunks();
  const std::vector<std::string> tickers = TickersOf(records);
  Rig rig(rows_limit);
  Tables workbook(tickers, rows_limit == kNoLimit ? kFormattedRows : rows_limit);
  day::DayTables tables(workbook.Application(), rig.Facade());
  rig.TakeWith([&](const cQTData& quote) { tables.Take(quote); });
  std::int64_t written = 0;
  for (auto _ : state) {
    for (const std::string& chunk : chunks) {
      rig.Deliver(chunk);
      written += tables.Write();
    }
  }
  if (tables.HistorySheets().size() != tickers.size()) state.SkipWithError("histories are missing");
  CountQuotes(state, written);
}

BENCHMARK(Publish)->Name("day/publish");
BENCHMARK_CAPTURE(Road, growing, kNoLimit)->Name("day/road/growing")->Iterations(20);
BENCHMARK_CAPTURE(Road, full, kUsualLimit)->Name("day/road/full");

}  // namespace
}  // namespace mirelo::bench

BENCHMARK_MAIN();
