#pragma once

#include <string>

#include "automation/runtime_error.h"

namespace mirelo::spreadsheet {

// Error 1004: what the spreadsheet refuses to do, with a sentence for people.
RuntimeError Refused(std::string why);

// Error 1004 for cells off the sheet.
RuntimeError NotOnSheet();

}  // namespace mirelo::spreadsheet
