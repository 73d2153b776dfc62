#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "quotetracker/quote_source.h"
#include "quotetracker/random.h"

namespace mirelo::quotetracker {

// The records that one connection has subscribed to, in batches: first a full record of each symbol, then
// records of changes. All records of a batch are of one kind, since a receiver takes the kinds "HO" and "HT"
// only in a chunk that begins with them.
class RecordFeed {
 public:
  static constexpr std::string_view kSnapshotKind = "S1";
  static constexpr std::size_t kMostBatch =
      std::size_t{8} * 1024;  // bytes; a batch ends with the record that reaches it
  static constexpr std::size_t kMostSymbols = 1'000'000;
  static constexpr std::size_t kMostSymbolLength = 256;

  // Batches of changes are of these `kinds` in turn; there is at least one. The source outlives the feed.
  RecordFeed(QuoteSource& source, std::vector<std::string> kinds, std::uint64_t seed);

  // Adds symbols. Those already there, in whatever case, are not sent in full again; those that no record can
  // hold are left out, and so are those beyond kMostSymbols.
  void Subscribe(const std::vector<std::string>& symbols);
  void Clear();

  bool IsEmpty() const { return symbols_.empty(); }
  bool OwesSnapshots() const { return snapshots_ < symbols_.size(); }

  // The next full records; empty when none is owed.
  std::string NextSnapshots();

  // Up to `most` changes; `count` becomes the number there were.
  std::string NextUpdates(std::size_t most, std::size_t& count);

  // The records that it has given so far.
  std::uint64_t Given() const { return given_; }

 private:
  QuoteSource& source_;
  std::vector<std::string> kinds_;
  Random chance_;
  std::vector<std::string> symbols_;       // as the client writes them
  std::unordered_set<std::string> known_;  // in upper case
  std::size_t snapshots_ = 0;              // so many of the symbols have been sent in full
  std::unique_ptr<QuoteUpdates> updates_;
  std::size_t batches_ = 0;
  std::uint64_t given_ = 0;
};

}  // namespace mirelo::quotetracker
