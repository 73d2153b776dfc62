#include "quotetracker/acceptor.h"

#include <chrono>
#include <utility>

namespace mirelo::quotetracker {
namespace {

constexpr auto kRest = std::chrono::milliseconds(100);

}  // namespace

Acceptor::Acceptor(poll::PollLoop& loop, poll::Descriptor listener,
                   std::function<void(poll::Descriptor)> take)
    : loop_(loop), listener_(std::move(listener)), take_(std::move(take)) {
  watch_ = loop_.Watch(listener_.Number(), poll::PollLoop::kRead, [this](unsigned) { AcceptAll(); });
}

Acceptor::~Acceptor() {
  loop_.StopTimer(rest_);
  loop_.Unwatch(watch_);
}

void Acceptor::AcceptAll() {
  for (;;) {
    Accepted accepted = Accept(listener_);
    if (accepted.socket.IsOpen()) {
      take_(std::move(accepted.socket));
      continue;
    }
    if (accepted.refused) {
      loop_.Rewatch(watch_, 0);
      rest_ = loop_.StartTimerAt(std::chrono::steady_clock::now() + kRest,
                                 [this] { loop_.Rewatch(watch_, poll::PollLoop::kRead); });
    }
    return;
  }
}

}  // namespace mirelo::quotetracker
