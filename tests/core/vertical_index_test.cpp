#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "automation/runtime_error.h"
#include "support/error_number.h"
#include "support/facade_test.h"

namespace mirelo::testing {
namespace {

class VerticalIndex : public FacadeTest {
 protected:
  // Makes these two the only settings that are stored; nothing is stored where there is no value.
  void Store(std::optional<std::string> field, std::optional<std::string> list) {
    stored.RegDeleteKeyA(host::Registry::kCurrentUser, "Software\\Kestrin\\Dovanta2\\Settings");
    if (field) Save("VerticalField", *field);
    if (list) Save("ListRight", *list);
  }
};

TEST_F(VerticalIndex, IsThePlaceOfTheFieldAmongTheVisibleColumns) {
  struct Case {
    const char* what;
    std::optional<std::string> field;  // none when nothing is stored
    std::optional<std::string> list;
    int index;
  };
  const Case cases[] = {
      {"nothing stored: Last in the default list", std::nullopt, std::nullopt, 2},
      {"a field of the default list", "Time", std::nullopt, 7},
      {"no field stored: Last", std::nullopt, "Ticker,Bid,Last", 3},
      {"case does not count", "bid", "Ticker,Ask,BID", 3},
      {"an empty name", "", "Ticker,Bid,Ask,", 4},
      {"the first", "Ticker", "Ticker,Last", 1},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    Store(c.field, c.list);
    EXPECT_EQ(facade->VerticalIndex(), c.index);
  }
}

TEST_F(VerticalIndex, IsThatOfTheLastDuplicate) {
  Store("Last", "Ticker,LAST,last");
  EXPECT_EQ(facade->VerticalIndex(), 3);
  Store("Last", "Last,Bid,Last,Ask");
  EXPECT_EQ(facade->VerticalIndex(), 3);
}

TEST_F(VerticalIndex, IsTwoForAFieldThatIsNotListed) {
  Store("Volume", "Ticker,Bid,Ask");
  EXPECT_EQ(facade->VerticalIndex(), 2);
  Store("Last", "Ticker,Bid,Ask, Last");  // blanks count
  EXPECT_EQ(facade->VerticalIndex(), 2);
}

// An empty text has no pieces, not even an empty one.
TEST_F(VerticalIndex, IsTwoForAnEmptyList) {
  Store("Last", "");
  EXPECT_EQ(facade->VerticalIndex(), 2);
  Store("", "");
  EXPECT_EQ(facade->VerticalIndex(), 2);
}

TEST_F(VerticalIndex, OverflowsBehindColumn32767) {
  Store("Last", std::string(32766, ',') + "Last");
  EXPECT_EQ(facade->VerticalIndex(), 32767);
  Store("Last", std::string(32767, ',') + "Last");
  EXPECT_EQ(NumberOf([&] { facade->VerticalIndex(); }), 6);
}

TEST_F(VerticalIndex, FailsWithTheStore) {
  Save("ListRight", "Ticker,Last");
  registry.Raise("RegQueryValueExA");
  EXPECT_EQ(NumberOf([&] { facade->VerticalIndex(); }), ErrorNumber(0x80044284));
  EXPECT_TRUE(desktop.reports.empty());
}

}  // namespace
}  // namespace mirelo::testing
