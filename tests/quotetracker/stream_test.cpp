#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "quotetracker/market.h"
#include "quotetracker/server.h"
#include "quotetracker/stream_client.h"

namespace mirelo::quotetracker {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::StartsWith;

Clock ClockOfTheGreeting() {
  return [] { return ParseMoment("12/31/2005", "09:30:15").value(); };
}

ServerOptions AtAFixedTime() {
  ServerOptions options;
  options.quotes = std::make_unique<Market>(1, ClockOfTheGreeting());
  return options;
}

TEST(Stream, GreetsWithItsClockAndVersion) {
  ServerOptions options = AtAFixedTime();
  options.stream.version = "7.5";
  Server server(std::move(options));
  StreamClient client(server.StreamPort());
  EXPECT_EQ(
      client.ReadGreeting(),
      "OK<CONNECT><SERVERTIME>12/31/2005 09:30:15</SERVERTIME><SERVERVERSION>7.5</SERVERVERSION></CONNECT>");
}

TEST(Stream, AcceptsTheDigestOfSecretAndTime) {
  Server server(AtAFixedTime());
  StreamClient client(server.StreamPort());
  client.ReadGreeting();
  // md5sum of "demo-secret12312005 0930"
  EXPECT_EQ(client.Ask(StreamClient::LoginMessage("MireloDemo", "4588B9B1E17B6300B264F803FE040BBE"),
                       "</STATUSDESC>"),
            "LO<STATUSCODE>0</STATUSCODE><STATUSDESC>Login accepted</STATUSDESC>");
}

TEST(Stream, AcceptsOtherCredentialsWhenGivenThem) {
  ServerOptions options;
  options.stream.credentials = {"Other", "words"};
  Server server(std::move(options));
  EXPECT_THAT(StreamClient(server.StreamPort()).LogIn({"Other", "words"}), StartsWith("LO<STATUSCODE>0<"));
  EXPECT_THAT(StreamClient(server.StreamPort()).LogIn(), StartsWith("LO<STATUSCODE>1<"));
}

TEST(Stream, RefusesALoginThatProvesNothing) {
  Server server;
  const Credentials good;
  for (const Credentials& bad :
       {Credentials{good.app_name, "wrong"}, Credentials{"Stranger", good.app_secret},
        Credentials{"mirelodemo", good.app_secret}, Credentials{"", ""}}) {
    SCOPED_TRACE(bad.app_name + "/" + bad.app_secret);
    EXPECT_EQ(StreamClient(server.StreamPort()).LogIn(bad),
              "LO<STATUSCODE>1</STATUSCODE><STATUSDESC>Application not authorised</STATUSDESC>");
  }
}

TEST(Stream, RefusesADigestInLowerCase) {
  Server server;
  StreamClient client(server.StreamPort());
  std::string digest = LoginDigest("demo-secret", StreamClient::ServerTime(client.ReadGreeting()));
  std::ranges::transform(digest, digest.begin(),
                         [](char c) { return c >= 'A' ? static_cast<char>(c + 32) : c; });
  EXPECT_THAT(client.Ask(StreamClient::LoginMessage("MireloDemo", digest), "</STATUSDESC>"),
              HasSubstr("<STATUSCODE>1</STATUSCODE>"));
}

TEST(Stream, LetsAClientTryAgainAfterARefusal) {
  Server server;
  StreamClient client(server.StreamPort());
  const std::string time = StreamClient::ServerTime(client.ReadGreeting());
  EXPECT_THAT(client.Ask(StreamClient::LoginMessage("MireloDemo", "0"), "</STATUSDESC>"), HasSubstr(">1<"));
  EXPECT_THAT(
      client.Ask(StreamClient::LoginMessage("MireloDemo", LoginDigest("demo-secret", time)), "</STATUSDESC>"),
      HasSubstr(">0<"));
}

TEST(Stream, AnswersNothingButALoginBeforeTheLogin) {
  Server server;
  for (const char* message :
       {"<ENUMSOURCES><SourceType>L1</SourceType></ENUMSOURCES>",
        "<L1SITE><STREAMER>A.SDF</STREAMER></L1SITE>",
        "<L1QUOTES><ReqType>SUB</ReqType><Symbols>A</Symbols></L1QUOTES>", "hello", ""}) {
    SCOPED_TRACE(message);
    StreamClient client(server.StreamPort());
    client.ReadGreeting();
    EXPECT_EQ(client.Ask(message, "</STATUSDESC>"),
              "LO<STATUSCODE>3</STATUSCODE><STATUSDESC>Login first</STATUSDESC>");
  }
}

TEST(Stream, SaysWhenALoginIsNotUnderstood) {
  Server server;
  StreamClient client(server.StreamPort());
  client.ReadGreeting();
  EXPECT_EQ(client.Ask("<LOGIN><AppName>MireloDemo</AppName></LOGIN>", "</STATUSDESC>"),
            "LO<STATUSCODE>2</STATUSCODE><STATUSDESC>Login not understood</STATUSDESC>");
}

TEST(Stream, ListsItsLevelOneSources) {
  Server server;
  StreamClient client(server.StreamPort());
  client.LogIn();
  const std::string reply =
      client.Ask("<ENUMSOURCES><SourceType>L1</SourceType></ENUMSOURCES>", "</SOURCES>");
  EXPECT_THAT(reply,
              StartsWith("ES<SOURCES><SOURCETYPE>L1</SOURCETYPE><SOURCE><FILENAME>ALDERBK_FR.SDF</FILENAME>"
                         "<NAME>Alder Banque (France) - RealTime (Customers Only)</NAME></SOURCE><SOURCE>"));
  EXPECT_TRUE(reply.ends_with("</SOURCE></SOURCES>"));
  EXPECT_GT(reply.size(), 4096U) << "one read of the list would not be enough";
}

TEST(Stream, ListsNothingForOtherSourceTypes) {
  Server server;
  StreamClient client(server.StreamPort());
  client.LogIn();
  EXPECT_EQ(client.Ask("<ENUMSOURCES><SourceType>TRADE</SourceType></ENUMSOURCES>", "</SOURCES>"),
            "ES<SOURCES><SOURCETYPE>TRADE</SOURCETYPE></SOURCES>");
}

TEST(Stream, AcceptsAStreamer) {
  Server server;
  StreamClient client(server.StreamPort());
  client.LogIn();
  EXPECT_EQ(client.Ask("<L1SITE><STREAMER>SWISS.SDF</STREAMER></L1SITE>", "</STREAMER>"),
            "OK<STREAMER>SWISS.SDF</STREAMER>");
}

TEST(Stream, SendsEachSymbolOnceInFullThenChanges) {
  ServerOptions options;
  options.stream.rate = 1000;
  Server server(std::move(options));
  StreamClient client(server.StreamPort());
  client.LogIn();
  client.Say("<L1QUOTES><ReqType>SUB</ReqType><Symbols>A,B,C,D</Symbols><Symbols>E,F</Symbols></L1QUOTES>");

  const auto snapshots = client.ReadRecords(6);
  for (std::size_t i = 0; i < snapshots.size(); ++i) {
    SCOPED_TRACE(i);
    EXPECT_EQ(snapshots[i].kind, "S1");
    EXPECT_EQ(snapshots[i].Symbol(), std::string(1, static_cast<char>('A' + i)));
    EXPECT_EQ(snapshots[i].numbers.size() + snapshots[i].texts.size(), 31U);
  }
  std::set<std::string> changed;
  for (const ReadRecord& record : client.ReadRecords(200)) {
    EXPECT_LT(record.numbers.size(), 20U);
    changed.insert(record.Symbol());
  }
  EXPECT_EQ(changed.size(), 6U) << "each symbol changes now and then";
}

TEST(Stream, SendsAllFourKindsAtAPace) {
  ServerOptions options;
  options.stream.rate = 500;
  Server server(std::move(options));
  StreamClient client(server.StreamPort());
  client.LogIn();
  client.Subscribe("A");
  std::set<std::string> kinds;
  while (kinds.size() < 4) kinds.insert(client.ReadOne().kind);
  EXPECT_THAT(kinds, ElementsAre("HO", "HT", "L1", "S1"));
}

TEST(Stream, SendsTheKindsItIsTold) {
  ServerOptions options;
  options.stream.rate = StreamOptions::kMaximum;
  options.stream.kinds = {"HT"};
  Server server(std::move(options));
  StreamClient client(server.StreamPort());
  client.LogIn();
  client.Subscribe("A");
  EXPECT_EQ(client.ReadOne().kind, "S1");
  for (const ReadRecord& record : client.ReadRecords(500)) ASSERT_EQ(record.kind, "HT");
}

TEST(Stream, DoesNotRepeatASymbolInFull) {
  ServerOptions options;
  options.stream.rate = 0.001;
  Server server(std::move(options));
  StreamClient client(server.StreamPort());
  client.LogIn();
  client.Subscribe("A,B");
  client.Subscribe("b,C,A");
  const auto records = client.ReadRecords(3);
  EXPECT_EQ(records[2].Symbol(), "C");
  EXPECT_FALSE(client.Tcp().IsReadable(50ms));
}

TEST(Stream, SendsASymbolInFullAgainAfterUnsubscribing) {
  ServerOptions options;
  options.stream.rate = 0.001;
  Server server(std::move(options));
  StreamClient client(server.StreamPort());
  client.LogIn();
  client.Subscribe("A");
  client.ReadOne();
  client.Say("<L1QUOTES><ReqType>UNSUBALL</ReqType></L1QUOTES>");
  client.Subscribe("A");
  EXPECT_EQ(client.ReadOne().kind, "S1");
}

TEST(Stream, IsSilentAfterUnsubscribing) {
  ServerOptions options;
  options.stream.rate = StreamOptions::kMaximum;
  Server server(std::move(options));
  StreamClient client(server.StreamPort());
  client.LogIn();
  client.Subscribe("A,B");
  client.ReadRecords(100);
  // The reply to the streamer choice comes behind the last record.
  client.Say("<L1QUOTES><ReqType>UNSUBALL</ReqType></L1QUOTES>");
  client.Ask("<L1SITE><STREAMER>A.SDF</STREAMER></L1SITE>", "</STREAMER>");
  EXPECT_FALSE(client.Tcp().IsReadable(50ms));
}

TEST(Stream, OverhearsItsClients) {
  Server server;
  StreamClient client(server.StreamPort());
  client.LogIn();
  client.Ask("<L1SITE><STREAMER>A.SDF</STREAMER></L1SITE>", "</STREAMER>");
  const auto messages = server.StreamMessages();
  ASSERT_EQ(messages.size(), 2U);
  EXPECT_THAT(messages[0], StartsWith("<LOGIN><AppName>MireloDemo"));
  EXPECT_EQ(messages[1], "<L1SITE><STREAMER>A.SDF</STREAMER></L1SITE>");
}

TEST(Stream, ServesManyClientsAtOnce) {
  ServerOptions options;
  options.stream.rate = StreamOptions::kMaximum;
  Server server(std::move(options));
  std::vector<std::unique_ptr<StreamClient>> clients;
  for (int i = 0; i < 8; ++i) {
    clients.push_back(std::make_unique<StreamClient>(server.StreamPort()));
    clients.back()->LogIn();
    clients.back()->Subscribe("A,B,C");
  }
  for (const auto& client : clients) EXPECT_EQ(client->ReadRecords(300).size(), 300U);
  EXPECT_EQ(server.StreamConnections(), 8U);
}

}  // namespace
}  // namespace mirelo::quotetracker
