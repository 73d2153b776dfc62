#include "streaming/level1_fields.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

#include "streaming/reference_stream.h"
#include "streaming/stream_test.h"

namespace mirelo::testing {
namespace {

TEST(FieldTable, HoldsTheFeedsDescriptors) {
  constexpr std::string_view kDescriptors[] = {"",
                                               "Symb:x\u00A0 ",
                                               "B:8",
                                               "A:8",
                                               "L:8",
                                               "Change:8",
                                               "V:8",
                                               "Open:8",
                                               "Prev Close:8",
                                               "BidSize:4 ",
                                               "AskSize:4 ",
                                               "LastSize:4 ",
                                               "H:8",
                                               "L:8",
                                               "Tick:1 ",
                                               "D:14",
                                               "High52:8",
                                               "Low52:8",
                                               "Company Name:x",
                                               "PrevVolume:8",
                                               "#Trades:4",
                                               "AvgTradeSize:4",
                                               "AvgVol:8",
                                               "Dividend:8",
                                               "Earnings:8",
                                               "Exchange:x",
                                               "MarketCap:x",
                                               "PE:8",
                                               "OpenInterest:4",
                                               "UPC:1",
                                               "Yield:8",
                                               "Close:8"};
  ASSERT_EQ(kFieldTable.size(), std::size(kDescriptors));
  for (std::size_t id = 0; id < kFieldTable.size(); ++id)
    EXPECT_EQ(kFieldTable[id].descriptor, kDescriptors[id]);
}

TEST(FieldTable, StatesTheWidthThatEachKindTakes) {
  for (const Level1Field& field : kFieldTable) {
    SCOPED_TRACE(field.descriptor);
    const std::int32_t width = DescribedWidth(field.descriptor);
    switch (field.kind) {
      case FieldKind::Double:
      case FieldKind::LongVolume:
        EXPECT_EQ(width, 8);
        break;
      case FieldKind::Integer:
        EXPECT_EQ(width, 4);
        break;
      case FieldKind::Stamp:
        EXPECT_EQ(width, 14);
        break;
      case FieldKind::Dropped:
        EXPECT_EQ(width, 1);
        break;
      case FieldKind::ZeroTerminatedText:
      case FieldKind::Unknown:
        EXPECT_EQ(width, 0);
        break;
    }
  }
}

// A record of one field, the symbol, and a changed price: what the quote shows beyond the last two is the
// field.
class Fields : public StreamTest {
 protected:
  FlatQuote QuoteWith(const Level1Wire& fields) {
    Renew();
    stream->connect();
    Deliver(Level1Wire(fields).Symbol("X").Last(1).Bytes());
    const auto quotes = Take();
    EXPECT_EQ(quotes.size(), 1u);
    if (quotes.empty()) return {};
    FlatQuote flat = Flat(*quotes[0]);
    for (const char* name : {"NameID", "Symbol", "Last_Price"}) flat.erase(name);
    return flat;
  }
};

TEST_F(Fields, OfDoublesLandUnconverted) {
  for (const auto& [id, name] : {
           std::pair{2, "Bid_Price"},
           {3, "Ask_Price"},
           {5, "Change"},
           {7, "OpenTicker"},
           {8, "Prev_Close"},
           {12, "High"},
           {13, "Low"},
           {16, "Week_52_High"},
           {17, "Week_52_Low"},
           {23, "Dividend"},
           {24, "Earnings"},
           {27, "PE"},
           {30, "Yield"},
           {31, "CloseTicker"},
       }) {
    SCOPED_TRACE(name);
    EXPECT_EQ(QuoteWith(Level1Wire().Double(id, -0.1)), (FlatQuote{{name, "-0.10000000000000001"}}));
  }
}

TEST_F(Fields, OfSymbolPriceAndStampLandWhereTheyBelong) {
  stream->connect();
  Deliver(Level1Wire().Text(1, "Z\xFCrich").Double(4, 0.1).Fixed(15, "12312010235958"));
  const auto quotes = Take();
  ASSERT_EQ(quotes.size(), 1u);
  EXPECT_EQ(quotes[0]->Symbol(), "Zürich");
  EXPECT_EQ(quotes[0]->Last_Price(), 0.1);
  EXPECT_EQ(quotes[0]->Date_Time(), "12/31/2010 23:59:58");
  EXPECT_EQ(quotes[0]->TimeQT(), "08:36:13");
}

TEST_F(Fields, OfLongVolumesAreReadInTheirLowHalf) {
  for (const auto& [id, name] : {std::pair{6, "Volume"}, {19, "Prev_Volume"}, {22, "Average_Volume"}}) {
    SCOPED_TRACE(name);
    EXPECT_EQ(QuoteWith(Level1Wire().Long(id, 2'147'483'647)), (FlatQuote{{name, "2147483647"}}));
    EXPECT_EQ(QuoteWith(Level1Wire().Long(id, 2'147'483'648)), (FlatQuote{{name, "-2147483648"}}));
    EXPECT_EQ(QuoteWith(Level1Wire().Long(id, 5'000'000'000)), (FlatQuote{{name, "705032704"}}));
  }
}

TEST_F(Fields, OfIntegersAreSigned) {
  for (const auto& [id, name] : {std::pair{9, "Bid_Size"},
                                 {10, "Ask_Size"},
                                 {11, "Last_Size"},
                                 {20, "Trades"},
                                 {21, "Avg_Trade_Size"},
                                 {28, "Open_Interest"}}) {
    SCOPED_TRACE(name);
    EXPECT_EQ(QuoteWith(Level1Wire().Integer(id, -7)), (FlatQuote{{name, "-7"}}));
  }
}

TEST_F(Fields, OfTextsGoThroughTheCodePage) {
  for (const auto& [id, name] : {std::pair{18, "Company_Name"}, {25, "Exchange"}, {26, "Market_Cap"}}) {
    SCOPED_TRACE(name);
    EXPECT_EQ(QuoteWith(Level1Wire().Text(id, "Z\xFCrich \x80")), (FlatQuote{{name, "Zürich €"}}));
    EXPECT_EQ(QuoteWith(Level1Wire().Text(id, "")), FlatQuote{});
  }
}

TEST_F(Fields, OfTickAndUpcAreReadAndDropped) {
  EXPECT_EQ(QuoteWith(Level1Wire().Fixed(14, "+")), FlatQuote{});
  EXPECT_EQ(QuoteWith(Level1Wire().Fixed(29, "U")), FlatQuote{});
}

TEST_F(Fields, OfUnknownIdsCostFourBytes) {
  for (const int id : {0, 32, 33, 255, 256, 32767, -1, -32768}) {
    SCOPED_TRACE(id);
    EXPECT_EQ(QuoteWith(Level1Wire().Id(id).Raw("1234").Double(2, 2)), (FlatQuote{{"Bid_Price", "2"}}));
  }
}

TEST_F(Fields, BehindAnUnknownOneOfAnotherWidthAreTakenFromItsMiddle) {
  // The last four of its eight bytes read as id 9 and the first half of an integer, whose rest is the next
  // id.
  const auto quote =
      QuoteWith(Level1Wire().Id(99).Raw("1234").Id(9).Raw(std::string("\x05\0", 2)).Id(2).Raw("12"));
  EXPECT_EQ(quote, (FlatQuote{{"Bid_Size", "131077"}})) << "and so is what follows";
}

TEST_F(Fields, GivenTwiceCountOnce) {
  EXPECT_EQ(QuoteWith(Level1Wire().Bid(1).Bid(2)), (FlatQuote{{"Bid_Price", "2"}}));
}

// Each field by itself: with nothing in it, and not at all.
TEST_F(Fields, AreCarriedByTheQuotesWhoseRecordHadThemBeTheyZeroOrEmpty) {
  for (int id = 1; id < static_cast<int>(kFieldTable.size()); ++id) {
    SCOPED_TRACE(kFieldTable[static_cast<std::size_t>(id)].descriptor);
    const auto width =
        static_cast<std::size_t>(DescribedWidth(kFieldTable[static_cast<std::size_t>(id)].descriptor));
    // The price of another field makes it count as a quote; of a text there is the zero alone.
    const int other = id == 4 ? 2 : 4;
    Renew();
    stream->connect();
    Deliver(Level1Wire().Double(other, 1).Id(id).Raw(std::string(std::max<std::size_t>(width, 1), '\0')));
    const auto quotes = Take();
    ASSERT_EQ(quotes.size(), 1u);
    for (int field = 1; field < static_cast<int>(kFieldTable.size()); ++field) {
      EXPECT_EQ(quotes[0]->Carries(static_cast<QuoteField>(field)), field == id || field == other) << field;
    }
  }
}

TEST(CarriedFields, KeepEachIdThatTheyMayHaveByItself) {
  for (std::size_t id = 1; id < CarriedFields::kMost; ++id) {
    CarriedFields carried;
    carried.Note(id);
    carried.Note(id - 1, false);
    for (std::size_t field = 1; field < CarriedFields::kMost; ++field)
      EXPECT_EQ(carried.Has(static_cast<QuoteField>(field)), field == id) << id << ' ' << field;
  }
}

TEST_F(Fields, OfUnknownIdsAreNoneThatAQuoteCarries) {
  stream->connect();
  Deliver(Level1Wire().Last(1).Id(33).Raw("1234").Id(-1).Raw("1234"));
  const auto quotes = Take();
  ASSERT_EQ(quotes.size(), 1u);
  for (int field = 1; field < static_cast<int>(kFieldTable.size()); ++field) {
    EXPECT_EQ(quotes[0]->Carries(static_cast<QuoteField>(field)), field == 4) << field;
  }
}

TEST_F(Fields, OfASymbolGoThroughTheCodePage) {
  stream->connect();
  Deliver(Level1Wire().Symbol("\xC4\x80").Last(1));
  Deliver(Level1Wire().Symbol("\xE4\x80").Last(1));
  const auto quotes = Take();
  ASSERT_EQ(quotes.size(), 1u) << "states are found without regard to case, for all letters";
  EXPECT_EQ(quotes[0]->Symbol(), "Ä€");
}

}  // namespace
}  // namespace mirelo::testing
