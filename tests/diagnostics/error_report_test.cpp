#include <gmock/gmock.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <new>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/product.h"
#include "diagnostics/diagnostics_test.h"
#include "host/desktop.h"
#include "host/operating_system.h"
#include "support/current_directory.h"

namespace mirelo::testing {
namespace {

using Answer = host::Desktop::Answer;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

constexpr const char* kReport =
    "1/20/2011 - 8:36:13 AM\r\n"
    "\tError: 13, (Type mismatch)\r\n"
    "\tin Mirelo.cMirelo.GetLastQuote at line 0\r\n"
    "\r\n"
    "The call stack is:\r\n"
    "                    Mirelo.cMirelo.GetLastQuote()\r\n"
    "                    Mirelo.frmMirelo.LoadTickers()";

class ErrorReport : public DiagnosticsTest {
 protected:
  ErrorReport() {
    handler.CallStackEnabled(true);
    handler.CallStackPush("Mirelo.frmMirelo.LoadTickers", "");
    handler.CallStackPush("Mirelo.cMirelo.GetLastQuote", "");
  }
  std::int32_t Fail(std::int32_t actions) {
    handler.ErrorHandlerActions(actions);
    return Handle(handler, Errors::TypeMismatch());
  }
  std::string ReportOf(const RuntimeError& failure, std::string_view procedure = "") {
    handler.ErrorHandlerActions(CErrorHandler::ActionErrorForm);
    Handle(handler, failure, procedure);
    return WithoutVersion(desktop.reports.back().text);
  }
  // The dialog puts a line of its own behind the report.
  static std::string WithoutVersion(const std::string& shown) {
    const std::string version = "\r\nVersion: " + std::string(ProductVersion());
    EXPECT_TRUE(shown.ends_with(version)) << shown;
    return shown.substr(0, shown.size() - std::min(version.size(), shown.size()));
  }

