#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <utility>

#include "host/message_loop.h"

namespace mirelo::testing {

// Another message loop on which timers fall due so many times sooner: what a program does over a day, its
// sockets included, is done in minutes.
class HurriedLoop final : public host::MessageLoop {
 public:
  HurriedLoop(std::unique_ptr<host::MessageLoop> loop, std::int64_t times)
      : loop_(std::move(loop)), times_(times) {}

  // Never at once where the delay was above 0.
  Token StartTimer(Milliseconds delay, std::function<void()> handler) override {
    return loop_->StartTimer(Milliseconds((delay.count() + times_ - 1) / times_), std::move(handler));
  }
  void StopTimer(Token timer) override { loop_->StopTimer(timer); }
  Token Watch(int descriptor, unsigned interest, std::function<void(unsigned ready)> handler) override {
    return loop_->Watch(descriptor, interest, std::move(handler));
  }
  void Rewatch(Token watch, unsigned interest) override { loop_->Rewatch(watch, interest); }
  void Unwatch(Token watch) override { loop_->Unwatch(watch); }
  void Yield() override { loop_->Yield(); }
  void RunUntil(const std::function<bool()>& done) override { loop_->RunUntil(done); }

 private:
  std::unique_ptr<host::MessageLoop> loop_;
  std::int64_t times_;
};

}  // namespace mirelo::testing
