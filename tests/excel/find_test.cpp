#include "conformance.h"

namespace mirelo::testing {
namespace {

using namespace host::excel;

class Search : public Spreadsheets {
 protected:
  // The address of what is found, empty when nothing is.
  std::string In(std::string_view area, std::string_view what, std::string_view after, XlSearchOrder order,
                 XlSearchDirection direction) {
    const auto found = Range(area)->Find(what, *Range(after), order, direction);
    return found == nullptr ? "" : found->Address(false, false);
  }
  std::string Back(std::string_view what, std::string_view after, XlSearchOrder order = xlByRows) {
    return In("A1:XFD1048576", what, after, order, xlPrevious);
  }
  std::string On(std::string_view what, std::string_view after, XlSearchOrder order = xlByRows) {
    return In("A1:XFD1048576", what, after, order, xlNext);
  }
  void Fill(std::initializer_list<const char*> addresses) {
    for (const char* address : addresses) Put(address, "x");
  }
};

TEST_P(Search, FindsNothingOnAnEmptySheet) {
  EXPECT_EQ(Back("*", "A1"), "");
  EXPECT_EQ(On("x", "A1", xlByColumns), "");
}

// How the last row and the last column that hold anything are found from a last cell that is empty.
TEST_P(Search, BackwardFromTheLastCellFindsTheLastFilledRowAndColumn) {
  Fill({"B9", "F2", "C4"});
  Range("A1:H20")->NumberFormat("0.00");
  ASSERT_EQ(Range("A1")->SpecialCells(xlCellTypeLastCell)->Address(false, false), "H20");
  EXPECT_EQ(Back("*", "H20", xlByRows), "B9");
  EXPECT_EQ(Back("*", "H20", xlByColumns), "F2");
}

TEST_P(Search, GoesRowByRowOrColumnByColumn) {
  Fill({"A1", "C1", "A3", "C3"});
  const struct {
    const char* after;
    XlSearchOrder order;
    const char* before;
    const char* behind;
  } cases[] = {{"A3", xlByRows, "C1", "C3"}, {"A3", xlByColumns, "A1", "C1"},
               {"C1", xlByRows, "A1", "A3"}, {"C1", xlByColumns, "A3", "C3"},
               {"B2", xlByRows, "C1", "A3"}, {"B2", xlByColumns, "A3", "C1"}};
  for (const auto& [after, order, before, behind] : cases) {
    SCOPED_TRACE(std::string(after) + (order == xlByRows ? " by rows" : " by columns"));
    EXPECT_EQ(Back("*", after, order), before);
    EXPECT_EQ(On("*", after, order), behind);
  }
}

TEST_P(Search, ComesRoundAtTheEndAndEndsWithItsFirstCell) {
  Fill({"B2", "B5"});
  EXPECT_EQ(Back("*", "B2"), "B5");
  EXPECT_EQ(On("*", "B5"), "B2");
  Range("B5")->Clear();
  EXPECT_EQ(Back("*", "B2"), "B2");
  EXPECT_EQ(On("*", "B2"), "B2");
}

TEST_P(Search, StaysInItsRange) {
  Fill({"A1", "B2", "C3", "D4"});
  EXPECT_EQ(In("B2:C3", "*", "B2", xlByRows, xlPrevious), "C3");
  EXPECT_EQ(In("B2:C3", "*", "C3", xlByRows, xlNext), "B2");
  EXPECT_EQ(In("E1:E9", "*", "E1", xlByRows, xlNext), "");
}

TEST_P(Search, LooksForAPartOfTheContentInEitherCase) {
  Put("A1", "Ticker");
  Put("A2", "LastVolume");
  EXPECT_EQ(On("volume", "A1"), "A2");
  EXPECT_EQ(On("ICK", "A2"), "A1");
  EXPECT_EQ(On("bid", "A1"), "");
}

TEST_P(Search, TakesStarsQuestionMarksAndTildes) {
  Put("A1", "a*c");
  Put("A2", "abbc");
  Put("A3", "what?~");
  const struct {
    const char* what;
    const char* found;
  } cases[] = {{"a*c", "A2"}, {"a~*c", "A1"},  {"a??c", "A2"},  {"a?c", "A1"},  {"b*c", "A2"},
               {"~?", "A3"},  {"~~", "A3"},    {"t~?~~", "A3"}, {"c*a", ""},    {"?????", "A3"},
               {"~", "A3"},   {"a*b*c", "A2"}, {"**", "A2"},    {"???????", ""}};
  for (const auto& [what, found] : cases) EXPECT_EQ(On(what, "A1"), found) << what;
}

TEST_P(Search, LooksAtValuesAsTheyAreTyped) {
  Put("A1", 1234.5);
  Range("A1")->NumberFormat("#,##0");
  Put("A2", true);
  Put("A3", "#N/A");
  Put("A4", Date{40563.5});
  EXPECT_EQ(On("1234.5", "A9"), "A1");
  EXPECT_EQ(On("1,23", "A9"), "");
  EXPECT_EQ(On("TRUE", "A9"), "A2");
  EXPECT_EQ(On("#N/A", "A9"), "A3");
  EXPECT_EQ(On("1/20/2011", "A9"), "A4");
}

TEST_P(Search, DoesNotTakeFormatsForContents) {
  Range("C3")->NumberFormat("0.00");
  EXPECT_EQ(Back("*", "A1"), "");
}

TEST_P(Search, BeginsAtOneCellOfItsRange) {
  EXPECT_EQ(NumberOf([&] { In("A1:B2", "*", "C3", xlByRows, xlNext); }), 1004);
  EXPECT_EQ(NumberOf([&] { In("A1:B2", "*", "A1:A2", xlByRows, xlNext); }), 1004);
  const auto other = sheets->Add()->Range("A1");
  EXPECT_EQ(NumberOf([&] { Range("A1:B2")->Find("*", *other, xlByRows, xlNext); }), 1004);
}

MIRELO_AGAINST_ALL(Search);

}  // namespace
}  // namespace mirelo::testing
