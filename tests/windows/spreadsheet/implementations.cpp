// The suite of spreadsheets over COM: the adapter calls the spreadsheet in memory as it calls the program
// that a client hands in, within this process and in another.

#include "com/foreign.h"

#include <objbase.h>

#include <memory>
#include <optional>

#include "automation/variant.h"
#include "com/errors.h"
#include "com/held.h"
#include "excel/conformance.h"
#include "windows/foreign_program.h"
#include "windows/spreadsheet/registration.h"
#include "windows/spreadsheet/served.h"

namespace mirelo::testing {

namespace {

// This thread's apartment, and the classes of both servers, while the tests run.
class Surroundings : public ::testing::Environment {
 public:
  void SetUp() override {
    com::Require(::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED));
    windows::TakeSpreadsheetPrograms();
    registered_.emplace();
  }
  void TearDown() override {
    registered_.reset();
    ::CoUninitialize();
  }

 private:
  std::optional<RegisteredSpreadsheets> registered_;
};
[[maybe_unused]] const auto* const kSurroundings = ::testing::AddGlobalTestEnvironment(new Surroundings);

std::shared_ptr<host::excel::Application> Handed(const CLSID& id, DWORD where) {
  com::Held<IDispatch> program;
  com::Require(::CoCreateInstance(id, nullptr, where, IID_IDispatch, program.Place()));
  const Variant handed{std::shared_ptr<Object>(std::make_shared<com::Foreign>(std::move(program)))};
  return std::dynamic_pointer_cast<host::excel::Application>(com::Entering(handed).AsObject());
}

}  // namespace

std::vector<Implementation> Implementations() {
  return {{"InThisProcess", [] { return Handed(kInThisProcess, CLSCTX_INPROC_SERVER); }},
          {"InItsOwnProcess", [] { return Handed(kInItsOwnProcess, CLSCTX_LOCAL_SERVER); }}};
}

}  // namespace mirelo::testing
