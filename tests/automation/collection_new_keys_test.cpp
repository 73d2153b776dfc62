#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "automation/collection.h"
#include "automation/runtime_error.h"

namespace mirelo {
namespace {

using ::testing::ElementsAre;

std::vector<int> Items(const Collection<int>& collection) {
  std::vector<int> items;
  for (const int item : collection) items.push_back(item);
  return items;
}

Collection<int>& Fill(Collection<int>& collection, int first, int count) {
  for (int i = first; i < first + count; ++i) collection.AddNew(i, "k" + std::to_string(i));
  return collection;
}

TEST(CollectionNewKeys, AreFoundLikeOthers) {
  Collection<int> collection;
  collection.Add(0, "k0");
  Fill(collection, 1, 5);
  EXPECT_EQ(collection.Item("K3"), 3);
  Fill(collection, 6, 2);
  EXPECT_EQ(collection.Item("k7"), 7);
  EXPECT_EQ(collection.Item("k0"), 0);
  EXPECT_EQ(collection.Find("k8"), nullptr);
}

TEST(CollectionNewKeys, AreRefusedToOthersAfterwards) {
  Collection<int> collection;
  Fill(collection, 1, 5);
  EXPECT_THROW(collection.Add(9, "K5"), RuntimeError);
  EXPECT_EQ(collection.Count(), 5);
}

TEST(CollectionNewKeys, GoWithTheirItems) {
  Collection<int> collection;
  Fill(collection, 1, 5);
  collection.Remove(1);
  collection.Remove(2);  // the third, before anybody looked for a key
  EXPECT_THAT(Items(collection), ElementsAre(2, 4, 5));
  EXPECT_EQ(collection.Find("k3"), nullptr);
  EXPECT_EQ(collection.Item("k4"), 4);
  collection.Remove("k4");
  Fill(collection, 6, 1);
  EXPECT_EQ(collection.Item("k6"), 6);
  EXPECT_THAT(Items(collection), ElementsAre(2, 5, 6));
}

TEST(CollectionNewKeys, SurviveTheClosingOfGaps) {
  Collection<int> collection;
  Fill(collection, 0, 100);
  for (int i = 50; i > 1; --i) collection.Remove(i);
  EXPECT_EQ(collection.Item(2), 50);
  for (int i = 50; i < 100; ++i) EXPECT_EQ(collection.Item("k" + std::to_string(i)), i);
}

TEST(CollectionNewKeys, AreForgottenByClear) {
  for (const int count : {5, 500}) {
    SCOPED_TRACE(count);
    Collection<int> collection;
    Fill(collection, 0, count).Clear();
    EXPECT_EQ(collection.Count(), 0);
    EXPECT_EQ(collection.Find("k1"), nullptr);
    Fill(collection, 0, count);
    EXPECT_EQ(collection.Item("k1"), 1);
  }
}

TEST(CollectionFindOrAdd, MakesAnItemForAKeyThatIsNotThere) {
  Collection<int> collection;
  int made = 0;
  const auto make = [&] { return ++made; };
  EXPECT_EQ(collection.FindOrAdd("A", make), 1);
  EXPECT_EQ(collection.FindOrAdd("a", make), 1);
  EXPECT_EQ(collection.FindOrAdd("B", make), 2);
  EXPECT_EQ(collection.Item("b"), 2);
  EXPECT_EQ(collection.Count(), 2);
}

// An item whose end does something.
struct Guest {
  explicit Guest(std::function<void()> action) : action(std::move(action)) {}
  ~Guest() { action(); }
  std::function<void()> action;
};

TEST(CollectionClear, KeepsWhatTheEndOfAnItemAdds) {
  for (const int others : {0, 3, 100}) {
    SCOPED_TRACE(others);
    Collection<std::shared_ptr<Guest>> collection;
    const auto idle = [] { return std::make_shared<Guest>([] {}); };
    collection.Add(std::make_shared<Guest>([&] { collection.Add(idle(), "late"); }), "early");
    for (int i = 0; i < others; ++i) collection.Add(idle(), std::to_string(i));
    collection.Clear();
    EXPECT_EQ(collection.Count(), 1);
    EXPECT_NE(collection.Find("late"), nullptr);
  }
}

TEST(CollectionClear, MayBeCalledFromTheEndOfAnItem) {
  for (const int others : {0, 3, 100}) {
    SCOPED_TRACE(others);
    Collection<std::shared_ptr<Guest>> collection;
    collection.Add(std::make_shared<Guest>([&] { collection.Clear(); }));
    for (int i = 0; i < others; ++i) collection.Add(std::make_shared<Guest>([] {}));
    collection.Clear();
    EXPECT_EQ(collection.Count(), 0);
  }
}

}  // namespace
}  // namespace mirelo
