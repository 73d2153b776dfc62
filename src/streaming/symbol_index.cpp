#include "streaming/symbol_index.h"

#include <utility>

namespace mirelo {

void SymbolIndex::Keep(std::string_view spelling, cTickerDateTime& state) {
  if (spelling.size() > kLongest) return;
  if (count_ * 2 >= entries_.size()) Grow();
  const SymbolKey key = SymbolKey::Of(spelling);
  entries_[PlaceOf(key)] = {key, &state};
  ++count_;
}

void SymbolIndex::Grow() {
  next_ = nullptr;
  const std::vector<Entry> old = std::move(entries_);
  entries_.assign(old.empty() ? 64 : old.size() * 2, Entry());
  for (const Entry& entry : old) {
    if (entry.state != nullptr) entries_[PlaceOf(entry.key)] = entry;
  }
}

}  // namespace mirelo
