// When QuoteTracker is called for what is asked about quotes, and when no more.

#include <gmock/gmock.h>

#include <string>
#include <utility>
#include <vector>

#include "automation/text.h"
#include "day/watching.h"

namespace mirelo::testing {
namespace {

using namespace std::chrono_literals;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

TEST_F(Watching, HasNoAnswerUntilAQuoteComes) {
  Streamed();
  const Watched price = Ask("MSFT");
  EXPECT_TRUE(price->Answer().IsNothing());
  BeginStreaming();
  EXPECT_TRUE(price->Answer().IsNothing());
  EXPECT_THAT(told, IsEmpty());
  Quote("MSFT", 28.5);
  EXPECT_EQ(price->Answer(), day::QuoteValue(28.5));
  EXPECT_THAT(told, ElementsAre("MSFT Last"));
}

TEST_F(Watching, SubscribesTogetherWhatIsAskedTogether) {
  Streamed();
  std::vector<Watched> prices;
  for (int i = 0; i < 2000; ++i)
    prices.push_back(Ask("T" + std::to_string(i % 1000), i < 1000 ? "Last" : "Bid"));
  EXPECT_THAT(sockets->connections, IsEmpty());
  BeginStreaming();
  EXPECT_THAT(sockets->connections, SizeIs(1));
  EXPECT_EQ(Split(Join(Subscriptions(), ","), ",").size(), 1000U);
}

TEST_F(Watching, WaitsForMoreTickersButNotForEver) {
  Streamed();
  std::vector<Watched> prices;
  for (int i = 0; i < 30; ++i) {
    prices.push_back(Ask("T" + std::to_string(i)));
    Pass(day::QuoteWatch::kGather / 2);
  }
  EXPECT_THAT(sockets->connections, SizeIs(1));
  Pass(day::QuoteWatch::kGather);
  EXPECT_THAT(sockets->connections, SizeIs(2));
}

TEST_F(Watching, NamesATickerOnceHoweverItIsWritten) {
  Streamed();
  const Watched prices[] = {Ask("msft"), Ask(" MSFT "), Ask("Msft", "bid")};
  BeginStreaming();
  EXPECT_THAT(Subscriptions(), ElementsAre("MSFT"));
  Quote("MSFT", 3);
  EXPECT_EQ(prices[0]->Answer(), day::QuoteValue(3.0));
  EXPECT_EQ(prices[1]->Answer(), day::QuoteValue(3.0));
  EXPECT_THAT(told, ElementsAre("msft Last", " MSFT  Last"));
}

TEST_F(Watching, KeepsWhatItKnowsWhileATickerIsAdded) {
  Streamed();
  const Watched first = Ask("MSFT");
  BeginStreaming();
  Quote("MSFT", 2);
  const Watched second = Ask("IBM");
  BeginStreaming();
  EXPECT_THAT(Subscriptions(), ElementsAre("MSFT", "IBM,MSFT"));
  EXPECT_EQ(sockets->connections[0]->state, host::SocketConnection::kClosed);
  EXPECT_EQ(first->Answer(), day::QuoteValue(2.0));
  Quote("IBM", 7);
  EXPECT_EQ(second->Answer(), day::QuoteValue(7.0));
}

TEST_F(Watching, LeavesOutATickerOfWhichNobodyAsksAnyMore) {
  Streamed();
  const Watched first = Ask("MSFT");
  Watched second = Ask("IBM");
  BeginStreaming();
  second.reset();
  Pass(day::QuoteWatch::kLinger);
  Converse();
  EXPECT_THAT(Subscriptions(), ElementsAre("IBM,MSFT", "MSFT"));
}

TEST_F(Watching, HangsUpALittleAfterTheLastQuestion) {
  Streamed();
  Watched price = Ask("MSFT");
  BeginStreaming();
  price.reset();
  EXPECT_EQ(sockets->Newest().state, host::SocketConnection::kConnected);
  Pass(day::QuoteWatch::kLinger);
  EXPECT_THAT(sockets->Newest().sent, Contains(HasSubstr("UNSUBALL")));
  EXPECT_EQ(sockets->Newest().state, host::SocketConnection::kClosed);
  EXPECT_EQ(loop.NextTimer(), std::nullopt) << "nothing is left to do";
}

TEST_F(Watching, StaysConnectedWhereTheSameIsAskedAnew) {
  Streamed();
  Watched price = Ask("MSFT");
  BeginStreaming();
  Quote("MSFT", 2);
  price.reset();
  price = Ask("MSFT");
  EXPECT_EQ(price->Answer(), day::QuoteValue(2.0));
  Pass(2 * day::QuoteWatch::kLinger);
  EXPECT_THAT(sockets->connections, SizeIs(1));
}

TEST_F(Watching, ForgetsWhatItKnewOfATickerThatWasLeftOut) {
  Streamed();
  Watched price = Ask("MSFT");
  BeginStreaming();
  Quote("MSFT", 2);
  price.reset();
  Pass(day::QuoteWatch::kLinger);
  EXPECT_TRUE(Ask("MSFT")->Answer().IsNothing());
}

TEST_F(Watching, CallsAgainWhenQuoteTrackerDrops) {
  Streamed();
  const Watched price = Ask("MSFT");
  const Watched status = Ask("MSFT", "Last", About::Status);
  BeginStreaming();
  Quote("MSFT", 2);
  EXPECT_EQ(status->Answer().ToText(), "Streaming");
  sockets->Newest().Drop("The other side has hung up");
  Pass(day::QuoteWatch::kTellPause);
  EXPECT_EQ(status->Answer().ToText(), "The other side has hung up; reconnecting in 1 second");
  EXPECT_EQ(price->Answer(), day::QuoteValue(2.0)) << "what was known stays";
  Pass(1s);
  Converse();
  Quote("MSFT", 3);
  EXPECT_EQ(price->Answer(), day::QuoteValue(3.0));
  EXPECT_EQ(status->Answer().ToText(), "Streaming");
}

TEST_F(Watching, FollowsTheSettingsAsTheyChange) {
  Streamed();
  const Watched price = Ask("MSFT");
  BeginStreaming();
  Pass(day::QuoteWatch::kLook);
  EXPECT_THAT(sockets->connections, SizeIs(1));
  Save("Seconds", "5");
  Pass(day::QuoteWatch::kLook + day::QuoteWatch::kTellPause);
  EXPECT_EQ(sockets->Newest().state, host::SocketConnection::kClosed);
  EXPECT_EQ(price->Answer(), day::QuoteValue(28.5)) << "which is asked for";
}

}  // namespace
}  // namespace mirelo::testing
