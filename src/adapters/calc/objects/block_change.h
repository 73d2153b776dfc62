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

// Gives cells of a block formats: properties of the office's by their names. Where the document gathers
// formats that is done later. Error 1004 as there.
struct CellFormat {
  std::string_view property;
  Any value;
};
void FormatCells(const CellBlock& block, std::initializer_list<CellFormat> formats);

}  // namespace mirelo::calc
