#pragma once

#include <initializer_list>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "automation/runtime_error.h"
#include "core/mGlobal.h"
#include "diagnostics/CErrorHandler.h"
#include "diagnostics/diagnostics_test.h"
#include "diagnostics/routine.h"

namespace mirelo::testing {

// The process-wide error handler as the facade sets it up, and a list of what routines have done.
class RoutineTest : public DiagnosticsTest {
 protected:
  RoutineTest() {
    mGlobal::SetErrorHandler(std::make_unique<CErrorHandler>());
    handler().Init(CErrorHandler::ActionErrorForm, PathOf("errors.txt"), true, false, 2,
                   PathOf("traces.txt"));
  }
  ~RoutineTest() override { mGlobal::SetErrorHandler(nullptr); }

  static CErrorHandler& handler() { return mGlobal::ErrorHandler(); }

  // The answers that the user will give to the coming failure reports.
  void Answers(std::initializer_list<std::string> answers) {
    desktop.report_answers.assign(answers.begin(), answers.end());
  }

  void Did(std::string what) { done.push_back(std::move(what)); }
  void FailsOn(std::string what) {
    Did(std::move(what));
    throw Errors::TypeMismatch();
  }
  // Fails as often as told, then works.
  void FailsTimes(int times, std::string what) {
    Did(what);
    if (failures++ < times) throw Errors::TypeMismatch();
  }

  std::vector<std::string> done;
  int failures = 0;
};

}  // namespace mirelo::testing
