#include "day/noted_quotes.h"

#include <cstdint>
#include <utility>

#include "host/excel/range.h"
#include "worksheet/quote_table.h"

namespace mirelo {

namespace {

constexpr std::int32_t kVolumeColumn = 2;

}  // namespace

class NotedQuotes::Updates : public quotetracker::QuoteUpdates {
 public:
  Updates(NotedQuotes& source, std::vector<std::string> tickers)
      : source_(source), tickers_(std::move(tickers)) {}

  const quotetracker::Quote& Look(std::size_t ticker) override { return source_.Look(tickers_[ticker]); }

  quotetracker::QuoteChange Next() override {
    const std::int64_t number = ++source_.number_;
    const std::size_t ticker = static_cast<std::size_t>(number) % tickers_.size();
    quote_ = source_.Look(tickers_[ticker]);
    quote_.volume = number;
    quote_.last_volume = 1;  // a trade: the record carries the volume
    source_.sendings_.Note(number);
    return {&quote_, ticker};
  }

 private:
  NotedQuotes& source_;
  std::vector<std::string> tickers_;
  quotetracker::Quote quote_;
};

std::unique_ptr<quotetracker::QuoteUpdates> NotedQuotes::Subscribe(const std::vector<std::string>& tickers) {
  return std::make_unique<Updates>(*this, tickers);
}

void CellAges::NoteIn(host::excel::Worksheet& table) {
  const auto step = static_cast<std::int64_t>(seen_.size());
  for (std::size_t row = 0; row < seen_.size(); ++row) {
    const auto number = static_cast<std::int64_t>(
        table.Cells(static_cast<std::int32_t>(row) + kFirstTickerRow, kVolumeColumn)->Value().ToDouble());
    if (!sendings_.Has(number)) continue;
    for (std::int64_t n = seen_[row] == 0 ? number : seen_[row] + step; n <= number; n += step) {
      if (n > warm_up_) ages_.push_back(sendings_.AgeOf(n));
    }
    seen_[row] = number;
  }
}

}  // namespace mirelo
