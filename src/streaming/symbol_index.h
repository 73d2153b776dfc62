#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "core/cTickerDateTime.h"
#include "streaming/symbol_key.h"

namespace mirelo {

// Finds the states of symbols by the bytes in which they are spelled on the wire, without making texts of
// them. The collection of the states is asked once for each spelling; it knows which spellings differ in case
// only.
class SymbolIndex {
 public:
  // Longer spellings are not kept.
  static constexpr std::size_t kLongest = SymbolKey::kLongest;

  // The state that was kept for this spelling, or null.
  cTickerDateTime* Find(std::string_view spelling) const {
    if (entries_.empty() || spelling.size() > kLongest) return nullptr;
    return entries_[PlaceOf(SymbolKey::Of(spelling))].state;
  }

  // Prefetching, for indexes so large that neither the entry nor the state of a symbol is in a cache when it
  // is wanted. Expect is called once for each record, with the symbol of the record two places further on,
  // and works as a pipeline of three steps: it prefetches the entry of that symbol; the state of the symbol
  // one place before, whose entry has arrived by now; and the date text of the state before that. These are
  // hints and change nothing.
  bool IsLarge() const { return entries_.size() >= kLarge; }
  void Expect(std::string_view spelling) {
    if (at_hand_ != nullptr) __builtin_prefetch(at_hand_->DateQuoteTrecker().data());
    at_hand_ = next_ == nullptr ? nullptr : next_->state;  // null where no symbol is at home there
    FetchState();
    next_ =
        spelling.empty() || spelling.size() > kLongest ? nullptr : &entries_[HomeOf(SymbolKey::Of(spelling))];
    __builtin_prefetch(next_);
  }

  // Keeps a state for a spelling that has none yet. The state must live as long as this index.
  void Keep(std::string_view spelling, cTickerDateTime& state);

 private:
  struct Entry {
    SymbolKey key;
    cTickerDateTime* state = nullptr;  // null: a free place
  };

  // Where the key stands, or the free place for it. One entry in two is free, so that there is one.
  std::size_t PlaceOf(const SymbolKey& key) const {
    const std::size_t mask = entries_.size() - 1;
    std::size_t place = HomeOf(key);
    while (entries_[place].state != nullptr && entries_[place].key != key) place = (place + 1) & mask;
    return place;
  }

  std::size_t HomeOf(const SymbolKey& key) const { return key.Hash() & (entries_.size() - 1); }

  void Grow();

  void FetchState() const {
    if (at_hand_ == nullptr) return;
    constexpr std::size_t kCacheLine = 64;
    const auto* state = reinterpret_cast<const char*>(at_hand_);
    for (std::size_t at = 0; at < sizeof(cTickerDateTime); at += kCacheLine)
      __builtin_prefetch(state + at, 1);
  }

  static constexpr std::size_t kLarge = 8192;

  std::vector<Entry> entries_;  // as many as a power of two, or none
  std::size_t count_ = 0;
  const Entry* next_ = nullptr;
  const cTickerDateTime* at_hand_ = nullptr;
};

}  // namespace mirelo
