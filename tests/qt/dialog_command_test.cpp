// mirelo dialog on a screen: Qt is started, the dialog shown, the workbook kept.

#include "app/dialog_command.h"

#include <gmock/gmock.h>

#include <CLI/CLI.hpp>
#include <optional>

#include "adapters/qt/application.h"
#include "adapters/qt/qt_loop.h"
#include "adapters/workbook/spreadsheet.h"
#include "app/options.h"
#include "app/session.h"
#include "qt/person.h"
#include "quotetracker/server.h"
#include "support/temp_directory.h"

namespace mirelo::app {
namespace {

using qt::Person;

class DialogCommandOnScreen : public ::testing::Test {
 protected:
  DialogCommandOnScreen() {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    options.registry = folder / "registry.db";
  }

  struct Ended {
    int code;
    std::string out;
  };
  // Runs the command with a person who does this when the dialog is up.
  Ended Run(std::vector<std::string> arguments, std::function<void()> act) {
    CLI::App program;
    DialogCommand command(program, options);
    arguments.insert(arguments.begin(), "dialog");
    std::reverse(arguments.begin(), arguments.end());
    program.parse(arguments);

    Session session(options);
    session.host().OverrideHttpPort(server.HttpPort());
    session.host().ShowWindows();
    Person person(dynamic_cast<qt::QtLoop&>(session.host().loop()));
    person.Does("use the dialog", std::move(act));
    ::testing::internal::CaptureStdout();
    const int code = command.Show(session);
    return {code, ::testing::internal::GetCapturedStdout()};
  }

  static void FillInAndGo() {
    Person::Click(Person::Find("txtTicker"));
    Person::Type("MSFT");
    Person::Press(Qt::Key_Return);
    Person::Click(Person::Find("ButGo"));
  }

  testing::TempDirectory folder;
  GlobalOptions options;
  quotetracker::Server server;
};

TEST_F(DialogCommandOnScreen, TellsThatNothingWasCommitted) {
  const auto ended =
      Run({"--workbook", (folder / "book.xlsx").string()}, [] { Person::Press(Qt::Key_Escape); });
  EXPECT_EQ(ended.code, 1);
  EXPECT_EQ(ended.out, "2\n");
  EXPECT_FALSE(std::filesystem::exists(folder / "book.xlsx"));
}

TEST_F(DialogCommandOnScreen, KeepsTheWorkbookThatGoHasFilled) {
  const auto file = folder / "book.xlsx";
  const auto ended = Run({"--workbook", file.string()}, FillInAndGo);
  EXPECT_EQ(ended.code, 0);
  EXPECT_EQ(ended.out, "78\n");
  ASSERT_TRUE(std::filesystem::exists(file));
  EXPECT_NO_THROW(workbook::Spreadsheet::Open(file));
}

TEST_F(DialogCommandOnScreen, NeedsNoWorkbook) {
  const auto ended = Run({}, FillInAndGo);
  EXPECT_EQ(ended.out, "78\n");
}

TEST_F(DialogCommandOnScreen, LeavesNumbersInTheLocaleOfTheProgram) {
  ASSERT_EQ(qt::WhyNoWindows(), "");
  const qt::Application application;
  EXPECT_EQ(std::to_string(1.5), "1.500000");
  EXPECT_STREQ(std::setlocale(LC_NUMERIC, nullptr), "C");
}

}  // namespace
}  // namespace mirelo::app
