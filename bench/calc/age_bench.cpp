// How old a streamed quote is when it stands in its cell of an open document: from the moment at which
// QuoteTracker hands it to its socket, over ours, the office's loop, the decoder and the tables and charts of
// a working day, to the cell that is read back.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "adapters/calc/objects/spreadsheet_program.h"
#include "calc/borrowed_machine.h"
#include "calc/longest_work.h"
#include "calc/office.h"
#include "day/dialog_result.h"
#include "day/noted_quotes.h"
#include "day/streaming_wishes.h"
#include "host/excel/application.h"
#include "host/excel/worksheets.h"
#include "libreoffice/document_day.h"
#include "libreoffice/machine.h"
#include "person/attended_desktop.h"
#include "person/dialog_person.h"
#include "quotetracker/server.h"
#include "terminal/output.h"

namespace mirelo {
namespace {

using Nanoseconds = std::chrono::nanoseconds;

constexpr double kRate = 100;
constexpr int kTickers = 20;
constexpr std::int64_t kWarmUp = 200;  // quotes
constexpr std::size_t kMeasured = 1000;
constexpr std::chrono::milliseconds kBetweenLooks{250};
constexpr std::chrono::seconds kPatience{60};
constexpr int kDays = 3;

DialogWishes Wishes() {
  std::vector<std::string> tickers;
  for (int i = 1; i <= kTickers; ++i) tickers.push_back("TCK" + std::to_string(i));
  DialogWishes wishes = StreamingWishes(std::move(tickers), {"Last", "LastVolume", "Time", "Charts"});
  for (const auto& setting : {DialogWishes::Setting{"RowsLimit", "100"},
                              {"BuildCharts", "1"},
                              {"ChartStyle", "Blue"},
                              {"ChartPoints", "20"}})
    wishes.settings.push_back(setting);
  return wishes;
}

// What was measured on a day.
struct Measured {
  std::vector<Nanoseconds> ages;  // from the youngest
  Nanoseconds hold{};
};

// A day in a document of its own, against a stand-in of its own.
class CalcDay {
 public:
  CalcDay() {
    quotetracker::ServerOptions serving;
    serving.quotes = std::make_unique<NotedQuotes>(sendings_);
    serving.stream.rate = kRate;
    server_ = std::make_unique<quotetracker::Server>(std::move(serving));
    auto& host = machine_.host();
    host.OverrideHttpPort(server_->HttpPort());
    host.Override("SocketPort", std::to_string(server_->StreamPort()));
    person_ = std::make_unique<DialogPerson>(wishes_, *borrowed_.desktop);
    machine_.take_failure = [this](const std::exception_ptr& failure) {
      failure_ = failure;
      return true;
    };
    PressGo();
    application_ = calc::ApplicationOf(OfficeContext(), document_.Spreadsheet());
  }
  ~CalcDay() { machine_.take_failure = nullptr; }
  CalcDay(const CalcDay&) = delete;
  CalcDay& operator=(const CalcDay&) = delete;

  Measured Measure() {
    const auto table = application_->Worksheets()->Item("Dovanta2_Quotes");
    CellAges ages(sendings_, wishes_.tickers.size(), kWarmUp);
    libreoffice::DocumentDay day(machine_, OfficeContext(), document_.Model());
    day.day().Wrote.Subscribe([&] { ages.NoteIn(*table); });
    day.Start();
    const LongestWork work(machine_.loop());
    const auto until = std::chrono::steady_clock::now() + kPatience;
    while (ages.All().size() < kMeasured && !failure_) {
      if (std::chrono::steady_clock::now() > until) throw std::runtime_error("quotes do not come");
      LetTheOfficeRun(kBetweenLooks);
    }
    const Nanoseconds hold = work.Longest();
    day.day().Stop();
    if (failure_) std::rethrow_exception(failure_);
    Measured measured{ages.All(), hold};
    std::ranges::sort(measured.ages);
    return measured;
  }

 private:
  void PressGo() {
    libreoffice::DocumentDay day(machine_, OfficeContext(), document_.Model());
    if (day.day().ShowDialog() != day::kToStream)
      throw std::runtime_error("Go was not committed: " + borrowed_.printed.Text());
  }

  const DialogWishes wishes_ = Wishes();
  const OpenDocument document_;
  BorrowedMachine& borrowed_ = BorrowedMachine::Get();
  libreoffice::Machine& machine_ = borrowed_.machine;
  Sendings sendings_;
  std::unique_ptr<quotetracker::Server> server_;
  std::unique_ptr<DialogPerson> person_;
  std::shared_ptr<host::excel::Application> application_;
  std::exception_ptr failure_;
};

// The days of this run. All claims are about the same ones.
const Measured& DayOf(std::size_t number) {
  static std::vector<Measured> days;
  while (days.size() <= number) days.push_back(CalcDay().Measure());
  return days[number];
}

void Age(benchmark::State& state, double part) {
  static std::map<double, std::size_t> next;
  for (auto _ : state) {
    const auto& ages = DayOf(next[part]++).ages;
    const auto place = static_cast<std::size_t>(static_cast<double>(ages.size() - 1) * part);
    state.counters["ns_per_item"] = static_cast<double>(ages[place].count());
  }
}
BENCHMARK_CAPTURE(Age, p50, 0.50)->Name("calc/age/p50")->Iterations(1)->Repetitions(kDays);
BENCHMARK_CAPTURE(Age, p99, 0.99)->Name("calc/age/p99")->Iterations(1)->Repetitions(kDays);

void Hold(benchmark::State& state) {
  static std::size_t next = 0;
  for (auto _ : state) state.counters["ns_per_item"] = static_cast<double>(DayOf(next++).hold.count());
}
BENCHMARK(Hold)->Name("calc/hold")->Iterations(1)->Repetitions(kDays);

}  // namespace
}  // namespace mirelo
