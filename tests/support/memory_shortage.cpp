#include "support/memory_shortage.h"

#include <cstdlib>
#include <limits>
#include <new>

namespace {

constexpr std::size_t kNone = std::numeric_limits<std::size_t>::max();
thread_local std::size_t failing_size = kNone;  // the next request of this size or above fails

}  // namespace

// None of these goes into its callers: there the compiler would miss the other of the two.
[[gnu::noinline]] void* operator new(std::size_t size) {
  if (size >= failing_size) {
    failing_size = kNone;
    throw std::bad_alloc();
  }
  void* const memory = std::malloc(size == 0 ? 1 : size);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}
// What asks so has another way, so it is refused nothing. Without this its memory would come from elsewhere
// than it goes.
[[gnu::noinline]] void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  return std::malloc(size == 0 ? 1 : size);
}
[[gnu::noinline]] void operator delete(void* memory) noexcept { std::free(memory); }
[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
[[gnu::noinline]] void operator delete(void* memory, const std::nothrow_t&) noexcept { std::free(memory); }

namespace mirelo::testing {

MemoryShortage::MemoryShortage(std::size_t bytes) { failing_size = bytes; }
MemoryShortage::~MemoryShortage() { failing_size = kNone; }

}  // namespace mirelo::testing
