#include "forms/tab.h"

#include "forms/button.h"
#include "forms/control_test.h"
#include "forms/simple_controls.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class TabTest : public ControlTest {
 protected:
  TabTest() { Watch(tab.Click, "Click"); }
  forms::Tab tab{form, "tab", nullptr, "&Tickers|&Settings|&Fields"};
  forms::Panel tickers{form, "tickers", &tab};
  forms::Panel settings{form, "settings", &tab};
  forms::Panel fields{form, "fields", &tab};
  forms::Button button{form, "button", &settings};
};

TEST_F(TabTest, StartsAtItsFirstTab) {
  EXPECT_THAT(tab.Captions(), ElementsAre("&Tickers", "&Settings", "&Fields"));
  EXPECT_EQ(tab.CurrTab(), 0);
}

TEST_F(TabTest, RaisesClickWhenTheProgramChangesTheTab) {
  tab.CurrTab(0);
  EXPECT_THAT(raised, IsEmpty());
  tab.CurrTab(2);
  tab.CurrTab(2);
  EXPECT_THAT(raised, ElementsAre("Click"));
  EXPECT_EQ(tab.CurrTab(), 2);
}

TEST_F(TabTest, RefusesATabThatItDoesNotHave) {
  EXPECT_EQ(NumberOf([&] { tab.CurrTab(-1); }), 380);
  EXPECT_EQ(NumberOf([&] { tab.CurrTab(3); }), 380);
  EXPECT_EQ(tab.CurrTab(), 0);
}

TEST_F(TabTest, RaisesClickForAPersonsClickOnAnyTab) {
  tab.UserSelect(1);
  tab.UserSelect(1);
  EXPECT_EQ(tab.CurrTab(), 1);
  EXPECT_THAT(raised, ElementsAre("Click", "Click"));
}

TEST_F(TabTest, IsNotChangedByAPersonWhileItIsDisabled) {
  tab.Enabled(false);
  tab.UserSelect(1);
  EXPECT_EQ(tab.CurrTab(), 0);
  EXPECT_THAT(raised, IsEmpty());
}

TEST_F(TabTest, ShowsThePanelOfItsCurrentTabOnly) {
  for (std::int32_t current = 0; current < 3; ++current) {
    SCOPED_TRACE(current);
    tab.CurrTab(current);
    EXPECT_EQ(tab.Shows(tickers), current == 0);
    EXPECT_EQ(tab.Shows(settings), current == 1);
    EXPECT_EQ(tab.Shows(fields), current == 2);
    EXPECT_EQ(button.IsUsable(), current == 1);
  }
}

TEST_F(TabTest, LetsTheProgramFocusAControlOfAHiddenTab) {
  button.SetFocus();
  EXPECT_TRUE(button.HasFocus());
}

TEST_F(TabTest, WithMoreTabsThanPanelsShowsNothingThere) {
  forms::Tab empty(form, "empty", nullptr, "one|two");
  forms::Panel one(form, "one", &empty);
  empty.CurrTab(1);
  EXPECT_FALSE(empty.Shows(one));
}

}  // namespace
}  // namespace mirelo::testing
