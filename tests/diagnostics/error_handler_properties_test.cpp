#include <gmock/gmock.h>

#include <cstdint>
#include <functional>
#include <set>
#include <vector>

#include "diagnostics/diagnostics_test.h"

namespace mirelo::testing {
namespace {

class ErrorHandlerProperties : public DiagnosticsTest {};

TEST_F(ErrorHandlerProperties, StartWithOnlyTheMessageBox) {
  const CErrorHandler handler;
  EXPECT_FALSE(handler.CallStackEnabled());
  EXPECT_FALSE(handler.TracingEnabled());
  EXPECT_EQ(handler.ErrorHandlerActions(), 1);
  EXPECT_EQ(handler.TracingFlags(), 0);
  EXPECT_EQ(handler.ErrorNumber(), 0);
  EXPECT_EQ(handler.ErrorLine(), 0);
  EXPECT_EQ(handler.ErrorLogFile(), "Error Log.txt");
  EXPECT_EQ(handler.TracingLogFile(), "Tracing Log.txt");
  EXPECT_EQ(handler.Tag(), "");
  EXPECT_EQ(handler.ErrorDescription(), "");
  EXPECT_EQ(handler.SupportMail(), "");
  EXPECT_TRUE(handler.CallStack().empty());
}

TEST(ErrorHandlerNumbers, AreThoseThatClientsKnow) {
  EXPECT_EQ(CErrorHandler::ActionMessageBox, 1);
  EXPECT_EQ(CErrorHandler::ActionLogFile, 2);
  EXPECT_EQ(CErrorHandler::ActionEventLog, 4);
  EXPECT_EQ(CErrorHandler::ActionErrorForm, 8);
  EXPECT_EQ(CErrorHandler::TraceDebugOutput, 1);
  EXPECT_EQ(CErrorHandler::TraceLogFile, 2);
  EXPECT_EQ(CErrorHandler::ResultAbort, 0);
  EXPECT_EQ(CErrorHandler::ResultRetry, 1);
  EXPECT_EQ(CErrorHandler::ResultIgnore, 2);
}

TEST_F(ErrorHandlerProperties, KeepWhatTheyAreGiven) {
  CErrorHandler handler;
  handler.CallStackEnabled(true);
  handler.TracingEnabled(true);
  handler.ErrorHandlerActions(15);
  handler.TracingFlags(3);
  handler.ErrorNumber(-5);
  handler.ErrorLine(120);
  handler.ErrorLogFile("a.txt");
  handler.TracingLogFile("b.txt");
  handler.Tag("anything");
  handler.ErrorDescription("text");
  handler.SupportMail("help@example.org");
  EXPECT_TRUE(handler.CallStackEnabled());
  EXPECT_TRUE(handler.TracingEnabled());
  EXPECT_EQ(handler.ErrorHandlerActions(), 15);
  EXPECT_EQ(handler.TracingFlags(), 3);
  EXPECT_EQ(handler.ErrorNumber(), -5);
  EXPECT_EQ(handler.ErrorLine(), 120);
  EXPECT_EQ(handler.ErrorLogFile(), "a.txt");
  EXPECT_EQ(handler.TracingLogFile(), "b.txt");
  EXPECT_EQ(handler.Tag(), "anything");
  EXPECT_EQ(handler.ErrorDescription(), "text");
  EXPECT_EQ(handler.SupportMail(), "help@example.org");
}

TEST_F(ErrorHandlerProperties, RefuseValuesOutsideTheirRangeAndKeepTheOldOnes) {
  struct Refusal {
    const char* what;
    std::function<void(CErrorHandler&)> set;
    std::uint32_t number;
    const char* description;
  };
  const Refusal refusals[] = {
      {"actions 0", [](auto& h) { h.ErrorHandlerActions(0); }, 0x800443FA, "Invalid error handler actions"},
      {"actions 16", [](auto& h) { h.ErrorHandlerActions(16); }, 0x800443FA, "Invalid error handler actions"},
      {"actions -1", [](auto& h) { h.ErrorHandlerActions(-1); }, 0x800443FA, "Invalid error handler actions"},
      {"flags 0", [](auto& h) { h.TracingFlags(0); }, 0x800443FB, "Invalid tracing flags"},
      {"flags 4", [](auto& h) { h.TracingFlags(4); }, 0x800443FB, "Invalid tracing flags"},
      {"no error log", [](auto& h) { h.ErrorLogFile(""); }, 0x800443F9, "Invalid file name"},
      {"no tracing log", [](auto& h) { h.TracingLogFile(""); }, 0x800443F9, "Invalid file name"},
  };
  for (const Refusal& refusal : refusals) {
    SCOPED_TRACE(refusal.what);
    CErrorHandler handler;
    handler.Init(7, "errors.txt", false, false, 2, "traces.txt");
    ExpectError(ErrorOf([&] { refusal.set(handler); }), refusal.number, refusal.description,
                "Mirelo.CErrorHandler");
    EXPECT_EQ(handler.ErrorHandlerActions(), 7);
    EXPECT_EQ(handler.TracingFlags(), 2);
    EXPECT_EQ(handler.ErrorLogFile(), "errors.txt");
    EXPECT_EQ(handler.TracingLogFile(), "traces.txt");
  }
}

TEST_F(ErrorHandlerProperties, AcceptTheEndsOfTheirRanges) {
  CErrorHandler handler;
  for (const std::int32_t actions : {1, 15}) {
    handler.ErrorHandlerActions(actions);
    EXPECT_EQ(handler.ErrorHandlerActions(), actions);
  }
  for (const std::int32_t flags : {1, 3}) {
    handler.TracingFlags(flags);
    EXPECT_EQ(handler.TracingFlags(), flags);
  }
}

TEST_F(ErrorHandlerProperties, AreSetByInitInItsOrderUpToTheOneThatIsRefused) {
  CErrorHandler handler;
  EXPECT_EQ(NumberOf([&] { handler.Init(8, "errors.txt", true, true, 0, "traces.txt"); }), -2147204101);
  EXPECT_EQ(handler.ErrorHandlerActions(), 8);
  EXPECT_EQ(handler.ErrorLogFile(), "errors.txt");
  EXPECT_TRUE(handler.CallStackEnabled());
  EXPECT_TRUE(handler.TracingEnabled());
  EXPECT_EQ(handler.TracingFlags(), 0);
  EXPECT_EQ(handler.TracingLogFile(), "Tracing Log.txt");

  EXPECT_EQ(NumberOf([&] { handler.Init(4, "", false, false, 1, "traces.txt"); }), -2147204103);
  EXPECT_EQ(handler.ErrorHandlerActions(), 4);
  EXPECT_EQ(handler.ErrorLogFile(), "errors.txt");
  EXPECT_TRUE(handler.CallStackEnabled());

  EXPECT_EQ(NumberOf([&] { handler.Init(16, "other.txt", false, false, 1, "traces.txt"); }), -2147204102);
  EXPECT_EQ(handler.ErrorHandlerActions(), 4);
  EXPECT_EQ(handler.ErrorLogFile(), "errors.txt");

  EXPECT_EQ(NumberOf([&] { handler.Init(4, "errors.txt", false, false, 3, ""); }), -2147204103);
  EXPECT_EQ(handler.TracingFlags(), 3);
  EXPECT_EQ(handler.TracingLogFile(), "Tracing Log.txt");
}

TEST_F(ErrorHandlerProperties, TellTheNtFamilyByTheLongOrTheShortVersionRecord) {
  struct Machine {
    const char* what;
    std::int32_t platform;
    std::set<std::int32_t> failing;
    bool nt;
    std::vector<std::int32_t> asked;
  };
  const Machine machines[] = {
      {"NT, both forms", 2, {}, true, {156}},        {"NT, short form only", 2, {156}, true, {156, 148}},
      {"not NT, long form", 1, {}, false, {156}},    {"not NT, short form only", 1, {156}, false, {156, 148}},
      {"no form", 2, {156, 148}, false, {156, 148}},
  };
  for (const Machine& machine : machines) {
    SCOPED_TRACE(machine.what);
    system.platform = machine.platform;
    system.failing_record_sizes = machine.failing;
    system.version_record_sizes.clear();
    EXPECT_EQ(CErrorHandler().IsWindowsNT(), machine.nt);
    EXPECT_EQ(system.version_record_sizes, machine.asked);
  }
}

TEST(ErrorHandlerConstruction, FailsOnAMachineWithoutAnOperatingSystem) {
  TestHost bare;
  const host::HostScope scope(bare);
  ExpectComponentFailure(ErrorOf([] { CErrorHandler handler; }));
}

}  // namespace
}  // namespace mirelo::testing
