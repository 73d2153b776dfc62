#pragma once

#include <cstddef>

namespace mirelo::testing {

// The first `new` of this thread while it lives that asks for at least so many bytes fails; those behind it,
// as the ones that report the failure, succeed. It replaces the program's `new`, so a test that wants it
// names memory_shortage.cpp among its own sources.
class MemoryShortage {
 public:
  explicit MemoryShortage(std::size_t bytes = 0);
  ~MemoryShortage();
  MemoryShortage(const MemoryShortage&) = delete;
  MemoryShortage& operator=(const MemoryShortage&) = delete;
};

}  // namespace mirelo::testing
