#pragma once

#include "adapters/curl/transfer.h"
#include "host/message_loop.h"

namespace mirelo::curl {

// Gives a transfer up, while somebody waits for it, when the other side has done nothing for too long or has
// used up all the time that it has.
class StallTimer {
 public:
  StallTimer(host::MessageLoop& loop, Transfer& transfer);
  ~StallTimer();
  StallTimer(const StallTimer&) = delete;
  StallTimer& operator=(const StallTimer&) = delete;

 private:
  void Start(Transfer::Clock::duration time);
  void Check();

  host::MessageLoop& loop_;
  Transfer& transfer_;
  host::MessageLoop::Token timer_ = 0;
};

}  // namespace mirelo::curl
