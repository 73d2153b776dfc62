// The names that the tables can show, and comma lists of them.

#include <gmock/gmock.h>

#include "automation/text.h"
#include "diagnostics/CErrorHandler.h"
#include "dialog/frmMirelo.h"
#include "support/facade_test.h"

namespace mirelo::testing {
namespace {

using ::testing::IsEmpty;

// The routines report to the facade's error handler.
class FieldNames : public FacadeTest {
 protected:
  ~FieldNames() override { EXPECT_THAT(mGlobal::ErrorHandler().CallStack(), IsEmpty()); }
};

struct Field {
  const char* name;
  bool vertical;  // whether a vertical table can show it
};

constexpr Field kFields[] = {
    {"Ticker", true},     {"Last", true},  {"Change", true},   {"Bid", true},       {"Ask", true},
    {"Date", true},       {"Time", true},  {"Volume", true},   {"BidSize", true},   {"AskSize", true},
    {"LastVolume", true}, {"High", true},  {"Low", true},      {"AvgTrade", true},  {"NumTrades", true},
    {"Open", true},       {"Tick", false}, {"52w Low", false}, {"52w High", false},
};

TEST_F(FieldNames, HeadTheQuoteTableAndMostOfThemAVerticalTable) {
  for (const Field& field : kFields) {
    for (const std::string& name : {std::string(field.name), UCase(field.name), LCase(field.name)}) {
      SCOPED_TRACE(name);
      EXPECT_TRUE(frmMirelo::CheckFieldHeaderTable(name));
      EXPECT_EQ(frmMirelo::CheckFieldForVerticalTable(name), field.vertical);
    }
  }
}

TEST_F(FieldNames, AreWholeNamesWithoutBlanksAround) {
  for (const char* name :
       {"", " ", "Last ", " Last", "La st", "52wLow", "Bid Size", "LastVolum", "Ticker:"}) {
    SCOPED_TRACE(name);
    EXPECT_FALSE(frmMirelo::CheckFieldHeaderTable(name));
    EXPECT_FALSE(frmMirelo::CheckFieldForVerticalTable(name));
  }
}

struct ListCase {
  const char* list;
  const char* result;
};

TEST_F(FieldNames, OfAVerticalTableAreKeptInTheirOrder) {
  constexpr ListCase kCases[] = {
      {"", ""},
      {"Ticker,Last,Bid", "Ticker,Last,Bid"},
      {"Ticker,Tick,Last,52w High,Bid", "Ticker,Last,Bid"},
      {"52w Low,Tick", ""},
      {"bid,LAST,bid", "bid,LAST,bid"},
      {"Last, Bid,Ask ,Foo,,Open", "Last,Open"},
  };
  for (const auto& [list, result] : kCases) {
    SCOPED_TRACE(list);
    EXPECT_EQ(frmMirelo::GiveListVerticFields(list), result);
  }
}

TEST_F(FieldNames, LoseTheirRepeatsAndKeepTheFirstSpelling) {
  constexpr ListCase kCases[] = {
      {"", ""},
      {"Last", "Last"},
      {"Last,last,Bid", "Last,Bid"},
      {"bid,Last,BID,last,Bid,Ask", "bid,Last,Ask"},
      {"Last,,Bid,", "Last,Bid"},
      {",,", ""},
      {"Last,Last ", "Last,Last "},
  };
  for (const auto& [list, result] : kCases) {
    SCOPED_TRACE(list);
    EXPECT_EQ(frmMirelo::NullDublicatForListRight(list), result);
  }
}

}  // namespace
}  // namespace mirelo::testing
