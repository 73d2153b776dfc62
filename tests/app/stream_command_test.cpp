// mirelo stream and mirelo sources, run against a stand-in that serves in this process.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "app/program.h"
#include "quotetracker/server.h"
#include "quotetracker/session_file.h"
#include "support/level1_wire.h"
#include "support/loopback_server.h"
#include "support/temp_directory.h"

namespace mirelo::testing {
namespace {

using ::testing::AllOf;
using ::testing::Contains;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

class Stream : public ::testing::Test {
 protected:
  Stream() { RunMirelo(folder_.path(), {"credentials", "set"}, "MireloDemo\ndemo-secret\n"); }

  ProgramResult Run(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "stream");
    arguments.insert(arguments.end(), {"--socket-port", std::to_string(server_.StreamPort())});
    return RunMirelo(folder_.path(), arguments);
  }

  TempDirectory folder_;
  quotetracker::Server server_;
};

TEST_F(Stream, PrintsQuotesAsTheyCome) {
  const auto result = Run({"MSFT", "IBM", "--source", "SWISS.SDF", "--seconds", "1", "--csv"});
  EXPECT_EQ(result.exit_code, 0) << result.err;
  EXPECT_THAT(result.out, StartsWith("Ticker,Last,Change,"));
  EXPECT_THAT(result.out, AllOf(HasSubstr("\nMSFT,"), HasSubstr("\nIBM,")));
  EXPECT_THAT(result.err,
              AllOf(HasSubstr("Connecting to host..."), HasSubstr("Logged in"), HasSubstr("Streaming")));
}

TEST_F(Stream, EndsWithATableOfWhatIsKnown) {
  const auto result = Run({"MSFT", "--source", "SWISS.SDF", "--seconds", "1"});
  EXPECT_EQ(result.exit_code, 0) << result.err;
  EXPECT_THAT(result.out, AllOf(StartsWith("Ticker"), HasSubstr("\nMSFT")));
}

TEST_F(Stream, FindsASourceByItsNameOnceTheListIsFetched) {
  const auto sources =
      RunMirelo(folder_.path(), {"settings", "set", "SocketPort", std::to_string(server_.StreamPort())});
  ASSERT_EQ(sources.exit_code, 0) << sources.err;
  const auto list = RunMirelo(folder_.path(), {"sources", "--update"});
  ASSERT_EQ(list.exit_code, 0) << list.err;
  EXPECT_THAT(list.err, HasSubstr("Data source list updated successfully"));
  const auto name_end = list.out.find("  ", list.out.find('\n', list.out.find("---")) + 1);
  const auto name_begin = list.out.find('\n', list.out.find("---")) + 1;
  const std::string name = list.out.substr(name_begin, name_end - name_begin);

  const auto result = Run({"MSFT", "--source", name, "--seconds", "1", "--json"});
  EXPECT_EQ(result.exit_code, 0) << result.err;
  EXPECT_THAT(result.out, StartsWith("{\"Ticker\":\"MSFT\""));
}

TEST_F(Stream, FindsASourceByAPartOfItsNameBeforeAnyListIsFetched) {
  const auto result = Run({"MSFT", "--source", "alpstein", "--seconds", "1", "--csv"});
  EXPECT_EQ(result.exit_code, 0) << result.err;
  EXPECT_THAT(server_.StreamMessages(), Contains(HasSubstr("SWISS.SDF")));
  const auto several = Run({"MSFT", "--source", "RealTime", "--seconds", "1"});
  EXPECT_EQ(several.exit_code, 1);
  EXPECT_THAT(several.err, HasSubstr("not one alone has that in its name"));
}

TEST_F(Stream, TakesTheSourceOfTheSettingsWhereNoneIsNamedAndTheirDefaultUntilOneIsChosen) {
  const auto first = Run({"MSFT", "--seconds", "1", "--csv"});
  EXPECT_EQ(first.exit_code, 0) << first.err;
  EXPECT_THAT(server_.StreamMessages(),
              AllOf(Contains(HasSubstr("SWISS.SDF")), Not(Contains(HasSubstr("OCSEC.SDF")))));
  RunMirelo(folder_.path(), {"settings", "set", R"(QuoteSource\First\ComQuoteSource)", "oc securities "});
  Run({"MSFT", "--seconds", "1", "--csv"});
  EXPECT_THAT(server_.StreamMessages(), Contains(HasSubstr("OCSEC.SDF")));
}

TEST_F(Stream, SaysWhichSourceItDoesNotKnow) {
  const auto result = Run({"MSFT", "--source", "No such source"});
  EXPECT_EQ(result.exit_code, 1);
  EXPECT_THAT(result.err, AllOf(HasSubstr("No such source"), HasSubstr("mirelo sources --update")));
}

TEST_F(Stream, SaysThatTheLoginWasRefused) {
  RunMirelo(folder_.path(), {"credentials", "set"}, "MireloDemo\nwrong\n");
  const auto result = Run({"MSFT", "--source", "SWISS.SDF", "--seconds", "1"});
  EXPECT_EQ(result.exit_code, 1);
  EXPECT_THAT(result.err, AllOf(HasSubstr("refused the login"), Not(HasSubstr("Logged in"))));
}

TEST_F(Stream, EndsAtOnceWithoutCredentials) {
  RunMirelo(folder_.path(), {"credentials", "clear"});
  const auto result = Run({"MSFT", "--source", "SWISS.SDF", "--seconds", "60"});
  EXPECT_EQ(result.exit_code, 1);
  EXPECT_THAT(result.err, HasSubstr("mirelo credentials set"));
}

TEST_F(Stream, FailsTheUpdateOfTheSourcesWhenTheirListDoesNotEnd) {
  LoopbackServer endless([](LoopbackServer::Peer& peer) {
    peer.Send("OK<CONNECT><SERVERTIME>09:30:15</SERVERTIME></CONNECT>");
    peer.ReceiveUntil("</LOGIN>");
    peer.Send("LO<STATUSCODE>0</STATUSCODE><STATUSDESC></STATUSDESC>");
    peer.ReceiveUntil("</ENUMSOURCES>");
    const std::string sources(1'000'000, 'x');
    bool goes_on = peer.Send("ES<SOURCES>");
    while (goes_on) goes_on = peer.Send(sources);
  });
  RunMirelo(folder_.path(), {"settings", "set", "SocketPort", std::to_string(endless.Port())});
  const auto result = RunMirelo(folder_.path(), {"sources", "--update"});
  EXPECT_EQ(result.exit_code, 1);
  EXPECT_THAT(result.err, AllOf(HasSubstr("does not end (over 16 MiB)"), HasSubstr("was not updated"),
                                Not(HasSubstr("did not send the list"))));
}

TEST_F(Stream, PassesOverAListOfSourcesThatNobodyAskedFor) {
  const std::string quote = Level1Wire().Symbol("MSFT").Last(28.5);
  LoopbackServer server([&](LoopbackServer::Peer& peer) {
    peer.Send("OK<STREAMER>SWISS.SDF</STREAMER>");
    peer.ReceiveUntil("</L1QUOTES>");
    peer.Send("ES<SOURCES>" + std::string(1'000'000, 'x') + quote);
    peer.ReceiveAll();
  });
  const auto result = RunMirelo(folder_.path(), {"stream", "MSFT", "--source", "SWISS.SDF", "--seconds", "2",
                                                 "--csv", "--socket-port", std::to_string(server.Port())});
  EXPECT_EQ(result.exit_code, 0) << result.err;
  EXPECT_THAT(result.out, HasSubstr("\nMSFT,28.5,"));
}

TEST_F(Stream, PrintsNoQuotesThatWereNotAskedFor) {
  LoopbackServer server([](LoopbackServer::Peer& peer) {
    peer.Send("OK<STREAMER>SWISS.SDF</STREAMER>");
    peer.ReceiveUntil("</L1QUOTES>");
    for (const Level1Wire& quote : {Level1Wire().Symbol("IBM").Last(161), Level1Wire().Last(162),
                                    Level1Wire().Symbol("MSFT").Last(28.5)})
      peer.Send(quote.Bytes());
    peer.ReceiveAll();
  });
  const auto result = RunMirelo(folder_.path(), {"stream", "MSFT", "--source", "SWISS.SDF", "--seconds", "1",
                                                 "--csv", "--socket-port", std::to_string(server.Port())});
  EXPECT_EQ(result.exit_code, 0) << result.err;
  EXPECT_THAT(result.out, AllOf(HasSubstr("\nMSFT,28.5,"), Not(HasSubstr("161")), Not(HasSubstr("162"))));
  EXPECT_THAT(result.err, AllOf(HasSubstr("not asked for"), HasSubstr("\n1 quotes")));
}

// The network may cut a reply anywhere.
TEST_F(Stream, TellsALoginThatCameInPiecesForWhatItIs) {
  LoopbackServer server([](LoopbackServer::Peer& peer) {
    const auto send = [&](const std::string& text) {
      for (const char letter : text) {
        peer.Send({&letter, 1});
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
      }
    };
    send("OK<CONNECT><SERVERTIME>09:30:15</SERVERTIME></CONNECT>");
    peer.ReceiveUntil("</LOGIN>");
    send("LO<STATUSCODE>0</STATUSCODE><STATUSDESC>fine</STATUSDESC>");
    peer.ReceiveUntil("</L1SITE>");
    send("OK<STREAMER>SWISS.SDF</STREAMER>");
    peer.ReceiveUntil("</L1QUOTES>");
    send(Level1Wire().Symbol("MSFT").Last(28.5));
    peer.ReceiveAll();
  });
  const auto result = RunMirelo(folder_.path(), {"stream", "MSFT", "--source", "SWISS.SDF", "--seconds", "2",
                                                 "--csv", "--socket-port", std::to_string(server.Port())});
  EXPECT_EQ(result.exit_code, 0) << result.err;
  EXPECT_THAT(result.out, HasSubstr("\nMSFT,28.5,"));
  EXPECT_THAT(result.err, AllOf(HasSubstr("Logged in"), Not(HasSubstr("refused"))));
}

TEST_F(Stream, RecordsASessionThatCanBePlayed) {
  const auto recorded = Run({"MSFT", "--source", "SWISS.SDF", "--seconds", "1", "--record", "session.qts"});
  ASSERT_EQ(recorded.exit_code, 0) << recorded.err;
  const auto file = (folder_ / "session.qts").string();
  EXPECT_GT(quotetracker::CheckSession(file), 3U);

  quotetracker::ServerOptions options;
  options.play = file;
  quotetracker::Server player(std::move(options));
  const auto played =
      RunMirelo(folder_.path(), {"stream", "MSFT", "--source", "SWISS.SDF", "--seconds", "1", "--csv",
                                 "--socket-port", std::to_string(player.StreamPort())});
  EXPECT_EQ(played.exit_code, 0) << played.err;
  EXPECT_THAT(played.out, HasSubstr("\nMSFT,"));
}

TEST_F(Stream, ReconnectsWhenThePeerIsNotThere) {
  const auto result = RunMirelo(
      folder_.path(), {"stream", "MSFT", "--source", "SWISS.SDF", "--seconds", "1", "--socket-port", "1"});
  EXPECT_EQ(result.exit_code, 1);
  EXPECT_THAT(result.err, HasSubstr("reconnecting in 1 second"));
}

}  // namespace
}  // namespace mirelo::testing
