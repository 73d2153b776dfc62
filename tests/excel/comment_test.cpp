#include <cstddef>
#include <limits>
#include <string>

#include "conformance.h"
#include "host/excel/comment.h"
#include "host/excel/shape.h"

namespace mirelo::testing {
namespace {

using namespace host::excel;

class Comments : public Spreadsheets {
 protected:
  bool Has(std::string_view address) { return Range(address)->Comment() != nullptr; }
};

TEST_P(Comments, AreNoneAtFirst) { EXPECT_EQ(Range("A1")->Comment(), nullptr); }

TEST_P(Comments, HoldTheirText) {
  EXPECT_EQ(Range("C2")->AddComment("Charts (Last & Volume)")->Text(), "Charts (Last & Volume)");
  ASSERT_TRUE(Has("C2"));
  EXPECT_EQ(Range("C2")->Comment()->Text(), "Charts (Last & Volume)");
  EXPECT_FALSE(Has("B2"));
  EXPECT_TRUE(Range("C2")->Value().IsEmpty()) << "a comment is no value";
}

TEST_P(Comments, KeepAnEmptyLastLine) {
  EXPECT_EQ(Range("A1")->AddComment("one\ntwo\n")->Text(), "one\ntwo\n");
  EXPECT_EQ(Range("A2")->AddComment("\n")->Text(), "\n");
}

TEST_P(Comments, AreThoseOfTheFirstCellOfARange) {
  Range("B2")->AddComment("x");
  EXPECT_TRUE(Has("B2:D5"));
  EXPECT_FALSE(Has("A1:D5"));
}

TEST_P(Comments, AreRefusedOnACellThatHasOneAndOnSeveralCells) {
  Range("A1")->AddComment("first");
  EXPECT_EQ(NumberOf([&] { Range("A1")->AddComment("second"); }), 1004);
  EXPECT_EQ(Range("A1")->Comment()->Text(), "first");
  EXPECT_EQ(NumberOf([&] { Range("B1:B2")->AddComment("x"); }), 1004);
  EXPECT_FALSE(Has("B1"));
}

TEST_P(Comments, AreRefusedWhenTheyAreTooLong) {
  EXPECT_EQ(NumberOf([&] { Range("A1")->AddComment(std::string(32'768, 'x')); }), 1004);
  std::string longest(32'767, 'x');
  for (std::size_t end = 0; end < longest.size(); end += 16)
    longest[end] = '\n';  // one line is slow to lay out
  EXPECT_EQ(NumberOf([&] { Range("A1")->AddComment(longest); }), 0);
}

TEST_P(Comments, GoWithClearCommentsWhichLeavesTheRest) {
  Put("B2", "Last");
  Range("B2")->AddComment("x");
  Range("D9")->AddComment("y");
  Range("A1:C3")->ClearComments();
  EXPECT_FALSE(Has("B2"));
  EXPECT_EQ(Get("B2"), Variant("Last"));
  EXPECT_TRUE(Has("D9"));
  EXPECT_EQ(NumberOf([&] { Range("A1:C3")->ClearComments(); }), 0) << "also where there is none";
}

TEST_P(Comments, GoWithClearButNotWithTheContents) {
  Range("A1")->AddComment("x");
  Range("A1")->ClearContents();
  EXPECT_TRUE(Has("A1"));
  Put("A1", "new");
  EXPECT_TRUE(Has("A1"));
  Range("A1")->Clear();
  EXPECT_FALSE(Has("A1"));
}

TEST_P(Comments, HaveNoTextOnceTheyAreGone) {
  const auto cleared = Range("A1")->AddComment("x");
  const auto deleted = Range("A5")->AddComment("y");
  Range("A1")->ClearComments();
  EXPECT_EQ(NumberOf([&] { cleared->Text(); }), 1004);
  Range("A5:B5")->Delete(xlShiftUp);
  EXPECT_EQ(NumberOf([&] { deleted->Text(); }), 1004);
}

TEST_P(Comments, CanBeLaidAnewOnceTheyWereCleared) {
  for (const char* text : {"one", "two"}) {
    Range("A1")->ClearComments();
    Range("A1")->AddComment(text);
    EXPECT_EQ(Range("A1")->Comment()->Text(), text);
  }
}

TEST_P(Comments, HaveABoxThatIsScaledByItsPresentSize) {
  const auto shape = Range("A1")->AddComment("Charts (Last & Volume)")->Shape();
  EXPECT_EQ(shape->Width(), 96);
  EXPECT_EQ(shape->Height(), 55.5);
  shape->ScaleHeight(0.43, msoFalse);
  shape->ScaleWidth(1.48, msoFalse);
  EXPECT_NEAR(Range("A1")->Comment()->Shape()->Height(), 55.5 * 0.43, 0.375);
  EXPECT_NEAR(Range("A1")->Comment()->Shape()->Width(), 96 * 1.48, 0.375);
  shape->ScaleHeight(2, msoFalse);
  EXPECT_NEAR(shape->Height(), 55.5 * 0.43 * 2, 0.75);
}

TEST_P(Comments, CannotBeScaledByTheirOriginalSizeNorToNothing) {
  const auto shape = Range("A1")->AddComment("x")->Shape();
  EXPECT_EQ(NumberOf([&] { shape->ScaleHeight(2, msoTrue); }), 1004);
  for (const double factor :
       {0.0, -1.0, 1e9, std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()}) {
    SCOPED_TRACE(factor);
    EXPECT_EQ(NumberOf([&] { shape->ScaleHeight(factor, msoFalse); }), 1004);
    EXPECT_EQ(NumberOf([&] { shape->ScaleWidth(factor, msoFalse); }), 1004);
  }
  EXPECT_EQ(shape->Width(), 96);
  EXPECT_EQ(shape->Height(), 55.5);
  shape->ScaleHeight(1e-6, msoFalse);
  EXPECT_GT(shape->Height(), 0);
}

TEST_P(Comments, KeepTheirSizeApartFromEachOther) {
  Range("A1")->AddComment("x")->Shape()->ScaleWidth(2, msoFalse);
  EXPECT_EQ(Range("A2")->AddComment("y")->Shape()->Width(), 96);
}

TEST_P(Comments, MayBeEmpty) {
  Range("A1")->AddComment("");
  EXPECT_EQ(Range("A1")->Comment()->Text(), "");
}

TEST_P(Comments, MayBeOfAnyScript) {
  Range("A2")->AddComment("Größe \xE6\x97\xA5\nnext line");
  EXPECT_EQ(Range("A2")->Comment()->Text(), "Größe \xE6\x97\xA5\nnext line");
}

MIRELO_AGAINST_ALL(Comments);

}  // namespace
}  // namespace mirelo::testing
