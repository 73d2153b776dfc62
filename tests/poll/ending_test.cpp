#include <future>
#include <string>
#include <vector>

#include "poll/connections.h"

namespace mirelo::poll {
namespace {

using Ending = Connections;

TEST_F(Ending, ByThePeerIsToldOnceBehindAllItsBytes) {
  LoopbackServer server([](Peer& peer) { peer.Send("last words"); });
  Client client(library_);
  client.Connect(server.Address());
  RunUntilDisconnected(client);
  EXPECT_EQ(client.sink->received, "last words");
  EXPECT_EQ(client.sink->log.back(), "disconnected");
  EXPECT_EQ(client.sink->reasons, std::vector{server.Address() + ": The peer closed the connection"});
  EXPECT_TRUE(client.IsDropped());
  loop_.Yield();
  EXPECT_EQ(client.sink->reasons.size(), 1u);
  EXPECT_EQ(loop_.WatchCount(), 0u);
}

TEST_F(Ending, OfThePeersDirectionAloneEndsTheConnection) {
  LoopbackServer server([](Peer& peer) {
    peer.ShutdownWrite();
    peer.ReceiveAll();
  });
  Client client(library_);
  client.Connect(server.Address());
  RunUntilDisconnected(client);
  EXPECT_TRUE(client.IsDropped());
  server.WaitForScripts(1);
}

TEST_F(Ending, ByAResetIsToldAsSuch) {
#ifdef _WIN32
  GTEST_SKIP() << "Wine asks a socket that is waited for for its error itself, and receives an end then";
#endif
  LoopbackServer server([](Peer& peer) {
    peer.ReceiveUntil("x");
    peer.Reset();
  });
  Client client(library_);
  Connect(client, server.Address());
  client.connection->Send("x");
  RunUntilDisconnected(client);
  EXPECT_EQ(client.sink->reasons, std::vector{server.Address() + ": Connection reset by peer"});
  EXPECT_TRUE(client.IsDropped());
}

TEST_F(Ending, FoundWhileSendingStillDeliversWhatThePeerHadSent) {
  const std::string bytes(40'000, 'x');  // several chunks, which fit into the socket's buffer
  LoopbackServer server([&](Peer& peer) { peer.Send(bytes); });
  Client client(library_);
  Connect(client, server.Address());
  server.WaitForScripts(1);
  // The peer is gone: the first of these is answered by a reset, the second fails.
  client.sink->on_received = [&](const std::string&) { client.connection->Send("to nobody"); };
  RunUntilDisconnected(client);
  EXPECT_EQ(client.sink->received.size(), bytes.size());
  EXPECT_EQ(client.sink->reasons, std::vector{server.Address() + ": Connection reset by peer"});
  EXPECT_TRUE(client.IsDropped());
}

TEST_F(Ending, WithALongQueueToAPeerThatResetsRaisesNoSignal) {
  LoopbackServer server([](Peer& peer) { peer.Reset(); });
  Client client(library_);
  client.Connect(server.Address());
  client.connection->Send(std::string(4'000'000, 'x'));
  RunUntilDisconnected(client);
  EXPECT_TRUE(client.IsDropped());
}

TEST_F(Ending, ByDisconnectSendsWhatTheSocketTakesAndRaisesNothing) {
  LoopbackServer server([](Peer& peer) { peer.ReceiveAll(); });
  Client client(library_);
  Connect(client, server.Address());
  client.connection->Send("good");
  client.connection->Send("bye");
  client.connection->Disconnect();
  EXPECT_EQ(client.connection->State(), SocketConnection::kClosed);
  EXPECT_EQ(loop_.WatchCount(), 0u);
  server.WaitForScripts(1);
  EXPECT_EQ(server.Received(), "goodbye");
  loop_.Yield();
  EXPECT_EQ(client.sink->log, std::vector<std::string>{"connected"});
}

TEST_F(Ending, ByDisconnectReachesThePeerThoughItsOwnBytesAreUnread) {
  std::string received;
  bool reset = true;
  std::promise<void> server_has_sent;
  LoopbackServer server([&](Peer& peer) {
    peer.Send(std::string(40'000, 'x'));
    server_has_sent.set_value();
    received = peer.ReceiveAll();
    reset = peer.SawReset();
  });
  Client client(library_);
  Connect(client, server.Address());
  RunUntilReceived(client, 1);
  server_has_sent.get_future().wait();
  client.connection->Send("bye");
  client.connection->Disconnect();
  server.WaitForScripts(1);
  EXPECT_EQ(received, "bye");
  EXPECT_FALSE(reset);
}

TEST_F(Ending, ByDisconnectIsPossibleInEachState) {
  const testing::RefusingPort refusing;
  LoopbackServer server([](Peer& peer) { peer.ReceiveAll(); });
  Client client(library_);
  client.connection->Disconnect();
  EXPECT_EQ(client.connection->State(), SocketConnection::kClosed) << "never connected";
  client.Connect(server.Address());
  client.connection->Disconnect();
  EXPECT_EQ(client.connection->State(), SocketConnection::kClosed) << "connecting";
  client.Connect("localhost:" + std::to_string(server.Port()));
  client.connection->Disconnect();
  EXPECT_EQ(client.connection->State(), SocketConnection::kClosed) << "looking a name up";
  EXPECT_EQ(loop_.WatchCount(), 0u) << "the answer is not waited for";
  loop_.Yield();
  EXPECT_TRUE(client.sink->log.empty());
  client.Connect(refusing.Address());
  RunUntilDisconnected(client);
  client.connection->Disconnect();
  client.connection->Disconnect();
  EXPECT_EQ(client.connection->State(), SocketConnection::kClosed) << "refused";
  EXPECT_EQ(client.sink->log, std::vector<std::string>{"disconnected"});
}

TEST_F(Ending, BySilenceOfItsOwnerClosesTheSocket) {
  LoopbackServer server([](Peer& peer) { peer.ReceiveAll(); });
  {
    Client client(library_);
    Connect(client, server.Address());
    client.connection->Send("sent before it was dropped");
  }
  EXPECT_EQ(loop_.WatchCount(), 0u);
  server.WaitForScripts(1);
  EXPECT_EQ(server.Received(), "sent before it was dropped");
}

}  // namespace
}  // namespace mirelo::poll
