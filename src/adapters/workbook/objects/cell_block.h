#pragma once

#include <memory>
#include <optional>

#include "adapters/workbook/model/book.h"
#include "adapters/workbook/rules.h"
#include "automation/variant.h"
#include "spreadsheet/area.h"

namespace mirelo::workbook {

// A rectangle of a sheet's cells, with what keeps it alive.
struct CellBlock {
  std::shared_ptr<Book> book;
  std::shared_ptr<Sheet> sheet;
  Area area;
};

// Changes the style of all cells by change(Style&).
template <class Change>
void ChangeStyle(const CellBlock& block, Change&& change) {
  StyleChange derive(block.book->styles, change);
  block.sheet->styles.Apply(block.area, derive);
}

// What get(const Style&) gives for the cells when it is the same for all of them, else an empty variant.
template <class Get>
Variant CommonOf(const CellBlock& block, Get&& get) {
  const StyleTable& styles = block.book->styles;
  std::optional<StyleId> first;
  bool is_common = true;
  block.sheet->styles.ForEach(block.area, [&](const Area&, StyleId style) {
    if (!first) first = style;
    if (is_common && style != *first) is_common = get(styles.Get(style)) == get(styles.Get(*first));
  });
  return is_common ? Variant(get(styles.Get(*first))) : Variant();
}

}  // namespace mirelo::workbook
