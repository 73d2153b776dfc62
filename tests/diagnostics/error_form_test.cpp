#include <gmock/gmock.h>

#include <functional>
#include <regex>
#include <string>
#include <vector>

#include "automation/runtime_error.h"
#include "core/product.h"
#include "diagnostics/failing_desktop.h"
#include "diagnostics/frmErrorMessage.h"
#include "host/host.h"
#include "support/test_host.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

const std::string kVersionLine = "\r\nVersion: " + std::string(ProductVersion());
const std::string kRule(20, '-');

// The dialog on a machine where nobody handles errors: one that it raised or reported would be seen.
class ErrorForm : public ::testing::Test {
 protected:
  // Shows the dialog and lets the person act on it.
  void Show(const std::function<void()>& act = [] {}) {
    forms::ShowModal(form, [&](const std::function<bool()>& ended) {
      act();
      if (!ended()) form.Close();
    });
  }
  // What the mail program is asked to open for a report of this text.
  std::string MailOf(const std::string& text) {
    form.txtErrorMessage.Text(text);
    desktop.launched.clear();
    form.SupportMail("help@example.org");
    Show([&] { form.btnSend.UserPress(); });
    return desktop.launched.empty() ? "nothing" : desktop.launched[0];
  }

  FailingDesktop desktop;
  TestHost host = TestHost().Use(desktop);
  host::HostScope installed{host};
  frmErrorMessage form;
};

TEST_F(ErrorForm, HasItsControlsInTheirPanels) {
  struct Row {
    const char* name;
    const char* parent;
  };
  constexpr Row kRows[] = {{"elaControls", ""},
                           {"elaInfo", "elaControls"},
                           {"elaTitle", "elaInfo"},
                           {"elaTitleCaption", "elaTitle"},
                           {"txtErrorMessage", "elaInfo"},
                           {"elaButtons", "elaControls"},
                           {"btnSend", "elaButtons"},
                           {"btnIgnore", "elaButtons"},
                           {"btnRetry", "elaButtons"},
                           {"btnAbort", "elaButtons"}};
  ASSERT_THAT(form.Controls(), SizeIs(std::size(kRows)));
  for (std::size_t i = 0; i < std::size(kRows); ++i) {
    SCOPED_TRACE(kRows[i].name);
    const forms::Control& control = *form.Controls()[i];
    EXPECT_EQ(control.Name(), kRows[i].name);
    EXPECT_EQ(control.Parent() == nullptr ? "" : control.Parent()->Name(), kRows[i].parent);
  }
}

TEST_F(ErrorForm, IsDesignedWithItsTextsAndPictures) {
  EXPECT_EQ(form.Name(), "frmErrorMessage");
  EXPECT_EQ(form.Caption(), "Error");
  EXPECT_EQ(form.elaTitleCaption.Caption(), "An Error occured in ...");
  EXPECT_TRUE(form.txtErrorMessage.MultiLine());
  EXPECT_EQ(form.txtErrorMessage.Text(), "");
  EXPECT_NE(form.elaTitle.Picture(), "");
  const struct {
    const forms::Button& button;
    const char* caption;
  } kButtons[] = {{form.btnSend, "Send to Support"},
                  {form.btnIgnore, "Ignore"},
                  {form.btnRetry, "Retry"},
                  {form.btnAbort, "Abort"}};
  for (const auto& [button, caption] : kButtons) {
    EXPECT_EQ(button.Caption(), caption);
    EXPECT_NE(button.Picture(), "") << caption;
  }
  EXPECT_EQ(form.Tag(), "");
}

TEST_F(ErrorForm, ShowsTheReportAndBehindItTheVersion) {
  form.ErrorMessage("report\r\nof two lines");
  EXPECT_EQ(form.ErrorMessage(), "report\r\nof two lines" + kVersionLine);
  EXPECT_EQ(form.txtErrorMessage.Text(), form.ErrorMessage());
  EXPECT_TRUE(std::regex_match(std::string(ProductVersion()), std::regex("[0-9]+\\.[0-9]+\\.[0-9]+")));
}

