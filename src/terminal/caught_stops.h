#pragma once

#include <array>
#include <csignal>

#include "terminal/stop_signals.h"

namespace mirelo::terminal {

// Catches what asks this process to end (SeenStopSignals), for as long as it lives, and counts: two that come
// before anybody has looked are two. One may exist at a time.
//
// Not every signal is another wish. Some senders tell the process and then its group, as timeout(1) does, so
// what comes within twenty milliseconds of one that counted is the same. The end of a terminal is told by the
// shell and by the system, so it never counts behind another.
class CaughtStops {
 public:
  // What becomes of the second: it ends the process at once, whatever that is at, or it is counted as the
  // first was.
  enum class Second { kEndsTheProcess, kIsCounted };

  explicit CaughtStops(Second second);
  ~CaughtStops();
  CaughtStops(const CaughtStops&) = delete;
  CaughtStops& operator=(const CaughtStops&) = delete;

  // Readable while there is one that was not taken.
  int Descriptor() const;
  // Takes one; false where there is none.
  bool Take() const;

 private:
  sigset_t signals_ = SeenStopSignals();
  std::array<struct sigaction, kStopSignals.size()> before_{};
};

// Whether the signal is caught now.
bool IsCaught(int signal);

// Has `handler` called where a caught signal ends the process, in place of what is usual; SIG_DFL for that
// again. The handler is to end it.
void EndStopsWith(void (*handler)(int));

}  // namespace mirelo::terminal
