#include "support/process_use.h"

#include <malloc.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define MIRELO_SANITIZED_MEMORY
#include <sanitizer/allocator_interface.h>
#endif
#endif

namespace mirelo::testing {

namespace {

std::size_t Descriptors() {
  const std::filesystem::directory_iterator listing("/proc/self/fd");  // itself one of them
  return static_cast<std::size_t>(std::distance(begin(listing), end(listing))) - 1;
}

std::size_t Resident() {
  std::size_t all = 0;
  std::size_t resident = 0;
  std::ifstream("/proc/self/statm") >> all >> resident;
  return resident * static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
}

std::size_t InUse() {
#ifdef MIRELO_SANITIZED_MEMORY
  return __sanitizer_get_current_allocated_bytes();
#else
  const auto memory = ::mallinfo2();
  return memory.uordblks + memory.hblkhd;
#endif
}

}  // namespace

#ifdef MIRELO_SANITIZED_MEMORY
const bool kFreedMemoryIsKept = true;
#else
const bool kFreedMemoryIsKept = false;
#endif

ProcessUse ProcessUse::Now() { return {Descriptors(), Resident(), InUse()}; }

}  // namespace mirelo::testing
