// GetLastQuote over loopback, with volumes tracked, against a libcurl easy handle that fetches the same
// batches from the same server and does nothing with them. What is over is the cost of the whole snapshot
// path: settings, states and events of the transfers, splitting, tracking, and the table.

#include <curl/curl.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <benchmark/benchmark.h>
#include <stdlib.h>

#include "adapters/curl/curl_internet.h"
#include "adapters/headless/console_desktop.h"
#include "adapters/headless/linux_system.h"
#include "adapters/headless/system_clock.h"
#include "adapters/poll/poll_loop.h"
#include "adapters/sqlite/sqlite_registry.h"
#include "automation/variant.h"
#include "core/CAppSettings.h"
#include "core/cMirelo.h"
#include "core/mGlobal.h"
#include "host/host.h"
#include "quotetracker/server.h"
#include "snapshot/tickers_per_request.h"
#include "support/test_host.h"

namespace mirelo {
namespace {

constexpr std::int32_t kBatch = kTickersPerRequest;

// A server remembers each ticker that it was asked for, and grows slower with them as its memory leaves the
// caches. That is not the cost that is looked for here, so the longest list repeats its tickers.
constexpr std::int32_t kDistinctTickers = 8000;

std::string Ticker(std::int32_t number) { return "TCK" + std::to_string(number % kDistinctTickers); }

class TempFolder {
 public:
  TempFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "mirelo-bench-XXXXXX").string();
    if (::mkdtemp(pattern.data()) == nullptr) std::abort();
    path_ = pattern;
  }
  ~TempFolder() { std::filesystem::remove_all(path_); }
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;

  const std::filesystem::path& path() const { return path_; }

 private:
  std::filesystem::path path_;
};

// A facade with a settings store of its own, as the macros have it.
class Desk {
 public:
  explicit Desk(std::uint16_t port) {
    const auto save = [](const char* key, Variant value) {
      mGlobal::AppSettings().SaveSetting("Settings", key, std::move(value));
    };
    save("HTTPPort", static_cast<std::int16_t>(port));
    facade.DovantaFormatUserDate("mm/dd/yyyy");
    facade.LoadMasPosition();
  }

 private:
  poll::PollLoop loop_;
  headless::SystemClock clock_;
  headless::LinuxSystem system_;
  headless::ConsoleDesktop desktop_;
  TempFolder folder_;
  sqlite::SqliteRegistry registry_{folder_.path() / "registry.db"};
  curl::CurlInternet internet_{loop_};
  testing::TestHost host_;
  host::HostScope installed_{
      host_.Use(loop_).Use(clock_).Use(system_).Use(registry_).Use(desktop_).Use(internet_)};

 public:
  cMirelo facade;
};

void GetLastQuote(benchmark::State& state) {
  const quotetracker::Server server;
  Desk desk(server.HttpPort());
  const auto count = static_cast<std::int32_t>(state.range(0));
  VariantArray tickers(1, count);
  for (std::int32_t i = 1; i <= count; ++i) tickers(i) = Ticker(i);
  const Variant tickers_of_macro = tickers;
  desk.facade.masPrevVolume(VariantArray(1, count, 1, 2));

  for (auto _ : state) {
    const Variant result = desk.facade.GetLastQuote(tickers_of_macro);
    if (result.IsArray() == (count % kBatch == 0)) return state.SkipWithError("the table was not filled");
    benchmark::DoNotOptimize(result);
  }
  if (desk.facade.masPrevVolume().AsArray()(count, 1).IsEmpty())
    state.SkipWithError("the last row is missing");
}

std::size_t Append(char* bytes, std::size_t size, std::size_t count, void* text) {
  static_cast<std::string*>(text)->append(bytes, size * count);
  return size * count;
}

void BareCurl(benchmark::State& state) {
  const quotetracker::Server server;
  const std::string start = "http://127.0.0.1:" + std::to_string(server.HttpPort()) + "/req?GetLastQuote(";
  const auto count = static_cast<std::int32_t>(state.range(0));
  std::string reply;
  CURL* const easy = curl_easy_init();
  curl_easy_setopt(easy, CURLOPT_HTTP_VERSION, long{CURL_HTTP_VERSION_1_0});
  curl_easy_setopt(easy, CURLOPT_NOSIGNAL, 1L);
  curl_easy_setopt(easy, CURLOPT_WRITEFUNCTION, Append);
  curl_easy_setopt(easy, CURLOPT_WRITEDATA, &reply);

  for (auto _ : state) {
    for (std::int32_t first = 1; first <= count; first += kBatch) {
      std::string url = start;
      for (std::int32_t i = first; i < first + kBatch && i <= count; ++i) url += Ticker(i) + ",";
      url.back() = ')';
      curl_easy_setopt(easy, CURLOPT_URL, url.c_str());
      reply.clear();
      if (curl_easy_perform(easy) != CURLE_OK || !reply.starts_with("OK\r\n")) {
        return state.SkipWithError("nothing was fetched");
      }
    }
  }
  curl_easy_cleanup(easy);
}

BENCHMARK(GetLastQuote)->Name("snapshot/GetLastQuote")->Arg(810)->Arg(8000)->Arg(80000)->UseRealTime();
BENCHMARK(BareCurl)->Name("snapshot/bare_curl")->Arg(8000)->UseRealTime();

}  // namespace
}  // namespace mirelo

BENCHMARK_MAIN();
