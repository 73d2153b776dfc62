// What the loop of windows has beyond the rules of all loops: Qt's events are handled while it waits, and
// Qt's own loops keep ours going.

#include <gtest/gtest.h>
#include <sys/socket.h>

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>
#include <stdexcept>
#include <string>
#include <vector>

#include "adapters/poll/poll_winsock_library.h"
#include "adapters/qt/qt_loop.h"
#include "loop/one_then_two.h"
#include "poll/client.h"
#include "support/socket_pair.h"

namespace mirelo::qt {
namespace {

using testing::SocketPair;
using Words = std::vector<std::string>;
constexpr unsigned kQtRead = QtLoop::kRead;
constexpr unsigned kQtWrite = QtLoop::kWrite;
constexpr QtLoop::Milliseconds kAtOnce{0};

// Has Qt call `act` at its next chance, as it does for a click.
void PostToQt(std::function<void()> act) {
  QMetaObject::invokeMethod(QCoreApplication::instance(), std::move(act), Qt::QueuedConnection);
}

std::vector<std::string> warnings;

// Collects what Qt warns of while it lives.
class Warnings {
 public:
  Warnings() {
    warnings.clear();
    former_ = qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString& text) {
      warnings.push_back(text.toStdString());
    });
  }
  ~Warnings() { qInstallMessageHandler(former_); }

 private:
  QtMessageHandler former_;
};

TEST(QtWaiting, HandlesQtsEventsInAYieldAndInAWait) {
  QtLoop loop;
  int calls = 0;
  PostToQt([&] { ++calls; });
  loop.Yield();
  EXPECT_EQ(calls, 1);
  PostToQt([&] { ++calls; });
  loop.RunUntil([&] { return calls == 2; });
}

TEST(QtWaiting, IsEndedByBytesAndByTimersInsideWhatQtHasCalled) {
  QtLoop loop;
  SocketPair pair;
  Words log;
  loop.Watch(pair.near, kQtRead, [&](unsigned) { log.push_back(pair.Read()); });
  bool done = false;
  PostToQt([&] {
    pair.Write("bytes");
    loop.RunUntil([&] { return !log.empty(); });
    loop.StartTimer(QtLoop::Milliseconds(1), [&] { log.push_back("timer"); });
    loop.RunUntil([&] { return log.size() == 2; });
    done = true;
  });
  loop.RunUntil([&] { return done; });
  EXPECT_EQ(log, (Words{"bytes", "timer"}));
}

TEST(QtWaiting, GoesOnInALoopOfQtsOwn) {
  QtLoop loop;
  SocketPair pair;
  Words log;
  bool done = false;
  loop.Watch(pair.near, kQtRead, [&](unsigned) { log.push_back(pair.Read()); });
  PostToQt([&] {
    QEventLoop of_qt;
    loop.StartTimer(kAtOnce, [&] {
      log.push_back("timer");
      pair.Write("bytes");
    });
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, &of_qt, [&] {
      if (log.size() == 2) of_qt.quit();
    });
    watch.start(1);
    of_qt.exec();
    done = true;
  });
  loop.RunUntil([&] { return done; });
  EXPECT_EQ(log, (Words{"timer", "bytes"}));
}

TEST(QtWaiting, KeepsAnErrorFromQtsFramesUntilTheyHaveReturned) {
  QtLoop loop;
  bool left = false;
  PostToQt([&] {
    QEventLoop of_qt;
    loop.StartTimer(kAtOnce, [&] {
      QMetaObject::invokeMethod(&of_qt, &QEventLoop::quit, Qt::QueuedConnection);
      throw std::runtime_error("in a loop of Qt's");
    });
    of_qt.exec();
    left = true;
  });
  EXPECT_THROW(loop.RunUntil([] { return false; }), std::runtime_error);
  EXPECT_TRUE(left);
  loop.Yield();
}

