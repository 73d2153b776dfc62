#include "adapters/calc/objects/block_change.h"

#include <string>

#include "adapters/calc/objects/gathered_formats.h"

namespace mirelo::calc {

void FormatCells(const CellBlock& block, std::initializer_list<CellFormat> formats) {
  const Document& document = block.document();
  document.AskAsItStands([&] {
    GatheredFormats& gathered = document.Gathered();
    auto& properties = gathered.Of(block).properties;
    for (const CellFormat& format : formats)
      properties.insert_or_assign(std::string(format.property), format.value);
    if (!document.Gathers()) gathered.Lay();
  });
}

}  // namespace mirelo::calc
