#pragma once

#include <cstdint>
#include <functional>
#include <stdexcept>

#include "host/message_loop.h"

namespace mirelo::testing {

// A message loop to which nothing ever happens: no descriptor becomes ready and no timer falls due. A yield
// costs one call, so what yields can be measured or fuzzed by itself.
class IdleLoop final : public host::MessageLoop {
 public:
  Token Watch(int, unsigned, std::function<void(unsigned)>) override { return ++last_token_; }
  void Rewatch(Token, unsigned) override {}
  void Unwatch(Token) override {}
  Token StartTimer(Milliseconds, std::function<void()>) override { return ++last_token_; }
  void StopTimer(Token) override {}
  void Yield() override {}
  void RunUntil(const std::function<bool()>& done) override {
    if (!done()) throw std::logic_error("RunUntil waits for what never comes");
  }

 private:
  Token last_token_ = 0;
};

}  // namespace mirelo::testing
