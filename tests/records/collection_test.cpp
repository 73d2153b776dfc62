#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "automation/runtime_error.h"
#include "automation/variant.h"
#include "core/cQTDatas.h"
#include "core/cTickerDateTimes.h"
#include "support/error_number.h"

namespace mirelo {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

// What tells the two collection classes apart.
struct Quotes {
  using Collection = cQTDatas;
  using Item = cQTData;
  static constexpr const char* kClass = "cQTDatas";
  static constexpr const char* kSource = "DovantaDL.cQTDatas.";
  static std::string Identity(const Item& item) { return item.NameID(); }
};
struct States {
  using Collection = cTickerDateTimes;
  using Item = cTickerDateTime;
  static constexpr const char* kClass = "cTickerDateTimes";
  static constexpr const char* kSource = "Mirelo.cTickerDateTimes.";
  static std::string Identity(const Item& item) { return item.Symbol(); }
};

template <class Class>
class RecordCollectionTest : public ::testing::Test {
 protected:
  using Item = typename Class::Item;

  static std::shared_ptr<Item> New() { return std::make_shared<Item>(); }

  std::vector<std::string> Identities() const {
    std::vector<std::string> identities;
    for (const auto& item : records) identities.push_back(Class::Identity(*item));
    return identities;
  }

  void ExpectFailure(const std::string& routine, const std::function<void()>& call) const {
    SCOPED_TRACE(routine);
    testing::ExpectError(testing::ErrorOf(call), 0x80040064,
                         std::string(Class::kClass) + " component failure", Class::kSource + routine);
  }

