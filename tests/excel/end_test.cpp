#include "conformance.h"
#include "host/excel/font.h"

namespace mirelo::testing {
namespace {

using namespace host::excel;

class EndKey : public Spreadsheets {
 protected:
  void Fill(std::initializer_list<const char*> addresses) {
    for (const char* address : addresses) Put(address, "x");
  }
  std::string From(std::string_view address, XlDirection direction) {
    return Range(address)->End(direction)->Address(false, false);
  }
  std::string Foot(const char* column) { return column + std::to_string(RowCount()); }
};

TEST_P(EndKey, StopsAtTheSheetsEdgeWhenNothingIsThere) {
  EXPECT_EQ(From("C3", xlDown), Foot("C"));
  EXPECT_EQ(From("C3", xlUp), "C1");
  EXPECT_EQ(From("C3", xlToRight), sheet->Cells(3, ColumnCount())->Address(false, false));
  EXPECT_EQ(From("C3", xlToLeft), "A3");
}

TEST_P(EndKey, StaysAtTheEdge) {
  const auto corner = sheet->Cells(RowCount(), ColumnCount());
  EXPECT_EQ(corner->End(xlDown)->Address(), corner->Address());
  EXPECT_EQ(corner->End(xlToRight)->Address(), corner->Address());
  EXPECT_EQ(From("A1", xlUp), "A1");
  EXPECT_EQ(From("A1", xlToLeft), "A1");
}

TEST_P(EndKey, RunsToTheLastFilledCellBeforeAGap) {
  Fill({"A2", "A3", "A4", "A6"});
  EXPECT_EQ(From("A2", xlDown), "A4");
  EXPECT_EQ(From("A3", xlDown), "A4");
  Fill({"B2", "C2", "D2", "F2"});
  EXPECT_EQ(From("A2", xlToRight), "D2");
}

TEST_P(EndKey, LeapsTheGapFromTheLastFilledCell) {
  Fill({"A2", "A3", "A6", "A7"});
  EXPECT_EQ(From("A3", xlDown), "A6");
  EXPECT_EQ(From("A6", xlUp), "A3");
  Fill({"C6", "D6"});
  EXPECT_EQ(From("A6", xlToRight), "C6");
  EXPECT_EQ(From("C6", xlToLeft), "A6");
}

TEST_P(EndKey, GoesFromAnEmptyCellToTheNextFilledOne) {
  Fill({"A5", "A6", "D1", "E1"});
  EXPECT_EQ(From("A1", xlDown), "A5");
  EXPECT_EQ(From("A9", xlUp), "A6");
  EXPECT_EQ(From("A1", xlToRight), "D1");
  EXPECT_EQ(From("G1", xlToLeft), "E1");
}

TEST_P(EndKey, GoesFromAnEmptyCellOverItsFilledNeighbour) {
  Fill({"A2", "A3"});
  EXPECT_EQ(From("A1", xlDown), "A2") << "the neighbour is the next filled cell";
  EXPECT_EQ(From("A4", xlUp), "A3");
}

TEST_P(EndKey, RunsToTheEdgeFromTheLastFilledCellOfTheColumn) {
  Fill({"A2"});
  EXPECT_EQ(From("A2", xlDown), Foot("A"));
  EXPECT_EQ(From("A2", xlToRight), "XFD2");
}

TEST_P(EndKey, FindsTheFootOfAColumnFromBelow) {
  Fill({"A2", "A3", "A4"});
  EXPECT_EQ(Range(Foot("A"))->End(xlUp)->Row(), 4);
  Put("A4", Variant());
  EXPECT_EQ(Range(Foot("A"))->End(xlUp)->Row(), 3);
}

TEST_P(EndKey, EndsARunAtTheFootOfTheSheet) {
  const auto foot = [&](int above) { return sheet->Cells(RowCount() - above, 1); };
  foot(0)->Value("x");
  foot(1)->Value("x");
  foot(2)->Value("x");
  EXPECT_EQ(foot(2)->End(xlDown)->Row(), RowCount());
  EXPECT_EQ(foot(0)->End(xlUp)->Row(), RowCount() - 2);
  EXPECT_EQ(Range("A1")->End(xlDown)->Row(), RowCount() - 2);
}

TEST_P(EndKey, StartsFromTheFirstCellOfARange) {
  Fill({"B2", "B3", "D9"});
  EXPECT_EQ(From("B2:D9", xlDown), "B3");
  EXPECT_EQ(From("B:D", xlDown), "B2");
}

TEST_P(EndKey, TakesACellWithAFormatAloneForEmpty) {
  Fill({"A2", "A3"});
  Range("A4")->Font()->Bold(true);
  Range("A4")->NumberFormat("0.00");
  EXPECT_EQ(From("A2", xlDown), "A3");
}

TEST_P(EndKey, TakesEveryKindOfValueForFilled) {
  Put("A1", 0.0);
  Put("A2", false);
  Put("A3", "#N/A");
  Put("A4", " ");
  EXPECT_EQ(From("A1", xlDown), "A4");
}

// Runs that begin and end around multiples of a power of two, where a store in blocks has its seams.
TEST_P(EndKey, RunsAcrossLongColumns) {
  for (const std::int32_t first : {1, 2, 63, 64, 65, 128, 1000}) {
    for (const std::int32_t length : {2, 63, 64, 65, 128, 1000}) {
      SCOPED_TRACE(std::to_string(first) + "+" + std::to_string(length));
      const std::int32_t last = first + length - 1;
      sheet->Cells()->ClearContents();
      sheet->Cells(first, 3)->Resize(length, 1)->Value("x");
      sheet->Cells(last + 70, 3)->Value("x");
      EXPECT_EQ(sheet->Cells(first, 3)->End(xlDown)->Row(), last);
      EXPECT_EQ(sheet->Cells(last, 3)->End(xlUp)->Row(), first);
      EXPECT_EQ(sheet->Cells(last, 3)->End(xlDown)->Row(), last + 70);
      EXPECT_EQ(sheet->Cells(last + 70, 3)->End(xlUp)->Row(), last);
      EXPECT_EQ(sheet->Cells(last + 30, 3)->End(xlUp)->Row(), last);
      EXPECT_EQ(sheet->Cells(last + 30, 3)->End(xlDown)->Row(), last + 70);
    }
  }
}

TEST_P(EndKey, RefusesANumberThatIsNoDirection) {
  EXPECT_EQ(NumberOf([&] { Range("A1")->End(static_cast<XlDirection>(1)); }), 1004);
}

MIRELO_AGAINST_ALL(EndKey);

}  // namespace
}  // namespace mirelo::testing
