#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

#include "http/scripted_transfer.h"

namespace mirelo::testing {
namespace {

using std::chrono::milliseconds;

class TransferStates : public ScriptedTransfer {};

TEST_F(TransferStates, OfTheGoodPath) {
  transfer.Execute();
  EXPECT_EQ(states, (States{1, 3, 6, 7, 9, 11}));
  EXPECT_TRUE(transfer.SuccessDone());
}

TEST_F(TransferStates, AreChangedToFinishedWhenAllIsDone) {
  internet.on_call = [&](const std::string&) { EXPECT_FALSE(transfer.SuccessDone()); };
  transfer.OnStateChanged.Subscribe([&](std::int32_t state) {
    EXPECT_EQ(transfer.SuccessDone(), state == 11);
    EXPECT_EQ(Closed(), state == 11 ? kAllHandles : std::vector<std::string>{});
  });
  transfer.Execute();
  EXPECT_EQ(states.back(), 11);
}

TEST_F(TransferStates, TellWhichCallFailed) {
  const struct {
    std::string call;
    States states;
    std::vector<std::string> closed;
  } cases[] = {
      {"InternetOpenA", {2}, {}},
      {"InternetConnectA", {1, 4}, {"InternetCloseHandle(1)"}},
      {"HttpOpenRequestA", {1, 3, 5}, {"InternetCloseHandle(2)", "InternetCloseHandle(1)"}},
      {"HttpSendRequestA", {1, 3, 6, 8}, kAllHandles},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(each.call);
    WinInet fresh;
    States reported;
    fresh.OnStateChanged.Subscribe([&](std::int32_t state) { reported.push_back(state); });
    internet.calls.clear();
    internet.failing = {each.call};
    fresh.Execute();
    EXPECT_EQ(reported, each.states);
    EXPECT_EQ(Closed(), each.closed);
    EXPECT_FALSE(fresh.SuccessDone());
    EXPECT_EQ(fresh.Response(), "");
  }
}

TEST_F(TransferStates, OfAFailureAreReportedBeforeTheHandlesAreClosed) {
  transfer.OnStateChanged.Subscribe(
      [&](std::int32_t state) { EXPECT_EQ(Closed(), std::vector<std::string>{}) << state; });
  for (const std::string call : {"InternetConnectA", "HttpOpenRequestA", "HttpSendRequestA"}) {
    SCOPED_TRACE(call);
    internet.calls.clear();
    internet.failing = {call};
    transfer.Execute();
    EXPECT_NE(Closed(), std::vector<std::string>{});
  }
  EXPECT_EQ(Closed(), kAllHandles);
}

TEST_F(TransferStates, OfASecondTransferThatFailsEarlyCloseTheOldHandlesAgain) {
  transfer.Execute();
  internet.calls.clear();
  internet.failing = {"InternetConnectA"};
  transfer.Execute();
  // The connection handle is 0 now; the request handle is still the first transfer's.
  EXPECT_EQ(Closed(), (std::vector<std::string>{"InternetCloseHandle(3)", "InternetCloseHandle(1)"}));
}

// The internet handle is 0 now, and nothing says that the others belong to a transfer that is over.
TEST_F(TransferStates, OfASecondTransferThatOpensNothingCloseNothing) {
  transfer.Execute();
  internet.calls.clear();
  internet.failing = {"InternetOpenA"};
  transfer.Execute();
  EXPECT_EQ(states.back(), 2);
  EXPECT_EQ(internet.CallNames(), std::vector<std::string>{"InternetOpenA"});
}

TEST_F(TransferStates, OfASecondTransferThatFailsTakeTheFirstOnesSuccessBack) {
  for (const std::string call :
       {"InternetOpenA", "InternetConnectA", "HttpOpenRequestA", "HttpSendRequestA"}) {
    SCOPED_TRACE(call);
    internet.failing.clear();
    internet.chunks.push_back("first");
    internet.chunks.push_back("");
    transfer.Execute();
    ASSERT_EQ(transfer.Response(), "first");
    internet.failing = {call};
    transfer.Execute();
    EXPECT_FALSE(transfer.SuccessDone());
    EXPECT_EQ(transfer.Response(), "");
  }
}

class Cancel : public ScriptedTransfer {
 protected:
  void ExpectCancelled(const States& expected) {
    EXPECT_EQ(states, expected);
    EXPECT_FALSE(transfer.SuccessDone());
    EXPECT_EQ(transfer.Response(), "");
  }
};

TEST_F(Cancel, InAnyStateThatIsNotTheLastEndsTheTransfer) {
  const struct {
    std::int32_t state;
    States states;
    std::vector<std::string> closed;
    std::string last_call;
  } cases[] = {
      {1, {1, 12}, {"InternetCloseHandle(1)"}, "InternetOpenA"},
      {3, {1, 3, 12}, {"InternetCloseHandle(2)", "InternetCloseHandle(1)"}, "InternetConnectA"},
      {6, {1, 3, 6, 12}, kAllHandles, "HttpOpenRequestA"},
      {7, {1, 3, 6, 7, 12}, kAllHandles, "HttpSendRequestA"},
      {9, {1, 3, 6, 7, 9, 12}, kAllHandles, "InternetReadFile"},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(each.state);
    WinInet fresh;
    States reported;
    fresh.OnStateChanged.Subscribe([&](std::int32_t state) {
      reported.push_back(state);
      if (state == each.state) fresh.Cancel();
    });
    internet.calls.clear();
    fresh.Execute();
    EXPECT_EQ(reported, each.states);
    EXPECT_EQ(Closed(), each.closed);
    EXPECT_FALSE(fresh.SuccessDone());
    EXPECT_EQ(internet.CallNames().at(internet.calls.size() - each.closed.size() - 1), each.last_call);
  }
}

TEST_F(Cancel, IsReportedBeforeTheHandlesAreClosed) {
  for (const std::int32_t at : {1, 3, 6, 7, 9}) {
    SCOPED_TRACE(at);
    WinInet fresh;
    States reported;
    fresh.OnStateChanged.Subscribe([&](std::int32_t state) {
      reported.push_back(state);
      EXPECT_EQ(Closed(), std::vector<std::string>{}) << state;
      if (state == at) fresh.Cancel();
    });
    internet.calls.clear();
    fresh.Execute();
    EXPECT_EQ(reported.back(), 12);
    EXPECT_NE(Closed(), std::vector<std::string>{});
  }
}

TEST_F(Cancel, InTheLastStateComesTooLate) {
  CancelAt(11);
  transfer.Execute();
  EXPECT_EQ(states, (States{1, 3, 6, 7, 9, 11}));
  EXPECT_TRUE(transfer.SuccessDone());
}

TEST_F(Cancel, BehindEachOfTheThreeQuestionsIsSeenBeforeTheNext) {
  for (const int question : {1, 2, 3}) {
    SCOPED_TRACE(question);
    states.clear();
    internet.calls.clear();
    int asked = 0;
    internet.on_call = [&](const std::string& name) {
      if (name == "HttpQueryInfoA" && ++asked == question) transfer.Cancel();
    };
    transfer.Execute();
    ExpectCancelled({1, 3, 6, 7, 12});
    EXPECT_EQ(asked, question);
    EXPECT_EQ(Closed(), kAllHandles);  // each of them once
  }
}

TEST_F(Cancel, WhileACallIsInProgressLetsThatCallFinish) {
  internet.on_call = [&](const std::string& name) {
    if (name == "HttpSendRequestA") transfer.Cancel();
  };
  transfer.Execute();
  ExpectCancelled({1, 3, 6, 7, 12});
  EXPECT_EQ(Closed(), kAllHandles);
}

TEST_F(Cancel, FromTheProgressOfAChunkIsSeenBehindTheNextRead) {
  internet.chunks = {"one", "two", "three"};
  transfer.OnProgress.Subscribe([&](float, std::int32_t, std::int32_t) { transfer.Cancel(); });
  transfer.Execute();
  ExpectCancelled({1, 3, 6, 7, 9, 12});
  EXPECT_EQ(progress.size(), 1u);
  EXPECT_EQ(Closed(), kAllHandles);
}

TEST_F(Cancel, FromTheProgressOfTheLastChunkComesTooLate) {
  internet.chunks = {"one"};
  transfer.OnProgress.Subscribe([&](float, std::int32_t, std::int32_t) {
    if (progress.size() == 2) transfer.Cancel();
  });
  transfer.Execute();
  EXPECT_EQ(states.back(), 11);
  EXPECT_EQ(transfer.Response(), "one");
}

TEST_F(Cancel, ReachesTheTransferInTheYieldBehindAnyState) {
  for (const std::int32_t at : {1, 3, 6, 7, 9}) {
    SCOPED_TRACE(at);
    states.clear();
    const auto handler = transfer.OnStateChanged.Subscribe([&](std::int32_t state) {
      if (state == at) loop.StartTimer(milliseconds(0), [&] { transfer.Cancel(); });
    });
    transfer.Execute();
    transfer.OnStateChanged.Unsubscribe(handler);
    EXPECT_EQ(states.back(), 12);
    EXPECT_EQ(states.at(states.size() - 2), at);
  }
}

TEST_F(Cancel, ReachesTheTransferInTheYieldBehindAChunk) {
  internet.chunks = {"one", "two", "three"};
  transfer.OnProgress.Subscribe([&](float, std::int32_t, std::int32_t) {
    loop.StartTimer(milliseconds(0), [&] { transfer.Cancel(); });
  });
  transfer.Execute();
  ExpectCancelled({1, 3, 6, 7, 9, 12});
  EXPECT_EQ(progress.size(), 1u);
}

TEST_F(Cancel, BeforeExecuteHasNoEffect) {
  transfer.Cancel();
  transfer.Execute();
  EXPECT_EQ(states.back(), 11);
}

TEST_F(Cancel, OfOneTransferIsForgottenByTheNext) {
  const auto handler =
      transfer.OnProgress.Subscribe([&](float, std::int32_t, std::int32_t) { transfer.Cancel(); });
  internet.chunks = {"one", "two", "three"};
  transfer.Execute();
  transfer.OnProgress.Unsubscribe(handler);
  transfer.Execute();
  EXPECT_EQ(transfer.Response(), "three");
}

}  // namespace
}  // namespace mirelo::testing
