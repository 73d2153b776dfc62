#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace mirelo {

// The spelling of a symbol as it stands on the wire, filled up with zeros, of which spellings hold none
// themselves. It is compared and hashed without a text being made of it.
struct SymbolKey {
  // Longer spellings have no key.
  static constexpr std::size_t kLongest = 16;

  std::uint64_t head = 0;
  std::uint64_t tail = 0;

  static SymbolKey Of(std::string_view spelling) {
    constexpr std::size_t kWord = sizeof(std::uint64_t);
    if (spelling.size() <= kWord) return {Word(spelling), 0};
    return {Word(spelling.substr(0, kWord)), Word(spelling.substr(kWord))};
  }

  std::size_t Hash() const {
    constexpr std::uint64_t kMultiplier = 0x9E3779B97F4A7C15;  // 2^64 over the golden ratio
    return static_cast<std::size_t>((head ^ tail * kMultiplier) * kMultiplier >> 32);
  }

  friend bool operator==(const SymbolKey&, const SymbolKey&) = default;

 private:
  // Up to eight bytes, put together from loads that overlap, since a copy of a length that varies takes
  // longer.
  static std::uint64_t Word(std::string_view bytes) {
    const std::size_t count = bytes.size();
    if (count == 0) return 0;
    if (count < 4) {
      return Part<std::uint8_t>(bytes, 0) | Part<std::uint8_t>(bytes, count / 2) << 8 * (count / 2) |
             Part<std::uint8_t>(bytes, count - 1) << 8 * (count - 1);
    }
    return Part<std::uint32_t>(bytes, 0) | Part<std::uint32_t>(bytes, count - 4) << 8 * (count - 4);
  }
  template <class T>
  static std::uint64_t Part(std::string_view bytes, std::size_t at) {
    T part;
    std::memcpy(&part, bytes.data() + at, sizeof part);
    return part;
  }
};

}  // namespace mirelo
