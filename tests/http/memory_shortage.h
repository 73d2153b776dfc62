#pragma once

namespace mirelo::testing {

// The first `new` of this thread while it lives fails; those behind it, as the ones that report the failure,
// succeed.
class MemoryShortage {
 public:
  MemoryShortage();
  ~MemoryShortage();
  MemoryShortage(const MemoryShortage&) = delete;
  MemoryShortage& operator=(const MemoryShortage&) = delete;
};

}  // namespace mirelo::testing
