// What comes over TCP while a client is at work in its handler, and for two streams side by side.

#include <gmock/gmock.h>

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "automation/variant.h"
#include "quotetracker/market.h"
#include "quotetracker/quote_source.h"
#include "streaming/conversation.h"

namespace mirelo::testing {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

// A market that has a ration of changes for each subscription, which a test may raise. What a client has not
// read fits into one chunk then, however late it is. More would be cut anywhere, and behind a cut within a
// record's head the class loses its place, as cutting_test.cpp has it: error 9, or quotes that are lost.
class RationedMarket final : public quotetracker::QuoteSource {
 public:
  using Ration = std::atomic<int>;

  explicit RationedMarket(const Ration& ration) : ration_(ration) {}

  quotetracker::Moment Now() override { return market_.Now(); }
  const quotetracker::Quote& Look(std::string_view ticker) override { return market_.Look(ticker); }
  std::unique_ptr<quotetracker::QuoteUpdates> Subscribe(const std::vector<std::string>& tickers) override {
    return std::make_unique<Updates>(market_.Subscribe(tickers), ration_);
  }

 private:
  class Updates final : public quotetracker::QuoteUpdates {
   public:
    Updates(std::unique_ptr<quotetracker::QuoteUpdates> all, const Ration& ration)
        : all_(std::move(all)), ration_(ration) {}

    const quotetracker::Quote& Look(std::size_t ticker) override { return all_->Look(ticker); }
    quotetracker::QuoteChange Next() override {
      if (given_ >= ration_) return {};
      ++given_;
      return all_->Next();
    }

   private:
    std::unique_ptr<quotetracker::QuoteUpdates> all_;
    const Ration& ration_;
    int given_ = 0;
  };

  const Ration& ration_;
  quotetracker::Market market_{1};
};

struct WithRation {
  static constexpr int kRation = 50;
  RationedMarket::Ration ration = kRation;
};

// Quotes come fast, in batches of S1 records, which no pending tail swallows.
class BusyClient : protected WithRation, public Conversation {
 protected:
  BusyClient() : Conversation(ManyQuotes(ration)) {}

  static quotetracker::ServerOptions ManyQuotes(const RationedMarket::Ration& ration) {
    quotetracker::ServerOptions options;
    options.quotes = std::make_unique<RationedMarket>(ration);
    options.stream.rate = 500;
    options.stream.kinds = {"S1"};
    return options;
  }
};

TEST_F(BusyClient, GetsEachQuoteOnceAndInOrderHoweverLongItIsAtWork) {
  int depth = 0;
  int events = 0;
  stream->QTDatas.Subscribe([&] {
    EXPECT_EQ(++depth, 1);
    if (++events % 10 == 1) {
      const auto waiting = stream->GetQTData()->Count();
      bool over = false;
      loop.StartTimer(host::MessageLoop::Milliseconds(20), [&] { over = true; });
      loop.RunUntil([&] { return over; });
      EXPECT_EQ(stream->GetQTData()->Count(), waiting) << "the next chunk waits";
    }
    --depth;
  });
  Begin(Status_LEVEL_I_FULL_QUOTE);
  Await([&] { return keys.size() >= 40; });
  std::vector<std::string> running;
  for (std::size_t i = 0; i < keys.size(); ++i) running.push_back("a" + std::to_string(i));
  EXPECT_EQ(keys, running);
}

TEST_F(BusyClient, MayEndTheConversationInItsHandler) {
  stream->QTDatas.Subscribe([this, ended = false]() mutable {
    if (std::exchange(ended, true)) return;
    stream->stop_sub();
    stream->DisConnect();
  });
  Begin(Status_LEVEL_I_FULL_QUOTE);
  AwaitEnd();
  EXPECT_EQ(stream->GetQTData(), nullptr);
  EXPECT_THAT(desktop.boxes, IsEmpty());
  Await([&] { return server.StreamConnections() == 0; });
}

TEST_F(BusyClient, MayBeginAnotherConversationInItsHandler) {
  bool again = true;
  stream->QTDatas.Subscribe([&] {
    if (!std::exchange(again, false)) return;
    stream->DisConnect();
    stream->StartStop(true);
    stream->arrTickers(VariantArray::OfTexts({"GE"}));
    Begin(Status_LEVEL_I_FULL_QUOTE);
  });
  Begin(Status_LEVEL_I_FULL_QUOTE);
  Await([&] { return std::ranges::count(symbols, "GE") == 1; });
  EXPECT_EQ(loop.WatchCount(), 1u);
  EXPECT_THAT(processes, ElementsAre(5, 5));
  Await([&] { return server.StreamConnections() == 1; });
}

// A second stream of the same process, for GE.
class TwoConversations : public BusyClient {
 protected:
  TwoConversations() {
    other->Owner(facade.get());
    other->StartStop(true);
    other->arrTickers(VariantArray::OfTexts({"GE"}));
    other->st_StreamerFile("SWISS.SDF");
    other->OnStatusText.Subscribe([this](const std::string& text) { others_texts.push_back(text); });
    other->QTDatas.Subscribe([this] {
      ++others_events;
      TakeOthers();
    });
  }
  void TakeOthers() {
    for (const auto& quote : *other->GetQTData()) others_symbols.push_back(quote->Symbol());
    other->FreeQTDataBuffer();
  }
  // Quotes go on until then, for as many as have come: what comes while the other client is told waits for
  // the event of a later one.
  void AwaitWithMore(const std::function<bool()>& done) {
    Await([&] {
      const int own = CountOf(*stream, keys);
      const int others = CountOf(*other, others_symbols);
      ration = kRation + (stream->StartStop() ? std::min(own, others) : others);
      return done();
    });
  }
  // Those that were taken and those that wait.
  static int CountOf(cQTStreaming& of, const std::vector<std::string>& taken) {
    const auto waiting = of.GetQTData();
    return static_cast<int>(taken.size()) + (waiting ? waiting->Count() : 0);
  }
  void BeginBoth(StatusRunQueryQT purpose) {
    Begin(purpose);
    other->connect();
  }

