#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

#include "automation/variant.h"

namespace mirelo::host::excel {

class Charts;
class Range;
class Selectable;
class Sheet;
class Window;
class Workbook;
class Worksheets;

// The spreadsheet program.
class Application : public Object {
 public:
  std::string_view TypeName() const override { return "Application"; }

  // Null when no workbook is open.
  virtual std::shared_ptr<Workbook> ActiveWorkbook() = 0;

  // The sheet in front. Null when no workbook is open.
  virtual std::shared_ptr<Sheet> ActiveSheet() = 0;
  // The selected cell of the sheet in front, of several the one that typing goes to. Null when that sheet has
  // no cells.
  virtual std::shared_ptr<excel::Range> ActiveCell() = 0;

  // The cells or the shape that are selected on the sheet in front. Null for a chart sheet.
  virtual std::shared_ptr<Selectable> Selection() = 0;
  // Null when no workbook is open.
  virtual std::shared_ptr<Window> ActiveWindow() = 0;

  // The worksheets of the active workbook. Error 1004 when none is open.
  virtual std::shared_ptr<excel::Worksheets> Worksheets() = 0;
  virtual std::shared_ptr<excel::Charts> Charts() = 0;
  // The cells at an address of the sheet in front; addresses and errors as of excel::Worksheet::Range. Error
  // 1004 when that sheet has no cells.
  virtual std::shared_ptr<excel::Range> Range(std::string_view address) = 0;
  virtual std::shared_ptr<excel::Range> Cells() = 0;
  virtual std::shared_ptr<excel::Range> Cells(std::int32_t row, std::int32_t column) = 0;

  // Whether what is written and selected shows at once. True at the start; off, it saves work, and the values
  // are the same. Where a person works in the workbook meanwhile, they stay where they are while it is off:
  // what is in front and selected for clients is then none of what that person sees, and is shown when it is
  // on again, unless it is what was in front when it was turned off.
  virtual bool ScreenUpdating() = 0;
  virtual void ScreenUpdating(bool on) = 0;
};

}  // namespace mirelo::host::excel
