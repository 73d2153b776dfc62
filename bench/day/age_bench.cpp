// How old a quote is when it stands in its cell: from the moment at which QuoteTracker hands it to its
// socket, over ours, the decoder and the tables of a working day, to the cell that is read back.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/sodium/sodium_vault.h"
#include "adapters/workbook/spreadsheet.h"
#include "app/attended_desktop.h"
#include "app/dialog_person.h"
#include "app/options.h"
#include "app/session.h"
#include "app/temporary_folder.h"
#include "day/dialog_result.h"
#include "day/working_day.h"
#include "host/excel/application.h"
#include "host/excel/range.h"
#include "host/excel/worksheet.h"
#include "host/excel/worksheets.h"
#include "quotetracker/market.h"
#include "quotetracker/server.h"
#include "terminal/output.h"

namespace mirelo {
namespace {

using Clock = std::chrono::steady_clock;
using Nanoseconds = std::chrono::nanoseconds;

constexpr double kRate = 1000;
constexpr std::int64_t kWarmUp = 300;
constexpr std::int64_t kMeasured = 2000;
const std::vector<std::string> kTickers{"MSFT", "IBM", "CSCO", "INTC", "ORCL", "DELL"};

// When each quote was sent. A quote is told by its volume, which is its number, counted from 1.
class Sendings {
 public:
  void Note(std::int64_t number) {
    times_[static_cast<std::size_t>(number) % times_.size()] = Clock::now().time_since_epoch().count();
  }
  Nanoseconds AgeOf(std::int64_t number) const {
    return Clock::now().time_since_epoch() -
           Clock::duration(times_[static_cast<std::size_t>(number) % times_.size()]);
  }

 private:
  std::array<std::atomic<Clock::rep>, 65536> times_{};
};

// Quotes of the tickers in turn, each noted when it is about to be sent.
class NotedQuotes : public quotetracker::QuoteSource {
 public:
  explicit NotedQuotes(Sendings& sendings) : sendings_(sendings) {}

  quotetracker::Moment Now() override { return market_.Now(); }
  const quotetracker::Quote& Look(std::string_view ticker) override { return market_.Look(ticker); }
  std::unique_ptr<quotetracker::QuoteUpdates> Subscribe(const std::vector<std::string>& tickers) override {
    return std::make_unique<Updates>(*this, tickers);
  }

 private:
  class Updates : public quotetracker::QuoteUpdates {
   public:
    Updates(NotedQuotes& source, std::vector<std::string> tickers)
        : source_(source), tickers_(std::move(tickers)) {}
    quotetracker::QuoteChange Next() override {
      const std::int64_t number = ++source_.number_;
      const std::size_t ticker = static_cast<std::size_t>(number) % tickers_.size();
      quote_ = source_.Look(tickers_[ticker]);
      quote_.volume = number;
      quote_.last_volume = 1;  // a trade: the record carries the volume
      source_.sendings_.Note(number);
      return {&quote_, ticker};
    }

   private:
    NotedQuotes& source_;
    std::vector<std::string> tickers_;
    quotetracker::Quote quote_;
  };

  Sendings& sendings_;
  quotetracker::Market market_{1};
  std::int64_t number_ = 0;
};

app::DialogWishes Wishes() {
  app::DialogWishes wishes;
  wishes.tickers = kTickers;
  wishes.columns = {"Ticker", "Volume", "Last", "Change", "Bid", "Ask", "LastVolume", "Date", "Time"};
  wishes.settings = {
      {"UpdateEvery", "1"},   {"Seconds", "0"},     {"ComQuoteSource", "Alpstein Finance (delayed)"},
      {"VerticalTable", "1"}, {"RowsLimit", "100"}, {"BuildCharts", "1"},
      {"ChartStyle", "Blue"}, {"ChartPoints", "20"}};
  for (const std::string& ticker : kTickers) {
    for (const char* field : {"Last", "LastVolume", "Time", "Charts"})
      wishes.ticks.push_back({ticker, field});
  }
  return wishes;
}

// The ages of kMeasured quotes of one working day, from the youngest.
std::vector<Nanoseconds> AgesOfADay() {
  const app::TemporaryFolder folder;
  sodium::SodiumVault vault(folder.Path());
  vault.Set({.name = "MireloDemo", .secret = "demo-secret"});

  Sendings sendings;
  quotetracker::ServerOptions serving;
  serving.quotes = std::make_unique<NotedQuotes>(sendings);
  serving.stream.rate = kRate;
  const quotetracker::Server server(std::move(serving));

  app::GlobalOptions options;
  options.registry = folder.Path() / "registry.db";
  app::Session session(options);
  auto& host = session.host();
  host.KeepCredentialsIn(folder.Path());
  host.OverrideHttpPort(server.HttpPort());
  host.Override("SocketPort", std::to_string(server.StreamPort()));
  const app::DialogWishes wishes = Wishes();
  terminal::TextOutput printed;
  auto desktop = std::make_unique<app::AttendedDesktop>(printed);
  const app::DialogPerson person(wishes, *desktop);
  host.ShowOn(std::move(desktop));

  auto spreadsheet = workbook::Spreadsheet::New();
  day::WorkingDay day(host.loop(), host.sockets(), session.replies(), spreadsheet.Application());
  if (day.ShowDialog() != day::kToStream) throw std::runtime_error("Go was not committed: " + printed.Text());
  const auto table = spreadsheet.Application()->Worksheets()->Item("Dovanta2_Quotes");

  std::vector<Nanoseconds> ages;
  std::vector<std::int64_t> seen(kTickers.size());
  day.Wrote.Subscribe([&] {
    for (std::size_t row = 0; row < kTickers.size(); ++row) {
      const auto number =
          static_cast<std::int64_t>(table->Cells(static_cast<std::int32_t>(row) + 3, 2)->Value().ToDouble());
      const auto step = static_cast<std::int64_t>(kTickers.size());
      for (std::int64_t n = seen[row] == 0 ? number : seen[row] + step; n <= number; n += step) {
        if (n > kWarmUp) ages.push_back(sendings.AgeOf(n));
      }
      seen[row] = number;
    }
  });
  day.Start();
  day.RunUntil([&] { return static_cast<std::int64_t>(ages.size()) >= kMeasured; });
  day.Stop();
  std::ranges::sort(ages);
  return ages;
}

void Age(benchmark::State& state, double part) {
  for (auto _ : state) {
    const auto ages = AgesOfADay();
    const auto place = static_cast<std::size_t>(static_cast<double>(ages.size() - 1) * part);
    state.counters["ns_per_item"] = static_cast<double>(ages[place].count());
  }
}
BENCHMARK_CAPTURE(Age, p50, 0.50)->Name("day/age/p50")->Iterations(1);
BENCHMARK_CAPTURE(Age, p99, 0.99)->Name("day/age/p99")->Iterations(1);

}  // namespace
}  // namespace mirelo

BENCHMARK_MAIN();
