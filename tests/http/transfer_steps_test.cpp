#include <cstdint>
#include <string>
#include <vector>

#include "http/scripted_transfer.h"

namespace mirelo::testing {
namespace {

class TransferSteps : public ScriptedTransfer {};

TEST_F(TransferSteps, GoThroughTheCallsInOrder) {
  transfer.HostName("127.0.0.1");
  transfer.Port(16239);
  transfer.Method("GET");
  transfer.Resource("/req?GetLastQuote(MSFT,IBM)");
  internet.chunks = {"OK\r\n"};

  transfer.Execute();

  const std::vector<std::string> expected = {
      "InternetOpenA(none, 0)",
      "InternetSetOptionA(1, 2, 300000)",
      "InternetSetOptionA(1, 6, 300000)",
      "InternetSetOptionA(1, 5, 300000)",
      "InternetSetOptionA(1, 6, 300000)",
      "InternetSetOptionA(1, 5, 300000)",
      "InternetSetOptionA(1, 8, 300000)",
      "InternetSetOptionA(1, 7, 300000)",
      "InternetConnectA(1, \"127.0.0.1\", 16239, \"\", \"\", 3)",
      "InternetCanonicalizeUrlA(\"/req?GetLastQuote(MSFT,IBM)\", 4096, 33554432)",
      "HttpOpenRequestA(2, \"GET\", \"/req?GetLastQuote(MSFT,IBM)\", \"HTTP/1.0\", \"\", 2147483648)",
      "HttpSendRequestA(3, \"\", \"\")",
      "HttpQueryInfoA(3, 1, 4096)",
      "HttpQueryInfoA(3, 5, 4096)",
      "HttpQueryInfoA(3, 45, 4096)",
      "InternetReadFile(3, 4096)",
      "InternetReadFile(3, 4096)",
      "InternetCloseHandle(3)",
      "InternetCloseHandle(2)",
      "InternetCloseHandle(1)",
  };
  EXPECT_EQ(internet.calls, expected);
  EXPECT_EQ(transfer.Response(), "OK\r\n");
}

TEST_F(TransferSteps, SendABodyAsAForm) {
  transfer.PostQuery("a=1&b=2");
  transfer.Execute();
  EXPECT_EQ(internet.calls.at(11),
            "HttpSendRequestA(3, \"Content-Type: application/x-www-form-urlencoded\", \"a=1&b=2\")");
}

TEST_F(TransferSteps, SendNoBodyOnceItIsTakenBack) {
  transfer.PostQuery("a=1");
  transfer.Execute();
  transfer.PostQuery("");
  internet.calls.clear();
  transfer.Execute();
  EXPECT_EQ(internet.calls.at(11), "HttpSendRequestA(3, \"\", \"\")");
}

TEST_F(TransferSteps, PassWhatIdentifiesTheClient) {
  transfer.AgentName("Quotes/1");
  transfer.UserName("jo");
  transfer.Password("secret");
  transfer.Referer("http://a/");
  transfer.Method("HEAD");
  transfer.Execute();
  EXPECT_EQ(internet.calls.at(0), "InternetOpenA(\"Quotes/1\", 0)");
  EXPECT_EQ(internet.calls.at(8), "InternetConnectA(1, \"\", 0, \"jo\", \"secret\", 3)");
  EXPECT_EQ(internet.calls.at(10),
            "HttpOpenRequestA(2, \"HEAD\", \"\", \"HTTP/1.0\", \"http://a/\", 2147483648)");
}

TEST_F(TransferSteps, NeverSendTheAcceptTypes) {
  transfer.AcceptTypes("text/plain");
  transfer.Execute();
  for (const std::string& call : internet.calls)
    EXPECT_EQ(call.find("text/plain"), std::string::npos) << call;
}

TEST_F(TransferSteps, PassThePortAsTheSixteenBitsThatItHas) {
  const struct {
    std::int16_t port;
    std::string passed;
  } cases[] = {{0, " 0,"}, {80, " 80,"}, {32767, " 32767,"}, {-32768, " 32768,"}, {-1, " 65535,"}};
  for (const auto& each : cases) {
    SCOPED_TRACE(each.port);
    internet.calls.clear();
    transfer.Port(each.port);
    transfer.Execute();
    EXPECT_NE(internet.calls.at(8).find(each.passed), std::string::npos) << internet.calls[8];
  }
}

TEST_F(TransferSteps, IgnoreOptionsThatCannotBeSet) {
  internet.failing = {"InternetSetOptionA"};
  transfer.Execute();
  EXPECT_TRUE(transfer.SuccessDone());
}

TEST_F(TransferSteps, IgnoreHandlesThatCannotBeClosed) {
  internet.failing = {"InternetCloseHandle"};
  transfer.Execute();
  EXPECT_EQ(Closed(), kAllHandles);
  EXPECT_TRUE(transfer.SuccessDone());
}

TEST_F(TransferSteps, PassTextAsBytesOfTheAnsiCodePage) {
  transfer.Resource("/req?\u20AC\u00FC");
  transfer.PostQuery("\u00E9");
  transfer.Execute();
  EXPECT_EQ(internet.calls.at(9), "InternetCanonicalizeUrlA(\"/req?\x80\xFC\", 4096, 33554432)");
  EXPECT_NE(internet.calls.at(11).find("\"\xE9\""), std::string::npos) << internet.calls[11];
  EXPECT_EQ(transfer.Resource(), "/req?\u20AC\u00FC");
}

class Timeout : public ScriptedTransfer {
 protected:
  std::string FirstOption() const { return internet.calls.at(1); }
};

TEST_F(Timeout, BelowOneSecondIsThreeHundred) {
  for (const std::int32_t seconds : {0, -1, -2147483647}) {
    SCOPED_TRACE(seconds);
    internet.calls.clear();
    transfer.TimeoutSec(seconds);
    transfer.Execute();
    EXPECT_EQ(FirstOption(), "InternetSetOptionA(1, 2, 300000)");
    EXPECT_EQ(transfer.TimeoutSec(), 300);
  }
}

TEST_F(Timeout, IsPassedInMilliseconds) {
  for (const std::int32_t seconds : {1, 7, 2147483}) {
    SCOPED_TRACE(seconds);
    internet.calls.clear();
    transfer.TimeoutSec(seconds);
    transfer.Execute();
    EXPECT_EQ(FirstOption(), "InternetSetOptionA(1, 2, " + std::to_string(seconds) + "000)");
  }
}

TEST_F(Timeout, ThatOverflowsTheMillisecondsIsAnErrorAndLeavesTheHandleOpen) {
  transfer.TimeoutSec(2147484);
  ExpectComponentFailure(ErrorOf([&] { transfer.Execute(); }), "Execute");
  EXPECT_EQ(internet.calls, std::vector<std::string>{"InternetOpenA(none, 0)"});
  EXPECT_FALSE(transfer.SuccessDone());
}

class Resource : public ScriptedTransfer {};

TEST_F(Resource, BecomesItsCanonicalForm) {
  transfer.Resource("/a b");
  internet.canonical = "/a%20b";
  transfer.Execute();
  EXPECT_EQ(transfer.Resource(), "/a%20b");
  EXPECT_NE(internet.calls.at(10).find("\"/a%20b\""), std::string::npos) << internet.calls[10];
}

TEST_F(Resource, IsUsedAsItStandsWhenItHasNoCanonicalForm) {
  transfer.Resource("/a b");
  internet.failing = {"InternetCanonicalizeUrlA"};
  transfer.Execute();
  EXPECT_EQ(transfer.Resource(), "/a b");
  EXPECT_NE(internet.calls.at(10).find("\"/a b\""), std::string::npos) << internet.calls[10];
  EXPECT_TRUE(transfer.SuccessDone());
}

TEST_F(Resource, AndMethodOfASecondTransferAreThoseThatTheFirstOneLeft) {
  transfer.Method("post");
  transfer.Resource("/a b");
  internet.canonical = "/a%20b";
  internet.request_method = "GET";
  transfer.Execute();
  EXPECT_EQ(transfer.Method(), "GET");

  internet.calls.clear();
  internet.canonical.reset();
  transfer.Execute();
  EXPECT_EQ(internet.calls.at(9), "InternetCanonicalizeUrlA(\"/a%20b\", 4096, 33554432)");
  EXPECT_EQ(internet.calls.at(10),
            "HttpOpenRequestA(2, \"GET\", \"/a%20b\", \"HTTP/1.0\", \"\", 2147483648)");
}

}  // namespace
}  // namespace mirelo::testing
