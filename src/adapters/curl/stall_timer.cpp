#include "adapters/curl/stall_timer.h"

#include <algorithm>
#include <chrono>

namespace mirelo::curl {

StallTimer::StallTimer(host::MessageLoop& loop, Transfer& transfer) : loop_(loop), transfer_(transfer) {
  transfer_.BeginWait();
  Start(transfer_.LeastPatience());
}

StallTimer::~StallTimer() {
  loop_.StopTimer(timer_);
  transfer_.EndWait();
}

void StallTimer::Start(Transfer::Clock::duration time) {
  const auto delay = std::chrono::ceil<host::MessageLoop::Milliseconds>(std::max(time, time.zero()));
  timer_ = loop_.StartTimer(delay, [this] { Check(); });
}

// The timer is not moved at each activity but looks, when it falls due, how much of the time is left.
void StallTimer::Check() {
  const auto patience = transfer_.Patience();
  if (patience <= patience.zero()) return transfer_.GiveUp();
  Start(std::min(patience, transfer_.LeastPatience()));
}

}  // namespace mirelo::curl
