#include "app/failure_reason.h"

#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "adapters/headless/console_desktop.h"
#include "app/dialog/guiding_desktop.h"
#include "core/CAppSettings.h"
#include "diagnostics/frmErrorMessage.h"
#include "host/host.h"
#include "support/memory_registry.h"
#include "support/test_host.h"
#include "terminal/output.h"

namespace mirelo::testing {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

constexpr const char* kReason = "The settings file /r.db is locked by process 7 (other)";

class LockedRegistry : public MemoryRegistry {
 public:
  std::string LastFailure() const override { return kReason; }
};

class FailureReason : public ::testing::Test {
 protected:
  // What is printed of a report of this failure.
  std::string Shown(const RuntimeError& error) {
    terminal::TextOutput printed;
    headless::ConsoleDesktop console(printed);
    app::GuidingDesktop desktop(
        console, [] { return std::string(); }, false);
    host.Use(desktop);
    frmErrorMessage form;
    form.ErrorMessage("Error: 1, (" + error.Description() + ")\r\n");
    desktop.ShowModal(form);
    return printed.Text();
  }

  LockedRegistry registry;
  TestHost host = TestHost().Use(registry);
  host::HostScope scope{host};
};

TEST_F(FailureReason, StandsBehindTheStoresOwnWords) {
  const RuntimeError error = app::WithReason(Errors::FailedSavingSetting());
  EXPECT_EQ(error.Description(), std::string("Failed saving the application setting. ") + kReason);
  EXPECT_EQ(error.Number(), Errors::FailedSavingSetting().Number());
  EXPECT_EQ(error.Source(), Errors::FailedSavingSetting().Source());
  EXPECT_EQ(app::WithReason(std::string("Failed saving the application setting")), error.Description());
  EXPECT_THAT(app::WithReason(Errors::FailedDeletingSetting()).Description(), HasSubstr(kReason));
}

TEST_F(FailureReason, IsNotThatOfOtherErrors) {
  EXPECT_EQ(app::WithReason(Errors::TypeMismatch()).Description(), Errors::TypeMismatch().Description());
}

TEST_F(FailureReason, IsInTheReportThatAPersonSees) {
  EXPECT_THAT(Shown(Errors::FailedSavingSetting()), HasSubstr(kReason));
  EXPECT_THAT(Shown(Errors::TypeMismatch()), Not(HasSubstr(kReason)));
}

}  // namespace
}  // namespace mirelo::testing
