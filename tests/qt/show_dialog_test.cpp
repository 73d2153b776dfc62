// mirelo dialog on a screen: Qt is started, the dialog shown, the workbook kept.

#include <gmock/gmock.h>

#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTableView>
#include <QTimer>
#include <clocale>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>

#include "adapters/qt/application.h"
#include "adapters/qt/qt_loop.h"
#include "adapters/sodium/sodium_vault.h"
#include "adapters/workbook/spreadsheet.h"
#include "app/commands/open_command.h"
#include "app/dialog/dialog_on_screen.h"
#include "app/dialog/show_dialog.h"
#include "app/options.h"
#include "app/session.h"
#include "app/windows.h"
#include "app/workbook/last_workbook.h"
#include "day/working_day.h"
#include "host/excel/application.h"
#include "host/excel/range.h"
#include "host/excel/worksheet.h"
#include "host/excel/worksheets.h"
#include "qt/person.h"
#include "quotetracker/login.h"
#include "quotetracker/server.h"
#include "support/environment_variable.h"
#include "support/temp_directory.h"
#include "terminal/standard_streams.h"

namespace mirelo::app {
namespace {

using qt::Person;

class ProgramOnScreen : public ::testing::Test {
 protected:
  ProgramOnScreen() {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    options.registry = folder / "registry.db";
    options.show_windows = ShowWindows;
  }

  struct Ended {
    int code;
    std::string out;
  };
  // Shows it to a person who does this when it is up.
  Ended Show(
      const std::filesystem::path& workbook, std::function<void()> act,
      const std::function<void(Person&)>& then = [](Person&) {}) {
    const qt::Application application;
    Session session(options);
    session.host().OverrideHttpPort(server.HttpPort());
    const auto screen = ShowWindows(session.host());
    Person person(dynamic_cast<qt::QtLoop&>(session.host().loop()));
    person.Does("use the dialog", std::move(act));
    then(person);
    ::testing::internal::CaptureStdout();
    const int code = ShowDialog(session, *screen, workbook);
    terminal::Out().Flush();
    return {code, ::testing::internal::GetCapturedStdout()};
  }

  static void FillInAndGo() {
    Person::Click(Person::Find("txtTicker"));
    Person::Type("MSFT");
    Person::Press(Qt::Key_Return);
    Person::Click(Person::Find("ButGo"));
  }