  typename Class::Collection records;
};

using Classes = ::testing::Types<Quotes, States>;
TYPED_TEST_SUITE(RecordCollectionTest, Classes);

TYPED_TEST(RecordCollectionTest, IsNamedForClients) {
  EXPECT_EQ(this->records.TypeName(), TypeParam::kClass);
}

TYPED_TEST(RecordCollectionTest, ItemAddMakesTheItemOnceAndFindsItAfterwards) {
  const auto made = this->records.ItemAdd("MSFT");
  EXPECT_EQ(this->records.ItemAdd("MSFT"), made);
  EXPECT_EQ(this->records.Count(), 1);
  EXPECT_EQ(TypeParam::Identity(*made), "MSFT");
}

TYPED_TEST(RecordCollectionTest, ItemAddFindsWithoutRegardToCaseAndKeepsTheIdentityGivenFirst) {
  const auto made = this->records.ItemAdd("Msft");
  EXPECT_EQ(this->records.ItemAdd("mSFT"), made);
  EXPECT_EQ(TypeParam::Identity(*made), "Msft");
}

TYPED_TEST(RecordCollectionTest, ItemAddTakesTheEmptyTextAsAKey) {
  const auto made = this->records.ItemAdd("");
  EXPECT_EQ(this->records.ItemAdd(""), made);
  EXPECT_EQ(this->records.Count(), 1);
}

TYPED_TEST(RecordCollectionTest, ItemAddFindsByPositionAndFailsForOneThatIsNotThere) {
  const auto first = this->records.ItemAdd("A");
  EXPECT_EQ(this->records.ItemAdd(1), first);
  this->ExpectFailure("ItemAdd", [&] { this->records.ItemAdd(2); });
  this->ExpectFailure("ItemAdd", [&] { this->records.ItemAdd(0); });
  this->ExpectFailure("ItemAdd", [&] { this->records.ItemAdd(Variant()); });
  EXPECT_EQ(this->records.Count(), 1);
}

TYPED_TEST(RecordCollectionTest, ItemFindsByPositionAndByKey) {
  const auto a = this->records.ItemAdd("A");
  const auto b = this->records.ItemAdd("B");
  EXPECT_EQ(this->records.Item(1), a);
  EXPECT_EQ(this->records.Item("b"), b);
  this->ExpectFailure("Item", [&] { this->records.Item("C"); });
  this->ExpectFailure("Item", [&] { this->records.Item(3); });
  this->ExpectFailure("Item", [&] { this->records.Item(VariantArray()); });
}

TYPED_TEST(RecordCollectionTest, AddAppendsWithAKeyOrWithout) {
  const auto plain = this->New();
  const auto keyed = this->New();
  this->records.Add(plain);
  this->records.Add(keyed, "K");
  EXPECT_EQ(this->records.Item(1), plain);
  EXPECT_EQ(this->records.Item("k"), keyed);
  this->ExpectFailure("Add", [&] { this->records.Add(this->New(), "k"); });
  this->ExpectFailure("Add", [&] { this->records.Add(this->New(), 7); });
  EXPECT_EQ(this->records.Count(), 2);
}

TYPED_TEST(RecordCollectionTest, AddRefusesANullItem) {
  this->ExpectFailure("Add", [&] { this->records.Add(nullptr); });
  this->ExpectFailure("Add", [&] { this->records.Add(nullptr, "K"); });
  EXPECT_EQ(this->records.Count(), 0);
}

TYPED_TEST(RecordCollectionTest, RemoveTakesAPositionOrAKey) {
  for (const char* key : {"A", "B", "C"}) this->records.ItemAdd(key);
  this->records.Remove(1);
  this->records.Remove("c");
  EXPECT_THAT(this->Identities(), ElementsAre("B"));
  this->ExpectFailure("Remove", [&] { this->records.Remove("C"); });
  this->ExpectFailure("Remove", [&] { this->records.Remove(2); });
}

TYPED_TEST(RecordCollectionTest, IsEmptyBehindClear) {
  this->records.ItemAdd("A");
  this->records.Clear();
  EXPECT_EQ(this->records.Count(), 0);
  EXPECT_THAT(this->Identities(), IsEmpty());
  this->records.ItemAdd("A");
  EXPECT_EQ(this->records.Count(), 1);
}

TYPED_TEST(RecordCollectionTest, LeavesItemsAliveBehindClearWhereSomeoneHoldsThem) {
  const auto held = this->records.ItemAdd("A");
  this->records.Clear();
  EXPECT_EQ(TypeParam::Identity(*held), "A");
  EXPECT_NE(this->records.ItemAdd("A"), held);
}

TYPED_TEST(RecordCollectionTest, IteratesInTheOrderOfInsertion) {
  for (const char* key : {"C", "A", "B"}) this->records.ItemAdd(key);
  EXPECT_THAT(this->Identities(), ElementsAre("C", "A", "B"));
}

TYPED_TEST(RecordCollectionTest, AnEnumeratorKeepsTheItemsOfBeforeAClear) {
  for (const char* key : {"A", "B"}) this->records.ItemAdd(key);
  auto enumerator = this->records.NewEnum();
  EXPECT_EQ(TypeParam::Identity(*enumerator.Next()), "A");
  this->records.Clear();
  this->records.ItemAdd("C");
  EXPECT_EQ(TypeParam::Identity(*enumerator.Next()), "B");
  EXPECT_EQ(enumerator.Next(), nullptr);
  EXPECT_EQ(enumerator.Next(), nullptr);
}

TYPED_TEST(RecordCollectionTest, AnEnumeratorPassesOverItemsThatWereRemovedAhead) {
  for (const char* key : {"A", "B", "C", "D", "E"}) this->records.ItemAdd(key);
  auto enumerator = this->records.NewEnum();
  EXPECT_EQ(TypeParam::Identity(*enumerator.Next()), "A");
  this->records.Remove("B");
  EXPECT_EQ(TypeParam::Identity(*enumerator.Next()), "C");
  this->records.Remove("A");
  this->records.Remove("C");
  this->records.Remove("D");
  EXPECT_EQ(TypeParam::Identity(*enumerator.Next()), "E");
  EXPECT_EQ(enumerator.Next(), nullptr);
  this->records.Remove("E");
  this->records.ItemAdd("F");
  EXPECT_EQ(TypeParam::Identity(*enumerator.Next()), "F");
}

TEST(MoveTo, AppendsInOrderAndLeavesNothing) {
  cQTDatas from;
  cQTDatas to;
  to.ItemAdd("a0");
  const auto moved = from.ItemAdd("a1");
  from.ItemAdd("a2");
  from.MoveTo(to);
  EXPECT_EQ(from.Count(), 0);
  ASSERT_EQ(to.Count(), 3);
  EXPECT_EQ(to.Item(2)->NameID(), "a1");
  EXPECT_EQ(to.Item("a2")->NameID(), "a2");
  EXPECT_EQ(to.Item("A1")->NameID(), moved->NameID());
}

TEST(MoveTo, GivesItsValuesToAQuoteThatIsThereAlready) {
  cQTDatas from;
  cQTDatas to;
  const auto present = to.ItemAdd("A1");
  from.ItemAdd("a1")->Last_Price(28.35);
  from.MoveTo(to);
  EXPECT_EQ(to.Count(), 1);
  EXPECT_EQ(to.Item(1), present);
  EXPECT_EQ(present->Last_Price(), 28.35);
  EXPECT_EQ(present->NameID(), "A1") << "the identity stays as it was given first";
}

TEST(MoveTo, ShowsNewQuotesToAnEnumeratorOfTheTarget) {
  cQTDatas from;
  cQTDatas to;
  auto enumerator = to.NewEnum();
  from.ItemAdd("a1");
  from.MoveTo(to);
  ASSERT_NE(enumerator.Next(), nullptr);
}

}  // namespace
}  // namespace mirelo
