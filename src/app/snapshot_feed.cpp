#include "app/snapshot_feed.h"

#include <utility>

#include "automation/variant.h"
#include "core/cMirelo.h"

namespace mirelo::app {

namespace {

constexpr std::size_t kFullBatch = 81;

}  // namespace

SnapshotFeed::SnapshotFeed(cMirelo& facade, std::vector<std::string> tickers)
    : facade_(facade), tickers_(std::move(tickers)), asked_(tickers_) {
  // A list that fills its last batch comes back empty. One more ticker avoids that; its row is not shown.
  if (asked_.size() % kFullBatch == 0) asked_.push_back(asked_.back());

  columns_ = VisibleColumns();
  facade_.LoadMasPosition();
  facade_.masPrevVolume(VariantArray(1, static_cast<std::int32_t>(asked_.size()), 1, 2));
}

std::optional<QuoteRows> SnapshotFeed::Fetch() {
  Variant tickers = VariantArray::OfTexts(asked_);
  const Variant reply = facade_.GetLastQuote(tickers);
  if (!reply.IsArray()) return std::nullopt;

  const VariantArray& table = reply.AsArray();
  QuoteRows rows;
  for (std::int32_t r = table.LBound(1); rows.size() < tickers_.size(); ++r) {
    auto& row = rows.emplace_back();
    for (std::int32_t c = table.LBound(2); c <= table.UBound(2); ++c) row.push_back(table(r, c).ToText());
  }
  return rows;
}

}  // namespace mirelo::app
