#pragma once

#include <cstdint>
#include <cstring>
#include <string_view>

namespace mirelo::bench {

// What a record comes down to for someone who only wants its fields: numbers, and texts where they lie.
struct BareRecord {
  double bid, ask, last, change, open, previous_close, high, low, high_52, low_52, dividend, earnings, pe,
      yield, close;
  std::int32_t volume, bid_size, ask_size, last_size, previous_volume, trades, average_size, average_volume,
      interest;
  std::string_view symbol, company, exchange, market_cap, date;
};

// Reads every field of the record at `at` into `record`, which the caller has cleared, and returns where the
// next one begins. The bytes are trusted.
inline const char* ReadBare(const char* at, BareRecord& record) {
  const auto number = [&at](auto& value, int width) {
    std::memcpy(&value, at, sizeof value);
    at += width;
  };
  const auto text = [&at](std::string_view& value) {
    value = std::string_view(at);
    at += value.size() + 1;
  };
  std::int16_t length;
  std::memcpy(&length, at + 2, sizeof length);
  const char* const end = at + length;
  at += 4;
  while (at < end) {
    std::int16_t id;
    std::memcpy(&id, at, sizeof id);
    at += 2;
    switch (id) {
      case 1:
        text(record.symbol);
        break;
      case 2:
        number(record.bid, 8);
        break;
      case 3:
        number(record.ask, 8);
        break;
      case 4:
        number(record.last, 8);
        break;
      case 5:
        number(record.change, 8);
        break;
      case 6:
        number(record.volume, 8);
        break;
      case 7:
        number(record.open, 8);
        break;
      case 8:
        number(record.previous_close, 8);
        break;
      case 9:
        number(record.bid_size, 4);
        break;
      case 10:
        number(record.ask_size, 4);
        break;
      case 11:
        number(record.last_size, 4);
        break;
      case 12:
        number(record.high, 8);
        break;
      case 13:
        number(record.low, 8);
        break;
      case 14:
      case 29:
        at += 1;
        break;
      case 15:
        record.date = std::string_view(at, 14);
        at += 14;
        break;
      case 16:
        number(record.high_52, 8);
        break;
      case 17:
        number(record.low_52, 8);
        break;
      case 18:
        text(record.company);
        break;
      case 19:
        number(record.previous_volume, 8);
        break;
      case 20:
        number(record.trades, 4);
        break;
      case 21:
        number(record.average_size, 4);
        break;
      case 22:
        number(record.average_volume, 8);
        break;
      case 23:
        number(record.dividend, 8);
        break;
      case 24:
        number(record.earnings, 8);
        break;
      case 25:
        text(record.exchange);
        break;
      case 26:
        text(record.market_cap);
        break;
      case 27:
        number(record.pe, 8);
        break;
      case 28:
        number(record.interest, 4);
        break;
      case 30:
        number(record.yield, 8);
        break;
      case 31:
        number(record.close, 8);
        break;
      default:
        at += 4;
    }
  }
  return at;
}

}  // namespace mirelo::bench
