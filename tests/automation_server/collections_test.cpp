#include <string>
#include <vector>

#include "automation_server/server_test.h"

namespace mirelo::testing {
namespace {

using automation_server::Enumeration;
using ::testing::ElementsAre;

class Collections : public ServerTest {
 protected:
  Collections() {
    for (const char* symbol : {"A", "B", "C"}) Call(quotes, "ItemAdd", {symbol});
  }

  static std::string KeyOf(const Variant& quote) { return Get(DoorOf(quote), "NameID").ToText(); }
  static std::vector<std::string> Rest(Enumeration& walk) {
    std::vector<std::string> keys;
    while (const auto quote = walk.Next()) keys.push_back(KeyOf(*quote));
    return keys;
  }

  Door quotes = New("cQTDatas");
};

TEST_F(Collections, GiveItemsByPlaceAndByKey) {
  EXPECT_EQ(Get(quotes, "Count").ToInt32(), 3);
  EXPECT_EQ(KeyOf(Call(quotes, "Item", {2})), "B");
  EXPECT_EQ(KeyOf(Call(quotes, "Item", {"c"})), "C");
  for (const Variant& absent : {Variant(0), Variant(4), Variant(INT32_MAX), Variant("d"), Nothing()}) {
    EXPECT_EQ(NumberOf([&] { Call(quotes, "Item", {absent}); }), ErrorNumber(0x80040064));
  }
}

TEST_F(Collections, GiveItemsWithoutTheNameOfTheMember) {
  EXPECT_EQ(KeyOf(quotes->Value({"B"})), "B");
  EXPECT_EQ(NumberOf([&] { quotes->Value(); }), 449);
  EXPECT_EQ(NumberOf([] { New("cQTData")->Value(); }), 438);
}

TEST_F(Collections, GiveItemsBehindThePropertyThatHoldsThem) {
  const Door facade = New("cMirelo");
  const Door stream = New("cQTStreaming");
  Set(stream, "QTConteiner", ObjectOf(quotes));
  EXPECT_EQ(KeyOf(Get(stream, "QTConteiner", {"B"})), "B");
  EXPECT_EQ(NumberOf([&] { Let(stream, "QTConteiner", 1, {"B"}); }), 438);
  Set(stream, "QTConteiner", Nothing());
  EXPECT_EQ(NumberOf([&] { Get(stream, "QTConteiner", {"B"}); }), 91);
  Set(facade, "masPrevVolume", ObjectOf(New("cQTData")));
  EXPECT_EQ(NumberOf([&] { Get(facade, "masPrevVolume", {1}); }), 438) << "that one has no items";
}

TEST_F(Collections, TakeItemsThatTheClientMade) {
  const Door quote = New("cQTData");
  Let(quote, "NameID", "own");
  Call(quotes, "Add", {ObjectOf(quote), "key"});
  EXPECT_EQ(Call(quotes, "Item", {"KEY"}).AsObject(), quote->object());
  Call(quotes, "Add", {ObjectOf(quote)});
  EXPECT_EQ(Get(quotes, "Count").ToInt32(), 5);
  EXPECT_EQ(NumberOf([&] { Call(quotes, "Add", {ObjectOf(quote), "key"}); }), ErrorNumber(0x80040064));
  EXPECT_EQ(NumberOf([&] { Call(quotes, "Add", {Nothing()}); }), ErrorNumber(0x80040064));
  EXPECT_EQ(NumberOf([&] { Call(quotes, "Add", {ObjectOf(quotes)}); }), 13);
}

TEST_F(Collections, AreWalkedByForEach) { EXPECT_THAT(Rest(*quotes->NewEnum()), ElementsAre("A", "B", "C")); }

TEST_F(Collections, AreWalkedByTheNameOfTheMemberToo) {
  const Variant walk = Call(quotes, "NewEnum");
  ASSERT_NE(std::dynamic_pointer_cast<Enumeration>(walk.AsObject()), nullptr);
  EXPECT_THAT(Rest(dynamic_cast<Enumeration&>(*walk.AsObject())), ElementsAre("A", "B", "C"));
}

TEST_F(Collections, MayChangeWhileTheyAreWalked) {
  const auto walk = quotes->NewEnum();
  EXPECT_EQ(KeyOf(*walk->Next()), "A");
  Call(quotes, "Remove", {"A"});
  Call(quotes, "Remove", {"B"});
  Call(quotes, "ItemAdd", {"D"});
  EXPECT_THAT(Rest(*walk), ElementsAre("C", "D"));
}

TEST_F(Collections, MayBeClearedAndGoneWhileTheyAreWalked) {
  const auto walk = quotes->NewEnum();
  EXPECT_EQ(KeyOf(*walk->Next()), "A");
  Call(quotes, "Clear");
  quotes = nullptr;
  EXPECT_THAT(Rest(*walk), ElementsAre("B", "C"));
}

TEST_F(Collections, HaveWalksThatCanBeCopied) {
  const auto walk = quotes->NewEnum();
  walk->Next();
  const auto copy = walk->Clone();
  EXPECT_THAT(Rest(*walk), ElementsAre("B", "C"));
  EXPECT_THAT(Rest(*copy), ElementsAre("B", "C"));
  EXPECT_EQ(walk->Next(), std::nullopt) << "the end is the end";
}

TEST_F(Collections, AreTheOnlyObjectsThatAreWalked) {
  EXPECT_EQ(NumberOf([] { New("cQTData")->NewEnum(); }), 438);
}

}  // namespace
}  // namespace mirelo::testing
