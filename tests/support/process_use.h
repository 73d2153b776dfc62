#pragma once

#include <cstddef>

namespace mirelo::testing {

// What this process has of the machine at this moment.
struct ProcessUse {
  std::size_t descriptors = 0;
  std::size_t resident = 0;  // bytes of memory that it occupies
  std::size_t in_use = 0;    // bytes that it has allocated and not freed

  static ProcessUse Now();
};

}  // namespace mirelo::testing
