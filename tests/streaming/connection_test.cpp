#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "automation/runtime_error.h"
#include "streaming/stream_test.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::StartsWith;

class Connecting : public StreamTest {};

TEST_F(Connecting, MakesAddressProtocolAndConnectionAndSubscribesBeforeItConnects) {
  EXPECT_FALSE(stream->connect());
  EXPECT_THAT(sockets.calls, ElementsAre("address 2", "text 127.0.0.1:16240", "protocol 2 1 6", "connection",
                                         "subscribe 1", "subscribe 8", "connect"));
  EXPECT_THAT(status_texts, ElementsAre("Connection started...", "Connecting to host..."));
}

TEST_F(Connecting, GoesToTheAddressAndPortOfTheSettings) {
  Setting("Webaddress", "quotes.example");
  Setting("SocketPort", 20001);
  stream->connect();
  EXPECT_EQ(sockets.calls.at(1), "text quotes.example:20001");
}

TEST_F(Connecting, TakesAPortThatIsStoredAsText) {
  Setting("SocketPort", "20002");
  stream->connect();
  EXPECT_EQ(sockets.calls.at(1), "text 127.0.0.1:20002");
}

TEST_F(Connecting, ReadsTheSettingsBeforeItSaysAnything) {
  Setting("SocketPort", "no number");
  EXPECT_EQ(NumberOf([&] { stream->connect(); }), 13);
  EXPECT_THAT(status_texts, IsEmpty());
}

TEST_F(Connecting, ShowsAFailureInABoxAndAsAStatusOnOneLine) {
  for (const char* call :
       {"address", "text", "protocol", "connection", "subscribe 1", "subscribe 8", "connect"}) {
    SCOPED_TRACE(call);
    desktop.boxes.clear();
    status_texts.clear();
    sockets = MemoryWinsock();
    sockets.FailAt(call, RuntimeError(5, "No\r\nway"));
    EXPECT_FALSE(stream->connect());
    EXPECT_THAT(sockets.calls.back(), StartsWith(call));
    EXPECT_THAT(desktop.boxes, ElementsAre(ScriptedDesktop::Box{"No\r\nway", 0, "Mirelo"}));
    EXPECT_EQ(status_texts.front(), "Connection started...");
    EXPECT_EQ(status_texts.back(), "Noway");
  }
}

TEST_F(Connecting, LetsGoOfTheEarlierConnectionWithoutDisconnectingIt) {
  stream->connect();
  stream->connect();
  ASSERT_EQ(sockets.connections.size(), 2u);
  EXPECT_EQ(sockets.connections[0]->state, host::SocketConnection::kConnected);
  EXPECT_EQ(sockets.connections[0].use_count(), 1) << "only this test still holds it";
  stream->SendWinsock("x");
  EXPECT_THAT(sockets.connections[0]->sent, IsEmpty());
  EXPECT_THAT(sockets.connections[1]->sent, ElementsAre("x"));
}

TEST_F(Connecting, KeepsTheNewConnectionWhenItFailsBehindItsMaking) {
  stream->connect();
  sockets.FailAt("subscribe 8", RuntimeError(5, "No way"));
  stream->connect();
  ASSERT_EQ(sockets.connections.size(), 2u);
  sockets.connections[1]->state = host::SocketConnection::kConnected;
  stream->SendWinsock("x");
  EXPECT_THAT(sockets.connections[0]->sent, IsEmpty());
  EXPECT_THAT(sockets.connections[1]->sent, ElementsAre("x"));
}

TEST_F(Connecting, KeepsTheFormerConnectionWhenItFailsBeforeANewOneIsMade) {
  stream->connect();
  sockets.FailAt("address", RuntimeError(5, "No way"));
  stream->connect();
  stream->SendWinsock("x");
  EXPECT_THAT(Sent(), ElementsAre("x"));
}

TEST_F(Connecting, LeavesStartStopAsTheClientSetIt) {
  for (const bool value : {false, true}) {
    stream->StartStop(value);
    stream->connect();
    EXPECT_EQ(stream->StartStop(), value);
  }
}

class Disconnecting : public StreamTest {};

