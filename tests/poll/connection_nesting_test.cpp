#include <chrono>
#include <functional>
#include <memory>
#include <new>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "poll/connections.h"

namespace mirelo::poll {
namespace {

// What sinks may do inside an event.
class InsideAnEvent : public Connections {
 protected:
  LoopbackServer echo_{[](Peer& peer) {
    for (std::string line; !(line = peer.ReceiveUntil("\n")).empty();) peer.Send(line);
  }};
};

TEST_F(InsideAnEvent, DisconnectEndsTheEventsAtOnce) {
  Client client(library_);
  Connect(client, echo_.Address());
  client.sink->on_received = [&](const std::string&) { client.connection->Disconnect(); };
  client.connection->Send(std::string(3 * SocketConnection::kChunkLimit, 'x') + "\n");
  RunUntilReceived(client, 1);
  loop_.Yield();
  EXPECT_EQ(client.sink->chunks.size(), 1u);
  EXPECT_TRUE(client.sink->reasons.empty());
  EXPECT_EQ(loop_.WatchCount(), 0u);
}

TEST_F(InsideAnEvent, TheOwnerMayDropTheConnection) {
  enum class In { kConnected, kAvailable, kReceived, kSent, kDisconnected };
  for (const In event : {In::kConnected, In::kAvailable, In::kReceived, In::kSent, In::kDisconnected}) {
    SCOPED_TRACE(static_cast<int>(event));
    LoopbackServer server([](Peer& peer) {
      peer.ReceiveUntil("\n");
      peer.Send("reply");
    });
    Client client(library_);
    const auto drop = [&] {
      client.connection.reset();
      client.sink->log.push_back("dropped");
    };
    if (event == In::kConnected) client.sink->on_connected = drop;
    if (event == In::kAvailable) client.sink->on_available = drop;
    if (event == In::kReceived) client.sink->on_received = [&](const std::string&) { drop(); };
    if (event == In::kSent) client.sink->on_sent = drop;
    if (event == In::kDisconnected) client.sink->on_disconnected = drop;
    client.Connect(server.Address());
    client.connection->Send("\n");
    loop_.RunUntil([&] { return client.connection == nullptr; });
    EXPECT_EQ(loop_.WatchCount(), 0u);
    loop_.Yield();
    EXPECT_EQ(client.sink->log.back(), "dropped") << "no event follows";
  }
}

TEST_F(InsideAnEvent, DroppingTheConnectionKeepsItFromTheSinksBehind) {
  LoopbackServer server([](Peer& peer) {
    peer.ReceiveUntil("\n");
    peer.Send("reply");
  });
  for (const bool at_the_end : {false, true}) {
    SCOPED_TRACE(at_the_end);
    Client client(library_);
    const auto second = std::make_shared<Client::Sink>();
    client.connection->Subscribe(std::static_pointer_cast<host::BytesTransferEvents>(second),
                                 SocketConnection::kBytesTransfer);
    client.connection->Subscribe(std::static_pointer_cast<host::ConnectionEvents>(second),
                                 SocketConnection::kConnectionEvents);
    if (at_the_end) {
      client.sink->on_disconnected = [&] { client.connection.reset(); };
    } else {
      client.sink->on_received = [&](const std::string&) { client.connection.reset(); };
    }
    client.Connect(server.Address());
    client.connection->Send("\n");
    loop_.RunUntil([&] { return client.connection == nullptr; });
    EXPECT_EQ(second->received, at_the_end ? "reply" : "");
    EXPECT_TRUE(second->reasons.empty());
  }
}

TEST_F(InsideAnEvent, DroppingInANestedOneLetsTheOuterReturn) {
  Client client(library_);
  Connect(client, echo_.Address());
  bool returned = false;
  client.sink->on_received = [&](const std::string&) {
    client.sink->on_sent = [&] { client.connection.reset(); };
    client.connection->Send("2\n");
    loop_.RunUntil([&] { return client.connection == nullptr; });
    returned = true;
  };
  client.connection->Send("1\n");
  loop_.RunUntil([&] { return returned; });
  EXPECT_EQ(loop_.WatchCount(), 0u);
}

TEST_F(InsideAnEvent, AConnectionMayConnectAnew) {
  Client client(library_);
  Connect(client, echo_.Address());
  client.sink->on_received = [&](const std::string& chunk) {
    if (chunk != "again\n") return;
    client.connection->Disconnect();
    client.Connect(echo_.Address());
    client.connection->Send("other\n");
  };
  client.connection->Send("again\n");
  RunUntilReceived(client, 12);
  EXPECT_EQ(client.sink->received, "again\nother\n");
  EXPECT_EQ(echo_.Connections(), 2u);
}

TEST_F(InsideAnEvent, AnUnsubscribedSinkIsNoLongerCalledButLivesUntilItReturns) {
  Client client(library_);
  Connect(client, echo_.Address());
  auto second = std::make_shared<Client::Sink>();
  const std::weak_ptr<Client::Sink> life = second;
  const auto id = client.connection->Subscribe(std::static_pointer_cast<host::BytesTransferEvents>(second),
                                               SocketConnection::kBytesTransfer);
  bool lived = false;
  second->on_received = [&](const std::string&) {
    client.connection->Unsubscribe(id);
    lived = !life.expired();
  };
  second.reset();
  client.connection->Send("1\n");
  RunUntilReceived(client, 2);
  EXPECT_TRUE(lived);
  EXPECT_TRUE(life.expired());
  client.connection->Send("2\n");
  RunUntilReceived(client, 4);
}

TEST_F(InsideAnEvent, OneSinkMayUnsubscribeAnother) {
  Client client(library_);
  const auto second = std::make_shared<Client::Sink>();
  const auto id = client.connection->Subscribe(std::static_pointer_cast<host::BytesTransferEvents>(second),
                                               SocketConnection::kBytesTransfer);
  client.sink->on_received = [&](const std::string&) { client.connection->Unsubscribe(id); };
  Connect(client, echo_.Address());
  client.connection->Send("1\n");
  RunUntilReceived(client, 2);
  EXPECT_EQ(second->received, "");
}

TEST_F(InsideAnEvent, ASinkAddedGetsTheNextOne) {
  Client client(library_);
  const auto second = std::make_shared<Client::Sink>();
  client.sink->on_received = [&](const std::string& chunk) {
    if (chunk != "1\n") return;
    client.connection->Subscribe(std::static_pointer_cast<host::BytesTransferEvents>(second),
                                 SocketConnection::kBytesTransfer);
  };
  Connect(client, echo_.Address());
  client.connection->Send("1\n");
  RunUntilReceived(client, 2);
  client.connection->Send("2\n");
  RunUntilReceived(client, 4);
  EXPECT_EQ(second->received, "2\n");
}

TEST_F(InsideAnEvent, ASinkAddedInPlaceOfTheLastGetsTheNextOne) {
  Client client(library_);
  const auto last = std::make_shared<Client::Sink>(), added = std::make_shared<Client::Sink>();
  const auto subscribe = [&](const std::shared_ptr<host::BytesTransferEvents>& sink) {
    return client.connection->Subscribe(sink, SocketConnection::kBytesTransfer);
  };
  const auto last_id = subscribe(last);
  client.sink->on_received = [&](const std::string& chunk) {
    if (chunk != "1\n") return;
    client.connection->Unsubscribe(last_id);
    subscribe(added);
  };
  Connect(client, echo_.Address());
  client.connection->Send("1\n");
  RunUntilReceived(client, 2);
  EXPECT_EQ(added->received, "");
  client.connection->Send("2\n");
  RunUntilReceived(client, 4);
  EXPECT_EQ(added->received, "2\n");
  EXPECT_EQ(last->received, "");
}

TEST_F(InsideAnEvent, AnErrorLeavesTheLoopAndTheConnectionUsable) {
  Client client(library_);
  Connect(client, echo_.Address());
  client.sink->on_received = [&](const std::string& chunk) {
    if (chunk == "1\n") throw std::runtime_error("bad chunk");
  };
  client.connection->Send("1\n");
  EXPECT_THROW(RunUntilReceived(client, 4), std::runtime_error);
  client.connection->Send("2\n");
  RunUntilReceived(client, 4);
  EXPECT_EQ(client.sink->received, "1\n2\n");
}

// A loop that now and then has no memory for what is asked of it, though it does that.
class ShortLoop final : public host::MessageLoop {
 public:
  explicit ShortLoop(host::MessageLoop& loop) : loop_(loop) {}

