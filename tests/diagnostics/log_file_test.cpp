#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "diagnostics/diagnostics_test.h"
#include "support/current_directory.h"

namespace mirelo::testing {
namespace {

class LogFile : public DiagnosticsTest {
 protected:
  LogFile() { handler.Init(CErrorHandler::ActionLogFile, error_log, true, false, 2, tracing_log); }

  void WriteBoth() {
    std::ofstream(error_log) << "errors";
    std::ofstream(tracing_log) << "traces";
  }

  const std::string error_log = PathOf("errors.txt");
  const std::string tracing_log = PathOf("traces.txt");
  CErrorHandler handler;
};

constexpr const char* kLoggedReport =
    "1/20/2011 - 8:36:13 AM\r\n"
    "\tError: 9, (Subscript out of range)\r\n"
    "\tin Unknown at line 0\r\n"
    "\r\n"
    "The call stack is:\r\n"
    "\r\n";

TEST_F(LogFile, TakesTheReportAndALineEnd) {
  EXPECT_EQ(Handle(handler, Errors::SubscriptOutOfRange()), CErrorHandler::ResultAbort);
  EXPECT_EQ(ContentsOf(error_log), kLoggedReport);
}

TEST_F(LogFile, GrowsAtItsEnd) {
  Handle(handler, Errors::SubscriptOutOfRange());
  Handle(handler, Errors::SubscriptOutOfRange());
  EXPECT_EQ(ContentsOf(error_log), std::string(kLoggedReport) + kLoggedReport);
}

TEST_F(LogFile, AloneAbortsWithoutAQuestion) {
  EXPECT_EQ(Handle(handler, Errors::SubscriptOutOfRange()), CErrorHandler::ResultAbort);
  EXPECT_TRUE(desktop.boxes.empty());
  EXPECT_TRUE(desktop.reports.empty());
}

TEST_F(LogFile, ThatCannotBeOpenedIsAComponentFailureBeforeAnybodyIsAsked) {
  handler.ErrorHandlerActions(CErrorHandler::ActionLogFile + CErrorHandler::ActionErrorForm);
  handler.ErrorLogFile(PathOf("no such folder/errors.txt"));
  ExpectComponentFailure(ErrorOf([&] { Handle(handler, Errors::SubscriptOutOfRange()); }));
  EXPECT_TRUE(desktop.reports.empty());
}

TEST_F(LogFile, ThatHasNoRoomIsAComponentFailureToo) {
  handler.ErrorLogFile("/dev/full");
  ExpectComponentFailure(ErrorOf([&] { Handle(handler, Errors::SubscriptOutOfRange()); }));
}

TEST_F(LogFile, WithoutAFolderStandsInTheCurrentDirectory) {
  const CurrentDirectory current(directory.path());
  handler.ErrorLogFile("here.txt");
  Handle(handler, Errors::SubscriptOutOfRange());
  EXPECT_EQ(ContentsOf(PathOf("here.txt")), kLoggedReport);
}

TEST_F(LogFile, IsDeletedByClearWhenItsFlagIsSet) {
  struct Case {
    bool clear_log, clear_tracing_log;
  };
  for (const auto& [clear_log, clear_tracing_log] :
       {Case{false, false}, {true, false}, {false, true}, {true, true}}) {
    SCOPED_TRACE(std::to_string(clear_log) + std::to_string(clear_tracing_log));
    WriteBoth();
    handler.Clear(clear_log, clear_tracing_log);
    EXPECT_EQ(std::filesystem::exists(error_log), !clear_log);
    EXPECT_EQ(std::filesystem::exists(tracing_log), !clear_tracing_log);
  }
}

TEST_F(LogFile, ThatIsMissingDoesNotKeepClearFromTheOther) {
  WriteBoth();
  std::filesystem::remove(error_log);
  EXPECT_NO_THROW(handler.Clear(true, true));
  EXPECT_FALSE(std::filesystem::exists(tracing_log));
}

TEST_F(LogFile, IsNeverAFolder) {
  std::filesystem::create_directory(error_log);
  EXPECT_NO_THROW(handler.Clear(true, false));
  EXPECT_TRUE(std::filesystem::is_directory(error_log));
}

}  // namespace
}  // namespace mirelo::testing
