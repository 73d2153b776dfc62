#include "app/interrupt.h"

namespace mirelo::app {

Interrupt::Interrupt(host::MessageLoop& loop, Second second) : loop_(loop), stops_(second) {
  watch_ = loop_.Watch(stops_.Descriptor(), host::MessageLoop::kRead, [this](unsigned) {
    if (!stops_.Take()) return;
    requested_ = true;
    Stopped.Raise();
  });
}

Interrupt::~Interrupt() { loop_.Unwatch(watch_); }

bool Interrupt::Pause(host::MessageLoop::Milliseconds time) {
  bool passed = false;
  const auto timer = loop_.StartTimer(time, [&passed] { passed = true; });
  loop_.RunUntil([&] { return passed || requested_; });
  loop_.StopTimer(timer);
  return passed && !requested_;
}

}  // namespace mirelo::app
