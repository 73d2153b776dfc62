#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "quotetracker/command.h"
#include "quotetracker/fixed_clock.h"
#include "quotetracker/replay.h"
#include "quotetracker/replay_columns.h"
#include "quotetracker/request_interface.h"

namespace mirelo::quotetracker {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::StartsWith;

TEST(Command, IsANameAndArguments) {
  const auto command = ParseCommand("/req?GetLastQuote(MSFT,IBM)");
  ASSERT_TRUE(command.has_value());
  EXPECT_EQ(command->name, "GetLastQuote");
  EXPECT_THAT(command->arguments, ElementsAre("MSFT", "IBM"));
}

TEST(Command, HasOneArgumentMoreThanCommas) {
  struct Case {
    const char* resource;
    std::vector<std::string> arguments;
  };
  for (const Case& c : {Case{"/req?X()", {}}, Case{"/req?X(A)", {"A"}}, Case{"/req?X(A,)", {"A", ""}},
                        Case{"/req?X(,)", {"", ""}}, Case{"/req?X(A,,B)", {"A", "", "B"}}}) {
    SCOPED_TRACE(c.resource);
    EXPECT_EQ(ParseCommand(c.resource).value().arguments, c.arguments);
  }
}

TEST(Command, ResolvesEscapesAndLeavesOtherPercentSigns) {
  EXPECT_THAT(ParseCommand("/req?X(My%20Portfolio,100%,%zz,%4,a%2cb)").value().arguments,
              ElementsAre("My Portfolio", "100%", "%zz", "%4", "a", "b"));
}

TEST(Command, KeepsBracketsWithinArguments) {
  EXPECT_THAT(ParseCommand("/req?X(Shares (old),B)").value().arguments, ElementsAre("Shares (old)", "B"));
}

TEST(Command, IsNothingInAnotherForm) {
  for (const char* resource :
       {"", "/", "/req", "/req?", "/req?GetLastQuote", "/req?GetLastQuote(MSFT", "/req?(MSFT)",
        "/req?GetLastQuote)MSFT(", "/REQ?EnumPorts()", "req?EnumPorts()", "/index.html",
        "/req?GetLastQuote(A%0D%0AB)", "/req?GetLastQuote(A%00)", "/req?X(A)B"}) {
    SCOPED_TRACE(resource);
    EXPECT_EQ(ParseCommand(resource), std::nullopt);
  }
}

class Requests : public ::testing::Test {
 protected:
  static std::unique_ptr<QuoteSource> TwoQuotes() {
    std::istringstream text(
        ReplayColumns::Names() +
        "\n"
        "MSFT,12/30/2005,09:30:00,1.01,2.02,3.03,-4.04,D,5,6.06,7.07,8,9,10,11,12,13.13,14.14,15.15\n"
        "IBM,12/30/"
        "2005,09:30:00,82.20,82.15,82.25,0.50,U,1000,82.50,82.00,1,2,100,100,10,82.00,71.85,99.10\n");
    return std::make_unique<Replay>(text, "quotes", 1, FixedClock("01/01/2020", "00:00:00"));
  }

