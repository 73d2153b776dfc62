#pragma once

#include <atomic>
#include <string>
#include <thread>

#include "host/message_loop.h"
#include "support/loopback_server.h"

namespace mirelo {

constexpr host::MessageLoop::Milliseconds kAMoment{20};
// How often a wait of a moment may ask whether it is over: a loop that spins asks thousands of times.
constexpr int kFewQuestions = 20;

// Sends "1", and "2" when the test says so; then it waits for the client's end.
class OneThenTwo {
 public:
  std::string Address() const { return server_.Address(); }
  void SendTwo() {
    server_.Go();
    while (!sent_two_) std::this_thread::yield();
  }

 private:
  std::atomic<bool> sent_two_ = false;
  testing::LoopbackServer server_{[this](testing::LoopbackServer::Peer& peer) {
    peer.Send("1");
    peer.Await();
    peer.Send("2");
    sent_two_ = true;
    peer.ReceiveAll();
  }};
};

}  // namespace mirelo
