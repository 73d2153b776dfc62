#include "adapters/calc/objects/block_formats.h"

#include <cstddef>
#include <optional>

#include "adapters/calc/objects/document.h"

namespace mirelo::calc {

using spreadsheet::Area;

namespace {

const NumberFormats::Format* CommonFormat(const CellBlock& block) {
  const Properties properties = block.Properties();
  const auto key = block.area.Cells() == 1 ? std::optional(properties.Get("NumberFormat", sal_Int32{0}))
                                           : properties.Common<sal_Int32>("NumberFormat");
  return key ? &block.document().Formats().Of(*key) : nullptr;
}

}  // namespace

void BlockFormats::Read() {
  is_read_ = true;
  all_ = CommonFormat(block_);
  if (all_ != nullptr) return;
  const Area& area = block_.area;
  for (std::int32_t column = area.first_column; column <= area.last_column; ++column)
    columns_.push_back(CommonFormat(block_.At({area.first_row, column, area.last_row, column})));
}

const NumberFormats::Format& BlockFormats::At(std::int32_t row, std::int32_t column) {
  if (!is_read_) Read();
  if (all_ != nullptr) return *all_;
  const auto* of_column = columns_[static_cast<std::size_t>(column - block_.area.first_column)];
  return of_column != nullptr ? *of_column : *CommonFormat(block_.At(Area::Cell(row, column)));
}

}  // namespace mirelo::calc
