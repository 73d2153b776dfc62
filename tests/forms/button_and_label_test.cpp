#include "forms/button.h"
#include "forms/control_test.h"
#include "forms/simple_controls.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ButtonTest : public ControlTest {
 protected:
  ButtonTest() { Watch(button.Click, "Click"); }
  forms::Button button{form, "ButGo", nullptr, "&Go"};
};

TEST_F(ButtonTest, StartsWithItsCaptionAndNothingElse) {
  EXPECT_EQ(button.Name(), "ButGo");
  EXPECT_EQ(button.Caption(), "&Go");
  EXPECT_EQ(button.Picture(), "");
  EXPECT_FALSE(button.Default());
  EXPECT_FALSE(button.Cancel());
  EXPECT_EQ(&button.Owner(), &form);
  EXPECT_EQ(button.Parent(), nullptr);
}

TEST_F(ButtonTest, TakesTheFocusAndRaisesClickWhenItIsPressed) {
  button.Click.Subscribe([&] { EXPECT_TRUE(button.HasFocus()); });
  button.UserPress();
  button.UserPress();
  EXPECT_THAT(raised, ElementsAre("Click", "Click"));
}

TEST_F(ButtonTest, IsClickedAsOftenAsItsAttendantClicksIt) {
  int clicks = 0;
  button.AttendWith([&](const std::function<void()>& click) {
    EXPECT_TRUE(button.HasFocus());
    for (int i = 0; i < clicks; ++i) click();
  });
  button.UserPress();
  EXPECT_THAT(raised, IsEmpty());
  clicks = 2;
  button.UserPress();
  EXPECT_THAT(raised, ElementsAre("Click", "Click"));
}

TEST_F(ButtonTest, DoesNothingWhenItIsDisabled) {
  button.Enabled(false);
  button.UserPress();
  EXPECT_THAT(raised, IsEmpty());
  EXPECT_FALSE(button.HasFocus());
}

class LabelTest : public ControlTest {};

TEST_F(LabelTest, RaisesClickWithoutTakingTheFocus) {
  forms::Label label(form, "L1", nullptr, "No Fill");
  Watch(label.Click, "Click");
  label.UserClick();
  EXPECT_THAT(raised, ElementsAre("Click"));
  EXPECT_EQ(form.ActiveControl(), nullptr);
}

TEST_F(LabelTest, HasACaptionAndABorder) {
  forms::Label label(form, "L1", nullptr, "No Fill");
  EXPECT_EQ(label.Caption(), "No Fill");
  EXPECT_EQ(label.BorderStyle(), 0);
  label.Caption("Fill");
  label.BorderStyle(1);
  EXPECT_EQ(label.Caption(), "Fill");
  EXPECT_EQ(label.BorderStyle(), 1);
}

class ControlValues : public ControlTest {};

TEST_F(ControlValues, StartWithWhatEveryControlHas) {
  const forms::Panel panel(form, "Panel", nullptr);
  EXPECT_TRUE(panel.Enabled());
  EXPECT_TRUE(panel.Visible());
  EXPECT_EQ(panel.Tag(), "");
  EXPECT_EQ(panel.ToolTipText(), "");
  EXPECT_EQ(panel.Caption(), "");
  EXPECT_EQ(panel.Picture(), "");
  EXPECT_EQ(panel.BackColor(), static_cast<std::int32_t>(0x8000000F));
}

// What a view has to redraw.
TEST_F(ControlValues, TellTheViewsOnlyWhatReallyChanged) {
  forms::Panel panel(form, "Panel", nullptr);
  Watch(panel.Appearance, "changed");
  for (int time = 0; time < 2; ++time) {
    panel.Enabled(false);
    panel.Visible(false);
    panel.ToolTipText("tip");
    panel.BackColor(255);
    panel.Caption("caption");
    panel.Picture("picture");
  }
  EXPECT_EQ(raised.size(), 6U);
}

TEST_F(ControlValues, KeepATagThatNoViewShows) {
  forms::Panel panel(form, "Panel", nullptr);
  Watch(panel.Appearance, "changed");
  panel.Tag("tag");
  EXPECT_EQ(panel.Tag(), "tag");
  EXPECT_THAT(raised, IsEmpty());
}

TEST_F(ControlValues, KnowTheirChildrenInTheirOrder) {
  forms::Panel panel(form, "Panel", nullptr);
  forms::Panel first(form, "first", &panel);
  forms::Panel second(form, "second", &panel);
  forms::Panel grandchild(form, "grandchild", &first);
  EXPECT_THAT(panel.Children(), ElementsAre(&first, &second));
  EXPECT_THAT(first.Children(), ElementsAre(&grandchild));
  EXPECT_EQ(grandchild.Parent(), &first);
}

}  // namespace
}  // namespace mirelo::testing
