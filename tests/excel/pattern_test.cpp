#include <limits>

#include "conformance.h"
#include "host/excel/font.h"
#include "host/excel/format_conditions.h"
#include "host/excel/interior.h"

namespace mirelo::testing {
namespace {

using namespace host::excel;

class Patterns : public Spreadsheets {
 protected:
  std::shared_ptr<Interior> Ground(std::string_view address) { return Range(address)->Interior(); }
};

TEST_P(Patterns, AreNoneAtFirst) {
  EXPECT_EQ(Ground("A1")->Pattern(), Variant(xlPatternNone));
  EXPECT_EQ(Ground("A1")->PatternColorIndex(), Variant(xlColorIndexAutomatic));
}

TEST_P(Patterns, AreSolidWhereThereIsAColor) {
  Ground("A1")->ColorIndex(15);
  EXPECT_EQ(Ground("A1")->Pattern(), Variant(1));
  Ground("A1")->Pattern(xlPatternSolid);
  EXPECT_EQ(Ground("A1")->ColorIndex(), Variant(15)) << "it was solid";
  EXPECT_EQ(Ground("A1:B1")->Pattern().type(), Variant::Type::Empty) << "the cells differ";
}

TEST_P(Patterns, GoWithTheFill) {
  Ground("A1")->ColorIndex(15);
  Ground("A1")->Pattern(xlPatternNone);
  EXPECT_EQ(Ground("A1")->ColorIndex(), Variant(xlColorIndexNone));
  Ground("A1")->ColorIndex(15);
  Ground("A1")->Pattern(xlPatternAutomatic);
  EXPECT_EQ(Ground("A1")->ColorIndex(), Variant(xlColorIndexNone));
}

TEST_P(Patterns, KeepAColorOfTheirLinesUnseenInASolidGround) {
  Ground("A1")->ColorIndex(15);
  Ground("A1")->PatternColorIndex(1);
  EXPECT_EQ(Ground("A1")->PatternColorIndex(), Variant(1));
  EXPECT_EQ(Ground("A1")->ColorIndex(), Variant(15));
  Ground("A1")->ColorIndex(6);
  EXPECT_EQ(Ground("A1")->PatternColorIndex(), Variant(1));
  Ground("A1")->PatternColorIndex(xlColorIndexNone);
  EXPECT_EQ(Ground("A1")->PatternColorIndex(), Variant(xlColorIndexAutomatic));
}

TEST_P(Patterns, DropAColorOfLinesWhereThereIsNoFill) {
  Ground("A1")->PatternColorIndex(3);
  EXPECT_EQ(Ground("A1")->PatternColorIndex(), Variant(xlColorIndexAutomatic));
  EXPECT_EQ(Ground("A1")->Pattern(), Variant(xlPatternNone));
}

TEST_P(Patterns, AreRefusedWhenTheyAreNone) {
  Ground("A1")->ColorIndex(15);
  for (const std::int32_t pattern : {0, 2, 9, -4124})
    EXPECT_EQ(NumberOf([&] { Ground("A1")->Pattern(pattern); }), 1004) << pattern;
  EXPECT_EQ(NumberOf([&] { Ground("A1")->PatternColorIndex(57); }), 1004);
  EXPECT_EQ(Ground("A1")->Pattern(), Variant(1));
}

class FontSize : public Spreadsheets {};

TEST_P(FontSize, IsElevenPointsAtFirst) { EXPECT_EQ(Range("A1")->Font()->Size(), Variant(11.0)); }

TEST_P(FontSize, IsThatOfEachCell) {
  const Variant standard = Range("A1")->Font()->Size();
  Range("B2:C3")->Font()->Size(8);
  Range("C3")->Font()->Size(10.5);
  EXPECT_EQ(Range("B2")->Font()->Size(), Variant(8.0));
  EXPECT_EQ(Range("C3")->Font()->Size(), Variant(10.5));
  EXPECT_TRUE(Range("B2:C3")->Font()->Size().IsEmpty());
  EXPECT_EQ(Range("A1")->Font()->Size(), standard);
}

TEST_P(FontSize, IsFromOneTo409) {
  const auto font = Range("A1")->Font();
  for (const double size : {1.0, 409.0}) {
    font->Size(size);
    EXPECT_EQ(font->Size(), Variant(size));
  }
  for (const double size : {0.0, 0.99, 409.5, -1.0, std::numeric_limits<double>::quiet_NaN()})
    EXPECT_EQ(NumberOf([&] { font->Size(size); }), 1004) << size;
  EXPECT_EQ(font->Size(), Variant(409.0));
}

TEST_P(FontSize, IsLeftToTheCellByAConditionalFormat) {
  const auto font = Range("A1")->FormatConditions()->Add(xlCellValue, xlGreater, "0")->Font();
  EXPECT_TRUE(font->Size().IsEmpty());
  EXPECT_EQ(NumberOf([&] { font->Size(8); }), 1004);
}

TEST_P(FontSize, MakesColumnsWiderWhenTheyAreFitted) {
  Put("A1:B1", "LastVolume");
  Range("B1")->Font()->Size(22);
  sheet->Columns("A:B")->AutoFit();
  EXPECT_GT(Range("B1")->Width(), Range("A1")->Width());
}

MIRELO_AGAINST_ALL(Patterns);
MIRELO_AGAINST_ALL(FontSize);

}  // namespace
}  // namespace mirelo::testing