  testing::TempDirectory folder;
  const testing::EnvironmentVariable state{"XDG_STATE_HOME", (folder / "state").c_str()};
  GlobalOptions options;
  quotetracker::Server server;
};

TEST_F(ProgramOnScreen, TellsThatNothingWasCommitted) {
  const auto ended = Show(folder / "book.xlsx", [] { Person::Press(Qt::Key_Escape); });
  EXPECT_EQ(ended.code, 1);
  EXPECT_EQ(ended.out, "2\n");
  EXPECT_FALSE(std::filesystem::exists(folder / "book.xlsx"));
}

TEST_F(ProgramOnScreen, KeepsTheWorkbookThatGoHasFilled) {
  const auto file = folder / "book.xlsx";
  const auto ended = Show(file, FillInAndGo);
  EXPECT_EQ(ended.code, 0);
  EXPECT_EQ(ended.out, "78\n");
  ASSERT_TRUE(std::filesystem::exists(file));
  EXPECT_NO_THROW(workbook::Spreadsheet::Open(file));
}

TEST_F(ProgramOnScreen, AddsEachTickerOfAListThatWasTyped) {
  const auto ended = Show(folder / "book.xlsx", [] {
    Person::Click(Person::Find("txtTicker"));
    Person::Type("ge, F T");
    Person::Press(Qt::Key_Return);
    Person::Click(Person::Find("ButGo"));
  });
  EXPECT_EQ(ended.code, 0);
  const auto sheet =
      workbook::Spreadsheet::Open(folder / "book.xlsx").Application()->Worksheets()->Item("Dovanta2_Quotes");
  for (const auto& [row, ticker] : {std::pair{3, "GE"}, {4, "F"}, {5, "T"}})
    EXPECT_EQ(sheet->Cells(row, 1)->Value(), Variant(ticker));
}

// The box comes up while the click on Go is on its way, when a person of this program's kind of application
// does nothing; so a timer of Qt's answers it.
TEST_F(ProgramOnScreen, AsksBeforeGoWhatItCosts) {
  std::string question;
  const auto answer_no = [&] {
    auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (box == nullptr) return;
    question = box->text().toStdString();
    box->button(QMessageBox::No)->click();
  };
  const auto type_and_go = [&] {
    Person::Click(Person::Find("txtTicker"));
    Person::Type("TWELVE_CHARS");
    Person::Press(Qt::Key_Return);
    auto* const timer = new QTimer(QApplication::instance());
    QObject::connect(timer, &QTimer::timeout, answer_no);
    timer->start(20);
    Person::Click(Person::Find("ButGo"));
    delete timer;
  };
  const auto ended = Show(folder / "book.xlsx", type_and_go, [](Person& person) {
    person.Does("leave the dialog, which is still there", [] { Person::Press(Qt::Key_Escape); });
  });
  EXPECT_EQ(question,
            "Go will cost this:\n\nTWELVE_CHARS will be missing when the dialog opens again: it reads "
            "tickers of up "
            "to 11 characters.\n\nGo on?");
  EXPECT_EQ(ended.out, "2\n");
  EXPECT_FALSE(std::filesystem::exists(folder / "book.xlsx"));
}

TEST_F(ProgramOnScreen, SaysInWhichFileItSaves) {
  const auto file = folder / "book.xlsx";
  Show(file, [&] {
    EXPECT_EQ(Person::Find("TopLineText")->toolTip().toStdString(),
              "Go saves in " + file.string() + " (new)");
    Person::Press(Qt::Key_Escape);
  });
}

TEST_F(ProgramOnScreen, IsRememberedForTheMenu) {
  Show(folder / "book.xlsx", FillInAndGo);
  EXPECT_EQ(LastWorkbook().Recall(), folder / "book.xlsx");
}

// What the menu's entry starts.
class MenuEntry : public ProgramOnScreen {
 protected:
  bool Open(const std::function<void(Person&)>& acts) {
    const qt::Application application;
    Session session(options);
    session.host().OverrideHttpPort(server.HttpPort());
    const auto screen = ShowWindows(session.host());
    Person person(dynamic_cast<qt::QtLoop&>(session.host().loop()));
    acts(person);
    return DialogOnScreen(session, *screen, LastWorkbook()).Run(std::nullopt);
  }
  static QFileDialog* FileBox() { return qobject_cast<QFileDialog*>(QApplication::activeModalWidget()); }
  static QAbstractButton* ButtonOf(const QMessageBox& box, const char* text) {
    for (QAbstractButton* button : box.buttons()) {
      if (button->text().remove(QLatin1Char('&')) == QLatin1String(text)) return button;
    }
    throw std::runtime_error(std::string("no button ") + text);
  }
  static void PressesInBox(Person& person, const char* button) {
    person.Waits("a box", [] { return Person::Box() != nullptr; });
    person.Does("answer it", [button] { Person::Click(ButtonOf(*Person::Box(), button)); });
  }
  static void WaitsForDialog(Person& person) {
    person.Waits("the dialog", [] {
      return Person::TopWindow() != nullptr && Person::TopWindow()->windowTitle() == QLatin1String("Dovanta");
    });
  }
  static void NamesFile(Person& person, const std::filesystem::path& file) {
    person.Waits("the box for files", [] { return FileBox() != nullptr; });
    person.Does("name the file", [file] {
      FileBox()->findChild<QLineEdit*>(QLatin1String("fileNameEdit"))->selectAll();
      Person::Type(file.string());
      Person::Press(Qt::Key_Return);
    });
  }
};

TEST_F(MenuEntry, LeadsANewcomerToASavedWorkbookAndFindsItNextTime) {
  const auto file = folder / "mine";
  EXPECT_TRUE(Open([&](Person& person) {
    PressesInBox(person, "New Workbook...");
    NamesFile(person, file);
    WaitsForDialog(person);
    person.Does("fill it in", FillInAndGo);
    person.Answers(
        "The quote table is saved in \"" + file.string() +
            ".xlsx\".\n\nTo have quotes come into it, run this in a terminal:\nmirelo run --workbook '" +
            file.string() + ".xlsx'",
        "OK");
  }));
  EXPECT_FALSE(Open([&](Person& person) {
    WaitsForDialog(person);
    person.Does("look and cancel", [] {
      EXPECT_EQ(Person::Find<QTableView>("FG")->model()->index(0, 0).data(), QLatin1String("MSFT"));
      Person::Press(Qt::Key_Escape);
    });
  }));
}

// The boxes come up while the click on the button is on its way, so a timer of Qt's answers them.
TEST_F(MenuEntry, TakesAnotherWorkbookAtTheButtonAboveTheDialog) {
  workbook::Spreadsheet::New().Save(folder / "one.xlsx");
  workbook::Spreadsheet::New().Save(folder / "two.xlsx");
  LastWorkbook().Remember(folder / "one.xlsx");
  const auto answer = [&] {
    if (QMessageBox* const box = Person::Box()) return ButtonOf(*box, "Open Workbook...")->click();
    if (QFileDialog* const box = FileBox()) {
      box->findChild<QLineEdit*>(QLatin1String("fileNameEdit"))
          ->setText(QString::fromStdString((folder / "two.xlsx").string()));
      QMetaObject::invokeMethod(box, "accept");
    }
  };
  EXPECT_FALSE(Open([&](Person& person) {
    WaitsForDialog(person);
    person.Does("press the button", [&] {
      QTimer timer;
      QObject::connect(&timer, &QTimer::timeout, answer);
      timer.start(20);
      Person::Click(Person::Find("TopLineButton"));
    });
    person.Waits("the dialog of the other", [&] {
      auto* const top = Person::TopWindow();
      auto* const line = top == nullptr ? nullptr : top->findChild<QWidget*>(QLatin1String("TopLineText"));
      return line != nullptr &&
             line->toolTip().toStdString() == "Go saves in " + (folder / "two.xlsx").string();
    });
    person.Does("cancel", [] { Person::Press(Qt::Key_Escape); });
  }));
  EXPECT_EQ(LastWorkbook().Recall(), folder / "two.xlsx");
}

TEST_F(MenuEntry, EndsQuietlyWhenItIsCancelled) {
  EXPECT_FALSE(Open([&](Person& person) { PressesInBox(person, "Cancel"); }));
}

// The box waits in a loop of its own, so a timer of Qt's answers it.
TEST_F(MenuEntry, TellsInAWindowWhyItCannotBegin) {
  options.registry = folder.path();  // a folder
  options.show_alone = ShowAlone;
  std::string told;
  const qt::Application application;
  QTimer timer;
  QObject::connect(&timer, &QTimer::timeout, [&told] {
    auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (box == nullptr) return;
    told = box->text().toStdString();
    box->button(QMessageBox::Ok)->click();
  });
  timer.start(20);
  EXPECT_EQ(OpenOnScreen(options, std::nullopt), 1);
  EXPECT_THAT(told, ::testing::AllOf(::testing::StartsWith("Mirelo cannot go on: "),
                                     ::testing::HasSubstr(folder.path().string())));
}

// The day that Go begins in a window, up to its first quote.
class DayFromAWindow : public ProgramOnScreen {
 protected:
  DayFromAWindow() {
    screen = ShowWindows(session.host());
    session.host().OverrideHttpPort(server.HttpPort());
    session.host().Override("SocketPort", std::to_string(server.StreamPort()));
  }

