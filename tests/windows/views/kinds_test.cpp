// Of each kind of control one, and what a person does to it.

#include <string>
#include <utility>
#include <vector>

#include "windows/views/rig.h"

#include "adapters/windows/views/grid_view.h"
#include "forms/button.h"
#include "forms/combo_box.h"
#include "forms/grid.h"
#include "forms/list_box.h"
#include "forms/scroll_bar.h"
#include "forms/simple_controls.h"
#include "forms/tab.h"
#include "forms/text_box.h"

namespace mirelo::windows {
namespace {

using ::testing::ElementsAre;

class Kinds : public forms::Form {
 public:
  Kinds() : Form("Kinds", "Kinds") {
    for (const char* item : {"one", "two", "three"}) {
      combo.AddItem(item);
      closed.AddItem(item);
      list.AddItem(item);
    }
    report.MultiLine(true);
    picture.Picture("delete");
    grid.FormatString("|Name|Ticked");
    grid.Rows(3);
    grid.FixedCols(1);
    grid.ColDataType(2, forms::Grid::kBooleanColumn);
    grid.Editable(1);
    combo.Change.Subscribe([this] { Note("combo " + combo.Text()); });
    closed.Click.Subscribe([this] { Note("closed " + closed.Text()); });
    list.Click.Subscribe([this] { Note("list " + std::to_string(list.ListIndex())); });
    list.DblClick.Subscribe([this] { Note("twice"); });
    bar.Change.Subscribe([this] { Note("bar " + std::to_string(bar.Value())); });
    field.Click.Subscribe([this] { Note("field"); });
    strip.Click.Subscribe([this] { Note("tab " + std::to_string(strip.CurrTab())); });
    picture.Click.Subscribe([this] { Note("picture"); });
    second_button.Click.Subscribe([this] { Note("second"); });
  }
  void Note(std::string what) { noted.push_back(std::move(what)); }

  forms::ComboBox combo{*this, "combo", nullptr};
  forms::ComboBox closed{*this, "closed", nullptr, forms::ComboBox::Style::DropDownList};
  forms::ListBox list{*this, "list", nullptr};
  forms::ScrollBar bar{*this, "bar", nullptr, 10, 0};
  forms::Label field{*this, "field", nullptr};
  forms::Image image{*this, "image", nullptr, "chart"};
  forms::Line line{*this, "line", nullptr};
  forms::Button picture{*this, "picture", nullptr};
  forms::TextBox report{*this, "report", nullptr, "one\r\ntwo"};
  forms::Grid grid{*this, "grid", nullptr};
  forms::Tab strip{*this, "strip", nullptr, "&First|&Second"};
  forms::Panel first{*this, "first", &strip};
  forms::Button first_button{*this, "first_button", &first, "One"};
  forms::Panel second{*this, "second", &strip};
  forms::Button second_button{*this, "second_button", &second, "Two"};
  std::vector<std::string> noted;
};

class EachKind : public OnTheDesktop {
 protected:
  void End() {
    person.Does("close", [this] { kinds.Close(); });
    desktop.ShowModal(kinds);
  }
  GridView& Table() const {
    return dynamic_cast<GridView&>(*person.Window().views().ViewOf(&kinds.grid)->painted);
  }
  POINT MiddleOf(std::int32_t row, std::int32_t col) const {
    const auto place = Table().Places().PlaceOf(row, col);
    return {place.left + place.width / 2, place.top + place.height / 2};
  }

