#include <functional>

#include "forms/button.h"
#include "forms/check_box.h"
#include "forms/combo_box.h"
#include "forms/control_test.h"
#include "forms/grid.h"
#include "forms/list_box.h"
#include "forms/scroll_bar.h"
#include "forms/simple_controls.h"
#include "forms/tab.h"
#include "forms/text_box.h"

namespace mirelo::testing {
namespace {

using ::testing::Contains;
using ::testing::IsEmpty;

// One control of each kind, and all that a person can do to them.
class UsableControl : public ControlTest {
 protected:
  UsableControl() {
    combo.AddItem("entry");
    list.AddItem("entry");
    grid.Cols(2);
    grid.Rows(2);
    grid.Editable(1);
    grid.ColDataType(1, forms::Grid::kBooleanColumn);
    Watch(button.Click, "Click");
    Watch(check.Click, "Click");
    Watch(combo.Change, "Change");
    Watch(combo.Click, "Click");
    Watch(grid.Click, "Click");
    Watch(grid.AfterEdit, "AfterEdit");
    Watch(label.Click, "Click");
    Watch(list.Click, "Click");
    Watch(list.DblClick, "DblClick");
    Watch(scroll.Change, "Change");
    Watch(strip.Click, "Click");
    Watch(text.Change, "Change");
  }

  template <class Raised>
  void Watch(Raised& event, const std::string& name) {
    ControlTest::Watch(event, name);
  }
  void Watch(Event<std::int32_t, std::int32_t>& event, const std::string& name) {
    event.Subscribe([this, name](std::int32_t, std::int32_t) { raised.push_back(name); });
  }

  struct Action {
    const char* name;
    std::function<void()> act;
  };
  const std::vector<Action> actions = {
      {"press a button", [this] { button.UserPress(); }},
      {"tick a box", [this] { check.UserClick(); }},
      {"edit a combo", [this] { combo.UserEdit("typed"); }},
      {"choose in a combo", [this] { combo.UserChoose(0); }},
      {"click a cell", [this] { grid.UserClickCell(1, 0); }},
      {"drag over cells", [this] { grid.UserDragTo(1, 1); }},
      {"toggle a cell", [this] { grid.Select(1, 1), grid.UserToggle(); }},
      {"edit a cell", [this] { grid.Select(1, 0), grid.UserEditCell("typed"); }},
      {"click a label", [this] { label.UserClick(); }},
      {"select in a list", [this] { list.UserSelect(0); }},
      {"double-click in a list", [this] { list.UserDoubleClick(0); }},
      {"step up", [this] { scroll.UserStepUp(); }},
      {"drag a bar", [this] { scroll.UserDrag(5); }},
      {"select a tab", [this] { strip.UserSelect(1); }},
      {"edit a text", [this] { text.UserEdit("typed"); }},
      {"type", [this] { text.UserType("typed"); }},
  };
  void ExpectNoActionWorks() {
    raised.clear();
    for (const Action& action : actions) {
      SCOPED_TRACE(action.name);
      action.act();
      EXPECT_THAT(raised, IsEmpty());
    }
    grid.UserResizeColumn(0, 1);
    EXPECT_NE(grid.ColWidth(0), 1);
    EXPECT_EQ(form.ActiveControl(), nullptr);
  }

  forms::Tab tab{form, "tab", nullptr, "first|second"};
  forms::Panel page{form, "page", &tab};
  forms::Panel panel{form, "panel", &page};
  forms::Button button{form, "button", &panel, "caption"};
  forms::CheckBox check{form, "check", &panel, "caption"};
  forms::ComboBox combo{form, "combo", &panel};
  forms::Grid grid{form, "grid", &panel};
  forms::Label label{form, "label", &panel, "caption"};
  forms::ListBox list{form, "list", &panel};
  forms::ScrollBar scroll{form, "scroll", &panel, 10, 0};
  forms::Tab strip{form, "strip", &panel, "one|two"};
  forms::TextBox text{form, "text", &panel};
};

TEST_F(UsableControl, DoesWhatAPersonWants) {
  for (const Action& action : actions) {
    SCOPED_TRACE(action.name);
    raised.clear();
    // What another action left behind would be no change to this one.
    combo.Clear();
    combo.AddItem("entry");
    grid.TextMatrix(1, 0, "");
    scroll.Value(0);
    text.Text("");
    raised.clear();
    action.act();
    EXPECT_FALSE(raised.empty());
  }
  grid.UserResizeColumn(0, 1);
  EXPECT_EQ(grid.ColWidth(0), 1);
}

TEST_F(UsableControl, IsNoneWhileItIsDisabledOrHidden) {
  const std::vector<forms::Control*> controls = {&button, &check,  &combo, &grid, &label,
                                                 &list,   &scroll, &strip, &text};
  for (auto* control : controls) control->Enabled(false);
  ExpectNoActionWorks();
  for (auto* control : controls) control->Enabled(true), control->Visible(false);
  ExpectNoActionWorks();
}

TEST_F(UsableControl, IsNoneWhileAParentIsDisabledOrHidden) {
  for (forms::Control* parent : std::initializer_list<forms::Control*>{&panel, &page, &tab}) {
    SCOPED_TRACE(parent->Name());
    parent->Enabled(false);
    ExpectNoActionWorks();
    parent->Enabled(true);
    parent->Visible(false);
    ExpectNoActionWorks();
    parent->Visible(true);
  }
}

TEST_F(UsableControl, IsNoneOnATabThatIsNotTheCurrentOne) {
  const forms::Panel other(form, "other", &tab);
  tab.CurrTab(1);
  ExpectNoActionWorks();
}

TEST_F(UsableControl, IsNoneWhileAnotherFormIsShownModally) {
  forms::Form above("frmAbove", "Above");
  forms::ShowModal(above, [&](const auto&) {
    ExpectNoActionWorks();
    above.Hide();
  });
  EXPECT_TRUE(button.IsUsable());
}

TEST_F(UsableControl, IsOneOfTheFormOnTop) {
  forms::Form below("frmBelow", "Below");
  forms::ShowModal(below, [&](const auto&) {
    forms::ShowModal(form, [&](const auto&) {
      button.UserPress();
      form.Hide();
    });
    EXPECT_FALSE(button.IsUsable());
    below.Hide();
  });
  EXPECT_THAT(raised, Contains("Click"));
}

TEST_F(UsableControl, TakesTheFocusFromTheProgramOnlyWhileItAndItsParentsAreEnabledAndVisible) {
  for (forms::Control* control : std::initializer_list<forms::Control*>{&button, &panel, &page, &tab}) {
    SCOPED_TRACE(control->Name());
    control->Enabled(false);
    EXPECT_EQ(NumberOf([&] { button.SetFocus(); }), 5);
    control->Enabled(true);
    control->Visible(false);
    EXPECT_EQ(NumberOf([&] { button.SetFocus(); }), 5);
    control->Visible(true);
    EXPECT_EQ(form.ActiveControl(), nullptr);
  }
  button.SetFocus();
  EXPECT_EQ(form.ActiveControl(), &button);
  text.SetFocus();
  EXPECT_FALSE(button.HasFocus());
  EXPECT_TRUE(text.HasFocus());
}

}  // namespace
}  // namespace mirelo::testing
