// The settings dialog as the menu's entry shows it: which workbook it is shown for, where that comes from,
// and what is told when something fails.

#include "app/dialog/dialog_on_screen.h"

#include <gmock/gmock.h>

#include <fstream>
#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "adapters/workbook/files.h"
#include "adapters/workbook/spreadsheet.h"
#include "app/options.h"
#include "app/scripted_screen.h"
#include "app/session.h"
#include "app/workbook/last_workbook.h"
#include "automation/runtime_error.h"
#include "dialog/frmMirelo.h"
#include "host/excel/application.h"
#include "host/excel/range.h"
#include "host/excel/workbook.h"
#include "host/excel/worksheet.h"
#include "host/excel/worksheets.h"
#include "person/attended_desktop.h"
#include "quotetracker/server.h"
#include "support/temp_directory.h"
#include "terminal/output.h"

namespace mirelo::testing {
namespace {

namespace fs = std::filesystem;
using ::testing::AllOf;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

constexpr const char* kNewButton = "New Workbook...";
constexpr const char* kOpenButton = "Open Workbook...";
constexpr const char* kAgainButton = "Try Again";

class OnScreen : public ::testing::Test {
 protected:
  OnScreen() { options.registry = folder / "registry.db"; }

  // Runs it with somebody who does the next of these each time the dialog is shown.
  bool Run(const std::optional<fs::path>& file = std::nullopt) {
    app::Session session(options);
    session.host().OverrideHttpPort(server.HttpPort());
    auto desktop = std::make_unique<AttendedDesktop>(printed);
    desktop->Attend("frmMirelo", [this](forms::Form& form) {
      ++shown;
      auto& dialog = dynamic_cast<frmMirelo&>(form);
      if (acts.empty()) return dialog.ButCancel.UserPress();
      const auto act = std::move(acts.front());
      acts.pop_front();
      act(dialog);
    });
    session.host().ShowOn(std::move(desktop));
    return app::DialogOnScreen(session, screen, last).Run(file);
  }

  static void AddAndGo(frmMirelo& dialog) {
    dialog.txtTicker.UserEdit("MSFT");
    dialog.ButAdd.UserPress();
    dialog.ButGo.UserPress();
  }
  // A workbook with "mine" in its first cell.
  static void Make(const fs::path& file) {
    auto workbook = workbook::Spreadsheet::New();
    workbook.Application()->Range("A1")->Value("mine");
    workbook.Save(file);
  }
  static std::string TickerIn(const fs::path& file) {
    return workbook::Spreadsheet::Open(file)
        .Application()
        ->Worksheets()
        ->Item("Dovanta2_Quotes")
        ->Cells(3, 1)
        ->Value()
        .ToText();
  }