  Kinds kinds;
};

TEST_F(EachKind, TakesTypingIntoACombo) {
  person.Does("go there", [&] { ::SetFocus(person.Find("combo")); });
  person.Does("type what is no entry", [&] { person.Type("x"); });
  End();
  EXPECT_THAT(kinds.noted, ElementsAre("combo x"));
  EXPECT_EQ(kinds.ActiveControl(), &kinds.combo);
}

TEST_F(EachKind, TakesTheEntryThatIsChosen) {
  person.Does("choose", [&] { person.Choose("combo", 1); });
  person.Does("choose in the closed one", [&] {
    EXPECT_EQ(person.TextOf("combo"), "two");
    person.Choose("closed", 0);
  });
  End();
  EXPECT_THAT(kinds.noted, ElementsAre("combo two", "closed one"));
}

TEST_F(EachKind, TakesTheEntryThatTheArrowKeysReach) {
  person.Does("go there", [&] { ::SetFocus(person.Find("closed")); });
  person.Does("press down", [&] { person.Press(VK_DOWN); });
  End();
  EXPECT_THAT(kinds.noted, ElementsAre("closed one"));
}

TEST_F(EachKind, ShowsWhatItsHandlerMakesOfAChoice) {
  kinds.combo.Change.Subscribe([&] {
    if (kinds.combo.Text() == "two") kinds.combo.Text("three");
  });
  person.Does("choose", [&] { person.Choose("combo", 1); });
  person.Does("look", [&] { EXPECT_EQ(person.TextOf("combo"), "three"); });
  End();
}

TEST_F(EachKind, ClosesAListByEnterAndEscapeAndIsNotClosedByThem) {
  for (const WPARAM key : {VK_RETURN, VK_ESCAPE}) {
    person.Does("open the list", [&] {
      ::SetFocus(person.Find("closed"));
      ::SendMessageW(person.Find("closed"), CB_SHOWDROPDOWN, TRUE, 0);
    });
    person.Does("press the key", [key] { Person::Press(key); });
    person.Does("look", [&] {
      EXPECT_EQ(::SendMessageW(person.Find("closed"), CB_GETDROPPEDSTATE, 0, 0), 0);
      EXPECT_TRUE(kinds.Visible());
    });
  }
  End();
}

TEST_F(EachKind, IsClicked) {
  person.Does("click", [&] { person.ClickAt("list", 8, 8); });
  person.Does("click", [&] { person.Click("field"); });
  person.Does("click", [&] { person.Click("picture"); });
  End();
  EXPECT_THAT(kinds.noted, ElementsAre("list 0", "field", "picture"));
}

TEST_F(EachKind, TakesNoClickThatIsReleasedElsewhere) {
  person.Does("press the field, and think better of it", [&] { person.Drag("field", {5, 5}, {-50, -50}); });
  End();
  EXPECT_THAT(kinds.noted, ElementsAre());
}

TEST_F(EachKind, IsClickedTwice) {
  person.Does("click twice", [&] {
    ::SendMessageW(person.Find("list"), LB_SETCURSEL, 2, 0);
    ::PostMessageW(person.Window().window(), WM_COMMAND,
                   MAKEWPARAM(::GetDlgCtrlID(person.Find("list")), LBN_DBLCLK),
                   reinterpret_cast<LPARAM>(person.Find("list")));
  });
  End();
  EXPECT_THAT(kinds.noted, ElementsAre("list 2", "twice"));
}

TEST_F(EachKind, ScrollsFromItsTopWhicheverWayItCounts) {
  const auto scroll = [&](int code, int place) {
    ::SendMessageW(person.Window().window(), WM_VSCROLL, MAKEWPARAM(code, place),
                   reinterpret_cast<LPARAM>(person.Find("bar")));
  };
  person.Does("scroll", [&] {
    scroll(SB_THUMBPOSITION, 4);
    scroll(SB_LINEUP, 0);
    scroll(SB_BOTTOM, 0);
    scroll(SB_LINEDOWN, 0);
    kinds.bar.Value(7);
    EXPECT_EQ(::GetScrollPos(person.Find("bar"), SB_CTL), 3);
  });
  End();
  EXPECT_THAT(kinds.noted, ElementsAre("bar 6", "bar 7", "bar 0", "bar 7"));
}

TEST_F(EachKind, ShowsOneTabAtATime) {
  person.Does("open the second", [&] {
    EXPECT_TRUE(person.IsShown("first_button"));
    EXPECT_FALSE(person.IsShown("second_button"));
    person.Open("strip", 1);
  });
  person.Does("press what is on it", [&] {
    EXPECT_FALSE(person.IsShown("first_button"));
    EXPECT_TRUE(person.IsShown("second_button"));
    person.Click("second_button");
  });
  person.Does("go back by the letter", [&] { person.PressWithAlt(L'f'); });
  person.Does("look", [&] { EXPECT_TRUE(person.IsShown("first_button")); });
  End();
  EXPECT_THAT(kinds.noted, ElementsAre("tab 1", "second", "tab 0"));
}

TEST_F(EachKind, KeepsTheLineEndsOfAReportAndTakesEnterAsOne) {
  person.Does("go to its end", [&] {
    EXPECT_EQ(person.TextOf("report"), "one\r\ntwo");
    ::SetFocus(person.Find("report"));
    ::SendMessageW(person.Find("report"), EM_SETSEL, 100, 100);
  });
  person.Does("press Enter", [&] { person.Press(VK_RETURN); });
  person.Does("type", [&] { person.Type("!"); });
  End();
  EXPECT_EQ(kinds.report.Text(), "one\r\ntwo\r\n!");
}

TEST_F(EachKind, LeavesAReportByTheTabKey) {
  person.Does("go there", [&] { ::SetFocus(person.Find("report")); });
  person.Does("press Tab", [&] { person.Press(VK_TAB); });
  person.Does("look", [&] { EXPECT_TRUE(person.HasFocus("grid")); });
  End();
  EXPECT_EQ(kinds.report.Text(), "one\r\ntwo");
}

TEST_F(EachKind, TakesATextThatIsTypedIntoACell) {
  person.Does("choose the cell", [&] {
    const POINT at = MiddleOf(2, 1);
    person.ClickAt("grid", at.x, at.y);
  });
  person.Does("type", [&] { person.Type("a"); });
  person.Does("type on", [&] {
    EXPECT_NE(Table().editor(), nullptr);
    person.Type("b");
  });
  person.Does("press Enter", [&] { person.Press(VK_RETURN); });
  person.Does("look", [&] {
    EXPECT_EQ(kinds.grid.TextMatrix(2, 1), "ab");
    EXPECT_EQ(Table().editor(), nullptr);
    EXPECT_TRUE(person.HasFocus("grid"));
  });
  End();
}

TEST_F(EachKind, TakesNoTextThatIsGivenUpByEscape) {
  person.Does("open a cell", [&] {
    const POINT at = MiddleOf(1, 1);
    person.DoubleClickAt("grid", at.x, at.y);
  });
  person.Does("type", [&] {
    EXPECT_NE(Table().editor(), nullptr);
    person.Type("a");
  });
  person.Does("press Escape", [&] { person.Press(VK_ESCAPE); });
  person.Does("look", [&] {
    EXPECT_EQ(kinds.grid.TextMatrix(1, 1), "");
    EXPECT_TRUE(kinds.Visible());
  });
  End();
}

TEST_F(EachKind, KeepsATextWhosePersonGoesElsewhere) {
  person.Does("open a cell", [&] {
    const POINT at = MiddleOf(1, 1);
    person.DoubleClickAt("grid", at.x, at.y);
  });
  person.Does("type", [&] { person.Type("a"); });
  person.Does("go elsewhere", [&] { ::SetFocus(person.Find("list")); });
  person.Does("look", [&] { EXPECT_EQ(kinds.grid.TextMatrix(1, 1), "a"); });
  End();
}

TEST_F(EachKind, TicksACellByAClick) {
  person.Does("click", [&] {
    const POINT at = MiddleOf(1, 2);
    person.ClickAt("grid", at.x, at.y);
  });
  person.Does("look", [&] { EXPECT_EQ(kinds.grid.TextMatrix(1, 2), "-1"); });
  End();
}

TEST_F(EachKind, FollowsWhatTheFormDoes) {
  person.Does("look", [&] {
    kinds.list.ListIndex(2);
    EXPECT_EQ(::SendMessageW(person.Find("list"), LB_GETCURSEL, 0, 0), 2);
    kinds.list.RemoveItem(0);
    EXPECT_THAT(person.Items("list"), ElementsAre("two", "three"));
    kinds.combo.Text("two");
    EXPECT_EQ(person.TextOf("combo"), "two");
    kinds.first.Enabled(false);
    EXPECT_FALSE(person.IsEnabled("first_button"));
    kinds.strip.CurrTab(1);
    EXPECT_TRUE(person.IsShown("second_button"));
  });
  End();
}

}  // namespace
}  // namespace mirelo::windows
