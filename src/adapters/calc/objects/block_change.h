#pragma once

#include <initializer_list>
#include <string_view>
#include <utility>

#include "adapters/calc/objects/cell_block.h"
#include "adapters/calc/objects/document.h"
#include "adapters/calc/objects/undo_aside.h"

namespace mirelo::calc {

// Runs what changes cells of a block, which the person's undo list is not told of. Error 1004 where the
// person allows no change, and for what the office raises.
template <class Body>
void ChangeCells(const CellBlock& block, Body&& body) {
  Document& document = block.document();
  document.Ask([&] {
    block.CheckNotProtected();
    const UndoAside aside(document, UndoAside::OfCells());
    std::forward<Body>(body)();
  });
}

// A property of cells, by the office's name for it.
struct CellFormat {
  std::string_view property;
  Any value;
};

// Gives the cells of a block these formats; later, where the document gathers formats. Error 1004 as
// ChangeCells.
void FormatCells(const CellBlock& block, std::initializer_list<CellFormat> formats);

}  // namespace mirelo::calc
