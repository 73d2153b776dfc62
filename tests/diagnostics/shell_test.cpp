#include <gmock/gmock.h>

#include <cstdint>
#include <map>

#include "diagnostics/CShell.h"
#include "diagnostics/failing_desktop.h"
#include "host/host.h"
#include "support/error_number.h"
#include "support/test_host.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;

class Shell : public ::testing::Test {
 protected:
  FailingDesktop desktop;
  TestHost host = TestHost().Use(desktop);
  host::HostScope installed{host};
};

TEST_F(Shell, OpensTheAddressAsItStands) {
  CShell().OpenUrl("mailto:help@example.org?subject=a b");
  EXPECT_THAT(desktop.calls, ElementsAre("ShellExecuteA open mailto:help@example.org?subject=a b"));
}

TEST_F(Shell, RaisesTheFailuresThatItKnowsAndPassesAllOtherResults) {
  struct Failure {
    std::uint32_t number;
    const char* description;
  };
  const std::map<int, Failure> failures = {{8, {0x8004467C, "Out of memory"}},
                                           {26, {0x8004467E, "A sharing violation occurred"}},
                                           {28, {0x80044680, "DDE timeout"}},
                                           {29, {0x80044681, "DDE transaction failed"}},
                                           {30, {0x80044682, "DDE busy"}}};
  for (int result = -1; result <= 43; ++result) {
    SCOPED_TRACE(result);
    desktop.shell_result = result;
    const auto failure = failures.find(result);
    if (failure == failures.end()) {
      EXPECT_NO_THROW(CShell().OpenUrl("x:"));
    } else {
      ExpectError(ErrorOf([] { CShell().OpenUrl("x:"); }), failure->second.number,
                  failure->second.description, "Mirelo.CShell");
    }
  }
}

TEST_F(Shell, SaysNothingWhenThereIsNoProgramForTheAddress) {
  desktop.shell_result = 31;
  EXPECT_NO_THROW(CShell().OpenUrl("mailto:help@example.org"));
}

TEST_F(Shell, RaisesAnyOtherFailureAsItsOwn) {
  desktop.failing = {"ShellExecuteA"};
  ExpectError(ErrorOf([] { CShell().OpenUrl("x:"); }), 0x80044687, "CShell component failure",
              "Mirelo.CShell");
}

TEST_F(Shell, FailsOnAMachineWithoutADesktop) {
  TestHost bare;
  const host::HostScope scope(bare);
  ExpectError(ErrorOf([] { CShell().OpenUrl("x:"); }), 0x80044687, "CShell component failure",
              "Mirelo.CShell");
}

}  // namespace
}  // namespace mirelo::testing
