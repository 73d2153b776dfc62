#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "streaming/level1_record.h"

namespace mirelo {

// How a field's value stands on the wire, behind its two-byte id. Numbers are little-endian.
enum class FieldKind : std::uint8_t {
  Unknown,             // an id outside the table: four bytes are passed over, whatever it really takes
  Double,              // 8 bytes, IEEE 754
  LongVolume,          // 8 bytes, of which the first four are read as a signed number
  Integer,             // 4 bytes, signed
  ZeroTerminatedText,  // up to a zero byte, which is consumed
  Stamp,               // 14 bytes of text
  Dropped,             // as many bytes of text as the descriptor says, read and dropped
};

struct Level1Field {
  std::string_view
      descriptor;  // the feed's own name of the field, a colon, the width; "x" is zero-terminated
  FieldKind kind = FieldKind::Unknown;
  std::uint16_t target = 0;  // where in a Level1Record the value lands
};

// Indexed by field id. Blanks behind a width belong to the descriptor, as does character 160 of the first.
inline constexpr std::array<Level1Field, 32> kFieldTable{{
    {},
    {"Symb:x\u00A0 ", FieldKind::ZeroTerminatedText, offsetof(Level1Record, symbol)},
    {"B:8", FieldKind::Double, offsetof(Level1Record, bid_price)},
    {"A:8", FieldKind::Double, offsetof(Level1Record, ask_price)},
    {"L:8", FieldKind::Double, offsetof(Level1Record, last_price)},
    {"Change:8", FieldKind::Double, offsetof(Level1Record, change)},
    {"V:8", FieldKind::LongVolume, offsetof(Level1Record, volume)},
    {"Open:8", FieldKind::Double, offsetof(Level1Record, open)},
    {"Prev Close:8", FieldKind::Double, offsetof(Level1Record, previous_close)},
    {"BidSize:4 ", FieldKind::Integer, offsetof(Level1Record, bid_size)},
    {"AskSize:4 ", FieldKind::Integer, offsetof(Level1Record, ask_size)},
    {"LastSize:4 ", FieldKind::Integer, offsetof(Level1Record, last_size)},
    {"H:8", FieldKind::Double, offsetof(Level1Record, high)},
    {"L:8", FieldKind::Double, offsetof(Level1Record, low)},
    {"Tick:1 ", FieldKind::Dropped},
    {"D:14", FieldKind::Stamp, offsetof(Level1Record, stamp)},
    {"High52:8", FieldKind::Double, offsetof(Level1Record, week_52_high)},
    {"Low52:8", FieldKind::Double, offsetof(Level1Record, week_52_low)},
    {"Company Name:x", FieldKind::ZeroTerminatedText, offsetof(Level1Record, company_name)},
    {"PrevVolume:8", FieldKind::LongVolume, offsetof(Level1Record, previous_volume)},
    {"#Trades:4", FieldKind::Integer, offsetof(Level1Record, trades)},
    {"AvgTradeSize:4", FieldKind::Integer, offsetof(Level1Record, average_trade_size)},
    {"AvgVol:8", FieldKind::LongVolume, offsetof(Level1Record, average_volume)},
    {"Dividend:8", FieldKind::Double, offsetof(Level1Record, dividend)},
    {"Earnings:8", FieldKind::Double, offsetof(Level1Record, earnings)},
    {"Exchange:x", FieldKind::ZeroTerminatedText, offsetof(Level1Record, exchange)},
    {"MarketCap:x", FieldKind::ZeroTerminatedText, offsetof(Level1Record, market_cap)},
    {"PE:8", FieldKind::Double, offsetof(Level1Record, price_to_earnings)},
    {"OpenInterest:4", FieldKind::Integer, offsetof(Level1Record, open_interest)},
    {"UPC:1", FieldKind::Dropped},
    {"Yield:8", FieldKind::Double, offsetof(Level1Record, yield)},
    {"Close:8", FieldKind::Double, offsetof(Level1Record, close)},
}};

// The bytes that a dropped field takes: the number behind its descriptor's colon.
constexpr std::int32_t DescribedWidth(std::string_view descriptor) {
  std::int32_t width = 0;
  for (const char digit : descriptor.substr(descriptor.find(':') + 1)) {
    if (digit < '0' || digit > '9') break;
    width = width * 10 + (digit - '0');
  }
  return width;
}

}  // namespace mirelo
