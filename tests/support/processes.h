#pragma once

#include <sys/types.h>

#include <vector>

namespace mirelo::testing {

// The processes that this one has started and that have not ended, or not been waited for.
std::vector<pid_t> ChildrenOf(pid_t process);

// Whether a signal has stopped it, as SIGSTOP does: not while it runs, and not once it is ending.
bool IsStopped(pid_t process);

}  // namespace mirelo::testing
