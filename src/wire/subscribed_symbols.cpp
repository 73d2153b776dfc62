#include "wire/subscribed_symbols.h"

#include <utility>

namespace mirelo::wire {

namespace {

std::string InSmallLetters(std::string_view symbol) {
  std::string small(symbol);
  for (char& letter : small) {
    if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter - 'A' + 'a');
  }
  return small;
}

}  // namespace

void SubscribedSymbols::Subscribe(std::string_view symbol) {
  if (symbol.empty() || !subscribed_.insert(InSmallLetters(symbol)).second) return;
  if (!IsKnown(symbol)) Keep(symbol);
}

// A subscribed symbol in another spelling passes even when no more spellings are kept.
bool SubscribedSymbols::Learn(std::string_view symbol) {
  const bool subscribed = subscribed_.contains(InSmallLetters(symbol));
  if (others_ == kMostOthers || symbol.size() > kLongestOther) return subscribed;
  Keep(symbol);
  ++others_;
  return true;
}

void SubscribedSymbols::Keep(std::string_view symbol) {
  if (symbol.size() > SymbolKey::kLongest) {
    long_known_.emplace(symbol);
    return;
  }
  if (known_count_ * 2 >= known_.size()) Grow();
  const SymbolKey key = SymbolKey::Of(symbol);
  known_[PlaceOf(key)] = key;
  ++known_count_;
}

void SubscribedSymbols::Grow() {
  std::vector<SymbolKey> old(known_.empty() ? 64 : known_.size() * 2, SymbolKey());
  old.swap(known_);  // once there is room
  for (const SymbolKey& key : old) {
    if (key != SymbolKey()) known_[PlaceOf(key)] = key;
  }
}

}  // namespace mirelo::wire
