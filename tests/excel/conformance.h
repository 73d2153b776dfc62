#pragma once

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <ostream>
#include <span>
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

// A test that fails with a spreadsheet which cannot do what it asks for.
struct Limit {
  std::string_view test;    // "Borders.TakeEveryStyle"
  std::string_view reason;  // why it cannot, and what people see instead
  bool is_run = true;       // not, where the spreadsheet would not outlive it
};

// A spreadsheet that the suite runs against: a name for the report, and a way to a new workbook in an
// application of its own. The workbook has one empty sheet.
struct Implementation {
  std::string name;
  std::function<std::shared_ptr<host::excel::Application>()> application;
  double tolerance = 0;  // points by which places and sizes may miss what they should be
  std::span<const Limit> limits = {};
};
inline void PrintTo(const Implementation& implementation, std::ostream* out) { *out << implementation.name; }

// Every implementation that is built in.
std::vector<Implementation> Implementations();

// The tests that the spreadsheet cannot pass are run all the same: their failures are kept off the report,
// where they are told as skipped, and one that passes fails, since it needs to be on the list no more.
class KnownLimit {
 public:
  explicit KnownLimit(std::span<const Limit> limits);

  // To be called behind the test.
  void Tell();

 private:
  const Limit* limit_ = nullptr;
  ::testing::TestPartResultArray failures_;
  std::optional<::testing::ScopedFakeTestPartResultReporter> catching_;
};

// A test of the suite: a new workbook and its one sheet.
class Spreadsheets : public ::testing::TestWithParam<Implementation> {
 protected:
  void TearDown() final {
    if (application != nullptr && !application->ScreenUpdating()) application->ScreenUpdating(true);
    limit_.Tell();
  }

  std::shared_ptr<host::excel::Range> Range(std::string_view address) { return sheet->Range(address); }
  void Put(std::string_view address, const Variant& value) { Range(address)->Value(value); }
  Variant Get(std::string_view address) { return Range(address)->Value(); }
  std::int32_t RowCount() { return sheet->Rows()->Count(); }
  std::int32_t ColumnCount() { return sheet->Columns()->Count(); }

  // Places and sizes in points. `times` is of how many the expected one is made.
  void ExpectPoints(double points, double expected, int times = 1) {
    EXPECT_NEAR(points, expected, times * GetParam().tolerance);
  }

  KnownLimit limit_{GetParam().limits};
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
