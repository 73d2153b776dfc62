// tests/excel against documents in LibreOffice.
#include "excel/conformance.h"

#include <gtest/gtest.h>

#include "adapters/calc/objects/spreadsheet_program.h"
#include "calc/limits.h"
#include "calc/live_office.h"

namespace mirelo::testing {

namespace {

// Places are kept in 1/100 mm.
constexpr double kTolerance = 0.05;

std::shared_ptr<host::excel::Application> NewSpreadsheet() {
  LiveOffice& office = LiveOffice::Get();
  return calc::ApplicationOf(office.Context(), office.EmptyDocument());
}

}  // namespace

std::vector<Implementation> Implementations() { return {{"Calc", NewSpreadsheet, kTolerance, CalcLimits()}}; }

}  // namespace mirelo::testing
