// A machine beside the installed one: whose ports which code finds, and what becomes of its failures.

#include "wire/side_host.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "automation/runtime_error.h"
#include "core/CAppSettings.h"
#include "diagnostics/frmErrorMessage.h"
#include "forms/form.h"
#include "support/answering_internet.h"
#include "support/manual_loop.h"
#include "support/memory_registry.h"
#include "support/memory_winsock.h"
#include "support/scripted_desktop.h"
#include "support/test_host.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class BesideAHost : public ::testing::Test {
 protected:
  BesideAHost() {
    side.OnFailure([this](const std::exception_ptr& failure) {
      try {
        std::rethrow_exception(failure);
      } catch (...) {
        failures.push_back(CurrentError().Description());
      }
    });
  }
  // What the code at this place finds installed.
  std::string Here() const {
    return &host::Host::Current() == static_cast<const host::Host*>(&side) ? "side" : "installed";
  }

  ManualLoop loop;
  MemoryRegistry registry;
  ScriptedDesktop desktop;
  TestHost host;
  host::HostScope installed{host.Use(loop).Use(registry).Use(desktop)};
  wire::SideHost side{host,
                      {.sockets = [](host::MessageLoop&) { return std::make_unique<MemoryWinsock>(); },
                       .internet = [](host::MessageLoop&) { return std::make_unique<AnsweringInternet>(); }}};
  std::vector<std::string> failures;
};

TEST_F(BesideAHost, IsInstalledForWhatIsRunOnIt) {
  EXPECT_EQ(side.Run([&] { return Here(); }), "side");
  EXPECT_EQ(Here(), "installed");
  EXPECT_THROW(side.Run([] { throw std::runtime_error("no"); }), std::runtime_error);
  EXPECT_EQ(Here(), "installed");
}

TEST_F(BesideAHost, IsInstalledWithinHandlersOfItsLoopAlone) {
  std::vector<std::string> places;
  side.loop().StartTimer({}, [&] { places.push_back(Here()); });
  loop.StartTimer({}, [&] { places.push_back(Here()); });
  loop.Advance({});
  EXPECT_THAT(places, ElementsAre("side", "installed"));
}

TEST_F(BesideAHost, LeavesOthersTheInstalledHostWhileItWaits) {
  std::vector<std::string> places;
  loop.StartTimer({}, [&] { places.push_back("others " + Here()); });
  side.loop().StartTimer({}, [&] { places.push_back("its own " + Here()); });
  side.Run([&] {
    side.loop().RunUntil([&] { return places.size() == 2; });
    places.push_back("behind " + Here());
  });
  loop.StartTimer({}, [&] { places.push_back("others " + Here()); });
  side.Run([&] { side.loop().Yield(); });
  EXPECT_THAT(places, ElementsAre("others installed", "its own side", "behind side", "others installed"));
}

TEST_F(BesideAHost, KeepsItsFailuresFromWhoeverRunsTheLoop) {
  side.loop().StartTimer({}, [] { throw RuntimeError(5, "no quotes"); });
  EXPECT_NO_THROW(loop.Advance({}));
  EXPECT_THAT(failures, ElementsAre("no quotes"));
  side.OnFailure([](const std::exception_ptr&) { throw RuntimeError(5, "nobody listens"); });
  side.loop().StartTimer({}, [] { throw RuntimeError(5, "no quotes"); });
  EXPECT_NO_THROW(loop.Advance({}));
  EXPECT_EQ(Here(), "installed");
}

TEST_F(BesideAHost, HasSettingsOfItsOwnAndLeavesTheStoredOnes) {
  CAppSettings settings;
  settings.SaveSetting("Settings", "Seconds", Variant("7"));
  side.Override("Seconds", "3");
  EXPECT_EQ(settings.GetSetting("Settings", "Seconds", "").ToText(), "7");
  EXPECT_EQ(side.Run([&] { return settings.GetSetting("Settings", "Seconds", "").ToText(); }), "3");
}

TEST_F(BesideAHost, ShowsNothingAndKeepsTheWords) {
  using host::Desktop;
  side.Run([] {
    auto& quiet = host::Host::Current().desktop();
    EXPECT_EQ(quiet.MessageBox("No reply", Desktop::kYesNo, ""), Desktop::Answer::No);
  });
  EXPECT_EQ(side.desktop().TakeWords(), "No reply");
  EXPECT_EQ(side.desktop().TakeWords(), "");
  EXPECT_THAT(desktop.boxes, IsEmpty());
}

TEST_F(BesideAHost, AbortsWhatAReportAsksAbout) {
  frmErrorMessage report;
  report.ErrorMessage("Overflow");
  side.desktop().ShowModal(report);
  EXPECT_EQ(report.Tag(), "ABORT");
  EXPECT_THAT(side.desktop().TakeWords(), ::testing::HasSubstr("Overflow"));
  EXPECT_THAT(desktop.reports, IsEmpty());
}

}  // namespace
}  // namespace mirelo::testing
