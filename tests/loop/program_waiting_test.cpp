// The program waits in a loop of messages of its own, and nothing of ours is on the stack.

#include "adapters/windows/system.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "adapters/windows/window_loop.h"
#include "support/socket_pair.h"

namespace mirelo::windows {
namespace {

using std::chrono::milliseconds;
using ::testing::ElementsAre;
using testing::SocketPair;

constexpr unsigned kProgramRead = host::MessageLoop::kRead;

// How a program that has nothing else to do takes messages: its main loop, or that of a dialog. How many it
// has taken until `done` was true; nothing when that did not come in time.
std::optional<int> TakeMessagesUntil(const std::function<bool()>& done) {
  const auto patience = std::chrono::steady_clock::now() + std::chrono::seconds(10);
  int taken = 0;
  while (!done()) {
    if (std::chrono::steady_clock::now() > patience) return std::nullopt;
    ::MsgWaitForMultipleObjectsEx(0, nullptr, 5, QS_ALLINPUT, MWMO_INPUTAVAILABLE);
    MSG message{};
    while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
      ++taken;
      ::DispatchMessageW(&message);
    }
  }
  return taken;
}

int MessagesOf(milliseconds time) {
  const auto end = std::chrono::steady_clock::now() + time;
  return TakeMessagesUntil([&] { return std::chrono::steady_clock::now() >= end; }).value_or(-1);
}

class ProgramWaiting : public ::testing::Test {
 protected:
  std::vector<std::string> failures_;
  std::unique_ptr<WindowLoop> loop_ = std::make_unique<WindowLoop>([this](std::exception_ptr failure) {
    try {
      std::rethrow_exception(failure);
    } catch (const std::exception& error) {
      failures_.emplace_back(error.what());
    }
  });
};

TEST_F(ProgramWaiting, TakesStepsForWhatBecomesReady) {
  SocketPair pair;
  std::string read;
  loop_->Watch(pair.near, kProgramRead, [&](unsigned) { read += pair.Read(); });
  pair.Write("one");
  ASSERT_TRUE(TakeMessagesUntil([&] { return read == "one"; }));
  pair.Write("two");
  EXPECT_TRUE(TakeMessagesUntil([&] { return read == "onetwo"; }));
}

TEST_F(ProgramWaiting, ComesBackForWhatAHandlerHasNotRead) {
  SocketPair pair;
  std::string read;
  loop_->Watch(pair.near, kProgramRead, [&](unsigned) {
    if (read.size() % 2 == 0)
      read += "-";  // at every other call nothing is taken
    else
      read += pair.Read(1);
  });
  pair.Write("abc");
  EXPECT_TRUE(TakeMessagesUntil([&] { return read == "-a-b-c"; })) << read;
}

TEST_F(ProgramWaiting, HearsOfTheEndOfAConnectionThatNobodyAskedAfterAtFirst) {
  SocketPair pair;
  int calls = 0;
  const auto watch = loop_->Watch(pair.near, 0, [&](unsigned) {
    ++calls;
    pair.CloseNear();
  });
  pair.CloseFar();
  EXPECT_EQ(MessagesOf(milliseconds(20)), 0);
  loop_->Rewatch(watch, kProgramRead);
  EXPECT_TRUE(TakeMessagesUntil([&] { return calls == 1; }));
}

TEST_F(ProgramWaiting, TellsOfAnEndUntilItIsSeenTo) {
  SocketPair pair;
  int calls = 0;
  MessageLoop::Token watch = 0;
  watch = loop_->Watch(pair.near, kProgramRead, [&](unsigned) {
    if (++calls == 3) loop_->Unwatch(watch);
  });
  pair.CloseFar();
  EXPECT_TRUE(TakeMessagesUntil([&] { return calls == 3; })) << calls;
}

TEST_F(ProgramWaiting, FiresTimers) {
  int fired = 0;
  loop_->StartTimer(milliseconds(5), [&] { loop_->StartTimer(milliseconds(5), [&] { ++fired; }); });
  EXPECT_TRUE(TakeMessagesUntil([&] { return fired == 1; }));
}

TEST_F(ProgramWaiting, QueuesFewMessagesHoweverMuchComes) {
  SocketPair pair;
  std::size_t read = 0;
  loop_->Watch(pair.near, kProgramRead, [&](unsigned) { read += pair.Read(1).size(); });
  loop_->StartTimer(milliseconds(1), [] {});
  pair.Write(std::string(200, 'x'));
  std::this_thread::sleep_for(milliseconds(20));
  const std::optional<int> taken = TakeMessagesUntil([&] { return read == 200; });
  ASSERT_TRUE(taken);
  EXPECT_LE(*taken, 2 * 200 + 10);
  EXPECT_LE(MessagesOf(milliseconds(20)), 4);
}

TEST_F(ProgramWaiting, GetsNoMessageWhileNothingIsDue) {
  SocketPair pair;
  loop_->Watch(pair.near, kProgramRead, [&](unsigned) { pair.Read(); });
  loop_->StartTimer(std::chrono::hours(1), [] {});
  EXPECT_EQ(MessagesOf(milliseconds(50)), 0);
}

TEST_F(ProgramWaiting, GoesOnInADialogThatAHandlerOpened) {
  SocketPair pair;
  std::string read;
  std::optional<int> dialog;
  loop_->StartTimer(milliseconds(0), [&] {
    pair.Write("quote");
    dialog = TakeMessagesUntil([&] { return read == "quote"; });
  });
  loop_->Watch(pair.near, kProgramRead, [&](unsigned) { read += pair.Read(); });
  ASSERT_TRUE(TakeMessagesUntil([&] { return !read.empty(); }));
  EXPECT_TRUE(dialog);
}

TEST_F(ProgramWaiting, HearsOfTheSameConnectionInADialogThatItsOwnHandlerOpened) {
  SocketPair pair;
  std::string read;
  std::optional<int> dialog;
  loop_->Watch(pair.near, kProgramRead, [&](unsigned) {
    if (read.empty()) {
      read = "opened ";
      dialog = TakeMessagesUntil([&] { return read == "opened quote"; });
    } else {
      read += pair.Read();
    }
  });
  pair.Write("quote");
  ASSERT_TRUE(TakeMessagesUntil([&] { return read == "opened quote"; })) << read;
  EXPECT_TRUE(dialog);
}

TEST_F(ProgramWaiting, GivesWhatFailsInAStepToWhoTakesFailures) {
  bool fired = false;
  loop_->StartTimer(milliseconds(0), [] { throw std::runtime_error("no such quote"); });
  loop_->StartTimer(milliseconds(20), [&] { fired = true; });
  ASSERT_TRUE(TakeMessagesUntil([&] { return fired; }));
  EXPECT_THAT(failures_, ElementsAre("no such quote"));
}

// Another window of the program, which does in a message what the test wants.
class Button {
 public:
  explicit Button(std::function<void()> act) : act_(std::move(act)) {
    window_ = ::CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
    ::SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    ::SetWindowLongPtrW(window_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&OnMessage));
  }
  ~Button() { ::DestroyWindow(window_); }
  void Press() const { ::PostMessageW(window_, kPressed, 0, 0); }

