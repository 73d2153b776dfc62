#include "wire/side_host.h"

namespace mirelo::wire {

class SideHost::Loop : public host::MessageLoop {
 public:
  explicit Loop(SideHost& side) : side_(side), inner_(side.outer_.loop()) {}

  Token Watch(int descriptor, unsigned interest, std::function<void(unsigned ready)> handler) override {
    return inner_.Watch(descriptor, interest, [&side = side_, handler = std::move(handler)](unsigned ready) {
      side.Guard([&] { handler(ready); });
    });
  }
  void Rewatch(Token watch, unsigned interest) override { inner_.Rewatch(watch, interest); }
  void Unwatch(Token watch) override { inner_.Unwatch(watch); }
  Token StartTimer(Milliseconds delay, std::function<void()> handler) override {
    return inner_.StartTimer(delay, [&side = side_, handler = std::move(handler)] { side.Guard(handler); });
  }
  void StopTimer(Token timer) override { inner_.StopTimer(timer); }
  void Yield() override {
    const host::HostScope others(side_.outer_);
    inner_.Yield();
  }
  void RunUntil(const std::function<bool()>& done) override {
    const host::HostScope others(side_.outer_);
    inner_.RunUntil(done);
  }

 private:
  SideHost& side_;
  host::MessageLoop& inner_;
};

SideHost::SideHost(host::Host& outer, const Parts& parts)
    : outer_(outer),
      loop_(std::make_unique<Loop>(*this)),
      registry_(outer.registry()),
      plain_sockets_(parts.sockets(*loop_)),
      sockets_(std::make_unique<ObservedSockets>(*plain_sockets_, *loop_)),
      plain_internet_(parts.internet(*loop_)),
      internet_(std::make_unique<MendedReplies>(*plain_internet_)) {}

SideHost::~SideHost() = default;

host::MessageLoop& SideHost::loop() { return *loop_; }

void SideHost::Guard(const std::function<void()>& handler) noexcept {
  const host::HostScope scope(*this);
  try {
    handler();
  } catch (...) {
    try {
      if (failed_) failed_(std::current_exception());
    } catch (...) {  // nobody is left to tell
    }
  }
}

}  // namespace mirelo::wire
