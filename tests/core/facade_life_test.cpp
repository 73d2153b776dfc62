#include <gmock/gmock.h>

#include <filesystem>
#include <memory>
#include <optional>
#include <utility>

#include "core/CAppSettings.h"
#include "core/cMirelo.h"
#include "core/mGlobal.h"
#include "core/status_run_query.h"
#include "diagnostics/CErrorHandler.h"
#include "streaming/cQTStreaming.h"
#include "support/current_directory.h"
#include "support/error_number.h"
#include "support/facade_test.h"
#include "support/temp_directory.h"

namespace mirelo::testing {
namespace {

using ::testing::IsEmpty;
using ::testing::SizeIs;

class FacadeLife : public FacadeTest {};

TEST_F(FacadeLife, BeginsWithTheErrorHandlerOfTheOneConfiguration) {
  const CErrorHandler& handler = mGlobal::ErrorHandler();
  EXPECT_EQ(handler.ErrorHandlerActions(), 8);
  EXPECT_EQ(handler.ErrorLogFile(), "Error Log.txt");
  EXPECT_TRUE(handler.CallStackEnabled());
  EXPECT_FALSE(handler.TracingEnabled());
  EXPECT_EQ(handler.TracingFlags(), 2);
  EXPECT_EQ(handler.TracingLogFile(), "Tracing Log.txt");
}

TEST_F(FacadeLife, BeginsWithTheSettingsOfTheSystem) {
  const CAppSettings& settings = mGlobal::AppSettings();
  EXPECT_EQ(settings.RootKey(), host::Registry::kCurrentUser);
  EXPECT_EQ(settings.MainBranch(), "Software");
  EXPECT_EQ(settings.CompanyName(), "Kestrin");
  EXPECT_EQ(settings.AppName(), "Dovanta2");
}

TEST_F(FacadeLife, BeginsWithoutAskingRegistryOrNetwork) {
  EXPECT_EQ(registry.Calls("RegOpenKeyExA"), 0);
  EXPECT_EQ(registry.Calls("RegCreateKeyExA"), 0);
  EXPECT_THAT(internet.requests, IsEmpty());
}

TEST_F(FacadeLife, BeginsWithEmptyVariables) {
  EXPECT_EQ(facade->StatusRunWorkQT(), Status_Null);
  EXPECT_EQ(facade->m_ObjExcelApplication(), nullptr);
  EXPECT_TRUE(facade->masPrevVolume().IsEmpty());
  EXPECT_EQ(facade->DovantaFormatUserDate(), "");
}

TEST_F(FacadeLife, KeepsWhatTheMacrosSet) {
  facade->StatusRunWorkQT(Status_LEVEL_I_FULL_QUOTE);
  facade->DovantaFormatUserDate("dd.mm.yyyy");
  facade->masPrevVolume(VariantArray(1, 2, 1, 2));
  EXPECT_EQ(facade->StatusRunWorkQT(), 2);
  EXPECT_EQ(facade->DovantaFormatUserDate(), "dd.mm.yyyy");
  EXPECT_EQ(facade->masPrevVolume().AsArray().UBound(1), 2);
}

TEST_F(FacadeLife, EndsBothServices) {
  facade.reset();
  EXPECT_EQ(NumberOf([] { mGlobal::AppSettings(); }), 91);
  EXPECT_EQ(NumberOf([] { mGlobal::ErrorHandler(); }), 91);
}

// A stream that nobody but the timer holds asks the facade for its state.
TEST_F(FacadeLife, LetsGoOfTheTimersStreamAtItsEnd) {
  const auto stream = std::make_shared<cQTStreaming>();
  mGlobal::SetStreamingObject(stream);
  EXPECT_EQ(mGlobal::StreamingObject(), stream);
  facade.reset();
  EXPECT_EQ(mGlobal::StreamingObject(), nullptr);
  EXPECT_EQ(stream.use_count(), 1);
}

TEST_F(FacadeLife, ReplacesTheServicesOfAnEarlierFacade) {
  mGlobal::ErrorHandler().Tag("first");
  mGlobal::AppSettings().AppName("First");
  {
    cMirelo second;
    EXPECT_EQ(mGlobal::ErrorHandler().Tag(), "");
    EXPECT_EQ(mGlobal::AppSettings().AppName(), "Dovanta2");
  }
  EXPECT_EQ(NumberOf([] { mGlobal::AppSettings(); }), 91);
}

TEST_F(FacadeLife, LeavesSharedServicesToTheOthersUntilTheLastGoes) {
  mGlobal::ShareServices(true);
  mGlobal::ErrorHandler().Tag("first");
  std::optional<cMirelo> second(std::in_place);
  EXPECT_EQ(mGlobal::ErrorHandler().Tag(), "first");
  facade.reset();
  EXPECT_EQ(mGlobal::ErrorHandler().Tag(), "first");
  EXPECT_EQ(mGlobal::AppSettings().AppName(), "Dovanta2");
  second.reset();
  EXPECT_FALSE(mGlobal::HasServices());
  facade.emplace();
  EXPECT_TRUE(mGlobal::HasServices());
  mGlobal::ShareServices(false);
}

TEST_F(FacadeLife, ShowsAFailureInTheDialogAndWritesNoFiles) {
  const TempDirectory directory;
  const CurrentDirectory current(directory.path());
  facade->GetLastQuote(Variant());  // no array
  EXPECT_THAT(desktop.reports, SizeIs(1));
  EXPECT_THAT(desktop.boxes, IsEmpty());
  EXPECT_THAT(system.events, IsEmpty());
  EXPECT_TRUE(std::filesystem::is_empty(directory.path()));
}

// The error handler comes first, and nothing comes behind its failure.
TEST_F(FacadeLife, DoesNotBeginOnAMachineWithoutAnOperatingSystem) {
  facade.reset();
  TestHost bare;
  bare.Use(loop).Use(clock).Use(registry).Use(internet).Use(desktop);
  const host::HostScope scope(bare);
  ExpectError(ErrorOf([&] { facade.emplace(); }), 0x800443FC, "CErrorHandler component failure",
              "Mirelo.CErrorHandler");
  EXPECT_EQ(NumberOf([] { mGlobal::AppSettings(); }), 91);
}

TEST(StreamStatus, HasTheNumbersThatTheMacrosKnow) {
  EXPECT_EQ(Status_Null, 0);
  EXPECT_EQ(Status_ENUMSOURCES_L1, 1);
  EXPECT_EQ(Status_LEVEL_I_FULL_QUOTE, 2);
}

TEST_F(FacadeLife, IsThatOfAnObjectThatVariantsHold) { EXPECT_EQ(facade->TypeName(), "cMirelo"); }

}  // namespace
}  // namespace mirelo::testing
