#pragma once

#include <memory>

#include "automation/regional_format.h"
#include "host/excel/application.h"

namespace mirelo::workbook {

struct Book;

// The spreadsheet program in memory, with one workbook: new, or loaded from an .xlsx file. The objects that
// clients got from it stay good when it is gone.
class Spreadsheet {
 public:
  // A workbook with one empty sheet, "Sheet1". Typed text is read in the way of the region.
  static Spreadsheet New(const RegionalFormat& regional = RegionalFormat::Standard());

  std::shared_ptr<host::excel::Application> Application() const { return application_; }

 private:
  explicit Spreadsheet(std::shared_ptr<Book> book);

  std::shared_ptr<Book> book_;
  std::shared_ptr<host::excel::Application> application_;
};

}  // namespace mirelo::workbook