  void StreamFrom(const std::string& source) {
    sodium::SodiumVault vault(folder.path());
    const quotetracker::Credentials known;
    vault.Set({.name = known.app_name, .secret = known.app_secret});
    session.host().KeepCredentialsIn(folder.path());
    session.host().Override("Seconds", "0");
    session.host().Override("ComQuoteSource", source);
  }

  void ExpectQuotesAfter(std::int32_t result) {
    day::WorkingDay day(session.host().loop(), session.host().observed_sockets(), session.replies(),
                        spreadsheet.Application());
    Person person(dynamic_cast<qt::QtLoop&>(session.host().loop()));
    person.Does("use the dialog", FillInAndGo);
    ASSERT_EQ(day.ShowDialog(), result);
    day.Start();
    day.RunUntil([&] { return day.Written() > 0; });
    day.Stop();
    ASSERT_EQ(day.Tables().Rows().size(), 1U);
    EXPECT_EQ(day.Tables().Rows()[0][0].ToText(), "MSFT");
    EXPECT_FALSE(day.Tables().Rows()[0][1].IsNothing());
    EXPECT_FALSE(
        spreadsheet.Application()->Worksheets()->Item("Dovanta2_Quotes")->Cells(3, 2)->Value().IsEmpty());
  }

  const qt::Application application;
  Session session{options};
  std::unique_ptr<Screen> screen;
  workbook::Spreadsheet spreadsheet = workbook::Spreadsheet::New();
};

TEST_F(DayFromAWindow, AsksForQuotes) { ExpectQuotesAfter(78); }

TEST_F(DayFromAWindow, StreamsQuotes) {
  StreamFrom("Alpstein Finance (delayed)");
  ExpectQuotesAfter(77);
}

TEST_F(ProgramOnScreen, LeavesNumbersInTheLocaleOfTheProgram) {
  ASSERT_EQ(qt::WhyNoWindows(), "");
  const qt::Application application;
  EXPECT_EQ(std::to_string(1.5), "1.500000");
  EXPECT_STREQ(std::setlocale(LC_NUMERIC, nullptr), "C");
}

}  // namespace
}  // namespace mirelo::app
