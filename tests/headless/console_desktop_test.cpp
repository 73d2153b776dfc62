#include "adapters/headless/console_desktop.h"

#include <gtest/gtest.h>

#include <sstream>

namespace mirelo::headless {
namespace {

using Answer = host::Desktop::Answer;
using Desktop = host::Desktop;

TEST(ConsoleDesktop, PrintsABoxAsALineWithAWordForItsIcon) {
  const struct {
    int style;
    const char* line;
  } kBoxes[] = {
      {Desktop::kCritical, "error: Dovanta2: Please run QuoteTracker.\n"},
      {Desktop::kExclamation, "warning: Dovanta2: Please run QuoteTracker.\n"},
      {Desktop::kInformation, "information: Dovanta2: Please run QuoteTracker.\n"},
      {Desktop::kOkOnly, "message: Dovanta2: Please run QuoteTracker.\n"},
      {Desktop::kYesNo, "question: Dovanta2: Please run QuoteTracker.\n  answered: No\n"},
      {Desktop::kYesNo + Desktop::kExclamation,
       "warning: Dovanta2: Please run QuoteTracker.\n  answered: No\n"},
  };
  for (const auto& [style, line] : kBoxes) {
    std::ostringstream out;
    ConsoleDesktop(out).MessageBox("Please run QuoteTracker.", style, "Dovanta2");
    EXPECT_EQ(out.str(), line);
  }
}

TEST(ConsoleDesktop, IndentsFurtherLinesAndLeavesOutAnEmptyTitle) {
  std::ostringstream out;
  ConsoleDesktop(out).MessageBox("first\r\nsecond\nthird", Desktop::kCritical, "");
  EXPECT_EQ(out.str(), "error: first\n  second\n  third\n");
}

TEST(ConsoleDesktop, AnswersForNobodyWithTheLeastConsequence) {
  std::ostringstream out;
  ConsoleDesktop desktop(out);
  EXPECT_EQ(desktop.MessageBox("", Desktop::kOkOnly, ""), Answer::Ok);
  EXPECT_EQ(desktop.MessageBox("", Desktop::kCritical, ""), Answer::Ok);
  EXPECT_EQ(desktop.MessageBox("", Desktop::kAbortRetryIgnore + Desktop::kCritical, ""), Answer::Abort);
  EXPECT_EQ(desktop.MessageBox("", Desktop::kYesNo, ""), Answer::No);
  EXPECT_EQ(desktop.ShowErrorReport("", ""), "ABORT");
}

TEST(ConsoleDesktop, AnswersFromItsScriptWhileItLasts) {
  std::ostringstream out;
  ConsoleDesktop desktop(out, {{Answer::Yes, Answer::Retry}, {"IGNORE", ""}});
  EXPECT_EQ(desktop.MessageBox("Overwrite?", Desktop::kYesNo, ""), Answer::Yes);
  EXPECT_EQ(desktop.MessageBox("Failed", Desktop::kAbortRetryIgnore, ""), Answer::Retry);
  EXPECT_EQ(desktop.MessageBox("Overwrite?", Desktop::kYesNo, ""), Answer::No);
  EXPECT_EQ(desktop.ShowErrorReport("report", "mail"), "IGNORE");
  EXPECT_EQ(desktop.ShowErrorReport("report", "mail"), "");
  EXPECT_EQ(desktop.ShowErrorReport("report", "mail"), "ABORT");
}

TEST(ConsoleDesktop, PrintsAFailureReportWithItsAnswer) {
  std::ostringstream out;
  ConsoleDesktop(out).ShowErrorReport("Error: 13\r\nType mismatch", "help@example.org");
  EXPECT_EQ(out.str(), "error: Error: 13\n  Type mismatch\n  answered: ABORT\n");
}

TEST(ConsoleDesktop, IsSilentForABeep) {
  std::ostringstream out;
  ConsoleDesktop(out).Beep();
  EXPECT_EQ(out.str(), "");
}

TEST(ConsoleDesktop, PrintsToTheStandardErrorStreamUnlessToldOtherwise) {
  ::testing::internal::CaptureStderr();
  ConsoleDesktop().MessageBox("text", Desktop::kInformation, "title");
  EXPECT_EQ(::testing::internal::GetCapturedStderr(), "information: title: text\n");
}

}  // namespace
}  // namespace mirelo::headless
