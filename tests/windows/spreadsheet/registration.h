#pragma once

#include <string>

namespace mirelo::testing {

// Both servers of the spreadsheet, which lie beside the test's own program, are registered as long as this
// lives.
class RegisteredSpreadsheets {
 public:
  RegisteredSpreadsheets();
  ~RegisteredSpreadsheets();
  RegisteredSpreadsheets(const RegisteredSpreadsheets&) = delete;
  RegisteredSpreadsheets& operator=(const RegisteredSpreadsheets&) = delete;
};

}  // namespace mirelo::testing
