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
  LoopbackServer server([](Peer& peer) {
    peer.Send("last words");
    peer.Await();
  });
  Client client(library_);
  Connect(client, server.Address());
  client.sink->on_available = [&, first = true]() mutable {
    // The peer goes while its bytes are still unread: what is sent now is answered by a reset.
    if (!std::exchange(first, false)) return;
    server.Go();
    server.WaitForScripts(1);
    client.connection->Send("to nobody");
    loop_.Yield();
    client.connection->Send("to nobody again");
    loop_.Yield();
  };
  RunUntilDisconnected(client);
  EXPECT_EQ(client.sink->received, "last words");
  EXPECT_EQ(client.sink->reasons.size(), 1u);
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
  LoopbackServer server([&](Peer& peer) {
    peer.Send(std::string(100'000, 'x'));
    peer.Await();
    received = peer.ReceiveAll();
  });
  Client client(library_);
  Connect(client, server.Address());
  RunUntilReceived(client, 1);
  client.connection->Send("bye");
  client.connection->Disconnect();
  server.Go();
  server.WaitForScripts(1);
  EXPECT_EQ(received, "bye");
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
