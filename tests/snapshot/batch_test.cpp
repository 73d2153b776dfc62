#include <gmock/gmock.h>

#include <algorithm>

#include "snapshot/last_quote_test.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

// How tickers are cut into requests, and rows of the result belong to them.
class Batch : public LastQuoteTest {
 protected:
  Batch() { Show("Ticker"); }

  std::vector<std::ptrdiff_t> CommasPerRequest() const {
    std::vector<std::ptrdiff_t> commas;
    for (const std::string& resource : internet.Resources())
      commas.push_back(std::ranges::count(resource, ','));
    return commas;
  }
};

TEST_F(Batch, OfOneTickerIsOneRequestWithoutAComma) {
  const Variant result = facade->GetLastQuote(TickersOf({"MSFT"}));
  EXPECT_THAT(internet.Resources(), ElementsAre("/req?GetLastQuote(MSFT)"));
  EXPECT_EQ(result.AsArray().LBound(1), 1);
  EXPECT_EQ(result.AsArray().UBound(1), 1);
}

TEST_F(Batch, JoinsTickersByCommas) {
  facade->GetLastQuote(TickersOf({"MSFT", "IBM", "GE"}));
  EXPECT_THAT(internet.Resources(), ElementsAre("/req?GetLastQuote(MSFT,IBM,GE)"));
}

TEST_F(Batch, HoldsEightyOneTickers) {
  struct Case {
    std::int32_t tickers;
    std::vector<std::ptrdiff_t> commas;
    bool result;
  };
  const Case cases[] = {
      {1, {0}, true},        {2, {1}, true},         {79, {78}, true},
      {80, {79}, true},      {81, {80}, false},      {82, {80, 0}, true},
      {161, {80, 79}, true}, {162, {80, 80}, false}, {163, {80, 80, 0}, true},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.tickers);
    internet.requests.clear();
    const Variant result = facade->GetLastQuote(Tickers(c.tickers));
    EXPECT_EQ(CommasPerRequest(), c.commas);
    if (!c.result) {
      EXPECT_TRUE(IsEmptyText(result));
      continue;
    }
    ASSERT_TRUE(result.IsArray());
    EXPECT_EQ(result.AsArray().UBound(1), c.tickers);
    for (std::int32_t row = 1; row <= c.tickers; ++row) {
      EXPECT_EQ(result.AsArray()(row, 1).ToText(), "T" + std::to_string(row));
    }
  }
  EXPECT_THAT(desktop.reports, IsEmpty());
}

TEST_F(Batch, ThatEndsExactlyAtTheLastTickerTracksVolumesThoughThereIsNoResult) {
  TrackVolumes(81);
  EXPECT_TRUE(IsEmptyText(facade->GetLastQuote(Tickers(81))));
  EXPECT_EQ(Tracked(1, 1), "1000");
  EXPECT_EQ(Tracked(81, 1), "1000");
  EXPECT_THAT(mGlobal::ErrorHandler().CallStack(), IsEmpty());
}

TEST_F(Batch, IsSentToTheAddressOfTheSettings) {
  Save("Webaddress", "10.0.0.7");
  Save("HTTPPort", 8080);
  facade->GetLastQuote(TickersOf({"MSFT"}));
  ASSERT_THAT(internet.requests, SizeIs(1));
  EXPECT_EQ(internet.requests[0].host, "10.0.0.7");
  EXPECT_EQ(internet.requests[0].port, 8080);
  EXPECT_EQ(internet.requests[0].verb, "GET");
  EXPECT_EQ(internet.requests[0].headers, "");
  EXPECT_EQ(internet.requests[0].body, "");
}

TEST_F(Batch, OfOneEmptyTickerIsNotSent) {
  EXPECT_TRUE(IsEmptyText(facade->GetLastQuote(TickersOf({""}))));
  EXPECT_THAT(internet.requests, IsEmpty());
  EXPECT_THAT(desktop.boxes, IsEmpty());
  EXPECT_THAT(desktop.reports, IsEmpty());
  EXPECT_THAT(mGlobal::ErrorHandler().CallStack(), IsEmpty());
}

