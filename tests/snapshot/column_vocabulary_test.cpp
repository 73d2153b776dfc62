#include "snapshot/column_vocabulary.h"
#include "snapshot/column_names.h"

#include <gmock/gmock.h>

#include <fstream>
#include <iterator>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "automation/text.h"

namespace mirelo {
namespace {

TEST(ColumnVocabulary, HasNineteenNamesInTheOrderOfTheReplysFields) {
  const std::vector<std::string> names = {"Ticker",    "Date",    "Time",    "Last",       "Bid",
                                          "Ask",       "Change",  "Tick",    "Volume",     "High",
                                          "Low",       "BidSize", "AskSize", "LastVolume", "AvgTrade",
                                          "NumTrades", "Open",    "52w Low", "52w High"};
  ASSERT_EQ(kReplyFields, names.size());
  for (std::size_t code = 0; code < names.size(); ++code) {
    SCOPED_TRACE(names[code]);
    EXPECT_EQ(kColumnVocabulary[code].name, names[code]);
    EXPECT_EQ(ColumnCode(kColumnVocabulary[code].upper_case), static_cast<int>(code));
  }
}

TEST(ColumnVocabulary, IsComparedInUpperCase) {
  std::set<std::string_view> names;
  for (const ColumnRow& row : kColumnVocabulary) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(row.upper_case, UCase(row.name));
    EXPECT_EQ(FindColumn(row.upper_case), &row);
    EXPECT_TRUE(names.insert(row.upper_case).second);
  }
}

TEST(ColumnVocabulary, KnowsNoOtherName) {
  for (const char* name : {"", "Last", " LAST", "LAST ", "52WLOW", "PRICE"}) {
    SCOPED_TRACE(name);
    EXPECT_EQ(ColumnCode(name), -1);
  }
}

TEST(ColumnVocabulary, IsPrintedInAnOrderForReading) {
  EXPECT_STREQ(
      kColumnsForReading,
      "Ticker,Last,Change,Bid,Ask,BidSize,AskSize,Volume,LastVolume,High,Low,Open,52w High,52w Low,Tick,"
      "AvgTrade,NumTrades,Date,Time");
}

// The guide's table is that of the vocabulary.
TEST(ColumnVocabulary, StandsInTheGuide) {
  std::ifstream file(MIRELO_SOURCE_DIR "/docs/guide.md");
  const std::string guide(std::istreambuf_iterator<char>(file), {});
  std::string table = "| Column | What it holds |\n| --- | --- |\n";
  for (const ColumnRow& row : kColumnVocabulary) {
    table.append("| `").append(row.name).append("` | ").append(row.meaning).append(" |\n");
  }
  EXPECT_THAT(guide, ::testing::HasSubstr(table + "\n"));
}

TEST(ColumnVocabulary, HasTheDefaultListsOfTheRegistry) {
  EXPECT_STREQ(kDefaultListRight, "Ticker,Last,Change,Bid,Ask,Date,Time");
  EXPECT_STREQ(kDefaultListLeft,
               "Tick,Volume,High,Low,BidSize,AskSize,LastVolume,AvgTrade,NumTrades,Open,52w Low,52w High");
  EXPECT_STREQ(kDefaultVerticalField, "Last");
}

}  // namespace
}  // namespace mirelo
