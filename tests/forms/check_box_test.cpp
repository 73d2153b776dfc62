#include "forms/check_box.h"

#include "forms/control_test.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class CheckBoxTest : public ControlTest {
 protected:
  CheckBoxTest() { Watch(box.Click, "Click"); }
  forms::CheckBox box{form, "chkGreyOut", nullptr, "Use grey-outing"};
};

TEST_F(CheckBoxTest, StartsWithoutATick) {
  EXPECT_EQ(box.Value(), 0);
  EXPECT_EQ(box.Caption(), "Use grey-outing");
}

TEST_F(CheckBoxTest, RaisesClickWhenItsValueReallyChanges) {
  box.Value(0);
  EXPECT_THAT(raised, IsEmpty());
  box.Value(1);
  box.Value(1);
  EXPECT_THAT(raised, ElementsAre("Click"));
  box.Value(0);
  EXPECT_THAT(raised, ElementsAre("Click", "Click"));
}

TEST_F(CheckBoxTest, RaisesClickWhileItIsDisabledWhenTheProgramSetsIt) {
  box.Enabled(false);
  box.Value(1);
  EXPECT_THAT(raised, ElementsAre("Click"));
}

TEST_F(CheckBoxTest, HasItsNewValueWhenClickIsRaised) {
  box.Click.Subscribe([&] { EXPECT_EQ(box.Value(), 1); });
  box.Value(1);
}

TEST_F(CheckBoxTest, RefusesOtherNumbersThanZeroAndOne) {
  for (const int value : {-1, 2, 255}) {
    SCOPED_TRACE(value);
    EXPECT_EQ(NumberOf([&] { box.Value(value); }), 380);
  }
  EXPECT_EQ(box.Value(), 0);
  EXPECT_THAT(raised, IsEmpty());
}

TEST_F(CheckBoxTest, TogglesAndTakesTheFocusWhenItIsClicked) {
  box.UserClick();
  EXPECT_EQ(box.Value(), 1);
  EXPECT_TRUE(box.HasFocus());
  box.UserClick();
  EXPECT_EQ(box.Value(), 0);
  EXPECT_THAT(raised, ElementsAre("Click", "Click"));
}

TEST_F(CheckBoxTest, IsNotToggledByAPersonWhileItIsDisabled) {
  box.Enabled(false);
  box.UserClick();
  EXPECT_EQ(box.Value(), 0);
  EXPECT_THAT(raised, IsEmpty());
}

TEST_F(CheckBoxTest, LetsItsHandlerSetItBack) {
  box.Click.Subscribe([&] { box.Value(0); });
  box.UserClick();
  EXPECT_EQ(box.Value(), 0);
  EXPECT_THAT(raised, ElementsAre("Click", "Click"));
}

}  // namespace
}  // namespace mirelo::testing
