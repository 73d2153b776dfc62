// What becomes of cells of a document in LibreOffice that clients write and format as blocks.

#include <gtest/gtest.h>

#include <com/sun/star/sheet/XSheetConditionalEntries.hpp>
#include <com/sun/star/table/CellHoriJustify.hpp>
#include <com/sun/star/table/XColumnRowRange.hpp>
#include <cstdint>
#include <string>

#include "adapters/calc/objects/interfaces.h"
#include "adapters/calc/objects/properties.h"
#include "calc/open_document.h"
#include "host/excel/comment.h"
#include "host/excel/font.h"
#include "host/excel/format_conditions.h"
#include "host/excel/range.h"
#include "host/excel/worksheet.h"

namespace mirelo::testing {
namespace {

using namespace host::excel;
using calc::As;
using calc::OfficeText;
using calc::Properties;

class WrittenBlocks : public OpenDocument {};

// The office dies of an element that is nothing.
TEST_F(WrittenBlocks, MayHaveEveryKindOfValueAndNone) {
  VariantArray values(1, 3, 1, 3);
  values(1, 1) = 1.5;
  values(1, 2) = "text";
  values(1, 3) = true;
  values(2, 1) = Date{40563};
  values(2, 3) = "#N/A";
  values(3, 2) = "";
  Cells("A1:D4")->Value(values);
  const Variant read = Cells("A1:D4")->Value();
  const VariantArray& array = read.AsArray();
  EXPECT_EQ(array(1, 1), Variant(1.5));
  EXPECT_EQ(array(1, 2), Variant("text"));
  EXPECT_EQ(array(1, 3), Variant(true));
  EXPECT_EQ(array(2, 1), Variant(Date{40563}));
  EXPECT_TRUE(array(2, 2).IsEmpty());
  EXPECT_EQ(array(2, 3), Variant("#N/A"));
  EXPECT_TRUE(array(3, 2).IsEmpty());
  EXPECT_EQ(array(4, 4), Variant("#N/A")) << "behind the array's end";
}

// The office takes comments off cells that are written as a block.
TEST_F(WrittenBlocks, KeepTheCommentsOfTheirCells) {
  Cells("B2")->AddComment("mine");
  for (const char* address : {"A1:C3", "B2", "B1:B3"}) {
    Cells(address)->Value(7.0);
    ASSERT_NE(Cells("B2")->Comment(), nullptr) << address;
    EXPECT_EQ(Cells("B2")->Comment()->Text(), "mine");
    EXPECT_EQ(Cells("B2")->Value(), Variant(7.0));
  }
  Cells("A1:C3")->Value("007");
  EXPECT_EQ(Cells("B2")->Value(), Variant(7.0));
  Cells("A1:C3")->Value("'007");
  EXPECT_EQ(Cells("B2")->Value(), Variant("007"));
  EXPECT_EQ(Cells("B2")->NumberFormat(), Variant("General"));
  Cells("A1:C3")->Value(VariantArray(1, 3, 1, 3));
  EXPECT_TRUE(Cells("B2")->Value().IsEmpty());
  EXPECT_NE(Cells("B2")->Comment(), nullptr);
}

TEST_F(WrittenBlocks, LeaveTheFormatOfTextsThatLookLikeNumbers) {
  Cells("A1:A3")->NumberFormat("0.00");
  VariantArray texts(1, 3, 1, 1);
  texts(1, 1) = "'12";
  texts(2, 1) = "3M";
  texts(3, 1) = "'TRUE";
  Cells("A1:A3")->Value(texts);
  EXPECT_EQ(Cells("A1:A3")->NumberFormat(), Variant("0.00"));
  EXPECT_EQ(Cells("A1")->Value(), Variant("12"));
  EXPECT_EQ(Cells("A3")->Value(), Variant("TRUE"));
}

TEST_F(WrittenBlocks, HaveRowsAsHighAsTheirTextsWhetherThePersonHasStepsOrNot) {
  const auto height = [&](std::int32_t row) { return sheet->Cells(row, 1)->Height(); };
  const double of_one_line = height(9);
  Cells("A1")->Value("three\nlines\nof text");
  EXPECT_GT(height(1), 2 * of_one_line);
  Type("A3", 2);
  Cells("A2")->Value("three\nlines\nof text");
  EXPECT_NEAR(height(2), height(1), 1);
}

TEST_F(WrittenBlocks, LetRowsGrowAndShrinkWhileThePersonHasSteps) {
  const auto height = [&](std::int32_t row) { return sheet->Cells(row, 1)->Height(); };
  const double of_one_line = height(9);
  Properties(Tab()->getCellRangeByName("A3")).Set("IsTextWrapped", true);
  Type("D9", 2);
  Cells("A1:A4")->Value("one line");
  Cells("A1:A2")->Value("three\nlines\nof text");
  EXPECT_GT(height(1), 2 * of_one_line);
  EXPECT_GT(height(2), 2 * of_one_line);
  Cells("A2")->Value(1.0);
  EXPECT_NEAR(height(2), of_one_line, 1);
  Cells("A1")->ClearContents();
  EXPECT_NEAR(height(1), of_one_line, 1);
  Cells("A3")->Value("text that is wrapped in a column of this width, and that takes some lines");
  EXPECT_GT(height(3), 2 * of_one_line);
  EXPECT_NEAR(height(4), of_one_line, 1);
}

// Fonts that a person has made large, in cells with contents, without, and below all that is filled.
TEST_F(WrittenBlocks, HaveRowsOfTheUsualHeightWhereLargeFontsAreCleared) {
  const auto height = [&](std::int32_t row) { return sheet->Cells(row, 1)->Height(); };
  const double of_one_line = height(9);
  Type("A1", 1);
  for (const char* cells : {"A1", "B2", "A5", "C30", "A31:XFD31"}) {
    const Properties font(Tab()->getCellRangeByName(OfficeText(cells)));
    font.Set("CharHeight", 36.0F);
  }
  for (const std::int32_t row : {1, 2, 5, 30, 31}) ASSERT_GT(height(row), 2 * of_one_line) << row;
  const std::string steps = StepTitles();
  ASSERT_FALSE(steps.empty());
  Cells("A1:C4")->Clear();
  sheet->Rows("5")->Clear();
  Cells("A20:H30")->Clear();
  sheet->Rows("31")->Clear();
  for (const std::int32_t row : {1, 2, 5, 30, 31}) EXPECT_NEAR(height(row), of_one_line, 1) << row;
  EXPECT_EQ(StepTitles(), steps);
}

TEST_F(WrittenBlocks, HaveRowsAsHighAsTheirFontsWhileThePersonHasSteps) {
  const auto height = [&](std::int32_t row) { return sheet->Cells(row, 1)->Height(); };
  const double of_one_line = height(9);
  Type("A1", 1);
  const std::string steps = StepTitles();
  Cells("A1:A2")->Font()->Size(36);
  EXPECT_GT(height(1), 2 * of_one_line);
  EXPECT_GT(height(2), 2 * of_one_line);
  EXPECT_EQ(StepTitles(), steps);
  Cells("A1")->Font()->Size(10);
  EXPECT_NEAR(height(1), of_one_line, 1);
  EXPECT_GT(height(2), 2 * of_one_line);
  EXPECT_EQ(StepTitles(), steps);
}

TEST_F(WrittenBlocks, LeaveRowsAsHighAsThePersonMadeThem) {
  const auto rows = As<css::table::XColumnRowRange>(Tab())->getRows();
  Properties(rows->getByIndex(1)).Set("Height", sal_Int32{2000});
  Cells("A1:A3")->Value("three\nlines\nof text");
  EXPECT_EQ(Properties(rows->getByIndex(1)).Get("Height", sal_Int32{0}), 2000);
  EXPECT_EQ(Properties(rows->getByIndex(0)).Get("Height", sal_Int32{0}),
            Properties(rows->getByIndex(2)).Get("Height", sal_Int32{0}));
}

TEST_F(WrittenBlocks, LeaveHeightsAloneWhereAMacroHoldsThem) {
  Type("D9", 2);
  Properties(document).Set("IsAdjustHeightEnabled", false);
  const double height = sheet->Cells(1, 1)->Height();
  Cells("A1")->Value("three\nlines\nof text");
  EXPECT_EQ(sheet->Cells(1, 1)->Height(), height);
  EXPECT_FALSE(Properties(document).Get("IsAdjustHeightEnabled", true));
}

TEST_F(WrittenBlocks, ReachTheSheetsLastRow) {
  Cells("XFD1048575:XFD1048576")->Value(1.0);
  EXPECT_EQ(Cells("XFD1048576")->Value(), Variant(1.0));
  EXPECT_EQ(Cells("XFD1048576")->End(xlUp)->Row(), 1'048'575);
}

TEST_F(WrittenBlocks, LeaveHiddenColumnsHiddenWhenColumnsAreFitted) {
  Cells("A1:C1")->Value("a text that is wider than its column");
  const auto column = [&](sal_Int32 number) {
    return Properties(As<css::table::XColumnRowRange>(Tab())->getColumns()->getByIndex(number));
  };
  column(1).Set("IsVisible", false);
  sheet->Columns("A:C")->AutoFit();
  EXPECT_FALSE(column(1).Get("IsVisible", true));
  EXPECT_GT(column(2).Get("Width", sal_Int32{0}), 4000);
}

class AlignedColumns : public OpenDocument {
 protected:
  css::table::CellHoriJustify InOffice(std::string_view address) const {
    const auto cell = Tab()->getCellRangeByName(OfficeText(address))->getCellByPosition(0, 0);
    return Properties(cell).Get("HoriJustify", css::table::CellHoriJustify_BLOCK);
  }
};

TEST_F(AlignedColumns, AreAlignedWhereSomeOfTheirCellsAreSoAlready) {
  Cells("B2:B4")->HorizontalAlignment(xlHAlignCenter);
  Cells("B1:B9")->HorizontalAlignment(xlHAlignCenter);
  EXPECT_EQ(InOffice("B1"), css::table::CellHoriJustify_CENTER);
  EXPECT_EQ(InOffice("B9"), css::table::CellHoriJustify_CENTER);
  Cells("B1:B9")->HorizontalAlignment(xlHAlignGeneral);
  EXPECT_EQ(InOffice("B3"), css::table::CellHoriJustify_STANDARD);
}

TEST_F(AlignedColumns, AreAlignedWhereNobodyEverTouchedTheLastOfThem) {
  Cells("B1:B9")->HorizontalAlignment(xlHAlignCenter);
  Cells("B1:Z9")->HorizontalAlignment(xlHAlignCenter);
  EXPECT_EQ(InOffice("Z1"), css::table::CellHoriJustify_CENTER);
}

TEST_F(AlignedColumns, AreAlignedWhereTheWholeSheetOrARowIsOtherwise) {
  sheet->Rows("5")->HorizontalAlignment(xlHAlignCenter);
  Cells("AZ1:AZ9")->HorizontalAlignment(xlHAlignGeneral);
  EXPECT_EQ(InOffice("AZ5"), css::table::CellHoriJustify_STANDARD);
  sheet->Cells()->HorizontalAlignment(xlHAlignCenter);
  Cells("BZ1:BZ9")->HorizontalAlignment(xlHAlignGeneral);
  EXPECT_EQ(InOffice("BZ5"), css::table::CellHoriJustify_STANDARD);
}

class ShownConditions : public OpenDocument {
 protected:
  // The conditions that the office itself has on a cell, by which it is drawn.
  sal_Int32 DrawnOn(std::string_view address) const {
    const Properties cell(Tab()->getCellRangeByName(OfficeText(address)));
    return As<css::sheet::XSheetConditionalEntries>(cell.Get("ConditionalFormat"))->getCount();
  }
};

TEST_F(ShownConditions, AreThoseThatTheOfficeDrawsBy) {
  const auto conditions = Cells("B2:D9")->FormatConditions();
  conditions->Add(xlCellValue, xlGreater, "0")->Font()->ColorIndex(10);
  conditions->Add(xlCellValue, xlLess, "0")->Font()->ColorIndex(3);
  EXPECT_EQ(DrawnOn("C4"), 2);
  Cells("C4:C5")->FormatConditions()->Delete();
  EXPECT_EQ(DrawnOn("C4"), 0);
  EXPECT_EQ(DrawnOn("C6"), 2);
  Cells("B2:B3")->FormatConditions()->Add(xlCellValue, xlEqual, "7");
  EXPECT_EQ(DrawnOn("B2"), 3);
  EXPECT_EQ(DrawnOn("B4"), 2);
  EXPECT_EQ(Cells("B2:D9")->FormatConditions()->Count(), 3) << "each is counted once";
  Cells("C6:C7")->Delete(xlShiftUp);
  EXPECT_EQ(DrawnOn("C6"), 2);
  EXPECT_EQ(DrawnOn("C8"), 0);
  EXPECT_EQ(DrawnOn("D9"), 2);
}

}  // namespace
}  // namespace mirelo::testing
