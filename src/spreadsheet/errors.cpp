#include "spreadsheet/errors.h"

#include <utility>

#include "host/excel/constants.h"

namespace mirelo::spreadsheet {

RuntimeError Refused(std::string why) {
  return RuntimeError(host::excel::kApplicationError, std::move(why), "Workbook");
}

RuntimeError NotOnSheet() { return Refused("The cells do not lie on the sheet."); }

}  // namespace mirelo::spreadsheet
