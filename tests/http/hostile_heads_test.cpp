// Replies whose heads are made to confuse the reader of a head, one behind the other on one client, where the
// memory of an earlier reply must not be touched any more.

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <vector>

#include "http/http_machine.h"

namespace mirelo::testing {
namespace {

const std::string kHonestStatus = "HTTP/1.0 200 OK\r\n";
const std::string kHonest = kHonestStatus + "Content-Type: text/plain\r\nX: 1\r\n\r\nquote";

// What becomes of replies with such a head, or one behind the other of several: their body comes, or they are
// no replies.
enum class Outcome { Taken, Refused };
using Outcomes = std::vector<Outcome>;

constexpr Outcome kTaken = Outcome::Taken;
constexpr Outcome kRefused = Outcome::Refused;

const Outcomes kAllTaken(6, kTaken);
const Outcomes kAllRefused{kRefused, kRefused, kRefused, kRefused, kTaken, kRefused};
// With three such heads, a reply is larger than heads may be.
const Outcomes kTakenUpToTheLimit{kTaken, kTaken, kRefused, kTaken, kTaken, kTaken};
// A short line goes on with the header of the interim reply before it.
const Outcomes kTakenBehindAHeader{kTaken, kRefused, kTaken, kRefused, kTaken, kRefused};

struct HeadCase {
  std::string name;
  std::string lines;  // behind the status line
  Outcome outcome;
  Outcomes behind_interim;  // of the replies of that test
};

void PrintTo(const HeadCase& each, std::ostream* out) { *out << each.name; }

std::string RepeatedLines(const std::string& text, int times) {
  std::string result;
  for (int i = 0; i < times; ++i) result += text;
  return result;
}

// A line that begins with a blank goes on with the header before it, of which the first line has none.
const HeadCase kHeads[] = {
    {"FoldedFirst", "\tx: " + std::string(3000, '9') + "\r\n", kRefused, kTakenBehindAHeader},
    {"FoldedFirstByABlank", " x: 9\r\n", kRefused, kTakenBehindAHeader},
    {"FoldedFirstWithoutText", "\t\r\nX: 1\r\n", kRefused, kAllRefused},
    {"FoldedFirstAndOften", RepeatedLines("\t" + std::string(500, '9') + "\r\n", 200), kRefused, kAllRefused},
    {"FoldedOften", "X: 1\r\n" + RepeatedLines("\t" + std::string(500, '9') + "\r\n", 200), kTaken,
     kTakenUpToTheLimit},
    {"FoldedBehindEmpty", "X:\r\n\t9\r\n", kTaken, kAllTaken},
    {"FoldedBehindNameless", ": 1\r\n\t9\r\n", kTaken, kAllTaken},
    {"FoldedBehindColonless", "X\r\n\t9\r\n", kRefused, kAllRefused},
    {"Nameless", ": 1\r\n:\r\n", kTaken, kAllTaken},
    {"Colonless", "X\r\nY\r\n", kRefused, kAllRefused},
    {"Blank", " \r\n", kRefused, kAllRefused},
    {"LongLine", "X: " + std::string(90'000, '9') + "\r\n", kTaken, kTakenUpToTheLimit},
    {"LongName", std::string(90'000, 'X') + ": 9\r\n", kTaken, kTakenUpToTheLimit},
    {"LongFoldedFirst", "\t" + std::string(90'000, '9') + "\r\n", kRefused, kAllRefused},
    {"Oversized", "X: " + std::string(200'000, '9') + "\r\n", kRefused, kAllRefused},
    {"OversizedFoldedFirst", "\t" + std::string(200'000, '9') + "\r\n", kRefused, kAllRefused},
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
  void Expect(Outcome outcome, const LoopbackServer& server) {
    LocalTransfer transfer(server.Port());
    transfer.Execute();
    EXPECT_EQ(transfer.states, outcome == kTaken ? kGoodPath : kSendFailed);
    EXPECT_EQ(transfer.Response(), outcome == kTaken ? "quote" : "");
  }
  void ExpectQuote(const LoopbackServer& server) { Expect(kTaken, server); }
  void ExpectOutcome(const LoopbackServer& server) { Expect(GetParam().outcome, server); }
};

TEST_P(HostileHeads, AreTakenOrRefusedBehindAnHonestReply) {
  const std::string hostile = kHonestStatus + GetParam().lines + "\r\nquote";
  LoopbackServer server(InTurn({kHonest, hostile, hostile, kHonest, hostile}));
  ExpectQuote(server);
  ExpectOutcome(server);
  ExpectOutcome(server);
  ExpectQuote(server);
  ExpectOutcome(server);
  ExpectQuote(server);
}

TEST_P(HostileHeads, AreTakenOrRefusedBehindRedirects) {
  const std::string redirect = "HTTP/1.0 302 Found\r\nX: 1\r\nLocation: /next\r\n\r\n";
  const std::string hostile_redirect =
      "HTTP/1.0 302 Found\r\n" + GetParam().lines + "Location: /next\r\n\r\n";
  LoopbackServer server(InTurn({redirect, redirect, redirect, kHonestStatus + GetParam().lines + "\r\nquote",
                                kHonest, hostile_redirect}));
  ExpectOutcome(server);
  ExpectQuote(server);
  ExpectOutcome(server);
  ExpectQuote(server);
}

TEST_P(HostileHeads, AreTakenOrRefusedBehindInterimReplies) {
  const std::string interim = "HTTP/1.1 100 Continue\r\nX: 1\r\n\r\n";
  const std::string early = "HTTP/1.1 103 Early Hints\r\n" + GetParam().lines + "\r\n";
  const std::string hostile = kHonestStatus + GetParam().lines + "\r\nquote";
  LoopbackServer server(InTurn({interim + hostile, early + hostile, interim + early + early + hostile,
                                early + kHonest, kHonest, early + hostile}));
  int number = 0;
  for (const Outcome outcome : GetParam().behind_interim) {
    SCOPED_TRACE(++number);
    Expect(outcome, server);
  }
  ExpectQuote(server);
}

constexpr auto kHeadName = [](const auto& info) { return info.param.name; };
INSTANTIATE_TEST_SUITE_P(Table, HostileHeads, ::testing::ValuesIn(kHeads), kHeadName);

}  // namespace
}  // namespace mirelo::testing
