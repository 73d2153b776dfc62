#include "adapters/sodium/guarded_memory.h"

#include <sodium.h>

#include "automation/runtime_error.h"

namespace mirelo::sodium {

host::Secret MakeGuarded(std::size_t size) {
  void* memory = sodium_init() < 0 ? nullptr : sodium_malloc(size);
  if (memory == nullptr) throw Errors::OutOfMemory();
  return host::Secret(static_cast<char*>(memory), size, [](char* bytes, std::size_t) { sodium_free(bytes); });
}

}  // namespace mirelo::sodium
