#include "forms/list_box.h"

#include "forms/form.h"

namespace mirelo::forms {
namespace {

class ListBoxes : public ::testing::Test {
 protected:
  Form form{"form", ""};
  ListBox list{form, "list", nullptr};
};

TEST_F(ListBoxes, LeaveAnAbsentSelectionAbsentHoweverManyEntriesAreAdded) {
  for (int i = 0; i < 1000; ++i) {
    list.AddItem("entry");
    ASSERT_EQ(list.ListIndex(), -1);
  }
}

TEST_F(ListBoxes, KeepTheSelectionWithItsEntry) {
  for (const char* text : {"A", "B", "C"}) list.AddItem(text);
  list.ListIndex(1);
  list.AddItem("in front", 0);
  EXPECT_EQ(list.List(list.ListIndex()), "B");
  list.AddItem("behind");
  EXPECT_EQ(list.List(list.ListIndex()), "B");
  list.RemoveItem(0);
  EXPECT_EQ(list.List(list.ListIndex()), "B");
}

}  // namespace
}  // namespace mirelo::forms
