#include "quotetracker/quote.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace mirelo::quotetracker {
namespace {

// Writes fields behind one another into a buffer that holds any record but for its ticker: appending them one
// by one to the reply took much of a request's time.
class FieldWriter {
 public:
  void Text(std::string_view text) {
    *end_++ = ',';
    end_ = std::ranges::copy(text, end_).out;
  }
  void Money(Price price) {
    *end_++ = ',';
    end_ = WritePrice(end_, price);
  }
  void Count(std::int64_t count) {
    *end_++ = ',';
    end_ = std::to_chars(end_, buffer_.data() + buffer_.size(), count).ptr;
  }
  std::string_view Written() const { return {buffer_.data(), end_}; }

 private:
  static constexpr std::size_t kFields = 18;
  std::array<char, kFields*(kPriceWidth + 1)> buffer_;
  char* end_ = buffer_.data();
};

}  // namespace

void AppendRecord(std::string& text, std::string_view shown, const Quote& quote) {
  FieldWriter fields;
  const char tick = static_cast<char>(quote.tick);
  fields.Text(quote.stamp.Date());
  fields.Text(quote.stamp.Time());
  fields.Money(quote.last);
  fields.Money(quote.bid);
  fields.Money(quote.ask);
  fields.Money(quote.change);
  fields.Text({&tick, 1});
  fields.Count(quote.volume);
  fields.Money(quote.high);
  fields.Money(quote.low);
  fields.Count(quote.bid_size);
  fields.Count(quote.ask_size);
  fields.Count(quote.last_volume);
  fields.Count(quote.average_trade);
  fields.Count(quote.trades);
  fields.Money(quote.open);
  fields.Money(quote.low_52);
  fields.Money(quote.high_52);
  text += shown;
  text += fields.Written();
}

}  // namespace mirelo::quotetracker
