#include "quotetracker/level1_encoder.h"

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>
#include <vector>

namespace mirelo::quotetracker {
namespace {

using namespace std::string_literals;

struct Row {
  const char* name;
  std::function<void(Level1Encoder&)> write;
  std::string bytes;  // of the field: id and value
};

using Encoder = Level1Encoder;
using Field = Level1Field;

// 26.5 is 403A800000000000 as an IEEE 754 double.
const std::string kDouble26AndAHalf = "\0\0\0\0\0\x80\x3A\x40"s;
// 5,000,000,000 is 12A05F200.
const std::string kFiveBillion = "\x00\xF2\x05\x2A\x01\0\0\0"s;

Row DoubleRow(const char* name, Field field, char id) {
  return {name, [=](Encoder& e) { e.Double(field, 26.5); }, std::string{id, '\0'} + kDouble26AndAHalf};
}
Row VolumeRow(const char* name, Field field, char id) {
  return {name, [=](Encoder& e) { e.LongVolume(field, 5'000'000'000); },
          std::string{id, '\0'} + kFiveBillion};
}
Row IntegerRow(const char* name, Field field, char id) {
  return {name, [=](Encoder& e) { e.Integer(field, -2); }, std::string{id, '\0'} + "\xFE\xFF\xFF\xFF"s};
}
Row TextRow(const char* name, Field field, char id) {
  return {name, [=](Encoder& e) { e.Text(field, "A\xA0 b"); }, std::string{id, '\0'} + "A\xA0 b\0"s};
}
Row CharacterRow(const char* name, Field field, char id) {
  return {name, [=](Encoder& e) { e.Character(field, 'U'); }, std::string{id, '\0'} + "U"};
}

const std::vector<Row> kRows{
    TextRow("symbol", Field::kSymbol, 1),
    DoubleRow("bid", Field::kBid, 2),
    DoubleRow("ask", Field::kAsk, 3),
    DoubleRow("last", Field::kLast, 4),
    DoubleRow("change", Field::kChange, 5),
    VolumeRow("volume", Field::kVolume, 6),
    DoubleRow("open", Field::kOpen, 7),
    DoubleRow("previous close", Field::kPreviousClose, 8),
    IntegerRow("bid size", Field::kBidSize, 9),
    IntegerRow("ask size", Field::kAskSize, 10),
    IntegerRow("last size", Field::kLastSize, 11),
    DoubleRow("high", Field::kHigh, 12),
    DoubleRow("low", Field::kLow, 13),
    CharacterRow("tick", Field::kTick, 14),
    {"date", [](Encoder& e) { e.Date("12312005093015"); }, "\x0F\0"s + "12312005093015"},
    DoubleRow("52-week high", Field::kHigh52, 16),
    DoubleRow("52-week low", Field::kLow52, 17),
    TextRow("company name", Field::kCompanyName, 18),
    VolumeRow("previous volume", Field::kPreviousVolume, 19),
    IntegerRow("trades", Field::kTrades, 20),
    IntegerRow("average trade size", Field::kAverageTradeSize, 21),
    VolumeRow("average volume", Field::kAverageVolume, 22),
    DoubleRow("dividend", Field::kDividend, 23),
    DoubleRow("earnings", Field::kEarnings, 24),
    TextRow("exchange", Field::kExchange, 25),
    TextRow("market capitalisation", Field::kMarketCap, 26),
    DoubleRow("price to earnings", Field::kPriceEarnings, 27),
    IntegerRow("open interest", Field::kOpenInterest, 28),
    CharacterRow("UPC", Field::kUpc, 29),
    DoubleRow("yield", Field::kYield, 30),
    DoubleRow("close", Field::kClose, 31),
};

TEST(Level1Encoder, WritesEachFieldAsItsIdAndItsValue) {
  for (const Row& row : kRows) {
    SCOPED_TRACE(row.name);
    std::string bytes;
    Encoder encoder(bytes);
    encoder.Begin("S1");
    row.write(encoder);
    encoder.End();
    EXPECT_EQ(bytes, "S1"s + static_cast<char>(4 + row.bytes.size()) + '\0' + row.bytes);
  }
}

TEST(Level1Encoder, KnowsEveryIdOnce) {
  ASSERT_EQ(kRows.size(), kLevel1Fields.size());
  for (std::size_t i = 0; i < kLevel1Fields.size(); ++i) {
    EXPECT_EQ(static_cast<std::size_t>(kLevel1Fields[i].field), i + 1);
  }
}

TEST(Level1Encoder, WritesRecordsBehindOneAnother) {
  std::string bytes = "before";
  Encoder encoder(bytes);
  encoder.Begin("HO").Integer(Field::kTrades, 7).Character(Field::kTick, 'D').End();
  encoder.Begin("HT").End();
  EXPECT_EQ(bytes, "before"s + "HO\x0D\0\x14\0\x07\0\0\0\x0E\0D"s + "HT\x04\0"s);
}

TEST(Level1Encoder, CountsALengthAbove255InBothBytes) {
  std::string bytes;
  Encoder encoder(bytes);
  encoder.Begin("L1").Text(Field::kCompanyName, std::string(300, 'x')).End();
  EXPECT_EQ(bytes.substr(0, 4), "L1\x33\x01"s);
  EXPECT_EQ(bytes.size(), 0x133U);
}

TEST(Level1Encoder, RefusesARecordThatItsLengthCannotCount) {
  std::string bytes;
  Encoder encoder(bytes);
  encoder.Begin("S1").Text(Field::kCompanyName, std::string(Encoder::kMostLength - 7, 'x'));
  EXPECT_NO_THROW(encoder.End());
  encoder.Begin("S1").Text(Field::kCompanyName, std::string(Encoder::kMostLength - 6, 'x'));
  EXPECT_THROW(encoder.End(), std::length_error);
}

TEST(Level1Encoder, RefusesWhatDoesNotSuitAField) {
  std::string bytes;
  Encoder encoder(bytes);
  EXPECT_THROW(encoder.Begin("S"), std::invalid_argument);
  encoder.Begin("S1");
  EXPECT_THROW(encoder.Double(Field::kSymbol, 1), std::invalid_argument);
  EXPECT_THROW(encoder.Integer(Field::kVolume, 1), std::invalid_argument);
  EXPECT_THROW(encoder.Double(static_cast<Field>(32), 1), std::invalid_argument);
  EXPECT_THROW(encoder.Double(static_cast<Field>(0), 1), std::invalid_argument);
  EXPECT_THROW(encoder.Text(Field::kSymbol, "A\0B"s), std::invalid_argument);
  EXPECT_THROW(encoder.Date("12312005"), std::invalid_argument);
  EXPECT_EQ(bytes, "S1\0\0"s);
}

TEST(Level1Encoder, WritesRecordsThatLieWhenAsked) {
  std::string bytes;
  Encoder encoder(bytes);
  encoder.Begin("XY").Id(99).Bytes("\x01\x02"s).EndWithLength(-1);
  EXPECT_EQ(bytes, "XY\xFF\xFF\x63\0\x01\x02"s);
}

}  // namespace
}  // namespace mirelo::quotetracker
