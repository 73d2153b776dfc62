// The windows by the keyboard alone: where the focus lies first, and how it moves.

#include <QMessageBox>
#include <QScrollBar>
#include <algorithm>

#include "adapters/qt/scroll_page.h"
#include "qt/settings_dialog_test.h"
#include "qt/walk.h"

namespace mirelo::qt {
namespace {

class Keyboard : public SettingsDialog {
 protected:
  static QWidget& Top() { return *QApplication::activeModalWidget(); }
  static std::string Focused() { return QApplication::focusWidget()->objectName().toStdString(); }
  static bool IsTitle(const char* title) {
    return Person::TopWindow() != nullptr && Person::TopWindow()->windowTitle() == QLatin1String(title);
  }

  // Has the person open the palette for the fill colour Off.
  void OpensPalette() {
    person.Does("press Off", [] {
      Open(kSettings);
      Click("ButOff");
    });
    person.Waits("the palette", [] { return IsTitle("Fill Color (Off)"); });
  }
  void WaitsForDialog() {
    person.Waits("the dialog", [] { return IsTitle("Dovanta"); });
  }
};

TEST_F(Keyboard, TabGoesThroughEachTabAsTheEyeDoes) {
  person.Does("switch everything on", [] {
    AddTickers({"MSFT", "IBM"});
    Open(kCharting);
    Tick("chkBuildCharts");
  });
  for (const Tab tab : {kTickers, kSettings, kCharting, kFields}) {
    person.Does("walk through a tab", [tab] {
      SCOPED_TRACE(tab);
      Open(tab);
      const auto way = WalkWithTab(Top());
      ExpectLeavesNothingOut(way);
      ExpectInReadingOrder(way);
    });
  }
  Show();
}

TEST_F(Keyboard, TabGoesThroughThePaletteRowByRow) {
  OpensPalette();
  person.Does("walk", [] {
    const auto way = WalkWithTab(Top());
    EXPECT_EQ(way.size(), 41U);
    EXPECT_TRUE(std::is_sorted(way.begin(), way.end(), [](const QWidget* one, const QWidget* next) {
      const QPoint a = PlaceInWindow(*one).topLeft();
      const QPoint b = PlaceInWindow(*next).topLeft();
      return std::pair(a.y(), a.x()) < std::pair(b.y(), b.x());
    }));
    Top().close();
  });
  WaitsForDialog();
  Show();
}

TEST_F(Keyboard, ArrowsMoveBetweenNoFillAndTheColors) {
  OpensPalette();
  person.Does("move", [] {
    struct Case {
      Qt::Key key;
      const char* reached;
    };
    const Case cases[] = {
        {Qt::Key_Up, "L1(0)"},     {Qt::Key_Left, "L1(0)"},  {Qt::Key_Down, "L1(1)"},
        {Qt::Key_Left, "L1(1)"},   {Qt::Key_Right, "L1(6)"}, {Qt::Key_Right, "L1(11)"},
        {Qt::Key_Up, "L1(0)"},     {Qt::Key_Down, "L1(11)"}, {Qt::Key_Up, "L1(0)"},
        {Qt::Key_Right, "L1(11)"}, {Qt::Key_Down, "L1(12)"}, {Qt::Key_Up, "L1(11)"},
        {Qt::Key_Down, "L1(12)"},  {Qt::Key_Down, "L1(13)"}, {Qt::Key_Down, "L1(14)"},
        {Qt::Key_Down, "L1(15)"},  {Qt::Key_Down, "L1(15)"}, {Qt::Key_Right, "L1(20)"},
        {Qt::Key_Left, "L1(15)"},
    };
    EXPECT_EQ(Focused(), "L1(0)");
    for (const Case& c : cases) {
      SCOPED_TRACE(c.reached);
      Person::Press(c.key);
      EXPECT_EQ(Focused(), c.reached);
    }
    Person::Press(Qt::Key_Return);
  });
  WaitsForDialog();
  Show();
  EXPECT_EQ(rig.Stored("FillColorOFF"), "10092543") << "the light yellow that had the focus";
}

TEST_F(Keyboard, EnterOnNoFillAsksAndTakesNoForNothing) {
  OpensPalette();
  person.Does("press Enter", [] { Person::Press(Qt::Key_Return); });
  person.Answers("Use no fill color?", "No");
  person.Does("look", [&] {
    EXPECT_TRUE(IsTitle("Fill Color (Off)"));
    EXPECT_EQ(rig.Stored("FillColorOFF"), "");
    Top().close();
  });
  WaitsForDialog();
  Show();
  EXPECT_EQ(rig.Stored("FillColorOFF"), "");
}

TEST_F(Keyboard, EnterTwiceTakesNothing) {
  OpensPalette();
  person.Does("press Enter", [] { Person::Press(Qt::Key_Return); });
  person.Waits("the question", [] { return Person::Box() != nullptr; });
  person.Does("press it again", [] { Person::Press(Qt::Key_Return); });
  person.Waits("the palette", [] { return IsTitle("Fill Color (Off)") && Person::Box() == nullptr; });
  person.Does("close it", [] { Top().close(); });
  WaitsForDialog();
  Show();
  EXPECT_EQ(rig.Stored("FillColorOFF"), "");
}

TEST_F(Keyboard, EnterOnNoFillTakesItLikeAClickOnceItIsAnswered) {
  OpensPalette();
  person.Does("press Enter", [] { Person::Press(Qt::Key_Enter); });
  person.Answers("Use no fill color?", "Yes");
  WaitsForDialog();
  Show();
  EXPECT_EQ(rig.Stored("FillColorOFF"), "-4142");
}

TEST_F(Keyboard, TheReportOfAFailureHasTheFocusOnTheAnswerThatBeginsNothing) {
  person.Waits("the report", [] { return IsTitle("Error"); });
  person.Does("walk and press Enter", [] {
    EXPECT_EQ(Focused(), "btnAbort");
    const auto way = WalkWithTab(Top());
    EXPECT_EQ(way.size(), 4U) << "the report, and the three answers that can be given";
    ExpectInReadingOrder(way);
    EXPECT_EQ(Focused(), "btnAbort");
    Person::Press(Qt::Key_Return);
  });
  rig.facade->GetLastQuote(Variant("MSFT"));  // an array is wanted
  person.Forget();
}

TEST_F(Keyboard, NothingScrollsWhereThereIsRoom) {
  person.Does("look through the tabs", [] {
    for (const Tab tab : {kTickers, kSettings, kCharting, kFields}) {
      Open(tab);
      const auto pages = Top().findChildren<QScrollArea*>();
      ASSERT_EQ(pages.size(), 4);
      for (const QScrollArea* page : pages) {
        EXPECT_FALSE(page->verticalScrollBar()->isVisible());
        EXPECT_FALSE(page->horizontalScrollBar()->isVisible());
      }
    }
  });
  Show();
}

TEST_F(Keyboard, HeadersThatNobodyMadeNarrowerAreWhole) {
  person.Does("add the fields and the charts", [] {
    Open(kFields);
    Click("ListLeft");
    Click("ButAllRight");
    Open(kCharting);
    Tick("chkBuildCharts");
    Open(kTickers);
    AddTickers({"MSFT"});
  });
  person.Does("look and close", [] {
    ExpectWholeHeaders(*Find<GridView>("FG"));
    Click("ButClose");
  });
  rig.facade->LoadFrmMirelo();
  EXPECT_EQ(mGlobal::AppSettings().GetSetting("Settings\\WidthField", "LastVolume", Variant("")).ToText(),
            "800")
      << "what is stored is the grid's";
  person.Does("look again and make one narrower", [] {
    Open(kCharting);
    Tick("chkBuildCharts");
    Open(kTickers);
  });
  person.Does("drag", [] {
    auto* view = Find<GridView>("FG");
    ExpectWholeHeaders(*view);
    QHeaderView* header = view->horizontalHeader();
    const int column = ColumnOf("Change");
    const QPoint border(header->sectionViewportPosition(column) + view->columnWidth(column) - 2,
                        header->height() / 2);
    Person::Drag(header->viewport(), border, border - QPoint(30, 0));
    Click("ButClose");
  });
  rig.facade->LoadFrmMirelo();
  person.Does("look at the narrow one", [] {
    auto* view = Find<GridView>("FG");
    EXPECT_LT(view->columnWidth(ColumnOf("Change")),
              view->horizontalHeader()->sectionSizeHint(ColumnOf("Change")));
  });
  Show();
}

}  // namespace
}  // namespace mirelo::qt
