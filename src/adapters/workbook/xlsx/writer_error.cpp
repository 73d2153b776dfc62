#include "adapters/workbook/xlsx/writer_error.h"

#include <cerrno>
#include <string>

#include "adapters/workbook/file_errors.h"
#include "adapters/workbook/rules.h"
#include "spreadsheet/errors.h"

namespace mirelo::workbook {

void CheckWriter(lxw_error error) {
  if (error == LXW_NO_ERROR) return;
  const int reason = errno;
  const std::string text = std::string("The workbook cannot be written: ") + lxw_strerror(error);
  switch (error) {
    case LXW_ERROR_MEMORY_MALLOC_FAILED:
      throw Errors::OutOfMemory();
    case LXW_ERROR_CREATING_XLSX_FILE:
    case LXW_ERROR_CREATING_TMPFILE:
    case LXW_ERROR_READING_TMPFILE:
    case LXW_ERROR_ZIP_FILE_OPERATION:
    case LXW_ERROR_ZIP_FILE_ADD:
    case LXW_ERROR_ZIP_CLOSE:
      throw FileError(text, reason);
    default:
      throw Refused(text);
  }
}

}  // namespace mirelo::workbook
