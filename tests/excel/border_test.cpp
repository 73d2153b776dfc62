#include "host/excel/border.h"
#include "conformance.h"
#include "host/excel/interior.h"

namespace mirelo::testing {
namespace {

using namespace host::excel;

class Borders : public Spreadsheets {
 protected:
  std::shared_ptr<Border> Of(std::string_view address, XlBordersIndex index) {
    return Range(address)->Borders(index);
  }
  void Draw(std::string_view address, XlBordersIndex index) { Of(address, index)->LineStyle(xlContinuous); }
  bool HasLine(std::string_view address, XlBordersIndex index) {
    return Of(address, index)->LineStyle() != Variant(-4142);
  }
  std::string LastCell() {
    return sheet->Cells(1, 1)->SpecialCells(xlCellTypeLastCell)->Address(false, false);
  }
};

TEST_P(Borders, AreNoneOnANewSheet) {
  for (const auto index :
       {xlEdgeLeft, xlEdgeTop, xlEdgeBottom, xlEdgeRight, xlInsideVertical, xlInsideHorizontal}) {
    SCOPED_TRACE(index);
    const auto border = Of("B2:D5", index);
    EXPECT_EQ(border->LineStyle(), Variant(-4142));
    EXPECT_EQ(border->Weight(), Variant(2));
    EXPECT_EQ(border->ColorIndex(), Variant(-4142));
  }
}

TEST_P(Borders, KeepWhatIsSetOneAfterTheOther) {
  const auto border = Of("A2:C9", xlEdgeTop);
  border->LineStyle(1);
  border->Weight(-4138);
  border->ColorIndex(16);
  EXPECT_EQ(border->LineStyle(), Variant(1));
  EXPECT_EQ(border->Weight(), Variant(-4138));
  EXPECT_EQ(border->ColorIndex(), Variant(16));
}

TEST_P(Borders, LieAlongTheEdgesOfTheRangeAlone) {
  const struct {
    XlBordersIndex index;
    const char* on;
    const char* not_on;
  } edges[] = {{xlEdgeLeft, "B3", "C3"},
               {xlEdgeRight, "D3", "C3"},
               {xlEdgeTop, "C2", "C3"},
               {xlEdgeBottom, "C5", "C3"}};
  for (const auto& [index, on, not_on] : edges) {
    SCOPED_TRACE(index);
    sheet->Cells()->Clear();
    Draw("B2:D5", index);
    EXPECT_TRUE(HasLine(on, index));
    EXPECT_FALSE(HasLine(not_on, index));
  }
}

TEST_P(Borders, InsideLieBetweenAllCells) {
  Draw("B2:D4", xlInsideVertical);
  for (const char* address : {"B2", "C2", "B4", "C4"}) EXPECT_TRUE(HasLine(address, xlEdgeRight)) << address;
  for (const char* address : {"D2", "D4"}) EXPECT_FALSE(HasLine(address, xlEdgeRight)) << address;
  EXPECT_FALSE(HasLine("B2", xlEdgeLeft));
  EXPECT_FALSE(HasLine("B2:D4", xlInsideHorizontal));

  Draw("B2:D4", xlInsideHorizontal);
  for (const char* address : {"B2", "D2", "B3", "D3"}) EXPECT_TRUE(HasLine(address, xlEdgeBottom)) << address;
  for (const char* address : {"B4", "D4"}) EXPECT_FALSE(HasLine(address, xlEdgeBottom)) << address;
  EXPECT_FALSE(HasLine("B2", xlEdgeTop));
}

TEST_P(Borders, InsideASingleRowOrColumnDoNotExist) {
  EXPECT_EQ(NumberOf([&] { Draw("A2:A9", xlInsideVertical); }), 0);
  EXPECT_EQ(NumberOf([&] { Draw("A2:D2", xlInsideHorizontal); }), 0);
  EXPECT_FALSE(HasLine("A2:A9", xlInsideVertical));
  EXPECT_FALSE(HasLine("A2:D2", xlInsideHorizontal));
  EXPECT_EQ(LastCell(), "A1") << "nothing was drawn";
}

TEST_P(Borders, BetweenTwoCellsAreOneLine) {
  Draw("B2", xlEdgeRight);
  EXPECT_TRUE(HasLine("C2", xlEdgeLeft));
  Of("C2", xlEdgeLeft)->ColorIndex(3);
  EXPECT_EQ(Of("B2", xlEdgeRight)->ColorIndex(), Variant(3));
  Of("C2", xlEdgeLeft)->LineStyle(xlLineStyleNone);
  EXPECT_FALSE(HasLine("B2", xlEdgeRight));

  Draw("B3", xlEdgeTop);
  EXPECT_TRUE(HasLine("B2", xlEdgeBottom));
  Of("B2", xlEdgeBottom)->Weight(xlThick);
  EXPECT_EQ(Of("B3", xlEdgeTop)->Weight(), Variant(4));
}

TEST_P(Borders, GiveNoFormatToCellsOutsideOfTheRange) {
  for (const auto index : {xlEdgeLeft, xlEdgeTop, xlEdgeBottom, xlEdgeRight}) Draw("B2:D5", index);
  EXPECT_EQ(LastCell(), "D5");
}

TEST_P(Borders, ThatDifferReadAsEmpty) {
  Draw("A1", xlEdgeBottom);
  EXPECT_TRUE(Of("A1:B1", xlEdgeBottom)->LineStyle().IsEmpty());
  EXPECT_TRUE(Of("A1:B1", xlEdgeBottom)->ColorIndex().IsEmpty());
  EXPECT_EQ(Of("A1:B1", xlEdgeBottom)->Weight(), Variant(2)) << "no line reads as thin";
  Of("A1", xlEdgeBottom)->Weight(xlMedium);
  EXPECT_TRUE(Of("A1:B1", xlEdgeBottom)->Weight().IsEmpty());
}

TEST_P(Borders, TakeEveryStyle) {
  for (const std::int32_t style : {1, 4, 5, -4115, -4118, -4119, -4142}) {
    Of("B2", xlEdgeLeft)->LineStyle(style);
    EXPECT_EQ(Of("B2", xlEdgeLeft)->LineStyle(), Variant(style));
  }
}

TEST_P(Borders, TakeAStyleThatSlants) {
  const auto border = Of("B2", xlEdgeLeft);
  border->LineStyle(xlSlantDashDot);
  border->Weight(xlMedium);
  EXPECT_EQ(border->LineStyle(), Variant(xlSlantDashDot));
  EXPECT_EQ(border->Weight(), Variant(xlMedium));
}

TEST_P(Borders, TakeEveryWeight) {
  for (const std::int32_t weight : {1, 2, 4, -4138}) {
    Of("B2", xlEdgeLeft)->Weight(weight);
    EXPECT_EQ(Of("B2", xlEdgeLeft)->Weight(), Variant(weight));
    EXPECT_EQ(Of("B2", xlEdgeLeft)->LineStyle(), Variant(1)) << weight;
  }
}

TEST_P(Borders, JoinStylesAndWeightsAsTheyExist) {
  const struct {
    std::int32_t style;
    std::int32_t weight;
    std::int32_t style_then;  // when the weight was set after the style
    std::int32_t weight_then;
  } cases[] = {
      {xlDash, xlMedium, xlDash, xlMedium},         {xlDashDot, xlMedium, xlDashDot, xlMedium},
      {xlDashDotDot, xlThin, xlDashDotDot, xlThin}, {xlDot, xlMedium, xlContinuous, xlMedium},
      {xlDouble, xlThick, xlDouble, xlThick},       {xlDouble, xlThin, xlContinuous, xlThin},
  };
  for (const auto& [style, weight, style_then, weight_then] : cases) {
    SCOPED_TRACE(std::to_string(style) + ", " + std::to_string(weight));
    const auto border = Of("B2", xlEdgeLeft);
    border->LineStyle(style);
    border->Weight(weight);
    EXPECT_EQ(border->LineStyle(), Variant(style_then));
    EXPECT_EQ(border->Weight(), Variant(weight_then));
  }
}

TEST_P(Borders, KeepTheirWeightUnderANewStyleThatHasIt) {
  const auto border = Of("B2", xlEdgeLeft);
  border->Weight(xlMedium);
  border->ColorIndex(3);
  border->LineStyle(xlDash);
  EXPECT_EQ(border->Weight(), Variant(-4138));
  EXPECT_EQ(border->ColorIndex(), Variant(3));
  border->LineStyle(xlDot);
  EXPECT_EQ(border->Weight(), Variant(2));
}

TEST_P(Borders, ComeInWithAWeightOrAColourToo) {
  Of("B2", xlEdgeTop)->Weight(xlMedium);
  EXPECT_EQ(Of("B2", xlEdgeTop)->LineStyle(), Variant(1));
  EXPECT_EQ(Of("B2", xlEdgeTop)->ColorIndex(), Variant(-4105));
  Of("B2", xlEdgeLeft)->ColorIndex(3);
  EXPECT_EQ(Of("B2", xlEdgeLeft)->LineStyle(), Variant(1));
  EXPECT_EQ(Of("B2", xlEdgeLeft)->Weight(), Variant(2));
}

TEST_P(Borders, GoWithColourIndexNone) {
  Draw("B2", xlEdgeTop);
  Of("B2", xlEdgeTop)->ColorIndex(xlColorIndexNone);
  EXPECT_FALSE(HasLine("B2", xlEdgeTop));
}

TEST_P(Borders, RaiseError1004ForNumbersThatMeanNothing) {
  EXPECT_EQ(NumberOf([&] { Of("B2", static_cast<XlBordersIndex>(13)); }), 1004);
  EXPECT_EQ(NumberOf([&] { Of("B2", static_cast<XlBordersIndex>(0)); }), 1004);
  EXPECT_EQ(NumberOf([&] { Of("B2", xlEdgeTop)->LineStyle(2); }), 1004);
  EXPECT_EQ(NumberOf([&] { Of("B2", xlEdgeTop)->Weight(3); }), 1004);
  EXPECT_EQ(NumberOf([&] { Of("B2", xlEdgeTop)->ColorIndex(57); }), 1004);
  EXPECT_FALSE(HasLine("B2", xlEdgeTop));
}

TEST_P(Borders, GoWithClear) {
  Draw("B2:C3", xlInsideVertical);
  Range("B2:C3")->Clear();
  EXPECT_FALSE(HasLine("B2", xlEdgeRight));
}

TEST_P(Borders, FrameATableAsItsOwnersDo) {
  const auto table = Range("A2:D7");
  for (const auto index : {xlEdgeLeft, xlEdgeTop, xlEdgeBottom, xlEdgeRight}) {
    table->Borders(index)->LineStyle(1);
    table->Borders(index)->Weight(-4138);
    table->Borders(index)->ColorIndex(16);
  }
  for (const auto index : {xlInsideVertical, xlInsideHorizontal}) {
    table->Borders(index)->LineStyle(1);
    table->Borders(index)->Weight(2);
    table->Borders(index)->ColorIndex(15);
  }
  for (std::int32_t row = 2; row <= 7; ++row) {
    for (std::int32_t column = 1; column <= 4; ++column) {
      const auto cell = sheet->Cells(row, column);
      SCOPED_TRACE(cell->Address());
      EXPECT_EQ(cell->Borders(xlEdgeLeft)->ColorIndex(), Variant(column == 1 ? 16 : 15));
      EXPECT_EQ(cell->Borders(xlEdgeRight)->ColorIndex(), Variant(column == 4 ? 16 : 15));
      EXPECT_EQ(cell->Borders(xlEdgeTop)->Weight(), Variant(row == 2 ? -4138 : 2));
      EXPECT_EQ(cell->Borders(xlEdgeBottom)->Weight(), Variant(row == 7 ? -4138 : 2));
    }
  }
}

// Rows filled by turns, columns with formats of their own, and two lines that are heavier than the others.
TEST_P(Borders, OfCellsThatLookDifferentKeepWhatIsNotChanged) {
  for (const char* row : {"B3:D3", "B5:D5"}) Range(row)->Interior()->ColorIndex(36);
  Range("C2:C6")->NumberFormat("0.00");
  Draw("B2:D6", xlInsideVertical);
  Of("B4", xlEdgeRight)->Weight(xlThick);
  Of("D5", xlEdgeLeft)->Weight(xlMedium);
  Of("B2:D6", xlInsideVertical)->ColorIndex(15);
  for (std::int32_t row = 2; row <= 6; ++row) {
    for (std::int32_t column = 2; column <= 3; ++column) {
      SCOPED_TRACE(std::to_string(row) + ", " + std::to_string(column));
      const std::int32_t weight = row == 4 && column == 2   ? xlThick
                                  : row == 5 && column == 3 ? xlMedium
                                                            : xlThin;
      for (const auto& border : {sheet->Cells(row, column)->Borders(xlEdgeRight),
                                 sheet->Cells(row, column + 1)->Borders(xlEdgeLeft)}) {
        EXPECT_EQ(border->ColorIndex(), Variant(15));
        EXPECT_EQ(border->Weight(), Variant(weight));
      }
    }
  }
  EXPECT_FALSE(HasLine("B2:D6", xlInsideHorizontal));
  EXPECT_FALSE(HasLine("B2:B6", xlEdgeLeft));
  EXPECT_FALSE(HasLine("D2:D6", xlEdgeRight));
  EXPECT_EQ(Range("B3:D3")->Interior()->ColorIndex(), Variant(36));
  EXPECT_EQ(Range("C2:C6")->NumberFormat(), Variant("0.00"));
}

TEST_P(Borders, ReachWholeColumns) {
  Draw("B:C", xlInsideHorizontal);
  Draw("B:C", xlEdgeLeft);
  EXPECT_TRUE(HasLine("C500000", xlEdgeTop));
  EXPECT_TRUE(HasLine("A500000", xlEdgeRight));
}

MIRELO_AGAINST_ALL(Borders);

}  // namespace
}  // namespace mirelo::testing
