// Records that arrive while the client is being told of others: in its handler, and in the yield behind it. A
// socket library does not nest the chunks of a connection so; what the stream makes of them if one did is a
// rule all the same.

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "automation/runtime_error.h"
#include "streaming/stream_test.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class Reentrancy : public StreamTest {
 protected:
  Reentrancy() { stream->connect(); }

  // Runs `action` in the handler of the next QTDatas only.
  void InNextEvent(std::function<void()> action) {
    stream->QTDatas.Subscribe([action = std::move(action), done = false]() mutable {
      if (std::exchange(done, true)) return;
      action();
    });
  }
  // Delivers `chunk` from the message loop, so in the next yield.
  void InNextYield(std::string chunk) {
    loop.StartTimer(host::MessageLoop::Milliseconds(0),
                    [this, chunk = std::move(chunk)] { DeliverOutOfTurn(chunk); });
  }
};

TEST_F(Reentrancy, RaisesNoSecondEventWhileOneIsBeingRaised) {
  InNextEvent([&] { DeliverOutOfTurn(Quote("B") + Quote("C")); });
  Deliver(Quote("A"));
  EXPECT_EQ(events, 1);
  EXPECT_THAT(TakeSymbols(), ElementsAre("A", "B", "C"));
}

TEST_F(Reentrancy, ServesTheMessageLoopBehindTheEventAndRaisesNoneMeanwhile) {
  InNextYield(Quote("B"));
  Deliver(Quote("A"));
  EXPECT_EQ(events, 1);
  EXPECT_THAT(TakeSymbols(), ElementsAre("A", "B"));
}

TEST_F(Reentrancy, LeavesQuotesOfTheYieldForTheNextTake) {
  std::vector<std::vector<std::string>> takes;
  stream->QTDatas.Subscribe([&] { takes.push_back(TakeSymbols()); });
  InNextYield(Quote("B"));
  Deliver(Quote("A"));
  Deliver(Quote("C"));
  EXPECT_THAT(takes, ElementsAre(ElementsAre("A"), ElementsAre("B", "C")));
}

TEST_F(Reentrancy, PutsTheQuotesOfANestedChunkBetweenThoseOfTheOuterOne) {
  InNextEvent([&] { DeliverOutOfTurn(Quote("B")); });
  Deliver(Quote("A") + Quote("C"));
  EXPECT_EQ(events, 2);
  EXPECT_THAT(TakeSymbols(), ElementsAre("A", "B", "C"));
}

TEST_F(Reentrancy, SharesTheStatesOfTheSymbols) {
  InNextEvent([&] { DeliverOutOfTurn(Level1Wire().Symbol("A").Last(2).Bytes()); });
  Deliver(Level1Wire().Symbol("A").Last(1).Bytes() + Level1Wire().Symbol("A").Last(2).Bytes() +
          Level1Wire().Symbol("A").Last(1).Bytes());
  std::vector<double> prices;
  for (const auto& quote : Take()) prices.push_back(quote->Last_Price());
  EXPECT_THAT(prices, ElementsAre(1, 2, 1)) << "the outer second record finds its price already known";
}

TEST_F(Reentrancy, LosesAContinuationThatComesBeforeItsTailIsKept) {
  const std::string torn = Quote("TORN");
  InNextEvent([&] { DeliverOutOfTurn(torn.substr(9)); });
  Deliver(Quote("A") + torn.substr(0, 9));
  EXPECT_THAT(TakeSymbols(), ElementsAre("A"));
  Deliver(torn.substr(9));
  EXPECT_THAT(TakeSymbols(), ElementsAre("TORN")) << "the tail was kept afterwards";
}

TEST_F(Reentrancy, ForgetsTheTailOfANestedChunkWhenTheOuterOneEndsAtItsEnd) {
  const std::string torn = Quote("TORN");
  InNextEvent([&] { DeliverOutOfTurn(Quote("B") + torn.substr(0, 9)); });
  Deliver(Quote("A"));
  Deliver(torn.substr(9));
  EXPECT_THAT(TakeSymbols(), ElementsAre("A", "B"));
}

TEST_F(Reentrancy, WalksAMergedChunkToItsEndWhateverTheNestedOneKeeps) {
  const std::string torn = Quote("TORN");
  const std::string other = Quote("OTHER");
  Deliver(torn.substr(0, 9));
  InNextEvent([&] { DeliverOutOfTurn(other.substr(0, 9)); });
  Deliver(torn.substr(9) + Quote("A"));
  EXPECT_THAT(TakeSymbols(), ElementsAre("TORN", "A"));
}

