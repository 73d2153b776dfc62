#include "support/memory_shortage.h"

#include <cstdlib>
#include <limits>
#include <new>

namespace {

constexpr std::size_t kNone = std::numeric_limits<std::size_t>::max();
thread_local std::size_t failing_size = kNone;  // the next request of this size or above fails

}  // namespace

void* operator new(std::size_t size) {
  if (size >= failing_size) {
    failing_size = kNone;
    throw std::bad_alloc();
  }
  void* const memory = std::malloc(size == 0 ? 1 : size);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

namespace mirelo::testing {

MemoryShortage::MemoryShortage(std::size_t bytes) { failing_size = bytes; }
MemoryShortage::~MemoryShortage() { failing_size = kNone; }

}  // namespace mirelo::testing
