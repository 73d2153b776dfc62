#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "automation/variant.h"

namespace mirelo::host::excel {

class Charts;
class Sheet;
class Worksheets;

class Workbook : public Object {
 public:
  std::string_view TypeName() const override { return "Workbook"; }

  // The file's name without its folder; "Book1" while there is no file.
  virtual std::string Name() = 0;
  virtual std::shared_ptr<excel::Worksheets> Worksheets() = 0;
  virtual std::shared_ptr<excel::Charts> Charts() = 0;
  // Worksheets and chart sheets, by name without regard to case; error 9 when none bears it.
  virtual std::shared_ptr<Sheet> Sheets(std::string_view name) = 0;
  // The sheet in front. A workbook always has at least one worksheet.
  virtual std::shared_ptr<Sheet> ActiveSheet() = 0;
};

}  // namespace mirelo::host::excel
