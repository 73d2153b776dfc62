#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <memory>
#include <string>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

#include "quotetracker/http_request.h"
#include "quotetracker/http_server.h"
#include "quotetracker/random.h"
#include "quotetracker/server.h"
#include "quotetracker/server_loop.h"
#include "quotetracker/socket.h"
#include "support/tcp_client.h"

namespace mirelo::quotetracker {
namespace {

using namespace std::chrono_literals;
using testing::BodyOf;
using ::testing::HasSubstr;
using testing::HttpGet;
using ::testing::Not;
using ::testing::StartsWith;
using testing::TcpClient;

constexpr const char* kRequest = "/req?EnumPorts()";
constexpr const char* kGoodReply =
    "HTTP/1.0 200 OK\r\nContent-Type: text/plain\r\nContent-Length: 8\r\n\r\nOK\r\nMain";

// What a client gets with a fault at each request.
std::string ReplyWith(const std::string& fault) {
  ServerOptions options;
  options.http_fault = HttpFaultPlan::Parse(fault, 1);
  Server server(std::move(options));
  return HttpGet(server.HttpPort(), kRequest);
}

TEST(HttpFaults, DropClosesWithoutAReply) { EXPECT_EQ(ReplyWith("drop"), ""); }

TEST(HttpFaults, ResetTearsTheConnectionDown) {
#ifdef _WIN32
  GTEST_SKIP() << "Wine asks a socket that is waited for for its error itself, and receives an end then";
#endif
  EXPECT_THROW(ReplyWith("reset"), std::system_error);
}

TEST(HttpFaults, TruncateHeadClosesInTheHead) {
  const std::string reply = ReplyWith("truncate-head");
  EXPECT_THAT(kGoodReply, StartsWith(reply));
  EXPECT_THAT(reply, StartsWith("HTTP/1.0 200 OK\r\n"));
  EXPECT_THAT(reply, Not(HasSubstr("\r\n\r\n")));
}

TEST(HttpFaults, TruncateBodyClosesInTheBody) {
  EXPECT_EQ(ReplyWith("truncate-body"),
            std::string(kGoodReply).substr(0, std::string(kGoodReply).size() - 4));
}

TEST(HttpFaults, GarbageIsNoReply) {
  const std::string reply = ReplyWith("garbage");
  EXPECT_FALSE(reply.empty());
  EXPECT_THAT(reply, Not(HasSubstr("HTTP")));
  EXPECT_EQ(ReplyWith("garbage"), reply) << "the same seed spoils alike";
}

TEST(HttpFaults, WrongStatusKeepsTheRest) {
  const std::string reply = ReplyWith("wrong-status");
  EXPECT_THAT(reply, StartsWith("HTTQ/9.9 OK 200\r\n"));
  EXPECT_EQ(BodyOf(reply), "OK\r\nMain");
}

TEST(HttpFaults, LengthsLie) {
  EXPECT_THAT(ReplyWith("short-length"), HasSubstr("Content-Length: 4\r\n\r\nOK\r\nMain"));
  EXPECT_THAT(ReplyWith("long-length"), HasSubstr("Content-Length: 17\r\n\r\nOK\r\nMain"));
}

TEST(HttpFaults, StallSendsNothingAndHoldsTheConnection) {
  ServerOptions options;
  options.http_fault = HttpFaultPlan::Parse("stall", 1);
  Server server(std::move(options));
  TcpClient client(server.HttpPort());
  client.Send("GET /req?EnumPorts() HTTP/1.0\r\n\r\n");
  EXPECT_FALSE(client.IsReadable(100ms));
}

TEST(HttpFaults, StrikeWhenTheirRuleSays) {
  ServerOptions options;
  options.http_fault = HttpFaultPlan::Parse("drop:3", 1);
  Server server(std::move(options));
  std::string replies;
  for (int i = 0; i < 9; ++i) replies += HttpGet(server.HttpPort(), kRequest).empty() ? 'x' : '.';
  EXPECT_EQ(replies, "..x..x..x");
}

TEST(HttpFaults, CanBeSetWhileTheServerRuns) {
  Server server;
  EXPECT_EQ(HttpGet(server.HttpPort(), kRequest), kGoodReply);
  server.SetHttpFault(HttpFaultPlan::Parse("drop", 1));
  EXPECT_EQ(HttpGet(server.HttpPort(), kRequest), "");
  server.SetHttpFault({});
  EXPECT_EQ(HttpGet(server.HttpPort(), kRequest), kGoodReply);
}

TEST(Http, ReadsARequestThatComesByteByByte) {
  Server server;
  TcpClient client(server.HttpPort());
  for (const char c : std::string("GET /req?EnumPorts() HTTP/1.0\r\n\r\n")) client.Send({&c, 1});
  EXPECT_EQ(client.ReceiveAll(), kGoodReply);
}

TEST(Http, AnswersARequestWithABody) {
  Server server;
  TcpClient client(server.HttpPort());
  client.Send("POST /req?EnumPorts() HTTP/1.0\r\nContent-Length: 4\r\n\r\na=b&");
  EXPECT_EQ(client.ReceiveAll(), kGoodReply);
}

TEST(Http, SendsALongReplyWhole) {
  Server server;
  std::string tickers = "A";
  for (int i = 0; i < 5000; ++i) tickers += ",T" + std::to_string(i);
  const std::string reply = HttpGet(server.HttpPort(), "/req?GetLastQuote(" + tickers + ")");
  const std::string body = BodyOf(reply);
  EXPECT_THAT(reply, HasSubstr("Content-Length: " + std::to_string(body.size()) + "\r\n"));
  EXPECT_EQ(std::ranges::count(body, '\n'), 5001);
}

TEST(Http, RefusesWhatIsNoHttpAndSaysSo) {
  Server server;
  TcpClient client(server.HttpPort());
  client.Send("<LOGIN></LOGIN>\n\n");
  client.EndSending();
  EXPECT_EQ(
      client.ReceiveAll(),
      "HTTP/1.0 400 Bad Request\r\nContent-Type: text/plain\r\nContent-Length: 15\r\n\r\n400 Bad Request");
}

TEST(Http, RefusesAnEndlessHeadSoThatItsClientReadsWhy) {
  Server server;
  TcpClient client(server.HttpPort());
  client.Send("GET / HTTP/1.0\r\n" + std::string(1'000'000, 'x'));
  EXPECT_THAT(client.ReceiveAll(), StartsWith("HTTP/1.0 431 "));
}

TEST(Http, SurvivesRandomBytes) {
  Server server;
  Random random(5);
  for (int i = 0; i < 100; ++i) {
    TcpClient client(server.HttpPort());
    std::string bytes(static_cast<std::size_t>(random.Between(1, 300)), '\0');
    for (char& c : bytes) c = static_cast<char>(random.Next());
    client.Send(bytes);
  }
  EXPECT_EQ(HttpGet(server.HttpPort(), kRequest), kGoodReply);
}

TEST(Http, SurvivesClientsThatLeave) {
  Server server;
  for (int i = 0; i < 100; ++i) {
    TcpClient client(server.HttpPort());
    client.Send("GET /req?GetLastQuote(A,B,C) HTTP/1.0\r\n\r\n");
  }
  EXPECT_EQ(HttpGet(server.HttpPort(), kRequest), kGoodReply);
}

TEST(Http, AnswersWhileOthersAreSlow) {
  Server server;
  std::vector<std::unique_ptr<TcpClient>> slow;
  for (int i = 0; i < 300; ++i) {
    slow.push_back(std::make_unique<TcpClient>(server.HttpPort()));
    slow.back()->Send("GET /req?Enum");
  }
  EXPECT_EQ(HttpGet(server.HttpPort(), kRequest), kGoodReply);
  for (const auto& client : slow) {
    client->Send("Ports() HTTP/1.0\r\n\r\n");
    ASSERT_EQ(client->ReceiveAll(), kGoodReply);
  }
}

TEST(Http, AnswersManyClientsAtOnce) {
  Server server;
  std::vector<std::thread> clients;
  std::atomic<int> answered = 0;
  for (int i = 0; i < 8; ++i) {
    clients.emplace_back([&] {
      for (int k = 0; k < 50; ++k) answered += HttpGet(server.HttpPort(), kRequest) == kGoodReply ? 1 : 0;
    });
  }
  for (std::thread& client : clients) client.join();
  EXPECT_EQ(answered, 400);
}

// Runs a loop while it lives.
struct LoopThread {
  explicit LoopThread(ServerLoop& ran) : loop(ran), thread([this] { loop.Run(); }) {}
  ~LoopThread() {
    loop.Stop();
    thread.join();
  }
  ServerLoop& loop;
  std::thread thread;
};

// A server of its own, so that it can be impatient.
TEST(Http, LetsGoOfAClientThatNeverAsks) {
  ServerLoop loop;
  HttpServer server(
      loop.Events(), ListenOn("127.0.0.1", 0), [](std::string_view) { return "OK"; }, 1, 0s);
  const LoopThread running(loop);
  TcpClient silent(server.Port());
  EXPECT_EQ(silent.ReceiveAll(), "");
}

TEST(Http, HoldsAClientThatAFaultStallsForLonger) {
  ServerLoop loop;
  HttpServer server(
      loop.Events(), ListenOn("127.0.0.1", 0), [](std::string_view) { return "OK"; }, 1, 0s);
  server.SetFault(HttpFaultPlan::Parse("stall", 1));
  const LoopThread running(loop);
  TcpClient stalled(server.Port());
  stalled.Send("GET /req?EnumPorts() HTTP/1.0\r\n\r\n");
  TcpClient silent(server.Port());
  EXPECT_EQ(silent.ReceiveAll(), "");
  EXPECT_FALSE(stalled.IsReadable(100ms));
}

}  // namespace
}  // namespace mirelo::quotetracker
