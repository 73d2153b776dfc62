#include "conformance.h"
#include "host/excel/font.h"
#include "host/excel/interior.h"

namespace mirelo::testing {
namespace {

using namespace host::excel;

class Formats : public Spreadsheets {};

TEST_P(Formats, AreThoseOfANewSheetAtFirst) {
  EXPECT_EQ(Range("A1")->NumberFormat(), Variant("General"));
  EXPECT_EQ(Range("A1")->HorizontalAlignment(), Variant(1));
  EXPECT_EQ(Range("A1")->Font()->Bold(), Variant(false));
  EXPECT_EQ(Range("A1")->Font()->ColorIndex(), Variant(-4105));
  EXPECT_EQ(Range("A1")->Interior()->ColorIndex(), Variant(-4142));
}

TEST_P(Formats, ReachTheWholeRangeAndNoCellMore) {
  const auto range = Range("B2:D5");
  range->NumberFormat("#,##0");
  range->HorizontalAlignment(xlHAlignCenter);
  range->Font()->Bold(true);
  range->Font()->ColorIndex(3);
  range->Interior()->ColorIndex(15);
  for (const char* address : {"B2", "D2", "B5", "D5", "C3", "B2:D5"}) {
    SCOPED_TRACE(address);
    EXPECT_EQ(Range(address)->NumberFormat(), Variant("#,##0"));
    EXPECT_EQ(Range(address)->HorizontalAlignment(), Variant(-4108));
    EXPECT_EQ(Range(address)->Font()->Bold(), Variant(true));
    EXPECT_EQ(Range(address)->Font()->ColorIndex(), Variant(3));
    EXPECT_EQ(Range(address)->Interior()->ColorIndex(), Variant(15));
  }
  for (const char* address : {"A2", "E2", "B1", "B6"}) {
    SCOPED_TRACE(address);
    EXPECT_EQ(Range(address)->NumberFormat(), Variant("General"));
    EXPECT_EQ(Range(address)->Font()->Bold(), Variant(false));
    EXPECT_EQ(Range(address)->Interior()->ColorIndex(), Variant(-4142));
  }
}

TEST_P(Formats, ThatDifferReadAsEmpty) {
  Range("A1")->NumberFormat("0.00");
  Range("A1")->HorizontalAlignment(xlHAlignRight);
  Range("A1")->Font()->Bold(true);
  Range("A1")->Font()->ColorIndex(3);
  Range("A1")->Interior()->ColorIndex(3);
  EXPECT_TRUE(Range("A1:A2")->NumberFormat().IsEmpty());
  EXPECT_TRUE(Range("A1:A2")->HorizontalAlignment().IsEmpty());
  EXPECT_TRUE(Range("A1:A2")->Font()->Bold().IsEmpty());
  EXPECT_TRUE(Range("A1:A2")->Font()->ColorIndex().IsEmpty());
  EXPECT_TRUE(Range("A1:A2")->Interior()->ColorIndex().IsEmpty());
}

TEST_P(Formats, ThatDifferElsewhereDoNotCount) {
  Range("A1")->Font()->Bold(true);
  Range("A2")->Font()->Bold(true);
  Range("A2")->NumberFormat("0.00");
  EXPECT_EQ(Range("A1:A2")->Font()->Bold(), Variant(true));
}

TEST_P(Formats, AddUp) {
  Range("A1:C3")->Font()->Bold(true);
  Range("B2")->Interior()->ColorIndex(6);
  Range("A2:C2")->NumberFormat("0.00");
  EXPECT_EQ(Range("B2")->Font()->Bold(), Variant(true));
  EXPECT_EQ(Range("B2")->Interior()->ColorIndex(), Variant(6));
  EXPECT_EQ(Range("B2")->NumberFormat(), Variant("0.00"));
}

TEST_P(Formats, OfWholeColumnsReachTheFoot) {
  Range("B:B")->Font()->Bold(true);
  EXPECT_EQ(sheet->Cells(RowCount(), 2)->Font()->Bold(), Variant(true));
  EXPECT_EQ(sheet->Cells(RowCount(), 3)->Font()->Bold(), Variant(false));
}

TEST_P(Formats, OfTheWholeSheetReachItsLastCell) {
  sheet->Cells()->Interior()->ColorIndex(36);
  EXPECT_EQ(sheet->Cells(RowCount(), ColumnCount())->Interior()->ColorIndex(), Variant(36));
  sheet->Cells()->Clear();
  EXPECT_EQ(sheet->Cells(RowCount(), ColumnCount())->Interior()->ColorIndex(), Variant(-4142));
}

TEST_P(Formats, GoWithClearAndStayWithClearContents) {
  Put("A1:B1", 1.0);
  Range("A1:B1")->NumberFormat("0.00");
  Range("A1:B1")->Interior()->ColorIndex(6);
  Range("A1")->ClearContents();
  Range("B1")->Clear();
  EXPECT_TRUE(Get("A1").IsEmpty());
  EXPECT_TRUE(Get("B1").IsEmpty());
  EXPECT_EQ(Range("A1")->NumberFormat(), Variant("0.00"));
  EXPECT_EQ(Range("B1")->NumberFormat(), Variant("General"));
  EXPECT_EQ(Range("B1")->Interior()->ColorIndex(), Variant(-4142));
}

TEST_P(Formats, GiveBackEveryColourOfThePalette) {
  const auto cell = Range("A1");
  for (std::int32_t index = 1; index <= 56; ++index) {
    SCOPED_TRACE(index);
    cell->Interior()->ColorIndex(index);
    cell->Font()->ColorIndex(index);
    const std::int32_t read = cell->Interior()->ColorIndex().ToInt32();
    EXPECT_EQ(cell->Font()->ColorIndex(), Variant(read));
    const bool is_for_charts =
        17 <= index && index <= 32;  // some of these repeat another colour, and may read as that
    if (!is_for_charts) {
      EXPECT_EQ(read, index);
    }
    cell->Interior()->ColorIndex(read);
    EXPECT_EQ(cell->Interior()->ColorIndex(), Variant(read));
  }
}

TEST_P(Formats, TakeTheIndexesThatMeanNoColour) {
  for (const std::int32_t none : {0, -4142, -4105}) {
    SCOPED_TRACE(none);
    Range("A1")->Interior()->ColorIndex(6);
    Range("A1")->Interior()->ColorIndex(none);
    EXPECT_EQ(Range("A1")->Interior()->ColorIndex(), Variant(-4142));
    Range("A1")->Font()->ColorIndex(6);
    Range("A1")->Font()->ColorIndex(none);
    EXPECT_EQ(Range("A1")->Font()->ColorIndex(), Variant(-4105));
  }
}

TEST_P(Formats, RaiseError1004ForOtherIndexes) {
  for (const std::int32_t wrong : {57, -1, 255, 32768}) {
    SCOPED_TRACE(wrong);
    EXPECT_EQ(NumberOf([&] { Range("A1")->Font()->ColorIndex(wrong); }), 1004);
    EXPECT_EQ(NumberOf([&] { Range("A1")->Interior()->ColorIndex(wrong); }), 1004);
  }
  EXPECT_EQ(NumberOf([&] { Range("A1")->HorizontalAlignment(2); }), 1004);
}

TEST_P(Formats, TakeTheCodesOfTheQuoteTable) {
  for (const char* code :
       {"0.00", "#,##0", "mm/dd/yyyy", "hh:mm:ss", "+ 0.00;- 0.00", "0.0000", "@", "General",
        "[Red]0;[Blue]-0;\"nil\";@", "#,##0.00_);(#,##0.00)", "[h]:mm:ss", "0.00E+00", "# ?/?"}) {
    SCOPED_TRACE(code);
    Range("A1")->NumberFormat(code);
    EXPECT_EQ(Range("A1")->NumberFormat(), Variant(code));
  }
}

TEST_P(Formats, RaiseError1004ForTextThatIsNoCode) {
  Range("A1")->NumberFormat("0.00");
  for (const std::string& text :
       {std::string(), std::string("\"open"), std::string("[Red"), std::string("0\\"),
        std::string("0;0;0;0;0"), std::string("price"), std::string(256, '0')}) {
    SCOPED_TRACE(text);
    EXPECT_EQ(NumberOf([&] { Range("A1")->NumberFormat(text); }), 1004);
    EXPECT_EQ(Range("A1")->NumberFormat(), Variant("0.00"));
  }
}

TEST_P(Formats, DoNotMakeACellFilled) {
  Range("A1")->Font()->Bold(true);
  EXPECT_TRUE(Get("A1").IsEmpty());
}

TEST_P(Formats, FitColumnsOnly) {
  Put("A1", "a text that is wider than a column");
  Range("A1")->EntireColumn()->AutoFit();
  Range("A1:B9")->Columns()->AutoFit();
  Range("A:B")->AutoFit();
  EXPECT_EQ(NumberOf([&] { Range("A1:B9")->AutoFit(); }), 1004);
}

MIRELO_AGAINST_ALL(Formats);

}  // namespace
}  // namespace mirelo::testing
