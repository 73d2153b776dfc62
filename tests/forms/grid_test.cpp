#include "forms/grid.h"

#include <algorithm>

#include "forms/grid_fixture.h"

namespace mirelo::testing {
namespace {

using forms::Grid;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class GridShape : public ControlTest {
 protected:
  std::vector<std::string> Headers() const {
    std::vector<std::string> headers;
    for (std::int32_t col = 0; col < grid.Cols(); ++col) headers.push_back(grid.TextMatrix(0, col));
    return headers;
  }
  Grid grid{form, "FG", nullptr};
};

TEST_F(GridShape, StartsEmpty) {
  EXPECT_EQ(grid.Rows(), 0);
  EXPECT_EQ(grid.Cols(), 0);
  EXPECT_EQ(grid.FixedRows(), 0);
  EXPECT_EQ(grid.FixedCols(), 0);
  EXPECT_EQ(grid.Row(), 0);
  EXPECT_EQ(grid.Col(), 0);
  EXPECT_EQ(grid.Editable(), 0);
  EXPECT_EQ(NumberOf([&] { grid.TextMatrix(0, 0); }), 381);
}

TEST_F(GridShape, GrowsByEmptyCellsAndLosesThoseOutside) {
  grid.Rows(2);
  grid.Cols(2);
  grid.TextMatrix(1, 1, "kept");
  grid.Rows(3);
  grid.Cols(3);
  EXPECT_EQ(grid.TextMatrix(1, 1), "kept");
  EXPECT_EQ(grid.TextMatrix(2, 2), "");
  grid.TextMatrix(2, 2, "lost");
  grid.Cols(2);
  grid.Cols(3);
  EXPECT_EQ(grid.TextMatrix(2, 2), "");
  grid.TextMatrix(2, 2, "lost");
  grid.Rows(2);
  grid.Rows(3);
  EXPECT_EQ(grid.TextMatrix(2, 2), "");
  EXPECT_EQ(grid.TextMatrix(1, 1), "kept");
}

TEST_F(GridShape, HasOneFixedRowAsSoonAsItHasARow) {
  grid.Rows(1);
  EXPECT_EQ(grid.FixedRows(), 1);
  grid.Rows(0);
  EXPECT_EQ(grid.FixedRows(), 0);
}

TEST_F(GridShape, RefusesSizesBelowZeroAndMoreFixedColumnsThanItHas) {
  grid.Rows(2);
  grid.Cols(2);
  EXPECT_EQ(NumberOf([&] { grid.Rows(-1); }), 5);
  EXPECT_EQ(NumberOf([&] { grid.Cols(-1); }), 5);
  EXPECT_EQ(NumberOf([&] { grid.FixedCols(-1); }), 5);
  EXPECT_EQ(NumberOf([&] { grid.FixedCols(3); }), 5);
  grid.FixedCols(2);
  grid.Cols(1);
  EXPECT_EQ(grid.FixedCols(), 1) << "no more than there are";
  EXPECT_EQ(grid.Rows(), 2);
}

TEST_F(GridShape, RefusesCellsAndColumnsOutside) {
  grid.Rows(2);
  grid.Cols(3);
  for (const auto& [row, col] : {std::pair{-1, 0}, {2, 0}, {0, -1}, {0, 3}}) {
    SCOPED_TRACE(std::to_string(row) + "," + std::to_string(col));
    EXPECT_EQ(NumberOf([&, r = row, c = col] { grid.TextMatrix(r, c); }), 381);
    EXPECT_EQ(NumberOf([&, r = row, c = col] { grid.TextMatrix(r, c, "x"); }), 381);
    EXPECT_EQ(NumberOf([&, r = row, c = col] { grid.Select(r, c); }), 381);
    EXPECT_EQ(NumberOf([&, r = row, c = col] { grid.Select(0, 0, r, c); }), 381);
    EXPECT_EQ(NumberOf([&, r = row, c = col] { grid.Cell(Grid::kCellPicture, r, c, "chart"); }), 381);
    EXPECT_EQ(NumberOf([&, r = row, c = col] { grid.Picture(r, c); }), 381);
  }
  for (const std::int32_t col : {-1, 3}) {
    SCOPED_TRACE(col);
    EXPECT_EQ(NumberOf([&] { grid.ColWidth(col); }), 381);
    EXPECT_EQ(NumberOf([&] { grid.ColWidth(col, 100); }), 381);
    EXPECT_EQ(NumberOf([&] { grid.ColDataType(col); }), 381);
    EXPECT_EQ(NumberOf([&] { grid.ColDataType(col, 11); }), 381);
    EXPECT_EQ(NumberOf([&] { grid.ColAlignment(col); }), 381);
  }
  EXPECT_EQ(NumberOf([&] { grid.Row(-1); }), 381);
  EXPECT_EQ(NumberOf([&] { grid.Row(2); }), 381);
}

TEST_F(GridShape, KeepsWidthAndKindWithTheColumn) {
  grid.Cols(2);
  grid.ColWidth(1, 1700);
  grid.ColDataType(1, Grid::kBooleanColumn);
  EXPECT_EQ(grid.ColWidth(1), 1700);
  EXPECT_EQ(grid.ColDataType(1), 11);
  grid.Cols(1);
  grid.Cols(2);
  EXPECT_EQ(grid.ColWidth(1), grid.ColWidth(0)) << "a new column";
  EXPECT_EQ(grid.ColDataType(1), 0);
}

TEST_F(GridShape, KeepsPicturesOfCells) {
  grid.Rows(2);
  grid.Cols(1);
  EXPECT_EQ(grid.Picture(1, 0), "");
  grid.Cell(3, 1, 0, "chart");
  EXPECT_EQ(grid.Picture(1, 0), "chart");
  EXPECT_EQ(NumberOf([&] { grid.Cell(2, 1, 0, "other"); }), 5);
  EXPECT_EQ(grid.Picture(1, 0), "chart");
}

TEST_F(GridShape, TakesHeadersFromAFormatString) {
  const struct {
    const char* format;
    std::vector<std::string> headers;
  } kRows[] = {{"Ticker|Last", {"Ticker", "Last"}},
               {"= |Ticker|Last", {"", "Ticker", "Last"}},
               {"= Ticker", {"Ticker"}},
               {" <  Name |^Last|>Charts (Last & Volume) ", {"Name", "Last", "Charts (Last & Volume)"}},
               {"52w Low|a=b|a<b", {"52w Low", "a=b", "a<b"}},
               {"==|<", {"=", ""}},
               {"|x|", {"", "x", ""}}};
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.format);
    grid.Cols(0);
    grid.FormatString(row.format);
    EXPECT_EQ(grid.FormatString(), row.format);
    EXPECT_EQ(Headers(), row.headers);
    EXPECT_EQ(grid.Rows(), 1);
  }
}

