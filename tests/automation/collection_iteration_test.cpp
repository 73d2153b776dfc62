#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <utility>

#include "automation/collection.h"

namespace mirelo {
namespace {

using Letters = Collection<std::string>;

void Fill(Letters& letters, const std::string& text) {
  for (const char letter : text) letters.Add(std::string(1, letter), std::string(1, letter));
}

// What an iteration over "abcdef" meets when `act` is called at each item.
std::string Met(const std::function<void(Letters&, const std::string& letter)>& act) {
  Letters letters;
  Fill(letters, "abcdef");
  std::string met;
  for (const std::string& item : letters) {
    const std::string letter = item;
    met += letter;
    act(letters, letter);
  }
  return met;
}

TEST(CollectionIteration, MeetsAllItemsInOrder) {
  EXPECT_EQ(Met([](Letters&, const std::string&) {}), "abcdef");
}

TEST(CollectionIteration, GoesOnWhenTheCurrentItemIsRemoved) {
  EXPECT_EQ(Met([](Letters& letters, const std::string& letter) { letters.Remove(letter); }), "abcdef");
}

TEST(CollectionIteration, GoesOnWhenOneCurrentItemIsRemoved) {
  for (const char* removed : {"a", "c", "f"}) {
    EXPECT_EQ(Met([&](Letters& letters, const std::string& letter) {
                if (letter == removed) letters.Remove(letter);
              }),
              "abcdef")
        << removed;
  }
}

TEST(CollectionIteration, PassesOverItemsThatWereRemovedAhead) {
  EXPECT_EQ(Met([](Letters& letters, const std::string& letter) {
              if (letter == "b") letters.Remove("c"), letters.Remove("f");
            }),
            "abde");
}

TEST(CollectionIteration, RepeatsNothingWhenItemsBehindAreRemoved) {
  EXPECT_EQ(Met([](Letters& letters, const std::string& letter) {
              if (letter == "c") letters.Remove(1), letters.Remove(1);
            }),
            "abcdef");
}

TEST(CollectionIteration, KeepsItsPlaceWhenItemsAreReadByIndexAfterRemovals) {
  std::string read;
  EXPECT_EQ(Met([&](Letters& letters, const std::string& letter) {
              if (letter == "c") letters.Remove("b"), letters.Remove("d");
              if (letter == "e") read = letters.Item(1) + letters.Item(2) + letters.Item(3);
            }),
            "abcef");
  EXPECT_EQ(read, "ace");
}

TEST(CollectionIteration, MeetsItemsThatAreAddedMeanwhile) {
  EXPECT_EQ(Met([](Letters& letters, const std::string& letter) {
              if (letter == "b" || letter == "f") Fill(letters, letter == "b" ? "x" : "y");
            }),
            "abcdefxy");
}

TEST(CollectionIteration, MeetsAnItemThatReplacesTheLastOne) {
  EXPECT_EQ(Met([](Letters& letters, const std::string& letter) {
              if (letter != "f") return;
              letters.Remove("f");
              Fill(letters, "g");
            }),
            "abcdefg");
}

TEST(CollectionIteration, EndsWhenAllItemsAreCleared) {
  EXPECT_EQ(Met([](Letters& letters, const std::string& letter) {
              if (letter == "b") letters.Clear();
            }),
            "ab");
}

TEST(CollectionIteration, MeetsWhatIsAddedAfterClearing) {
  EXPECT_EQ(Met([](Letters& letters, const std::string& letter) {
              if (letter != "b") return;
              letters.Clear();
              Fill(letters, "xy");
            }),
            "abxy");
}

TEST(CollectionIteration, MayBeNested) {
  Letters letters;
  Fill(letters, "abc");
  std::string met;
  for (const std::string& outer : letters) {
    for (const std::string& inner : letters) met += outer + inner + " ";
  }
  EXPECT_EQ(met, "aa ab ac ba bb bc ca cb cc ");
}

TEST(CollectionIteration, LeavesTheCollectionInOrder) {
  Letters letters;
  Fill(letters, "abcdef");
  for (const std::string& item : letters) {
    if (item != "a" && item != "e") letters.Remove(std::string(item));
  }
  EXPECT_EQ(letters.Count(), 2);
  EXPECT_EQ(letters.Item(1) + letters.Item(2), "ae");
  Fill(letters, "f");
  EXPECT_EQ(letters.Item(3), "f");
  EXPECT_EQ(letters.Item("F"), "f");
}

TEST(CollectionIteration, WritesThroughItsIterator) {
  Letters letters;
  Fill(letters, "ab");
  for (std::string& item : letters) item += "!";
  EXPECT_EQ(letters.Item(2), "b!");
  EXPECT_EQ(std::as_const(letters).begin()->size(), 2u);
}

TEST(CollectionIteration, IteratorsMayBeCopied) {
  Letters letters;
  Fill(letters, "abc");
  auto first = letters.begin();
  auto second = first;
  ++second;
  first = second;
  ++first;
  EXPECT_EQ(*first + *second, "cb");
}

}  // namespace
}  // namespace mirelo
