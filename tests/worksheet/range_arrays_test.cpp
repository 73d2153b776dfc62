#include "automation/date.h"
#include "worksheet/sheet_test.h"

namespace mirelo::testing {
namespace {

using ::testing::IsEmpty;

class RangeArrays : public SheetTest {
 protected:
  ~RangeArrays() override { EXPECT_THAT(CallStack(), IsEmpty()); }

  Variant ArrayOf(std::string_view address) { return frmMirelo::Range2Array(Range(address)); }
  static std::vector<std::int32_t> BoundsOf(const Variant& array) {
    std::vector<std::int32_t> bounds;
    for (int d = 1; d <= array.AsArray().Dimensions(); ++d) {
      bounds.push_back(array.AsArray().LBound(d));
      bounds.push_back(array.AsArray().UBound(d));
    }
    return bounds;
  }
  using Bounds = std::vector<std::int32_t>;
};

TEST_F(RangeArrays, OfOneColumnHoldItsNumbersAndTextsOnly) {
  Put("B2", 12.5);
  Put("B3", "text");
  Put("B4", Date{40563});
  Put("B5", true);
  Put("B7", 3);
  const Variant array = ArrayOf("B2:B7");
  ASSERT_EQ(BoundsOf(array), Bounds({1, 6}));
  EXPECT_EQ(array.AsArray()(1).TypeName(), "Double");
  EXPECT_EQ(array.AsArray()(1), Variant(12.5));
  EXPECT_EQ(array.AsArray()(2), Variant("text"));
  EXPECT_TRUE(array.AsArray()(3).IsEmpty());
  EXPECT_TRUE(array.AsArray()(4).IsEmpty());
  EXPECT_TRUE(array.AsArray()(5).IsEmpty());
  EXPECT_EQ(array.AsArray()(6), Variant(3.0));
}

TEST_F(RangeArrays, OfOneCellHaveOneElement) {
  Put("C3", "x");
  EXPECT_EQ(BoundsOf(ArrayOf("C3")), Bounds({1, 1}));
}

TEST_F(RangeArrays, OfMoreColumnsHoldAllValuesWithTheColumnFirst) {
  Put("A1", "top left");
  Put("B1", Date{40563});
  Put("A3", true);
  Put("B3", 7);
  const Variant array = ArrayOf("A1:B3");
  ASSERT_EQ(BoundsOf(array), Bounds({1, 2, 1, 3}));
  EXPECT_EQ(array.AsArray()(1, 1), Variant("top left"));
  EXPECT_EQ(array.AsArray()(2, 1).TypeName(), "Date");
  EXPECT_EQ(array.AsArray()(1, 3).TypeName(), "Boolean");
  EXPECT_EQ(array.AsArray()(2, 3), Variant(7));
  EXPECT_TRUE(array.AsArray()(1, 2).IsEmpty());
}

TEST_F(RangeArrays, OfMoreColumnsFitTheRangeAgainWhenTransposed) {
  PutRow("A1", {"1", "2"});
  PutRow("A2", {"3", "4"});
  PutRow("A3", {"5", "6"});
  const Variant array = frmMirelo::Array2Range(ArrayOf("A1:B3"));
  ASSERT_EQ(BoundsOf(array), Bounds({1, 3, 1, 2}));
  Range("D1:E3")->Value(array);
  EXPECT_EQ(Range("E1")->Value(), Variant(2.0));
  EXPECT_EQ(Range("D3")->Value(), Variant(5.0));
  EXPECT_EQ(Range("E3")->Value(), Variant(6.0));
}

TEST_F(RangeArrays, KeepTheirBoundsWhenTransposed) {
  VariantArray array(3, 4, -1, 1);
  array(3, 1) = "x";
  const Variant transposed = frmMirelo::Array2Range(array);
  EXPECT_EQ(BoundsOf(transposed), Bounds({-1, 1, 3, 4}));
  EXPECT_EQ(transposed.AsArray()(1, 3), Variant("x"));
}

TEST_F(RangeArrays, ReportWhatCannotBeTransposed) {
  Answers({"ABORT", "ABORT"});
  EXPECT_TRUE(frmMirelo::Array2Range("text").IsEmpty());
  EXPECT_TRUE(frmMirelo::Array2Range(VariantArray(0, 1)).IsEmpty());
  EXPECT_THAT(ReportedErrors(), ::testing::ElementsAre(13, 9));
}

TEST_F(RangeArrays, ReportThatThereIsNoRange) {
  Answers({"ABORT"});
  EXPECT_TRUE(frmMirelo::Range2Array(nullptr).IsEmpty());
  EXPECT_THAT(ReportedErrors(), ::testing::ElementsAre(91));
}

// Texts without what a sheet's name cannot bear

TEST_F(RangeArrays, BadSymbolsBecomeUnderlines) {
  const struct {
    const char* text;
    const char* cleaned;
  } cases[] = {
      {"", ""},           {"Quotes Vertical", "Quotes Vertical"},
      {"a:b/c", "a_b_c"}, {"=~@#$%^&*()-+\\/.,';`\"!:?*[]", "___________________________"},
      {"A_B", "A_B"},     {"<>|{}", "<>|{}"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.text);
    Variant text = c.text;
    EXPECT_EQ(frmMirelo::remove_bad_symbols(text), Variant(c.cleaned));
    EXPECT_EQ(text, Variant(c.cleaned));
  }
}

TEST_F(RangeArrays, BadSymbolsAreThoseThatTheCallerNames) {
  Variant text = "a:b/c-d";
  EXPECT_EQ(frmMirelo::remove_bad_symbols(text, "-a"), Variant("_:b/c_d"));
}

TEST_F(RangeArrays, BadSymbolsAreTakenOutOfNumbersToo) {
  Variant text = -1.5;
  EXPECT_EQ(frmMirelo::remove_bad_symbols(text), Variant("_1_5"));
}

}  // namespace
}  // namespace mirelo::testing
