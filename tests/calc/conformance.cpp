// tests/excel against documents in LibreOffice.
#include "excel/conformance.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "adapters/calc/objects/spreadsheet_program.h"
#include "calc/limits.h"
#include "calc/live_office.h"

namespace mirelo::testing {

namespace {

// Places are kept in 1/100 mm.
constexpr double kTolerance = 0.05;

// Of the suite few tests are about what a window shows; the others go without seeing theirs.
LiveOffice::Window WindowOfThisTest() {
  const auto* test = ::testing::UnitTest::GetInstance()->current_test_info();
  const std::string name = std::string(test->test_suite_name()) + "." + test->name();
  const bool is_seen =
      name.find("/WindowOnSheet.") != std::string::npos || name.find("Seen") != std::string::npos;
  return is_seen ? LiveOffice::Window::kShown : LiveOffice::Window::kHidden;
}

// The document of a test that is over is emptied for the next one.
std::shared_ptr<host::excel::Application> NewSpreadsheet() {
  static std::weak_ptr<host::excel::Application> latest;
  LiveOffice& office = LiveOffice::Get();
  const auto window = WindowOfThisTest();
  const auto document = latest.expired() ? office.EmptyDocument(window) : office.AnotherDocument(window);
  auto application = calc::ApplicationOf(office.Context(), document);
  if (latest.expired()) latest = application;
  return application;
}

}  // namespace

std::vector<Implementation> Implementations() { return {{"Calc", NewSpreadsheet, kTolerance, CalcLimits()}}; }

}  // namespace mirelo::testing
