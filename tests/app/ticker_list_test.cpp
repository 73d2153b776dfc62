// Lists of tickers as people write them.

#include "person/ticker_list.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(TickerList, IsTakenApartAtCommasAndBlanks) {
  EXPECT_THAT(SplitTickers("GE"), ElementsAre("GE"));
  EXPECT_THAT(SplitTickers("GE, F T"), ElementsAre("GE", "F", "T"));
  EXPECT_THAT(SplitTickers(" ,GE,,F\tT\r\n"), ElementsAre("GE", "F", "T"));
  EXPECT_THAT(SplitTickers("RDS/A BF:B ^GSPC"), ElementsAre("RDS/A", "BF:B", "^GSPC"));
  EXPECT_THAT(SplitTickers(""), IsEmpty());
  EXPECT_THAT(SplitTickers(" , "), IsEmpty());
  EXPECT_THAT(SplitTickers(std::vector<std::string>{"A,B", "C"}), ElementsAre("A", "B", "C"));
}

TEST(TickerName, HoldsNothingThatPartsOrClosesTheListOfARequest) {
  for (const char* name : {"GE", "RDS/A", "BRK.B", "^DJI"}) EXPECT_TRUE(IsTickerName(name)) << name;
  for (const char* name : {"", "A B", "A,B", "A(", "A)", "<A", "A>"})
    EXPECT_FALSE(IsTickerName(name)) << name;
}

}  // namespace
}  // namespace mirelo::testing
