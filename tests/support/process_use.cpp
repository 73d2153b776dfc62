#include "support/process_use.h"

#include <malloc.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "support/sanitized.h"

// Of the address sanitizer's runtime, whose allocator the C library knows nothing of.
extern "C" [[gnu::weak]] std::size_t __sanitizer_get_current_allocated_bytes();

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
  if (kIsSanitized) return __sanitizer_get_current_allocated_bytes();
  const auto memory = ::mallinfo2();
  return memory.uordblks + memory.hblkhd;
}

}  // namespace

ProcessUse ProcessUse::Now() { return {Descriptors(), Resident(), InUse()}; }

}  // namespace mirelo::testing
