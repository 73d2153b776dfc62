#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <vector>

#include "core/cTickerDateTime.h"

namespace mirelo {

// Finds the states of symbols by the bytes in which they are spelled on the wire, without making texts of
// them. The collection of the states is asked once for each spelling; it knows which spellings differ in case
// only.
class SymbolIndex {
 public:
  // Longer spellings are not kept.
  static constexpr std::size_t kLongest = 16;

  // The state that was kept for this spelling, or null.
  cTickerDateTime* Find(std::string_view spelling) const {
    if (entries_.empty() || spelling.size() > kLongest) return nullptr;
    return entries_[PlaceOf(KeyOf(spelling))].state;
  }

  // Among very many symbols neither entry nor state of the next one is in a cache. Expect, called some time
  // before it is wanted, fetches the entry, and FetchExpected some time later the state. Both are hints and
  // change nothing.
  bool IsLarge() const { return entries_.size() >= kLarge; }
  void Expect(std::string_view spelling) {
    if (spelling.empty() || spelling.size() > kLongest) return;
    expected_ = &entries_[HomeOf(KeyOf(spelling))];
    __builtin_prefetch(expected_);
  }
  void FetchExpected() {
    if (expected_ == nullptr) return;
    constexpr std::size_t kCacheLine = 64;
    const auto* state = reinterpret_cast<const char*>(expected_->state);
    expected_ = nullptr;
    if (state == nullptr) return;  // nobody lives at the symbol's home
    for (std::size_t at = 0; at < sizeof(cTickerDateTime); at += kCacheLine)
      __builtin_prefetch(state + at, 1);
  }

  // Keeps a state for a spelling that has none yet. The state must live as long as this index.
  void Keep(std::string_view spelling, cTickerDateTime& state);

 private:
  // A spelling, filled up with zeros. Spellings hold no zero themselves.
  struct Key {
    std::uint64_t head = 0;
    std::uint64_t tail = 0;
    friend bool operator==(const Key&, const Key&) = default;
  };
  struct Entry {
    Key key;
    cTickerDateTime* state = nullptr;  // null: a free place
  };

  static Key KeyOf(std::string_view spelling) {
    constexpr std::size_t kWord = sizeof(std::uint64_t);
    if (spelling.size() <= kWord) return {Word(spelling), 0};
    return {Word(spelling.substr(0, kWord)), Word(spelling.substr(kWord))};
  }
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

  // Where the key stands, or the free place for it. One entry in two is free, so that there is one.
  std::size_t PlaceOf(const Key& key) const {
    const std::size_t mask = entries_.size() - 1;
    std::size_t place = HomeOf(key);
    while (entries_[place].state != nullptr && entries_[place].key != key) place = (place + 1) & mask;
    return place;
  }

  std::size_t HomeOf(const Key& key) const {
    constexpr std::uint64_t kMultiplier = 0x9E3779B97F4A7C15;  // 2^64 over the golden ratio
    const std::uint64_t hash = (key.head ^ key.tail * kMultiplier) * kMultiplier;
    return static_cast<std::size_t>(hash >> 32) & (entries_.size() - 1);
  }

  void Grow();

  static constexpr std::size_t kLarge = 8192;

  std::vector<Entry> entries_;  // as many as a power of two, or none
  std::size_t count_ = 0;
  const Entry* expected_ = nullptr;
};

}  // namespace mirelo
