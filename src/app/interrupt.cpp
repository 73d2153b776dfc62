#include "app/interrupt.h"

#include <sys/signalfd.h>
#include <unistd.h>

#include "terminal/stop_signals.h"

namespace mirelo::app {

Interrupt::Interrupt(host::MessageLoop& loop, Second second)
    : loop_(loop), signals_(terminal::SeenStopSignals()) {
  ::sigprocmask(SIG_BLOCK, &signals_, nullptr);
  descriptor_ = ::signalfd(-1, &signals_, SFD_NONBLOCK | SFD_CLOEXEC);
  watch_ = loop_.Watch(descriptor_, host::MessageLoop::kRead, [this, second](unsigned) {
    signalfd_siginfo info;
    if (::read(descriptor_, &info, sizeof info) != sizeof info) return;
    requested_ = true;
    if (second == Second::kEndsTheProgram)
      ::sigprocmask(SIG_UNBLOCK, &signals_, nullptr);  // the next one is not ours
    Stopped.Raise();
  });
}

Interrupt::~Interrupt() {
  loop_.Unwatch(watch_);
  ::close(descriptor_);
  ::sigprocmask(SIG_UNBLOCK, &signals_, nullptr);
}

bool Interrupt::Pause(host::MessageLoop::Milliseconds time) {
  bool passed = false;
  const auto timer = loop_.StartTimer(time, [&passed] { passed = true; });
  loop_.RunUntil([&] { return passed || requested_; });
  loop_.StopTimer(timer);
  return passed && !requested_;
}

}  // namespace mirelo::app
