// What Go leaves of a quote table that stands there already, and of what stands around it.

#include <cstdint>
#include <initializer_list>
#include <utility>

#include "host/excel/comment.h"
#include "worksheet/conditions_of.h"
#include "worksheet/go_test.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class OldQuoteTable : public GoTest {};

TEST_F(OldQuoteTable, LosesTheColumnsThatItHadBefore) {
  Columns("Ticker,Last,Change,Bid,Ask,Date,Time");
  Go({"MSFT"});
  Cell("G3")->Value("an old quote");
  Go({"MSFT"}, [](frmMirelo& form) {
    form.C1TTickersSettings.UserSelect(kFields);
    for (int i = 0; i < 4; ++i) form.ListRight.UserDoubleClick(3);
  });
  EXPECT_THAT(Row("A2", 7), ElementsAre("Ticker", "Last", "Change", "", "", "", ""));
  EXPECT_EQ(Text("G3"), "");
  EXPECT_EQ(Cell("G3")->NumberFormat(), Variant("General"));
}

TEST_F(OldQuoteTable, CountsOnlyTheColumnsThatTheDialogKnewOfAnOldOne) {
  Sheets()->Item(1)->Name("Dovanta2_Quotes");
  for (const auto& [cell, text] : std::initializer_list<std::pair<const char*, const char*>>{{"A2", "Ticker"},
                                                                                             {"B2", "Last"},
                                                                                             {"C2", "Profit"},
                                                                                             {"D2", "last"},
                                                                                             {"E2", "Mine"},
                                                                                             {"A3", "MSFT"}})
    Cell(cell)->Value(text);
  Go({"MSFT"});
  // Three headers were known, the repeated one among them; two columns are left.
  EXPECT_THAT(Row("A2", 5), ElementsAre("Ticker", "Last", "", "last", "Mine"));
}

TEST_F(OldQuoteTable, KeepsTheColumnsOfAnOldOneThatTheDialogDidNotRead) {
  Columns("Ticker,Last");
  Sheets()->Item(1)->Name("Dovanta2_Quotes");
  for (const char* cell : {"A2", "B2", "C2", "D2"}) Cell(cell)->Value("Bid");  // and no ticker below
  Go({"MSFT"});
  EXPECT_THAT(Row("A2", 5), ElementsAre("Ticker", "Last", "Bid", "Bid", ""));
}

TEST_F(OldQuoteTable, LosesOneBlockOfRowsBelowIt) {
  Go({"A", "B", "C", "D", "E"});
  Go({"X", "Y", "Z"});
  // The table ends at row 5; row 6 went, and the old row 7 moved up.
  EXPECT_THAT(Column("A3", 6), ElementsAre("X", "Y", "Z", "E", "", ""));
}

TEST_F(OldQuoteTable, LosesTheRowsDownToTheNextFilledCell) {
  Go({"A"});
  Cell("A9")->Value("far");
  Cell("B7")->Value("between");
  Go({"A"});
  EXPECT_THAT(Column("A3", 6), ElementsAre("A", "", "", "", "", ""));
  EXPECT_EQ(Text("B7"), "");
}

TEST_F(OldQuoteTable, LosesNoRowsDownToTheLastButOneOfTheSheet) {
  Go({"A"});
  const std::int32_t limit = Cell("A1")->Worksheet()->Rows()->Count() - 1;
  const auto below = [&](std::int32_t row) { return Cell("A1")->Cells(row, 1); };
  Cell("B7")->Value("between");
  below(limit)->Value("far");
  Go({"A"});
  EXPECT_EQ(Text("B7"), "between");
  EXPECT_EQ(below(limit)->Value(), Variant("far"));

  below(limit - 1)->Value("not so far");
  Go({"A"});
  EXPECT_EQ(Text("B7"), "");
  EXPECT_TRUE(below(limit - 1)->Value().IsEmpty());
  EXPECT_EQ(below(4)->Value(), Variant("far")) << "the cells below moved up";
}

TEST_F(OldQuoteTable, LeavesAColumnThatIsEmptyBelowIt) {
  Sheets()->Item(1)->Name("Dovanta2_Quotes");
  Cell("C20")->Value("note");
  Go({"A"});
  EXPECT_EQ(Text("C20"), "note");
}

TEST_F(OldQuoteTable, LosesFormatsValuesAndCommentsThatWereInIt) {
  Columns("Ticker,Last,Tick");
  Go({"A", "B"});
  Cell("B3")->Value(26.5);
  Cell("B4")->NumberFormat("@");
  Cell("C4")->NumberFormat("@");
  for (const char* cell : {"A2", "C4"}) Cell(cell)->AddComment("note");
  Cell("C3")->FormatConditions()->Add(host::excel::xlCellValue, host::excel::xlEqual, "1");
  Go({"A", "B"});
  EXPECT_EQ(Text("B3"), "");
  EXPECT_EQ(Cell("B4")->NumberFormat(), Variant("0.00"));
  EXPECT_EQ(Cell("C4")->NumberFormat(), Variant("General"));
  EXPECT_EQ(Cell("A2")->Comment(), nullptr);
  EXPECT_EQ(Cell("C4")->Comment(), nullptr);
  EXPECT_THAT(ConditionsOf(*Cell("A2:C4")), IsEmpty());
}

}  // namespace
}  // namespace mirelo::testing
