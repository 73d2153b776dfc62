#include "terminal/stop_signals.h"

namespace mirelo::terminal {

sigset_t SeenStopSignals() {
  sigset_t seen;
  sigemptyset(&seen);
  for (const int signal : kStopSignals) {
    struct sigaction now {};
    ::sigaction(signal, nullptr, &now);
    if (now.sa_handler != SIG_IGN) sigaddset(&seen, signal);
  }
  return seen;
}

}  // namespace mirelo::terminal