  TempDirectory folder;
  quotetracker::Server server;
  app::GlobalOptions options;
  terminal::TextOutput printed;
  ScriptedScreen screen;
  app::LastWorkbook last{folder / "state/last"};
  std::deque<std::function<void(frmMirelo&)>> acts;
  int shown = 0;
};

TEST_F(OnScreen, AsksANewcomerForAWorkbookAndKeepsTheTickersInIt) {
  screen.presses = {kNewButton};
  screen.names = {folder / "first"};
  acts = {AddAndGo};
  EXPECT_TRUE(Run());
  EXPECT_THAT(screen.asked, ElementsAre(HasSubstr("an .xlsx file")));
  EXPECT_THAT(screen.proposed, ElementsAre("quotes.xlsx"));
  EXPECT_THAT(screen.lines, ElementsAre("Go saves in " + (folder / "first.xlsx").string() + " (new)"));
  EXPECT_EQ(TickerIn(folder / "first.xlsx"), "MSFT");
  EXPECT_EQ(last.Recall(), folder / "first.xlsx");
  EXPECT_THAT(
      screen.told,
      ElementsAre(AllOf(HasSubstr("saved in \"" + (folder / "first.xlsx").string() + "\""),
                        HasSubstr("mirelo run --workbook '" + (folder / "first.xlsx").string() + "'"))));
}

TEST_F(OnScreen, OpensTheLastWorkbookWithoutAQuestion) {
  Make(folder / "last.xlsx");
  last.Remember(folder / "last.xlsx");
  EXPECT_FALSE(Run());
  EXPECT_EQ(shown, 1);
  EXPECT_THAT(screen.asked, IsEmpty());
  EXPECT_THAT(screen.told, IsEmpty());
  EXPECT_THAT(screen.lines, ElementsAre("Go saves in " + (folder / "last.xlsx").string()));
}

TEST_F(OnScreen, FindsTheTickersAgainNextTime) {
  acts = {AddAndGo, [](frmMirelo& dialog) {
            EXPECT_EQ(dialog.FG.Rows(), 2);
            dialog.ButClose.UserPress();
          }};
  screen.presses = {kNewButton};
  screen.names = {folder / "q.xlsx"};
  EXPECT_TRUE(Run());
  EXPECT_FALSE(Run());
  EXPECT_EQ(shown, 2);
}

TEST_F(OnScreen, TakesTheFileThatItIsGivenAndRemembersIt) {
  Make(folder / "last.xlsx");
  Make(folder / "given.xlsx");
  last.Remember(folder / "last.xlsx");
  EXPECT_FALSE(Run(folder / "given.xlsx"));
  EXPECT_THAT(screen.lines, ElementsAre("Go saves in " + (folder / "given.xlsx").string()));
  EXPECT_EQ(last.Recall(), folder / "given.xlsx");
}

TEST_F(OnScreen, EndsQuietlyWhenItIsCancelled) {
  screen.presses = {""};
  EXPECT_FALSE(Run());
  EXPECT_EQ(shown, 0);
  screen.presses = {kNewButton, kOpenButton, ""};
  screen.names = {"", ""};  // back to the question each time
  EXPECT_FALSE(Run());
  EXPECT_EQ(shown, 0);
  EXPECT_THAT(screen.told, IsEmpty());
  EXPECT_EQ(last.Recall(), std::nullopt);
}

TEST_F(OnScreen, RemembersNoWorkbookThatWasNotMade) {
  screen.presses = {kNewButton};
  screen.names = {folder / "q.xlsx"};
  EXPECT_FALSE(Run()) << "the dialog is cancelled";
  EXPECT_EQ(last.Recall(), std::nullopt);
  EXPECT_FALSE(fs::exists(folder / "q.xlsx"));
}

TEST_F(OnScreen, TellsOfALastWorkbookThatIsGoneAndMakesNone) {
  last.Remember(folder / "gone.xlsx");
  screen.presses = {kAgainButton, ""};
  EXPECT_FALSE(Run());
  EXPECT_EQ(shown, 0);
  ASSERT_EQ(screen.asked.size(), 2U);
  EXPECT_THAT(screen.asked[0],
              StartsWith("There is no \"" + (folder / "gone.xlsx").string() + "\" any more."));
  EXPECT_FALSE(fs::exists(folder / "gone.xlsx"));

  Make(folder / "other.xlsx");
  screen.presses = {kOpenButton};
  screen.names = {folder / "other.xlsx"};
  EXPECT_FALSE(Run());
  EXPECT_EQ(shown, 1);
  EXPECT_EQ(screen.proposed.back(), folder.path().string()) << "it begins where the other one was";
}

TEST_F(OnScreen, SaysWhyAWorkbookCannotBeReadAndAsksForAnother) {
  std::ofstream(folder / "damaged.xlsx") << "no workbook";
  screen.presses = {""};
  EXPECT_FALSE(Run(folder / "damaged.xlsx"));
  EXPECT_THAT(screen.asked, ElementsAre(AllOf(HasSubstr((folder / "damaged.xlsx").string()),
                                              HasSubstr("Which workbook is it to be?"))));
  EXPECT_EQ(last.Recall(), std::nullopt);
}

TEST_F(OnScreen, SaysWhoHoldsAWorkbookAndTriesAgainWhenItIsFree) {
  Make(folder / "held.xlsx");
  const fs::path lock = folder / ".~lock.held.xlsx#";
  std::ofstream(lock) << ",";
  screen.presses = {kAgainButton, kAgainButton};
  struct Freed : ScriptedScreen {
    fs::path lock;
    std::optional<std::size_t> Ask(Mood mood, const std::string& text,
                                   const std::vector<std::string>& choices) override {
      if (asked.size() == 1) fs::remove(lock);
      return ScriptedScreen::Ask(mood, text, choices);
    }
  } freed;
  freed.lock = lock;
  freed.presses = screen.presses;
  app::Session session(options);
  auto desktop = std::make_unique<AttendedDesktop>(printed);
  desktop->Attend("frmMirelo", [this](forms::Form& form) {
    ++shown;
    form.Close();
  });
  session.host().ShowOn(std::move(desktop));
  EXPECT_FALSE(app::DialogOnScreen(session, freed, last).Run(folder / "held.xlsx"));
  ASSERT_EQ(freed.asked.size(), 2U);
  EXPECT_THAT(freed.asked[0], HasSubstr("another program has it open"));
  EXPECT_EQ(shown, 1);
}

TEST_F(OnScreen, SaysWhatToDoWhereAFolderIsMissingInTheWordsOfWindows) {
  screen.presses = {kNewButton, ""};
  screen.names = {folder / "missing" / "q.xlsx"};
  EXPECT_FALSE(Run());
  ASSERT_EQ(screen.asked.size(), 2U);
  EXPECT_THAT(screen.asked[1], HasSubstr("Make its folder, or choose another workbook."));
}

TEST_F(OnScreen, RefusesFilesThatAreNoWorkbooks) {
  screen.presses = {""};
  EXPECT_FALSE(Run(folder / "table.csv"));
  EXPECT_THAT(screen.asked, ElementsAre(HasSubstr("only .xlsx files can")));
  screen.presses = {kNewButton};
  screen.names = {folder / "table.ods", folder / "Q3.2026"};
  EXPECT_FALSE(Run());
  EXPECT_THAT(screen.told, ElementsAre(HasSubstr("only .xlsx files can")));
  EXPECT_THAT(screen.lines, ElementsAre(HasSubstr("Q3.2026.xlsx (new)")));
}

TEST_F(OnScreen, AsksBeforeANewWorkbookTakesTheNameOfOneThatIsThere) {
  Make(folder / "mine.xlsx");
  screen.presses = {kNewButton, "Choose Another Name...", "Take It"};
  screen.names = {folder / "mine", folder / "mine"};
  acts = {AddAndGo};
  EXPECT_TRUE(Run());
  EXPECT_THAT(screen.asked, Contains(HasSubstr("is there already. Take it as it is?")).Times(2));
  EXPECT_EQ(TickerIn(folder / "mine.xlsx"), "MSFT");
  const auto sheets = workbook::Spreadsheet::Open(folder / "mine.xlsx").Application()->Worksheets();
  bool has_mine = false;
  for (std::int32_t i = 1; i <= sheets->Count(); ++i)
    has_mine = has_mine || sheets->Item(i)->Range("A1")->Value() == Variant("mine");
  EXPECT_TRUE(has_mine) << "its own sheets stay";
}

TEST_F(OnScreen, TakesAnotherWorkbookFromTheLineAboveTheDialog) {
  Make(folder / "one.xlsx");
  Make(folder / "two.xlsx");
  const auto take_another = [this](frmMirelo& dialog) {
    dialog.txtTicker.UserEdit("IBM");
    dialog.ButAdd.UserPress();
    screen.line.press();
  };
  acts = {take_another, [](frmMirelo& dialog) {
            EXPECT_EQ(dialog.FG.Rows(), 1) << "nothing of the other's";
            AddAndGo(dialog);
          }};
  screen.presses = {kOpenButton};
  screen.names = {folder / "two.xlsx"};
  EXPECT_TRUE(Run(folder / "one.xlsx"));
  EXPECT_THAT(screen.proposed, ElementsAre(folder.path().string()));
  EXPECT_THAT(screen.asked, ElementsAre(HasSubstr("What was changed in it and not stored with Go goes.")));
  EXPECT_THAT(screen.lines, ElementsAre("Go saves in " + (folder / "one.xlsx").string(),
                                        "Go saves in " + (folder / "two.xlsx").string()));
  EXPECT_EQ(TickerIn(folder / "two.xlsx"), "MSFT");
  EXPECT_EQ(last.Recall(), folder / "two.xlsx");
}

TEST_F(OnScreen, StaysWithItsWorkbookWhenNoOtherIsChosen) {
  Make(folder / "one.xlsx");
  acts = {[this](frmMirelo& dialog) {
    screen.line.press();
    EXPECT_TRUE(dialog.Visible());
    AddAndGo(dialog);
  }};
  screen.presses = {""};
  EXPECT_TRUE(Run(folder / "one.xlsx"));
  EXPECT_EQ(TickerIn(folder / "one.xlsx"), "MSFT");
}

TEST_F(OnScreen, SavesInAnotherFileWhatItsOwnDoesNotTake) {
  Make(folder / "q.xlsx");
  acts = {[this](frmMirelo& dialog) {
    Make(folder / "q.xlsx");  // another program saves
    AddAndGo(dialog);
  }};
  screen.presses = {"Save as Another Workbook..."};
  screen.names = {folder / "q.xlsx", folder / "saved"};
  EXPECT_TRUE(Run(folder / "q.xlsx"));
  EXPECT_THAT(screen.asked, ElementsAre(AllOf(HasSubstr("The settings are stored, but"),
                                              HasSubstr("is lost when you cancel now"))));
  EXPECT_THAT(screen.proposed, ElementsAre((folder / "q-copy.xlsx").string(), (folder / "q.xlsx").string()));
  EXPECT_THAT(screen.told, ElementsAre(HasSubstr("Choose a name that is free"), HasSubstr("saved.xlsx")));
  EXPECT_EQ(TickerIn(folder / "saved.xlsx"), "MSFT");
  EXPECT_EQ(last.Recall(), folder / "saved.xlsx");
}

TEST_F(OnScreen, OpensAWorkbookAgainThatAnotherProgramHasChanged) {
  Make(folder / "q.xlsx");
  acts = {[this](frmMirelo& dialog) {
            Make(folder / "q.xlsx");
            AddAndGo(dialog);
          },
          AddAndGo};
  screen.presses = {"Open It Again"};
  EXPECT_TRUE(Run(folder / "q.xlsx"));
  EXPECT_EQ(shown, 2);
  EXPECT_EQ(TickerIn(folder / "q.xlsx"), "MSFT");
}

TEST_F(OnScreen, EndsWithoutItsTableWhenNobodyWantsToSaveIt) {
  Make(folder / "q.xlsx");
  acts = {[this](frmMirelo& dialog) {
    Make(folder / "q.xlsx");
    AddAndGo(dialog);
  }};
  screen.presses = {""};
  EXPECT_FALSE(Run(folder / "q.xlsx"));
}

TEST_F(OnScreen, SaysAtTheEndThatItCannotRememberTheWorkbook) {
  std::ofstream(folder / "state") << "no folder";
  screen.presses = {kNewButton};
  screen.names = {folder / "q.xlsx"};
  acts = {AddAndGo};
  EXPECT_TRUE(Run());
  EXPECT_THAT(screen.told, ElementsAre(HasSubstr("Next time you will be asked for the workbook")));
}

}  // namespace
}  // namespace mirelo::testing
