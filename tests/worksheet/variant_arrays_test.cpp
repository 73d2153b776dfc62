#include <gmock/gmock.h>

#include "dialog/dialog_test.h"
#include "dialog/frmMirelo.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

// The helpers report to the facade's error handler.
class VariantArrays : public DialogTest {
 protected:
  ~VariantArrays() override { EXPECT_THAT(CallStack(), IsEmpty()); }

  static Variant ArrayOf(std::int32_t lower, const std::vector<std::string>& texts) {
    VariantArray array(lower, lower + static_cast<std::int32_t>(texts.size()) - 1);
    for (std::size_t i = 0; i < texts.size(); ++i) array(lower + static_cast<std::int32_t>(i)) = texts[i];
    return array;
  }
  static std::vector<std::string> TextsOf(const Variant& array) {
    std::vector<std::string> texts;
    for (std::int32_t i = array.AsArray().LBound(); i <= array.AsArray().UBound(); ++i)
      texts.push_back(array.AsArray()(i).ToText());
    return texts;
  }
  static std::pair<std::int32_t, std::int32_t> BoundsOf(const Variant& array) {
    return {array.AsArray().LBound(), array.AsArray().UBound()};
  }
  using Bounds = std::pair<std::int32_t, std::int32_t>;
};

// mPush

TEST_F(VariantArrays, OfOneElementComeFromPushingOntoNothing) {
  Variant array;
  const Variant result = frmMirelo::mPush(array, "Last");
  EXPECT_EQ(BoundsOf(array), Bounds(0, 0));
  EXPECT_THAT(TextsOf(array), ElementsAre("Last"));
  EXPECT_THAT(TextsOf(result), ElementsAre("Last"));
}

TEST_F(VariantArrays, ReplaceAValueThatIsNoneWhenPushedOnto) {
  Variant array = "text";
  frmMirelo::mPush(array, 1);
  EXPECT_THAT(TextsOf(array), ElementsAre("1"));
}

TEST_F(VariantArrays, GrowByOneAndKeepTheirContents) {
  Variant array;
  for (const char* name : {"Ticker", "Last", "Bid"}) frmMirelo::mPush(array, name);
  EXPECT_EQ(BoundsOf(array), Bounds(0, 2));
  EXPECT_THAT(TextsOf(array), ElementsAre("Ticker", "Last", "Bid"));
}

TEST_F(VariantArrays, GrowFromNoElements) {
  Variant array = VariantArray();
  frmMirelo::mPush(array, "Last");
  EXPECT_THAT(TextsOf(array), ElementsAre("Last"));
}

TEST_F(VariantArrays, TakeWholeArraysAsOneElement) {
  Variant array;
  frmMirelo::mPush(array, ArrayOf(0, {"A", "B"}));
  EXPECT_THAT(TextsOf(array.AsArray()(0)), ElementsAre("A", "B"));
}

TEST_F(VariantArrays, ReportThatTheyDoNotStartWithZero) {
  Variant array = ArrayOf(1, {"A"});
  Answers({"ABORT"});
  EXPECT_TRUE(frmMirelo::mPush(array, "B").IsEmpty());
  EXPECT_EQ(desktop.reports.size(), 1U);
  EXPECT_THAT(TextsOf(array), ElementsAre("A"));
}

// Arr_Push

TEST_F(VariantArrays, TakeTheElementsOfAnotherOneByOne) {
  Variant array = ArrayOf(1, {"A", "B"});
  EXPECT_EQ(frmMirelo::Arr_Push(array, ArrayOf(7, {"C", "D", "E"}), 0), 3);
  EXPECT_EQ(BoundsOf(array), Bounds(1, 5));
  EXPECT_THAT(TextsOf(array), ElementsAre("A", "B", "C", "D", "E"));
}

