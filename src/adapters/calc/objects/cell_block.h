#pragma once

#include <com/sun/star/table/XCell.hpp>
#include <com/sun/star/table/XCellRange.hpp>
#include <memory>

#include "adapters/calc/objects/document_sheet.h"
#include "adapters/calc/objects/interfaces.h"
#include "adapters/calc/objects/properties.h"
#include "spreadsheet/area.h"

namespace mirelo::calc {

// A rectangle of a sheet's cells.
struct CellBlock {
  std::shared_ptr<DocumentSheet> sheet;
  spreadsheet::Area area;

  Document& document() const { return sheet->document(); }
  // Another one of the same sheet.
  CellBlock At(const spreadsheet::Area& other) const { return {sheet, other}; }

  Reference<css::table::XCellRange> Cells() const;
  // The top left one.
  Reference<css::table::XCell> FirstCell() const;
  calc::Properties Properties() const { return calc::Properties(Cells()); }

  // Error 1004 where the person has protected one of the cells.
  void CheckNotProtected() const;
};

}  // namespace mirelo::calc
