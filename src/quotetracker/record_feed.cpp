#include "quotetracker/record_feed.h"

#include <utility>

#include "quotetracker/ascii.h"
#include "quotetracker/company.h"
#include "quotetracker/level1_records.h"

namespace mirelo::quotetracker {

RecordFeed::RecordFeed(QuoteSource& source, std::vector<std::string> kinds, std::uint64_t seed)
    : source_(source), kinds_(std::move(kinds)), chance_(seed) {}

void RecordFeed::Subscribe(const std::vector<std::string>& symbols) {
  for (const std::string& symbol : symbols) {
    if (symbols_.size() == kMostSymbols) break;
    if (symbol.size() > kMostSymbolLength || symbol.find('\0') != std::string::npos) continue;
    if (known_.insert(UpperCase(symbol)).second) symbols_.push_back(symbol);
  }
  updates_ = source_.Subscribe(symbols_);
}

void RecordFeed::Clear() {
  symbols_.clear();
  known_.clear();
  snapshots_ = 0;
  updates_.reset();
}

// They show what the changes go on from, however late they are asked for: an older quote behind a newer one
// would be a lie.
std::string RecordFeed::NextSnapshots() {
  std::string bytes;
  for (; OwesSnapshots() && bytes.size() < kMostBatch; ++snapshots_) {
    const std::string& symbol = symbols_[snapshots_];
    AppendSnapshot(bytes, kSnapshotKind, symbol, updates_->Look(snapshots_), CompanyOf(symbol));
    ++given_;
  }
  return bytes;
}

std::string RecordFeed::NextUpdates(std::size_t most, std::size_t& count) {
  count = 0;
  std::string bytes;
  if (updates_ == nullptr) return bytes;
  const std::string& kind = kinds_[batches_ % kinds_.size()];
  for (; count < most && bytes.size() < kMostBatch; ++count) {
    const QuoteChange change = updates_->Next();
    if (change.quote == nullptr) break;
    AppendUpdate(bytes, kind, symbols_[change.ticker], *change.quote, chance_);
  }
  if (!bytes.empty()) ++batches_;
  given_ += count;
  return bytes;
}

}  // namespace mirelo::quotetracker
