#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <vector>

#include "forms/button.h"
#include "forms/form.h"
#include "forms/text_box.h"
#include "support/error_number.h"
#include "support/manual_clock.h"
#include "support/recording_system.h"
#include "support/scripted_desktop.h"
#include "support/temp_directory.h"
#include "support/test_host.h"

namespace mirelo::testing {
namespace {

using Answer = host::Desktop::Answer;

// A form with the parts of the error dialog that the desktop looks at.
std::string ShowReport(ScriptedDesktop& desktop, const std::string& report) {
  forms::Form form("frmErrorMessage", "Error");
  const forms::TextBox text(form, "txtErrorMessage", nullptr, report);
  const forms::Button send(form, "btnSend", nullptr, "Send");
  forms::Button ignore(form, "btnIgnore", nullptr, "Ignore");
  forms::Button abort(form, "btnAbort", nullptr, "Abort");
  ignore.Click.Subscribe([&] { form.Tag("IGNORE"), form.Hide(); });
  abort.Click.Subscribe([&] { form.Tag("ABORT"), form.Hide(); });
  desktop.ShowModal(form);
  return form.Tag();
}

TEST(ScriptedDesktop, RecordsWhatWasShown) {
  ScriptedDesktop desktop;
  desktop.MessageBox("text", host::Desktop::kCritical, "title");
  ShowReport(desktop, "report");
  desktop.Beep();
  EXPECT_EQ(desktop.boxes, (std::vector<ScriptedDesktop::Box>{{"text", 16, "title"}}));
  ASSERT_EQ(desktop.reports.size(), 1u);
  EXPECT_EQ(desktop.reports[0].text, "report");
  EXPECT_TRUE(desktop.reports[0].can_be_sent);
  EXPECT_EQ(desktop.beeps, 1);
}

TEST(ScriptedDesktop, AnswersInOrderAndThenByDefault) {
  ScriptedDesktop desktop;
  desktop.answers = {Answer::Retry};
  desktop.report_answers = {"IGNORE"};
  EXPECT_EQ(desktop.MessageBox("", host::Desktop::kAbortRetryIgnore, ""), Answer::Retry);
  EXPECT_EQ(desktop.MessageBox("", host::Desktop::kAbortRetryIgnore, ""), Answer::Abort);
  EXPECT_EQ(desktop.MessageBox("", host::Desktop::kYesNo, ""), Answer::No);
  EXPECT_EQ(desktop.MessageBox("", host::Desktop::kInformation, ""), Answer::Ok);
  EXPECT_EQ(ShowReport(desktop, ""), "IGNORE");
  EXPECT_EQ(ShowReport(desktop, ""), "ABORT");
}

TEST(ScriptedDesktop, LetsTheProgramGoOnWhileABoxIsOpen) {
  ScriptedDesktop desktop;
  int opened = 0;
  desktop.while_open = [&] { ++opened; };
  desktop.MessageBox("", 0, "");
  ShowReport(desktop, "");
  EXPECT_EQ(opened, 2);
}

TEST(ScriptedDesktop, LetsThePersonActOnAFormAndClosesWhatIsLeftOpen) {
  ScriptedDesktop desktop;
  forms::Form form("frmOther", "Other");
  desktop.ShowModal(form);
  EXPECT_FALSE(form.Visible());
  desktop.person["frmOther"] = [](forms::Form& shown) { shown.Tag("seen"), shown.Hide(); };
  desktop.ShowModal(form);
  EXPECT_EQ(form.Tag(), "seen");
  EXPECT_EQ(desktop.forms, (std::vector<std::string>{"frmOther", "frmOther"}));
}

TEST(RecordingSystem, FailsForTheGivenRecordSizes) {
  RecordingSystem system;
  system.platform = 2;
  system.failing_record_sizes = {156};
  EXPECT_EQ(system.GetVersionExA(156), std::nullopt);
  EXPECT_EQ(system.GetVersionExA(148), 2);
  EXPECT_EQ(system.version_record_sizes, (std::vector<std::int32_t>{156, 148}));
}

TEST(RecordingSystem, KeepsItsEventLog) {
  RecordingSystem system;
  system.LogEvent("failure", 1);
  EXPECT_EQ(system.events, (std::vector<RecordingSystem::LoggedEvent>{{"failure", 1}}));
}

TEST(TempDirectory, IsItsOwnAndGoneAtTheEnd) {
  std::filesystem::path path;
  {
    const TempDirectory first;
    const TempDirectory second;
    EXPECT_NE(first.path(), second.path());
    path = first.path();
    std::filesystem::create_directories(first / "a/b");
    std::ofstream(first / "a/b/file") << "content";
    EXPECT_TRUE(std::filesystem::exists(path / "a/b/file"));
  }
  EXPECT_FALSE(std::filesystem::exists(path));
}

TEST(TestHost, HandsOutTheGivenPortsAndNoOthers) {
  ManualClock clock;
  TestHost host;
  host.Use(clock);
  EXPECT_EQ(&host.clock(), &clock);
  EXPECT_EQ(NumberOf([&] { host.desktop(); }), 445);
  EXPECT_EQ(NumberOf([&] { host.registry(); }), 445);
}

TEST(TestHost, IsCurrentWhileInstalled) {
  EXPECT_EQ(NumberOf([] { host::Host::Current(); }), 91);
  TestHost outer;
  const host::HostScope outer_scope(outer);
  {
    TestHost inner;
    const host::HostScope inner_scope(inner);
    EXPECT_EQ(&host::Host::Current(), &inner);
  }
  EXPECT_EQ(&host::Host::Current(), &outer);
}

}  // namespace
}  // namespace mirelo::testing
