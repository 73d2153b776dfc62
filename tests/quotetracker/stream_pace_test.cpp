#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <memory>
#include <sstream>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "quotetracker/fixed_clock.h"
#include "quotetracker/market.h"
#include "quotetracker/replay.h"
#include "quotetracker/server.h"
#include "quotetracker/stream_client.h"

namespace mirelo::quotetracker {
namespace {

using namespace std::chrono_literals;
using PaceClock = std::chrono::steady_clock;
using ::testing::StartsWith;

constexpr int kSmallBuffer = 16 * 1024;

// A market that counts how often it is looked at.
class CountedMarket : public QuoteSource {
 public:
  explicit CountedMarket(std::shared_ptr<std::atomic<int>> looks) : looks_(std::move(looks)) {}

  Moment Now() override { return market_.Now(); }
  const Quote& Look(std::string_view ticker) override {
    ++*looks_;
    return market_.Look(ticker);
  }
  std::unique_ptr<QuoteUpdates> Subscribe(const std::vector<std::string>& tickers) override {
    return std::make_unique<Updates>(looks_, market_.Subscribe(tickers));
  }

 private:
  class Updates : public QuoteUpdates {
   public:
    Updates(std::shared_ptr<std::atomic<int>> looks, std::unique_ptr<QuoteUpdates> updates)
        : looks_(std::move(looks)), updates_(std::move(updates)) {}
    const Quote& Look(std::size_t ticker) override {
      ++*looks_;
      return updates_->Look(ticker);
    }
    QuoteChange Next() override {
      ++*looks_;
      return updates_->Next();
    }

   private:
    std::shared_ptr<std::atomic<int>> looks_;
    std::unique_ptr<QuoteUpdates> updates_;
  };

