#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

namespace mirelo::forms::layout {

// Pixels.
struct Extent {
  std::int32_t width = 0;
  std::int32_t height = 0;
  friend bool operator==(const Extent&, const Extent&) = default;
};
struct Place {
  std::int32_t left = 0;
  std::int32_t top = 0;
  std::int32_t width = 0;
  std::int32_t height = 0;
  friend bool operator==(const Place&, const Place&) = default;
};

// Puts things into a room, for toolkits that want to be told the place of each: boxes side by side, one below
// the other, in lines of two, in equal cells, or behind one another.
//
// A box gets what it needs; what is left over goes to the boxes with a stretch, each its share, else to those
// that use more room, alike. Where there is too little, what stands last is cut. A box that does not use more
// room stands at the left, and in the middle of a row's height.
struct Box {
  enum class Kind {
    Leaf,    // `needs` and `put` are the thing's
    Space,   // nothing, but takes what is left over
    Row,     // boxes side by side
    Column,  // boxes one below the other
    Lines,   // rows of two boxes; the first ones are equally wide
    Cells,   // equal boxes in columns of `rows`
    Stack    // boxes behind one another, one of which is seen at a time
  };

  Kind kind = Kind::Column;
  std::vector<Box> boxes = {};
  std::int32_t gap = 0;     // between boxes, and between the two of a line
  std::int32_t margin = 0;  // around them
  int stretch = 0;
  std::int32_t rows = 1;

  // Of a leaf. One that is not seen takes no room. `put` is called for every leaf that is seen.
  std::function<Extent()> needs = {};
  std::function<void(const Place&)> put = {};
  std::function<bool()> seen = {};  // empty for always
  bool wide = false;                // uses more width
  bool high = false;

  // Lines that share one of these have equally wide first boxes.
  std::shared_ptr<std::int32_t> first_width = {};
};

Extent Needed(const Box& box);
void Put(const Box& box, const Place& place);

}  // namespace mirelo::forms::layout