TEST_F(ErrorForm, ActivatesInItsOrder) {
  std::vector<std::string> steps;
  form.elaTitleCaption.Appearance.Subscribe(
      [&] { steps.push_back("caption " + form.elaTitleCaption.Caption()); });
  form.btnSend.Appearance.Subscribe(
      [&] { steps.push_back(form.btnSend.Enabled() ? "send on" : "send off"); });
  struct Watching : ScriptedDesktop {
    std::vector<std::string>& steps;
    explicit Watching(std::vector<std::string>& list) : steps(list) {}
    void Beep() override { steps.push_back("beep"); }
    void SetForegroundWindow(forms::Form& shown) override {
      steps.push_back("foreground " + shown.Name() + " with the tag '" + shown.Tag() + "'");
    }
  } watching(steps);
  TestHost watched = TestHost().Use(watching);
  const host::HostScope scope(watched);
  form.Activate();
  EXPECT_THAT(steps, ElementsAre("caption An error occurred in Mirelo", "send off", "beep",
                                 "foreground frmErrorMessage with the tag ''"));
  EXPECT_EQ(form.Tag(), "ABORT");
}

TEST_F(ErrorForm, LetsTheReportBeSentOnlyWithAnAddress) {
  Show([&] {
    EXPECT_FALSE(form.btnSend.Enabled());
    form.btnSend.UserPress();
  });
  EXPECT_THAT(desktop.launched, IsEmpty());
  form.SupportMail("x");
  Show([&] { EXPECT_TRUE(form.btnSend.Enabled()); });
  form.SupportMail("");
  Show([&] { EXPECT_FALSE(form.btnSend.Enabled()); });
}

TEST_F(ErrorForm, AnswersWithTheTagOfTheButtonThatEndsIt) {
  const struct {
    forms::Button& button;
    const char* tag;
  } kAnswers[] = {{form.btnAbort, "ABORT"}, {form.btnRetry, "RETRY"}, {form.btnIgnore, "IGNORE"}};
  for (const auto& [button, tag] : kAnswers) {
    SCOPED_TRACE(tag);
    Show([&, &pressed = button] {
      EXPECT_EQ(form.Tag(), "ABORT") << "what stands while nothing is pressed";
      pressed.UserPress();
      EXPECT_FALSE(form.Visible());
    });
    EXPECT_EQ(form.Tag(), tag);
  }
}

TEST_F(ErrorForm, ClosedByItsCloseBoxHasNoAnswer) {
  Show([&] {
    EXPECT_EQ(form.Tag(), "ABORT");
    form.Close();
  });
  EXPECT_EQ(form.Tag(), "");
}

TEST_F(ErrorForm, IsEndedByNeitherEnterNorEscape) {
  Show([&] {
    form.UserEnter();
    form.UserEscape();
    EXPECT_TRUE(form.Visible());
    EXPECT_EQ(form.Tag(), "ABORT");
  });
}

TEST_F(ErrorForm, SendsTheFramedReportToTheSupportAddressAndStaysOpen) {
  form.SupportMail("help@example.org");
  form.ErrorMessage("1/20/2011\r\n\tError: 13");
  Show([&] {
    form.btnSend.UserPress();
    EXPECT_TRUE(form.Visible());
    EXPECT_EQ(form.Tag(), "ABORT");
    EXPECT_EQ(form.btnSend.Caption(), "Send to Support");
    form.btnSend.UserPress();
    form.btnRetry.UserPress();
  });
  const std::string mail =
      "ShellExecuteA open mailto:help@example.org?subject=An%20error%20occurred%20in%20Mirelo"
      "&body=%0A%0A" +
      kRule + "%0A1%2F20%2F2011%0A%09Error%3A 13%0AVersion%3A " + std::string(ProductVersion()) + "%0A" +
      kRule;
  EXPECT_THAT(desktop.calls, ElementsAre("Beep", "SetForegroundWindow", mail, mail));
  EXPECT_EQ(form.Tag(), "RETRY");
}

// Whoever sends a report can say in it what they were doing.
TEST_F(ErrorForm, SendsWhatAPersonAddedToTheReport) {
  form.SupportMail("help@example.org");
  form.ErrorMessage("report");
  Show([&] {
    form.txtErrorMessage.UserEdit("report, after Go");
    form.btnSend.UserPress();
  });
  ASSERT_THAT(desktop.launched, SizeIs(1));
  EXPECT_THAT(desktop.launched[0], HasSubstr("%0Areport, after Go%0A"));
}

