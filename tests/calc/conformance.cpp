// tests/excel against documents in LibreOffice.
#include "excel/conformance.h"

#include <gtest/gtest.h>

#include <memory>

#include "adapters/calc/objects/spreadsheet_program.h"
#include "calc/limits.h"
#include "calc/live_office.h"

namespace mirelo::testing {

namespace {

// Places are kept in 1/100 mm.
constexpr double kTolerance = 0.05;

// The document of a test that is over is emptied for the next one.
std::shared_ptr<host::excel::Application> NewSpreadsheet() {
  static std::weak_ptr<host::excel::Application> latest;
  LiveOffice& office = LiveOffice::Get();
  const auto document = latest.expired() ? office.EmptyDocument() : office.AnotherDocument();
  auto application = calc::ApplicationOf(office.Context(), document);
  if (latest.expired()) latest = application;
  return application;
}

}  // namespace

std::vector<Implementation> Implementations() { return {{"Calc", NewSpreadsheet, kTolerance, CalcLimits()}}; }

}  // namespace mirelo::testing
