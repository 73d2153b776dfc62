#pragma once

#include <cstdint>

#include "adapters/workbook/model/book.h"

namespace mirelo::workbook {

// A cell's style with what the conditions that its value meets make of it. Of two that change the same thing
// the first one counts.
Style DisplayedStyle(const Book& book, const Sheet& sheet, std::int32_t row, std::int32_t column);

// Whether a value compares with the condition's own as it asks. Numbers are less than texts, texts less than
// booleans; texts compare without regard to case. A blank cell counts as 0, the empty text or false, whatever
// it is compared with; an error compares with nothing. Two values may stand in either order.
bool Meets(const CellValue& value, const Condition& condition);

}  // namespace mirelo::workbook
