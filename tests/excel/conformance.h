#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "automation/variant.h"
#include "host/excel/application.h"
#include "host/excel/range.h"
#include "host/excel/workbook.h"
#include "host/excel/worksheet.h"
#include "host/excel/worksheets.h"
#include "support/error_number.h"

namespace mirelo::testing {

// A spreadsheet that the suite runs against: a name for the report, and a way to a new workbook in an
// application of its own. The workbook has one empty sheet.
struct Implementation {
  std::string name;
  std::function<std::shared_ptr<host::excel::Application>()> application;
};
inline void PrintTo(const Implementation& implementation, std::ostream* out) { *out << implementation.name; }

// Every implementation that is built in.
std::vector<Implementation> Implementations();

// A test of the suite: a new workbook and its one sheet.
class Spreadsheets : public ::testing::TestWithParam<Implementation> {
 protected:
  std::shared_ptr<host::excel::Range> Range(std::string_view address) { return sheet->Range(address); }
  void Put(std::string_view address, const Variant& value) { Range(address)->Value(value); }
  Variant Get(std::string_view address) { return Range(address)->Value(); }
  std::int32_t RowCount() { return sheet->Rows()->Count(); }
  std::int32_t ColumnCount() { return sheet->Columns()->Count(); }

  std::shared_ptr<host::excel::Application> application = GetParam().application();
  std::shared_ptr<host::excel::Workbook> book = application->ActiveWorkbook();
  std::shared_ptr<host::excel::Worksheets> sheets = book->Worksheets();
  std::shared_ptr<host::excel::Worksheet> sheet = sheets->Item(1);
};

// Makes the tests of one fixture run against every implementation.
#define MIRELO_AGAINST_ALL(Fixture)                                                                 \
  INSTANTIATE_TEST_SUITE_P(All, Fixture, ::testing::ValuesIn(::mirelo::testing::Implementations()), \
                           [](const auto& test) { return test.param.name; })

}  // namespace mirelo::testing