// Port, address and the two parts of the displacement, each behind an opened key.
TEST_F(Batch, OfACallUsesTheSettingsThatTheCallBeganWith) {
  Show("Time");
  internet.answer = [&](const auto& request) {
    Save("Webaddress", "10.0.0.7");
    Save("HTTPPort", 8080);
    Save("DisplacementHour", 1);
    return market.Reply(request.resource);
  };
  const int opened = registry.Calls("RegOpenKeyExA");
  const Variant result = facade->GetLastQuote(Tickers(82));
  EXPECT_EQ(registry.Calls("RegOpenKeyExA") - opened, 4);
  ASSERT_THAT(internet.requests, SizeIs(2));
  EXPECT_EQ(internet.requests[1].host, "127.0.0.1");
  EXPECT_EQ(internet.requests[1].port, 16239);
  EXPECT_THAT(RowOf(result, 82), ElementsAre("08:36:13"));

  EXPECT_THAT(RowOf(facade->GetLastQuote(Tickers(1)), 1), ElementsAre("09:36:13"));
  EXPECT_EQ(internet.requests[2].host, "10.0.0.7");
  EXPECT_EQ(internet.requests[2].port, 8080);
}

TEST_F(Batch, IsSentToThisMachineWhenNothingIsStored) {
  facade->GetLastQuote(TickersOf({"MSFT"}));
  ASSERT_THAT(internet.requests, SizeIs(1));
  EXPECT_EQ(internet.requests[0].host, "127.0.0.1");
  EXPECT_EQ(internet.requests[0].port, 16239);
}

TEST_F(Batch, NumbersRowsFromOneWhateverTheBoundsOfTheTickers) {
  for (const std::int32_t lower : {5, -3, 1}) {
    SCOPED_TRACE(lower);
    const Variant result = facade->GetLastQuote(Tickers(2, lower));
    EXPECT_EQ(result.AsArray().LBound(1), 1);
    EXPECT_EQ(result.AsArray().UBound(1), 2);
    EXPECT_THAT(RowOf(result, 2), ElementsAre("T2"));
  }
}

TEST_F(Batch, OfNoTickersIsARunTimeError) {
  EXPECT_TRUE(IsEmptyText(facade->GetLastQuote(VariantArray())));
  EXPECT_THAT(desktop.reports, SizeIs(1));
  EXPECT_THAT(desktop.reports[0].text, ::testing::HasSubstr("Error: 9, (Subscript out of range)"));
  EXPECT_THAT(internet.requests, IsEmpty());
}

TEST_F(Batch, OfTickersThatAreNoArrayIsARunTimeError) {
  EXPECT_TRUE(IsEmptyText(facade->GetLastQuote("MSFT")));
  ASSERT_THAT(desktop.reports, SizeIs(1));
  EXPECT_THAT(desktop.reports[0].text, ::testing::HasSubstr("Error: 13, (Type mismatch)"));
}

TEST_F(Batch, TakesTickersOfAnyTypeAsText) {
  VariantArray tickers(0, 2);
  tickers(0) = 7;
  tickers(2) = "IBM";
  facade->GetLastQuote(tickers);
  EXPECT_THAT(internet.Resources(), ElementsAre("/req?GetLastQuote(7,,IBM)"));
}

// Rows belong to lines by their position, whatever ticker stands in the line.
TEST_F(Batch, WhoseReplyIsShortLeavesItsLastRowsEmptyAndRealignsNothing) {
  internet.answer = [&](const auto& request) {
    const auto tickers = QuoteReplies::TickersOf(request.resource);
    if (tickers.size() == 1) return market.Reply(request.resource);
    return "OK\r\n" + market.Line("T2") + "\r\n" + market.Line("T1");
  };
  const Variant result = facade->GetLastQuote(Tickers(82));
  EXPECT_THAT(RowOf(result, 1), ElementsAre("T2"));
  EXPECT_THAT(RowOf(result, 2), ElementsAre("T1"));
  EXPECT_THAT(RowOf(result, 3), ElementsAre("T82"));
  EXPECT_THAT(RowOf(result, 4), ElementsAre("<empty>"));
  EXPECT_THAT(RowOf(result, 82), ElementsAre("<empty>"));
  EXPECT_THAT(desktop.reports, IsEmpty());
}

TEST_F(Batch, WhoseReplyIsTheStatusAloneGivesEmptyRows) {
  internet.answer = [](const auto&) { return "OK"; };
  EXPECT_THAT(RowOf(facade->GetLastQuote(Tickers(2)), 2), ElementsAre("<empty>"));
}

TEST_F(Batch, MayRunInsideTheTransferOfAnother) {
  bool nested = false;
  internet.answer = [&](const AnsweringInternet::Request& request) {
    if (!std::exchange(nested, true)) {
      const Variant inner = facade->GetLastQuote(TickersOf({"X", "Y"}));
      EXPECT_THAT(RowOf(inner, 2), ElementsAre("Y"));
    }
    return market.Reply(request.resource);
  };
  EXPECT_THAT(RowOf(facade->GetLastQuote(TickersOf({"A"})), 1), ElementsAre("A"));
  EXPECT_THAT(mGlobal::ErrorHandler().CallStack(), IsEmpty());
}

}  // namespace
}  // namespace mirelo::testing
