// Bursts of quotes that are larger than one read of the socket, as the program mirelo shows and stores them.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <system_error>
#include <thread>
#include <vector>

#include "adapters/sodium/sodium_vault.h"
#include "adapters/workbook/spreadsheet.h"
#include "app/child_process.h"
#include "automation/number.h"
#include "automation/text.h"
#include "host/excel/application.h"
#include "host/excel/range.h"
#include "host/excel/worksheet.h"
#include "host/excel/worksheets.h"
#include "quotetracker/server.h"
#include "support/built_program.h"
#include "support/burst.h"
#include "support/environment_variable.h"
#include "support/sanitized.h"
#include "support/temp_directory.h"

namespace mirelo::testing {
namespace {

using namespace std::chrono_literals;
using Arguments = std::vector<std::string>;
using ::testing::Each;
using ::testing::Ge;
using ::testing::SizeIs;

constexpr auto kBurstPatience = 60s;

class BurstOfQuotes : public ::testing::Test {
 protected:
  BurstOfQuotes() {
    sodium::SodiumVault vault(folder_ / "mirelo");
    vault.Set({.name = "MireloDemo", .secret = "demo-secret"});
  }

  // A stand-in that plays the burst.
  std::unique_ptr<quotetracker::Server> Play(const Burst& burst, int quotes_a_millisecond) {
    return Play([&](const std::string& file) { burst.WriteSession(file, quotes_a_millisecond); });
  }
  // One that plays what is written to a session file.
  std::unique_ptr<quotetracker::Server> Play(const std::function<void(const std::string& file)>& write) {
    const std::string file = (folder_ / "burst.qts").string();
    write(file);
    quotetracker::ServerOptions options;
    options.play = file;
    return std::make_unique<quotetracker::Server>(std::move(options));
  }
  static std::unique_ptr<app::ChildProcess> Start(Arguments arguments, const Burst& burst) {
    for (const std::string& ticker : burst.Tickers()) arguments.push_back(ticker);
    return std::make_unique<app::ChildProcess>(BuiltProgram("mirelo"), arguments);
  }
  static Arguments StreamFrom(const quotetracker::Server& server) {
    return {"stream", "--source", "SWISS.SDF", "--socket-port", std::to_string(server.StreamPort())};
  }