TEST_F(Reentrancy, GoesDeeperThanOneLevel) {
  // Each nested chunk finds the event being raised, so the yields do not nest; the handler does it by itself.
  int depth = 0;
  stream->OnStatusText.Subscribe([&](const std::string&) {
    if (++depth < 50) DeliverOutOfTurn("ES</SOURCES><SOURCES>");
  });
  Deliver("ES</SOURCES><SOURCES>");
  EXPECT_EQ(depth, 50);
}

TEST_F(Reentrancy, DropsAFailureOfTheHandlerAndRaisesTheNextEvent) {
  InNextEvent([] { throw RuntimeError(1000, "not my day"); });
  EXPECT_NO_THROW(Deliver(Quote("A") + Quote("B")));
  EXPECT_EQ(events, 2);
  EXPECT_THAT(TakeSymbols(), ElementsAre("A", "B"));
}

TEST_F(Reentrancy, DropsAFailureOfTheYieldAndRaisesTheNextEvent) {
  loop.StartTimer(host::MessageLoop::Milliseconds(0), [] { throw RuntimeError(1000, "not my day"); });
  EXPECT_NO_THROW(Deliver(Quote("A")));
  Deliver(Quote("B"));
  EXPECT_EQ(events, 2);
}

TEST_F(Reentrancy, LetsAHandlerTakeAndFreeWhileTheChunkIsWalked) {
  std::vector<std::string> symbols;
  stream->QTDatas.Subscribe([&] {
    for (const auto& symbol : TakeSymbols()) symbols.push_back(symbol);
  });
  Deliver(Quote("A") + Quote("B") + Quote("C"));
  EXPECT_THAT(symbols, ElementsAre("A", "B", "C"));
}

TEST_F(Reentrancy, LetsAHandlerFreeWhatItEnumerates) {
  std::vector<std::string> symbols;
  Deliver(Quote("A") + Quote("B"));
  for (const auto& quote : *stream->GetQTData()) {
    symbols.push_back(quote->Symbol());
    stream->FreeQTDataBuffer();
    Deliver(Level1Wire().Symbol("LATE").Last(static_cast<double>(symbols.size())));
    stream->GetQTData();
  }
  EXPECT_THAT(symbols, ElementsAre("A", "B"));
}

TEST_F(Reentrancy, LetsAHandlerChangeTheFormatOfTheQuoteThatIsBeingPublished) {
  InNextEvent([&] { stream->DovantaFormatUserDate("yyyy"); });
  const auto stamped = [](double price) {
    return Level1Wire().Symbol("A").Last(price).Stamp("01202011083613").Bytes();
  };
  Deliver(stamped(1) + stamped(2));
  const auto quotes = Take();
  ASSERT_EQ(quotes.size(), 2u);
  EXPECT_EQ(quotes[0]->Date_Time(), "01/20/2011 08:36:13");
  EXPECT_EQ(quotes[1]->Date_Time(), "2011");
}

class LettingGo : public Reentrancy {
 protected:
  // The last reference goes in the middle of an event of the stream.
  void LetGo() {
    gone = stream;
    stream.reset();
  }
  std::weak_ptr<cQTStreaming> gone;
};

TEST_F(LettingGo, OfTheStreamInAQuotesHandlerLetsTheChunkEnd) {
  InNextEvent([&] { LetGo(); });
  Deliver(Quote("A") + Quote("B"));
  EXPECT_TRUE(gone.expired());
  EXPECT_EQ(events, 2);
}

TEST_F(LettingGo, OfTheStreamInAStatusHandlerLetsTheReplyEnd) {
  stream->OnStatusText.Subscribe([&](const std::string&) { LetGo(); });
  Deliver("ES</SOURCES><SOURCES>");
  EXPECT_TRUE(gone.expired());
}

TEST_F(LettingGo, OfTheStreamWhenTheSourcesHaveComeAsTheDialogDoes) {
  mGlobal::SetStreamingObject(stream);
  stream->PerformanceFollowingProcess.Subscribe([&](std::int16_t) {
    stream->DisConnect();
    mGlobal::SetStreamingObject(nullptr);
    LetGo();
  });
  Deliver("ES<SOURCES><SOURCETYPE>L1</SOURCETYPE><SOURCE></SOURCE></SOURCES>");
  EXPECT_TRUE(gone.expired());
  EXPECT_THAT(processes, ElementsAre(1));
}

}  // namespace
}  // namespace mirelo::testing
