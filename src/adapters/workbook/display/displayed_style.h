#pragma once

#include <cstdint>

#include "adapters/workbook/model/book.h"

namespace mirelo::workbook {

// The style in which a cell is shown: its own, changed by the conditional formats whose condition its value
// meets. Of two that change the same thing the first one counts.
Style DisplayedStyle(const Book& book, const Sheet& sheet, std::int32_t row, std::int32_t column);

// Whether a value meets a condition. Numbers are less than texts, texts less than booleans; texts compare
// without regard to case. A blank cell counts as 0, the empty text or false, whatever it is compared with; an
// error meets nothing. The two values of a condition may stand in either order.
bool Meets(const CellValue& value, const Condition& condition);

}  // namespace mirelo::workbook