  TempDirectory folder_;
  EnvironmentVariable data_folder_{"XDG_DATA_HOME", folder_.path().c_str()};
};

// The quotes of mirelo stream --csv, up to the burst's last.
BurstArrival ReadCsv(app::ChildProcess& mirelo, const Burst& burst) {
  BurstArrival arrival(burst);
  const auto fields = [&] { return Split(mirelo.ReadLine(kBurstPatience).value_or(""), ","); };
  const auto names = fields();
  const auto column = [&](const char* name) {
    return static_cast<std::size_t>(std::ranges::find(names, name) - names.begin());
  };
  const std::size_t ticker = column("Ticker"), last = column("Last"), volume = column("LastVolume");
  while (!arrival.IsComplete()) {
    const auto quote = fields();
    if (quote.size() != names.size()) break;
    arrival.Take(quote[ticker], Val(quote[last]), Val(quote[volume]));
  }
  return arrival;
}

TEST_F(BurstOfQuotes, IsPrintedInTheOrderSent) {
  struct Case {
    const char* name;
    int quotes;
    int quotes_a_millisecond;
  };
  const int many = kIsSanitized ? 30'000 : 100'000;  // both more than any buffer on the way holds
  for (const Case& c : {Case{"a hundred in one go", 100, 100}, Case{"a thousand in one go", 1'000, 1'000},
                        Case{"ten thousand in one go", 10'000, 10'000},
                        Case{"far more in one go", many, many}, Case{"ten thousand a second", 2'000, 10}}) {
    SCOPED_TRACE(c.name);
    const Burst burst({"MSFT", "IBM"}, c.quotes);
    const auto server = Play(burst, c.quotes_a_millisecond);
    Arguments arguments = StreamFrom(*server);
    arguments.push_back("--csv");
    const auto mirelo = Start(arguments, burst);
    const BurstArrival arrival = ReadCsv(*mirelo, burst);
    EXPECT_EQ(arrival.Count(), c.quotes);
    EXPECT_EQ(arrival.Displaced(), 0);
    EXPECT_EQ(arrival.Negative(), 0);
    mirelo->Signal(SIGINT);
    EXPECT_EQ(mirelo->Wait(kBurstPatience), 0);
  }
}

TEST_F(BurstOfQuotes, LeavesTheNewestInTheTableThatStreamEndsWith) {
  const Burst burst({"MSFT", "IBM"}, 600);
  const auto server = Play(burst, burst.Quotes());
  Arguments arguments = StreamFrom(*server);
  arguments.insert(arguments.end(), {"--seconds", "1"});
  const auto mirelo = Start(arguments, burst);
  ASSERT_EQ(mirelo->Wait(kBurstPatience), 0);
  int rows = 0;
  while (const auto line = mirelo->ReadLine(kBurstPatience)) {
    if (line->starts_with("MSFT") || line->starts_with("IBM")) {
      ++rows;
      EXPECT_THAT(*line, ::testing::HasSubstr(" 300.00 ")) << "its Last";
    }
  }
  EXPECT_EQ(rows, 2);
}

class BurstOfADay : public BurstOfQuotes {
 protected:
  // Runs a working day until the history of each ticker holds the burst, and ends it.
  void Live(const Burst& burst, const quotetracker::Server& server) {
    const auto port = [](int number) { return std::to_string(number); };
    Arguments arguments{"run",
                        "--workbook",
                        file_.string(),
                        "--tickers",
                        Join(burst.Tickers()),
                        "--columns",
                        "Ticker,Last,Volume,LastVolume,Date,Time",
                        "--source",
                        "Alpstein Finance (delayed)",
                        "--http-port",
                        port(server.HttpPort()),
                        "--socket-port",
                        port(server.StreamPort()),
                        "--set",
                        "VerticalTable=1",
                        "--set",
                        "RowsLimit=3100",
                        "--save-every",
                        "50ms"};
    for (const std::string& ticker : burst.Tickers())
      for (const char* field : {":Last", ":LastVolume"})
        arguments.insert(arguments.end(), {"--tick", ticker + field});
    app::ChildProcess mirelo(BuiltProgram("mirelo"), arguments);
    const auto end = std::chrono::steady_clock::now() + kBurstPatience;
    std::filesystem::file_time_type looked_at{};
    for (bool complete = false; !complete && mirelo.IsRunning() && std::chrono::steady_clock::now() < end;) {
      std::this_thread::sleep_for(50ms);
      std::error_code none_yet;
      const auto saved = std::filesystem::last_write_time(file_, none_yet);
      if (none_yet || saved == looked_at) continue;  // a look reads the whole file
      looked_at = saved;
      complete = NewestPrice(burst) == burst.QuotesOfEach();
    }
    mirelo.Signal(SIGINT);
    EXPECT_EQ(mirelo.Wait(kBurstPatience), 0);
  }
  static std::string Join(const std::vector<std::string>& words) {
    std::string joined;
    for (const std::string& word : words) joined += (joined.empty() ? "" : ",") + word;
    return joined;
  }

  // Of the last ticker, in the saved quote table.
  double NewestPrice(const Burst& burst) const {
    return NewestPrice(workbook::Spreadsheet::Open(file_), burst);
  }
  static double NewestPrice(const workbook::Spreadsheet& spreadsheet, const Burst& burst) {
    const auto row = static_cast<std::int32_t>(burst.Tickers().size()) + 2;
    const Variant price =
        spreadsheet.Application()->Worksheets()->Item("Dovanta2_Quotes")->Cells(row, 2)->Value();
    return price.IsEmpty() ? 0 : price.ToDouble();
  }
  // A column of a ticker's history.
  static std::vector<double> History(const workbook::Spreadsheet& spreadsheet, const std::string& ticker,
                                     std::int32_t column) {
    const auto sheet = spreadsheet.Application()->Worksheets()->Item("Quotes_Vertical(" + ticker + ")");
    std::vector<double> values;
    for (std::int32_t row = 3; !sheet->Cells(row, column)->Value().IsEmpty(); ++row)
      values.push_back(sheet->Cells(row, column)->Value().ToDouble());
    return values;
  }

  std::filesystem::path file_ = folder_ / "day.xlsx";
};

// One day of three bursts for each way in which they come: a save is followed by a pause of twenty times as
// long, for which the test waits.
TEST_F(BurstOfADay, StandsInTheHistoryInTheOrderSentAndItsNewestInTheTable) {
  struct Case {
    const char* name;
    std::vector<int> goes;
    std::chrono::milliseconds pause;
  };
  for (const Case& c : {Case{"each in one go", {100, 2'000, 10'000}, 200ms},
                        Case{"ten thousand a second", std::vector<int>(1'210, 10), 1ms}}) {
    SCOPED_TRACE(c.name);
    std::filesystem::remove(file_);
    const Burst burst({"MSFT", "IBM", "GE", "INTC"}, 12'100);
    const auto server = Play([&](const std::string& file) { burst.WriteSession(file, c.goes, c.pause); });
    Live(burst, *server);
    const auto spreadsheet = workbook::Spreadsheet::Open(file_);
    EXPECT_EQ(NewestPrice(spreadsheet, burst), burst.QuotesOfEach());
    for (const std::string& ticker : burst.Tickers()) {
      SCOPED_TRACE(ticker);
      std::vector<double> sent;
      for (int place = 1; place <= burst.QuotesOfEach(); ++place) sent.push_back(place);
      EXPECT_EQ(History(spreadsheet, ticker, 1), sent);
      const auto volumes = History(spreadsheet, ticker, 2);
      EXPECT_THAT(volumes, SizeIs(sent.size()));
      EXPECT_THAT(volumes, Each(Ge(0)));
    }
  }
}

}  // namespace
}  // namespace mirelo::testing
