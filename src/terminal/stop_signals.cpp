#include "terminal/stop_signals.h"

namespace mirelo::terminal {

bool IsIgnored(int signal) {
  struct sigaction now {};
  ::sigaction(signal, nullptr, &now);
  return now.sa_handler == SIG_IGN;
}

sigset_t SeenStopSignals() {
  sigset_t seen;
  sigemptyset(&seen);
  for (const int signal : kStopSignals) {
    if (!IsIgnored(signal)) sigaddset(&seen, signal);
  }
  return seen;
}

}  // namespace mirelo::terminal
