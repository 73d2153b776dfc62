#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

#include "http/http_machine.h"
#include "http/reply_cases.h"
#include "support/loop_signal.h"
#include "support/observed_loop.h"

namespace mirelo::testing {
namespace {

// A server may send in any pieces, of which the client sees one at a time here. What Windows' client has seen
// it keeps to itself, so it has a moment for each.
class RepliesInPieces : public HttpMachine, public ::testing::WithParamInterface<ReplyCase> {
 protected:
  RepliesInPieces() { host.Use(observed_internet); }

  ObservedLoop observed{loop};
  TestedInternet observed_internet{observed};
};

TEST_P(RepliesInPieces, ComeOutTheSameByteByByte) {
  const ReplyCase& expected = GetParam();
  LoopbackServer server([&](LoopbackServer::Peer& peer) {
    peer.ReceiveUntil("\r\n\r\n");
    for (const char byte : expected.bytes) {
#ifdef _WIN32
      peer.Rest(std::chrono::milliseconds(1));
#else
      peer.Await();
#endif
      peer.Send({&byte, 1});
    }
  });
  observed.behind_ready = [&](unsigned) { server.Go(); };
  LocalTransfer transfer(server.Port());
  transfer.Execute();
  EXPECT_EQ(transfer.states, expected.states);
  EXPECT_EQ(transfer.Response(), expected.response);
}

INSTANTIATE_TEST_SUITE_P(Table, RepliesInPieces, ::testing::ValuesIn(kReplies), kReplyName);
#ifndef _WIN32
// What comes of heads that keep to no rules, and of a reset behind which something may be unread, each client
// decides by itself.
INSTANTIATE_TEST_SUITE_P(AgainstTheRules, RepliesInPieces, ::testing::ValuesIn(kRepliesAgainstTheRules),
                         kReplyName);

class ReplyOfAResetConnection : public HttpMachine {};

TEST_F(ReplyOfAResetConnection, EndsWhereItStood) {
  const struct {
    std::string name, sent;
    std::vector<std::int32_t> states;
    std::string response;
  } cases[] = {
      {"before any of it", "", kGoodPath, ""},
      {"in the status line", "HTT", kSendFailed, ""},
      {"in the head", kOk + "Content-", kSendFailed, ""},
      {"in the body", kOk + "Content-Length: 9\r\n\r\nquo", kGoodPath, "quo"},
  };
  ObservedLoop observed(loop);
  curl::CurlInternet observed_internet(observed);
  host.Use(observed_internet);
  for (const auto& each : cases) {
    SCOPED_TRACE(each.name);
    LoopbackServer* asked_server = nullptr;
    // The client has nothing to do but to wait for the reply when this is handled.
    LoopSignal asked(loop, [&] { asked_server->Go(); });
    LoopbackServer server([&](LoopbackServer::Peer& peer) {
      peer.ReceiveUntil("\r\n\r\n");
      asked.Raise();
      peer.Await();
      if (!each.sent.empty()) {
        peer.Send(each.sent);
        peer.Await();
      }
      peer.Reset();
    });
    asked_server = &server;
    // What was sent has been read before the reset comes, which would otherwise overtake it.
    observed.behind_ready = [&](unsigned ready) {
      if ((ready & host::MessageLoop::kRead) != 0) server.Go();
    };
    LocalTransfer transfer(server.Port());
    transfer.Execute();
    EXPECT_EQ(transfer.states, each.states);
    EXPECT_EQ(transfer.Response(), each.response);
  }
}
#endif

}  // namespace
}  // namespace mirelo::testing
