#include "forms/list_box.h"

#include <initializer_list>

#include "forms/control_test.h"
#include "forms/item_list.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(ItemList, InsertsBeforeAnIndexAndAtTheEnd) {
  forms::ItemList list;
  EXPECT_EQ(list.Insert("b", -1), 0);
  EXPECT_EQ(list.Insert("d", 1), 1);
  EXPECT_EQ(list.Insert("a", 0), 0);
  EXPECT_EQ(list.Insert("c", 2), 2);
  EXPECT_THAT(list.Items(), ElementsAre("a", "b", "c", "d"));
  EXPECT_EQ(list.Count(), 4);
}

TEST(ItemList, PutsEntriesOfASortedListAtTheirPlaceWhateverTheIndex) {
  forms::ItemList list(true);
  EXPECT_EQ(list.Insert("beta", -1), 0);
  EXPECT_EQ(list.Insert("Alpha", 1), 0);
  EXPECT_EQ(list.Insert("gamma", 0), 2);
  EXPECT_EQ(list.Insert("BETA", 0), 2) << "behind the equal one that was there";
  EXPECT_THAT(list.Items(), ElementsAre("Alpha", "beta", "BETA", "gamma"));
}

TEST(ItemList, RefusesIndexesThatItDoesNotHave) {
  forms::ItemList list;
  list.Insert("a", -1);
  for (const std::int32_t index : {-2, 2}) {
    SCOPED_TRACE(index);
    EXPECT_EQ(NumberOf([&] { list.Insert("b", index); }), 5);
  }
  for (const std::int32_t index : {-1, 1}) {
    SCOPED_TRACE(index);
    EXPECT_FALSE(list.Has(index));
    EXPECT_EQ(NumberOf([&] { list.Remove(index); }), 5);
    EXPECT_EQ(NumberOf([&] { list.At(index); }), 381);
  }
  EXPECT_THAT(list.Items(), ElementsAre("a"));
}

class ListBoxTest : public ControlTest {
 protected:
  ListBoxTest() {
    Watch(list.Click, "Click");
    Watch(list.DblClick, "DblClick");
    for (const char* name : {"Last", "Bid", "Ask"}) list.AddItem(name);
  }
  std::string Selected() const { return list.ListIndex() < 0 ? "none" : list.List(list.ListIndex()); }

  forms::ListBox list{form, "ListLeft", nullptr};
};

TEST_F(ListBoxTest, StartsWithoutASelection) {
  EXPECT_EQ(list.ListIndex(), -1);
  EXPECT_EQ(list.ListCount(), 3);
  EXPECT_THAT(list.Items(), ElementsAre("Last", "Bid", "Ask"));
  EXPECT_THAT(raised, IsEmpty());
}

TEST_F(ListBoxTest, RaisesClickWheneverTheSelectionIsSet) {
  for (const std::int32_t index : {-1, 1, 1, 2, -1}) {
    SCOPED_TRACE(index);
    raised.clear();
    list.ListIndex(index);
    EXPECT_EQ(list.ListIndex(), index);
    EXPECT_THAT(raised, ElementsAre("Click"));
  }
}

TEST_F(ListBoxTest, RefusesIndexesThatItDoesNotHave) {
  for (const std::int32_t index : {-2, 3}) {
    SCOPED_TRACE(index);
    EXPECT_EQ(NumberOf([&] { list.ListIndex(index); }), 380);
  }
  EXPECT_EQ(NumberOf([&] { list.List(-1); }), 381);
  EXPECT_EQ(NumberOf([&] { list.List(3); }), 381);
  EXPECT_EQ(NumberOf([&] { list.AddItem("x", 4); }), 5);
  EXPECT_EQ(NumberOf([&] { list.RemoveItem(3); }), 5);
  EXPECT_EQ(list.ListIndex(), -1);
  EXPECT_EQ(list.ListCount(), 3);
}

TEST_F(ListBoxTest, KeepsTheSelectionWithItsEntry) {
  list.ListIndex(1);
  raised.clear();
  list.AddItem("before", 0);
  EXPECT_EQ(Selected(), "Bid");
  list.AddItem("in its place", 2);
  EXPECT_EQ(Selected(), "Bid");
  list.AddItem("behind");
  EXPECT_EQ(Selected(), "Bid");
  list.RemoveItem(0);
  EXPECT_EQ(Selected(), "Bid");
  list.RemoveItem(3);
  EXPECT_EQ(Selected(), "Bid");
  EXPECT_THAT(raised, IsEmpty());
}

TEST_F(ListBoxTest, LosesTheSelectionWithItsEntryAndRaisesNothing) {
  list.ListIndex(1);
  raised.clear();
  list.RemoveItem(1);
  EXPECT_EQ(list.ListIndex(), -1);
  EXPECT_THAT(list.Items(), ElementsAre("Last", "Ask"));
  list.ListIndex(0);
  raised.clear();
  list.Clear();
  EXPECT_EQ(list.ListIndex(), -1);
  EXPECT_EQ(list.ListCount(), 0);
  EXPECT_THAT(raised, IsEmpty());
}

TEST_F(ListBoxTest, RaisesClickForAPersonsClickOnAnyEntry) {
  list.UserSelect(2);
  list.UserSelect(2);
  EXPECT_EQ(Selected(), "Ask");
  EXPECT_TRUE(list.HasFocus());
  EXPECT_THAT(raised, ElementsAre("Click", "Click"));
}

TEST_F(ListBoxTest, RaisesClickAndThenDblClickForADoubleClick) {
  list.UserDoubleClick(2);
  EXPECT_EQ(Selected(), "Ask");
  EXPECT_THAT(raised, ElementsAre("Click", "DblClick"));
}

TEST_F(ListBoxTest, IgnoresClicksBesideItsEntriesAndWhileItIsDisabled) {
  list.UserSelect(3);
  list.UserSelect(-1);
  list.UserDoubleClick(3);
  list.Enabled(false);
  list.UserSelect(0);
  list.UserDoubleClick(0);
  EXPECT_EQ(list.ListIndex(), -1);
  EXPECT_FALSE(list.HasFocus());
  EXPECT_THAT(raised, IsEmpty());
}

}  // namespace
}  // namespace mirelo::testing
