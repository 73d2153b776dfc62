// Rows that are wrong must not compile; those that are right do.

#include "automation_server/rows.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "automation/event.h"
#include "automation/variant.h"
#include "core/cQTData.h"

namespace mirelo::automation_server {
namespace {

struct Uncrossable {};

struct Sample : Object {
  std::string_view TypeName() const override { return "Sample"; }
  std::int32_t Number() const { return 1; }
  void Number(std::int32_t) {}
  Uncrossable Strange() const { return {}; }
  void Strange(Uncrossable) {}
  void TakeStrange(Uncrossable) {}
  Uncrossable GiveStrange() { return {}; }
  void Two(std::int16_t, const std::string&) {}
  void Pointer(cQTData*) {}
  std::vector<int> Numbers() { return {}; }
  Event<std::int32_t> Told;
  Event<Uncrossable> ToldStrangely;
};

template <class Function, class... Names>
concept IsMethodRow = requires(Function function, const Names&... names) {
  MethodRow("Name", function, names...);
};
template <class AnEvent, class... Names>
concept IsEventRow = requires(AnEvent event, const Names&... names) {
  EventRow("Name", event, names...);
};
using Name = const char*;

static_assert(IsMethodRow<decltype(&Sample::Two), Name, Name>);
static_assert(!IsMethodRow<decltype(&Sample::Two)>, "its parameters need names");
static_assert(!IsMethodRow<decltype(&Sample::Two), Name>);
static_assert(!IsMethodRow<decltype(&Sample::Two), Name, Name, Name>);
static_assert(!IsMethodRow<decltype(&Sample::Two), Name, int>, "that is no name");

static_assert(IsMethodRow<decltype(&Sample::Two), Optional<std::int16_t>, Optional<const char*>>);
static_assert(!IsMethodRow<decltype(&Sample::Two), Optional<std::int32_t>, Name>, "its default may not fit");
static_assert(!IsMethodRow<decltype(&Sample::Two), Optional<const char*>, Name>);
static_assert(!IsMethodRow<decltype(&Sample::Two), Name, Optional<std::int16_t>>);

static_assert(!IsMethodRow<decltype(&Sample::TakeStrange), Name>);
static_assert(!IsMethodRow<decltype(&Sample::GiveStrange)>);
static_assert(!IsMethodRow<decltype(&Sample::Pointer), Name>, "nobody would keep what it points to");
static_assert(!IsMethodRow<decltype(&Sample::Numbers)>);

template <class C>
concept HasStrangeGet = requires {
  PropertyRow("Strange").Get(&C::Strange);
};
template <class C>
concept HasStrangeLet = requires {
  PropertyRow("Strange").Let(&C::Strange);
};
template <class C>
concept HasNumberLet = requires {
  PropertyRow("Number").Get(&C::Number).Let(&C::Number);
};
template <class C>
concept HasNumberSet = requires {
  PropertyRow("Number").Set(&C::Number);
};
static_assert(HasNumberLet<Sample>);
static_assert(!HasNumberSet<Sample>, "a number is no reference");
static_assert(!HasStrangeGet<Sample>);
static_assert(!HasStrangeLet<Sample>);

static_assert(IsEventRow<decltype(&Sample::Told), Name>);
static_assert(!IsEventRow<decltype(&Sample::Told)>);
static_assert(!IsEventRow<decltype(&Sample::ToldStrangely), Name>);

// What a row is made of decides the rest.
TEST(Rows, TakeTypesAndReferencesFromTheMember) {
  const Member row = MethodRow("Two", &Sample::Two, "a", Optional("b", "x"));
  EXPECT_EQ(row.type, ValueType::kNothing);
  ASSERT_EQ(row.parameters.size(), 2U);
  EXPECT_EQ(row.parameters[0].type, ValueType::kInteger);
  EXPECT_FALSE(row.parameters[1].by_reference);
  EXPECT_EQ(row.parameters[1].default_value, Variant("x"));
}

TEST(Rows, RefuseAnObjectOfAnotherClass) {
  const Member row = PropertyRow("Number").Get(&Sample::Number);
  EXPECT_ANY_THROW(row.get(std::make_shared<cQTData>(), {}));
}

}  // namespace
}  // namespace mirelo::automation_server