TEST(QtGuard, HandsAnErrorToTheWaitThatQtWasCalledFrom) {
  QtLoop loop;
  Words log;
  bool done = false;
  PostToQt([&] {
    loop.Guard([&] {
      PostToQt([&] { loop.Guard([] { throw std::runtime_error("inner"); }); });
      try {
        loop.RunUntil([] { return false; });
      } catch (const std::runtime_error& error) {
        log.push_back(error.what());
      }
      throw std::logic_error("outer");
    });
    done = true;
  });
  EXPECT_THROW(loop.RunUntil([&] { return false; }), std::logic_error);
  EXPECT_TRUE(done);
  EXPECT_EQ(log, Words{"inner"});
}

TEST(QtGuard, HandsOnSeveralErrorsOneByOne) {
  QtLoop loop;
  loop.Guard([] { throw std::runtime_error("first"); });
  loop.Guard([] { throw std::logic_error("second"); });
  loop.Guard([] {});
  EXPECT_THROW(loop.Yield(), std::runtime_error);
  EXPECT_THROW(loop.Yield(), std::logic_error);
  loop.Yield();
}

TEST(QtWaiting, SleepsUntilSomethingHappens) {
  QtLoop loop;
  SocketPair quiet, unwatched, written;
  loop.Watch(quiet.near, kQtRead, [](unsigned) {});
  const auto ended = loop.Watch(unwatched.near, kQtRead, [](unsigned) {});
  loop.Unwatch(ended);
  unwatched.Write("x");
  const auto changed = loop.Watch(written.near, kQtRead | kQtWrite, [](unsigned) {});
  loop.Rewatch(changed, kQtRead);
  bool fired = false;
  loop.StartTimer(QtLoop::Milliseconds(15), [&] { fired = true; });
  int questions = 0;
  loop.RunUntil([&] {
    ++questions;
    return fired;
  });
  EXPECT_LE(questions, 12) << "the loop waits instead of spinning";
}

TEST(QtWaiting, IsEndedByAHangUpWhateverWasAskedFor) {
  for (const unsigned interest : {kQtRead, kQtWrite, kQtRead | kQtWrite}) {
    SCOPED_TRACE(interest);
    QtLoop loop;
    SocketPair pair;
    unsigned seen = 0;
    loop.Watch(pair.near, interest, [&](unsigned ready) { seen = ready; });
    pair.CloseFar();
    loop.RunUntil([&] { return seen != 0; });
    EXPECT_EQ(seen, interest);
  }
}

TEST(QtWaiting, NeverAsksQtForADescriptorThatHasBeenClosed) {
  const Warnings collected;
  QtLoop loop;
  SocketPair first;
  const auto token = loop.Watch(first.near, kQtRead | kQtWrite, [](unsigned) {});
  loop.Yield();
  loop.Unwatch(token);
  first.CloseNear();
  loop.Yield();
  QCoreApplication::processEvents();
  SocketPair again;  // has the same number
  std::string bytes;
  loop.Watch(again.near, kQtRead, [&](unsigned) { bytes = again.Read(); });
  again.Write("x");
  loop.RunUntil([&] { return !bytes.empty(); });
  EXPECT_EQ(warnings, Words{});
}

// A dialog that a sink shows waits in a loop of Qt's own.
TEST(QtWaiting, KeepsChunksBackWhileTheSinkOfTheOneBeforeShowsADialog) {
  QtLoop loop;
  poll::PollWinsockLibrary library(loop);
  OneThenTwo server;
  poll::Client client(library);
  int awakenings = 0;
  client.sink->on_received = [&](const std::string& chunk) {
    if (chunk != "1") return;
    server.SendTwo();
    QEventLoop dialog;
    QTimer::singleShot(50, &dialog, &QEventLoop::quit);
    const auto counted = QObject::connect(QAbstractEventDispatcher::instance(),
                                          &QAbstractEventDispatcher::awake, [&] { ++awakenings; });
    dialog.exec();
    QObject::disconnect(counted);
    EXPECT_EQ(client.sink->received, "1");
  };
  client.Connect(server.Address());
  loop.RunUntil([&] { return client.sink->received == "12"; });
  EXPECT_LE(awakenings, kFewQuestions);
}

}  // namespace
}  // namespace mirelo::qt
