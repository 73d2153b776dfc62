#include <limits>

#include "charts_on_sheet.h"
#include "host/excel/comment.h"

namespace mirelo::testing {
namespace {

using namespace host::excel;

constexpr double kNothing = std::numeric_limits<double>::quiet_NaN();
constexpr double kEndless = std::numeric_limits<double>::infinity();

class ShapeList : public ChartedSheet {};

TEST_P(ShapeList, IsEmptyAtFirst) {
  EXPECT_EQ(Shapes()->Count(), 0);
  EXPECT_EQ(NumberOf([&] { Shapes()->Item(1); }), 1004);
}

TEST_P(ShapeList, HoldsChartsInTheOrderInWhichTheyCame) {
  AddChart();
  AddChart();
  ASSERT_EQ(Shapes()->Count(), 2);
  for (const std::int32_t index : {1, 2}) {
    EXPECT_EQ(Shapes()->Item(index)->Name(), "Chart " + std::to_string(index));
    EXPECT_EQ(Shapes()->Item(index)->Type(), msoChart);
    EXPECT_EQ(Shapes()->Item(index)->ZOrderPosition(), index);
    EXPECT_EQ(Shapes()->Item(index)->Chart()->Index(), index);
  }
  for (const std::int32_t index : {-1, 0, 3})
    EXPECT_EQ(NumberOf([&] { Shapes()->Item(index); }), 1004) << index;
}

TEST_P(ShapeList, FindsByNameWithoutRegardToCase) {
  AddChart();
  Range("B2")->AddComment("x");
  EXPECT_EQ(Shapes()->Item("CHART 1")->Type(), msoChart);
  EXPECT_EQ(Shapes()->Item("comment b2")->Type(), msoComment);
  EXPECT_EQ(NumberOf([&] { Shapes()->Item("Chart 2"); }), 1004);
}

TEST_P(ShapeList, HoldsTheBoxesOfCommentsAboveTheCharts) {
  Range("C5")->AddComment("lower");
  Range("D2")->AddComment("upper");
  AddChart();
  ASSERT_EQ(Shapes()->Count(), 3);
  const std::string names[] = {"Chart 1", "Comment D2", "Comment C5"};
  for (std::int32_t index = 1; index <= 3; ++index) {
    EXPECT_EQ(Shapes()->Item(index)->Name(), names[index - 1]);
    EXPECT_EQ(Shapes()->Item(index)->ZOrderPosition(), index);
  }
}

TEST_P(ShapeList, CountsAllChartsThatTheSheetEverHadInTheirNames) {
  ShapeOf(AddChart())->Delete();
  EXPECT_EQ(ShapeOf(AddChart())->Name(), "Chart 2");
}

TEST_P(ShapeList, ClosesUpWhenAShapeIsDeleted) {
  AddChart();
  const auto second = AddChart();
  const auto shape = ShapeOf(second);
  Shapes()->Item(1)->Delete();
  EXPECT_EQ(Shapes()->Count(), 1);
  EXPECT_EQ(shape->ZOrderPosition(), 1);
  EXPECT_EQ(second->Index(), 1);
  EXPECT_EQ(shape->Name(), "Chart 2") << "it keeps its name";
}

// As a client does that takes all charts off a sheet.
TEST_P(ShapeList, CanBeEmptiedOfChartsOneByOne) {
  for (int i = 0; i < 3; ++i) AddChart();
  Range("A1")->AddComment("stays");
  std::int32_t index = 1;
  while (index <= Shapes()->Count()) {
    const auto shape = Shapes()->Item(index);
    if (shape->Type() != msoChart) {
      ++index;
      continue;
    }
    shape->Select();
    shape->Delete();
  }
  EXPECT_EQ(Shapes()->Count(), 1);
  EXPECT_EQ(application->Selection()->TypeName(), "Range") << "what was selected is gone";
}

class ChartShapes : public ChartedSheet {
 protected:
  ShapePtr shape = ShapeOf(AddChart());
};

TEST_P(ChartShapes, StandWhereTheyArePut) {
  shape->Left(96);
  shape->Top(75);
  shape->Height(76.5);
  shape->Width(200.25);
  const auto again = Shapes()->Item(1);
  EXPECT_EQ(again->Left(), 96);
  EXPECT_EQ(again->Top(), 75);
  EXPECT_EQ(again->Height(), 76.5);
  EXPECT_EQ(again->Width(), 200.25);
}

TEST_P(ChartShapes, StandOnWholePixels) {
  shape->Left(0.3);
  shape->Top(10);
  shape->Height(76);
  shape->Width(0.1);
  EXPECT_EQ(shape->Left(), 0);
  EXPECT_EQ(shape->Top(), 9.75);
  EXPECT_EQ(shape->Height(), 75.75);
  EXPECT_EQ(shape->Width(), 0.75) << "one pixel at least";
}

TEST_P(ChartShapes, RefusePlacesAndSizesThatAreNone) {
  const double left = shape->Left();
  const double top = shape->Top();
  for (const double points : {-0.75, -1000.0, kNothing, kEndless, -kEndless}) {
    SCOPED_TRACE(points);
    EXPECT_EQ(NumberOf([&] { shape->Left(points); }), 1004);
    EXPECT_EQ(NumberOf([&] { shape->Top(points); }), 1004);
  }
  for (const double points : {0.0, -0.75, 24'576.0, 1e300, kNothing, kEndless}) {
    SCOPED_TRACE(points);
    EXPECT_EQ(NumberOf([&] { shape->Height(points); }), 1004);
    EXPECT_EQ(NumberOf([&] { shape->Width(points); }), 1004);
  }
  EXPECT_EQ(shape->Left(), left);
  EXPECT_EQ(shape->Top(), top);
  EXPECT_EQ(shape->Width(), 360);
  EXPECT_EQ(shape->Height(), 216);
}

TEST_P(ChartShapes, DoNotLeaveTheSheetAtItsEnd) {
  const auto cells = sheet->Cells();
  shape->Left(1e9);
  shape->Top(1e9);
  constexpr double kPixel = 0.75;
  EXPECT_NEAR(shape->Left() + shape->Width(), cells->Width(), GetParam().tolerance > 0 ? kPixel : 0);
  EXPECT_NEAR(shape->Top() + shape->Height(), cells->Height(), GetParam().tolerance > 0 ? kPixel : 0);
}

TEST_P(ChartShapes, AreScaledByTheirPresentSize) {
  shape->ScaleHeight(0.5, msoFalse);
  shape->ScaleWidth(2, msoFalse);
  EXPECT_EQ(shape->Height(), 108);
  EXPECT_EQ(shape->Width(), 720);
  EXPECT_EQ(NumberOf([&] { shape->ScaleHeight(2, msoTrue); }), 1004);
  for (const double factor : {0.0, -1.0, 1e9, kNothing, kEndless})
    EXPECT_EQ(NumberOf([&] { shape->ScaleWidth(factor, msoFalse); }), 1004) << factor;
  EXPECT_EQ(shape->Width(), 720);
}

TEST_P(ChartShapes, StayWhenCellsMove) {
  shape->Top(150);
  sheet->Rows("1:5")->Delete(xlShiftUp);
  EXPECT_EQ(shape->Top(), 150);
}

TEST_P(ChartShapes, AreGoodForNothingOnceTheyAreDeleted) {
  shape->Delete();
  const std::function<void()> calls[] = {
      [&] { shape->Type(); },
      [&] { shape->Name(); },
      [&] { shape->Chart(); },
      [&] { shape->ZOrderPosition(); },
      [&] { shape->Select(); },
      [&] { shape->Delete(); },
      [&] { shape->Left(); },
      [&] { shape->Left(1); },
      [&] { shape->Top(); },
      [&] { shape->Top(1); },
      [&] { shape->Height(); },
      [&] { shape->Height(1); },
      [&] { shape->Width(); },
      [&] { shape->Width(1); },
      [&] { shape->ScaleHeight(1, msoFalse); },
      [&] { shape->ScaleWidth(1, msoFalse); },
  };
  int number = 0;
  for (const auto& call : calls) EXPECT_EQ(NumberOf(call), 1004) << "call " << number++;
}

TEST_P(ChartShapes, AreSelectedInPlaceOfCells) {
  Range("C3:D4")->Select();
  EXPECT_EQ(application->Selection()->TypeName(), "Range");
  sheets->Add();
  shape->Select();
  EXPECT_EQ(application->ActiveSheet()->Name(), "Sheet1") << "its sheet comes to the front";
  EXPECT_EQ(application->Selection()->TypeName(), "Shape");
  EXPECT_EQ(application->ActiveCell()->Address(), "$C$3");
  Range("A1")->Select();
  EXPECT_EQ(application->Selection()->TypeName(), "Range");
}

TEST_P(ChartShapes, CanBeSelectedAgainThroughARememberedSelection) {
  shape->Select();
  const auto remembered = application->Selection();
  Range("A1")->Select();
  remembered->Select();
  EXPECT_EQ(application->Selection()->TypeName(), "Shape");
  shape->Delete();
  EXPECT_EQ(NumberOf([&] { remembered->Select(); }), 1004);
}

TEST_P(ChartShapes, LeaveTheSelectionOfOtherShapesAlone) {
  AddChart();
  shape->Select();
  Shapes()->Item(2)->Delete();
  EXPECT_EQ(application->Selection()->TypeName(), "Shape");
}

class RememberedCells : public ChartedSheet {};

TEST_P(RememberedCells, AreSelectedAgainAsAWhole) {
  Range("C3:D4")->Select();
  const auto remembered = application->Selection();
  Range("A1")->Select();
  remembered->Select();
  const auto range = std::dynamic_pointer_cast<host::excel::Range>(application->Selection());
  ASSERT_NE(range, nullptr);
  EXPECT_EQ(range->Address(), "$C$3:$D$4");
}

class CommentBoxes : public ChartedSheet {
 protected:
  ShapePtr BoxAt(std::string_view address) { return Range(address)->Comment()->Shape(); }
};

TEST_P(CommentBoxes, StandBesideTheirCells) {
  Range("B4")->AddComment("x");
  const auto box = Shapes()->Item(1);
  EXPECT_EQ(box->Type(), msoComment);
  EXPECT_GT(box->Left(), Range("B4")->Left() + Range("B4")->Width());
  EXPECT_LT(box->Left(), Range("D4")->Left());
  EXPECT_LT(box->Top(), Range("B4")->Top());
  EXPECT_GT(box->Top(), Range("B3")->Top());
  Range("B1")->AddComment("first row");
  EXPECT_GE(BoxAt("B1")->Top(), 0);
}

TEST_P(CommentBoxes, HaveASizeThatCanBeSetButNoPlace) {
  Range("B4")->AddComment("x");
  const auto box = Shapes()->Item(1);
  box->Width(30.1);
  box->Height(75);
  EXPECT_EQ(BoxAt("B4")->Width(), 30);
  EXPECT_EQ(BoxAt("B4")->Height(), 75);
  EXPECT_EQ(NumberOf([&] { box->Width(0); }), 1004);
  EXPECT_EQ(NumberOf([&] { box->Left(5); }), 1004);
  EXPECT_EQ(NumberOf([&] { box->Top(5); }), 1004);
}

TEST_P(CommentBoxes, HoldNoChart) {
  Range("B4")->AddComment("x");
  EXPECT_EQ(NumberOf([&] { Shapes()->Item(1)->Chart(); }), 1004);
}

TEST_P(CommentBoxes, GoWithTheirComments) {
  Range("B4")->AddComment("x");
  const auto box = BoxAt("B4");
  sheet->Rows("1:2")->Delete(xlShiftUp);
  EXPECT_EQ(box->Name(), "Comment B2");
  Range("B2")->ClearComments();
  EXPECT_EQ(Shapes()->Count(), 0);
  EXPECT_EQ(NumberOf([&] { box->Name(); }), 1004);
  EXPECT_EQ(NumberOf([&] { box->Width(); }), 1004);
  Range("B2")->AddComment("another one");
  EXPECT_EQ(NumberOf([&] { box->Width(); }), 1004);
}

TEST_P(CommentBoxes, TakeTheirCommentsWithThem) {
  Range("B4")->AddComment("x");
  const auto box = BoxAt("B4");
  box->Delete();
  EXPECT_EQ(Range("B4")->Comment(), nullptr);
  EXPECT_EQ(NumberOf([&] { box->Delete(); }), 1004);
}

TEST_P(CommentBoxes, CanBeSelected) {
  Range("B4")->AddComment("x");
  BoxAt("B4")->Select();
  const auto selected = std::dynamic_pointer_cast<host::excel::Shape>(application->Selection());
  ASSERT_NE(selected, nullptr);
  EXPECT_EQ(selected->Type(), msoComment);
  ShapeOf(AddChart())->Select();
  EXPECT_EQ(std::dynamic_pointer_cast<host::excel::Shape>(application->Selection())->Type(), msoChart);
  BoxAt("B4")->Select();
  Range("B4")->ClearComments();
  EXPECT_EQ(application->Selection()->TypeName(), "Range");
}

MIRELO_AGAINST_ALL(ShapeList);
MIRELO_AGAINST_ALL(ChartShapes);
MIRELO_AGAINST_ALL(RememberedCells);
MIRELO_AGAINST_ALL(CommentBoxes);

}  // namespace
}  // namespace mirelo::testing
