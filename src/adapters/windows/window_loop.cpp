#include "adapters/windows/system.h"

#include "adapters/windows/window_loop.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "adapters/windows/socket_messages.h"

namespace mirelo::windows {

namespace {

using std::chrono::milliseconds;

constexpr std::uintptr_t kTimerId = 1;
constexpr milliseconds kLongestWait = std::chrono::hours(24);

// A Yield ends although the program's windows never rest.
constexpr int kMessagesOfAYield = 100;

UINT MillisecondsUntil(WindowLoop::Time due, WindowLoop::Time now) {
  const auto left = std::chrono::ceil<milliseconds>(due - now);
  return static_cast<UINT>(std::clamp(left, milliseconds::zero(), kLongestWait).count());
}

}  // namespace

// Until the end of a block steps are taken here. What they leave to be waited for the system is told then.
class WindowLoop::Stepping {
 public:
  explicit Stepping(WindowLoop& loop) : loop_(loop) { ++loop_.depth_; }
  ~Stepping() {
    loop_.AskForSteps();
    if (--loop_.depth_ > 0 || !loop_.exit_code_) return;
    ::PostQuitMessage(*std::exchange(loop_.exit_code_, std::nullopt));
  }
  Stepping(const Stepping&) = delete;
  Stepping& operator=(const Stepping&) = delete;

 private:
  WindowLoop& loop_;
};

WindowLoop::WindowLoop(Failed failed, std::function<Time()> now)
    : now_(now),
      failures_(std::move(failed)),
      window_([this](unsigned message, std::uintptr_t of) { TakeMessage(message, of); }),
      steps_(std::move(now)) {}

WindowLoop::~WindowLoop() {
  for (const auto& [socket, events] : asked_) AskForMessages(socket, window_.Handle(), 0, 0);
}

host::MessageLoop::Token WindowLoop::Watch(int descriptor, unsigned interest,
                                           std::function<void(unsigned ready)> handler) {
  asked_.erase(descriptor);  // a number that came back is another socket
  const Token token = steps_.Watch(descriptor, interest, std::move(handler));
  AskForSteps();
  return token;
}

void WindowLoop::Rewatch(Token watch, unsigned interest) {
  steps_.Rewatch(watch, interest);
  AskForSteps();
}

void WindowLoop::Unwatch(Token watch) {
  steps_.Unwatch(watch);
  AskForSteps();
}

host::MessageLoop::Token WindowLoop::StartTimer(Milliseconds delay, std::function<void()> handler) {
  const Token token = steps_.StartTimer(delay, std::move(handler));
  AskForSteps();
  return token;
}

void WindowLoop::StopTimer(Token timer) {
  steps_.StopTimer(timer);
  AskForSteps();
}

void WindowLoop::Yield() {
  const Stepping stepping(*this);
  steps_.Yield();
  HandleMessages();
}

void WindowLoop::RunUntil(const std::function<bool()>& done) {
  const Stepping stepping(*this);
  while (!done()) {
    HandleMessages();
    if (done()) break;
    AskForSteps();
    WaitForMessages();
    steps_.Yield();
  }
}

// One of our window's, out of whatever loop.
void WindowLoop::TakeMessage(unsigned message, std::uintptr_t of) {
  Forget(message, of);
  TakeOwnSocketMessages();
  failures_.Guard([this] {
    // A handler may run a loop of Windows' own, in which sockets are to be heard of as well.
    AskForSteps();
    const Stepping stepping(*this);
    steps_.Yield();
  });
}

// Those that are in the queue: one step sees to all sockets. Were they left there, each would ask for another
// one, and there would be more with each step.
void WindowLoop::TakeOwnSocketMessages() {
  constexpr UINT kSocket = MessageWindow::kSocket;
  MSG message{};
  while (::PeekMessageW(&message, window_.Handle(), kSocket, kSocket, PM_REMOVE | PM_NOYIELD)) {
    if (message.message != kSocket) {  // the program is to end
      exit_code_ = static_cast<int>(message.wParam);
      break;
    }
    Forget(message.message, message.wParam);
  }
}

// What a message has told is asked for anew: the system may keep to itself what it has told once.
void WindowLoop::Forget(unsigned message, std::uintptr_t of) {
  if (message == MessageWindow::kSocket) {
    asked_.erase(static_cast<int>(of));
  } else {
    asked_timer_.reset();
    ::KillTimer(window_.Handle(), kTimerId);
  }
}

// Messages of our own window only say that a step is due, which the caller takes by itself.
void WindowLoop::HandleMessages() {
  failures_.WaitIn(
      [this] {
        MSG message{};
        for (int i = 0; i < kMessagesOfAYield && ::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE); ++i) {
          if (message.message == WM_QUIT) {
            exit_code_ = static_cast<int>(message.wParam);
          } else if (message.hwnd == window_.Handle()) {
            Forget(message.message, message.wParam);
          } else {
            ::TranslateMessage(&message);
            ::DispatchMessageW(&message);
          }
        }
      },
      nullptr);
}

void WindowLoop::WaitForMessages() const {
  const std::optional<Time> next = steps_.NextTimer();
  const DWORD limit = next ? MillisecondsUntil(*next, now_()) : INFINITE;
  ::MsgWaitForMultipleObjectsEx(0, nullptr, limit, QS_ALLINPUT, MWMO_INPUTAVAILABLE);
}

void WindowLoop::AskForSteps() {
  AskOfSockets();
  AskOfTimer();
}

void WindowLoop::AskOfSockets() {
  std::map<int, short> wanted;
  for (const poll::pollfd& each : steps_.Polled()) {
    if (each.fd >= 0) wanted.emplace(each.fd, each.events);
  }
  for (const auto& [socket, events] : asked_) {
    if (!wanted.contains(socket)) AskForMessages(socket, window_.Handle(), 0, 0);
  }
  std::vector<poll::pollfd> anew;
  for (const auto& [socket, events] : wanted) {
    const auto asked = asked_.find(socket);
    if (asked != asked_.end() && asked->second == events) continue;
    AskForMessages(socket, window_.Handle(), MessageWindow::kSocket, events);
    anew.push_back({socket, events, 0});
  }
  asked_ = std::move(wanted);
  TellOfWhatIsReady(std::move(anew));
}

// The system does not repeat the end of a connection.
void WindowLoop::TellOfWhatIsReady(std::vector<poll::pollfd> sockets) const {
  if (sockets.empty() || poll::WaitFor(sockets, std::chrono::nanoseconds::zero()) == 0) return;
  for (const poll::pollfd& each : sockets) {
    if (each.revents == 0) continue;
    ::PostMessageW(window_.Handle(), MessageWindow::kSocket, static_cast<WPARAM>(each.fd), 0);
  }
}

void WindowLoop::AskOfTimer() {
  const std::optional<Time> next = steps_.NextTimer();
  if (next == asked_timer_) return;
  asked_timer_ = next;
  if (next) {
    ::SetTimer(window_.Handle(), kTimerId, MillisecondsUntil(*next, now_()), nullptr);
  } else {
    ::KillTimer(window_.Handle(), kTimerId);
  }
}

}  // namespace mirelo::windows
