#include "day/cell_buffer.h"

#include <gtest/gtest.h>

#include <utility>

namespace mirelo::day {
namespace {

TEST(CellBuffer, HasTheSizeThatIsAskedFor) {
  CellBuffer buffer;
  for (const auto& [height, width] : {std::pair{2, 3}, {2, 3}, {3, 2}, {3, 4}, {1, 1}}) {
    const VariantArray& cells = buffer.Renew(height, width);
    EXPECT_EQ(cells.LBound(1), 1);
    EXPECT_EQ(cells.UBound(1), height);
    EXPECT_EQ(cells.LBound(2), 1);
    EXPECT_EQ(cells.UBound(2), width);
  }
}

TEST(CellBuffer, LeavesABlockThatIsKeptAsItIs) {
  CellBuffer buffer;
  buffer.Renew(1, 2)(1, 2) = std::string("kept");
  const Variant kept = buffer.Block();
  buffer.Renew(1, 2)(1, 2) = 2.5;
  EXPECT_EQ(kept.AsArray()(1, 2).ToText(), "kept");
  EXPECT_EQ(buffer.Block().AsArray()(1, 2).ToDouble(), 2.5);
}

TEST(CellBuffer, TakesTheSameMemoryForTheNextBlockOfItsSize) {
  CellBuffer buffer;
  const Variant* const before = &buffer.Renew(2, 2)(1, 1);
  buffer.Block();
  EXPECT_EQ(&buffer.Renew(2, 2)(1, 1), before);
}

}  // namespace
}  // namespace mirelo::day
