#include "adapters/windows/views/grid_places.h"

#include <gtest/gtest.h>

namespace mirelo::windows {
namespace {

using Cell = GridPlaces::Cell;

// A header row and a fixed column of 10 pixels; rows of 20 pixels, in a room for the header and four of them.
GridPlaces Sample() {
  GridPlaces places;
  places.widths = {10, 100, 50, 50};
  places.row_height = 20;
  places.rows = 11;
  places.fixed_rows = 1;
  places.fixed_cols = 1;
  places.room = {150, 105};
  return places;
}

TEST(GridPlaces, FindWhatLiesAtAPlace) {
  const GridPlaces places = Sample();
  EXPECT_EQ(places.CellAt(5, 5), (Cell{0, 0}));
  EXPECT_EQ(places.CellAt(10, 19), (Cell{0, 1}));
  EXPECT_EQ(places.CellAt(115, 20), (Cell{1, 2}));
  EXPECT_EQ(places.CellAt(149, 99), (Cell{4, 2}));
  EXPECT_FALSE(places.CellAt(-1, 5).has_value());
  EXPECT_FALSE(places.CellAt(5, -1).has_value());
}

TEST(GridPlaces, FindNothingBehindTheLastColumnAndBelowTheLastRow) {
  GridPlaces places = Sample();
  places.room = {500, 500};
  EXPECT_FALSE(places.CellAt(210, 5).has_value());
  EXPECT_EQ(places.CellAt(209, 219), (Cell{10, 3}));
  EXPECT_FALSE(places.CellAt(5, 220).has_value());
}

TEST(GridPlaces, KeepTheFixedOnesWhereTheyAreWhileOthersAreScrolled) {
  GridPlaces places = Sample();
  places.first_row = 3;
  places.offset = 30;
  EXPECT_EQ(places.CellAt(5, 25), (Cell{4, 0}));
  EXPECT_EQ(places.CellAt(12, 5), (Cell{0, 1}));
  EXPECT_EQ(places.CellAt(80, 25), (Cell{4, 2}));
  EXPECT_EQ(places.PlaceOf(4, 2), (forms::layout::Place{80, 20, 50, 20}));
}

TEST(GridPlaces, TakeAnEdgeOfTheHeaderButNoneOfFixedColumns) {
  const GridPlaces places = Sample();
  EXPECT_EQ(places.EdgeAt(108, 5, 3), 1);
  EXPECT_EQ(places.EdgeAt(112, 5, 3), 1);
  EXPECT_FALSE(places.EdgeAt(100, 5, 3).has_value());
  EXPECT_FALSE(places.EdgeAt(110, 25, 3).has_value()) << "below the header";
  EXPECT_FALSE(places.EdgeAt(10, 5, 3).has_value());
}

TEST(GridPlaces, ScrollAsLittleAsItTakesToSeeACell) {
  GridPlaces places = Sample();
  places.Reveal(7, 1);
  EXPECT_EQ(places.first_row, 3) << "the seventh is the last of four";
  places.Reveal(5, 1);
  EXPECT_EQ(places.first_row, 3);
  places.Reveal(2, 3);
  EXPECT_EQ(places.first_row, 1);
  EXPECT_EQ(places.offset, 60) << "the last column ends where the room does";
  places.Reveal(2, 1);
  EXPECT_EQ(places.offset, 0);
}

TEST(GridPlaces, ScrollNoFurtherThanThereIsSomethingToSee) {
  GridPlaces places = Sample();
  places.first_row = 100;
  places.offset = 1000;
  places.KeepInside();
  EXPECT_EQ(places.first_row, 6);
  EXPECT_EQ(places.offset, 60);
  places.rows = 2;
  places.KeepInside();
  EXPECT_EQ(places.first_row, 0);
}

}  // namespace
}  // namespace mirelo::windows
