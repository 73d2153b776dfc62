#include <windows.h>

#include "support/memory_regions.h"

namespace mirelo::testing {

std::vector<MemoryRegion> WritableMemory() {
  std::vector<MemoryRegion> regions;
  MEMORY_BASIC_INFORMATION region{};
  for (const char* at = nullptr; ::VirtualQuery(at, &region, sizeof region) != 0;) {
    const char* const begin = static_cast<const char*>(region.BaseAddress);
    at = begin + region.RegionSize;
    const bool is_writable = region.Protect == PAGE_READWRITE || region.Protect == PAGE_WRITECOPY;
    if (region.State == MEM_COMMIT && is_writable) regions.push_back({begin, at});
  }
  return regions;
}

}  // namespace mirelo::testing
