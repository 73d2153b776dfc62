#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <type_traits>

#include "core/cQTData.h"
#include "core/cTickerDateTime.h"
#include "core/property.h"

namespace mirelo {
namespace {

// Sets every property of a type to a value of its own and finds all of them afterwards, so that no two share
// a place.
template <class T, class... Properties>
void ExpectIndependent(const char* names, Properties&... properties) {
  static_assert((std::is_same_v<Properties, Property<T>> && ...), "a property is of another type");
  SCOPED_TRACE(names);
  const auto value = [](int i) {
    if constexpr (std::is_same_v<T, std::string>) {
      return "text " + std::to_string(i);
    } else {
      return static_cast<T>(i + 1);
    }
  };
  EXPECT_TRUE(((properties() == T{}) && ...)) << "starts at zero or empty";
  int i = 0;
  (properties(value(i++)), ...);
  i = 0;
  const bool all_kept = ((properties() == value(i++)) && ...);
  EXPECT_TRUE(all_kept);
}

TEST(QTData, KeepsItsTenWholeNumbers) {
  cQTData q;
  ExpectIndependent<std::int32_t>("cQTData", q.Last_Volume, q.Open_Interest, q.Average_Volume,
                                  q.Avg_Trade_Size, q.Trades, q.Prev_Volume, q.Last_Size, q.Ask_Size,
                                  q.Bid_Size, q.Volume);
}

TEST(QTData, KeepsItsFifteenNumbers) {
  cQTData q;
  ExpectIndependent<double>("cQTData", q.CloseTicker, q.Yield, q.PE, q.Earnings, q.Dividend, q.Week_52_Low,
                            q.Week_52_High, q.Low, q.High, q.Prev_Close, q.OpenTicker, q.Change, q.Last_Price,
                            q.Ask_Price, q.Bid_Price);
}

TEST(QTData, KeepsItsTenTexts) {
  cQTData q;
  ExpectIndependent<std::string>("cQTData", q.TimeQT, q.DateQT, q.NameID, q.Tick, q.UPC, q.Market_Cap,
                                 q.Exchange, q.Company_Name, q.Date_Time, q.Symbol);
}

TEST(QTData, IsNamedForClients) { EXPECT_EQ(cQTData().TypeName(), "cQTData"); }

TEST(TickerDateTime, KeepsItsProperties) {
  cTickerDateTime s;
  ExpectIndependent<std::int32_t>("whole numbers", s.Avg_Trade_Size, s.Trades, s.Last_Size, s.Ask_Size,
                                  s.Bid_Size, s.Volume, s.PrevVolume, s.LastVolume);
  ExpectIndependent<double>("numbers", s.OpenTicker, s.Low, s.High, s.Change, s.Last_Price, s.Ask_Price,
                            s.Bid_Price, s.Week52Low, s.Week52High);
  ExpectIndependent<std::string>("texts", s.DateQuoteTrecker, s.Tick, s.Symbol);
}

TEST(TickerDateTime, IsNamedForClients) { EXPECT_EQ(cTickerDateTime().TypeName(), "cTickerDateTime"); }

TEST(QTData, StaysSmall) { EXPECT_LE(sizeof(cQTData), 600u) << "a quote is made for every changed record"; }

}  // namespace
}  // namespace mirelo
