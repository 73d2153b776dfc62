#include <gmock/gmock.h>

#include <optional>

#include "automation/runtime_error.h"
#include "diagnostics/CErrorHandler.h"
#include "support/facade_test.h"
#include "support/scripted_wininet.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class DownloadURL : public FacadeTest {
 protected:
  DownloadURL() {
    internet.answer = [](const auto&) { return "body"; };
  }
};

TEST_F(DownloadURL, AsksThisMachineUnlessTold) {
  EXPECT_EQ(facade->DownloadURL("/req?EnumPorts()").ToText(), "body");
  ASSERT_THAT(internet.requests, SizeIs(1));
  EXPECT_EQ(internet.requests[0].host, "127.0.0.1");
  EXPECT_EQ(internet.requests[0].port, 16239);
  EXPECT_EQ(internet.requests[0].verb, "GET");
  EXPECT_EQ(internet.requests[0].resource, "/req?EnumPorts()");
  EXPECT_EQ(internet.requests[0].headers, "");
  EXPECT_EQ(internet.requests[0].body, "");
}

TEST_F(DownloadURL, PassesItsArgumentsOn) {
  facade->DownloadURL("/a", "10.0.0.7", 80, "POST", "x=1");
  ASSERT_THAT(internet.requests, SizeIs(1));
  EXPECT_EQ(internet.requests[0].host, "10.0.0.7");
  EXPECT_EQ(internet.requests[0].port, 80);
  EXPECT_EQ(internet.requests[0].verb, "POST");
  EXPECT_EQ(internet.requests[0].resource, "/a");
  EXPECT_EQ(internet.requests[0].headers, "Content-Type: application/x-www-form-urlencoded");
  EXPECT_EQ(internet.requests[0].body, "x=1");
}

TEST_F(DownloadURL, SendsNoBodyBehindACallThatSentOne) {
  facade->DownloadURL("/a", "10.0.0.7", 80, "POST", "x=1");
  facade->DownloadURL("/a", "10.0.0.7", 80, "GET", "");
  ASSERT_THAT(internet.requests, SizeIs(2));
  EXPECT_EQ(internet.requests[1].verb, "GET");
  EXPECT_EQ(internet.requests[1].headers, "");
  EXPECT_EQ(internet.requests[1].body, "");
}

TEST_F(DownloadURL, MakesTheseCallsAndNoOthers) {
  ScriptedWinInet scripted;
  scripted.chunks = {"OK"};
  host.Use(scripted);
  EXPECT_EQ(facade->DownloadURL("/req?EnumPorts()", "10.0.0.7", 8080, "GET", "").ToText(), "OK");
  EXPECT_THAT(
      scripted.calls,
      ElementsAre("InternetOpenA(none, 0)",  // no agent
                  "InternetSetOptionA(1, 2, 300000)", "InternetSetOptionA(1, 6, 300000)",
                  "InternetSetOptionA(1, 5, 300000)", "InternetSetOptionA(1, 6, 300000)",
                  "InternetSetOptionA(1, 5, 300000)", "InternetSetOptionA(1, 8, 300000)",
                  "InternetSetOptionA(1, 7, 300000)",
                  "InternetConnectA(1, \"10.0.0.7\", 8080, \"\", \"\", 3)",  // no user, no password
                  "InternetCanonicalizeUrlA(\"/req?EnumPorts()\", 4096, 33554432)",
                  "HttpOpenRequestA(2, \"GET\", \"/req?EnumPorts()\", \"HTTP/1.0\", \"\", 2147483648)",
                  "HttpSendRequestA(3, \"\", \"\")", "HttpQueryInfoA(3, 1, 4096)",
                  "HttpQueryInfoA(3, 5, 4096)", "HttpQueryInfoA(3, 45, 4096)", "InternetReadFile(3, 4096)",
                  "InternetReadFile(3, 4096)", "InternetCloseHandle(3)", "InternetCloseHandle(2)",
                  "InternetCloseHandle(1)"));
}

TEST_F(DownloadURL, IsTextWhenTheTransferSucceeds) { EXPECT_TRUE(facade->DownloadURL("/a").IsText()); }

TEST_F(DownloadURL, IsEmptyWhenTheTransferFails) {
  internet.answer = [](const auto&) { return std::nullopt; };
  const Variant result = facade->DownloadURL("/a");
  ASSERT_TRUE(result.IsText());
  EXPECT_EQ(result.ToText(), "");
  EXPECT_THAT(desktop.boxes, IsEmpty());
  EXPECT_THAT(desktop.reports, IsEmpty());
}

TEST_F(DownloadURL, PopsItsName) {
  internet.answer = [](const auto&) {
    EXPECT_EQ(mGlobal::ErrorHandler().CallStack().back().procedure, "Mirelo.cMirelo.DownloadURL");
    return "body";
  };
  facade->DownloadURL("/a");
  EXPECT_THAT(mGlobal::ErrorHandler().CallStack(), IsEmpty());
}

TEST_F(DownloadURL, ReportsAComponentFailureAndRunsTheTransferAgainOnRetry) {
  internet.answer = [&](const auto&) {
    if (internet.requests.size() == 1) throw Errors::OutOfMemory();
    return "body";
  };
  Answers({"RETRY"});
  EXPECT_EQ(facade->DownloadURL("/a").ToText(), "body");
  EXPECT_THAT(internet.Resources(), ElementsAre("/a", "/a"));
  ASSERT_THAT(desktop.reports, SizeIs(1));
  EXPECT_THAT(desktop.reports[0].text, HasSubstr("(WinInet component failure)\r\n"
                                                 "\tin Mirelo.cMirelo.DownloadURL at line 0\r\n"));
}

TEST_F(DownloadURL, IsTheEmptyTextWhenAComponentFailureIsIgnored) {
  internet.answer = [](const auto&) -> std::string { throw Errors::OutOfMemory(); };
  Answers({"IGNORE"});
  const Variant result = facade->DownloadURL("/a");
  ASSERT_TRUE(result.IsText());
  EXPECT_EQ(result.ToText(), "");
  EXPECT_THAT(mGlobal::ErrorHandler().CallStack(), IsEmpty());
}

TEST_F(DownloadURL, IsNotEvenTextWhenAComponentFailureIsAborted) {
  internet.answer = [](const auto&) -> std::string { throw Errors::OutOfMemory(); };
  Answers({"ABORT"});
  EXPECT_TRUE(facade->DownloadURL("/a").IsEmpty());
  EXPECT_THAT(mGlobal::ErrorHandler().CallStack(), IsEmpty());
}

}  // namespace
}  // namespace mirelo::testing
