#include "adapters/qt/qt_loop.h"

#include <poll.h>

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QEventLoop>
#include <QSocketNotifier>
#include <QThread>
#include <algorithm>
#include <limits>
#include <utility>

namespace mirelo::qt {

namespace {

constexpr int kNotWaiting = -1;

// Gives a variable another value until the end of a block, however that ends.
template <class Value>
class Meanwhile {
 public:
  Meanwhile(Value& variable, Value value) : variable_(variable), former_(std::exchange(variable, value)) {}
  ~Meanwhile() { variable_ = former_; }
  Meanwhile(const Meanwhile&) = delete;
  Meanwhile& operator=(const Meanwhile&) = delete;

 private:
  Value& variable_;
  Value former_;
};

}  // namespace

QtLoop::QtLoop(std::function<Time()> now) : now_(now), waiting_level_(kNotWaiting), steps_(std::move(now)) {
  timer_.setSingleShot(true);
  timer_.setTimerType(Qt::PreciseTimer);
  QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { OnAlarm(); });
  QObject::connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, &timer_,
                   [this] { BeforeQtWaits(); });
}

QtLoop::~QtLoop() = default;

host::MessageLoop::Token QtLoop::Watch(int descriptor, unsigned interest,
                                       std::function<void(unsigned ready)> handler) {
  const Token token = steps_.Watch(descriptor, interest, std::move(handler));
  SetNotifiers();
  return token;
}

void QtLoop::Rewatch(Token watch, unsigned interest) {
  steps_.Rewatch(watch, interest);
  SetNotifiers();
}

void QtLoop::Unwatch(Token watch) {
  steps_.Unwatch(watch);
  SetNotifiers();
}

host::MessageLoop::Token QtLoop::StartTimer(Milliseconds delay, std::function<void()> handler) {
  const Token token = steps_.StartTimer(delay, std::move(handler));
  SetTimer();
  return token;
}

void QtLoop::StopTimer(Token timer) {
  steps_.StopTimer(timer);
  SetTimer();
}

void QtLoop::Yield() {
  HandleQtEvents(nullptr);
  Step();
}

void QtLoop::RunUntil(const std::function<bool()>& done) {
  while (!done()) {
    HandleQtEvents(&done);
    Step();
  }
}

void QtLoop::Guard(const std::function<void()>& act) {
  try {
    act();
  } catch (...) {
    kept_.push_back(std::current_exception());
  }
}

void QtLoop::HandleQtEvents(const std::function<bool()>* done) {
  ThrowKept();
  SetAlarms();
  {
    const Meanwhile waiting(waiting_level_, QThread::currentThread()->loopLevel());
    const Meanwhile asking(done_, done);
    QCoreApplication::processEvents(done == nullptr ? QEventLoop::AllEvents
                                                    : QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
  }
  ThrowKept();
}

// Qt may handle an event and wait all the same, so whether to wait is asked here, too.
void QtLoop::BeforeQtWaits() {
  if (waiting_level_ != QThread::currentThread()->loopLevel() || done_ == nullptr) return;
  bool done = false;
  Guard([&] { done = (*done_)(); });
  if (done || !kept_.empty()) QAbstractEventDispatcher::instance()->interrupt();
}

void QtLoop::Step() {
  const Meanwhile not_waiting(waiting_level_, kNotWaiting);
  steps_.Yield();
}

void QtLoop::OnAlarm() {
  // Between a frame of ours and this slot is no loop of Qt's: Qt returns to that frame now, which steps.
  if (waiting_level_ == QThread::currentThread()->loopLevel()) return;
  Guard([this] { Step(); });
  SetAlarms();
}

// Steps change what is to be waited for in ways that don't pass through here: timers fire, and a descriptor
// whose handlers are nested too deep is left alone.
void QtLoop::SetAlarms() {
  SetNotifiers();
  SetTimer();
}

void QtLoop::SetNotifiers() {
  std::map<int, short> wanted;
  for (const pollfd& slot : steps_.Polled()) {
    if (slot.fd >= 0) wanted[slot.fd] = slot.events;
  }
  std::erase_if(alarms_, [&](const auto& alarm) { return wanted.count(alarm.first) == 0; });
  for (const auto& [descriptor, events] : wanted) {
    Alarms& alarms = alarms_[descriptor];
    SetNotifier(alarms.read, descriptor, false, (events & POLLIN) != 0);
    SetNotifier(alarms.write, descriptor, true, (events & POLLOUT) != 0);
  }
}

void QtLoop::SetNotifier(std::unique_ptr<QSocketNotifier>& notifier, int descriptor, bool write,
                         bool wanted) {
  if (wanted == (notifier != nullptr)) return;
  if (!wanted) return notifier.reset();
  notifier =
      std::make_unique<QSocketNotifier>(descriptor, write ? QSocketNotifier::Write : QSocketNotifier::Read);
  QObject::connect(notifier.get(), &QSocketNotifier::activated, &timer_, [this] { OnAlarm(); });
}

void QtLoop::SetTimer() {
  const auto next = steps_.NextTimer();
  if (!next) return timer_.stop();
  const auto wait = std::chrono::ceil<Milliseconds>(*next - now_()).count();
  timer_.start(static_cast<int>(std::clamp<decltype(wait)>(wait, 0, std::numeric_limits<int>::max())));
}

void QtLoop::ThrowKept() {
  if (kept_.empty()) return;
  const std::exception_ptr first = kept_.front();
  kept_.pop_front();
  std::rethrow_exception(first);
}

}  // namespace mirelo::qt
