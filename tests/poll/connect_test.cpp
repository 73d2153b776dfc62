#include <optional>
#include <string>
#include <vector>

#include "poll/connections.h"

namespace mirelo::poll {
namespace {

using Connecting = Connections;

TEST_F(Connecting, ReturnsAtOnceAndTellsTheOutcomeByAnEvent) {
  LoopbackServer server([](Peer& peer) { peer.ReceiveAll(); });
  Client client(library_);
  EXPECT_EQ(client.connection->State(), SocketConnection::kClosed);
  client.Connect(server.Address());
  EXPECT_EQ(client.connection->State(), SocketConnection::kConnecting);
  EXPECT_EQ(client.sink->connected, 0);
  loop_.RunUntil([&] { return client.sink->connected > 0; });
  EXPECT_EQ(client.connection->State(), SocketConnection::kConnected);
  EXPECT_NE(client.connection->State() & 1, 0);
}

TEST_F(Connecting, ThatIsRefusedEndsWithAReasonForPeople) {
  const testing::RefusingPort port;
  Client client(library_);
  client.Connect(port.Address());
  RunUntilDisconnected(client);
  EXPECT_EQ(client.connection->State(), SocketConnection::kDropped);
  EXPECT_EQ(client.sink->reasons, std::vector{port.Address() + ": Connection refused"});
  EXPECT_EQ(client.sink->connected, 0);
}

TEST_F(Connecting, ThatFailsAtOnceIsToldByAnEventAsWell) {
  Client client(library_);
  client.Connect("255.255.255.255:9");  // TCP has no broadcast: the system refuses in the call
  EXPECT_EQ(client.connection->State(), SocketConnection::kConnecting);
  EXPECT_TRUE(client.sink->log.empty());
  RunUntilDisconnected(client);
  EXPECT_EQ(client.connection->State(), SocketConnection::kDropped);
  EXPECT_EQ(client.sink->reasons.front().find("255.255.255.255:9: "), 0u);
}

TEST_F(Connecting, FindsTheAddressOfAName) {
  LoopbackServer server([](Peer& peer) { peer.Send("hello"); });
  Client client(library_);
  client.Connect("localhost:" + std::to_string(server.Port()));
  EXPECT_EQ(client.connection->State(), SocketConnection::kConnecting);
  RunUntilReceived(client, 5);
  EXPECT_EQ(client.sink->received, "hello");
  EXPECT_EQ(client.sink->connected, 1);
}

TEST_F(Connecting, ToANameNobodyKnowsEndsWithTheSystemsReason) {
  PollWinsockLibrary library(loop_, [](const std::string& name) {
    return NameResolver::Answer{std::nullopt, "no " + name + " here"};
  });
  Client client(library);
  client.Connect("nowhere:80");
  RunUntilDisconnected(client);
  EXPECT_EQ(client.sink->reasons, std::vector<std::string>{"nowhere:80: no nowhere here"});
  EXPECT_TRUE(client.IsDropped());
}

TEST_F(Connecting, IsError5UnlessTheConnectionIsClosed) {
  LoopbackServer server([](Peer& peer) { peer.ReceiveUntil("x"); });
  Client client(library_);
  client.Connect(server.Address());
  EXPECT_EQ(NumberOf([&] { client.Connect(server.Address()); }), 5) << "connecting";
  loop_.RunUntil([&] { return client.IsConnected(); });
  EXPECT_EQ(NumberOf([&] { client.Connect(server.Address()); }), 5) << "connected";
  client.connection->Send("x");
  RunUntilDisconnected(client);
  EXPECT_EQ(NumberOf([&] { client.Connect(server.Address()); }), 5) << "dropped";
  client.connection->Disconnect();
  EXPECT_EQ(NumberOf([&] { client.Connect(server.Address()); }), 0) << "closed";
  EXPECT_EQ(client.sink->connected, 1);
}

TEST_F(Connecting, IsError5ForAnAddressWithoutText) {
  Client client(library_);
  const auto address = library_.CreateAddress(host::WinsockLibrary::kInet);
  EXPECT_EQ(NumberOf([&] { client.connection->Connect(*address); }), 5);
  EXPECT_EQ(client.connection->State(), SocketConnection::kClosed);
}

TEST_F(Connecting, MayBeCalledAgainAfterDisconnect) {
  LoopbackServer server([](Peer& peer) { peer.Send(std::to_string(peer.Index())); });
  Client client(library_);
  client.Connect(server.Address());
  RunUntilReceived(client, 1);
  client.connection->Disconnect();
  client.Connect(server.Address());
  RunUntilReceived(client, 2);
  EXPECT_EQ(client.sink->received, "01");
  EXPECT_EQ(client.sink->connected, 2);
}

}  // namespace
}  // namespace mirelo::poll
