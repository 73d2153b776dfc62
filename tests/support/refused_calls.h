#pragma once

#include <functional>
#include <vector>

namespace mirelo::testing {

// Does `work` on a thread of its own, for which the kernel refuses these calls, by their numbers (SYS_...),
// with this errno: a machine without room for processes, say, or a file system that knows no locks. What
// `work` raises is raised here.
void WithRefusedCalls(const std::vector<long>& calls, int reason, const std::function<void()>& work);

}  // namespace mirelo::testing
