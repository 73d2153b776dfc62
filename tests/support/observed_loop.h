#pragma once

#include <functional>
#include <utility>

#include "host/message_loop.h"

namespace mirelo::testing {

// Another message loop, with a look at what it hands to those who watch descriptors through this one.
class ObservedLoop final : public host::MessageLoop {
 public:
  // The other loop must outlive this, and this the loop's watches.
  explicit ObservedLoop(host::MessageLoop& loop) : loop_(loop) {}

  // Called behind each handler of a descriptor, with what the handler was given: what had come is read now.
  std::function<void(unsigned ready)> behind_ready = [](unsigned) {};

  Token Watch(int descriptor, unsigned interest, std::function<void(unsigned ready)> handler) override {
    return loop_.Watch(descriptor, interest, [this, handler = std::move(handler)](unsigned ready) {
      handler(ready);
      behind_ready(ready);
    });
  }
  void Rewatch(Token watch, unsigned interest) override { loop_.Rewatch(watch, interest); }
  void Unwatch(Token watch) override { loop_.Unwatch(watch); }
  Token StartTimer(Milliseconds delay, std::function<void()> handler) override {
    return loop_.StartTimer(delay, std::move(handler));
  }
  void StopTimer(Token timer) override { loop_.StopTimer(timer); }
  void Yield() override { loop_.Yield(); }
  void RunUntil(const std::function<bool()>& done) override { loop_.RunUntil(done); }

 private:
  host::MessageLoop& loop_;
};

}  // namespace mirelo::testing