TEST_F(GridShape, AlignsColumnsByTheSignsOfAFormatString) {
  using Alignment = Grid::Alignment;
  grid.FormatString("<a|^b|>c|=d|e");
  const Alignment expected[] = {Alignment::Left, Alignment::Center, Alignment::Right,
                                Alignment::CenteredHeader, Alignment::General};
  for (std::int32_t col = 0; col < 5; ++col) EXPECT_EQ(grid.ColAlignment(col), expected[col]) << col;
  grid.FormatString("a");
  EXPECT_EQ(grid.ColAlignment(0), Alignment::General);
  EXPECT_EQ(grid.ColAlignment(1), Alignment::Center) << "not spoken of";
}

TEST_F(GridShape, GainsColumnsByAFormatStringAndLosesNone) {
  grid.Rows(2);
  grid.Cols(1);
  grid.TextMatrix(1, 0, "MSFT");
  grid.FormatString("Ticker|Last|Bid");
  EXPECT_EQ(grid.Cols(), 3);
  EXPECT_EQ(grid.Rows(), 2);
  EXPECT_EQ(grid.TextMatrix(1, 0), "MSFT");
  grid.FormatString("Name");
  EXPECT_THAT(Headers(), ElementsAre("Name", "Last", "Bid"));
  grid.FormatString("");
  EXPECT_THAT(Headers(), ElementsAre("Name", "Last", "Bid"));
}

class GridSelection : public GridTest {};

TEST_F(GridSelection, IsSetAsACellOrAsABlock) {
  grid.Select(2, 1);
  EXPECT_THAT(Selection(), ElementsAre(2, 1, 2, 1));
  grid.Select(3, 2, 1, 1);
  EXPECT_THAT(Selection(), ElementsAre(3, 2, 1, 1));
  EXPECT_THAT(raised, IsEmpty()) << "only a person clicks";
}

TEST_F(GridSelection, StaysWhenAnEndOfTheNewOneLiesOutside) {
  grid.Select(3, 2, 1, 1);
  EXPECT_EQ(NumberOf([&] { grid.Select(1, 1, 4, 1); }), 381);
  EXPECT_THAT(Selection(), ElementsAre(3, 2, 1, 1));
}

