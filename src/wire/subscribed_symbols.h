#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "streaming/symbol_key.h"

namespace mirelo::wire {

// Which symbols' records are handed to a stream's client. The stream class keeps a state for every symbol
// that comes, for as long as it lives; so a peer that sends ever new ones would fill the memory. Symbols that
// were subscribed always pass, whatever their case. Others pass too, since servers may send more than was
// asked for, but no more than kMostOthers of them, and none longer than kLongestOther bytes.
//
// Symbols are bytes as they stand on the wire.
class SubscribedSymbols {
 public:
  static constexpr std::size_t kMostOthers = 4096;
  static constexpr std::size_t kLongestOther = 64;

  void Subscribe(std::string_view symbol);

  // Whether a record of this symbol is to pass. One without a symbol does.
  bool Admits(std::string_view symbol) { return symbol.empty() || IsKnown(symbol) || Learn(symbol); }

 private:
  bool IsKnown(std::string_view symbol) const {
    if (symbol.size() > SymbolKey::kLongest) return long_known_.contains(std::string(symbol));
    return !known_.empty() && known_[PlaceOf(SymbolKey::Of(symbol))] != SymbolKey();
  }
  // Where the key stands, or the free place for it.
  std::size_t PlaceOf(const SymbolKey& key) const {
    const std::size_t mask = known_.size() - 1;
    std::size_t place = key.Hash() & mask;
    while (known_[place] != SymbolKey() && known_[place] != key) place = (place + 1) & mask;
    return place;
  }

  bool Learn(std::string_view symbol);
  void Keep(std::string_view symbol);
  void Grow();

  std::unordered_set<std::string> subscribed_;  // in small letters
  // A hash table of the short spellings that pass, kept at most half full; long ones are in long_known_.
  std::vector<SymbolKey> known_;
  std::size_t known_count_ = 0;
  std::unordered_set<std::string> long_known_;
  std::size_t others_ = 0;
};

}  // namespace mirelo::wire
