// What a connection's sinks get of the bytes that come: whole messages, in order, one at a time. What several
// messages of one read ask of it stands with the sockets that make it.

#include "wire/aligned_connection.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <new>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

#include "support/memory_shortage.h"
#include "wire/aligned_client.h"
#include "wire/message_aligner.h"

namespace mirelo::wire {
namespace {

using namespace std::chrono_literals;
using host::SocketConnection;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using testing::Level1Wire;
using ::testing::SizeIs;

class AlignedConnection : public testing::ConnectedClient {};

TEST_F(AlignedConnection, GivesWholeMessagesHoweverTheyCome) {
  for (const char byte : std::string(kAccepted)) Deliver({byte});
  Deliver(Record("A") + kAccepted);
  EXPECT_THAT(client->messages, ElementsAre(kAccepted, Record("A"), kAccepted));
  EXPECT_EQ(loop.NextTimer(), std::nullopt);
}

TEST_F(AlignedConnection, GivesAMessageOfUnknownShapeWhenNothingMoreComesForAMoment) {
  Deliver(kRefused);
  loop.Advance(MessageAligner::kPatience - 1ms);
  EXPECT_THAT(client->messages, IsEmpty());
  loop.Advance(1ms);
  EXPECT_THAT(client->messages, ElementsAre(kRefused));
  EXPECT_EQ(loop.NextTimer(), std::nullopt);
}

TEST_F(AlignedConnection, CountsTheMomentFromTheLastByte) {
  Deliver(std::string(kRefused) + "<STATUSDESC></STATUSDES");
  loop.Advance(MessageAligner::kPatience * 2);
  EXPECT_THAT(client->messages, IsEmpty()) << "a tag that is cut is worth more patience";
  Deliver("C>");
  EXPECT_THAT(client->messages, ElementsAre(std::string(kRefused) + "<STATUSDESC></STATUSDESC>"));
  Deliver(kRefused);
  loop.Advance(MessageAligner::kPatience - 1ms);
  Deliver(" ");
  loop.Advance(MessageAligner::kPatience - 1ms);
  EXPECT_EQ(client->messages.size(), 1U);
  loop.Advance(1ms);
  EXPECT_EQ(client->messages.size(), 2U);
}

TEST_F(AlignedConnection, GivesWhatWaitsBeforeItTellsThatThePeerHasGone) {
  client->at_message = [this] { EXPECT_THAT(dropped, IsEmpty()); };
  Deliver(kRefused);
  winsock.Newest().Drop("gone");
  EXPECT_THAT(client->messages, ElementsAre(kRefused));
  EXPECT_THAT(dropped, ElementsAre("gone"));
  EXPECT_THAT(client->ends, ElementsAre("gone"));
  loop.Advance(1min);
  EXPECT_EQ(client->messages.size(), 1U);
}

TEST_F(AlignedConnection, TellsOfADropEvenWhenTheLastMessageFails) {
  client->at_message = [] { throw std::runtime_error("bad"); };
  Deliver(kRefused);
  EXPECT_THROW(winsock.Newest().Drop("gone"), std::runtime_error);
  EXPECT_THAT(dropped, ElementsAre("gone"));
}

TEST_F(AlignedConnection, GivesOneMessageAtATimeAndInOrder) {
  int depth = 0;
  client->at_message = [&] {
    EXPECT_EQ(++depth, 1);
    if (client->messages.size() == 1) {
      winsock.Newest().DeliverOutOfTurn(Record("C") + Record("D").substr(0, 7));
      winsock.Newest().DeliverOutOfTurn(Record("D").substr(7));
    }
    --depth;
  };
  Deliver(kAccepted + Record("A") + kAccepted);
  EXPECT_THAT(client->messages, ElementsAre(kAccepted, Record("A"), kAccepted, Record("C") + Record("D")));
}

// A message that a timer has handed over keeps the socket library from nothing.
TEST_F(AlignedConnection, TellsOfItsEndBehindTheMessagesThatCameBeforeIt) {
  client->at_message = [this] {
    if (client->messages.size() == 1) {
      Deliver(Record("A"));
      Deliver(kRefused);
      winsock.Newest().Drop("gone");
    }
    EXPECT_THAT(dropped, IsEmpty());
    EXPECT_THAT(client->ends, IsEmpty());
  };
  Deliver(kRefused);
  loop.Advance(MessageAligner::kPatience);
  EXPECT_THAT(client->messages, ElementsAre(kRefused, Record("A"), kRefused));
  EXPECT_THAT(dropped, ElementsAre("gone"));
  EXPECT_THAT(client->ends, ElementsAre("gone"));
}

TEST_F(AlignedConnection, TellsASinkOfNoEndThatHasDisconnectedBeforeIt) {
  client->at_message = [this] {
    winsock.Newest().Drop("gone");
    connection->Disconnect();
  };
  Deliver(kRefused);
  loop.Advance(MessageAligner::kPatience);
  EXPECT_THAT(client->ends, IsEmpty());
}

TEST_F(AlignedConnection, MayBeLetGoByTheFirstToHearOfItsEnd) {
  client->at_message = [this] { winsock.Newest().Drop("gone"); };
  sockets.Dropped.Subscribe([this](const std::string&) { connection.reset(); });
  Deliver(kRefused);
  loop.Advance(MessageAligner::kPatience);
  EXPECT_THAT(dropped, ElementsAre("gone"));
  EXPECT_THAT(client->ends, IsEmpty());
}

TEST_F(AlignedConnection, IsGivenUpWhenTooMuchComesWhileASinkIsAtWork) {
  const std::string part(std::size_t{1} << 20, 'x');
  client->at_message = [&] {
    for (int i = 0; i < 20; ++i) Deliver(part);
    EXPECT_EQ(connection->State(), SocketConnection::kDropped);
    EXPECT_THAT(dropped, IsEmpty()) << "its sink is at work";
    EXPECT_THAT(client->ends, IsEmpty());
  };
  Deliver(kRefused);
  loop.Advance(MessageAligner::kPatience);
  EXPECT_THAT(client->messages, ElementsAre(kRefused));
  EXPECT_THAT(dropped, ElementsAre(HasSubstr("sends faster than")));
  EXPECT_THAT(client->ends, ElementsAre(HasSubstr("sends faster than")));
}

TEST_F(AlignedConnection, KeepsWhatComesWhileASinkIsAtWorkUpToItsBound) {
  const std::string records = Record("A") + Record("B");
  client->at_message = [&] {
    if (client->messages.size() > 1) return;
    for (std::size_t size = 0; size + records.size() <= std::size_t{16} << 20; size += records.size())
      Deliver(records);
  };
  Deliver(kRefused);
  loop.Advance(MessageAligner::kPatience);
  std::size_t size = 0;
  for (const std::string& message : client->messages) size += message.size();
  EXPECT_EQ(size,
            std::string_view(kRefused).size() + (std::size_t{16} << 20) / records.size() * records.size());
  EXPECT_THAT(dropped, IsEmpty());
}

TEST_F(AlignedConnection, GoesOnInOrderWhenMemoryIsShortForAMoment) {
  const std::string list =
      "L1" + std::string("\xFF\x7F\x12\0", 4) + std::string(32'760, 'x') + std::string(1, '\0');
  std::optional<testing::MemoryShortage> shortage;
  client->at_message = [&] {
    if (client->messages.size() > 1) return;
    Deliver(list.substr(0, 32'000));
    shortage.emplace(32'000);
  };
  Deliver(kRefused);
  EXPECT_THROW(loop.Advance(MessageAligner::kPatience), std::bad_alloc);
  shortage.reset();
  Deliver(list.substr(32'000));
  EXPECT_THAT(client->messages, ElementsAre(kRefused, list));
}

// The bytes behind a length that lies bring its end no nearer.
TEST_F(AlignedConnection, GivesARecordItsTimeFromTheFirstByte) {
  Deliver(Level1Wire().Id(1).Length(30'000).Bytes());
  for (auto waited = 0ms; waited < MessageAligner::kPatience; waited += 50ms) {
    Deliver(kAccepted);
    EXPECT_THAT(client->messages, IsEmpty());
    loop.Advance(50ms);
  }
  EXPECT_THAT(client->messages, ElementsAre(kAccepted, kAccepted, kAccepted, kAccepted, kAccepted));
  EXPECT_THAT(told, ElementsAre(HasSubstr("do not end")));
  EXPECT_EQ(loop.NextTimer(), std::nullopt);
}

TEST_F(AlignedConnection, WaitsLongerForTheRestOfARecordThatHoldsNothingBack) {
  Deliver(Record("A").substr(0, 10));
  loop.Advance(MessageAligner::kRecordPatience - 1ms);
  Deliver(Record("A").substr(10));
  EXPECT_THAT(client->messages, ElementsAre(Record("A")));
  Deliver(Record("A").substr(0, 10));
  loop.Advance(MessageAligner::kRecordPatience);
  EXPECT_THAT(told, ElementsAre(HasSubstr("do not end")));
  Deliver(Record("B"));
  EXPECT_THAT(client->messages, ElementsAre(Record("A"), Record("B")));
}

TEST_F(AlignedConnection, WaitsForNothingBehindItsEnd) {
  Deliver(kRefused);
  connection->Disconnect();
  loop.Advance(1min);
  Connect();
  Deliver(kRefused);
  connection.reset();
  loop.Advance(1min);
  EXPECT_THAT(client->messages, IsEmpty());
}

TEST_F(AlignedConnection, BeginsAnewWhenASinkConnectsItAnew) {
  client->at_message = [this] {
    client->at_message = nullptr;
    connection->Disconnect();
    Connect();
    winsock.Newest().DeliverOutOfTurn(Record("B"));
  };
  Deliver(kAccepted + Record("A"));
  EXPECT_THAT(client->messages, ElementsAre(kAccepted, Record("B")));
}

TEST_F(AlignedConnection, LetsAListOfSourcesPassWhenTheClientAskedForOne) {
  const std::string list = "ES<SOURCES></SOURCES>";
  Deliver(list);
  EXPECT_THAT(client->messages, IsEmpty());
  connection->Send("<ENUMSOURCES><SourceType>L1</SourceType></ENUMSOURCES>\xFF");
  Deliver(list + list);
  EXPECT_THAT(client->messages, ElementsAre(list));
}

TEST_F(AlignedConnection, IsGivenUpWhenAListDoesNotEnd) {
  connection->Send("<ENUMSOURCES></ENUMSOURCES>\xFF");
  Deliver("ES<SOURCES>");
  const std::string part(std::size_t{1} << 20, 'x');
  for (int i = 0; i < 20; ++i) Deliver(part);
  EXPECT_THAT(dropped, ElementsAre(HasSubstr("does not end")));
  EXPECT_THAT(client->ends, ElementsAre(HasSubstr("does not end")));
  EXPECT_THAT(client->messages, IsEmpty());
  EXPECT_EQ(connection->State(), SocketConnection::kDropped);
  EXPECT_EQ(winsock.Newest().state, SocketConnection::kClosed);
  Connect();
  EXPECT_EQ(connection->State(), SocketConnection::kConnected);
}

// One that asks for the same again and again, and reads no answer.
TEST_F(AlignedConnection, IsGivenUpWhenItsPeerDoesNotReadWhatItIsSent) {
  const std::string part(std::size_t{1} << 20, 'x');
  client->at_message = [&] { connection->Send(part); };
  for (int i = 0; i < 20; ++i) Deliver(kAccepted);
  EXPECT_THAT(client->messages, SizeIs(17));
  EXPECT_THAT(dropped, ElementsAre(HasSubstr("does not read")));
  EXPECT_THAT(client->ends, ElementsAre(HasSubstr("does not read")));
  EXPECT_EQ(connection->State(), SocketConnection::kDropped);
}

TEST_F(AlignedConnection, IsNotGivenUpForWhatItsPeerHasRead) {
  const std::string part(std::size_t{1} << 20, 'x');
  for (int i = 0; i < 40; ++i) {
    connection->Send(part);
    winsock.Newest().TellOfSent(static_cast<std::int32_t>(part.size()));
  }
  EXPECT_THAT(dropped, IsEmpty());
}

TEST_F(AlignedConnection, TellsWhatIsLeftOut) {
  Deliver(Level1Wire().Symbol("A").Last(1).Length(-7).Bytes() + Record("B"));
  EXPECT_THAT(told, ElementsAre(HasSubstr("length")));
  EXPECT_THAT(client->messages, ElementsAre(Record("B")));
}

TEST_F(AlignedConnection, TellsThatItRestsBehindAllMessagesThatCameTogetherThoughOneOfThemFails) {
  std::vector<std::size_t> rests;
  sockets.Rested.Subscribe([&] { rests.push_back(client->messages.size()); });
  Deliver(Record("A") + kAccepted + Record("B"));
  EXPECT_THAT(rests, ElementsAre(3U));
  Deliver(Record("C"));
  EXPECT_THAT(rests, ElementsAre(3U, 4U));
  client->at_message = [] { throw std::runtime_error("refused"); };
  EXPECT_THROW(Deliver(std::string(kAccepted) + Record("D")), std::runtime_error);
  EXPECT_THAT(rests, ElementsAre(3U, 4U, 6U));
}

TEST_F(AlignedConnection, ShowsEachMessageBeforeItsSinkGetsIt) {
  std::vector<std::string> shown;
  sockets.Delivered.Subscribe([&](std::span<const std::uint8_t> message) {
    EXPECT_EQ(client->messages.size(), shown.size());
    shown.emplace_back(message.begin(), message.end());
  });
  Deliver("LO<STATUSCODE>0</STATUS");
  Deliver("CODE><STATUSDESC></STATUSDESC>" + Record("A"));
  EXPECT_EQ(shown, client->messages);
  EXPECT_EQ(shown.size(), 2U);
}

}  // namespace
}  // namespace mirelo::wire
