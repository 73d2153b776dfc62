#include "forms/scroll_bar.h"

#include <memory>

#include "forms/control_test.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ScrollBarTest : public ControlTest {
 protected:
  ScrollBarTest() {
    Watch(down.Change, "Change");
    Watch(up.Change, "Change");
  }
  forms::ScrollBar down{form, "down", nullptr, 0, 10};
  forms::ScrollBar up{form, "up", nullptr, 10, 0};  // the dialog's kind: the arrow up raises the value
};

TEST_F(ScrollBarTest, StartsAtItsLowestValue) {
  EXPECT_EQ(down.Value(), 0);
  EXPECT_EQ(up.Value(), 0);
  EXPECT_EQ(up.Min(), 10);
  EXPECT_EQ(up.Max(), 0);
  const forms::ScrollBar other(form, "other", nullptr, 7, 3);
  EXPECT_EQ(other.Value(), 3);
}

TEST_F(ScrollBarTest, RaisesChangeWhenItsValueReallyChanges) {
  for (forms::ScrollBar* bar : {&down, &up}) {
    SCOPED_TRACE(bar->Name());
    raised.clear();
    bar->Value(0);
    EXPECT_THAT(raised, IsEmpty());
    bar->Value(10);
    bar->Value(10);
    EXPECT_THAT(raised, ElementsAre("Change"));
    EXPECT_EQ(bar->Value(), 10);
  }
}

TEST_F(ScrollBarTest, RefusesValuesOutsideWhicheverEndIsTheHigherOne) {
  for (forms::ScrollBar* bar : {&down, &up}) {
    SCOPED_TRACE(bar->Name());
    bar->Value(5);
    raised.clear();
    EXPECT_EQ(NumberOf([&] { bar->Value(-1); }), 380);
    EXPECT_EQ(NumberOf([&] { bar->Value(11); }), 380);
    EXPECT_EQ(bar->Value(), 5);
    EXPECT_THAT(raised, IsEmpty());
  }
}

TEST_F(ScrollBarTest, StepsTowardsItsEnds) {
  up.UserStepUp();
  up.UserStepUp();
  EXPECT_EQ(up.Value(), 2);
  up.UserStepDown();
  EXPECT_EQ(up.Value(), 1);
  down.UserStepDown();
  down.UserStepDown();
  EXPECT_EQ(down.Value(), 2);
  down.UserStepUp();
  EXPECT_EQ(down.Value(), 1);
  EXPECT_EQ(raised.size(), 6U);
}

TEST_F(ScrollBarTest, StaysAtAnEnd) {
  down.UserStepUp();
  up.UserStepDown();
  EXPECT_EQ(down.Value(), 0);
  EXPECT_EQ(up.Value(), 0);
  down.Value(10);
  up.Value(10);
  raised.clear();
  down.UserStepDown();
  up.UserStepUp();
  EXPECT_EQ(down.Value(), 10);
  EXPECT_EQ(up.Value(), 10);
  EXPECT_THAT(raised, IsEmpty());
}

TEST_F(ScrollBarTest, IsDraggedNoFartherThanItsEnds) {
  for (forms::ScrollBar* bar : {&down, &up}) {
    SCOPED_TRACE(bar->Name());
    bar->UserDrag(7);
    EXPECT_EQ(bar->Value(), 7);
    bar->UserDrag(100);
    EXPECT_EQ(bar->Value(), 10);
    bar->UserDrag(-100);
    EXPECT_EQ(bar->Value(), 0);
  }
}

TEST_F(ScrollBarTest, IsNotMovedByAPersonWhileItIsDisabled) {
  up.Enabled(false);
  up.UserStepUp();
  up.UserDrag(7);
  EXPECT_EQ(up.Value(), 0);
  EXPECT_THAT(raised, IsEmpty());
  up.Value(7);
  EXPECT_THAT(raised, ElementsAre("Change"));
}

TEST_F(ScrollBarTest, OfOneValueDoesNotMove) {
  forms::ScrollBar still(form, "still", nullptr, 4, 4);
  still.UserStepUp();
  still.UserStepDown();
  still.UserDrag(9);
  EXPECT_EQ(still.Value(), 4);
}

}  // namespace
}  // namespace mirelo::testing
