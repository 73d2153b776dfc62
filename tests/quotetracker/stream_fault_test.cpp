#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <system_error>

#include "quotetracker/server.h"
#include "quotetracker/stream_client.h"

namespace mirelo::quotetracker {
namespace {

using namespace std::chrono_literals;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;
using testing::TcpClient;

constexpr const char* kAskSources = "<ENUMSOURCES><SourceType>L1</SourceType></ENUMSOURCES>";
constexpr const char* kChooseStreamer = "<L1SITE><STREAMER>A.SDF</STREAMER></L1SITE>";

std::unique_ptr<Server> ServerWith(const std::string& fault) {
  ServerOptions options;
  options.stream.rate = StreamOptions::kMaximum;
  options.stream.faults.push_back(StreamFaultPlan::Parse(fault, 1));
  return std::make_unique<Server>(std::move(options));
}

// A step of the conversation: how a client gets there, and what the server says there without a fault.
struct Step {
  const char* name;
  void (*reach)(StreamClient& client);
  const char* begins;
};

void PrintTo(const Step& step, std::ostream* out) { *out << step.name; }

void SayLogin(StreamClient& client) {
  const std::string time = StreamClient::ServerTime(client.ReadGreeting());
  client.Say(StreamClient::LoginMessage("MireloDemo", LoginDigest("demo-secret", time)));
}

class StreamFaults : public ::testing::TestWithParam<Step> {
 protected:
  std::string At(const std::string& fault) { return fault + "@" + GetParam().name; }
};

TEST_P(StreamFaults, DropClosesInstead) {
  const auto server = ServerWith(At("drop"));
  StreamClient client(server->StreamPort());
  GetParam().reach(client);
  EXPECT_EQ(client.Tcp().ReceiveAll(), "");
}

TEST_P(StreamFaults, ResetTearsDownInstead) {
#ifdef _WIN32
  GTEST_SKIP() << "Wine asks a socket that is waited for for its error itself, and receives an end then";
#endif
  const auto server = ServerWith(At("reset"));
  StreamClient client(server->StreamPort());
  GetParam().reach(client);
  EXPECT_THROW(client.Tcp().ReceiveAll(), std::system_error);
}

TEST_P(StreamFaults, StallSaysNothingMore) {
  const auto server = ServerWith(At("stall"));
  StreamClient client(server->StreamPort());
  GetParam().reach(client);
  EXPECT_FALSE(client.Tcp().IsReadable(50ms));
  client.Say(kAskSources);
  EXPECT_FALSE(client.Tcp().IsReadable(50ms));
  EXPECT_EQ(server->StreamConnections(), 1U);
}

TEST_P(StreamFaults, TruncateClosesInTheMiddle) {
  const auto server = ServerWith(At("truncate"));
  StreamClient client(server->StreamPort());
  GetParam().reach(client);
  const std::string received = client.Tcp().ReceiveAll();
  EXPECT_THAT(received, StartsWith(GetParam().begins));
  for (const char* end : {"</CONNECT>", "</STATUSDESC>", "</SOURCES>", "</STREAMER>"}) {
    EXPECT_THAT(received, Not(HasSubstr(end)));
  }
}

TEST_P(StreamFaults, GarbageIsSentInstead) {
  const auto server = ServerWith(At("garbage"));
  StreamClient client(server->StreamPort());
  GetParam().reach(client);
  EXPECT_THAT(client.Tcp().ReceiveChunk(), Not(StartsWith(GetParam().begins)));
}

TEST_P(StreamFaults, SplitSendsTwoChunks) {
  ServerOptions options;
  options.stream.rate = 0.001;
  // Long enough for a busy machine to read the first chunk alone.
  options.stream.chunk_pause = 200ms;
  options.stream.faults.push_back(StreamFaultPlan::Parse(At("split"), 1));
  Server server(std::move(options));
  StreamClient client(server.StreamPort());
  GetParam().reach(client);
  const std::string first = client.Tcp().ReceiveChunk();
  const std::string second = client.Tcp().ReceiveChunk();
  EXPECT_THAT(first, StartsWith(GetParam().begins));
  EXPECT_THAT(first.size() - second.size(), ::testing::AnyOf(0U, 1U));
  EXPECT_FALSE(client.Tcp().IsReadable(50ms));
}

INSTANTIATE_TEST_SUITE_P(EachStep, StreamFaults,
                         ::testing::Values(Step{"greeting", [](StreamClient&) {}, "OK<CONNECT>"},
                                           Step{"login", SayLogin, "LO"},
                                           Step{"sources",
                                                [](StreamClient& client) {
                                                  client.LogIn();
                                                  client.Say(kAskSources);
                                                },
                                                "ES"},
                                           Step{"streamer",
                                                [](StreamClient& client) {
                                                  client.LogIn();
                                                  client.Say(kChooseStreamer);
                                                },
                                                "OK<STREAMER>"},
                                           Step{"quotes",
                                                [](StreamClient& client) {
                                                  client.LogIn();
                                                  client.Subscribe("A");
                                                },
                                                "S1"}),
                         [](const auto& step) { return step.param.name; });

TEST(StreamFaultAtQuotes, LeavesTheOtherStepsAlone) {
  const auto server = ServerWith("drop@quotes");
  StreamClient client(server->StreamPort());
  EXPECT_THAT(client.LogIn(), HasSubstr(">0<"));
  EXPECT_THAT(client.Ask(kAskSources, "</SOURCES>"), StartsWith("ES"));
}

TEST(StreamFaultAtQuotes, MakesLengthsLie) {
  for (const auto& [fault, lies] :
       {std::pair<const char*, std::function<bool(int length, int good)>>{
            "long-length", [](int length, int good) { return length == good + 1000; }},
        {"short-length", [](int length, int good) { return length == good / 2; }},
        {"zero-length", [](int length, int) { return length == 0; }},
        {"negative-length", [](int length, int good) { return length == -good; }}}) {
    SCOPED_TRACE(fault);
    const auto length_of = [](const std::string& chunk) {
      return static_cast<int>(static_cast<std::int16_t>(static_cast<unsigned char>(chunk.at(2)) +
                                                        256 * static_cast<unsigned char>(chunk.at(3))));
    };
    const auto first_length = [&](const std::string& with) {
      const auto server = ServerWith(with);
      StreamClient client(server->StreamPort());
      client.LogIn();
      client.Subscribe("A");
      return length_of(client.Tcp().ReceiveChunk(4));
    };
    EXPECT_TRUE(lies(first_length(std::string(fault) + "@quotes"), first_length("drop@quotes:1000000")));
  }
}

TEST(StreamFaultAtQuotes, StrikesWhenItsRuleSays) {
  const auto server = ServerWith("drop@quotes:3");
  StreamClient client(server->StreamPort());
  client.LogIn();
  client.Subscribe("A");
  std::string records = client.Tcp().ReceiveAll();
  const auto read = RecordReader::ReadAll(records);
  EXPECT_EQ(read.front().kind, "S1");
  EXPECT_EQ(read.back().kind, "L1") << "the second batch was the last, and whole";
}

TEST(StreamFaultPlans, CanBeSetWhileTheServerRuns) {
  Server server;
  server.SetStreamFaults({StreamFaultPlan::Parse("drop@greeting", 1)});
  EXPECT_EQ(TcpClient(server.StreamPort()).ReceiveAll(), "");
  server.SetStreamFaults({});
  EXPECT_THAT(StreamClient(server.StreamPort()).ReadGreeting(), StartsWith("OK<CONNECT>"));
}

}  // namespace
}  // namespace mirelo::quotetracker
