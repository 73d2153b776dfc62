#include "automation/collection.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "support/error_number.h"
#include "support/memory_shortage.h"

namespace mirelo {
namespace {

using testing::NumberOf;

template <class T>
std::vector<T> ItemsOf(const Collection<T>& collection) {
  std::vector<T> items;
  for (const T& item : collection) items.push_back(item);
  return items;
}

Collection<std::string>& Fill(Collection<std::string>& collection, std::initializer_list<const char*> keys) {
  for (const char* key : keys) collection.Add(std::string("item ") + key, key);
  return collection;
}

TEST(Collection, IsEmptyAtFirst) {
  Collection<int> collection;
  EXPECT_EQ(collection.Count(), 0);
  EXPECT_TRUE(collection.begin() == collection.end());
  EXPECT_EQ(collection.Find("a"), nullptr);
}

TEST(Collection, KeepsTheOrderOfAddingByIndexAndIteration) {
  Collection<std::string> collection;
  Fill(collection, {"b", "a"}).Add("without key");
  Fill(collection, {"c"});
  EXPECT_EQ(collection.Count(), 4);
  EXPECT_EQ(collection.Item(1), "item b");
  EXPECT_EQ(collection.Item(3), "without key");
  EXPECT_EQ(ItemsOf(collection), (std::vector<std::string>{"item b", "item a", "without key", "item c"}));
}

TEST(Collection, FindsKeysWithoutRegardToCase) {
  Collection<std::string> collection;
  Fill(collection, {"msft", "\u00C4\u0416\u03A9", "a longer key than fits a short string"});
  EXPECT_EQ(collection.Item("MSFT"), "item msft");
  EXPECT_EQ(collection.Item("\u00E4\u0436\u03C9"), "item \u00C4\u0416\u03A9");
  EXPECT_EQ(collection.Item("A LONGER Key Than Fits A Short String"),
            "item a longer key than fits a short string");
  EXPECT_EQ(collection.Find("msf"), nullptr);
  EXPECT_EQ(collection.Find("msft "), nullptr);
}

TEST(Collection, RefusesARepeatedKey) {
  Collection<std::string> collection;
  Fill(collection, {"msft", "\u0436"});
  EXPECT_EQ(NumberOf([&] { collection.Add("again", "MsFt"); }), 457);
  EXPECT_EQ(NumberOf([&] { collection.Add("again", "\u0416"); }), 457);
  EXPECT_EQ(collection.Count(), 2);
}

TEST(Collection, TakesAnEmptyKeyAsAKey) {
  Collection<std::string> collection;
  collection.Add("unnamed", "");
  collection.Add("without key");
  EXPECT_EQ(collection.Item(""), "unnamed");
  EXPECT_EQ(NumberOf([&] { collection.Add("again", ""); }), 457);
}

TEST(Collection, RaisesSubscriptOutOfRangeForAnIndexOutside) {
  Collection<std::string> collection;
  Fill(collection, {"a", "b"});
  for (std::int32_t index : {0, 3, -1}) {
    EXPECT_EQ(NumberOf([&] { collection.Item(index); }), 9) << index;
    EXPECT_EQ(NumberOf([&] { collection.Remove(index); }), 9) << index;
  }
}

TEST(Collection, RaisesInvalidProcedureCallForAnAbsentKey) {
  Collection<std::string> collection;
  Fill(collection, {"a"});
  EXPECT_EQ(NumberOf([&] { collection.Item("b"); }), 5);
  EXPECT_EQ(NumberOf([&] { collection.Remove("b"); }), 5);
}

TEST(Collection, ClosesUpWhereItemsAreRemoved) {
  Collection<std::string> collection;
  Fill(collection, {"a", "b", "c", "d", "e"});
  collection.Remove("C");
  collection.Remove(1);
  EXPECT_EQ(collection.Count(), 3);
  EXPECT_EQ(collection.Item(1), "item b");
  EXPECT_EQ(collection.Item(2), "item d");
  EXPECT_EQ(collection.Item("e"), "item e");
  EXPECT_EQ(collection.Find("c"), nullptr);
  EXPECT_EQ(NumberOf([&] { collection.Item(4); }), 9);
}

TEST(Collection, GivesTheKeyOfARemovedItemToANewOne) {
  Collection<std::string> collection;
  Fill(collection, {"a", "b"});
  collection.Remove("a");
  collection.Add("new", "A");
  EXPECT_EQ(collection.Item("a"), "new");
  EXPECT_EQ(collection.Item(2), "new");
}

TEST(Collection, RemovesFromTheLastToTheFirst) {
  Collection<std::string> collection;
  Fill(collection, {"a", "b", "c"});
  for (std::int32_t index = collection.Count(); index > 0; --index) collection.Remove(index);
  EXPECT_EQ(collection.Count(), 0);
  EXPECT_EQ(collection.Find("b"), nullptr);
}

TEST(Collection, IsAsNewWhenCleared) {
  Collection<std::string> collection;
  Fill(collection, {"a", "b", "c"}).Remove("b");
  collection.Clear();
  EXPECT_EQ(collection.Count(), 0);
  EXPECT_TRUE(ItemsOf(collection).empty());
  EXPECT_EQ(collection.Find("a"), nullptr);
  Fill(collection, {"c", "a"});
  EXPECT_EQ(collection.Item(1), "item c");
  EXPECT_EQ(collection.Item("a"), "item a");
}

TEST(Collection, IsClearedWhateverMemoryThereIs) {
  Collection<std::int32_t> collection;
  for (std::int32_t i = 1; i <= 100; ++i) collection.Add(i, "a" + std::to_string(i));
  const testing::MemoryShortage shortage;
  collection.Clear();
  EXPECT_EQ(collection.Count(), 0);
}

TEST(Collection, LeavesClearedItemsToOtherOwners) {
  Collection<std::shared_ptr<int>> collection;
  const auto item = std::make_shared<int>(5);
  collection.Add(item, "a");
  collection.Clear();
  EXPECT_EQ(item.use_count(), 1);
}

TEST(Collection, DestroysAnItemAtItsRemoval) {
  Collection<std::shared_ptr<int>> collection;
  std::vector<std::weak_ptr<int>> items;
  for (int i = 0; i < 3; ++i) {
    auto item = std::make_shared<int>(i);
    items.push_back(item);
    collection.Add(std::move(item));
  }
  collection.Remove(2);
  EXPECT_TRUE(items[1].expired());
  EXPECT_FALSE(items[0].expired());
}

TEST(Collection, LetsAnItemsEndUseTheCollection) {
  Collection<std::shared_ptr<void>> collection;
  for (const char* key : {"a", "b", "c"}) {
    collection.Add(std::shared_ptr<void>(nullptr, [&](void*) { collection.Add(nullptr); }), key);
  }
  collection.Remove("b");
  EXPECT_EQ(collection.Count(), 3);
  collection.Clear();
  EXPECT_EQ(collection.Count(), 2);
  EXPECT_EQ(collection.Find("a"), nullptr);
}

TEST(Collection, TakesOneMillionItemsOffItsFront) {
  constexpr std::int32_t kItems = 1'000'000;
  Collection<std::int32_t> collection;
  for (std::int32_t i = 1; i <= kItems; ++i) collection.Add(i, "a" + std::to_string(i));
  std::int32_t out_of_order = 0;
  for (std::int32_t i = 1; i <= kItems; ++i) {
    if (collection.Item(1) != i) ++out_of_order;
    if (i % 2 == 0) {
      collection.Remove(1);
    } else {
      collection.Remove("A" + std::to_string(i));
    }
  }
  EXPECT_EQ(out_of_order, 0);
  EXPECT_EQ(collection.Count(), 0);
}

// A buffer through which many items pass while few wait.
TEST(Collection, StaysInStepWhileItemsPassThrough) {
  Collection<std::int32_t> collection;
  for (std::int32_t i = 1; i <= 100'000; ++i) {
    collection.Add(i, "a" + std::to_string(i));
    if (i <= 10) continue;
    ASSERT_EQ(collection.Count(), 11);
    ASSERT_EQ(collection.Item(11), i);
    ASSERT_EQ(*collection.Find("a" + std::to_string(i - 5)), i - 5);
    collection.Remove(1);
  }
}

// Against the plainest model: a list of keys and values.
TEST(Collection, AgreesWithAListUnderRandomUse) {
  std::mt19937 random(20110120);
  Collection<int> collection;
  std::vector<std::pair<std::string, int>> model;
  const auto position_of = [&](const std::string& key) {
    return std::find_if(model.begin(), model.end(), [&](const auto& entry) { return entry.first == key; });
  };
  for (int step = 0; step < 40'000; ++step) {
    const std::string key = "k" + std::to_string(random() % 300);
    const bool present = position_of(key) != model.end();
    switch (random() % 5) {
      case 0:
      case 1:
        if (present) {
          ASSERT_EQ(NumberOf([&] { collection.Add(step, UCase(key)); }), 457);
        } else {
          collection.Add(step, key);
          model.emplace_back(key, step);
        }
        break;
      case 2:
        ASSERT_EQ(NumberOf([&] { collection.Remove(UCase(key)); }), present ? 0 : 5);
        if (present) model.erase(position_of(key));
        break;
      case 3:
        if (!model.empty()) {
          const std::size_t index = random() % model.size();
          ASSERT_EQ(collection.Item(static_cast<std::int32_t>(index) + 1), model[index].second);
          if (random() % 4 == 0) {
            collection.Remove(static_cast<std::int32_t>(index) + 1);
            model.erase(model.begin() + static_cast<std::ptrdiff_t>(index));
          }
        }
        break;
      default: {
        const int* found = collection.Find(key);
        ASSERT_EQ(found != nullptr, present);
        ASSERT_TRUE(!present || *found == position_of(key)->second);
      }
    }
    ASSERT_EQ(collection.Count(), static_cast<std::int32_t>(model.size()));
  }
  const std::vector<int> items = ItemsOf(collection);
  ASSERT_EQ(items.size(), model.size());
  for (std::size_t i = 0; i < items.size(); ++i) EXPECT_EQ(items[i], model[i].second);
}

}  // namespace
}  // namespace mirelo
