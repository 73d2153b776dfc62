#include "app/interrupt.h"

#include <sys/signalfd.h>
#include <unistd.h>

#include <csignal>

namespace mirelo::app {

namespace {

sigset_t StopSignals() {
  sigset_t signals;
  sigemptyset(&signals);
  sigaddset(&signals, SIGINT);
  sigaddset(&signals, SIGTERM);
  sigaddset(&signals, SIGHUP);
  return signals;
}

}  // namespace

Interrupt::Interrupt(host::MessageLoop& loop, Second second) : loop_(loop) {
  const sigset_t signals = StopSignals();
  ::sigprocmask(SIG_BLOCK, &signals, nullptr);
  descriptor_ = ::signalfd(-1, &signals, SFD_NONBLOCK | SFD_CLOEXEC);
  watch_ = loop_.Watch(descriptor_, host::MessageLoop::kRead, [this, second](unsigned) {
    signalfd_siginfo info;
    if (::read(descriptor_, &info, sizeof info) != sizeof info) return;
    requested_ = true;
    if (second == Second::kEndsTheProgram) {
      const sigset_t caught = StopSignals();
      ::sigprocmask(SIG_UNBLOCK, &caught, nullptr);  // the next one is not ours
    }
    Stopped.Raise();
  });
}

Interrupt::~Interrupt() {
  loop_.Unwatch(watch_);
  ::close(descriptor_);
  const sigset_t signals = StopSignals();
  ::sigprocmask(SIG_UNBLOCK, &signals, nullptr);
}

bool Interrupt::Pause(host::MessageLoop::Milliseconds time) {
  bool passed = false;
  const auto timer = loop_.StartTimer(time, [&passed] { passed = true; });
  loop_.RunUntil([&] { return passed || requested_; });
  loop_.StopTimer(timer);
  return passed && !requested_;
}

}  // namespace mirelo::app
