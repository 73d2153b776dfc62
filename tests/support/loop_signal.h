#pragma once

#include <functional>
#include <utility>

#include "host/message_loop.h"
#include "support/socket_pair.h"

namespace mirelo::testing {

// Lets another thread, such as a server's script, have a function called once on the loop's thread. The loop
// must outlive this.
class LoopSignal {
 public:
  LoopSignal(host::MessageLoop& loop, std::function<void()> handler)
      : loop_(loop), handler_(std::move(handler)) {
    watch_ = loop_.Watch(ends_.near, host::MessageLoop::kRead, [this](unsigned) {
      loop_.Unwatch(watch_);
      handler_();
    });
  }
  ~LoopSignal() { loop_.Unwatch(watch_); }
  LoopSignal(const LoopSignal&) = delete;
  LoopSignal& operator=(const LoopSignal&) = delete;

  // May be called on any thread. Raised again, it has no effect.
  void Raise() const { ends_.Write("!"); }

 private:
  host::MessageLoop& loop_;
  std::function<void()> handler_;
  SocketPair ends_;
  host::MessageLoop::Token watch_ = 0;
};

}  // namespace mirelo::testing
