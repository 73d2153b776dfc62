#pragma once

#include <xlsxwriter.h>

namespace mirelo::workbook {

// Raises what the file writer reports, if it reports anything: 7 for exhausted memory, 61 for a full disk, 75
// for other failures of the file system, 1004 for what it refuses to write.
void CheckWriter(lxw_error error);

}  // namespace mirelo::workbook