TEST_F(GridSelection, GoesWithTheActiveRow) {
  grid.Select(1, 2, 3, 3);
  grid.Row(2);
  EXPECT_THAT(Selection(), ElementsAre(2, 2, 2, 2));
}

TEST_F(GridSelection, StaysInsideWhenTheGridShrinks) {
  grid.Select(3, 3, 2, 2);
  grid.Rows(3);
  EXPECT_THAT(Selection(), ElementsAre(2, 3, 2, 2));
  grid.Cols(2);
  EXPECT_THAT(Selection(), ElementsAre(2, 1, 2, 1));
  grid.Rows(0);
  grid.Cols(0);
  EXPECT_THAT(Selection(), ElementsAre(0, 0, 0, 0));
}

TEST_F(GridSelection, StaysInsideWhenTheLastRowIsRemoved) {
  grid.Select(3, 1);
  grid.RemoveItem(3);
  EXPECT_THAT(Selection(), ElementsAre(2, 1, 2, 1));
}

TEST_F(GridSelection, KeepsItsNumbersWhenARowAboveIsRemoved) {
  grid.Select(2, 1);
  grid.RemoveItem(1);
  EXPECT_THAT(Selection(), ElementsAre(2, 1, 2, 1));
  EXPECT_EQ(grid.TextMatrix(2, 1), "AAPL");
}

class GridRows : public GridTest {
 protected:
  // The column of tickers below the header, sorted.
  std::vector<std::string> Sorted(const std::vector<std::string>& texts, int order = Grid::kSortAscending) {
    grid.Rows(static_cast<std::int32_t>(texts.size()) + 1);
    for (std::size_t i = 0; i < texts.size(); ++i)
      grid.TextMatrix(static_cast<std::int32_t>(i) + 1, 1, texts[i]);
    grid.Select(1, 1);
    grid.Sort(order);
    auto sorted = Texts(1);
    EXPECT_EQ(sorted.front(), "Ticker");
    sorted.erase(sorted.begin());
    return sorted;
  }
};

TEST_F(GridRows, MoveUpWhenOneIsRemoved) {
  grid.RemoveItem(2);
  EXPECT_THAT(Texts(1), ElementsAre("Ticker", "MSFT", "AAPL"));
  grid.RemoveItem(1);
  EXPECT_THAT(Texts(1), ElementsAre("Ticker", "AAPL"));
}

TEST_F(GridRows, CannotBeRemovedWhenFixedOrAbsent) {
  EXPECT_EQ(NumberOf([&] { grid.RemoveItem(0); }), 5);
  EXPECT_EQ(NumberOf([&] { grid.RemoveItem(-1); }), 381);
  EXPECT_EQ(NumberOf([&] { grid.RemoveItem(4); }), 381);
  EXPECT_EQ(grid.Rows(), 4);
}

TEST_F(GridRows, AreSortedByTextWithoutRegardToCase) {
  EXPECT_THAT(Sorted({"msft", "IBM", "Aapl", "ibn"}), ElementsAre("Aapl", "IBM", "ibn", "msft"));
  EXPECT_THAT(Sorted({"msft", "IBM", "Aapl", "ibn"}, Grid::kSortDescending),
              ElementsAre("msft", "ibn", "IBM", "Aapl"));
}

TEST_F(GridRows, AreSortedByNumberWhereTheyAreNumbers) {
  EXPECT_THAT(Sorted({"10", "9", "-1", "1.5", "1E1"}), ElementsAre("-1", "1.5", "9", "10", "1E1"));
}

// A text between two numbers by its letters must not tear them apart.
TEST_F(GridRows, AreSortedNumbersFirst) {
  EXPECT_THAT(Sorted({"2", "1a", "10", "b", "", "9"}), ElementsAre("2", "9", "10", "", "1a", "b"));
  EXPECT_THAT(Sorted({"2", "1a", "10", "b", "", "9"}, Grid::kSortDescending),
              ElementsAre("b", "1a", "", "10", "9", "2"));
}

TEST_F(GridRows, SortTheSameWhateverTheirOrderWas) {
  std::vector<std::string> texts = {"1", "10", "1a", "2", "b", "C"};
  const auto expected = Sorted(texts);
  std::sort(texts.begin(), texts.end());
  do {
    ASSERT_EQ(Sorted(texts), expected);
  } while (std::next_permutation(texts.begin(), texts.end()));
}

