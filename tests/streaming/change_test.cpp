#include <functional>
#include <string>
#include <vector>

#include "streaming/stream_test.h"

namespace mirelo::testing {
namespace {

// One compared field: how a record carries a value of it, and the least value that counts.
struct Compared {
  const char* name;
  int id;
  enum { Price, SignedPrice, Volume, Quantity } kind;
};
void PrintTo(const Compared& field, std::ostream* out) { *out << field.name; }

constexpr Compared kCompared[] = {
    {"last price", 4, Compared::Price},    {"bid price", 2, Compared::Price},
    {"ask price", 3, Compared::Price},     {"change", 5, Compared::SignedPrice},
    {"volume", 6, Compared::Volume},       {"high", 12, Compared::Price},
    {"low", 13, Compared::Price},          {"bid size", 9, Compared::Quantity},
    {"ask size", 10, Compared::Quantity},  {"average trade size", 21, Compared::Quantity},
    {"open", 7, Compared::Price},          {"trades", 20, Compared::Quantity},
    {"52-week high", 16, Compared::Price}, {"52-week low", 17, Compared::Price},
};

class ComparedField : public StreamTest, public ::testing::WithParamInterface<Compared> {
 protected:
  ComparedField() { stream->connect(); }
  // Whether a record with this value alone publishes a quote.
  bool Changes(double value, const char* symbol = "X") {
    const int before = events;
    Level1Wire record;
    record.Symbol(symbol);
    switch (GetParam().kind) {
      case Compared::Price:
      case Compared::SignedPrice:
        record.Double(GetParam().id, value);
        break;
      case Compared::Volume:
        record.Long(GetParam().id, static_cast<std::int64_t>(value));
        break;
      case Compared::Quantity:
        record.Integer(GetParam().id, static_cast<std::int32_t>(value));
        break;
    }
    Deliver(record);
    return events > before;
  }
};

INSTANTIATE_TEST_SUITE_P(Table, ComparedField, ::testing::ValuesIn(kCompared), [](const auto& info) {
  std::string name;
  for (const char c : std::string(info.param.name))
    name += std::isalnum(static_cast<unsigned char>(c)) ? c : '_';
  return name;
});

TEST_P(ComparedField, WithoutAnotherValueIsToldAsUnchanged) {
  std::vector<std::string> unchanged;
  stream->Unchanged.Subscribe([&](std::string_view symbol) { unchanged.emplace_back(symbol); });
  EXPECT_TRUE(Changes(2));
  EXPECT_THAT(unchanged, ::testing::IsEmpty());
  EXPECT_FALSE(Changes(2));
  EXPECT_THAT(unchanged, ::testing::ElementsAre("X"));
}

TEST_P(ComparedField, ChangesToZeroWhereZerosCount) {
  EXPECT_TRUE(Changes(2));
  EXPECT_FALSE(Changes(0)) << "the rule of the class";
  stream->CountZeros(true);
  EXPECT_TRUE(Changes(0));
  EXPECT_FALSE(Changes(0)) << "it is 0 already";
  EXPECT_TRUE(Changes(2)) << "another value than the 0 before";
}

TEST_P(ComparedField, StaysAsItIsWhereARecordLacksItThoughZerosCount) {
  stream->CountZeros(true);
  EXPECT_TRUE(Changes(2));
  Deliver(Level1Wire().Symbol("X"));
  EXPECT_FALSE(Changes(2));
}

TEST_P(ComparedField, OfATickersFirstRecordIsNewsEvenByZeroWhereZerosCount) {
  EXPECT_FALSE(Changes(0, "Y")) << "the rule of the class";
  stream->CountZeros(true);
  EXPECT_TRUE(Changes(0));
  EXPECT_FALSE(Changes(0));
}

TEST_P(ComparedField, ChangesByAnotherValue) {
  EXPECT_TRUE(Changes(2));
  EXPECT_FALSE(Changes(2));
  EXPECT_TRUE(Changes(3));
  EXPECT_TRUE(Changes(2));
}

TEST_P(ComparedField, DoesNotCountAtZero) {
  EXPECT_FALSE(Changes(0));
  Changes(2);
  EXPECT_FALSE(Changes(0));
  EXPECT_FALSE(Changes(2)) << "the stored value stayed";
}

TEST_P(ComparedField, CountsBelowZeroForTheChangeOnly) {
  EXPECT_EQ(Changes(-1), GetParam().kind == Compared::SignedPrice);
}

TEST_P(ComparedField, IsComparedExactly) {
  if (GetParam().kind == Compared::Price || GetParam().kind == Compared::SignedPrice) {
    EXPECT_TRUE(Changes(0.1));
    EXPECT_TRUE(Changes(0.1 + 1e-17 + 1e-16));
    EXPECT_TRUE(Changes(5e-324)) << "any price above 0";
  } else {
    EXPECT_TRUE(Changes(1)) << "any quantity from 1 on";
  }
}

TEST_P(ComparedField, BelongsToItsSymbol) {
  EXPECT_TRUE(Changes(2, "A"));
  EXPECT_TRUE(Changes(2, "B"));
  EXPECT_FALSE(Changes(2, "a"));
}

class NotCompared : public StreamTest {};

TEST_F(NotCompared, AreLastSizeAndAllOtherFields) {
  stream->connect();
  struct Case {
    const char* name;
    Level1Wire record;
  };
  const auto record = [] { return Level1Wire().Symbol("X"); };
  for (const auto& [name, wire] : {
           Case{"last size", record().LastSize(100)},
           {"previous close", record().Double(8, 1)},
           {"tick", record().Fixed(14, "+")},
           {"stamp", record().Stamp("01202011083613")},
           {"company name", record().Text(18, "Company")},
           {"previous volume", record().Long(19, 1)},
           {"average volume", record().Long(22, 1)},
           {"dividend", record().Double(23, 1)},
           {"earnings", record().Double(24, 1)},
           {"exchange", record().Text(25, "Q")},
           {"market capitalisation", record().Text(26, "1B")},
           {"price to earnings", record().Double(27, 1)},
           {"open interest", record().Integer(28, 1)},
           {"UPC", record().Fixed(29, "U")},
           {"yield", record().Double(30, 1)},
           {"close", record().Double(31, 1)},
       }) {
    Deliver(wire);
    EXPECT_EQ(events, 0) << name;
  }
}

TEST_F(NotCompared, AreNoNewsOfATickersFirstRecordThoughZerosCount) {
  stream->connect();
  stream->CountZeros(true);
  Deliver(Level1Wire().Symbol("A"));
  Deliver(Level1Wire().Symbol("B").LastSize(0));
  Deliver(Level1Wire().Symbol("C").LastSize(100));
  Deliver(Level1Wire().Symbol("D").Double(8, 1));
  Deliver(Level1Wire().Symbol("E").Stamp("01202011083613"));
  EXPECT_EQ(events, 0);
}

TEST_F(NotCompared, FieldsArePublishedWithAChange) {
  stream->connect();
  Deliver(Level1Wire().Symbol("X").Last(28.35).LastSize(100));
  const auto quotes = Take();
  ASSERT_EQ(quotes.size(), 1u);
  EXPECT_EQ(quotes[0]->Last_Size(), 100);
}

TEST_F(StreamTest, StoresEveryChangeOfARecordThatChangedSomething) {
  stream->connect();
  Deliver(Level1Wire().Symbol("X").Last(1).Bid(2).Volume(3));
  Deliver(Level1Wire().Symbol("X").Last(1).Bid(4).Volume(3));
  Deliver(Level1Wire().Symbol("X").Last(1).Bid(4).Volume(3));
  EXPECT_EQ(events, 2);
}

}  // namespace
}  // namespace mirelo::testing
