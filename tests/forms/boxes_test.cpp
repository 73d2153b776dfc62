// Things that are put into a room.

#include <gmock/gmock.h>

#include <map>
#include <memory>
#include <string>

#include "forms/layout/boxes.h"

namespace mirelo::forms::layout {

static void PrintTo(const Place& place, std::ostream* out) {
  *out << place.left << "," << place.top << " " << place.width << "x" << place.height;
}

namespace {

class Boxes : public ::testing::Test {
 protected:
  Box Thing(const std::string& name, std::int32_t width, std::int32_t height) {
    Box box{.kind = Box::Kind::Leaf};
    box.needs = [width, height] { return Extent{width, height}; };
    box.put = [this, name](const Place& place) { places[name] = place; };
    return box;
  }
  static Box Wider(Box box) {
    box.wide = true;
    return box;
  }
  static Box Higher(Box box) {
    box.high = true;
    return box;
  }
  static Box Stretched(Box box, int stretch) {
    box.stretch = stretch;
    return box;
  }
  static Box Of(Box::Kind kind, std::vector<Box> boxes, std::int32_t gap = 0) {
    return {.kind = kind, .boxes = std::move(boxes), .gap = gap};
  }

  std::map<std::string, Place> places;
};

TEST_F(Boxes, NeedWhatTheirThingsNeed) {
  const Box row = Of(Box::Kind::Row, {Thing("a", 10, 5), Thing("b", 20, 8)}, 3);
  EXPECT_EQ(Needed(row), (Extent{33, 8}));
  Box column = Of(Box::Kind::Column, {row, Thing("c", 50, 4)}, 2);
  column.margin = 1;
  EXPECT_EQ(Needed(column), (Extent{52, 16}));
}

TEST_F(Boxes, StandInTheMiddleOfARowAndAtTheLeftOfAColumn) {
  Put(Of(Box::Kind::Row, {Thing("a", 10, 5), Thing("b", 20, 9)}, 1), {0, 0, 100, 9});
  EXPECT_EQ(places["a"], (Place{0, 2, 10, 5}));
  EXPECT_EQ(places["b"], (Place{11, 0, 20, 9}));
  Put(Of(Box::Kind::Column, {Thing("a", 10, 5), Wider(Thing("b", 20, 9))}), {5, 5, 100, 50});
  EXPECT_EQ(places["a"], (Place{5, 5, 10, 5}));
  EXPECT_EQ(places["b"], (Place{5, 10, 100, 9}));
}

TEST_F(Boxes, GiveWhatIsLeftOverToSpaces) {
  Put(Of(Box::Kind::Row, {Box{.kind = Box::Kind::Space}, Wider(Thing("a", 10, 5))}), {0, 0, 100, 5});
  EXPECT_EQ(places["a"], (Place{90, 0, 10, 5}));
}

TEST_F(Boxes, GiveWhatIsLeftOverByStretch) {
  Put(Of(Box::Kind::Row, {Stretched(Wider(Thing("a", 10, 5)), 1), Stretched(Wider(Thing("b", 10, 5)), 3)}),
      {0, 0, 100, 5});
  EXPECT_EQ(places["a"], (Place{0, 0, 30, 5}));
  EXPECT_EQ(places["b"], (Place{30, 0, 70, 5}));
}

TEST_F(Boxes, GiveWhatIsLeftOverToThoseThatUseIt) {
  Put(Of(Box::Kind::Column, {Thing("a", 10, 5), Higher(Thing("b", 10, 5))}), {0, 0, 10, 50});
  EXPECT_EQ(places["b"], (Place{0, 5, 10, 45}));
}

TEST_F(Boxes, AreCutAtTheEndWhereThereIsTooLittle) {
  Put(Of(Box::Kind::Column, {Thing("a", 10, 30), Thing("b", 10, 30)}), {0, 0, 10, 40});
  EXPECT_EQ(places["a"], (Place{0, 0, 10, 30}));
  EXPECT_EQ(places["b"], (Place{0, 30, 10, 10}));
}

TEST_F(Boxes, TakeNoRoomWhileTheyAreNotSeen) {
  Box hidden = Thing("hidden", 10, 10);
  hidden.seen = [] { return false; };
  const Box row = Of(Box::Kind::Row, {hidden, Thing("a", 10, 5)}, 4);
  EXPECT_EQ(Needed(row), (Extent{10, 5}));
  Put(row, {0, 0, 10, 5});
  EXPECT_EQ(places.count("hidden"), 0U);
}

TEST_F(Boxes, AlignLinesOfTwo) {
  Box first = Of(Box::Kind::Lines, {Of(Box::Kind::Row, {Thing("a", 10, 5), Wider(Thing("b", 20, 5))}, 2)});
  Box second = Of(Box::Kind::Lines, {Of(Box::Kind::Row, {Thing("c", 30, 5), Thing("d", 20, 5)}, 2)});
  first.first_width = second.first_width = std::make_shared<std::int32_t>(0);
  const Box all = Of(Box::Kind::Column, {first, second}, 1);
  EXPECT_EQ(Needed(all), (Extent{52, 11}));
  Put(all, {0, 0, 100, 11});
  EXPECT_EQ(places["b"], (Place{32, 0, 68, 5}));
  EXPECT_EQ(places["d"], (Place{32, 6, 20, 5}));
}

TEST_F(Boxes, ShareARoomAsEqualCells) {
  Box cells = Of(Box::Kind::Cells, {Thing("a", 5, 5), Thing("b", 9, 5), Thing("c", 5, 5)}, 2);
  cells.rows = 2;
  EXPECT_EQ(Needed(cells), (Extent{20, 12}));
  Put(cells, {0, 0, 102, 42});
  EXPECT_EQ(places["a"], (Place{0, 0, 50, 20}));
  EXPECT_EQ(places["b"], (Place{0, 22, 50, 20}));
  EXPECT_EQ(places["c"], (Place{52, 0, 50, 20}));
}

TEST_F(Boxes, ThatStandBehindOneAnotherNeedRoomForTheLargest) {
  Box hidden = Thing("hidden", 40, 10);
  hidden.seen = [] { return false; };
  const Box stack = Of(Box::Kind::Stack, {Wider(Higher(Thing("a", 10, 50))), hidden});
  EXPECT_EQ(Needed(stack), (Extent{40, 50}));
  Put(stack, {0, 0, 60, 60});
  EXPECT_EQ(places["a"], (Place{0, 0, 60, 60}));
}

}  // namespace
}  // namespace mirelo::forms::layout
