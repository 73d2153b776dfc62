#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <random>
#include <string>

#include "poll/connections.h"

namespace mirelo::poll {
namespace {

using ConnectionSoak = Connections;

// A connection to an echo whose events, at random, send, yield, disconnect, connect anew and drop it. What it
// sends counts up and comes back in order as far as it comes.
class Restless {
 public:
  Restless(PollLoop& loop, PollWinsockLibrary& library, const LoopbackServer& echo, std::mt19937& random)
      : loop_(loop), library_(library), echo_(echo), random_(random) {
    Begin();
  }

  void Act() {
    if (quiet_) return;
    switch (Pick(12)) {
      case 0:
        return Reconnect();
      case 1:
        return Begin();
      case 2:
      case 3:
        return Nest();
      default:
        return Send();
    }
  }

  // From now on it only receives.
  void Quiet() { quiet_ = true; }
  bool HasAllBack() const { return received_ == sent_; }
  std::uint64_t Lives() const { return life_; }

 private:
  unsigned Pick(unsigned count) { return std::uniform_int_distribution<unsigned>(0, count - 1)(random_); }

  // A new connection; the one before it is dropped, possibly inside one of its events.
  void Begin() {
    client_ = std::make_unique<Client>(library_);
    NewLife();
    Client::Sink& sink = *client_->sink;
    const auto act = [this, own = &sink] {
      ASSERT_EQ(client_->sink.get(), own) << "an event of a connection that was dropped";
      Act();
    };
    sink.on_connected = sink.on_available = sink.on_sent = act;
    sink.on_disconnected = [] { FAIL() << "the echo never ends a connection"; };
    sink.on_received = [this, act, depth = 0](const std::string& bytes) mutable {
      ASSERT_EQ(++depth, 1) << "a chunk inside another of the same connection";
      Check(bytes);
      act();
      --depth;
    };
    client_->Connect(Address());
  }

  void Reconnect() {
    client_->connection->Disconnect();
    NewLife();
    client_->Connect(Address());
  }

  // Half of the connections go by a name.
  std::string Address() {
    return (Pick(2) == 0 ? "127.0.0.1:" : "localhost:") + std::to_string(echo_.Port());
  }

  void NewLife() {
    sent_ = received_ = 0;
    ++life_;
  }

  void Check(const std::string& bytes) {
    ASSERT_LE(bytes.size(), SocketConnection::kChunkLimit);
    for (const char byte : bytes) ASSERT_EQ(byte, static_cast<char>(life_ + received_++));
    ASSERT_LE(received_, sent_);
  }

  void Send() {
    std::string bytes(1 + Pick(20'000), '\0');
    for (char& byte : bytes) byte = static_cast<char>(life_ + sent_++);
    client_->connection->Send(bytes);
  }

  // Runs the loop until more comes, or for a moment.
  void Nest() {
    if (nested_ > 8) return;
    ++nested_;
    bool over = false;
    const auto timer = loop_.StartTimer(PollLoop::Milliseconds(1), [&] { over = true; });
    loop_.RunUntil([&, received = received_] { return over || received_ != received; });
    loop_.StopTimer(timer);
    --nested_;
  }

  PollLoop& loop_;
  PollWinsockLibrary& library_;
  const LoopbackServer& echo_;
  std::mt19937& random_;
  std::unique_ptr<Client> client_;
  std::uint64_t life_ = 0;  // connections begun, of which only the last one may deliver
  std::uint64_t sent_ = 0, received_ = 0;
  int nested_ = 0;
  bool quiet_ = false;
};

TEST_F(ConnectionSoak, DeliversInOrderWhateverSinksDo) {
  LoopbackServer echo([](Peer& peer) {
    for (std::string bytes; !(bytes = peer.ReceiveSome()).empty();) peer.Send(bytes);
  });
  std::mt19937 random(7);
  std::array<std::unique_ptr<Restless>, 4> all;
  for (auto& one : all) one = std::make_unique<Restless>(loop_, library_, echo, random);
  for (int round = 0; round < 200; ++round) {
    all[static_cast<std::size_t>(round) % all.size()]->Act();
    loop_.Yield();
  }
  for (auto& one : all) one->Quiet();
  std::uint64_t lives = 0;
  for (auto& one : all) {
    loop_.RunUntil([&] { return one->HasAllBack() || HasFatalFailure(); });
    lives += one->Lives();
    one.reset();
  }
  EXPECT_GT(lives, 20u);
  EXPECT_EQ(loop_.WatchCount(), 0u);
}

}  // namespace
}  // namespace mirelo::poll
