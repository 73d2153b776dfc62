#include "host/excel/display_format.h"
#include "conformance.h"
#include "host/excel/font.h"
#include "host/excel/format_conditions.h"
#include "host/excel/interior.h"

namespace mirelo::testing {
namespace {

using namespace host::excel;

constexpr std::int32_t kGreen = 10;
constexpr std::int32_t kRed = 3;
constexpr std::int32_t kYellow = 6;

class DisplayFormats : public Spreadsheets {
 protected:
  Variant FontColorOf(std::string_view address) {
    return Range(address)->DisplayFormat()->Font()->ColorIndex();
  }
  std::shared_ptr<FormatCondition> Lay(std::string_view address, XlFormatConditionOperator op,
                                       const char* number, std::int32_t color) {
    auto condition = Range(address)->FormatConditions()->Add(xlCellValue, op, number);
    condition->Font()->ColorIndex(color);
    return condition;
  }
};

TEST_P(DisplayFormats, AreTheCellsOwnWithoutConditions) {
  Range("B2")->Font()->ColorIndex(kRed);
  Range("B2")->Font()->Bold(true);
  Range("B2")->Interior()->ColorIndex(kYellow);
  const auto look = Range("B2")->DisplayFormat();
  EXPECT_EQ(look->Font()->ColorIndex(), Variant(kRed));
  EXPECT_EQ(look->Font()->Bold(), Variant(true));
  EXPECT_EQ(look->Interior()->ColorIndex(), Variant(kYellow));
}

TEST_P(DisplayFormats, AreAutomaticOnACellThatNobodyFormatted) {
  const auto look = Range("B2")->DisplayFormat();
  EXPECT_EQ(look->Font()->ColorIndex(), Variant(std::int32_t{xlColorIndexAutomatic}));
  EXPECT_EQ(look->Font()->Bold(), Variant(false));
  EXPECT_EQ(look->Interior()->ColorIndex(), Variant(std::int32_t{xlColorIndexNone}));
}

TEST_P(DisplayFormats, FollowTheValueThroughTheConditions) {
  Lay("A1:A9", xlGreater, "0", kGreen);
  Lay("A1:A9", xlLess, "0", kRed);
  Put("A1", 0.25);
  Put("A2", -0.25);
  Put("A3", 0.0);
  Put("B1", 0.25);
  EXPECT_EQ(FontColorOf("A1"), Variant(kGreen));
  EXPECT_EQ(FontColorOf("A2"), Variant(kRed));
  EXPECT_EQ(FontColorOf("A3"), Variant(std::int32_t{xlColorIndexAutomatic}));
  EXPECT_EQ(FontColorOf("B1"), Variant(std::int32_t{xlColorIndexAutomatic})) << "no cell of the conditions";
  Put("A1", -1.0);
  EXPECT_EQ(FontColorOf("A1"), Variant(kRed));
}

TEST_P(DisplayFormats, CompareAsEachOperatorSays) {
  struct {
    XlFormatConditionOperator op;
    bool below, at, above;
  } const cases[] = {{xlEqual, false, true, false},       {xlNotEqual, true, false, true},
                     {xlGreater, false, false, true},     {xlLess, true, false, false},
                     {xlGreaterEqual, false, true, true}, {xlLessEqual, true, true, false}};
  for (const auto& [op, below, at, above] : cases) {
    SCOPED_TRACE(op);
    Range("A1:A3")->FormatConditions()->Delete();
    Lay("A1:A3", op, "2", kRed);
    Put("A1", 1.0);
    Put("A2", 2.0);
    Put("A3", 3.0);
    EXPECT_EQ(FontColorOf("A1") == Variant(kRed), below);
    EXPECT_EQ(FontColorOf("A2") == Variant(kRed), at);
    EXPECT_EQ(FontColorOf("A3") == Variant(kRed), above);
  }
}

TEST_P(DisplayFormats, TakeBlankCellsAsZero) {
  Lay("A1:A2", xlEqual, "0", kRed);
  Put("A2", "#N/A");
  EXPECT_EQ(FontColorOf("A1"), Variant(kRed));
  EXPECT_EQ(FontColorOf("A2"), Variant(std::int32_t{xlColorIndexAutomatic})) << "an error meets no condition";
}

TEST_P(DisplayFormats, TakeTextsAndBooleansAsGreaterThanNumbers) {
  Lay("A1:A2", xlGreater, "5", kGreen);
  Put("A1", "text");
  Put("A2", true);
  EXPECT_EQ(FontColorOf("A1"), Variant(kGreen));
  EXPECT_EQ(FontColorOf("A2"), Variant(kGreen));
}

TEST_P(DisplayFormats, TakeFromTheFirstConditionWhatSeveralChange) {
  Lay("A1", xlGreater, "0", kGreen);
  Lay("A1", xlGreater, "1", kRed)->Font()->Bold(true);
  Put("A1", 2.0);
  EXPECT_EQ(FontColorOf("A1"), Variant(kGreen));
  EXPECT_EQ(Range("A1")->DisplayFormat()->Font()->Bold(), Variant(true)) << "which only the second changes";
}

TEST_P(DisplayFormats, AreThoseOfARangesFirstCell) {
  Range("B2")->Font()->ColorIndex(kRed);
  EXPECT_EQ(FontColorOf("B2:C9"), Variant(kRed));
}

TEST_P(DisplayFormats, CanOnlyBeRead) {
  const auto look = Range("A1")->DisplayFormat();
  EXPECT_EQ(NumberOf([&] { look->Font()->Bold(true); }), 1004);
  EXPECT_EQ(NumberOf([&] { look->Font()->ColorIndex(kRed); }), 1004);
  EXPECT_EQ(NumberOf([&] { look->Interior()->ColorIndex(kRed); }), 1004);
}

TEST_P(DisplayFormats, TellColoursWithRedInTheLowestByte) {
  constexpr std::int32_t kOrange = 46;
  Range("A1:B1")->Font()->ColorIndex(kOrange);
  Range("A1:B1")->Interior()->ColorIndex(kYellow);
  EXPECT_EQ(Range("A1:B1")->Font()->Color(), Variant(0xFF + 0x66 * 256));
  EXPECT_EQ(Range("A1:B1")->Interior()->Color(), Variant(0xFF + 0xFF * 256));
  EXPECT_EQ(Range("A1")->DisplayFormat()->Font()->Color(), Variant(0xFF + 0x66 * 256));
  EXPECT_EQ(Range("A1")->DisplayFormat()->Interior()->Color(), Variant(0xFF + 0xFF * 256));
  EXPECT_TRUE(Range("A1:C1")->Font()->Color().IsEmpty()) << "the cells differ";
  EXPECT_EQ(Range("C1")->Font()->Color(), Variant(0)) << "an automatic font is black";
  EXPECT_EQ(Range("C1")->Interior()->Color(), Variant(0xFFFFFF)) << "no fill is white";
}

TEST_P(DisplayFormats, LeaveTheColoursOfAConditionThatHasNoneEmpty) {
  const auto condition = Range("A1")->FormatConditions()->Add(xlCellValue, xlEqual, "0");
  EXPECT_TRUE(condition->Font()->Color().IsEmpty());
  condition->Font()->ColorIndex(kYellow);
  EXPECT_EQ(condition->Font()->Color(), Variant(0xFF + 0xFF * 256));
}

MIRELO_AGAINST_ALL(DisplayFormats);

}  // namespace
}  // namespace mirelo::testing
