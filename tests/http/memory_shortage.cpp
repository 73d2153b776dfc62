#include "http/memory_shortage.h"

#include <cstddef>
#include <cstdlib>
#include <new>
#include <utility>

namespace {
thread_local bool next_fails = false;
}

void* operator new(std::size_t size) {
  void* const memory = std::exchange(next_fails, false) ? nullptr : std::malloc(size == 0 ? 1 : size);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

namespace mirelo::testing {

MemoryShortage::MemoryShortage() { next_fails = true; }
MemoryShortage::~MemoryShortage() { next_fails = false; }

}  // namespace mirelo::testing
