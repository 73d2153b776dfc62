#include "quotetracker/ending.h"

#include <sys/prctl.h>
#include <unistd.h>

#include "terminal/stop_signals.h"

namespace mirelo::quotetracker {
namespace {

// Sent by the kernel when the parent ends. It also comes when only the parent's thread that started us has
// ended, and never comes when the parent was gone before we asked for it; so it only makes us look who our
// parent is.
constexpr int kParentSignal = SIGUSR1;
constexpr timespec kLookAgain{0, 500'000'000};

}  // namespace

Ending::Ending(bool with_parent) : with_parent_(with_parent), parent_(::getppid()) {
  signals_ = terminal::SeenStopSignals();
  sigdelset(&signals_, SIGHUP);  // which ends it at once
  sigaddset(&signals_, kParentSignal);
  ::pthread_sigmask(SIG_BLOCK, &signals_, nullptr);
  if (with_parent_) ::prctl(PR_SET_PDEATHSIG, kParentSignal);
}

void Ending::Wait() {
  while (!ParentIsGone()) {
    const int signal =
        with_parent_ ? ::sigtimedwait(&signals_, nullptr, &kLookAgain) : ::sigwaitinfo(&signals_, nullptr);
    if (signal == SIGINT || signal == SIGTERM) return;
  }
}

bool Ending::ParentIsGone() const { return with_parent_ && ::getppid() != parent_; }

}  // namespace mirelo::quotetracker