TEST_F(ErrorForm, EscapesOfTheReportWhatAnAddressCannotHold) {
  const struct {
    const char* text;
    const char* escaped;
  } kRows[] = {{"a\r\nb\r\n", "a%0Ab%0A"},
               {"a\tb\t", "a%09b%09"},
               {"a:b:", "a%3Ab%3A"},
               {"a/b/", "a%2Fb%2F"},
               {"a?b?", "a%3Fb%3F"},
               {"a=b=", "a%3Db%3D"},
               {"a&b&", "a%26b%26"},
               {"\r\n\t:/?=&", "%0A%09%3A%2F%3F%3D%26"},
               {"50% of %3A", "50% of %3A"},    // a percent sign stands for itself
               {"a\rb\nc\n\r", "a\rb\nc\n\r"},  // half a line end is none
               {"\r\r\n\n", "\r%0A\n"},
               {"blanks  #+\"'<>;,@", "blanks  #+\"'<>;,@"},
               {"", ""}};
  for (const auto& [text, escaped] : kRows) {
    SCOPED_TRACE(text);
    EXPECT_EQ(MailOf(text),
              "mailto:help@example.org?subject=An%20error%20occurred%20in%20Mirelo&body=%0A%0A" + kRule +
                  "%0A" + escaped + "%0A" + kRule);
  }
}

TEST_F(ErrorForm, PutsTheAddressInAsItStands) {
  form.SupportMail("Help Desk <a&b@example.org>");
  Show([&] { form.btnSend.UserPress(); });
  ASSERT_THAT(desktop.launched, SizeIs(1));
  EXPECT_EQ(desktop.launched[0].rfind("mailto:Help Desk <a&b@example.org>?subject=", 0), 0U);
}

TEST_F(ErrorForm, GoesOnWhereTheDesktopFails) {
  for (const char* const fails : {"Beep", "SetForegroundWindow", "ShellExecuteA"}) {
    SCOPED_TRACE(fails);
    frmErrorMessage shown;
    shown.SupportMail("help@example.org");
    desktop.failing = {fails};
    desktop.calls.clear();
    EXPECT_NO_THROW(shown.Activate());
    EXPECT_TRUE(shown.btnSend.Enabled());
    EXPECT_EQ(shown.Tag(), "ABORT");
    shown.Show();
    EXPECT_NO_THROW(shown.btnSend.UserPress());
    EXPECT_TRUE(shown.Visible());
    EXPECT_THAT(desktop.calls, SizeIs(3)) << "each call was made, whether or not the one before it failed";
  }
  EXPECT_THAT(desktop.reports, IsEmpty());
  EXPECT_THAT(desktop.boxes, IsEmpty());
}

TEST_F(ErrorForm, DoesNotMindWhatTheShellReports) {
  desktop.shell_result = 8;
  EXPECT_NE(MailOf("report"), "nothing");
}

TEST_F(ErrorForm, ShowsOnAMachineWithoutADesktop) {
  TestHost bare;
  const host::HostScope scope(bare);
  form.SupportMail("help@example.org");
  EXPECT_NO_THROW(Show([&] {
    EXPECT_EQ(form.Tag(), "ABORT");
    form.btnSend.UserPress();
    form.btnIgnore.UserPress();
  }));
  EXPECT_EQ(form.Tag(), "IGNORE");
}

// A view that breaks down while the form changes under it.
TEST_F(ErrorForm, GoesOnWhereAViewFails) {
  form.elaTitleCaption.Appearance.Subscribe([] { throw Errors::OutOfMemory(); });
  form.txtErrorMessage.Appearance.Subscribe([] { throw Errors::OutOfMemory(); });
  EXPECT_NO_THROW(form.ErrorMessage("report"));
  EXPECT_EQ(form.ErrorMessage(), "report" + kVersionLine);
  EXPECT_NO_THROW(form.Activate());
  EXPECT_EQ(desktop.beeps, 1);
  EXPECT_EQ(form.Tag(), "ABORT");
}

}  // namespace
}  // namespace mirelo::testing