TEST_F(VariantArrays, StartWithTheBoundThatIsAskedFor) {
  for (const std::int32_t lower : {0, 1, -3}) {
    SCOPED_TRACE(lower);
    Variant one;
    EXPECT_EQ(frmMirelo::Arr_Push(one, "A", lower), 1);
    EXPECT_EQ(BoundsOf(one), Bounds(lower, lower));
    Variant two;
    EXPECT_EQ(frmMirelo::Arr_Push(two, ArrayOf(0, {"A", "B"}), lower), 2);
    EXPECT_EQ(BoundsOf(two), Bounds(lower, lower + 1));
    EXPECT_THAT(TextsOf(two), ElementsAre("A", "B"));
  }
}

TEST_F(VariantArrays, KeepTheBoundThatTheyHave) {
  Variant array = ArrayOf(1, {"A"});
  EXPECT_EQ(frmMirelo::Arr_Push(array, "B", 0), 1);
  EXPECT_EQ(BoundsOf(array), Bounds(1, 2));
  EXPECT_THAT(TextsOf(array), ElementsAre("A", "B"));
}

TEST_F(VariantArrays, CanBePushedOntoThemselves) {
  Variant array = ArrayOf(0, {"A", "B"});
  EXPECT_EQ(frmMirelo::Arr_Push(array, array, 0), 2);
  EXPECT_THAT(TextsOf(array), ElementsAre("A", "B", "A", "B"));
}

TEST_F(VariantArrays, StayAsTheyAreWhenNothingIsPushed) {
  Variant array = ArrayOf(0, {"A"});
  EXPECT_EQ(frmMirelo::Arr_Push(array, VariantArray(), 0), 0);
  EXPECT_THAT(TextsOf(array), ElementsAre("A"));
}

// Searching and counting

TEST_F(VariantArrays, AreSearchedForTheFirstEqualElement) {
  const Variant array = ArrayOf(1, {"A", "a", "B", "a", "12"});
  EXPECT_EQ(frmMirelo::Arr_Search(array, "a"), 2);
  EXPECT_EQ(frmMirelo::Arr_Search(array, "A"), 1);
  EXPECT_EQ(frmMirelo::Arr_Search(array, "b"), -1);
  EXPECT_EQ(frmMirelo::Arr_Search(array, 12), 5);
}

TEST_F(VariantArrays, HoldNothingAndCountMinusOneWhereThereIsNone) {
  for (const Variant& value : {Variant(), Variant("A"), Variant(1)}) {
    EXPECT_EQ(frmMirelo::Arr_Search(value, value), -1);
    EXPECT_EQ(frmMirelo::Arr_Count(value), -1);
    EXPECT_EQ(frmMirelo::ArrayDimensions(value), 0);
  }
}

TEST_F(VariantArrays, AreCountedFromBoundToBound) {
  EXPECT_EQ(frmMirelo::Arr_Count(ArrayOf(0, {"A"})), 1);
  EXPECT_EQ(frmMirelo::Arr_Count(ArrayOf(5, {"A", "B", "C"})), 3);
  EXPECT_EQ(frmMirelo::Arr_Count(VariantArray()), 0);
}

TEST_F(VariantArrays, HaveOneOrTwoDimensions) {
  EXPECT_EQ(frmMirelo::ArrayDimensions(VariantArray()), 1);
  EXPECT_EQ(frmMirelo::ArrayDimensions(ArrayOf(3, {"A"})), 1);
  EXPECT_EQ(frmMirelo::ArrayDimensions(VariantArray(1, 2, 1, 3)), 2);
}

TEST_F(VariantArrays, ReportAnElementThatCannotBeCompared) {
  const Variant array = VariantArray(0, 0);
  Variant nested;
  frmMirelo::mPush(nested, array);
  Answers({"ABORT", "IGNORE"});
  EXPECT_EQ(frmMirelo::Arr_Search(nested, "A"), 0);  // aborted
  EXPECT_EQ(frmMirelo::Arr_Search(nested, "A"), 0);  // ignored: taken for a match
  EXPECT_EQ(desktop.reports.size(), 2U);
}

}  // namespace
}  // namespace mirelo::testing
