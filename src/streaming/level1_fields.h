#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "core/cQTData.h"
#include "streaming/level1_record.h"

namespace mirelo {

// How a field's value stands on the wire, behind its two-byte id. Numbers are little-endian.
enum class FieldKind : std::uint8_t {
  Unknown,             // an id outside the table: four bytes are passed over, whatever it really takes
  Double,              // 8 bytes, IEEE 754
  LongVolume,          // 8 bytes, a signed number
  Integer,             // 4 bytes, signed
  ZeroTerminatedText,  // up to a zero byte, which is consumed
  Stamp,               // 14 bytes of text
  Dropped,             // as many bytes of text as the descriptor says, read and dropped
};

// A field, and where in a record its value lands. A row whose kind and target don't fit is no constant, so it
// doesn't compile.
struct Level1Field {
  constexpr Level1Field() = default;
  constexpr Level1Field(std::string_view name, FieldKind value) : descriptor(name), kind(value) {
    if (value != FieldKind::Dropped) throw "a field that is kept needs a target";
  }
  constexpr Level1Field(std::string_view name, FieldKind value, double Level1Record::*target)
      : descriptor(name), kind(value), number(target) {
    if (value != FieldKind::Double) throw "the target is a double";
  }
  constexpr Level1Field(std::string_view name, FieldKind value, std::int32_t Level1Record::*target)
      : descriptor(name), kind(value), quantity(target) {
    if (value != FieldKind::Integer) throw "the target is an integer";
  }
  constexpr Level1Field(std::string_view name, FieldKind value, LongVolume Level1Record::*target)
      : descriptor(name), kind(value), volume(target) {
    if (value != FieldKind::LongVolume) throw "the target is a volume";
  }
  constexpr Level1Field(std::string_view name, FieldKind value, std::string_view Level1Record::*target)
      : descriptor(name), kind(value), text(target) {
    if (value != FieldKind::ZeroTerminatedText && value != FieldKind::Stamp) throw "the target is a text";
  }

  // The feed's own name of the field, a colon, the width; "x" is zero-terminated.
  std::string_view descriptor;
  FieldKind kind = FieldKind::Unknown;
  union {  // by the kind
    double Level1Record::*number = nullptr;
    std::int32_t Level1Record::*quantity;
    LongVolume Level1Record::*volume;
    std::string_view Level1Record::*text;
  };
};

// Indexed by field id. Blanks behind a width belong to the descriptor, as does character 160 of the first.
inline constexpr auto kFieldTable = std::to_array<Level1Field>({
    {},
    {"Symb:x\u00A0 ", FieldKind::ZeroTerminatedText, &Level1Record::symbol},
    {"B:8", FieldKind::Double, &Level1Record::bid_price},
    {"A:8", FieldKind::Double, &Level1Record::ask_price},
    {"L:8", FieldKind::Double, &Level1Record::last_price},
    {"Change:8", FieldKind::Double, &Level1Record::change},
    {"V:8", FieldKind::LongVolume, &Level1Record::volume},
    {"Open:8", FieldKind::Double, &Level1Record::open},
    {"Prev Close:8", FieldKind::Double, &Level1Record::previous_close},
    {"BidSize:4 ", FieldKind::Integer, &Level1Record::bid_size},
    {"AskSize:4 ", FieldKind::Integer, &Level1Record::ask_size},
    {"LastSize:4 ", FieldKind::Integer, &Level1Record::last_size},
    {"H:8", FieldKind::Double, &Level1Record::high},
    {"L:8", FieldKind::Double, &Level1Record::low},
    {"Tick:1 ", FieldKind::Dropped},
    {"D:14", FieldKind::Stamp, &Level1Record::stamp},
    {"High52:8", FieldKind::Double, &Level1Record::week_52_high},
    {"Low52:8", FieldKind::Double, &Level1Record::week_52_low},
    {"Company Name:x", FieldKind::ZeroTerminatedText, &Level1Record::company_name},
    {"PrevVolume:8", FieldKind::LongVolume, &Level1Record::previous_volume},
    {"#Trades:4", FieldKind::Integer, &Level1Record::trades},
    {"AvgTradeSize:4", FieldKind::Integer, &Level1Record::average_trade_size},
    {"AvgVol:8", FieldKind::LongVolume, &Level1Record::average_volume},
    {"Dividend:8", FieldKind::Double, &Level1Record::dividend},
    {"Earnings:8", FieldKind::Double, &Level1Record::earnings},
    {"Exchange:x", FieldKind::ZeroTerminatedText, &Level1Record::exchange},
    {"MarketCap:x", FieldKind::ZeroTerminatedText, &Level1Record::market_cap},
    {"PE:8", FieldKind::Double, &Level1Record::price_to_earnings},
    {"OpenInterest:4", FieldKind::Integer, &Level1Record::open_interest},
    {"UPC:1", FieldKind::Dropped},
    {"Yield:8", FieldKind::Double, &Level1Record::yield},
    {"Close:8", FieldKind::Double, &Level1Record::close},
});

static_assert(kFieldTable.size() <= CarriedFields::kMost);

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
