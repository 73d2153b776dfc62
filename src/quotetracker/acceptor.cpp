#include "quotetracker/acceptor.h"

#include <chrono>
#include <system_error>
#include <utility>

namespace mirelo::quotetracker {
namespace {

constexpr auto kRest = std::chrono::milliseconds(100);

}  // namespace

Acceptor::Acceptor(Reactor& reactor, FileDescriptor listener, std::function<void(FileDescriptor)> take)
    : reactor_(reactor), listener_(std::move(listener)), take_(std::move(take)) {
  watch_ = reactor_.Watch(listener_.get(), Reactor::kRead, [this](unsigned) { AcceptAll(); });
}

Acceptor::~Acceptor() {
  reactor_.StopTimer(rest_);
  reactor_.Unwatch(watch_);
}

void Acceptor::AcceptAll() {
  for (;;) {
    Accepted accepted = Accept(listener_);
    if (accepted.socket) {
      Take(std::move(accepted.socket));
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

void Acceptor::Take(FileDescriptor socket) {
  try {
    take_(std::move(socket));
  } catch (const std::system_error&) {
    // The machine cannot watch one more; unwinding has closed it.
  }
}

}  // namespace mirelo::quotetracker
