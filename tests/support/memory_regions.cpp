#include "support/memory_regions.h"

#include <cstdint>
#include <fstream>
#include <sstream>
#include <string>

namespace mirelo::testing {

// As /proc/self/maps tells of them: "7f00c000-7f00d000 rw-p 00000000 00:00 0".
std::vector<MemoryRegion> WritableMemory() {
  std::vector<MemoryRegion> regions;
  std::ifstream maps("/proc/self/maps");
  for (std::string line; std::getline(maps, line);) {
    std::istringstream words(line);
    std::uintptr_t begin = 0;
    std::uintptr_t end = 0;
    char dash = 0;
    std::string rights;
    words >> std::hex >> begin >> dash >> end >> rights;
    if (!rights.starts_with("rw")) continue;
    regions.push_back({reinterpret_cast<const char*>(begin), reinterpret_cast<const char*>(end)});
  }
  return regions;
}

}  // namespace mirelo::testing
