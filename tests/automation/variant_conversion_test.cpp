#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "automation/variant.h"
#include "support/error_number.h"

namespace mirelo {
namespace {

using testing::NumberOf;

struct Thing : Object {
  std::string_view TypeName() const override { return "Thing"; }
};

const Date kConvertedMoment = ToDate({2011, 1, 20, 18});

// Each kind of value with what it converts to. An error is written as its number.
struct Conversion {
  const char* name;
  Variant value;
  double number;
  std::string text;
  bool truth;
};

const std::vector<Conversion>& Conversions() {
  static const std::vector<Conversion> conversions{
      {"empty", Variant(), 0, "", false},
      {"16-bit integer", std::int16_t{-7}, -7, "-7", true},
      {"32-bit integer", 70000, 70000, "70000", true},
      {"zero", 0, 0, "0", false},
      {"double", 2.5, 2.5, "2.5", true},
      {"small double", 0.25, 0.25, "0.25", true},
      {"true", true, -1, "True", true},
      {"false", false, 0, "False", false},
      {"date", kConvertedMoment, 40563.75, "1/20/2011 6:00:00 PM", true},
      {"numeric text", "1,234.5", 1234.5, "1,234.5", true},
      {"text of zero", " 0 ", 0, " 0 ", false},
  };
  return conversions;
}

TEST(VariantConversion, GivesNumberTextAndTruth) {
  for (const Conversion& conversion : Conversions()) {
    SCOPED_TRACE(conversion.name);
    EXPECT_EQ(conversion.value.ToDouble(), conversion.number);
    EXPECT_EQ(conversion.value.ToText(), conversion.text);
    EXPECT_EQ(conversion.value.ToBoolean(), conversion.truth);
    EXPECT_TRUE(conversion.value.EqualsNumber(conversion.number));
    EXPECT_FALSE(conversion.value.EqualsNumber(conversion.number + 1));
  }
}

TEST(VariantConversion, RoundsToIntegersWithHalvesToEven) {
  EXPECT_EQ(Variant(2.5).ToInt16(), 2);
  EXPECT_EQ(Variant(3.5).ToInt32(), 4);
  EXPECT_EQ(Variant("-2.5").ToInt16(), -2);
  EXPECT_EQ(Variant(kConvertedMoment).ToInt32(), 40564);
  EXPECT_EQ(Variant(true).ToInt16(), -1);
  EXPECT_EQ(Variant().ToInt32(), 0);
}

TEST(VariantConversion, OverflowsWhereTheNumberDoesNotFit) {
  EXPECT_EQ(Variant(32767).ToInt16(), 32767);
  EXPECT_EQ(NumberOf([] { Variant(32768).ToInt16(); }), 6);
  EXPECT_EQ(NumberOf([] { Variant("16239000000").ToInt32(); }), 6);
  EXPECT_EQ(NumberOf([] { Variant(std::nan("")).ToInt32(); }), 6);
  EXPECT_EQ(NumberOf([] { Variant(3e6).ToDate(); }), 6);
  EXPECT_EQ(NumberOf([] { Variant("-700000").ToDate(); }), 6);
  EXPECT_EQ(NumberOf([] { Variant(std::nan("")).ToDate(); }), 6);
}

TEST(VariantConversion, MismatchesWhereTextIsNoNumber) {
  for (const char* text : {"", "abc", "5 sec", "1/20/2011"}) {
    const Variant value(text);
    EXPECT_EQ(NumberOf([&] { value.ToInt16(); }), 13) << text;
    EXPECT_EQ(NumberOf([&] { value.ToInt32(); }), 13) << text;
    EXPECT_EQ(NumberOf([&] { value.ToDouble(); }), 13) << text;
    EXPECT_EQ(NumberOf([&] { value.ToBoolean(); }), 13) << text;
    EXPECT_EQ(NumberOf([&] { value.EqualsNumber(0); }), 13) << text;
  }
}

TEST(VariantConversion, MismatchesForObjectsAndArrays) {
  const Variant values[] = {Variant(std::make_shared<Thing>()), Variant(std::shared_ptr<Object>()),
                            Variant(VariantArray(1, 2))};
  for (const Variant& value : values) {
    SCOPED_TRACE(value.TypeName());
    EXPECT_EQ(NumberOf([&] { value.ToInt16(); }), 13);
    EXPECT_EQ(NumberOf([&] { value.ToInt32(); }), 13);
    EXPECT_EQ(NumberOf([&] { value.ToDouble(); }), 13);
    EXPECT_EQ(NumberOf([&] { value.ToBoolean(); }), 13);
    EXPECT_EQ(NumberOf([&] { value.ToText(); }), 13);
    EXPECT_EQ(NumberOf([&] { value.ToDate(); }), 13);
  }
}

TEST(VariantConversion, ReadsTheWordsForTruthInAnyCase) {
  EXPECT_TRUE(Variant("True").ToBoolean());
  EXPECT_TRUE(Variant("TRUE").ToBoolean());
  EXPECT_FALSE(Variant("false").ToBoolean());
  EXPECT_TRUE(Variant("-1").ToBoolean());
}

TEST(VariantConversion, ReadsDatesFromTextAndNumbers) {
  EXPECT_EQ(Variant("1/20/2011 18:00").ToDate(), kConvertedMoment);
  EXPECT_EQ(Variant("40563.75").ToDate(), kConvertedMoment);
  EXPECT_EQ(Variant(40563.75).ToDate(), kConvertedMoment);
  EXPECT_EQ(Variant(kConvertedMoment).ToDate(), kConvertedMoment);
  EXPECT_EQ(Variant().ToDate(), Date{});
  EXPECT_EQ(NumberOf([] { Variant("soon").ToDate(); }), 13);
}

TEST(VariantConversion, TakesDatesOfTheYears100To9999) {
  for (const double serial : {-657434.0, -657434.75, 2958465.0, 2958465.75}) {
    EXPECT_EQ(Variant(serial).ToDate(), Date{serial}) << serial;
  }
  for (const double serial : {-657435.0, 2958466.0}) {
    EXPECT_EQ(NumberOf([&] { Variant(serial).ToDate(); }), 6) << serial;
  }
}

TEST(VariantConversion, WritesInTheFormatOfTheRegion) {
  RegionalFormat german;
  german.decimal_separator = ",";
  german.date_separator = ".";
  german.short_date = "dd/mm/yyyy";
  german.long_time = "hh:nn:ss";
  EXPECT_EQ(Variant(2.5).ToText(german), "2,5");
  EXPECT_EQ(Variant(1e20).ToText(german), "1E+20");
  EXPECT_EQ(Variant(kConvertedMoment).ToText(german), "20.01.2011 18:00:00");
  EXPECT_EQ(Variant("2.5").ToText(german), "2.5");
}

}  // namespace
}  // namespace mirelo
