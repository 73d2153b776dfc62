#pragma once

#include "adapters/windows/views/native.h"

#include <functional>
#include <utility>

#include "adapters/poll/poll_loop.h"
#include "host/message_loop.h"

namespace mirelo::testing {

// A loop that takes the thread's messages as programs of Windows do that know nothing of our windows, and the
// steps of the loop over poll(2) between them.
class MessagePump final : public host::MessageLoop {
 public:
  Token Watch(int descriptor, unsigned interest, std::function<void(unsigned ready)> handler) override {
    return steps_.Watch(descriptor, interest, std::move(handler));
  }
  void Rewatch(Token watch, unsigned interest) override { steps_.Rewatch(watch, interest); }
  void Unwatch(Token watch) override { steps_.Unwatch(watch); }
  Token StartTimer(Milliseconds delay, std::function<void()> handler) override {
    return steps_.StartTimer(delay, std::move(handler));
  }
  void StopTimer(Token timer) override { steps_.StopTimer(timer); }
  void Yield() override {
    MSG message{};
    while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != 0) {
      ::TranslateMessage(&message);
      ::DispatchMessageW(&message);
    }
    steps_.Yield();
  }
  void RunUntil(const std::function<bool()>& done) override {
    constexpr DWORD kBetweenSteps = 2;  // milliseconds
    while (!done()) {
      MSG message{};
      if (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != 0) {
        ::TranslateMessage(&message);
        ::DispatchMessageW(&message);
      } else {
        steps_.Yield();
        if (!done()) ::MsgWaitForMultipleObjects(0, nullptr, FALSE, kBetweenSteps, QS_ALLINPUT);
      }
    }
  }

 private:
  poll::PollLoop steps_;
};

}  // namespace mirelo::testing
