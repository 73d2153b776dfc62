#include "snapshot/column_vocabulary.h"

#include <gmock/gmock.h>

#include <set>
#include <string>
#include <vector>

#include "automation/text.h"

namespace mirelo {
namespace {

TEST(ColumnVocabulary, HasNineteenNamesInTheOrderOfTheReplysFields) {
  const std::vector<std::string> names = {"Ticker",    "Date",    "Time",    "Last",       "Bid",
                                          "Ask",       "Change",  "Tick",    "Volume",     "High",
                                          "Low",       "BidSize", "AskSize", "LastVolume", "AvgTrade",
                                          "NumTrades", "Open",    "52w Low", "52w High"};
  ASSERT_EQ(kColumnVocabulary.size(), names.size());
  for (std::size_t code = 0; code < names.size(); ++code) {
    SCOPED_TRACE(names[code]);
    EXPECT_EQ(kColumnVocabulary[code].name, names[code]);
    EXPECT_EQ(CodeOf(kColumnVocabulary[code].column), static_cast<int>(code));
  }
}

TEST(ColumnVocabulary, IsComparedInUpperCase) {
  for (const ColumnName& row : kColumnVocabulary) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(row.upper_case, UCase(row.name));
    EXPECT_EQ(ColumnCode(row.upper_case), CodeOf(row.column));
  }
}

TEST(ColumnVocabulary, KnowsNoOtherName) {
  for (const char* name : {"", "Last", " LAST", "LAST ", "52WLOW", "PRICE"}) {
    SCOPED_TRACE(name);
    EXPECT_EQ(ColumnCode(name), -1);
  }
}

TEST(ColumnVocabulary, StandsInTheDefaultListsOnceEach) {
  const auto listed = [](ColumnList list) {
    std::vector<std::string> names;
    for (const ColumnName& row : kColumnVocabulary) {
      if (row.listed == list) names.emplace_back(row.name);
    }
    return names;
  };
  EXPECT_THAT(Split(kDefaultListRight, ","),
              ::testing::UnorderedElementsAreArray(listed(ColumnList::ListRight)));
  EXPECT_THAT(Split(kDefaultListLeft, ","), ::testing::ElementsAreArray(listed(ColumnList::ListLeft)));
}

TEST(ColumnVocabulary, HasTheDefaultListsOfTheRegistry) {
  EXPECT_STREQ(kDefaultListRight, "Ticker,Last,Change,Bid,Ask,Date,Time");
  EXPECT_STREQ(kDefaultListLeft,
               "Tick,Volume,High,Low,BidSize,AskSize,LastVolume,AvgTrade,NumTrades,Open,52w Low,52w High");
  EXPECT_STREQ(kDefaultVerticalField, "Last");
}

}  // namespace
}  // namespace mirelo
