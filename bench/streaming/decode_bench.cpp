// The road of a streamed quote: from the bytes that the socket hands over to a quote that was taken and
// freed. Times are per record; the bare walk reads every field of the same bytes into a plain struct and does
// nothing else.

#include <cstdint>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>
#include <malloc.h>

#include "adapters/headless/system_clock.h"
#include "bare_walk.h"
#include "realistic_records.h"
#include "support/idle_loop.h"
#include "support/stream_rig.h"

namespace mirelo::bench {
namespace {

constexpr int kRecords = 20'000;
constexpr char kUserFormat[] = "mm/dd/yyyy hh:mm:ss";

// Reports nanoseconds for each of `records` an iteration.
void CountRecords(benchmark::State& state, int records) {
  state.SetItemsProcessed(state.iterations() * records);
  state.counters["ns_per_item"] =
      benchmark::Counter(1e-9 * static_cast<double>(state.iterations()) * records,
                         benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

// A stream on the machine's clock, over a loop to which nothing happens.
class Rig {
 public:
  Rig() : rig_(loop_) {
    rig_.host.Use(clock_);
    Renew();
  }
  // A stream that knows no symbol, with nothing waiting.
  void Renew() {
    rig_.Renew();
    rig_.stream->DovantaFormatUserDate(kUserFormat);
    rig_.stream->StopEndlessWalks(true);  // as a day has it
    rig_.stream->CountZeros(true);
    rig_.stream->connect();
  }
  void TakeAtEachEvent() {
    rig_.stream->QTDatas.Subscribe([this] {
      for (const auto& quote : *rig_.stream->GetQTData()) benchmark::DoNotOptimize(quote->Last_Price());
      rig_.stream->FreeQTDataBuffer();
      ++taken_;
    });
  }
  void Deliver(const std::vector<std::string>& chunks) {
    for (const std::string& chunk : chunks) rig_.Deliver(chunk);
  }
  std::int64_t taken() const { return taken_; }
  cQTStreaming& stream() { return *rig_.stream; }

 private:
  testing::IdleLoop loop_;
  headless::SystemClock clock_;
  testing::StreamRig rig_;
  std::int64_t taken_ = 0;
};

void Bare(benchmark::State& state) {
  const RealisticRecords records({.records = kRecords});
  const char* const end = records.bytes().data() + records.bytes().size();
  for (auto _ : state) {
    for (const char* at = records.bytes().data(); at < end;) {
      BareRecord record{};
      at = ReadBare(at, record);
      benchmark::DoNotOptimize(record);
    }
  }
  CountRecords(state, kRecords);
}

// Records that change nothing: each symbol repeats what is known of it.
void Quiet(benchmark::State& state) {
  const RealisticRecords records({.records = kRecords});
  const std::vector<std::string> chunks = records.Chunks();
  Rig rig;
  rig.Deliver(records.Opening());
  rig.TakeAtEachEvent();
  for (auto _ : state) rig.Deliver(chunks);
  if (rig.taken() != 0) state.SkipWithError("a record changed something");
  CountRecords(state, kRecords);
}

// Records that change something, each published, taken and freed in the handler of its own event.
void PublishOf(benchmark::State& state, int symbols, int count) {
  const RealisticRecords records({.symbols = symbols, .records = count, .moving = true});
  const std::vector<std::string> chunks = records.Chunks();
  Rig rig;
  rig.Deliver(records.Opening());
  rig.stream().GetQTData();
  rig.stream().FreeQTDataBuffer();
  rig.TakeAtEachEvent();
  for (auto _ : state) rig.Deliver(chunks);
  const auto published = static_cast<double>(rig.taken()) / static_cast<double>(state.iterations() * count);
  state.counters["published"] = published;
  if (published < 0.98) state.SkipWithError("too few records were published");
  CountRecords(state, count);
}

void Publish(benchmark::State& state) { PublishOf(state, 500, kRecords); }

void Symbols(benchmark::State& state) { PublishOf(state, static_cast<int>(state.range(0)), 400'000); }

// Quotes that nobody takes, behind as many as the argument says. What earlier iterations gave back is given
// to the system, so that in both cases each quote lies in memory that is touched for the first time.
void Backlog(benchmark::State& state) {
  constexpr int kBatch = 100'000;
  const RealisticRecords records({.records = kBatch, .moving = true});
  const std::vector<std::string> chunks = records.Chunks();
  Rig rig;
  for (auto _ : state) {
    state.PauseTiming();
    rig.Renew();
    malloc_trim(0);
    rig.stream().StartStop(false);
    for (std::int64_t waiting = 0; waiting < state.range(0); waiting += kBatch) rig.Deliver(chunks);
    state.ResumeTiming();
    rig.Deliver(chunks);
  }
  rig.stream().StartStop(true);
  const auto waiting = rig.stream().GetQTData()->Count();
  if (waiting < static_cast<double>(state.range(0) + kBatch) * 0.98)
    state.SkipWithError("quotes are missing");
  CountRecords(state, kBatch);
}

BENCHMARK(Bare)->Name("decode/bare");
BENCHMARK(Quiet)->Name("decode/quiet");
BENCHMARK(Publish)->Name("decode/publish");
BENCHMARK(Symbols)->Name("decode/symbols")->Arg(1'000)->Arg(100'000);
BENCHMARK(Backlog)->Name("decode/backlog")->Arg(0)->Arg(1'000'000)->Iterations(3);

}  // namespace
}  // namespace mirelo::bench

BENCHMARK_MAIN();
