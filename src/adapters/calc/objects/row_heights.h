#pragma once

#include "adapters/calc/objects/cell_block.h"

namespace mirelo::calc {

// Holds the heights of rows while contents of a block change within UndoAside. The office would fit them amid
// the change and bring its windows up to date where a row has got another height, which opens the undo list
// before the step of the change itself is dropped.
//
// Where the office makes no steps nothing is held, and it fits the rows itself.
class HeldHeights {
 public:
  // Whether the office makes steps now.
  static bool AreNeeded(Document& document);
  explicit HeldHeights(const CellBlock& block);
  ~HeldHeights() { LetGo(); }
  HeldHeights(const HeldHeights&) = delete;
  HeldHeights& operator=(const HeldHeights&) = delete;

  bool AreHeld() const { return are_held_; }
  // Behind the change: has the rows of the block as high as their cells need, but for those to which the
  // person gave a height.
  void Fit();

 private:
  void LetGo();

  const CellBlock& block_;
  bool are_held_ = false;
};

}  // namespace mirelo::calc
