#include "forms/combo_box.h"

#include "forms/control_test.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Style = forms::ComboBox::Style;

class ComboBoxTest : public ControlTest {
 protected:
  ComboBoxTest() {
    for (forms::ComboBox* box : {&combo, &list}) {
      Watch(box->Change, "Change");
      Watch(box->Click, "Click");
      for (const char* name : {"Blue", "Green", "None"}) box->AddItem(name);
    }
  }
  forms::ComboBox combo{form, "ComStyle", nullptr};
  forms::ComboBox list{form, "ComList", nullptr, Style::DropDownList};
};

TEST_F(ComboBoxTest, StartsEmptyOnTheWindowsBackground) {
  EXPECT_EQ(combo.Text(), "");
  EXPECT_EQ(combo.ListIndex(), -1);
  EXPECT_EQ(combo.ListCount(), 3);
  EXPECT_THAT(combo.Items(), ElementsAre("Blue", "Green", "None"));
  EXPECT_EQ(combo.List(1), "Green");
  EXPECT_EQ(combo.ComboStyle(), Style::DropDown);
  EXPECT_EQ(combo.BackColor(), static_cast<std::int32_t>(0x80000005));
  EXPECT_THAT(raised, IsEmpty());
}

TEST_F(ComboBoxTest, RaisesChangeWhenItsTextReallyChanges) {
  combo.Text("");
  EXPECT_THAT(raised, IsEmpty());
  combo.Text("Green");
  combo.Text("Green");
  EXPECT_THAT(raised, ElementsAre("Change"));
}

TEST_F(ComboBoxTest, ShowsTextsThatAreNoEntryUnlessItIsAList) {
  combo.Text("Mauve");
  EXPECT_EQ(combo.Text(), "Mauve");
  EXPECT_EQ(combo.ListIndex(), -1);

  list.Text("Green");
  const RuntimeError error = ErrorOf([&] { list.Text("Mauve"); });
  EXPECT_EQ(error.Number(), 383);
  EXPECT_EQ(error.Description(), "'Text' property is read-only");
  EXPECT_EQ(list.Text(), "Green");
}

TEST_F(ComboBoxTest, HasTheIndexOfTheEntryThatEqualsItsTextExactly) {
  combo.Text("Green");
  EXPECT_EQ(combo.ListIndex(), 1);
  combo.Text("green");
  EXPECT_EQ(combo.ListIndex(), -1);
  combo.AddItem("green", 0);
  EXPECT_EQ(combo.ListIndex(), 0);
}

TEST_F(ComboBoxTest, ShowsTheEntryOfAnIndexAndRaisesChangeThenClick) {
  combo.ListIndex(2);
  EXPECT_EQ(combo.Text(), "None");
  combo.ListIndex(2);
  EXPECT_THAT(raised, ElementsAre("Change", "Click"));
  combo.ListIndex(-1);
  EXPECT_EQ(combo.Text(), "");
  EXPECT_EQ(raised.size(), 4U);
}

TEST_F(ComboBoxTest, RefusesIndexesThatItDoesNotHave) {
  for (const std::int32_t index : {-2, 3}) {
    SCOPED_TRACE(index);
    EXPECT_EQ(NumberOf([&] { combo.ListIndex(index); }), 380);
    EXPECT_EQ(NumberOf([&] { combo.List(index); }), 381);
  }
  EXPECT_EQ(NumberOf([&] { combo.AddItem("x", 4); }), 5);
  EXPECT_EQ(NumberOf([&] { combo.RemoveItem(3); }), 5);
  EXPECT_EQ(combo.Text(), "");
}

TEST_F(ComboBoxTest, KeepsItsTextWhenEntriesComeAndGo) {
  combo.Text("Green");
  raised.clear();
  combo.AddItem("Amber", 0);
  EXPECT_EQ(combo.ListIndex(), 2);
  combo.RemoveItem(2);
  EXPECT_EQ(combo.Text(), "Green");
  EXPECT_EQ(combo.ListIndex(), -1);
  EXPECT_THAT(raised, IsEmpty());
}

TEST_F(ComboBoxTest, IsEmptiedWithItsTextAndRaisesNothing) {
  combo.Text("Green");
  raised.clear();
  combo.Clear();
  EXPECT_EQ(combo.ListCount(), 0);
  EXPECT_EQ(combo.Text(), "");
  EXPECT_THAT(raised, IsEmpty());
}

TEST_F(ComboBoxTest, SortsItsEntriesWhenAskedTo) {
  forms::ComboBox sorted(form, "ComQuoteSource", nullptr, Style::DropDown, true);
  for (const char* name : {"swiss", "Nasdaq", "amex"}) sorted.AddItem(name, 0);
  EXPECT_THAT(sorted.Items(), ElementsAre("amex", "Nasdaq", "swiss"));
}

TEST_F(ComboBoxTest, LetsThePersonTypeAnyTextUnlessItIsAList) {
  combo.UserEdit("Mauve");
  EXPECT_EQ(combo.Text(), "Mauve");
  EXPECT_TRUE(combo.HasFocus());
  EXPECT_THAT(raised, ElementsAre("Change"));
  list.UserEdit("Green");
  EXPECT_EQ(list.Text(), "");
}

TEST_F(ComboBoxTest, LetsThePersonChooseAnEntry) {
  for (forms::ComboBox* box : {&combo, &list}) {
    SCOPED_TRACE(box->Name());
    raised.clear();
    box->UserChoose(1);
    EXPECT_EQ(box->Text(), "Green");
    EXPECT_TRUE(box->HasFocus());
    EXPECT_THAT(raised, ElementsAre("Change", "Click"));
  }
}

TEST_F(ComboBoxTest, IgnoresAPersonBesideItsEntriesAndWhileItIsDisabled) {
  combo.UserChoose(3);
  combo.UserChoose(-1);
  combo.Enabled(false);
  combo.UserChoose(1);
  combo.UserEdit("Mauve");
  EXPECT_EQ(combo.Text(), "");
  EXPECT_FALSE(combo.HasFocus());
  EXPECT_THAT(raised, IsEmpty());
}

}  // namespace
}  // namespace mirelo::testing
