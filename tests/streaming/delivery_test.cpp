#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "core/status_run_query.h"
#include "streaming/quote_keys.h"
#include "streaming/quote_to_fill.h"
#include "streaming/reference_stream.h"
#include "streaming/stream_test.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

std::vector<std::string> Keys(const cQTDatas& quotes) {
  std::vector<std::string> keys;
  for (const auto& quote : quotes) keys.push_back(quote->NameID());
  return keys;
}

class Delivery : public StreamTest {
 protected:
  Delivery() { stream->connect(); }
  void Publish(std::string_view symbol) { Deliver(Quote(symbol)); }
};

TEST_F(Delivery, GivesQuotesRunningKeysFromA0) {
  Publish("A");
  Publish("B");
  const auto taken = stream->GetQTData();
  EXPECT_THAT(Keys(*taken), ElementsAre("a0", "a1"));
  EXPECT_EQ(taken->Item("A1")->Symbol(), "B");
}

TEST_F(Delivery, RaisesAnEventForEachQuote) {
  Publish("A");
  Publish("B");
  EXPECT_EQ(events, 2);
}

TEST_F(Delivery, GivesNothingWhileStartStopIsFalseAndKeepsTheBuffer) {
  stream->StartStop(false);
  Publish("A");
  EXPECT_EQ(events, 1) << "the client is told all the same";
  EXPECT_EQ(stream->GetQTData(), nullptr);
  EXPECT_EQ(stream->GetCurrentData(), nullptr);
  stream->StartStop(true);
  EXPECT_THAT(Keys(*stream->GetQTData()), ElementsAre("a0"));
}

TEST_F(Delivery, StopsWithDisConnectUntilTheClientStartsItAgain) {
  Publish("A");
  stream->DisConnect();
  EXPECT_EQ(stream->GetQTData(), nullptr);
  stream->StartStop(true);
  EXPECT_EQ(stream->GetQTData()->Count(), 1) << "the buffer was not emptied";
}

TEST_F(Delivery, ReturnsTheCopyWithWhatItHeldWhenTheBufferIsEmpty) {
  EXPECT_EQ(stream->GetQTData()->Count(), 0);
  Publish("A");
  stream->GetQTData();
  const auto again = stream->GetQTData();
  EXPECT_EQ(again, stream->copy_cQTDatas());
  EXPECT_THAT(Keys(*again), ElementsAre("a0"));
}

TEST_F(Delivery, AddsToEarlierTakesUntilTheBufferIsFreed) {
  Publish("A");
  stream->GetQTData();
  Publish("B");
  EXPECT_THAT(Keys(*stream->GetQTData()), ElementsAre("a0", "a1"));
  stream->FreeQTDataBuffer();
  EXPECT_EQ(stream->copy_cQTDatas()->Count(), 0);
  Publish("C");
  EXPECT_THAT(Keys(*stream->GetQTData()), ElementsAre("a2"));
}

TEST_F(Delivery, LeavesQuotesAliveWhereTheClientHoldsThem) {
  Publish("A");
  const auto held = stream->GetQTData()->Item(1);
  stream->FreeQTDataBuffer();
  EXPECT_EQ(held->Symbol(), "A");
}

TEST_F(Delivery, KeepsTheContainerAndTheCopyTheSameUntilAnotherIsSet) {
  EXPECT_EQ(stream->QTConteiner(), stream->copy_cQTDatas());
}

TEST_F(Delivery, FreesTheContainerThatWasSetAndNotTheCopy) {
  const auto other = std::make_shared<cQTDatas>();
  other->ItemAdd("x");
  stream->QTConteiner(other);
  Publish("A");
  stream->GetQTData();
  stream->FreeQTDataBuffer();
  EXPECT_EQ(other->Count(), 0);
  EXPECT_EQ(stream->copy_cQTDatas()->Count(), 1);
}

TEST_F(Delivery, GoesToTheCopyThatWasSet) {
  const auto other = std::make_shared<cQTDatas>();
  const auto present = other->ItemAdd("A0");
  stream->copy_cQTDatas(other);
  Publish("A");
  Publish("B");
  EXPECT_EQ(stream->GetQTData(), other);
  EXPECT_THAT(Keys(*other), ElementsAre("A0", "a1"))
      << "a quote that was there under the key took the values";
  EXPECT_EQ(other->Item(1), present);
  EXPECT_EQ(present->Symbol(), "A");
}