  CErrorHandler handler;
};

TEST_F(ErrorReport, TellsMomentErrorRoutineAndStackInnermostFirst) {
  EXPECT_EQ(ReportOf(Errors::TypeMismatch()), kReport);
}

TEST_F(ErrorReport, KeepsTheFailureInTheProperties) {
  handler.ErrorLine(7);
  ReportOf(
      RuntimeError(ErrorNumber(0x80044281), "Failed saving the application setting", "Mirelo.CAppSetting"));
  EXPECT_EQ(handler.ErrorNumber(), ErrorNumber(0x80044281));
  EXPECT_EQ(handler.ErrorDescription(), "Failed saving the application setting");
  EXPECT_EQ(handler.ErrorLine(), 0);
}

TEST_F(ErrorReport, WritesNegativeNumbersInDecimal) {
  EXPECT_THAT(ReportOf(RuntimeError(-2147204100, "CErrorHandler component failure")),
              HasSubstr("\tError: -2147204100, (CErrorHandler component failure)\r\n"));
}

TEST_F(ErrorReport, NamesTheProcedureThatWasGiven) {
  EXPECT_THAT(ReportOf(Errors::TypeMismatch(), "Mirelo.frmColor.L1_Click"),
              HasSubstr("\tin Mirelo.frmColor.L1_Click at line 0\r\n"));
}

TEST_F(ErrorReport, NamesTheRoutineUnknownWhenTheStackIsEmpty) {
  handler.CallStackClear();
  EXPECT_EQ(ReportOf(Errors::TypeMismatch()),
            "1/20/2011 - 8:36:13 AM\r\n"
            "\tError: 13, (Type mismatch)\r\n"
            "\tin Unknown at line 0\r\n"
            "\r\n"
            "The call stack is:\r\n");
}

TEST_F(ErrorReport, NamesTheRoutineUnknownWhenTheStackIsDisabledButShowsTheStack) {
  handler.CallStackEnabled(false);
  const std::string report = ReportOf(Errors::TypeMismatch());
  EXPECT_THAT(report, HasSubstr("\tin Unknown at line 0\r\n"));
  EXPECT_THAT(report, HasSubstr("Mirelo.cMirelo.GetLastQuote()\r\n"));
}

TEST_F(ErrorReport, ShowsTheDataOfEachEntryInItsParentheses) {
  handler.CallStackPush("Mirelo.frmMirelo.FindTicker", "MSFT");
  handler.CallStackPush("Mirelo.frmMirelo.FindRow", "7, (right)");
  EXPECT_THAT(ReportOf(Errors::TypeMismatch()),
              HasSubstr("The call stack is:\r\n"
                        "                    Mirelo.frmMirelo.FindRow(7, (right))\r\n"
                        "                    Mirelo.frmMirelo.FindTicker(MSFT)\r\n"
                        "                    Mirelo.cMirelo.GetLastQuote()\r\n"));
}

TEST_F(ErrorReport, TellsAnyExceptionAsAFailure) {
  handler.ErrorHandlerActions(CErrorHandler::ActionErrorForm);
  try {
    throw std::bad_alloc();
  } catch (...) {
    handler.HandleError("");
  }
  EXPECT_EQ(handler.ErrorNumber(), 7);
}

TEST_F(ErrorReport, TellsErrorZeroWhenNothingFailed) {
  handler.ErrorHandlerActions(CErrorHandler::ActionErrorForm);
  handler.HandleError("");
  EXPECT_THAT(desktop.reports.back().text, HasSubstr("\tError: 0, ()\r\n"));
}

TEST_F(ErrorReport, AsksInAMessageBox) {
  const std::pair<Answer, std::int32_t> answers[] = {
      {Answer::Abort, 0}, {Answer::Retry, 1}, {Answer::Ignore, 2}, {Answer::Cancel, 2}};
  for (const auto& [answer, result] : answers) {
    SCOPED_TRACE(static_cast<int>(answer));
    desktop.boxes.clear();
    desktop.answers = {answer};
    EXPECT_EQ(Fail(CErrorHandler::ActionMessageBox), result);
    EXPECT_THAT(desktop.boxes, ElementsAre(ScriptedDesktop::Box{kReport, 2, host::Desktop::kDefaultTitle}));
    EXPECT_THAT(desktop.reports, IsEmpty());
  }
}

TEST_F(ErrorReport, AsksInTheDialogWhoseTagIsTheAnswer) {
  const std::pair<const char*, std::int32_t> answers[] = {{"ABORT", 0}, {"RETRY", 1}, {"IGNORE", 2},
                                                          {"", 2},      {"retry", 2}, {"ABORT ", 2}};
  for (const auto& [tag, result] : answers) {
    SCOPED_TRACE(tag);
    desktop.report_answers = {tag};
    EXPECT_EQ(Fail(CErrorHandler::ActionErrorForm), result);
    EXPECT_EQ(WithoutVersion(desktop.reports.back().text), kReport);
    EXPECT_THAT(desktop.boxes, IsEmpty());
  }
}

TEST_F(ErrorReport, HandsTheSupportAddressToTheDialog) {
  Fail(CErrorHandler::ActionErrorForm);
  EXPECT_FALSE(desktop.reports.back().can_be_sent);
  handler.SupportMail("help@example.org");
  Fail(CErrorHandler::ActionErrorForm);
  EXPECT_TRUE(desktop.reports.back().can_be_sent);
}

TEST_F(ErrorReport, AsksTwiceWithBothFlagsAndTheDialogDecides) {
  desktop.answers = {Answer::Abort};
  desktop.report_answers = {"RETRY"};
  EXPECT_EQ(Fail(9), CErrorHandler::ResultRetry);
  EXPECT_EQ(desktop.boxes.size(), 1u);
  EXPECT_EQ(desktop.reports.size(), 1u);
}

TEST_F(ErrorReport, GoesToTheEventLogOfTheNtFamilyAsAnError) {
  system.platform = host::OperatingSystem::kPlatformNt;
  CErrorHandler nt;
  nt.ErrorHandlerActions(CErrorHandler::ActionEventLog);
  EXPECT_EQ(Handle(nt, Errors::TypeMismatch(), "Mirelo.frmColor.L1_Click"), CErrorHandler::ResultAbort);
  const std::string report =
      "1/20/2011 - 8:36:13 AM\r\n"
      "\tError: 13, (Type mismatch)\r\n"
      "\tin Mirelo.frmColor.L1_Click at line 0\r\n"
      "\r\n"
      "The call stack is:\r\n";
  ASSERT_EQ(system.events.size(), 1u);
  EXPECT_EQ(system.events[0], (RecordingSystem::LoggedEvent{report, 1}));
}

TEST_F(ErrorReport, GoesNowhereFromAnotherSystemWithTheEventLogAlone) {
  const CurrentDirectory current(directory.path());
  EXPECT_EQ(Fail(CErrorHandler::ActionEventLog), CErrorHandler::ResultAbort);
  EXPECT_THAT(system.events, IsEmpty());
  EXPECT_THAT(desktop.boxes, IsEmpty());
  EXPECT_THAT(desktop.reports, IsEmpty());
  EXPECT_TRUE(std::filesystem::is_empty(directory.path()));
}

// Looks at what has been done by the time the user is asked.
TEST_F(ErrorReport, GoesToFileThenEventLogThenBoxThenDialog) {
  system.platform = host::OperatingSystem::kPlatformNt;
  CErrorHandler nt;
  nt.ErrorHandlerActions(15);
  nt.ErrorLogFile(PathOf("errors.txt"));
  std::vector<std::string> seen;
  desktop.while_open = [&] {
    seen.push_back(std::to_string(ContentsOf(PathOf("errors.txt")).size() > 0) +
                   std::to_string(system.events.size()) + std::to_string(desktop.boxes.size()) +
                   std::to_string(desktop.reports.size()));
  };
  Handle(nt, Errors::TypeMismatch());
  EXPECT_THAT(seen, ElementsAre("1110", "1111"));
}

TEST_F(ErrorReport, ReachesNobodyWhenItsFileCannotBeOpened) {
  system.platform = host::OperatingSystem::kPlatformNt;
  CErrorHandler nt;
  nt.ErrorHandlerActions(15);
  nt.ErrorLogFile(PathOf("no such folder/errors.txt"));
  ExpectComponentFailure(ErrorOf([&] { Handle(nt, Errors::TypeMismatch()); }));
  EXPECT_THAT(system.events, IsEmpty());
  EXPECT_THAT(desktop.boxes, IsEmpty());
  EXPECT_THAT(desktop.reports, IsEmpty());
}

TEST_F(ErrorReport, ThatTheEventLogRefusesIsAComponentFailureBeforeAnybodyIsAsked) {
  struct FullEventLog : RecordingSystem {
    void LogEvent(const std::string&, int) override { throw Errors::OutOfMemory(); }
  } full;
  full.platform = host::OperatingSystem::kPlatformNt;
  TestHost machine;
  machine.Use(clock).Use(desktop).Use(full);
  const host::HostScope scope(machine);
  CErrorHandler nt;
  nt.ErrorHandlerActions(15);
  nt.ErrorLogFile(PathOf("errors.txt"));
  ExpectComponentFailure(ErrorOf([&] { Handle(nt, Errors::TypeMismatch()); }));
  EXPECT_NE(ContentsOf(PathOf("errors.txt")), "");
  EXPECT_THAT(desktop.boxes, IsEmpty());
  EXPECT_THAT(desktop.reports, IsEmpty());
}

TEST_F(ErrorReport, WithoutAClockIsAComponentFailure) {
  TestHost timeless;
  timeless.Use(desktop).Use(system);
  const host::HostScope scope(timeless);
  ExpectComponentFailure(ErrorOf([&] { Fail(CErrorHandler::ActionErrorForm); }));
  EXPECT_EQ(handler.ErrorNumber(), 13);  // it was copied first of all
  EXPECT_THAT(desktop.reports, IsEmpty());
}

TEST_F(ErrorReport, ThatCannotBeShownIsAComponentFailure) {
  TestHost bare;
  bare.Use(clock).Use(system);
  const host::HostScope scope(bare);
  for (const std::int32_t action : {CErrorHandler::ActionMessageBox, CErrorHandler::ActionErrorForm}) {
    SCOPED_TRACE(action);
    ExpectComponentFailure(ErrorOf([&] { Fail(action); }));
    EXPECT_EQ(handler.ErrorNumber(), 13);  // it was copied first of all
  }
}

}  // namespace
}  // namespace mirelo::testing
