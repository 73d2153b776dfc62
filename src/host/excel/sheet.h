#pragma once

#include <string>
#include <string_view>

#include "automation/variant.h"
#include "host/excel/constants.h"

namespace mirelo::host::excel {

// What has a tab in a workbook, whatever it shows.
class Sheet : public Object {
 public:
  virtual std::string Name() = 0;
  // 1 to 31 characters (UTF-16 units), none of : \ / ? * [ ], no apostrophe at either end, not the reserved
  // word "History", and no other sheet's name without regard to case; error 1004 otherwise, and the old name
  // stays.
  virtual void Name(std::string_view name) = 0;

  virtual XlSheetType Type() = 0;
  // Brings the sheet to the front. Error 1004 for a hidden one.
  virtual void Select() = 0;
};

}  // namespace mirelo::host::excel