TEST_F(Delivery, SurvivesACopyAndAContainerOfNothing) {
  Publish("A");
  const auto copy = stream->copy_cQTDatas();
  stream->copy_cQTDatas(nullptr);
  stream->QTConteiner(nullptr);
  EXPECT_EQ(stream->GetQTData(), nullptr);
  EXPECT_NO_THROW(stream->FreeQTDataBuffer());
  stream->copy_cQTDatas(copy);
  EXPECT_EQ(stream->GetQTData()->Count(), 1) << "the quote waited";
}

TEST_F(Delivery, ShowsATakeToAnEnumerationOfTheCopyThatIsUnderWay) {
  auto enumerator = stream->copy_cQTDatas()->NewEnum();
  Publish("A");
  stream->GetQTData();
  Publish("B");
  stream->GetQTData();
  EXPECT_EQ(enumerator.Next()->Symbol(), "A");
  EXPECT_EQ(enumerator.Next()->Symbol(), "B");
  EXPECT_EQ(enumerator.Next(), nullptr);
}

// A second stream of the same process, beside the one of the test.
class TwoStreams : public Delivery {
 protected:
  TwoStreams() {
    other->StartStop(true);
    other->connect();
    other->QTDatas.Subscribe([this] { ++others_events; });
  }
  void DeliverToOther(std::string_view symbol) { sockets.connections[1]->Deliver(Quote(symbol)); }

  std::shared_ptr<cQTStreaming> other = std::make_shared<cQTStreaming>();
  int others_events = 0;
};

TEST_F(TwoStreams, DoNotNestTheirEventsInOneAnothers) {
  stream->QTDatas.Subscribe([this] { DeliverToOther("B"); });
  sockets.connections[0]->Deliver(Quote("A"));
  EXPECT_EQ(events, 1);
  EXPECT_EQ(others_events, 0);
  DeliverToOther("C");
  EXPECT_EQ(others_events, 1) << "the first quote waited for the next event";
  EXPECT_THAT(Keys(*other->GetQTData()), ElementsAre("a0", "a1"));
}

TEST_F(TwoStreams, DoNotNestTheirEventsInTheYieldBehindOneAnothers) {
  loop.StartTimer(host::MessageLoop::Milliseconds(0), [this] { DeliverToOther("B"); });
  sockets.connections[0]->Deliver(Quote("A"));
  EXPECT_EQ(events, 1);
  EXPECT_EQ(others_events, 0);
  EXPECT_EQ(other->GetQTData()->Count(), 1);
}

