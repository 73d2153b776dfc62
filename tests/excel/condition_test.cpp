#include "conformance.h"
#include "host/excel/font.h"
#include "host/excel/format_conditions.h"

namespace mirelo::testing {
namespace {

using namespace host::excel;

class Conditions : public Spreadsheets {
 protected:
  std::int32_t CountOf(std::string_view address) { return Range(address)->FormatConditions()->Count(); }
  Variant ColorOf(std::string_view address, std::int32_t index) {
    return Range(address)->FormatConditions()->Item(index)->Font()->ColorIndex();
  }
  // Rises in one colour, falls in another.
  void LayRisesAndFalls(std::string_view address) {
    const auto conditions = Range(address)->FormatConditions();
    conditions->Delete();
    conditions->Add(xlCellValue, xlGreater, "0");
    conditions->Item(1)->Font()->ColorIndex(10);
    conditions->Add(xlCellValue, xlLess, "0");
    conditions->Item(2)->Font()->ColorIndex(3);
  }
};

TEST_P(Conditions, AreNoneAtFirst) {
  EXPECT_EQ(CountOf("A1:XFD1048576"), 0);
  EXPECT_EQ(NumberOf([&] { Range("A1")->FormatConditions()->Item(1); }), 9);
  EXPECT_EQ(NumberOf([&] { Range("A1")->FormatConditions()->Delete(); }), 0);
}

TEST_P(Conditions, AreCountedInTheOrderInWhichTheyWereAdded) {
  LayRisesAndFalls("C3:C9");
  EXPECT_EQ(CountOf("C3:C9"), 2);
  EXPECT_EQ(ColorOf("C3:C9", 1), Variant(10));
  EXPECT_EQ(ColorOf("C3:C9", 2), Variant(3));
  EXPECT_EQ(NumberOf([&] { ColorOf("C3:C9", 3); }), 9);
  EXPECT_EQ(NumberOf([&] { ColorOf("C3:C9", 0); }), 9);
}

TEST_P(Conditions, ReachTheCellsOfTheRangeAndNoOthers) {
  LayRisesAndFalls("C3:C9");
  for (const char* address : {"C3", "C9", "C5:C6", "A1:D4"}) EXPECT_EQ(CountOf(address), 2) << address;
  for (const char* address : {"C2", "C10", "B3", "D3", "D1:F9"}) EXPECT_EQ(CountOf(address), 0) << address;
}

TEST_P(Conditions, HaveNoLookOfTheirOwnAtFirst) {
  const auto condition = Range("A1")->FormatConditions()->Add(xlCellValue, xlEqual, "0");
  EXPECT_TRUE(condition->Font()->ColorIndex().IsEmpty());
  EXPECT_TRUE(condition->Font()->Bold().IsEmpty());
  condition->Font()->Bold(true);
  EXPECT_EQ(Range("A1")->FormatConditions()->Item(1)->Font()->Bold(), Variant(true));
}

TEST_P(Conditions, LeaveTheCellsOwnFormatAlone) {
  LayRisesAndFalls("A1");
  Put("A1", 5.0);
  EXPECT_EQ(Range("A1")->Font()->ColorIndex(), Variant(-4105));
}

TEST_P(Conditions, OfPartOfTheirCellsCanBeTakenAway) {
  LayRisesAndFalls("B2:D9");
  Range("C4:C5")->FormatConditions()->Delete();
  for (const char* address : {"C4", "C5", "C4:C5"}) EXPECT_EQ(CountOf(address), 0) << address;
  for (const char* address : {"C3", "C6", "B4", "D5", "B2", "D9"}) EXPECT_EQ(CountOf(address), 2) << address;
}

TEST_P(Conditions, GoWithClearButNotWithTheContents) {
  LayRisesAndFalls("A1:A9");
  Range("A1:A9")->ClearContents();
  EXPECT_EQ(CountOf("A1:A9"), 2);
  Range("A5")->Clear();
  EXPECT_EQ(CountOf("A5"), 0);
  EXPECT_EQ(CountOf("A1:A9"), 2);
  Range("A1:A9")->Clear();
  EXPECT_EQ(CountOf("A1:A9"), 0);
}

TEST_P(Conditions, LaidTwiceAreLaidAnew) {
  LayRisesAndFalls("A1:A9");
  LayRisesAndFalls("A1:A9");
  EXPECT_EQ(CountOf("A1:A9"), 2);
}

TEST_P(Conditions, TakeEveryOperatorThatComparesWithOneValue) {
  const auto conditions = Range("A1")->FormatConditions();
  for (const auto op : {xlEqual, xlNotEqual, xlGreater, xlLess, xlGreaterEqual, xlLessEqual}) {
    EXPECT_EQ(NumberOf([&] { conditions->Add(xlCellValue, op, "0"); }), 0) << op;
    EXPECT_EQ(conditions->Item(conditions->Count())->Operator(), op);
  }
  EXPECT_EQ(conditions->Count(), 6);
}

TEST_P(Conditions, TakeNumbersInSeveralForms) {
  const struct {
    const char* number;
    const char* formula;
  } cases[] = {{"0", "=0"}, {"=0", "=0"}, {"-1.5", "=-1.5"}, {"=-0.25", "=-0.25"}};
  const auto conditions = Range("A1")->FormatConditions();
  for (const auto& c : cases) {
    SCOPED_TRACE(c.number);
    EXPECT_EQ(NumberOf([&] { conditions->Add(xlCellValue, xlLess, c.number); }), 0);
    EXPECT_EQ(conditions->Item(conditions->Count())->Formula1(), c.formula);
  }
  EXPECT_EQ(NumberOf([&] { conditions->Add(xlCellValue, xlLess, "1e3"); }), 0);
}

TEST_P(Conditions, RaiseError1004ForWhatTheyDoNotTake) {
  const auto conditions = Range("A1")->FormatConditions();
  EXPECT_EQ(NumberOf([&] { conditions->Add(xlExpression, xlGreater, "0"); }), 1004);
  EXPECT_EQ(NumberOf([&] { conditions->Add(static_cast<XlFormatConditionType>(0), xlGreater, "0"); }), 1004);
  EXPECT_EQ(NumberOf([&] { conditions->Add(xlCellValue, xlBetween, "0"); }), 1004);
  EXPECT_EQ(NumberOf([&] { conditions->Add(xlCellValue, static_cast<XlFormatConditionOperator>(9), "0"); }),
            1004);
  for (const char* formula : {"", "=", "x", "0x", "inf", "nan"})
    EXPECT_EQ(NumberOf([&] { conditions->Add(xlCellValue, xlGreater, formula); }), 1004) << formula;
  EXPECT_EQ(NumberOf([&] { conditions->Add(xlCellValue, xlGreater, "0")->Font()->ColorIndex(57); }), 1004);
  EXPECT_EQ(conditions->Count(), 1);
}

TEST_P(Conditions, OfManyRowsAreAsQuickAsOfOne) {
  LayRisesAndFalls("C3:C1048576");
  EXPECT_EQ(CountOf("C1000000"), 2);
  EXPECT_EQ(sheet->Cells()->SpecialCells(xlCellTypeLastCell)->Address(), "$A$1")
      << "a condition is no format";
}

MIRELO_AGAINST_ALL(Conditions);

}  // namespace
}  // namespace mirelo::testing
