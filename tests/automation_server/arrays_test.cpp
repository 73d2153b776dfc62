#include <cstdint>
#include <string>

#include "automation_server/server_test.h"

namespace mirelo::testing {
namespace {

class Arrays : public ServerTest {
 protected:
  // Rows 1 to 3, columns 1 and 2: element (r, c) is 10 r + c.
  static VariantArray Table() {
    VariantArray table(1, 3, 1, 2);
    for (std::int32_t row = 1; row <= 3; ++row) {
      for (std::int32_t column = 1; column <= 2; ++column) table(row, column) = 10 * row + column;
    }
    return table;
  }

  Door facade = New("cMirelo");
};

TEST_F(Arrays, KeepTheirBounds) {
  Let(facade, "masPrevVolume", Table());
  const Variant table = Get(facade, "masPrevVolume");
  EXPECT_EQ(table.AsArray().Dimensions(), 2);
  EXPECT_EQ(table.AsArray().LBound(1), 1);
  EXPECT_EQ(table.AsArray().UBound(2), 2);

  const Door stream = New("cQTStreaming");
  VariantArray tickers(-3, -2);
  tickers(-3) = "IBM";
  Let(stream, "arrTickers", tickers);
  EXPECT_EQ(Get(stream, "arrTickers").AsArray().LBound(), -3);
}

TEST_F(Arrays, OfPropertiesAreReadElementByElement) {
  Let(facade, "masPrevVolume", Table());
  EXPECT_EQ(Get(facade, "masPrevVolume", {3, 2}).ToInt32(), 32);
  EXPECT_EQ(Call(facade, "masPrevVolume", {"2", 1.2}).ToInt32(), 21) << "indexes are converted";

  const Door stream = New("cQTStreaming");
  VariantArray tickers(-3, -2);
  tickers(-3) = "IBM";
  Let(stream, "arrTickers", tickers);
  EXPECT_EQ(Get(stream, "arrTickers", {-3}).ToText(), "IBM");
}

TEST_F(Arrays, OfPropertiesAreAssignedElementByElement) {
  Let(facade, "masPrevVolume", Table());
  const Variant before = Get(facade, "masPrevVolume");
  Let(facade, "masPrevVolume", "new", {2, 1});
  EXPECT_EQ(Get(facade, "masPrevVolume", {2, 1}).ToText(), "new");
  EXPECT_EQ(Get(facade, "masPrevVolume", {2, 2}).ToInt32(), 22);
  EXPECT_EQ(before.AsArray()(2, 1).ToInt32(), 21) << "what was read before is the client's own";

  Set(facade, "masPrevVolume", ObjectOf(New("cQTData")), {3, 1});
  EXPECT_EQ(Get(facade, "masPrevVolume", {3, 1}).TypeName(), "cQTData");
}

TEST_F(Arrays, HaveNoElementsOutsideOfTheirBounds) {
  Let(facade, "masPrevVolume", Table());
  const Arguments outside[] = {{0, 1},         {4, 1}, {1, 3},   {INT32_MAX, INT32_MAX},
                               {INT32_MIN, 1}, {1},    {1, 1, 1}};
  for (const Arguments& indexes : outside) {
    EXPECT_EQ(NumberOf([&] { Get(facade, "masPrevVolume", indexes); }), 9);
    EXPECT_EQ(NumberOf([&] { Let(facade, "masPrevVolume", 1, indexes); }), 9);
  }
  EXPECT_EQ(NumberOf([&] { Get(facade, "masPrevVolume", {3e9, 1}); }), 6);
  EXPECT_EQ(NumberOf([&] { Get(facade, "masPrevVolume", {"first", 1}); }), 13);
  EXPECT_EQ(NumberOf([&] { Get(facade, "masPrevVolume", {LeftOut(), 1}); }), 449);
}

TEST_F(Arrays, AreWantedWhereIndexesStand) {
  EXPECT_EQ(NumberOf([&] { Get(facade, "masPrevVolume", {1, 1}); }), 13) << "it is still empty";
  EXPECT_EQ(NumberOf([&] { Let(facade, "masPrevVolume", 5, {1, 1}); }), 13);
}

TEST_F(Arrays, GoInWithAnyBounds) {
  internet.answer = [](const AnsweringInternet::Request&) {
    return "OK\r\nIBM,1/20/2011,9:30:00,28,1,29,27,26,100,30,20,1,1,0,0";
  };
  Call(facade, "LoadMasPosition");
  VariantArray tickers(7, 7);
  tickers(7) = "IBM";
  const Variant quotes = Call(facade, "GetLastQuote", {tickers});
  EXPECT_EQ(quotes.AsArray().Dimensions(), 2);
  EXPECT_EQ(quotes.AsArray().LBound(1), 1);
  EXPECT_EQ(quotes.AsArray()(1, 1).ToText(), "IBM");
}

TEST_F(Arrays, ComeOutWithTheirOwnBounds) {
  const Door store = New("CAppSettings");
  Call(store, "SaveSetting", {"Settings", "Style", "Green"});
  Call(store, "SaveSetting", {"Settings", "Seconds", 5});
  Arguments arguments{"Settings", Variant()};
  EXPECT_TRUE(CallChanging(store, "GetAllKeys", arguments).ToBoolean());
  const VariantArray& keys = arguments[1]->AsArray();
  EXPECT_EQ(keys.LBound(), 1);
  EXPECT_EQ(keys.UBound(), 2);
  EXPECT_EQ(keys(1).ToText(), "Style");
}

TEST_F(Arrays, ThatNobodyAllocatedComeOutWithoutElements) {
  Arguments arguments{"Nowhere", "whatever stood here"};
  EXPECT_FALSE(CallChanging(New("CAppSettings"), "GetAllKeys", arguments).ToBoolean());
  EXPECT_EQ(arguments[1]->AsArray().UBound(), -1);
}

}  // namespace
}  // namespace mirelo::testing
