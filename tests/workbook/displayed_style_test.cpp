#include "adapters/workbook/display/displayed_style.h"

#include <gtest/gtest.h>

namespace mirelo::workbook {
namespace {

using namespace host::excel;

Condition That(XlFormatConditionOperator op, const char* formula1, const char* formula2 = "") {
  Condition condition;
  condition.areas = {Area::Cell(1, 1)};
  condition.op = op;
  condition.formula1 = formula1;
  condition.formula2 = formula2;
  return condition;
}

CellValue Text(const char* text) { return CellValue::OfText(text); }

TEST(Meets, ComparesWithTwoValuesInEitherOrder) {
  for (const auto& [low, high] : {std::pair("1", "3"), std::pair("3", "1")}) {
    SCOPED_TRACE(low);
    for (const auto& [number, inside] :
         {std::pair(0.5, false), {1.0, true}, {2.0, true}, {3.0, true}, {3.5, false}}) {
      SCOPED_TRACE(number);
      EXPECT_EQ(Meets(CellValue(number), That(xlBetween, low, high)), inside);
      EXPECT_EQ(Meets(CellValue(number), That(xlNotBetween, low, high)), !inside);
    }
  }
}

TEST(Meets, ComparesTextsWithoutRegardToCase) {
  EXPECT_TRUE(Meets(Text("UP"), That(xlEqual, "\"up\"")));
  EXPECT_TRUE(Meets(Text("b"), That(xlGreater, "\"A\"")));
  EXPECT_TRUE(Meets(Text("say \"no\""), That(xlEqual, "\"say \"\"no\"\"\"")));
  EXPECT_FALSE(Meets(Text("up"), That(xlEqual, "\"down\"")));
}

TEST(Meets, OrdersNumbersBeforeTextsBeforeBooleans) {
  EXPECT_TRUE(Meets(CellValue(1e300), That(xlLess, "\"\"")));
  EXPECT_TRUE(Meets(Text("z"), That(xlLess, "FALSE")));
  EXPECT_TRUE(Meets(CellValue(true), That(xlGreater, "FALSE")));
  EXPECT_TRUE(Meets(CellValue(true), That(xlEqual, "TRUE")));
  EXPECT_FALSE(Meets(CellValue(true), That(xlEqual, "1")));
}

TEST(Meets, TakesABlankCellForTheZeroOfTheOthersKind) {
  for (const char* zero : {"0", "-0", "\"\"", "FALSE"}) {
    EXPECT_TRUE(Meets(CellValue(), That(xlEqual, zero))) << zero;
  }
  EXPECT_TRUE(Meets(CellValue(), That(xlLess, "\"a\"")));
}

TEST(Meets, HoldsForNoError) {
  for (const auto op : {xlBetween, xlNotBetween, xlEqual, xlNotEqual, xlGreater, xlLess}) {
    EXPECT_FALSE(Meets(CellValue(CellError::NotAvailable), That(op, "0", "1"))) << op;
  }
}

class DisplayedStyles : public ::testing::Test {
 protected:
  // A condition on A1 that holds there, and fills it with a colour.
  Condition& Fill(Color color) {
    Condition condition = That(xlEqual, "0");
    condition.format.fill = {1, color, kAutomatic};
    return *sheet.conditions.Add(std::move(condition));
  }
  Style Shown() { return DisplayedStyle(book, sheet, 1, 1); }

  Book book;
  Sheet sheet{"Sheet1"};
};

TEST_F(DisplayedStyles, AreFilledByTheFirstConditionThatFills) {
  Condition& bold = *sheet.conditions.Add(That(xlEqual, "0"));
  bold.format.bold = true;
  Fill(0xFF0000);
  Fill(0x00FF00);
  EXPECT_EQ(Shown().fill.foreground, 0xFF0000);
  EXPECT_TRUE(Shown().font.bold);
}

TEST_F(DisplayedStyles, LookAtNoConditionBehindOneThatStops) {
  Condition& first = *sheet.conditions.Add(That(xlEqual, "0"));
  Fill(0xFF0000);
  EXPECT_EQ(Shown().fill.pattern, 1);
  first.stop_if_true = true;
  EXPECT_EQ(Shown().fill.pattern, 0);
  sheet.cells.Set(1, 1, CellValue(1.0));
  Fill(0x0000FF).formula1 = "1";
  EXPECT_EQ(Shown().fill.foreground, 0x0000FF) << "one that is not met stops nothing";
}

}  // namespace
}  // namespace mirelo::workbook
