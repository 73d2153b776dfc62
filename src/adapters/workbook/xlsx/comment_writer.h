#pragma once

#include <xlsxwriter.h>

#include "adapters/workbook/model/comment.h"

namespace mirelo::workbook {

void WriteComments(const Comments& comments, lxw_worksheet* worksheet);

}  // namespace mirelo::workbook
