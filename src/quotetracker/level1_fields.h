#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace mirelo::quotetracker {

// The fields of a Level I record by their ids on the wire.
enum class Level1Field : std::int16_t {
  kSymbol = 1,
  kBid = 2,
  kAsk = 3,
  kLast = 4,
  kChange = 5,
  kVolume = 6,
  kOpen = 7,
  kPreviousClose = 8,
  kBidSize = 9,
  kAskSize = 10,
  kLastSize = 11,
  kHigh = 12,
  kLow = 13,
  kTick = 14,
  kDate = 15,
  kHigh52 = 16,
  kLow52 = 17,
  kCompanyName = 18,
  kPreviousVolume = 19,
  kTrades = 20,
  kAverageTradeSize = 21,
  kAverageVolume = 22,
  kDividend = 23,
  kEarnings = 24,
  kExchange = 25,
  kMarketCap = 26,
  kPriceEarnings = 27,
  kOpenInterest = 28,
  kUpc = 29,
  kYield = 30,
  kClose = 31,
};

// How a field's value stands on the wire, little-endian.
enum class Level1Kind {
  kDouble,      // 8 bytes, IEEE 754
  kInteger,     // 4 bytes, signed
  kLongVolume,  // 8 bytes, signed
  kZeroText,    // the text and a byte 0
  kCharacter,   // 1 byte
  kDate,        // 14 digits, MMDDYYYYHHMMSS
};

struct Level1FieldForm {
  Level1Field field;
  Level1Kind kind;
};

// Every field once, ascending from id 1, so that id - 1 is its index.
inline constexpr std::array<Level1FieldForm, 31> kLevel1Fields{{
    {Level1Field::kSymbol, Level1Kind::kZeroText},
    {Level1Field::kBid, Level1Kind::kDouble},
    {Level1Field::kAsk, Level1Kind::kDouble},
    {Level1Field::kLast, Level1Kind::kDouble},
    {Level1Field::kChange, Level1Kind::kDouble},
    {Level1Field::kVolume, Level1Kind::kLongVolume},
    {Level1Field::kOpen, Level1Kind::kDouble},
    {Level1Field::kPreviousClose, Level1Kind::kDouble},
    {Level1Field::kBidSize, Level1Kind::kInteger},
    {Level1Field::kAskSize, Level1Kind::kInteger},
    {Level1Field::kLastSize, Level1Kind::kInteger},
    {Level1Field::kHigh, Level1Kind::kDouble},
    {Level1Field::kLow, Level1Kind::kDouble},
    {Level1Field::kTick, Level1Kind::kCharacter},
    {Level1Field::kDate, Level1Kind::kDate},
    {Level1Field::kHigh52, Level1Kind::kDouble},
    {Level1Field::kLow52, Level1Kind::kDouble},
    {Level1Field::kCompanyName, Level1Kind::kZeroText},
    {Level1Field::kPreviousVolume, Level1Kind::kLongVolume},
    {Level1Field::kTrades, Level1Kind::kInteger},
    {Level1Field::kAverageTradeSize, Level1Kind::kInteger},
    {Level1Field::kAverageVolume, Level1Kind::kLongVolume},
    {Level1Field::kDividend, Level1Kind::kDouble},
    {Level1Field::kEarnings, Level1Kind::kDouble},
    {Level1Field::kExchange, Level1Kind::kZeroText},
    {Level1Field::kMarketCap, Level1Kind::kZeroText},
    {Level1Field::kPriceEarnings, Level1Kind::kDouble},
    {Level1Field::kOpenInterest, Level1Kind::kInteger},
    {Level1Field::kUpc, Level1Kind::kCharacter},
    {Level1Field::kYield, Level1Kind::kDouble},
    {Level1Field::kClose, Level1Kind::kDouble},
}};

constexpr Level1Kind KindOf(Level1Field field) {
  return kLevel1Fields[static_cast<std::size_t>(field) - 1].kind;
}

}  // namespace mirelo::quotetracker
