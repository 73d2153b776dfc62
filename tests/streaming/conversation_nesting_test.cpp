// What comes over TCP while a client is at work in its handler, and for two streams side by side.

#include <gmock/gmock.h>

#include <algorithm>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "automation/variant.h"
#include "streaming/conversation.h"

namespace mirelo::testing {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

// Many quotes, in batches of S1 records, which no pending tail swallows.
quotetracker::ServerOptions ManyQuotes() {
  quotetracker::ServerOptions options;
  options.stream.rate = 500;
  options.stream.kinds = {"S1"};
  return options;
}

class BusyClient : public Conversation {
 protected:
  BusyClient() : Conversation(ManyQuotes()) {}
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
  Await([&] { return keys.size() >= 60; });
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
class TwoConversations : public Conversation {
 protected:
  TwoConversations() : Conversation(ManyQuotes()) {
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
  Await([&] { return symbols.size() == 2 && keys.size() >= 20 && others_symbols.size() >= 20; });
  EXPECT_THAT(symbols, UnorderedElementsAre("MSFT", "IBM"));
  EXPECT_THAT(others_symbols, ::testing::Each("GE"));
  EXPECT_THAT(Said(),
              UnorderedElementsAre(kLogin, kLogin, kChooseStreamer, kChooseStreamer, kSubscribe,
                                   "<L1QUOTES><ReqType>SUB</ReqType><Symbols>GE</Symbols></L1QUOTES>"));
}

TEST_F(TwoConversations, LeaveOneAnotherStandingWhenOneOfThemEnds) {
  BeginBoth(Status_LEVEL_I_FULL_QUOTE);
  Await([&] { return !keys.empty() && !others_symbols.empty(); });
  stream->DisConnect();
  const std::size_t before = others_symbols.size();
  Await([&] { return others_symbols.size() >= before + 20; });
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
  Await([&] { return others_symbols.size() >= 6; });
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
