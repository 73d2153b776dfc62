// Questions about quotes, answered over real sockets by the stand-in for QuoteTracker, beside a stream of
// somebody else's in the same process.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "adapters/poll/poll_winsock_library.h"
#include "core/CAppSettings.h"
#include "core/mGlobal.h"
#include "day/quote_watch.h"
#include "day/stream_feed.h"
#include "http/tested_internet.h"
#include "quotetracker/login.h"
#include "quotetracker/server.h"
#include "support/manual_clock.h"
#include "support/memory_registry.h"
#include "support/memory_vault.h"
#include "support/recording_system.h"
#include "support/scripted_desktop.h"
#include "support/test_host.h"
#include "support/tested_loop.h"
#include "wire/observed_sockets.h"
#include "wire/side_host.h"

namespace mirelo::testing {
namespace {

using std::chrono::steady_clock;
using About = day::QuoteQuestion::About;

class WatchOnTheStandIn : public ::testing::Test {
 protected:
  WatchOnTheStandIn() {
    const quotetracker::Credentials known;
    vault.credentials = {{MemoryVault::Credential::ApplicationName, known.app_name},
                         {MemoryVault::Credential::ApplicationSecret, known.app_secret}};
    host.Use(loop).Use(clock).Use(registry).Use(desktop).Use(system).Use(vault).Use(observed);
    side.emplace(
        host,
        wire::SideHost::Parts{
            .sockets = [](host::MessageLoop& its) { return std::make_unique<poll::PollWinsockLibrary>(its); },
            .internet = [](host::MessageLoop& its) { return std::make_unique<TestedInternet>(its); }});
    watch.emplace(*side);
    auto& settings = mGlobal::AppSettings();
    // The port is stored with a sign.
    settings.SaveSetting("Settings", "HTTPPort",
                         Variant(std::int32_t{static_cast<std::int16_t>(server.HttpPort())}));
    settings.SaveSetting("Settings", "SocketPort", Variant(std::int32_t{server.StreamPort()}));
    settings.SaveSetting("Settings\\QuoteSource\\First", "ComQuoteSource", Variant("Swiss"));
    settings.SaveSetting("Settings\\QuoteSource\\List", "Swiss", Variant("SWISS.SDF"));
  }
  static void Seconds(const char* text) {
    mGlobal::AppSettings().SaveSetting("Settings", "Seconds", Variant(text));
  }
  auto Ask(const std::string& ticker, About about = About::Value) {
    return watch->Ask({about, ticker, "Last"}, [this] { ++changes; });
  }
  void Await(const std::function<bool()>& done) {
    const auto end = steady_clock::now() + std::chrono::seconds(10);
    while (!done()) {
      ASSERT_LT(steady_clock::now(), end) << "still waiting";
      bool passed = false;
      loop.StartTimer(host::MessageLoop::Milliseconds(2), [&] { passed = true; });
      loop.RunUntil([&] { return passed; });
    }
  }

  quotetracker::Server server;
  TestedLoop loop;
  poll::PollWinsockLibrary library{loop};
  wire::ObservedSockets observed{library, loop};
  ManualClock clock;
  MemoryRegistry registry;
  ScriptedDesktop desktop;
  RecordingSystem system;
  MemoryVault vault;
  TestHost host;
  host::HostScope installed{host};
  std::optional<wire::SideHost> side;
  std::optional<day::QuoteWatch> watch;
  int changes = 0;
};

TEST_F(WatchOnTheStandIn, StreamsUntilNobodyAsks) {
  Seconds("0");
  auto price = Ask("MSFT");
  auto other = Ask("IBM");
  Await([&] { return changes > 3 && !price->Answer().IsNothing() && !other->Answer().IsNothing(); });
  EXPECT_GT(price->Answer().ToNumber(), 0);
  EXPECT_EQ(server.StreamConnections(), 1U);
  price.reset();
  other.reset();
  Await([&] { return server.StreamConnections() == 0; });
  EXPECT_EQ(watch->Count(), 0U);
}

TEST_F(WatchOnTheStandIn, SaysThatCredentialsAreMissing) {
  Seconds("0");
  vault.credentials.clear();
  const auto status = Ask("MSFT", About::Status);
  Await([&] { return status->Answer().ToText() == "No credential is stored"; });
}

TEST_F(WatchOnTheStandIn, AsksForQuotes) {
  Seconds("1");
  const auto price = Ask("MSFT");
  Await([&] { return changes > 1; });
  EXPECT_GT(price->Answer().ToNumber(), 0);
  EXPECT_EQ(server.StreamConnections(), 0U);
}

TEST_F(WatchOnTheStandIn, LeavesTheStreamOfOthersAlone) {
  Seconds("0");
  mGlobal::ShareServices(true);
  {
    cMirelo facade;
    day::StreamFeed feed(facade, loop, observed, {"GE"}, "SWISS.SDF");
    int of_feed = 0;
    feed.Quote.Subscribe([&](const cQTData& quote) { of_feed += quote.Symbol() == "GE" ? 1 : 1000; });
    feed.Start();
    Await([&] { return of_feed > 0; });
    auto price = Ask("MSFT");
    Await([&] { return changes > 1; });
    EXPECT_EQ(server.StreamConnections(), 2U);
    price.reset();
    Await([&] { return server.StreamConnections() == 1; });
    const int until_now = of_feed;
    Await([&] { return of_feed > until_now; });
    EXPECT_LT(of_feed, 1000);
    EXPECT_EQ(feed.Reconnects(), 0);
  }
  mGlobal::ShareServices(false);
}

// The tickers of a whole sheet at once.
TEST_F(WatchOnTheStandIn, AnswersTwoThousandQuestionsOverOneConnection) {
  Seconds("0");
  server.SetStreamFaults({});
  std::vector<std::unique_ptr<day::QuoteWatch::Watched>> prices;
  for (int i = 0; i < 2000; ++i) prices.push_back(Ask("T" + std::to_string(i)));
  Await([&] { return changes > 5; });
  EXPECT_EQ(server.StreamConnections(), 1U);
}

}  // namespace
}  // namespace mirelo::testing
