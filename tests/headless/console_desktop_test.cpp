#include "adapters/headless/console_desktop.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "forms/button.h"
#include "forms/form.h"
#include "forms/text_box.h"
#include "terminal/output.h"

namespace mirelo::headless {
namespace {

using Answer = host::Desktop::Answer;
using Desktop = host::Desktop;
using Captions = std::vector<std::string>;

const Captions kAbortRetry{"Retry", "Abort"};
const Captions kCancelOnly{"Help", "Cancel"};
const Captions kNeither{"Help"};

// A form whose buttons put their caption into its tag and end it; "Help" does nothing.
class Question : public forms::Form {
 public:
  explicit Question(const Captions& captions) : Form("Question", "Question") {
    report_.MultiLine(true);
    for (const auto& caption : captions) {
      buttons_.push_back(std::make_unique<forms::Button>(*this, caption, nullptr, caption));
      buttons_.back()->Cancel(caption == "Cancel");
      if (caption != "Help") buttons_.back()->Click.Subscribe([this, caption] { Tag(caption), Hide(); });
    }
  }

 private:
  forms::TextBox report_{*this, "report", nullptr, "Error: 13\r\nType mismatch"};
  std::vector<std::unique_ptr<forms::Button>> buttons_;
};

std::string TagBehind(ConsoleDesktop& desktop, const Captions& captions) {
  Question form(captions);
  desktop.ShowModal(form);
  return form.Tag();
}

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
    terminal::TextOutput out;
    ConsoleDesktop(out).MessageBox("Please run QuoteTracker.", style, "Dovanta2");
    EXPECT_EQ(out.Text(), line);
  }
}

TEST(ConsoleDesktop, IndentsFurtherLinesAndLeavesOutAnEmptyTitle) {
  terminal::TextOutput out;
  ConsoleDesktop(out).MessageBox("first\r\nsecond\nthird", Desktop::kCritical, "");
  EXPECT_EQ(out.Text(), "error: first\n  second\n  third\n");
}

TEST(ConsoleDesktop, ShowsNothingThatATerminalWouldObey) {
  terminal::TextOutput out;
  ConsoleDesktop desktop(out);
  desktop.MessageBox("a\033[2J\a\rb", Desktop::kCritical, "t\u009B");
  desktop.ShellExecuteA("open", "mailto:\033c");
  EXPECT_EQ(out.Text(),
            "error: t\\u009B: a\\u001B[2J\\u0007\\rb\n"
            "open: mailto:\\u001Bc\n");
}

TEST(ConsoleDesktop, AnswersForNobodyWithTheLeastConsequence) {
  terminal::TextOutput out;
  ConsoleDesktop desktop(out);
  EXPECT_EQ(desktop.MessageBox("", Desktop::kOkOnly, ""), Answer::Ok);
  EXPECT_EQ(desktop.MessageBox("", Desktop::kCritical, ""), Answer::Ok);
  EXPECT_EQ(desktop.MessageBox("", Desktop::kAbortRetryIgnore + Desktop::kCritical, ""), Answer::Abort);
  EXPECT_EQ(desktop.MessageBox("", Desktop::kYesNo, ""), Answer::No);
  EXPECT_EQ(TagBehind(desktop, kAbortRetry), "Abort");
  EXPECT_EQ(TagBehind(desktop, kCancelOnly), "Cancel");
  EXPECT_EQ(TagBehind(desktop, kNeither), "");
}

TEST(ConsoleDesktop, AnswersFromItsScriptWhileItLasts) {
  terminal::TextOutput out;
  ConsoleDesktop desktop(out, {{Answer::Yes, Answer::Retry}, {"Retry", ""}});
  EXPECT_EQ(desktop.MessageBox("Overwrite?", Desktop::kYesNo, ""), Answer::Yes);
  EXPECT_EQ(desktop.MessageBox("Failed", Desktop::kAbortRetryIgnore, ""), Answer::Retry);
  EXPECT_EQ(desktop.MessageBox("Overwrite?", Desktop::kYesNo, ""), Answer::No);
  EXPECT_EQ(TagBehind(desktop, kAbortRetry), "Retry");
  EXPECT_EQ(TagBehind(desktop, kAbortRetry), "");
  EXPECT_EQ(TagBehind(desktop, kAbortRetry), "Abort");
}

TEST(ConsoleDesktop, PrintsAFormWithItsReportAndTheButtonPressed) {
  terminal::TextOutput out;
  ConsoleDesktop desktop(out);
  TagBehind(desktop, kAbortRetry);
  EXPECT_EQ(out.Text(), "form: Question\n  Error: 13\n  Type mismatch\n  pressed: Abort\n");
}

TEST(ConsoleDesktop, ClosesAFormThatItsButtonDoesNotEnd) {
  terminal::TextOutput out;
  ConsoleDesktop desktop(out, {{}, {"Help"}});
  EXPECT_EQ(TagBehind(desktop, {"Help"}), "");
  EXPECT_EQ(out.Text(), "form: Question\n  Error: 13\n  Type mismatch\n  pressed: Help\n");
}

TEST(ConsoleDesktop, PrintsAddressesAndKnowsNoPlaces) {
  terminal::TextOutput out;
  ConsoleDesktop desktop(out);
  Question form(kNeither);
  EXPECT_GT(desktop.ShellExecuteA("open", "mailto:help@example.org"), 32);
  EXPECT_EQ(out.Text(), "open: mailto:help@example.org\n");
  EXPECT_EQ(desktop.GetWindowPlacement(form), std::nullopt);
  EXPECT_EQ(desktop.GetDesktopPlacement(), std::nullopt);
  EXPECT_FALSE(desktop.SetWindowPlacement(form, {}));
}

TEST(ConsoleDesktop, IsSilentForABeep) {
  terminal::TextOutput out;
  ConsoleDesktop(out).Beep();
  EXPECT_EQ(out.Text(), "");
}

#ifndef _WIN32  // which a program on Windows has no standard error stream of ours for
TEST(ConsoleDesktop, PrintsToTheStandardErrorStreamUnlessToldOtherwise) {
  ::testing::internal::CaptureStderr();
  ConsoleDesktop().MessageBox("text", Desktop::kInformation, "title");
  EXPECT_EQ(::testing::internal::GetCapturedStderr(), "information: title: text\n");
}
#endif

}  // namespace
}  // namespace mirelo::headless
