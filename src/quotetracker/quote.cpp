#include "quotetracker/quote.h"

#include <charconv>

namespace mirelo::quotetracker {
namespace {

void AppendField(std::string& text, Price price) {
  text += ',';
  AppendPrice(text, price);
}

void AppendCount(std::string& text, std::int64_t count) {
  char buffer[24];
  buffer[0] = ',';
  text.append(buffer, std::to_chars(buffer + 1, buffer + sizeof buffer, count).ptr);
}

}  // namespace

void AppendRecord(std::string& text, std::string_view shown, const Quote& quote) {
  text += shown;
  text += ',';
  text += quote.stamp.Date();
  text += ',';
  text += quote.stamp.Time();
  AppendField(text, quote.last);
  AppendField(text, quote.bid);
  AppendField(text, quote.ask);
  AppendField(text, quote.change);
  text += ',';
  text += static_cast<char>(quote.tick);
  AppendCount(text, quote.volume);
  AppendField(text, quote.high);
  AppendField(text, quote.low);
  AppendCount(text, quote.bid_size);
  AppendCount(text, quote.ask_size);
  AppendCount(text, quote.last_volume);
  AppendCount(text, quote.average_trade);
  AppendCount(text, quote.trades);
  AppendField(text, quote.open);
  AppendField(text, quote.low_52);
  AppendField(text, quote.high_52);
}

}  // namespace mirelo::quotetracker
