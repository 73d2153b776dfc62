#pragma once

#ifndef _WIN32
#include <signal.h>
#endif

namespace mirelo::poll {

// All signals are kept from the calling thread for as long as this lives, and for ever from threads that it
// starts meanwhile.
class BlockedSignals {
 public:
#ifdef _WIN32  // where there are none
  BlockedSignals() {}
  ~BlockedSignals() {}
#else
  BlockedSignals() {
    sigset_t all;
    ::sigfillset(&all);
    ::pthread_sigmask(SIG_SETMASK, &all, &former_);
  }
  ~BlockedSignals() { ::pthread_sigmask(SIG_SETMASK, &former_, nullptr); }
#endif
  BlockedSignals(const BlockedSignals&) = delete;
  BlockedSignals& operator=(const BlockedSignals&) = delete;

#ifndef _WIN32
 private:
  sigset_t former_;
#endif
};

}  // namespace mirelo::poll