TEST_F(GridRows, KeepTheOrderOfEqualsBothWays) {
  EXPECT_THAT(Sorted({"b", "A", "a", "B"}), ElementsAre("A", "a", "b", "B"));
  EXPECT_THAT(Sorted({"b", "A", "a", "B"}, Grid::kSortDescending), ElementsAre("b", "B", "A", "a"));
}

TEST_F(GridRows, TakeAllTheirCellsAlong) {
  grid.TextMatrix(1, 3, "of MSFT");
  grid.Cell(Grid::kCellPicture, 1, 3, "chart");
  grid.Select(1, 1);
  grid.Sort(Grid::kSortAscending);
  EXPECT_EQ(grid.TextMatrix(3, 1), "MSFT");
  EXPECT_EQ(grid.TextMatrix(3, 3), "of MSFT");
  EXPECT_EQ(grid.Picture(3, 3), "chart");
  EXPECT_EQ(grid.Picture(1, 3), "");
}

TEST_F(GridRows, AreSortedByTheActiveColumn) {
  for (std::int32_t row = 1; row < 4; ++row) grid.TextMatrix(row, 2, std::to_string(9 - row));
  grid.Select(1, 2);
  grid.Sort(Grid::kSortAscending);
  EXPECT_THAT(Texts(1), ElementsAre("Ticker", "AAPL", "IBM", "MSFT"));
  EXPECT_THAT(Selection(), ElementsAre(1, 2, 1, 2)) << "where it was";
}

TEST_F(GridRows, OfASelectionOfSeveralAreTheOnlyOnesSorted) {
  grid.Select(3, 1, 2, 1);
  grid.Sort(Grid::kSortAscending);
  EXPECT_THAT(Texts(1), ElementsAre("Ticker", "MSFT", "AAPL", "IBM"));
}

TEST_F(GridRows, OfTheHeaderAreNeverSorted) {
  grid.Select(0, 1, 3, 1);
  grid.Sort(Grid::kSortAscending);
  EXPECT_THAT(Texts(1), ElementsAre("Ticker", "AAPL", "IBM", "MSFT"));
  grid.Select(0, 1);
  grid.Sort(Grid::kSortDescending);
  EXPECT_THAT(Texts(1), ElementsAre("Ticker", "MSFT", "IBM", "AAPL"));
}

TEST_F(GridRows, AreNotSortedInAnOrderThatDoesNotExist) {
  for (const int order : {-1, 0, 3}) {
    SCOPED_TRACE(order);
    EXPECT_EQ(NumberOf([&] { grid.Sort(order); }), 5);
  }
  EXPECT_THAT(Texts(1), ElementsAre("Ticker", "MSFT", "IBM", "AAPL"));
}

TEST_F(GridRows, ThatAreNotThereAreSortedWithoutAnError) {
  grid.Rows(1);
  EXPECT_NO_THROW(grid.Sort(Grid::kSortAscending));
  grid.Rows(0);
  EXPECT_NO_THROW(grid.Sort(Grid::kSortAscending));
  grid.Rows(3);
  grid.Cols(0);
  EXPECT_NO_THROW(grid.Sort(Grid::kSortAscending));
}

TEST_F(GridShape, TellsTheViewsWhatAPersonSees) {
  grid.Rows(2);
  grid.Cols(2);
  int changes = 0;
  grid.Appearance.Subscribe([&] { ++changes; });
  const std::vector<std::function<void()>> acts = {[&] { grid.TextMatrix(1, 1, "x"); },
                                                   [&] { grid.ColWidth(1, 100); },
                                                   [&] { grid.ColDataType(1, 11); },
                                                   [&] { grid.FixedCols(1); },
                                                   [&] { grid.FormatString("a|b"); },
                                                   [&] { grid.Cell(3, 1, 1, "chart"); },
                                                   [&] { grid.Select(1, 1); },
                                                   [&] { grid.Row(0); },
                                                   [&] { grid.Sort(1); },
                                                   [&] { grid.Editable(1); },
                                                   [&] { grid.Rows(3); },
                                                   [&] { grid.RemoveItem(2); },
                                                   [&] { grid.Cols(3); }};
  for (std::size_t i = 0; i < acts.size(); ++i) {
    changes = 0;
    acts[i]();
    EXPECT_GE(changes, 1) << i;
  }
  changes = 0;
  grid.TextMatrix(0, 0, "a");
  EXPECT_EQ(changes, 0) << "it reads so already";
}

}  // namespace
}  // namespace mirelo::testing
