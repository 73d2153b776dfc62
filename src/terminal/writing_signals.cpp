#include "terminal/writing_signals.h"

namespace mirelo::terminal {

void IgnoreWritingSignals() {
  for (const int signal : kWritingSignals) std::signal(signal, SIG_IGN);
}

void RestoreWritingSignals() {
  for (const int signal : kWritingSignals) std::signal(signal, SIG_DFL);
}

}  // namespace mirelo::terminal