 private:
  static constexpr UINT kPressed = WM_APP + 1;
  static LRESULT CALLBACK OnMessage(HWND window, UINT message, WPARAM wide, LPARAM more) {
    if (message != kPressed) return ::DefWindowProcW(window, message, wide, more);
    reinterpret_cast<Button*>(::GetWindowLongPtrW(window, GWLP_USERDATA))->act_();
    return 0;
  }
  std::function<void()> act_;
  HWND window_;
};

TEST_F(ProgramWaiting, TakesMessagesOfOtherWindowsInAYieldAndInAWait) {
  int presses = 0;
  const Button button([&] { ++presses; });
  button.Press();
  loop_->Yield();
  EXPECT_EQ(presses, 1);
  button.Press();
  loop_->RunUntil([&] { return presses == 2; });
}

TEST_F(ProgramWaiting, GivesWhatFailsInAMessageBehindAWaitToThatWait) {
  const Button button([&] { loop_->Guard([] { throw std::runtime_error("no such quote"); }); });
  button.Press();
  EXPECT_THROW(loop_->RunUntil([] { return false; }), std::runtime_error);
  EXPECT_THAT(failures_, ElementsAre());
}

TEST_F(ProgramWaiting, LeavesTheDialogBehindWhichSomethingFails) {
  bool left = false;
  loop_->StartTimer(milliseconds(0), [] { throw std::runtime_error("no such quote"); });
  EXPECT_THROW(
      loop_->WaitIn([&] { EXPECT_TRUE(TakeMessagesUntil([&] { return left; })); }, [&] { left = true; }),
      std::runtime_error);
  EXPECT_TRUE(left);
  EXPECT_THAT(failures_, ElementsAre());
}

TEST_F(ProgramWaiting, PutsBackTheMessageThatTheProgramIsToEnd) {
  bool fired = false;
  ::PostQuitMessage(7);
  loop_->StartTimer(milliseconds(10), [&] { fired = true; });
  loop_->RunUntil([&] { return fired; });
  MSG message{};
  ASSERT_TRUE(::PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
  EXPECT_EQ(message.wParam, 7u);
}

TEST_F(ProgramWaiting, TakesNoStepOfALoopThatIsGone) {
  bool fired = false;
  SocketPair pair;
  loop_->Watch(pair.near, kProgramRead, [&](unsigned) { fired = true; });
  loop_->StartTimer(milliseconds(0), [&] { fired = true; });
  pair.Write("x");
  std::this_thread::sleep_for(milliseconds(20));
  loop_.reset();
  MessagesOf(milliseconds(30));
  EXPECT_FALSE(fired);
}

}  // namespace
}  // namespace mirelo::windows
