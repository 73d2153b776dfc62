#include "automation/variant.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "support/error_number.h"

namespace mirelo {
namespace {

using testing::NumberOf;
using Type = Variant::Type;

struct Quotes : Object {
  std::string_view TypeName() const override { return "cQTDatas"; }
};

TEST(Variant, KnowsItsTypeAndItsName) {
  const struct {
    Variant value;
    Type type;
    const char* name;
  } kTypes[] = {
      {Variant(), Type::Empty, "Empty"},
      {std::int16_t{1}, Type::Integer, "Integer"},
      {std::int32_t{1}, Type::Long, "Long"},
      {1.0, Type::Double, "Double"},
      {true, Type::Boolean, "Boolean"},
      {Date{1}, Type::Date, "Date"},
      {"text", Type::String, "String"},
      {std::string("text"), Type::String, "String"},
      {std::string_view("text"), Type::String, "String"},
      {std::make_shared<Quotes>(), Type::Object, "cQTDatas"},
      {std::shared_ptr<Object>(), Type::Object, "Nothing"},
      {VariantArray(0, 1), Type::Array, "Variant()"},
  };
  for (const auto& [value, type, name] : kTypes) {
    EXPECT_EQ(value.type(), type) << name;
    EXPECT_EQ(value.TypeName(), name);
    EXPECT_EQ(value.IsEmpty(), type == Type::Empty) << name;
    EXPECT_EQ(value.IsText(), type == Type::String) << name;
    EXPECT_EQ(value.IsObject(), type == Type::Object) << name;
    EXPECT_EQ(value.IsArray(), type == Type::Array) << name;
  }
}

TEST(Variant, LendsItsText) {
  const Variant value("text");
  ASSERT_NE(value.IfText(), nullptr);
  EXPECT_EQ(*value.IfText(), "text");
  EXPECT_EQ(Variant(5).IfText(), nullptr);
}

TEST(Variant, TakesATextInPlaceOfAnyValue) {
  for (const std::string_view text :
       {"", "new", "fifteen letters", "a text that is too long to be kept inside"}) {
    for (Variant value :
         {Variant(), Variant(7), Variant(Date{1}), Variant("old"), Variant(VariantArray(1, 2))}) {
      value = text;
      EXPECT_EQ(value.ToText(), text);
    }
  }
}

TEST(Variant, TakesAPartOfItsOwnText) {
  Variant value("a text that is too long to be kept inside");
  value = std::string_view(*value.IfText()).substr(2, 4);
  EXPECT_EQ(value.ToText(), "text");

  value = VariantArray::OfTexts({"short"});
  value = std::string_view(*std::as_const(value).AsArray()(0).IfText());
  EXPECT_EQ(value.ToText(), "short");
}

TEST(Variant, HoldsObjectsByReference) {
  const auto quotes = std::make_shared<Quotes>();
  const Variant value(quotes);
  const Variant copy = value;
  EXPECT_EQ(copy.AsObject(), quotes);
  EXPECT_EQ(Variant(std::shared_ptr<Object>()).AsObject(), nullptr);
  EXPECT_EQ(NumberOf([] { Variant("text").AsObject(); }), 424);
  EXPECT_EQ(NumberOf([] { Variant().AsObject(); }), 424);
}

TEST(Variant, KeepsCopiesOfAnArrayApart) {
  Variant original{VariantArray(1, 2)};
  original.AsArray()(1) = "before";
  Variant copy = original;
  copy.AsArray()(1) = "after";
  EXPECT_EQ(*std::as_const(original).AsArray()(1).IfText(), "before");
  EXPECT_EQ(*std::as_const(copy).AsArray()(1).IfText(), "after");
}

TEST(Variant, SharesAnArrayThatIsOnlyRead) {
  const Variant original{VariantArray(1, 2)};
  const Variant copy = original;
  EXPECT_EQ(&original.AsArray(), &copy.AsArray());
}

TEST(Variant, RefusesToBeReadAsAnArrayWhenItIsNone) {
  Variant text("text");
  EXPECT_EQ(NumberOf([&] { text.AsArray(); }), 13);
  EXPECT_EQ(NumberOf([&] { std::as_const(text).AsArray(); }), 13);
}

TEST(VariantEquality, ComparesTextsExactlyAndTheRestAsNumbers) {
  const struct {
    Variant a;
    Variant b;
    bool equal;
  } kComparisons[] = {
      {"MSFT", "MSFT", true},
      {"MSFT", "msft", false},
      {"1", "1.0", false},
      {"1.0", 1, true},
      {"abc", 0, false},
      {"", 0, false},
      {Variant(), Variant(), true},
      {Variant(), 0, true},
      {Variant(), false, true},
      {Variant(), 1, false},
      {Variant(), "", true},
      {Variant(), "0", false},
      {std::int16_t{5}, 5.0, true},
      {5, 5.5, false},
      {true, -1, true},
      {true, 1, false},
      {true, "True", false},
      {Date{2.5}, 2.5, true},
      {Date{2.5}, "2.5", true},
  };
  for (const auto& [a, b, equal] : kComparisons) {
    SCOPED_TRACE(a.ToText() + " (" + std::string(a.TypeName()) + ") and " + b.ToText() + " (" +
                 std::string(b.TypeName()) + ")");
    EXPECT_EQ(a == b, equal);
    EXPECT_EQ(b == a, equal);
    EXPECT_EQ(a != b, !equal);
  }
}

TEST(VariantEquality, MismatchesForObjectsAndArrays) {
  const Variant object(std::make_shared<Quotes>());
  const Variant array(VariantArray(1, 1));
  for (const Variant* value : {&object, &array}) {
    EXPECT_EQ(NumberOf([&] { static_cast<void>(*value == Variant(1)); }), 13);
    EXPECT_EQ(NumberOf([&] { static_cast<void>(Variant("x") == *value); }), 13);
    EXPECT_EQ(NumberOf([&] { static_cast<void>(*value == *value); }), 13);
  }
}

}  // namespace
}  // namespace mirelo