TEST_F(Disconnecting, OfAStreamThatNeverConnectedOnlyClearsStartStop) {
  EXPECT_TRUE(stream->DisConnect().IsEmpty());
  EXPECT_FALSE(stream->StartStop());
  EXPECT_THAT(sockets.calls, IsEmpty());
  EXPECT_THAT(status_texts, IsEmpty());
}

TEST_F(Disconnecting, ClosesWhatIsNotClosed) {
  struct Case {
    std::int32_t state;
    bool closes;
  };
  using Connection = host::SocketConnection;
  for (const auto& [state, closes] : {Case{Connection::kClosed, false},
                                      {Connection::kConnecting, true},
                                      {Connection::kConnected, true},
                                      {Connection::kDropped, true}}) {
    SCOPED_TRACE(state);
    stream->connect();
    sockets.Newest().state = state;
    sockets.calls.clear();
    stream->DisConnect();
    EXPECT_EQ(sockets.calls, closes ? std::vector<std::string>{"disconnect"} : std::vector<std::string>{});
  }
}

TEST_F(Disconnecting, ReportsAFailureAsAStatusOnOneLine) {
  stream->connect();
  status_texts.clear();
  sockets.FailAt("disconnect", RuntimeError(5, "Still\r\nbusy"));
  stream->DisConnect();
  EXPECT_THAT(status_texts, ElementsAre("Stillbusy"));
  EXPECT_THAT(desktop.boxes, IsEmpty());
}

TEST_F(Disconnecting, KeepsTheConnectionObject) {
  stream->connect();
  stream->DisConnect();
  sockets.calls.clear();
  stream->SendWinsock("late");
  EXPECT_THAT(sockets.calls, ElementsAre("send"))
      << "the library decides what a closed connection does with it";
}

TEST_F(Disconnecting, ReportsAFailureOfTheStateAsAStatus) {
  stream->connect();
  status_texts.clear();
  sockets.calls.clear();
  sockets.Newest().state_failure = RuntimeError(5, "Line\r\nunknown");
  stream->DisConnect();
  EXPECT_THAT(status_texts, ElementsAre("Lineunknown"));
  EXPECT_THAT(sockets.calls, IsEmpty());
  EXPECT_FALSE(stream->StartStop());
}

class Sending : public StreamTest {};

TEST_F(Sending, DoesNothingWithoutTextOrConnection) {
  stream->SendWinsock("before");
  stream->connect();
  stream->SendWinsock("");
  EXPECT_THAT(Sent(), IsEmpty());
  EXPECT_THAT(desktop.boxes, IsEmpty());
}

TEST_F(Sending, SendsInAllStatesButTheDroppedOne) {
  using Connection = host::SocketConnection;
  stream->connect();
  for (const std::int32_t state : {Connection::kConnecting, Connection::kConnected}) {
    sockets.Newest().state = state;
    stream->SendWinsock(std::to_string(state));
  }
  sockets.Newest().state = Connection::kDropped;
  stream->SendWinsock("dropped");
  EXPECT_THAT(Sent(), ElementsAre("2", "1"));
  EXPECT_THAT(desktop.boxes, IsEmpty());
  sockets.Newest().state = Connection::kClosed;
  stream->SendWinsock("closed");
  EXPECT_THAT(desktop.boxes,
              ElementsAre(ScriptedDesktop::Box{"Invalid procedure call or argument", 0, "Mirelo"}))
      << "the library refuses it";
}

TEST_F(Sending, WritesOneByteForEachCharacterOfTheCodePage) {
  stream->connect();
  stream->SendWinsock("\u20AC\u00FF");
  EXPECT_THAT(Sent(), ElementsAre("\x80\xFF"));
}

TEST_F(Sending, ShowsAFailureInABox) {
  stream->connect();
  sockets.FailAt("send", RuntimeError(5, "Line cut"));
  stream->SendWinsock("x");
  EXPECT_THAT(desktop.boxes, ElementsAre(ScriptedDesktop::Box{"Line cut", 0, "Mirelo"}));
}

TEST_F(Sending, ShowsAFailureOfTheStateInABox) {
  stream->connect();
  sockets.Newest().state_failure = RuntimeError(5, "Line unknown");
  stream->SendWinsock("x");
  EXPECT_THAT(desktop.boxes, ElementsAre(ScriptedDesktop::Box{"Line unknown", 0, "Mirelo"}));
  EXPECT_THAT(Sent(), IsEmpty());
}

