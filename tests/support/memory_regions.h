#pragma once

#include <vector>

namespace mirelo::testing {

// A stretch of memory that this process may write to.
struct MemoryRegion {
  const char* begin;
  const char* end;
};

std::vector<MemoryRegion> WritableMemory();

}  // namespace mirelo::testing
