#pragma once

#include <memory>
#include <string_view>

#include "automation/variant.h"

namespace mirelo::host::excel {

class Workbook;

// The spreadsheet program.
class Application : public Object {
 public:
  std::string_view TypeName() const override { return "Application"; }

  // Null when no workbook is open.
  virtual std::shared_ptr<Workbook> ActiveWorkbook() = 0;

  // Whether what is written shows at once. True at the start; off, it only saves work, the values are the
  // same.
  virtual bool ScreenUpdating() = 0;
  virtual void ScreenUpdating(bool on) = 0;
};

}  // namespace mirelo::host::excel
