#include <chrono>
#include <cstdint>
#include <memory>
#include <string>

#include "automation/runtime_error.h"
#include "http/http_machine.h"
#include "support/loop_signal.h"

namespace mirelo::testing {
namespace {

using std::chrono::milliseconds;

// Behind its beginning, as a wait stays awake for a moment before it sleeps.
constexpr milliseconds kInAWait[] = {milliseconds(0), milliseconds(1)};

// How transfers live together on one loop.
class TransfersOnTheLoop : public HttpMachine {
 protected:
  // The loop turns once more, in the yield of the present state, before a transfer can wait.
  void OnceItWaits(milliseconds when, std::function<void()> act) {
    loop.StartTimer(milliseconds(0), [this, when, act = std::move(act)] { loop.StartTimer(when, act); });
  }
};

TEST_F(TransfersOnTheLoop, LetTimersFireWhileTheyWait) {
  LoopbackServer server([](LoopbackServer::Peer& peer) {
    peer.ReceiveUntil("\r\n\r\n");
    peer.Await();
    peer.Send("HTTP/1.0 200 OK\r\n\r\n");
    peer.Await();
    peer.Send("quote");
  });
  loop.StartTimer(milliseconds(1), [&] {
    server.Go();
    loop.StartTimer(milliseconds(1), [&] { server.Go(); });
  });
  LocalTransfer transfer(server.Port());
  transfer.Execute();
  EXPECT_EQ(transfer.Response(), "quote");
}

TEST_F(TransfersOnTheLoop, NestInEachStateOfAnother) {
  LoopbackServer server([](LoopbackServer::Peer& peer) {
    const std::string request = peer.ReceiveUntil("\r\n\r\n");
    peer.Send("HTTP/1.0 200 OK\r\n\r\nto " + request.substr(0, request.find(" HTTP")));
  });
  for (const std::int32_t state : {1, 3, 6, 7, 9, 11}) {
    SCOPED_TRACE(state);
    LocalTransfer outer(server.Port(), "/outer"), inner(server.Port(), "/inner");
    outer.OnStateChanged.Subscribe([&](std::int32_t now) {
      if (now == state) inner.Execute();
    });
    outer.Execute();
    EXPECT_EQ(outer.Response(), "to GET /outer");
    EXPECT_EQ(inner.Response(), "to GET /inner");
    EXPECT_EQ(inner.states, kGoodPath);
  }
}

TEST_F(TransfersOnTheLoop, NestInTheWaitOfAnother) {
  LoopbackServer slow([](LoopbackServer::Peer& peer) {
    peer.ReceiveUntil("\r\n\r\n");
    peer.Await();
    peer.Send("HTTP/1.0 200 OK\r\n\r\nslow");
  });
  LoopbackServer quick(Reply("HTTP/1.0 200 OK\r\n\r\nquick"));
  for (const milliseconds when : kInAWait) {
    SCOPED_TRACE(when.count());
    LocalTransfer outer(slow.Port()), inner(quick.Port());
    outer.OnStateChanged.Subscribe([&](std::int32_t state) {
      if (state != WinInet::kRequestOpened) return;
      OnceItWaits(when, [&] {
        inner.Execute();
        slow.Go();
      });
    });
    outer.Execute();
    EXPECT_EQ(outer.Response(), "slow");
    EXPECT_EQ(inner.Response(), "quick");
  }
}

TEST_F(TransfersOnTheLoop, NestDeeply) {
  LoopbackServer server(Reply("HTTP/1.0 200 OK\r\n\r\nquote"));
  constexpr int kDepth = 40;
  int finished = 0;
  std::function<void(int)> nest = [&](int depth) {
    if (depth == kDepth) return;
    LocalTransfer transfer(server.Port());
    transfer.OnStateChanged.Subscribe([&](std::int32_t state) {
      if (state == WinInet::kRequestSent) nest(depth + 1);
    });
    transfer.Execute();
    if (transfer.Response() == "quote") ++finished;
  };
  nest(0);
  EXPECT_EQ(finished, kDepth);
}

TEST_F(TransfersOnTheLoop, AreAloneOnTheirOwnEvenWhenTheOuterOneIsExecutedAgainInside) {
  LoopbackServer server(Reply("HTTP/1.0 200 OK\r\n\r\nquote"));
  LocalTransfer transfer(server.Port());
  bool again = true;
  transfer.OnStateChanged.Subscribe([&](std::int32_t state) {
    if (state == WinInet::kRequestOpened && std::exchange(again, false)) transfer.Execute();
  });
  transfer.Execute();  // goes on with the inner one's handles, which are closed
  EXPECT_EQ(transfer.states, (std::vector<std::int32_t>{1, 3, 6, 1, 3, 6, 7, 9, 11, 8}));
}

TEST_F(TransfersOnTheLoop, AreWholeBehindOneThatWasClosedWithItsBodyUnread) {
  LoopbackServer server([&](LoopbackServer::Peer& peer) {
    peer.ReceiveUntil("\r\n\r\n");
    peer.Send("HTTP/1.0 200 OK\r\n\r\n" + (peer.Index() == 0 ? std::string(8 << 20, 'x') : "OK"));
  });
  const auto session = internet.InternetOpenA(std::nullopt, 0);
  const auto connection = internet.InternetConnectA(session, "127.0.0.1", server.Port(), "", "", 3);
  const auto request = internet.HttpOpenRequestA(connection, "GET", "/", "HTTP/1.0", "", 0);
  ASSERT_TRUE(internet.HttpSendRequestA(request, "", ""));
  loop.RunUntil([&] { return loop.WatchCount() == 0; });
  internet.InternetCloseHandle(session);

  LocalTransfer next(server.Port());
  next.Execute();
  EXPECT_EQ(next.states, kGoodPath);
  EXPECT_EQ(next.Response(), "OK");
}

TEST_F(TransfersOnTheLoop, HandOnTheErrorOfAnotherHandlerAndStayUsable) {
  for (const milliseconds when : kInAWait) {
    SCOPED_TRACE(when.count());
    LoopbackServer server([](LoopbackServer::Peer& peer) {
      peer.ReceiveUntil("\r\n\r\n");
      if (peer.Index() == 0) peer.Await();
      peer.Send("HTTP/1.0 200 OK\r\n\r\nquote");
    });
    LocalTransfer broken(server.Port()), next(server.Port());
    broken.OnStateChanged.Subscribe([&](std::int32_t state) {
      if (state == WinInet::kRequestOpened) OnceItWaits(when, [] { throw Errors::TypeMismatch(); });
    });
    EXPECT_THROW(broken.Execute(), RuntimeError);
    EXPECT_EQ(broken.states, (std::vector<std::int32_t>{1, 3, 6}));
    server.Go();
    next.Execute();
    EXPECT_EQ(next.Response(), "quote");
  }
}

class ClosedHandle : public HttpMachine {
 protected:
  std::uint32_t OpenRequest(std::uint16_t port) {
    session = internet.InternetOpenA(std::nullopt, 0);
    connection = internet.InternetConnectA(session, "127.0.0.1", port, "", "", 3);
    return internet.HttpOpenRequestA(connection, "GET", "/", "HTTP/1.0", "", 0);
  }
  std::uint32_t session = 0;
  std::uint32_t connection = 0;
};

TEST_F(ClosedHandle, EndsTheWaitForTheHead) {
  LoopbackServer server([](LoopbackServer::Peer& peer) { peer.ReceiveAll(); });
  for (const milliseconds when : kInAWait) {
    SCOPED_TRACE(when.count());
    const auto request = OpenRequest(server.Port());
    loop.StartTimer(when, [&] { internet.InternetCloseHandle(request); });
    EXPECT_FALSE(internet.HttpSendRequestA(request, "", ""));
  }
}

TEST_F(ClosedHandle, EndsTheWaitForTheBodyAlsoWhenItIsTheOneAbove) {
  LoopbackServer server([](LoopbackServer::Peer& peer) {
    peer.ReceiveUntil("\r\n\r\n");
    peer.Send("HTTP/1.0 200 OK\r\n\r\n");
    peer.ReceiveAll();
  });
  for (const milliseconds when : kInAWait) {
    SCOPED_TRACE(when.count());
    const auto request = OpenRequest(server.Port());
    ASSERT_TRUE(internet.HttpSendRequestA(request, "", ""));
    loop.StartTimer(when, [&] { internet.InternetCloseHandle(session); });
    char buffer[16];
    std::uint32_t read = 1;
    EXPECT_TRUE(internet.InternetReadFile(request, buffer, sizeof buffer, read));
    EXPECT_EQ(read, 0u);
    EXPECT_EQ(internet.OpenHandles(), 0u);
  }
}

class RequestSentAgain : public ClosedHandle {};

TEST_F(RequestSentAgain, EndsTheWaitForItsFirstReply) {
  std::uint32_t request = 0;
  bool second = false;
  LoopSignal asked(loop, [&] { second = internet.HttpSendRequestA(request, "", ""); });
  LoopbackServer server([&](LoopbackServer::Peer& peer) {
    peer.ReceiveUntil("\r\n\r\n");
    if (peer.Index() > 0) {
      peer.Send("HTTP/1.0 200 OK\r\n\r\nsecond");
    } else {
      asked.Raise();
    }
    peer.ReceiveAll();
  });
  request = OpenRequest(server.Port());
  EXPECT_FALSE(internet.HttpSendRequestA(request, "", ""));
  EXPECT_TRUE(second);
  char buffer[16];
  std::uint32_t read = 0;
  EXPECT_TRUE(internet.InternetReadFile(request, buffer, sizeof buffer, read));
  EXPECT_EQ(std::string(buffer, read), "second");
}

TEST_F(ClosedHandle, IsKnownToNoCall) {
  const auto request = OpenRequest(1);
  for (const auto handle : {request, connection, session}) EXPECT_TRUE(internet.InternetCloseHandle(handle));
  for (const auto handle : {request, connection, session, 0u, 77u}) {
    SCOPED_TRACE(handle);
    char buffer[16];
    std::uint32_t read = 1;
    EXPECT_FALSE(internet.InternetCloseHandle(handle));
    EXPECT_FALSE(internet.InternetSetOptionA(handle, 2, 1));
    EXPECT_EQ(internet.InternetConnectA(handle, "a", 1, "", "", 3), 0u);
    EXPECT_EQ(internet.HttpOpenRequestA(handle, "", "", "HTTP/1.0", "", 0), 0u);
    EXPECT_FALSE(internet.HttpSendRequestA(handle, "", ""));
    EXPECT_EQ(internet.HttpQueryInfoA(handle, 45, 4096), std::nullopt);
    EXPECT_FALSE(internet.InternetReadFile(handle, buffer, sizeof buffer, read));
    EXPECT_EQ(read, 0u);
  }
}

TEST_F(ClosedHandle, IsNotMistakenForOneOfAnotherKind) {
  const auto request = OpenRequest(1);
  EXPECT_EQ(internet.InternetConnectA(request, "a", 1, "", "", 3), 0u);
  EXPECT_EQ(internet.HttpOpenRequestA(session, "", "", "HTTP/1.0", "", 0), 0u);
  EXPECT_FALSE(internet.HttpSendRequestA(connection, "", ""));
}

}  // namespace
}  // namespace mirelo::testing
