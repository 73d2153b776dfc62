#include <gtest/gtest.h>

#include "support/facade_test.h"

namespace mirelo::testing {
namespace {

class VerticalIndex : public FacadeTest {};

TEST_F(VerticalIndex, IsThePlaceOfTheFieldAmongTheVisibleColumns) {
  struct Case {
    const char* what;
    const char* field;  // null when nothing is stored
    const char* list;
    int index;
  };
  const Case cases[] = {
      {"nothing stored: Last in the default list", nullptr, nullptr, 2},
      {"a field of the default list", "Time", nullptr, 7},
      {"case does not count", "bid", "Ticker,BID", 2},
      {"the last of several wins", "Last", "Ticker,LAST,last", 3},
      {"a field that is not listed", "Volume", "Ticker,Bid,Ask", 2},
      {"an empty list", "Last", "", 2},
      {"blanks count", "Last", "Ticker,Bid,Ask, Last", 2},
      {"an empty name", "", "Ticker,Bid,Ask,", 4},
      {"the first", "Ticker", "Ticker,Last", 1},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    facade.reset();
    facade.emplace();
    stored.RegDeleteKeyA(host::Registry::kCurrentUser, "Software\\Kestrin\\Dovanta2\\Settings");
    if (c.field != nullptr) Save("VerticalField", c.field);
    if (c.list != nullptr) Save("ListRight", c.list);
    EXPECT_EQ(facade->VerticalIndex(), c.index);
  }
}

TEST_F(VerticalIndex, FailsWithTheStore) {
  Save("ListRight", "Ticker,Last");
  registry.Raise("RegQueryValueExA");
  EXPECT_EQ(NumberOf([&] { facade->VerticalIndex(); }), ErrorNumber(0x80044284));
  EXPECT_TRUE(desktop.reports.empty());
}

}  // namespace
}  // namespace mirelo::testing
