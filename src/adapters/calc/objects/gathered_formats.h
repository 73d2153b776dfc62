#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/calc/objects/cell_block.h"
#include "adapters/calc/objects/interfaces.h"
#include "host/excel/constants.h"
#include "spreadsheet/style.h"

namespace mirelo::calc {

// Formats of cells that clients have told and that are not in the document yet. To lay one property of some
// cells takes the office about as long as all properties of many cells with one format, and clients tell them
// one by one. See Document::Gathers for when that may be.
class GatheredFormats {
 public:
  // What was told of the same cells.
  struct BlockFormat {
    CellBlock block;
    std::map<std::string, Any, std::less<>> properties = {};
    std::map<host::excel::XlBordersIndex, spreadsheet::BorderLine> lines =
        {};  // which stand in a property, too
  };

  // `document` outlives it.
  explicit GatheredFormats(Document& document) : document_(document) {}

  // The formats gathered for exactly this block, to be added to; valid until the next call. Where other
  // blocks overlap it, all that was gathered is applied first. Error 1004 where the sheet is protected.
  BlockFormat& Of(const CellBlock& block);
  bool HasLinesBesideThoseOf(const CellBlock& block) const;

  // Brings all into the document, and holds nothing any more, also where that fails.
  void Lay();

 private:
  struct Alike;

  static std::vector<Alike> Together(const std::vector<BlockFormat>& formats);

  Document& document_;
  std::vector<BlockFormat> formats_;  // which do not overlap
};

}  // namespace mirelo::calc
