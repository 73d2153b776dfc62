#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "automation/variant.h"
#include "support/error_number.h"

namespace mirelo {
namespace {

using testing::NumberOf;

TEST(VariantArray, HasNoElementsByDefault) {
  VariantArray array;
  EXPECT_EQ(array.Dimensions(), 1);
  EXPECT_EQ(array.LBound(), 0);
  EXPECT_EQ(array.UBound(), -1);
  EXPECT_EQ(NumberOf([&] { array(0); }), 9);
}

TEST(VariantArray, CarriesTheBoundsOfOneDimension) {
  VariantArray array(1, 3);
  EXPECT_EQ(array.Dimensions(), 1);
  EXPECT_EQ(array.LBound(), 1);
  EXPECT_EQ(array.UBound(1), 3);
  array(1) = "first";
  array(3) = 3;
  EXPECT_EQ(array(1).ToText(), "first");
  EXPECT_TRUE(array(2).IsEmpty());
  for (std::int32_t index : {0, 4, -1}) EXPECT_EQ(NumberOf([&] { array(index); }), 9) << index;
}

TEST(VariantArray, CarriesTheBoundsOfTwoDimensions) {
  VariantArray array(1, 2, -1, 1);
  EXPECT_EQ(array.Dimensions(), 2);
  EXPECT_EQ(array.LBound(1), 1);
  EXPECT_EQ(array.UBound(1), 2);
  EXPECT_EQ(array.LBound(2), -1);
  EXPECT_EQ(array.UBound(2), 1);
  for (std::int32_t row = 1; row <= 2; ++row) {
    for (std::int32_t column = -1; column <= 1; ++column) array(row, column) = row * 10 + column;
  }
  for (std::int32_t row = 1; row <= 2; ++row) {
    for (std::int32_t column = -1; column <= 1; ++column) {
      EXPECT_EQ(array(row, column).ToInt32(), row * 10 + column);
    }
  }
  const std::pair<std::int32_t, std::int32_t> kOutside[] = {{0, 0}, {3, 0}, {1, -2}, {1, 2}};
  for (const auto& [row, column] : kOutside) {
    EXPECT_EQ(NumberOf([&, row = row, column = column] { array(row, column); }), 9) << row << " " << column;
  }
}

TEST(VariantArray, RefusesAnIndexCountThatDiffersFromItsDimensions) {
  VariantArray one(0, 1);
  VariantArray two(0, 1, 0, 1);
  EXPECT_EQ(NumberOf([&] { one(0, 0); }), 9);
  EXPECT_EQ(NumberOf([&] { two(0); }), 9);
  EXPECT_EQ(NumberOf([&] { two.ReDimPreserve(3); }), 9);
}

TEST(VariantArray, RefusesToTellBoundsOfADimensionItLacks) {
  const VariantArray one(0, 1);
  const VariantArray two(0, 1, 0, 1);
  EXPECT_EQ(NumberOf([&] { one.LBound(2); }), 9);
  EXPECT_EQ(NumberOf([&] { one.UBound(2); }), 9);
  EXPECT_EQ(NumberOf([&] { two.UBound(3); }), 9);
  EXPECT_EQ(NumberOf([&] { two.LBound(0); }), 9);
}

TEST(VariantArray, RefusesAnUpperBoundBelowTheLower) {
  EXPECT_EQ(NumberOf([] { VariantArray(1, 0); }), 9);
  EXPECT_EQ(NumberOf([] { VariantArray(1, 1, 1, 0); }), 9);
}

TEST(VariantArray, RunsOutOfMemoryForASizeThatNoMachineHas) {
  constexpr auto kMin = std::numeric_limits<std::int32_t>::min();
  constexpr auto kMax = std::numeric_limits<std::int32_t>::max();
  EXPECT_EQ(NumberOf([] { VariantArray(kMin, kMax, kMin, kMax); }), 7);
}

TEST(VariantArray, IsMadeOfTexts) {
  const VariantArray array = VariantArray::OfTexts({"MSFT", "IBM"});
  EXPECT_EQ(array.LBound(), 0);
  EXPECT_EQ(array.UBound(), 1);
  EXPECT_EQ(*array(1).IfText(), "IBM");
  EXPECT_EQ(VariantArray::OfTexts({}).UBound(), -1);
}

TEST(VariantArray, KeepsItsContentsWhenGivenANewUpperBound) {
  VariantArray array(1, 2);
  array(1) = "a";
  array(2) = "b";
  array.ReDimPreserve(3);
  EXPECT_EQ(array.LBound(), 1);
  EXPECT_EQ(array.UBound(), 3);
  EXPECT_EQ(array(2).ToText(), "b");
  EXPECT_TRUE(array(3).IsEmpty());
  array.ReDimPreserve(1);
  EXPECT_EQ(NumberOf([&] { array(2); }), 9);
  EXPECT_EQ(NumberOf([&] { array.ReDimPreserve(0); }), 9);

  VariantArray empty;
  empty.ReDimPreserve(0);
  EXPECT_TRUE(empty(0).IsEmpty());
}

TEST(VariantArray, HoldsArraysAsElements) {
  VariantArray outer(0, 0);
  outer(0) = Variant(VariantArray::OfTexts({"inner"}));
  EXPECT_EQ(outer(0).AsArray()(0).ToText(), "inner");
}

}  // namespace
}  // namespace mirelo
