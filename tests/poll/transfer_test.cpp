#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "poll/connections.h"

namespace mirelo::poll {
namespace {

using Transfer = Connections;

// `size` bytes that show when some are missing, doubled or out of order.
std::string Pattern(std::size_t size) {
  std::string bytes(size, '\0');
  std::uint32_t state = 12345;
  for (char& byte : bytes) {
    state = state * 1664525 + 1013904223;
    byte = static_cast<char>(state >> 24);
  }
  return bytes;
}

TEST_F(Transfer, DeliversBytesInOrderInChunksOfAtMost8192) {
  const std::string bytes = Pattern(1'000'000);
  LoopbackServer server([&](Peer& peer) { peer.Send(bytes); });
  Client client(library_);
  client.Connect(server.Address());
  RunUntilDisconnected(client);
  EXPECT_TRUE(client.sink->received == bytes);
  const std::vector<std::size_t>& chunks = client.sink->chunks;
  EXPECT_EQ(*std::max_element(chunks.begin(), chunks.end()), SocketConnection::kChunkLimit);
  EXPECT_EQ(SocketConnection::kChunkLimit, 8192u);
}

TEST_F(Transfer, HandsOverOneChunkAStep) {
  LoopbackServer server([&](Peer& peer) {
    peer.Send(std::string(3 * SocketConnection::kChunkLimit, 'x'));
    peer.ReceiveAll();
  });
  Client client(library_);
  client.Connect(server.Address());
  std::size_t chunks = 0;
  loop_.RunUntil([&] {
    EXPECT_LE(client.sink->chunks.size(), chunks + 1);
    chunks = client.sink->chunks.size();
    return client.sink->received.size() == 3 * SocketConnection::kChunkLimit;
  });
}

TEST_F(Transfer, TellsOfBytesBeforeItTakesThem) {
  LoopbackServer server([&](Peer& peer) { peer.Send("x"); });
  Client client(library_);
  client.Connect(server.Address());
  RunUntilReceived(client, 1);
  EXPECT_EQ(client.sink->log, (std::vector<std::string>{"connected", "available", "received"}));
}

TEST_F(Transfer, KeepsUrgentDataInTheStream) {
  // A server whose socket can be had: the scripted one sends no urgent data.
  std::uint16_t port = 0;
  const int listener = LoopbackServer::BoundSocket(port);
  ASSERT_EQ(::listen(listener, 1), 0);
  Client client(library_);
  client.Connect("127.0.0.1:" + std::to_string(port));
  const int peer = ::accept(listener, nullptr, nullptr);
  ::send(peer, "abc", 3, MSG_OOB | MSG_NOSIGNAL);
  RunUntilReceived(client, 3);
  EXPECT_EQ(client.sink->received, "abc");
  ::close(peer);
  ::close(listener);
}

TEST_F(Transfer, SendsInTheOrderOfTheCalls) {
  LoopbackServer server([](Peer& peer) {
    peer.ReceiveUntil("end");
    peer.Send("seen");
  });
  Client client(library_);
  Connect(client, server.Address());
  client.connection->Send(
      "a\xFF"
      "b");
  client.connection->Send("");
  client.connection->Send(std::string("\0c", 2));
  client.connection->Send("end");
  EXPECT_EQ(client.sink->sent, 0) << "no event comes from inside a call";
  RunUntilReceived(client, 4);
  EXPECT_EQ(server.Received(), std::string("a\xFF"
                                           "b\0cend",
                                           8));
  EXPECT_EQ(client.sink->sent, 8);
}

TEST_F(Transfer, DeliversAfterConnectingWhatWasSentBefore) {
  LoopbackServer server([](Peer& peer) { peer.Send(peer.Receive(10)); });
  for (const std::string host : {"127.0.0.1", "localhost"}) {
    SCOPED_TRACE(host);
    Client client(library_);
    client.Connect(host + ":" + std::to_string(server.Port()));
    client.connection->Send("early");
    client.sink->on_connected = [&] { client.connection->Send(" late"); };
    RunUntilReceived(client, 10);
    EXPECT_EQ(client.sink->received, "early late");
  }
}

TEST_F(Transfer, QueuesMoreThanTheSocketTakesWhileThePeerReadsSlowly) {
  const std::string bytes = Pattern(16'000'000);
  LoopbackServer server([&](Peer& peer) {
    std::size_t received = 0;
    for (int piece = 0; piece < 4; ++piece) {
      peer.Await();
      received += peer.Receive(10'000).size();
    }
    peer.Receive(bytes.size() - received);
    peer.Send("done");
  });
  Client client(library_);
  Connect(client, server.Address());
  for (std::size_t place = 0; place < bytes.size(); place += 1'000'000) {
    client.connection->Send(bytes.substr(place, 1'000'000));
  }
  while (!client.sink->log.empty()) {  // until the socket takes nothing more
    client.sink->log.clear();
    loop_.Yield();
  }
  EXPECT_LT(client.sink->sent, static_cast<std::int64_t>(bytes.size())) << "the peer has not read a byte";
  for (int i = 0; i < 4; ++i) server.Go();
  RunUntilReceived(client, 4);
  EXPECT_TRUE(server.Received() == bytes);
  EXPECT_EQ(client.sink->sent, static_cast<std::int64_t>(bytes.size()));
}

TEST_F(Transfer, TakesNothingToSendWhenClosedOrDropped) {
  LoopbackServer server([](Peer&) {});
  Client client(library_);
  EXPECT_EQ(NumberOf([&] { client.connection->Send("x"); }), 5) << "never connected";
  client.Connect(server.Address());
  RunUntilDisconnected(client);
  EXPECT_EQ(NumberOf([&] { client.connection->Send("x"); }), 5) << "dropped";
  client.connection->Disconnect();
  EXPECT_EQ(NumberOf([&] { client.connection->Send("x"); }), 5) << "closed";
}

TEST_F(Transfer, GoesToEachSinkInTheOrderOfTheirSubscription) {
  LoopbackServer server([](Peer& peer) { peer.Send("x"); });
  Client client(library_);
  const auto second = std::make_shared<Client::Sink>();
  std::string order;
  client.sink->on_received = [&](const std::string&) { order += "1"; };
  second->on_received = [&](const std::string&) { order += "2"; };
  client.connection->Subscribe(std::static_pointer_cast<host::BytesTransferEvents>(second),
                               SocketConnection::kBytesTransfer);
  client.Connect(server.Address());
  RunUntilDisconnected(client);
  EXPECT_EQ(order, "12");
  EXPECT_EQ(second->connected, 0) << "it asked for bytes only";
}

TEST_F(Transfer, RefusesSubscriptionsOfAnotherKind) {
  Client client(library_);
  const std::shared_ptr<host::BytesTransferEvents> bytes = client.sink;
  const std::shared_ptr<host::ConnectionEvents> events = client.sink;
  struct Case {
    const char* name;
    int flags;
    int bytes_error;
    int events_error;
  };
  const Case cases[] = {{"none", 0, 5, 5}, {"bytes", 1, 0, 5}, {"connection", 8, 5, 0}, {"both", 9, 5, 5}};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ(NumberOf([&] { client.connection->Subscribe(bytes, c.flags); }), c.bytes_error);
    EXPECT_EQ(NumberOf([&] { client.connection->Subscribe(events, c.flags); }), c.events_error);
  }
  EXPECT_EQ(NumberOf([&] { client.connection->Subscribe(std::shared_ptr<host::BytesTransferEvents>(), 1); }),
            91);
  EXPECT_EQ(NumberOf([&] { client.connection->Subscribe(std::shared_ptr<host::ConnectionEvents>(), 8); }),
            91);
}

}  // namespace
}  // namespace mirelo::poll
