#pragma once

#include <sys/types.h>

#include <vector>

namespace mirelo::testing {

// The processes that this one has started and that have not ended, or not been waited for.
std::vector<pid_t> ChildrenOf(pid_t process);

}  // namespace mirelo::testing