class PeerThatDrops : public StreamTest {};

TEST_F(PeerThatDrops, LeavesTheConnectionObject) {
  stream->connect();
  sockets.Newest().Drop();
  sockets.Newest().state = host::SocketConnection::kConnected;
  stream->SendWinsock("late");
  EXPECT_THAT(Sent(), ElementsAre("late"));
}

TEST_F(PeerThatDrops, CausesOnlyTheUnsubscription) {
  stream->connect();
  sockets.calls.clear();
  status_texts.clear();
  sockets.Newest().Drop();
  EXPECT_THAT(sockets.calls, ElementsAre("unsubscribe 102", "unsubscribe 101"));
  EXPECT_THAT(status_texts, IsEmpty());
  EXPECT_THAT(processes, IsEmpty());
  EXPECT_TRUE(stream->StartStop());
}

class StreamsEnd : public StreamTest {};

TEST_F(StreamsEnd, DisconnectsWhatHasBitZeroSetAndNothingElse) {
  for (const std::int32_t state : {0, 1, 2, 3, 128, 129}) {
    SCOPED_TRACE(state);
    Renew();
    stream->connect();
    sockets.Newest().state = state;
    sockets.calls.clear();
    stream.reset();
    EXPECT_EQ(sockets.calls,
              state % 2 == 1 ? std::vector<std::string>{"disconnect"} : std::vector<std::string>{});
  }
}

TEST_F(StreamsEnd, SwallowsAFailureOfTheState) {
  stream->connect();
  sockets.Newest().state_failure = RuntimeError(5, "Line unknown");
  sockets.calls.clear();
  EXPECT_NO_THROW(stream.reset());
  EXPECT_THAT(sockets.calls, IsEmpty());
}

TEST_F(StreamsEnd, ComesWithTheFacadesForTheTimersStream) {
  mGlobal::SetStreamingObject(stream);
  const std::weak_ptr<cQTStreaming> gone = stream;
  stream.reset();
  EXPECT_FALSE(gone.expired());
  facade.reset();
  EXPECT_TRUE(gone.expired());
}

TEST_F(StreamsEnd, SwallowsAFailure) {
  stream->connect();
  sockets.FailAt("disconnect", RuntimeError(5, "Still busy"));
  EXPECT_NO_THROW(stream.reset());
}

TEST_F(StreamsEnd, LeavesAConnectionThatSpeaksToNobody) {
  stream->connect();
  stream.reset();
  Deliver(Level1Wire().Symbol("MSFT").Last(28.35).Bytes());
  sockets.Newest().Drop();
  EXPECT_EQ(events, 0);
}

TEST_F(StreamTest, IgnoresTheEventsInWhichNothingHappens) {
  stream->connect();
  status_texts.clear();
  sockets.Newest().DeliverIdleEvents();
  EXPECT_EQ(events, 0);
  EXPECT_THAT(status_texts, IsEmpty());
  EXPECT_THAT(Sent(), IsEmpty());
}

TEST_F(StreamTest, NeedsAFacadeToBeMade) {
  stream.reset();
  facade.reset();
  EXPECT_EQ(NumberOf([] { std::make_shared<cQTStreaming>(); }), 91);
}

TEST_F(StreamTest, DeliversNothingUntilTheClientSaysSo) {
  EXPECT_FALSE(std::make_shared<cQTStreaming>()->StartStop());
}

TEST_F(StreamTest, KeepsItsPublicValues) {
  stream->Enumerate_Sources_Result_ID(true);
  stream->st_StreamerFile("SWISS.SDF");
  stream->DovantaFormatUserDate("dd.mm.yyyy");
  EXPECT_TRUE(stream->Enumerate_Sources_Result_ID());
  EXPECT_EQ(stream->st_StreamerFile(), "SWISS.SDF");
  EXPECT_EQ(stream->DovantaFormatUserDate(), "dd.mm.yyyy");
  EXPECT_EQ(stream->TypeName(), "cQTStreaming");
}

}  // namespace
}  // namespace mirelo::testing
