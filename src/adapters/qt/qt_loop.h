#pragma once

#include <QTimer>
#include <chrono>
#include <cstddef>
#include <deque>
#include <exception>
#include <functional>
#include <map>
#include <memory>
#include <optional>

#include "adapters/poll/poll_loop.h"
#include "host/message_loop.h"

class QSocketNotifier;

namespace mirelo::qt {

// The message loop of a program with windows: Qt does the waiting, so that windows live on while it runs, and
// the steps are those of the loop over poll(2), so that handlers meet the same rules in both.
//
// A Qt application object must exist before the loop and outlive it. Notifiers and a timer of Qt's only tell
// that a step is due. It is run when Qt has returned to Yield or RunUntil; should Qt wait in a loop of its
// own, as it does while text is dragged, the step is run from there.
class QtLoop final : public host::MessageLoop {
 public:
  using Time = poll::PollLoop::Time;

  // `now` is where timers get their time from. It must not go back. Waits of RunUntil are always waits of
  // real time.
  explicit QtLoop(std::function<Time()> now = std::chrono::steady_clock::now);
  ~QtLoop() override;
  QtLoop(const QtLoop&) = delete;
  QtLoop& operator=(const QtLoop&) = delete;

  Token Watch(int descriptor, unsigned interest, std::function<void(unsigned ready)> handler) override;
  void Rewatch(Token watch, unsigned interest) override;
  void Unwatch(Token watch) override;
  Token StartTimer(Milliseconds delay, std::function<void()> handler) override;
  void StopTimer(Token timer) override;

  // Handles the events of windows, too.
  void Yield() override;
  void RunUntil(const std::function<bool()>& done) override;

  // To be called around whatever Qt calls in this program: runs `act`, and keeps what it throws, since
  // exceptions must not pass through Qt's frames. What was kept is thrown by the innermost Yield or RunUntil
  // as soon as Qt has returned to it.
  void Guard(const std::function<void()>& act);

  std::size_t WatchCount() const { return steps_.WatchCount(); }
  std::optional<Time> NextTimer() const { return steps_.NextTimer(); }

 private:
  // Qt's notifiers of one descriptor; null for what nobody waits for.
  struct Alarms {
    std::unique_ptr<QSocketNotifier> read;
    std::unique_ptr<QSocketNotifier> write;
  };

  // Null for `done` when Qt is not to wait.
  void HandleQtEvents(const std::function<bool()>* done);
  void BeforeQtWaits();
  void Step();
  void OnAlarm();
  void SetAlarms();
  void SetNotifiers();
  void SetTimer();
  void SetNotifier(std::unique_ptr<QSocketNotifier>& notifier, int descriptor, bool write, bool wanted);
  void ThrowKept();

  std::function<Time()> now_;
  std::map<int, Alarms> alarms_;  // by descriptor
  QTimer timer_;
  std::deque<std::exception_ptr> kept_;
  int waiting_level_;  // of Qt's nested loops, in which a frame of ours waits for Qt to return
  const std::function<bool()>* done_ = nullptr;  // of that frame
  poll::PollLoop steps_;  // last: handlers may end watches of this loop when they are destroyed
};

}  // namespace mirelo::qt
