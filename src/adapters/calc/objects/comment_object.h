#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "adapters/calc/objects/cell_block.h"
#include "host/excel/comment.h"
#include "spreadsheet/area_set.h"

namespace mirelo::calc {

class CommentObject final : public host::excel::Comment {
 public:
  explicit CommentObject(CellBlock cell) : cell_(std::move(cell)) {}

  std::string Text() override;
  std::shared_ptr<host::excel::Shape> Shape() override;

 private:
  CellBlock cell_;
};

// These are called within Document::Ask.

// Null when the cell has none.
std::shared_ptr<host::excel::Comment> CommentOf(const CellBlock& cell);
// As host::excel::Range::AddComment. Calc has no empty comments: one becomes a blank.
std::shared_ptr<host::excel::Comment> LayComment(const CellBlock& cell, std::string_view text);
void ClearComments(const CellBlock& block);
// The cells of a block that have comments.
spreadsheet::AreaSet CommentedCells(const CellBlock& block);
// Empties the undo list if the block has comments: its steps hold their boxes, which are about to go.
void ClearUndoListIfCommented(const CellBlock& block);

}  // namespace mirelo::calc
