// What the program does when something else than QuoteTracker answers its requests, and means it badly.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "app/program.h"
#include "support/loopback_server.h"
#include "support/temp_directory.h"

namespace mirelo::testing {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;

const std::string kQuotes =
    "OK\r\nMSFT,1/20/2011,08:36:13,28.35,28.34,28.36,-0.12,+,1,28.90,28.01,12,9,0,5,6,28.50,22.73,31.58";

class HostileReply : public ::testing::Test {
 protected:
  ProgramResult Quotes(const LoopbackServer& server, std::vector<std::string> arguments = {"MSFT"}) {
    arguments.insert(arguments.begin(), "quotes");
    arguments.insert(arguments.end(), {"--http-port", std::to_string(server.Port())});
    return RunMirelo(folder_.path(), arguments);
  }
  // The most memory that a program of these tests has used at any time, in MiB.
  static long MostMemory() {
    rusage usage = {};
    ::getrusage(RUSAGE_CHILDREN, &usage);
    return usage.ru_maxrss >> 10;
  }

  TempDirectory folder_;
};

// 256 MiB, of which a program that takes them all would hold several copies.
LoopbackServer::Script SendMuch(std::string start, std::string more) {
  return [=](LoopbackServer::Peer& peer) {
    peer.ReceiveUntil("\r\n\r\n");
    peer.Send(start);
    std::string piece;
    while (piece.size() < 1 << 20) piece += more;
    for (int i = 0; i < 256 && peer.Send(piece); ++i) {
    }
  };
}

TEST_F(HostileReply, WithoutEndIsBrokenOffAndTold) {
  for (const std::string more : {"\r\n", "x", "\x80"}) {
    LoopbackServer server(SendMuch("HTTP/1.0 200 OK\r\n\r\n" + kQuotes, more));
    const auto result = Quotes(server);
    EXPECT_EQ(result.exit_code, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_THAT(result.err,
                HasSubstr("warning: Dovanta2: The reply of http://127.0.0.1:" +
                          std::to_string(server.Port()) + " was broken off: it is larger than 64 MiB\n"));
    EXPECT_LT(MostMemory(), 300);
  }
}

TEST_F(HostileReply, ThatAnnouncesTooMuchIsToldAtOnce) {
  LoopbackServer server([](LoopbackServer::Peer& peer) {
    peer.ReceiveUntil("\r\n\r\n");
    peer.Send("HTTP/1.0 200 OK\r\nContent-Length: 1073741824\r\n\r\n" + kQuotes);
    peer.ReceiveAll();  // until the client closes
  });
  const auto result = Quotes(server);
  EXPECT_EQ(result.exit_code, 1);
  EXPECT_THAT(result.err, HasSubstr("was broken off: it is larger than 64 MiB"));
}

// Just short of what is broken off, and nothing but what parts one field or line from the next.
LoopbackServer::Script SendOnly(const std::string& start, const std::string& separator) {
  return [=](LoopbackServer::Peer& peer) {
    peer.ReceiveUntil("\r\n\r\n");
    peer.Send("HTTP/1.0 200 OK\r\n\r\n" + start);
    std::string piece;
    while (piece.size() < std::size_t{1} << 20) piece += separator;
    for (int i = 0; i < 63 && peer.Send(piece); ++i) {
    }
  };
}

TEST_F(HostileReply, OfSeparatorsAloneIsRefusedAndTold) {
  for (const auto& [start, separator] : std::vector<std::pair<std::string, std::string>>{
           {kQuotes, "\r\n"}, {kQuotes, ","}, {"OK\r\n", ","}, {"NO\r\n", "\r\n"}}) {
    LoopbackServer server(SendOnly(start, separator));
    const auto result = Quotes(server);
    EXPECT_EQ(result.exit_code, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_THAT(result.err, HasSubstr("warning: Dovanta2: The reply of http://127.0.0.1:" +
                                      std::to_string(server.Port()) +
                                      " was refused: it has more than 100,000 lines and fields\n"));
  }
  for (const std::string separator : {"\r\n", ","}) {
    LoopbackServer server(SendOnly("OK\r\n", separator));
    const auto result =
        RunMirelo(folder_.path(), {"go", "--tickers", "MSFT", "--http-port", std::to_string(server.Port())});
    EXPECT_EQ(result.exit_code, 1);
    EXPECT_THAT(result.err, AllOf(HasSubstr("was refused: it has more than 100,000 lines and fields"),
                                  HasSubstr("Please run QuoteTracker."), HasSubstr("nothing was committed")));
  }
  EXPECT_LT(MostMemory(), 300);
}

// Lines that go on with a header of which there is none, behind replies that had some.
TEST_F(HostileReply, ThatBeginsWithAFoldedLineBehindRedirectsIsNone) {
  LoopbackServer server([](LoopbackServer::Peer& peer) {
    peer.ReceiveUntil("\r\n\r\n");
    peer.Send(peer.Index() % 4 < 3
                  ? "HTTP/1.0 302 Found\r\nX: 1\r\nLocation: /next\r\n\r\n"
                  : "HTTP/1.0 200 OK\r\n\tx: " + std::string(3000, '9') + "\r\n\r\n" + kQuotes);
  });
  for (int i = 0; i < 3; ++i) {
    const auto result = Quotes(server);
    EXPECT_EQ(result.exit_code, 1);
    EXPECT_THAT(result.err, HasSubstr("Data retrieval error."));
  }
}

// The dialog asks for portfolios before it stores anything.
TEST_F(HostileReply, LeavesTheDialogWithoutPortfolios) {
  LoopbackServer server(SendMuch("HTTP/1.0 200 OK\r\n\r\nOK\r\n", "A,"));
  const auto result =
      RunMirelo(folder_.path(), {"go", "--tickers", "MSFT", "--http-port", std::to_string(server.Port())});
  EXPECT_EQ(result.exit_code, 1);
  EXPECT_THAT(result.err, AllOf(HasSubstr("was broken off: it is larger than 64 MiB"),
                                HasSubstr("Please run QuoteTracker."), HasSubstr("nothing was committed")));
  EXPECT_LT(MostMemory(), 300);
}

}  // namespace
}  // namespace mirelo::testing
