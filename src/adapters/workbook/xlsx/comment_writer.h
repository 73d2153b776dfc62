#pragma once

#include <xlsxwriter.h>

#include <cstdint>

#include "adapters/workbook/model/comment.h"

namespace mirelo::workbook {

void WriteComment(std::int32_t row, std::int32_t column, Comment comment, lxw_worksheet* worksheet);

}  // namespace mirelo::workbook