  std::shared_ptr<cQTStreaming> other = std::make_shared<cQTStreaming>();
  std::vector<std::string> others_texts;
  std::vector<std::string> others_symbols;  // of all its quotes
  int others_events = 0;
};

TEST_F(TwoConversations, BringEachItsOwnQuotes) {
  BeginBoth(Status_LEVEL_I_FULL_QUOTE);
  AwaitWithMore([&] { return symbols.size() == 2 && keys.size() >= 20 && others_symbols.size() >= 20; });
  EXPECT_THAT(symbols, UnorderedElementsAre("MSFT", "IBM"));
  EXPECT_THAT(others_symbols, ::testing::Each("GE"));
  EXPECT_THAT(Said(),
              UnorderedElementsAre(kLogin, kLogin, kChooseStreamer, kChooseStreamer, kSubscribe,
                                   "<L1QUOTES><ReqType>SUB</ReqType><Symbols>GE</Symbols></L1QUOTES>"));
}

TEST_F(TwoConversations, LeaveOneAnotherStandingWhenOneOfThemEnds) {
  BeginBoth(Status_LEVEL_I_FULL_QUOTE);
  AwaitWithMore([&] { return !keys.empty() && !others_symbols.empty(); });
  stream->DisConnect();
  const std::size_t before = others_symbols.size();
  AwaitWithMore([&] { return others_symbols.size() >= before + 20; });
  EXPECT_EQ(loop.WatchCount(), 1u);
  EXPECT_TRUE(other->StartStop());
}

TEST_F(TwoConversations, TellOfNoQuoteWhileTheOthersClientIsAtWork) {
  bool waited = false;
  int events_meanwhile = -1;
  stream->QTDatas.Subscribe([&] {
    if (std::exchange(waited, true)) return;
    const int before = others_events;
    Await([&] { return other->GetQTData()->Count() >= 5; });
    events_meanwhile = others_events - before;
  });
  BeginBoth(Status_LEVEL_I_FULL_QUOTE);
  Await([&] { return waited; });
  EXPECT_EQ(events_meanwhile, 0);
  AwaitWithMore([&] { return others_symbols.size() >= 6; });
  EXPECT_GE(others_events, 1) << "the next event finds what waited";
}

// The timer behind a login finds the one stream that is set for it.
TEST_F(TwoConversations, ShareOneTimer) {
  facade->StatusRunWorkQT(Status_ENUMSOURCES_L1);
  other->connect();
  Await([&] { return !status_texts.empty(); });
  EXPECT_THAT(status_texts, ElementsAre("Off. ")) << "the other's login is none of this one";
  EXPECT_THAT(others_texts, ElementsAre("Connection started...", "Connecting to host..."));
  EXPECT_THAT(Said(), ElementsAre(kLogin));
  stream->connect();
  Await([&] { return !processes.empty(); });
  EXPECT_THAT(status_texts, Contains("Data source list updated successfully"));
  EXPECT_THAT(Said(), ElementsAre(kLogin, kLogin, kAskSources));
  EXPECT_EQ(others_texts.size(), 2u);
}

}  // namespace
}  // namespace mirelo::testing