TEST(QuoteKeys, StartAgainAtOneBehindTheLast) {
  QuoteKeys keys(2'147'483'639);
  EXPECT_EQ(keys.Next(), "a2147483639");
  EXPECT_EQ(keys.Next(), "a2147483640");
  EXPECT_EQ(keys.Next(), "a1");
  EXPECT_EQ(keys.Next(), "a2");
}

TEST(QuoteToFill, ReplacesAllValuesOfAQuoteThatStillWaitsWhenTheKeysStartAgain) {
  cQTDatas buffer;
  QuoteKeys first;
  QuoteToFill(buffer, first);
  cQTData& waiting = QuoteToFill(buffer, first);
  waiting.DateQT("20.01.2011");
  waiting.Company_Name("Company");
  waiting.Last_Price(1);
  CarriedFields carried;
  carried.Note(static_cast<std::size_t>(QuoteField::Last_Price));
  waiting.Carry(carried);

  QuoteKeys last(QuoteKeys::kLast);
  EXPECT_EQ(QuoteToFill(buffer, last).NameID(), "a2147483640");
  const cQTData& again = QuoteToFill(buffer, last);
  EXPECT_EQ(&again, &waiting);
  EXPECT_EQ(Flat(again), (FlatQuote{{"NameID", "a1"}}));
  EXPECT_EQ(again.DateQT(), "");
  EXPECT_FALSE(again.Carries(QuoteField::Last_Price));
  EXPECT_THAT(Keys(buffer), ElementsAre("a0", "a1", "a2147483640"));
}

TEST(QuoteKeys, StartAtZero) {
  QuoteKeys keys;
  EXPECT_EQ(keys.Next(), "a0");
  EXPECT_EQ(keys.Next(), "a1");
}

// The step behind the login for the source list.
class LoginTimer : public StreamTest {
 protected:
  LoginTimer() {
    facade->StatusRunWorkQT(Status_ENUMSOURCES_L1);
    mGlobal::SetStreamingObject(stream);
    stream->connect();
    status_texts.clear();
  }
  void Reply(const std::string& code, const std::string& description = "") {
    Deliver("LO<STATUSCODE>" + code + "</STATUSCODE><STATUSDESC>" + description + "</STATUSDESC>");
  }
  void Wait(int milliseconds) { loop.Advance(host::MessageLoop::Milliseconds(milliseconds)); }
};

TEST_F(LoginTimer, AsksForTheSourcesAfterATenthOfASecond) {
  Reply("0");
  Wait(99);
  EXPECT_THAT(Sent(), IsEmpty());
  Wait(1);
  EXPECT_THAT(status_texts, ElementsAre("Connected"));
  EXPECT_THAT(Sent(), ElementsAre("<ENUMSOURCES><SourceType>L1</SourceType></ENUMSOURCES>\xFF"));
}

TEST_F(LoginTimer, FiresOncePerLogin) {
  Reply("0");
  Wait(1000);
  EXPECT_EQ(Sent().size(), 1u);
  Wait(1000);
  EXPECT_EQ(Sent().size(), 1u);
  Reply("0");
  Wait(1000);
  EXPECT_EQ(Sent().size(), 2u);
}

TEST_F(LoginTimer, IsStoppedByItsWorkBeingDoneBeforehand) {
  Reply("0");
  stream->RaiseEventTimerProc();
  EXPECT_FALSE(loop.NextTimer());
  Wait(1000);
  EXPECT_EQ(Sent().size(), 1u);
  EXPECT_THAT(status_texts, ElementsAre("Connected"));
}

TEST_F(LoginTimer, SaysOffBeforeAnyLogin) {
  stream->RaiseEventTimerProc();
  EXPECT_THAT(status_texts, ElementsAre("Off. "));
  EXPECT_THAT(Sent(), IsEmpty());
}

TEST_F(LoginTimer, NeedsAnOwnerBehindAGoodLogin) {
  Reply("0");
  stream->Owner(nullptr);
  EXPECT_EQ(NumberOf([&] { stream->RaiseEventTimerProc(); }), 91);
  EXPECT_THAT(status_texts, ElementsAre("Connected")) << "which was said before";
}

TEST_F(LoginTimer, KeepsALineEndOfOneCharacterInTheReason) {
  Reply("1", "a\rb\nc\n\rd\r\ne");
  Wait(100);
  EXPECT_THAT(status_texts, ElementsAre("Off. a\rb\nc\n\rde"));
}

TEST_F(LoginTimer, TellsWhyALoginWasRefused) {
  for (const char* code : {"1", "2", "3", "4", "", "00"}) {
    SCOPED_TRACE(code);
    status_texts.clear();
    Reply(code, "No such\r\n application\r\n");
    Wait(100);
    EXPECT_THAT(status_texts, ElementsAre("Off. No such application"));
    EXPECT_THAT(Sent(), IsEmpty());
  }
}

TEST_F(LoginTimer, AsksForNothingWhenSourcesAreNoLongerWanted) {
  Reply("0");
  facade->StatusRunWorkQT(Status_LEVEL_I_FULL_QUOTE);
  Wait(100);
  EXPECT_THAT(status_texts, ElementsAre("Connected"));
  EXPECT_THAT(Sent(), IsEmpty());
}

TEST_F(LoginTimer, DoesNothingWhenTheStreamIsGone) {
  Reply("0");
  mGlobal::SetStreamingObject(nullptr);
  EXPECT_NO_THROW(Wait(100));
  EXPECT_THAT(status_texts, IsEmpty());
}

TEST_F(LoginTimer, KeepsTheStreamAliveUntilTheReferenceIsCleared) {
  Reply("0");
  std::weak_ptr<cQTStreaming> gone = stream;
  stream.reset();
  Wait(100);
  EXPECT_THAT(status_texts, ElementsAre("Connected"));
  mGlobal::SetStreamingObject(nullptr);
  EXPECT_TRUE(gone.expired());
}

TEST_F(LoginTimer, BelongsToOneStreamAtATime) {
  const auto other = std::make_shared<cQTStreaming>();
  mGlobal::SetStreamingObject(other);
  Reply("0");
  Wait(100);
  EXPECT_THAT(status_texts, IsEmpty()) << "the timer found the other one";
}

TEST_F(LoginTimer, FailsUnnoticedWhenItCannotBeSet) {
  TestHost without_loop;
  without_loop.Use(registry).Use(clock).Use(sockets);
  const host::HostScope scope(without_loop);
  EXPECT_NO_THROW(Reply("0"));
  EXPECT_THAT(Sent(), IsEmpty());
}

}  // namespace
}  // namespace mirelo::testing
