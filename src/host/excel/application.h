#pragma once

#include "automation/variant.h"

namespace mirelo::host::excel {

class Workbook;

// The spreadsheet program.
class Application : public Object {
 public:
  std::string_view TypeName() const override { return "Application"; }

  // Null when no workbook is open.
  virtual std::shared_ptr<Workbook> ActiveWorkbook() = 0;
};

}  // namespace mirelo::host::excel
