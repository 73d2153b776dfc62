#include "automation/array.h"

#include <gtest/gtest.h>

#include <numeric>
#include <string>

#include "support/error_number.h"

namespace mirelo {
namespace {

using testing::NumberOf;

TEST(Array, StartsUnallocated) {
  Array<std::int16_t> array;
  EXPECT_FALSE(array.IsAllocated());
  EXPECT_EQ(NumberOf([&] { array.LBound(); }), 9);
  EXPECT_EQ(NumberOf([&] { array.UBound(); }), 9);
  EXPECT_EQ(NumberOf([&] { array(0); }), 9);
  EXPECT_EQ(array.begin(), array.end());
}

TEST(Array, CarriesItsBounds) {
  const Array<double> array(-2, 3);
  EXPECT_TRUE(array.IsAllocated());
  EXPECT_EQ(array.LBound(), -2);
  EXPECT_EQ(array.UBound(), 3);
  EXPECT_EQ(std::accumulate(array.begin(), array.end(), 1.0), 1.0) << "elements start at 0";
}

TEST(Array, RaisesSubscriptOutOfRangeBesideItsBounds) {
  Array<int> array(1, 3);
  array(1) = 10;
  array(3) = 30;
  EXPECT_EQ(array(1) + array(2) + array(3), 40);
  for (std::int32_t index :
       {0, 4, -1, std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max()}) {
    EXPECT_EQ(NumberOf([&] { array(index); }), 9) << index;
  }
}

TEST(Array, RefusesAnUpperBoundBelowTheLower) {
  EXPECT_EQ(NumberOf([] { Array<int>(0, -1); }), 9);
  Array<int> array(1, 2);
  EXPECT_EQ(NumberOf([&] { array.ReDim(5, 4); }), 9);
  EXPECT_EQ(NumberOf([&] { array.ReDimPreserve(0); }), 9);
  EXPECT_EQ(array.UBound(), 2) << "as it was";
}

TEST(Array, LosesItsContentsWhenDimensionedAnew) {
  Array<int> array(1, 2);
  array(1) = 7;
  array.ReDim(0, 1);
  EXPECT_EQ(array.LBound(), 0);
  EXPECT_EQ(array(1), 0);
}

TEST(Array, KeepsItsContentsAndLowerBoundWhenPreserved) {
  Array<std::string> array(1, 2);
  array(1) = "a";
  array(2) = "b";
  array.ReDimPreserve(3);
  EXPECT_EQ(array.LBound(), 1);
  EXPECT_EQ(array(1) + array(2) + array(3), "ab");
  array.ReDimPreserve(1);
  EXPECT_EQ(array.UBound(), 1);
  EXPECT_EQ(array(1), "a");
}

TEST(Array, TakesTheGivenLowerBoundWhenPreservedUnallocated) {
  Array<int> zero_based;
  zero_based.ReDimPreserve(2);
  EXPECT_EQ(zero_based.LBound(), 0);
  Array<int> one_based;
  one_based.ReDimPreserve(2, 1);
  EXPECT_EQ(one_based.LBound(), 1);
  EXPECT_EQ(one_based.UBound(), 2);
}

TEST(Array, IsUnallocatedAgainWhenErased) {
  Array<int> array(1, 2);
  array.Erase();
  EXPECT_FALSE(array.IsAllocated());
  EXPECT_EQ(NumberOf([&] { array(1); }), 9);
}

}  // namespace
}  // namespace mirelo
