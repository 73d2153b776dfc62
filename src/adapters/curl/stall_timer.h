#pragma once

#include "adapters/curl/transfer.h"
#include "host/message_loop.h"

namespace mirelo::curl {

// Watches over a transfer for as long as somebody waits for it: gives it up when the other side has done
// nothing for too long, or has not come to an end in all the time that it may take.
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
