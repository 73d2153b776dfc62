// What the commands say when QuoteTracker does not answer, or something else does.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "app/program.h"
#include "quotetracker/server.h"
#include "support/built_program.h"
#include "support/loopback_server.h"
#include "support/temp_directory.h"

namespace mirelo::testing {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;

class Trouble : public ::testing::Test {
 protected:
  ProgramResult Run(const std::vector<std::string>& arguments) {
    return RunMirelo(folder_.path(), arguments);
  }
  ProgramResult Quotes(std::uint16_t port) {
    return Run({"quotes", "MSFT", "--http-port", std::to_string(port)});
  }

  TempDirectory folder_;
};

LoopbackServer::Script Replies(const std::string& reply) {
  return [=](LoopbackServer::Peer& peer) {
    peer.ReceiveUntil("\r\n\r\n");
    peer.Send(reply);
  };
}

TEST_F(Trouble, OfARefusedConnectionIsToldWithWhereAndWhoSaidSo) {
  const RefusingPort nobody;
  const std::string port = std::to_string(nobody.Port());
  EXPECT_THAT(
      Quotes(nobody.Port()).err,
      HasSubstr("error: Dovanta2: Data retrieval error.\n  Asked at 127.0.0.1 (Webaddress by default), "
                "port " +
                port + " (HTTPPort, given for this command): the connection was refused"));
  Run({"settings", "set", "Webaddress", "localhost"});
  Run({"settings", "set", "HTTPPort", "1"});
  EXPECT_THAT(
      Run({"quotes", "MSFT"}).err,
      HasSubstr("Asked at localhost (Webaddress of the settings), port 1 (HTTPPort of the settings): "));
}

TEST_F(Trouble, OfANameThatNobodyHasIsTold) {
  EXPECT_THAT(Run({"quotes", "MSFT", "--address", "nobody.invalid"}).err,
              AllOf(HasSubstr("Asked at nobody.invalid (Webaddress, given for this command), port 16239 "
                              "(HTTPPort by default): no machine of this name is known"),
                    HasSubstr("mirelo settings set Webaddress")));
}

TEST_F(Trouble, OfAnotherServerIsToldWithWhatItSays) {
  struct Case {
    const char* reply;
    const char* told;
  };
  for (const Case& c : {
           Case{"HTTP/1.0 404 Not Found\r\n\r\n<html>\r\nNo", "its answer begins with \"<html>\""},
           Case{"SSH-2.0-Server\r\n", "what answers there speaks another language"},
           Case{"", "the connection was closed without an answer"},
       }) {
    SCOPED_TRACE(c.reply);
    LoopbackServer server(Replies(c.reply));
    EXPECT_THAT(Quotes(server.Port()).err, AllOf(HasSubstr(c.told), HasSubstr("Compare HTTPPort with")));
  }
}

TEST_F(Trouble, IsToldOnceWhileItStaysTheSame) {
  quotetracker::Server server;
  server.SetHttpFault(quotetracker::HttpFaultPlan::Parse("drop", 1));
  Run({"settings", "set", "Seconds", "1"});
  const auto result = RunProgram("/usr/bin/timeout", folder_.path(),
                                 {"-s", "INT", "1.6", BuiltProgram("mirelo"), "quotes", "MSFT", "--watch",
                                  "--http-port", std::to_string(server.HttpPort())});
  const auto first = result.err.find("Asked at");
  ASSERT_NE(first, std::string::npos);
  EXPECT_EQ(result.err.find("Asked at", first + 1), std::string::npos) << result.err;
  EXPECT_NE(result.err.find("Data retrieval error.", first), std::string::npos) << result.err;
}

class StreamTrouble : public Trouble {
 protected:
  StreamTrouble() { Run({"credentials", "set"}); }

  struct Ended {
    ProgramResult result;
    std::chrono::steady_clock::duration after;
  };
  Ended Stream(std::uint16_t port, const std::string& seconds) {
    RunMirelo(folder_.path(), {"credentials", "set"}, "MireloDemo\ndemo-secret\n");
    const auto start = std::chrono::steady_clock::now();
    auto result = Run({"stream", "MSFT", "--source", "SWISS.SDF", "--seconds", seconds, "--socket-port",
                       std::to_string(port)});
    return {std::move(result), std::chrono::steady_clock::now() - start};
  }
};

TEST_F(StreamTrouble, OfAnotherGreetingEndsItAtOnce) {
  LoopbackServer server([](LoopbackServer::Peer& peer) {
    peer.Send("SSH-2.0-Server\r\n");
    peer.ReceiveAll();
  });
  const auto [result, after] = Stream(server.Port(), "60");
  EXPECT_EQ(result.exit_code, 1);
  EXPECT_LT(after, std::chrono::seconds(20));
  EXPECT_THAT(result.err,
              AllOf(HasSubstr("Called at 127.0.0.1 (Webaddress by default), port " +
                              std::to_string(server.Port()) + " (SocketPort, given for this command). "),
                    HasSubstr("it begins with \"SSH-2.0-Server\". Compare SocketPort with")));
}

TEST_F(StreamTrouble, OfAWebServerThatWaitsForARequestIsFoundByAsking) {
  LoopbackServer server(Replies("HTTP/1.0 404 Not Found\r\nContent-Type: text/html\r\n\r\nNo"));
  const auto [result, after] = Stream(server.Port(), "60");
  EXPECT_EQ(result.exit_code, 1);
  EXPECT_LT(after, std::chrono::seconds(20));
  EXPECT_THAT(result.err, HasSubstr("What answers there is a web server, not QuoteTracker's stream."));
}

TEST_F(StreamTrouble, OfTheOtherPortOfQuoteTrackerIsNamed) {
  quotetracker::Server server;
  const auto [result, after] = Stream(server.HttpPort(), "60");
  EXPECT_EQ(result.exit_code, 1);
  EXPECT_THAT(result.err, HasSubstr("What answers there is QuoteTracker's HTTP interface"));
  Run({"settings", "set", "SocketPort", std::to_string(server.HttpPort())});
  const auto update = Run({"sources", "--update"});
  EXPECT_EQ(update.exit_code, 1);
  EXPECT_THAT(update.err, AllOf(HasSubstr("What answers there is QuoteTracker's HTTP interface"),
                                HasSubstr("was not updated")));
}

TEST_F(StreamTrouble, OfSilenceIsToldWithinSeconds) {
  LoopbackServer server([](LoopbackServer::Peer& peer) { peer.ReceiveAll(); });
  const auto [result, after] = Stream(server.Port(), "6");
  EXPECT_EQ(result.exit_code, 1);
  EXPECT_THAT(result.err, HasSubstr("Something listens there, and says nothing, where QuoteTracker greets"));
}

TEST_F(StreamTrouble, OfARefusedConnectionSaysWhereItWasCalled) {
  const RefusingPort nobody;
  const auto [result, after] = Stream(nobody.Port(), "0.2");
  EXPECT_EQ(result.exit_code, 1);
  EXPECT_THAT(result.err,
              AllOf(HasSubstr("port " + std::to_string(nobody.Port()) + " (SocketPort, given for"),
                    HasSubstr("Compare SocketPort with")));
}

TEST_F(StreamTrouble, IsNoneWhereQuoteTrackerGreets) {
  quotetracker::Server server;
  const auto [result, after] = Stream(server.StreamPort(), "0.5");
  EXPECT_THAT(result.err, Not(HasSubstr("Compare SocketPort")));
}

}  // namespace
}  // namespace mirelo::testing
