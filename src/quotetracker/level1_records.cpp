#include "quotetracker/level1_records.h"

#include <algorithm>
#include <array>

#include "quotetracker/level1_encoder.h"

namespace mirelo::quotetracker {
namespace {

using Field = Level1Field;

// mm/dd/yyyy and hh:mm:ss without what stands between the digits.
void PutDate(Level1Encoder& encoder, const Stamp& stamp) {
  std::array<char, 14> digits{};
  const auto end = std::ranges::copy_if(stamp.Date(), digits.begin(), [](char c) { return c != '/'; }).out;
  std::ranges::copy_if(stamp.Time(), end, [](char c) { return c != ':'; });
  encoder.Date({digits.data(), digits.size()});
}

void PutTrade(Level1Encoder& encoder, const Quote& quote) {
  encoder.Double(Field::kLast, ToDouble(quote.last))
      .Double(Field::kChange, ToDouble(quote.change))
      .LongVolume(Field::kVolume, quote.volume)
      .Integer(Field::kLastSize, quote.last_volume)
      .Character(Field::kTick, static_cast<char>(quote.tick))
      .Integer(Field::kTrades, quote.trades)
      .Integer(Field::kAverageTradeSize, quote.average_trade);
}

void PutSpread(Level1Encoder& encoder, const Quote& quote) {
  encoder.Double(Field::kBid, ToDouble(quote.bid)).Double(Field::kAsk, ToDouble(quote.ask));
}

void PutSizes(Level1Encoder& encoder, const Quote& quote) {
  encoder.Integer(Field::kBidSize, quote.bid_size).Integer(Field::kAskSize, quote.ask_size);
}

void PutDayRange(Level1Encoder& encoder, const Quote& quote) {
  encoder.Double(Field::kHigh, ToDouble(quote.high)).Double(Field::kLow, ToDouble(quote.low));
}

void PutYearRange(Level1Encoder& encoder, const Quote& quote) {
  encoder.Double(Field::kHigh52, ToDouble(quote.high_52)).Double(Field::kLow52, ToDouble(quote.low_52));
}

void PutCompany(Level1Encoder& encoder, const Quote& quote, const Company& company) {
  const double last = ToDouble(quote.last);
  encoder.Text(Field::kCompanyName, company.name)
      .LongVolume(Field::kAverageVolume, company.average_volume)
      .Double(Field::kDividend, last * company.yield / 100)
      .Double(Field::kEarnings, last / company.price_earnings)
      .Text(Field::kExchange, company.exchange)
      .Text(Field::kMarketCap, MarketCap(company, quote.last))
      .Double(Field::kPriceEarnings, company.price_earnings)
      .Integer(Field::kOpenInterest, company.open_interest)
      .Character(Field::kUpc, company.upc)
      .Double(Field::kYield, company.yield);
}

}  // namespace

void AppendSnapshot(std::string& bytes, std::string_view kind, std::string_view shown, const Quote& quote,
                    const Company& company) {
  Level1Encoder encoder(bytes);
  encoder.Begin(kind).Text(Field::kSymbol, shown);
  PutSpread(encoder, quote);
  PutTrade(encoder, quote);
  encoder.Double(Field::kOpen, ToDouble(quote.open))
      .Double(Field::kPreviousClose, ToDouble(quote.previous_close));
  PutSizes(encoder, quote);
  PutDayRange(encoder, quote);
  PutDate(encoder, quote.stamp);
  PutYearRange(encoder, quote);
  encoder.LongVolume(Field::kPreviousVolume, quote.previous_volume);
  PutCompany(encoder, quote, company);
  encoder.Double(Field::kClose, ToDouble(quote.last));
  encoder.End();
}

void AppendUpdate(std::string& bytes, std::string_view kind, std::string_view shown, const Quote& quote,
                  Random& chance) {
  const bool traded = quote.last_volume > 0;
  Level1Encoder encoder(bytes);
  encoder.Begin(kind).Text(Field::kSymbol, shown);
  if (traded) PutTrade(encoder, quote);
  // Without a trade there is always a new bid and ask, so that no record is empty.
  if (!traded || chance.Unit() < 0.5) PutSpread(encoder, quote);
  if (chance.Unit() < 0.5) PutSizes(encoder, quote);
  if (chance.Unit() < 0.2) PutDayRange(encoder, quote);
  if (chance.Unit() < 0.02) PutYearRange(encoder, quote);
  PutDate(encoder, quote.stamp);
  encoder.End();
}

}  // namespace mirelo::quotetracker
