#include "support/memory_search.h"

#include <algorithm>
#include <cstring>
#include <random>

#include "support/memory_regions.h"
#include "support/sanitized.h"

namespace mirelo::testing {

namespace {

constexpr char kMask = 0x55;

int CountIn(const MemoryRegion& region, const std::string& masked) {
  int count = 0;
  const char first = static_cast<char>(masked[0] ^ kMask);
  const char* last = region.end - masked.size();
  for (const char* at = region.begin; at <= last; ++at) {
    at = static_cast<const char*>(std::memchr(at, first, static_cast<std::size_t>(last + 1 - at)));
    if (at == nullptr) break;
    if (std::equal(masked.begin(), masked.end(), at, [](char a, char b) { return (a ^ kMask) == b; }))
      ++count;
  }
  return count;
}

}  // namespace

HiddenText::HiddenText(std::size_t size) : masked_(size, '\0') {
  std::random_device random;
  std::uniform_int_distribution<int> letters('a', 'z');
  for (char& letter : masked_) letter = static_cast<char>(letters(random) ^ kMask);
}

host::Secret HiddenText::Plain() const {
  host::Secret plain = host::Secret::Copy(masked_);
  for (std::size_t i = 0; i < masked_.size(); ++i) plain.data()[i] = static_cast<char>(masked_[i] ^ kMask);
  return plain;
}

int HiddenText::CountInMemory() const {
  int count = 0;
  const std::string half = masked_.substr(masked_.size() / 2);
  for (const MemoryRegion& region : WritableMemory()) count += CountIn(region, half);
  return count;
}

bool CanSearchMemory() { return !kIsSanitized; }

}  // namespace mirelo::testing
