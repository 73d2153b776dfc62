// Replies whose heads are made to confuse the reader of a head, one behind the other on one client, where the
// memory of an earlier reply must not be touched any more.

#include <gmock/gmock.h>

#include <cstddef>
#include <string>
#include <vector>

#include "http/http_machine.h"

namespace mirelo::testing {
namespace {

const std::string kHonestStatus = "HTTP/1.0 200 OK\r\n";
const std::string kHonest = kHonestStatus + "Content-Type: text/plain\r\nX: 1\r\n\r\nquote";

struct HeadCase {
  std::string name;
  std::string lines;  // behind the status line
};

void PrintTo(const HeadCase& each, std::ostream* out) { *out << each.name; }

std::string RepeatedLines(const std::string& text, int times) {
  std::string result;
  for (int i = 0; i < times; ++i) result += text;
  return result;
}

// A line that begins with a blank goes on with the header before it, of which the first line has none.
const HeadCase kHeads[] = {
    {"FoldedFirst", "\tx: " + std::string(3000, '9') + "\r\n"},
    {"FoldedFirstByABlank", " x: 9\r\n"},
    {"FoldedFirstWithoutText", "\t\r\nX: 1\r\n"},
    {"FoldedFirstAndOften", RepeatedLines("\t" + std::string(500, '9') + "\r\n", 200)},
    {"FoldedOften", "X: 1\r\n" + RepeatedLines("\t" + std::string(500, '9') + "\r\n", 200)},
    {"FoldedBehindEmpty", "X:\r\n\t9\r\n"},
    {"FoldedBehindNameless", ": 1\r\n\t9\r\n"},
    {"FoldedBehindColonless", "X\r\n\t9\r\n"},
    {"Nameless", ": 1\r\n:\r\n"},
    {"Colonless", "X\r\nY\r\n"},
    {"Blank", " \r\n"},
    {"LongLine", "X: " + std::string(90'000, '9') + "\r\n"},
    {"LongName", std::string(90'000, 'X') + ": 9\r\n"},
    {"LongFoldedFirst", "\t" + std::string(90'000, '9') + "\r\n"},
    {"Oversized", "X: " + std::string(200'000, '9') + "\r\n"},
    {"OversizedFoldedFirst", "\t" + std::string(200'000, '9') + "\r\n"},
};

class HostileHeads : public HttpMachine, public ::testing::WithParamInterface<HeadCase> {
 protected:
  // Serves each connection its own of these replies, and honest ones behind them.
  static LoopbackServer::Script InTurn(std::vector<std::string> replies) {
    return [=](LoopbackServer::Peer& peer) {
      peer.ReceiveUntil("\r\n\r\n");
      peer.Send(peer.Index() < replies.size() ? replies[peer.Index()] : kHonest);
    };
  }
  void ExpectToEnd(const LoopbackServer& server) {
    LocalTransfer transfer(server.Port());
    transfer.Execute();
    EXPECT_THAT(transfer.states, ::testing::AnyOf(kGoodPath, kSendFailed));
    EXPECT_TRUE(transfer.Response().empty() || transfer.Response() == "quote");
  }
  void ExpectQuote(const LoopbackServer& server) {
    LocalTransfer transfer(server.Port());
    transfer.Execute();
    EXPECT_EQ(transfer.states, kGoodPath);
    EXPECT_EQ(transfer.Response(), "quote");
  }
};

TEST_P(HostileHeads, AreTakenOrRefusedBehindAnHonestReply) {
  const std::string hostile = kHonestStatus + GetParam().lines + "\r\nquote";
  LoopbackServer server(InTurn({kHonest, hostile, hostile, kHonest, hostile}));
  ExpectQuote(server);
  ExpectToEnd(server);
  ExpectToEnd(server);
  ExpectQuote(server);
  ExpectToEnd(server);
  ExpectQuote(server);
}

TEST_P(HostileHeads, AreTakenOrRefusedBehindRedirects) {
  const std::string redirect = "HTTP/1.0 302 Found\r\nX: 1\r\nLocation: /next\r\n\r\n";
  const std::string hostile_redirect =
      "HTTP/1.0 302 Found\r\n" + GetParam().lines + "Location: /next\r\n\r\n";
  LoopbackServer server(InTurn({redirect, redirect, redirect, kHonestStatus + GetParam().lines + "\r\nquote",
                                kHonest, hostile_redirect}));
  ExpectToEnd(server);
  ExpectQuote(server);
  ExpectToEnd(server);
  ExpectQuote(server);
}

TEST_P(HostileHeads, AreTakenOrRefusedBehindInterimReplies) {
  const std::string interim = "HTTP/1.1 100 Continue\r\nX: 1\r\n\r\n";
  const std::string early = "HTTP/1.1 103 Early Hints\r\n" + GetParam().lines + "\r\n";
  const std::string hostile = kHonestStatus + GetParam().lines + "\r\nquote";
  LoopbackServer server(InTurn({interim + hostile, early + hostile, interim + early + early + hostile,
                                early + kHonest, kHonest, early + hostile}));
  for (int i = 0; i < 6; ++i) ExpectToEnd(server);
  ExpectQuote(server);
}

constexpr auto kHeadName = [](const auto& info) { return info.param.name; };
INSTANTIATE_TEST_SUITE_P(Table, HostileHeads, ::testing::ValuesIn(kHeads), kHeadName);

}  // namespace
}  // namespace mirelo::testing