  bool is_short = false;

  Token Watch(int descriptor, unsigned interest, std::function<void(unsigned ready)> handler) override {
    return loop_.Watch(descriptor, interest, std::move(handler));
  }
  void Rewatch(Token watch, unsigned interest) override {
    loop_.Rewatch(watch, interest);
    if (is_short && (interest & kRead) != 0) throw std::bad_alloc();
  }
  void Unwatch(Token watch) override { loop_.Unwatch(watch); }
  Token StartTimer(Milliseconds delay, std::function<void()> handler) override {
    return loop_.StartTimer(delay, std::move(handler));
  }
  void StopTimer(Token timer) override { loop_.StopTimer(timer); }
  void Yield() override { loop_.Yield(); }
  void RunUntil(const std::function<bool()>& done) override { loop_.RunUntil(done); }

 private:
  host::MessageLoop& loop_;
};

TEST_F(InsideAnEvent, WantOfMemoryBehindAChunkIsAnErrorThatLeavesTheLoop) {
  ShortLoop short_loop(loop_);
  PollWinsockLibrary library(short_loop);
  for (const bool sink_fails : {false, true}) {
    SCOPED_TRACE(sink_fails);
    Client client(library);
    Connect(client, echo_.Address());
    client.sink->on_received = [&](const std::string& chunk) {
      if (chunk != "1\n") return;
      client.connection->Send("2\n");
      for (int i = 0; i < 20; ++i) {  // until the second chunk has come, and waits
        loop_.Yield();
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
      }
      short_loop.is_short = true;
      if (sink_fails) throw std::runtime_error("bad chunk");
    };
    client.connection->Send("1\n");
    if (sink_fails) {
      EXPECT_THROW(RunUntilReceived(client, 4), std::runtime_error);
    } else {
      EXPECT_THROW(RunUntilReceived(client, 4), std::bad_alloc);
    }
    short_loop.is_short = false;
    RunUntilReceived(client, 4);
    EXPECT_EQ(client.sink->received, "1\n2\n");
  }
}

TEST_F(InsideAnEvent, UnsubscribingBothSinksAtTheEndIsAllowed) {
  LoopbackServer server([](Peer&) {});
  Client client(library_);
  client.sink->on_disconnected = [&] {
    client.connection->Unsubscribe(client.connection_id);
    client.connection->Unsubscribe(client.bytes_id);
    client.connection->Unsubscribe(client.bytes_id);  // unknown by now
  };
  client.Connect(server.Address());
  RunUntilDisconnected(client);
  EXPECT_TRUE(client.IsDropped());
}

}  // namespace
}  // namespace mirelo::poll
