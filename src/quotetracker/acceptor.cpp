#include "quotetracker/acceptor.h"

#include <chrono>
#include <utility>

namespace mirelo::quotetracker {
namespace {

constexpr auto kRest = std::chrono::milliseconds(100);

}  // namespace

Acceptor::Acceptor(Reactor& reactor, FileDescriptor listener, std::function<void(FileDescriptor)> take)
    : reactor_(reactor), listener_(std::move(listener)), take_(std::move(take)) {
  watch_ = reactor_.Watch(listener_.get(), Reactor::kRead, [this] { AcceptAll(); });
}

Acceptor::~Acceptor() {
  reactor_.StopTimer(rest_);
  reactor_.Unwatch(watch_);
}

void Acceptor::AcceptAll() {
  for (;;) {
    Accepted accepted = Accept(listener_);
    if (accepted.socket) {
      take_(std::move(accepted.socket));
      continue;
    }
    if (accepted.refused) {
      reactor_.Rewatch(watch_, 0);
      rest_ = reactor_.StartTimer(std::chrono::steady_clock::now() + kRest,
                                  [this] { reactor_.Rewatch(watch_, Reactor::kRead); });
    }
    return;
  }
}

}  // namespace mirelo::quotetracker
