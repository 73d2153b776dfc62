// Connections on the loops: the bytes of one are handed over in order and one chunk at a time, whatever its
// sink does meanwhile, and all else goes on.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "adapters/poll/poll_winsock_library.h"
#include "loop/one_then_two.h"
#include "loop/tested_loops.h"
#include "poll/client.h"
#include "support/loopback_server.h"

namespace mirelo {
namespace {

using host::MessageLoop;
using host::SocketConnection;
using poll::Client;
using testing::LoopbackServer;
using Peer = LoopbackServer::Peer;
using Words = std::vector<std::string>;

class Chunks : public LoopTest {
 protected:
  // The number of times that the loop asked whether the time is over.
  int RunFor(MessageLoop::Milliseconds time) {
    bool over = false;
    int questions = 0;
    loop_.StartTimer(time, [&] { over = true; });
    loop_.RunUntil([&] {
      ++questions;
      return over;
    });
    return questions;
  }
  void RunUntilReceived(const Client& client, const std::string& bytes) {
    loop_.RunUntil([&] { return client.sink->received.size() >= bytes.size(); });
    EXPECT_TRUE(client.sink->received == bytes);
  }

  AnyLoop loop_{GetParam()};
  poll::PollWinsockLibrary library_{loop_};
};
INSTANTIATE_WITH_EVERY_LOOP(Chunks);

TEST_P(Chunks, ComeInOrderAndOneAtATimeHoweverOftenTheSinkYields) {
  std::string bytes;
  for (int number = 0; bytes.size() < 40 * SocketConnection::kChunkLimit; ++number)
    bytes += std::to_string(number) + "\n";
  LoopbackServer server([&](Peer& peer) {
    peer.Send(bytes);
    peer.ReceiveAll();
  });
  Client client(library_);
  int depth = 0, deepest = 0;
  const auto yield = [&] {
    deepest = std::max(deepest, ++depth);
    for (int i = 0; i < 3; ++i) loop_.Yield();
    --depth;
  };
  client.sink->on_available = yield;
  client.sink->on_received = [&](const std::string&) { yield(); };
  client.Connect(server.Address());
  RunUntilReceived(client, bytes);
  EXPECT_EQ(deepest, 1);
}

TEST_P(Chunks, WaitForTheSinkOfTheOneBeforeAndCostNoTimeMeanwhile) {
  OneThenTwo server;
  Client client(library_);
  int questions = 0;
  client.sink->on_received = [&](const std::string& chunk) {
    if (chunk != "1") return;
    server.SendTwo();
    questions = RunFor(kAMoment);
    EXPECT_EQ(client.sink->received, "1");
  };
  client.Connect(server.Address());
  RunUntilReceived(client, "12");
  EXPECT_LE(questions, kFewQuestions);
}

TEST_P(Chunks, WaitForASinkBehindTheFirst) {
  OneThenTwo server;
  Client client(library_);
  const auto second = std::make_shared<Client::Sink>();
  client.connection->Subscribe(std::static_pointer_cast<host::BytesTransferEvents>(second),
                               SocketConnection::kBytesTransfer);
  Words log;
  client.sink->on_received = [&](const std::string& chunk) {
    log.push_back("first " + chunk);
    if (chunk != "1") return;
    server.SendTwo();
    RunFor(kAMoment);
  };
  second->on_received = [&](const std::string& chunk) { log.push_back("second " + chunk); };
  client.Connect(server.Address());
  loop_.RunUntil([&] { return second->received == "12"; });
  EXPECT_EQ(log, (Words{"first 1", "second 1", "first 2", "second 2"}));
}

TEST_P(Chunks, OfOtherConnectionsComeMeanwhile) {
  OneThenTwo server, another;
  Client client(library_), other(library_);
  client.sink->on_received = [&](const std::string& chunk) {
    if (chunk != "1") return;
    server.SendTwo();
    other.Connect(another.Address());
    RunUntilReceived(other, "1");
    another.SendTwo();
    RunUntilReceived(other, "12");
    EXPECT_EQ(client.sink->received, "1");
  };
  client.Connect(server.Address());
  RunUntilReceived(client, "12");
}

TEST_P(Chunks, DoNotKeepWhatTheConnectionSends) {
  const std::string much(1'000'000, 'x');
  LoopbackServer server([&](Peer& peer) {
    peer.Send("1");
    if (peer.Receive(much.size()).size() == much.size()) peer.Send("2");
    peer.ReceiveAll();
  });
  Client client(library_);
  client.sink->on_received = [&](const std::string& chunk) {
    if (chunk != "1") return;
    client.connection->Send(much);
    loop_.RunUntil([&] { return client.sink->sent == static_cast<std::int64_t>(much.size()); });
    RunFor(kAMoment);
    EXPECT_EQ(client.sink->received, "1") << "the answer waits";
  };
  client.Connect(server.Address());
  RunUntilReceived(client, "12");
}

TEST_P(Chunks, AreFollowedByTheEndOfTheConnection) {
  for (const bool reset : {false, true}) {
    for (const bool sending : {false, true}) {
      SCOPED_TRACE(std::string(reset ? "reset" : "closed") + (sending ? " while sending" : ""));
      LoopbackServer server([&](Peer& peer) {
        peer.Send("last");
        peer.Await();
        if (reset) peer.Reset();
      });
      Client client(library_);
      int questions = 0;
      client.sink->on_received = [&](const std::string&) {
        if (sending) client.connection->Send(std::string(20'000'000, 'x'));
        server.Go();
        server.WaitForScripts(1);
        questions = RunFor(kAMoment);
        client.sink->log.push_back("returned");
      };
      client.Connect(server.Address());
      loop_.RunUntil([&] { return !client.sink->reasons.empty(); });
      ASSERT_GE(client.sink->log.size(), 2u);
      EXPECT_EQ(*(client.sink->log.end() - 1), "disconnected");
      EXPECT_EQ(std::ranges::count(client.sink->log, "received"), 1);
      EXPECT_LT(std::ranges::find(client.sink->log, "returned"), client.sink->log.end() - 1);
      EXPECT_LE(questions, kFewQuestions + 200 * sending) << "what is sent goes in many parts";
    }
  }
}

TEST_P(Chunks, GoOnBehindASinkThatThrows) {
  OneThenTwo server;
  Client client(library_);
  client.sink->on_received = [&](const std::string& chunk) {
    if (chunk != "1") return;
    server.SendTwo();
    RunFor(kAMoment);
    throw std::runtime_error("a bad chunk");
  };
  client.Connect(server.Address());
  EXPECT_THROW(RunUntilReceived(client, "12"), std::runtime_error);
  EXPECT_EQ(client.sink->received, "1");
  RunUntilReceived(client, "12");
}

TEST_P(Chunks, OfAConnectionThatItsSinkConnectsAnewWaitToo) {
  LoopbackServer server([](Peer& peer) {
    peer.Send(peer.Index() == 0 ? "1" : "2");
    peer.ReceiveAll();
  });
  Client client(library_);
  int questions = 0;
  client.sink->on_received = [&](const std::string& chunk) {
    if (chunk != "1") return;
    client.connection->Disconnect();
    client.Connect(server.Address());
    loop_.RunUntil([&] { return client.sink->connected == 2; });
    questions = RunFor(kAMoment);
    EXPECT_EQ(client.sink->received, "1");
  };
  client.Connect(server.Address());
  RunUntilReceived(client, "12");
  EXPECT_LE(questions, kFewQuestions);
}

TEST_P(Chunks, AreForgottenWhenTheConnectionIsDroppedMeanwhile) {
  OneThenTwo server;
  Client client(library_);
  bool returned = false;
  client.sink->on_received = [&](const std::string&) {
    server.SendTwo();
    RunFor(kAMoment);
    loop_.StartTimer(MessageLoop::Milliseconds(0), [&] { client.connection.reset(); });
    RunFor(kAMoment);
    returned = true;
  };
  client.Connect(server.Address());
  loop_.RunUntil([&] { return returned; });
  RunFor(kAMoment);
  EXPECT_EQ(client.sink->received, "1");
  EXPECT_EQ(loop_.WatchCount(), 0u);
}

TEST_P(Chunks, MayComeInsideAnEventThatIsNoChunk) {
  OneThenTwo server;
  Client client(library_);
  client.sink->on_connected = [&] {
    loop_.RunUntil([&] { return client.sink->received == "1"; });
    server.SendTwo();
    RunUntilReceived(client, "12");
  };
  client.Connect(server.Address());
  RunUntilReceived(client, "12");
}

}  // namespace
}  // namespace mirelo
