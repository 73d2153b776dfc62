#include "adapters/calc/objects/font_object.h"

#include <com/sun/star/awt/FontWeight.hpp>

#include "adapters/calc/objects/block_change.h"
#include "spreadsheet/color_index.h"
#include "spreadsheet/font_size.h"

namespace mirelo::calc {

namespace weights = css::awt::FontWeight;

Variant FontObject::Bold() {
  return block_.document().Ask([&]() -> Variant {
    const auto weight = block_.Properties().Common<float>("CharWeight");
    return weight ? Variant(*weight > weights::NORMAL) : Variant();
  });
}

void FontObject::Bold(bool bold) {
  FormatCells(block_, {{"CharWeight", Any(bold ? float{weights::BOLD} : float{weights::NORMAL})}});
}

Variant FontObject::Size() {
  return block_.document().Ask([&]() -> Variant {
    const auto points = block_.Properties().Common<float>("CharHeight");
    return points ? Variant(double{*points}) : Variant();
  });
}

void FontObject::Size(double points) {
  const auto checked = static_cast<float>(spreadsheet::CheckedFontSize(points));
  FormatCells(block_, {{"CharHeight", Any(checked)}});
}

Variant FontObject::ColorIndex() {
  return block_.document().Ask([&]() -> Variant {
    const auto color = block_.Properties().Common<sal_Int32>("CharColor");
    return color ? Variant(spreadsheet::IndexOfColor(*color)) : Variant();
  });
}

void FontObject::ColorIndex(std::int32_t index) {
  const spreadsheet::Color color = spreadsheet::ColorOfIndex(index);
  FormatCells(block_, {{"CharColor", Any(color)}});
}

Variant FontObject::Color() {
  return block_.document().Ask([&]() -> Variant {
    const auto color = block_.Properties().Common<sal_Int32>("CharColor");
    return color ? Variant(spreadsheet::NumberOfColor(*color, spreadsheet::kBlack)) : Variant();
  });
}

}  // namespace mirelo::calc