  std::shared_ptr<std::atomic<int>> looks_;
  Market market_{1};
};

// Waits until the number has stood still for a while.
int Settled(const std::atomic<int>& number) {
  for (int before = -1;;) {
    const int now = number;
    if (now == before) return now;
    before = now;
    std::this_thread::sleep_for(100ms);
  }
}

std::string ManySymbols(int count) {
  std::string symbols;
  for (int i = 0; i < count; ++i) symbols += (i > 0 ? ",SYMBOL" : "SYMBOL") + std::to_string(i);
  return symbols;
}

TEST(StreamPace, SendsNoMoreChangesThanItsRate) {
  ServerOptions options;
  options.stream.rate = 100;
  Server server(std::move(options));
  StreamClient client(server.StreamPort());
  client.LogIn();
  const auto begin = PaceClock::now();
  client.Subscribe("A");
  client.ReadRecords(1 + 30);
  EXPECT_GE(PaceClock::now() - begin, 290ms);
}

class StreamFlow : public ::testing::TestWithParam<double> {};

TEST_P(StreamFlow, MakesUpNothingForAClientThatDoesNotRead) {
  const auto looks = std::make_shared<std::atomic<int>>(0);
  ServerOptions options;
  options.quotes = std::make_unique<CountedMarket>(looks);
  options.stream.rate = GetParam();
  Server server(std::move(options));
  StreamClient client(server.StreamPort(), kSmallBuffer);
  client.LogIn();
  client.Subscribe("A,B,C");
  client.ReadRecords(100);

  const int made = Settled(*looks);
  EXPECT_LT(made, 100'000) << "no more than fits the sockets' buffers";
  client.ReadRecords(static_cast<std::size_t>(made) + 1000);
  EXPECT_GT(looks->load(), made) << "and goes on when the client reads again";
}

INSTANTIATE_TEST_SUITE_P(Rates, StreamFlow, ::testing::Values(StreamOptions::kMaximum, 1e8),
                         [](const auto& rate) {
                           return rate.param == StreamOptions::kMaximum ? "Maximum" : "Fast";
                         });

TEST(StreamFlowControl, HoldsBackTheSnapshotsOfManySymbols) {
  const auto looks = std::make_shared<std::atomic<int>>(0);
  ServerOptions options;
  options.quotes = std::make_unique<CountedMarket>(looks);
  options.stream.rate = 0.001;
  Server server(std::move(options));
  StreamClient client(server.StreamPort(), kSmallBuffer);
  client.LogIn();
  client.Subscribe(ManySymbols(20'000));

  EXPECT_LT(Settled(*looks), 20'000);
  const auto records = client.ReadRecords(20'000);
  EXPECT_EQ(records.back().Symbol(), "SYMBOL19999");
}

TEST(StreamFlowControl, StopsReadingAClientThatDoesNotRead) {
  Server server;
  StreamClient client(server.StreamPort(), kSmallBuffer);
  client.LogIn();
  constexpr std::size_t kRequests = 1000;
  std::string requests;
  for (std::size_t i = 0; i < kRequests; ++i)
    requests += "<ENUMSOURCES><SourceType>L1</SourceType></ENUMSOURCES>\xFF";
  client.Tcp().Send(requests);

  std::size_t heard = 0;
  do {
    heard = server.StreamMessages().size();
    std::this_thread::sleep_for(100ms);
  } while (server.StreamMessages().size() != heard);
  EXPECT_LT(heard, kRequests);

  std::size_t lists = 0;
  std::string tail;
  while (lists < kRequests) {
    tail += client.Tcp().ReceiveChunk();
    for (auto end = tail.find("</SOURCES>"); end != std::string::npos; end = tail.find("</SOURCES>")) {
      ++lists;
      tail.erase(0, end + 10);
    }
  }
  EXPECT_EQ(tail, "");
}

class StreamChunks : public ::testing::TestWithParam<Chunking> {};

TEST_P(StreamChunks, CarryTheSameBytesHoweverTheyAreCut) {
  ServerOptions options;
  options.stream.rate = 1000;
  options.stream.chunking = GetParam();
  options.stream.chunk_pause = 1us;
  Server server(std::move(options));
  StreamClient client(server.StreamPort());
  EXPECT_THAT(client.LogIn(), StartsWith("LO<STATUSCODE>0<"));
  EXPECT_THAT(client.Ask("<ENUMSOURCES><SourceType>L1</SourceType></ENUMSOURCES>", "</SOURCES>"),
              StartsWith("ES<SOURCES><SOURCETYPE>L1<"));
  client.Subscribe("A,B,C,D,E,F,G,H");
  EXPECT_EQ(client.ReadRecords(60).size(), 60U);
}

std::string NameOf(const ::testing::TestParamInfo<Chunking>& chunking) {
  constexpr const char* kNames[] = {"Whole", "Halves", "Random", "Bytes"};
  return kNames[static_cast<std::size_t>(chunking.param)];
}

INSTANTIATE_TEST_SUITE_P(All, StreamChunks,
                         ::testing::Values(Chunking::kWhole, Chunking::kHalves, Chunking::kRandom,
                                           Chunking::kBytes),
                         NameOf);

TEST(StreamReplay, SendsTheLinesOfTheSubscribedSymbols) {
  std::istringstream text(
      "Ticker,Date,Time,Last,Volume,LastVolume\n"
      "A,12/30/2005,09:30:00,1,100,100\n"
      "B,12/30/2005,09:30:00,5,100,100\n"
      "A,12/30/2005,09:30:01,2,300,200\n"
      "B,12/30/2005,09:30:01,6,300,200\n"
      "A,12/30/2005,09:30:02,3,600,300\n");
  ServerOptions options;
  options.quotes = std::make_unique<Replay>(text, "lines", 100);
  options.stream.rate = StreamOptions::kMaximum;
  Server server(std::move(options));
  StreamClient client(server.StreamPort());
  client.LogIn();
  client.Subscribe("a");
  // What the replay has shown before the client came is in the first record, the rest follows.
  std::vector<double> prices;
  do {
    const ReadRecord record = client.ReadOne();
    EXPECT_EQ(record.Symbol(), "a");
    prices.push_back(record.numbers.at(4));
  } while (prices.back() < 3);
  EXPECT_TRUE(std::ranges::is_sorted(prices));
  EXPECT_FALSE(client.Tcp().IsReadable(50ms));
}

}  // namespace
}  // namespace mirelo::quotetracker
