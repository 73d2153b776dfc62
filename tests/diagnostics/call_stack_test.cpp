#include <gmock/gmock.h>

#include <cstdint>
#include <filesystem>
#include <string>

#include "diagnostics/diagnostics_test.h"
#include "support/current_directory.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class CallStack : public DiagnosticsTest {
 protected:
  void Trace(std::int32_t flags) { handler.Init(1, "errors.txt", true, true, flags, tracing_log); }

  const std::string tracing_log = PathOf("traces.txt");
  CErrorHandler handler;
};

TEST_F(CallStack, GrowsOnPushAndShrinksOnPopAtItsEnd) {
  handler.CallStackPush("Mirelo.cMirelo.GetLastQuote", "");
  handler.CallStackPush("Mirelo.cMirelo.DownloadURL", "");
  EXPECT_THAT(Procedures(handler), ElementsAre("Mirelo.cMirelo.GetLastQuote", "Mirelo.cMirelo.DownloadURL"));
  handler.CallStackPop();
  EXPECT_THAT(Procedures(handler), ElementsAre("Mirelo.cMirelo.GetLastQuote"));
}

TEST_F(CallStack, IsFilledWhetherEnabledOrNot) {
  handler.CallStackEnabled(false);
  handler.CallStackPush("Mirelo.frmMirelo.Form_Load", "");
  EXPECT_THAT(Procedures(handler), ElementsAre("Mirelo.frmMirelo.Form_Load"));
}

TEST_F(CallStack, ClearsOnlyWhenEnabled) {
  handler.CallStackPush("A", "");
  handler.CallStackPush("B", "");
  handler.CallStackClear();
  EXPECT_EQ(handler.CallStack().size(), 2u);
  handler.CallStackEnabled(true);
  handler.CallStackClear();
  EXPECT_THAT(handler.CallStack(), IsEmpty());
}

TEST_F(CallStack, PopsNothingWhenEmpty) {
  handler.CallStackPop();
  EXPECT_THAT(handler.CallStack(), IsEmpty());
}

TEST_F(CallStack, TracesEntryAndExitAsOneLineEach) {
  Trace(CErrorHandler::TraceLogFile);
  handler.CallStackPush("Mirelo.cMirelo.GetLastQuote", "");
  clock.Advance(1);
  handler.CallStackPop();
  EXPECT_EQ(ContentsOf(tracing_log),
            "1/20/2011 - 8:36:13 AM --- Entered routine: Mirelo.cMirelo.GetLastQuote\r\n"
            "1/20/2011 - 8:36:14 AM --- Exited routine: Mirelo.cMirelo.GetLastQuote\r\n");
}

TEST_F(CallStack, TracesInTheFormatOfTheRegion) {
  clock.regional.short_date = "dd.mm.yyyy";
  clock.regional.long_time = "hh:mm:ss";
  Trace(CErrorHandler::TraceLogFile);
  handler.CallStackPush("A", "");
  EXPECT_EQ(ContentsOf(tracing_log), "20.01.2011 - 08:36:13 --- Entered routine: A\r\n");
}

TEST_F(CallStack, TracesWithoutAnIndentForDepth) {
  Trace(CErrorHandler::TraceLogFile);
  handler.CallStackPush("A", "");
  handler.CallStackPush("B", "");
  EXPECT_EQ(ContentsOf(tracing_log),
            "1/20/2011 - 8:36:13 AM --- Entered routine: A\r\n"
            "1/20/2011 - 8:36:13 AM --- Entered routine: B\r\n");
}

TEST_F(CallStack, TracesNoPopOfAnEmptyStack) {
  Trace(CErrorHandler::TraceLogFile);
  handler.CallStackPop();
  EXPECT_FALSE(std::filesystem::exists(tracing_log));
}

TEST_F(CallStack, TracesNothingWithDebugOutputAlone) {
  Trace(CErrorHandler::TraceDebugOutput);
  handler.CallStackPush("A", "");
  handler.CallStackPop();
  EXPECT_FALSE(std::filesystem::exists(tracing_log));
}

TEST_F(CallStack, TracesTheSameLinesWithBothFlags) {
  Trace(CErrorHandler::TraceDebugOutput + CErrorHandler::TraceLogFile);
  handler.CallStackPush("A", "");
  handler.CallStackPop();
  EXPECT_EQ(ContentsOf(tracing_log),
            "1/20/2011 - 8:36:13 AM --- Entered routine: A\r\n"
            "1/20/2011 - 8:36:13 AM --- Exited routine: A\r\n");
}

TEST_F(CallStack, TracesNothingBeforeAFlagIsSet) {
  const CurrentDirectory current(directory.path());
  handler.TracingEnabled(true);
  handler.CallStackPush("A", "");
  handler.CallStackPop();
  EXPECT_TRUE(std::filesystem::is_empty(directory.path()));
}

TEST_F(CallStack, TracesWhetherEnabledOrNot) {
  Trace(CErrorHandler::TraceLogFile);
  handler.CallStackEnabled(false);
  handler.CallStackPush("A", "");
  handler.CallStackPop();
  EXPECT_EQ(ContentsOf(tracing_log),
            "1/20/2011 - 8:36:13 AM --- Entered routine: A\r\n"
            "1/20/2011 - 8:36:13 AM --- Exited routine: A\r\n");
}

// No file stays open between two lines.
TEST_F(CallStack, TracesToANewFileWhenTheOldOneWasDeleted) {
  Trace(CErrorHandler::TraceLogFile);
  handler.CallStackPush("A", "");
  ASSERT_TRUE(std::filesystem::remove(tracing_log));
  handler.CallStackPush("B", "");
  EXPECT_EQ(ContentsOf(tracing_log), "1/20/2011 - 8:36:13 AM --- Entered routine: B\r\n");
}

TEST_F(CallStack, TracesNothingWhileTracingIsOff) {
  Trace(CErrorHandler::TraceLogFile);
  handler.TracingEnabled(false);
  handler.CallStackPush("A", "");
  EXPECT_FALSE(std::filesystem::exists(tracing_log));
}

TEST_F(CallStack, KeepsTheEntryWhoseTraceLineCannotBeWritten) {
  handler.Init(1, "errors.txt", true, true, 2, PathOf("no such folder/traces.txt"));
  ExpectComponentFailure(ErrorOf([&] { handler.CallStackPush("A", ""); }));
  EXPECT_THAT(Procedures(handler), ElementsAre("A"));
  ExpectComponentFailure(ErrorOf([&] { handler.CallStackPop(); }));
  EXPECT_THAT(Procedures(handler), ElementsAre("A"));
}

TEST_F(CallStack, KeepsTheEntryWhoseTraceLineFindsNoRoom) {
  handler.Init(1, "errors.txt", true, true, 2, "/dev/full");
  ExpectComponentFailure(ErrorOf([&] { handler.CallStackPush("A", ""); }));
  EXPECT_THAT(Procedures(handler), ElementsAre("A"));
}

}  // namespace
}  // namespace mirelo::testing