  std::unique_ptr<QuoteSource> quotes_ = TwoQuotes();
  Portfolios portfolios_{{{"Main", {"MSFT", "IBM"}}, {"My Portfolio", {}}}};
  RequestInterface requests_{*quotes_, portfolios_};
};

TEST_F(Requests, ForAQuoteGiveItsNineteenFieldsInTheOrderOfTheirCodes) {
  EXPECT_EQ(requests_.Answer("/req?GetLastQuote(MSFT)"),
            "OK\r\n"
            "MSFT,12/30/2005,09:30:00,1.01,2.02,3.03,-4.04,D,5,6.06,7.07,8,9,10,11,12,13.13,14.14,15.15");
}

TEST_F(Requests, ForQuotesGiveOneRecordEachAndNoLineBreakBehindTheLast) {
  EXPECT_EQ(
      requests_.Answer("/req?GetLastQuote(IBM,MSFT)"),
      "OK\r\n"
      "IBM,12/30/2005,09:30:00,82.20,82.15,82.25,0.50,U,1000,82.50,82.00,1,2,100,100,10,82.00,71.85,99.10\r\n"
      "MSFT,12/30/2005,09:30:00,1.01,2.02,3.03,-4.04,D,5,6.06,7.07,8,9,10,11,12,13.13,14.14,15.15");
}

TEST_F(Requests, ForQuotesKeepPlaceAndSpellingOfEachTicker) {
  EXPECT_EQ(
      requests_.Answer("/req?GetLastQuote(none,ibm,)"),
      "OK\r\n"
      "none,12/30/2005,09:30:00,0.00,0.00,0.00,0.00,S,0,0.00,0.00,0,0,0,0,0,0.00,0.00,0.00\r\n"
      "ibm,12/30/2005,09:30:00,82.20,82.15,82.25,0.50,U,1000,82.50,82.00,1,2,100,100,10,82.00,71.85,99.10\r\n"
      ",12/30/2005,09:30:00,0.00,0.00,0.00,0.00,S,0,0.00,0.00,0,0,0,0,0,0.00,0.00,0.00");
}

TEST_F(Requests, ForNoQuotesGiveTheStatusAlone) { EXPECT_EQ(requests_.Answer("/req?GetLastQuote()"), "OK"); }

TEST_F(Requests, ForPortfoliosGiveTheirNamesOnTheSecondLine) {
  EXPECT_EQ(requests_.Answer("/req?EnumPorts()"), "OK\r\nMain,My Portfolio");
}

TEST_F(Requests, WithoutPortfoliosGiveAnEmptySecondLine) {
  Portfolios none;
  RequestInterface requests(*quotes_, none);
  EXPECT_EQ(requests.Answer("/req?EnumPorts()"), "OK\r\n");
  EXPECT_THAT(requests.Answer("/req?AddStocksToPort(CURRENT,A)"), StartsWith("ERROR"));
}

TEST_F(Requests, ForAPortfolioGiveItsSymbolsOnTheSecondLine) {
  EXPECT_EQ(requests_.Answer("/req?EnumPortSymbols(Main)"), "OK\r\nMSFT,IBM");
  EXPECT_EQ(requests_.Answer("/req?EnumPortSymbols(My%20Portfolio)"), "OK\r\n");
  EXPECT_EQ(requests_.Answer("/req?EnumPortSymbols(my portfolio)"), "OK\r\n");
}

TEST_F(Requests, AddTheSymbolsThatThePortfolioLacks) {
  EXPECT_EQ(requests_.Answer("/req?AddStocksToPort(CURRENT,ORCL,msft,ORCL,,SAP)"), "OK");
  EXPECT_EQ(requests_.Answer("/req?EnumPortSymbols(Main)"), "OK\r\nMSFT,IBM,ORCL,SAP");
  EXPECT_EQ(requests_.Answer("/req?AddStocksToPort(My Portfolio,GE)"), "OK");
  EXPECT_THAT(portfolios_.All()[1].symbols, ElementsAre("GE"));
}

TEST_F(Requests, AddNothingBeyondThePortfoliosRoom) {
  std::string request = "/req?AddStocksToPort(CURRENT";
  for (std::size_t i = 0; i < Portfolios::kMostSymbols - 1; ++i) request += ",S" + std::to_string(i);
  EXPECT_THAT(requests_.Answer(request + ")"), StartsWith("ERROR"));
  EXPECT_THAT(portfolios_.All()[0].symbols, ElementsAre("MSFT", "IBM"));
}

TEST_F(Requests, OfAnUnknownPortfolioAreNotOk) {
  EXPECT_EQ(requests_.Answer("/req?EnumPortSymbols(Other)"), "ERROR: no such portfolio");
  EXPECT_EQ(requests_.Answer("/req?EnumPortSymbols()"), "ERROR: no such portfolio");
  EXPECT_THAT(requests_.Answer("/req?AddStocksToPort(Other,A)"), StartsWith("ERROR"));
  EXPECT_THAT(requests_.Answer("/req?AddStocksToPort()"), StartsWith("ERROR"));
}

TEST_F(Requests, OfAnUnknownCommandAreNotOk) {
  EXPECT_EQ(requests_.Answer("/req?GetLevel2(MSFT)"), "ERROR: unknown command GetLevel2");
  EXPECT_EQ(requests_.Answer("/favicon.ico"), "ERROR: a request has the form /req?Command(argument,...)");
}

TEST_F(Requests, NameTheirCommandInAnyCase) {
  EXPECT_THAT(requests_.Answer("/req?enumports()"), StartsWith("OK\r\n"));
}

}  // namespace
}  // namespace mirelo::quotetracker
