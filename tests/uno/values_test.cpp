#include "uno/values.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <com/sun/star/bridge/oleautomation/Date.hpp>
#include <com/sun/star/uno/Sequence.hxx>
#include <cppuhelper/weak.hxx>
#include <cstdint>
#include <initializer_list>
#include <limits>
#include <string>

#include "adapters/workbook/spreadsheet.h"
#include "support/error_number.h"
#include "uno/text.h"

namespace mirelo::uno {
namespace {

using css::uno::Any;
using css::uno::Sequence;
using testing::NumberOf;
using OfficeDate = css::bridge::oleautomation::Date;
using Row = Sequence<Any>;

template <class Element>
Any SequenceOf(std::initializer_list<Element> elements) {
  return Any(Sequence<Element>(elements.begin(), static_cast<sal_Int32>(elements.size())));
}

// There and back.
Variant Returned(const Variant& value) { return FromOffice(ToOffice(value)); }

TEST(ValuesForTheOffice, KeepTheirTypes) {
  for (const Variant& value : {Variant(std::int16_t{-3}), Variant(std::int32_t{70000}), Variant(0.1),
                               Variant(true), Variant(Date{40563.25}), Variant("Zürich")}) {
    SCOPED_TRACE(value.TypeName());
    const Variant returned = Returned(value);
    EXPECT_EQ(returned.type(), value.type());
    EXPECT_EQ(returned.ToText(), value.ToText());
  }
}

TEST(ValuesForTheOffice, AreTextsBeyondTheFirst65536Letters) {
  EXPECT_EQ(ToOffice(Variant("\xF0\x9F\x98\x80")).get<rtl::OUString>().getLength(), 2);
  EXPECT_EQ(Returned(Variant("\xF0\x9F\x98\x80")).ToText(), "\xF0\x9F\x98\x80");
}

TEST(ValuesForTheOffice, AreSequencesWhereTheyAreArrays) {
  VariantArray list(3, 4);
  list(3) = Variant("a");
  list(4) = Variant(std::int32_t{2});
  const auto elements = ToOffice(Variant(list)).get<Row>();
  ASSERT_EQ(elements.getLength(), 2);
  EXPECT_EQ(elements[0].get<rtl::OUString>(), "a");
  EXPECT_EQ(elements[1].get<sal_Int32>(), 2);
}

TEST(ValuesForTheOffice, AreRowsWhereTheyAreTables) {
  VariantArray table(1, 2, 0, 1);
  table(2, 0) = Variant("a");
  const auto rows = ToOffice(Variant(table)).get<Sequence<Row>>();
  ASSERT_EQ(rows.getLength(), 2);
  ASSERT_EQ(rows[1].getLength(), 2);
  EXPECT_EQ(rows[1][0].get<rtl::OUString>(), "a");
}

TEST(ValuesForTheOffice, AreEmptySequencesWhereArraysHaveNoElements) {
  EXPECT_EQ(ToOffice(Variant(VariantArray())).get<Row>().getLength(), 0);
}

TEST(ValuesOfTheOffice, AreListsFromZero) {
  const Variant list = FromOffice(SequenceOf({OfficeText("MSFT"), OfficeText("IBM")}));
  EXPECT_EQ(list.AsArray().LBound(), 0);
  EXPECT_EQ(list.AsArray().UBound(), 1);
  EXPECT_EQ(list.AsArray()(1).ToText(), "IBM");
}

TEST(ValuesOfTheOffice, AreTablesFromOneWhereRowsAreEquallyLong) {
  const Variant table =
      FromOffice(SequenceOf({SequenceOf({Any(1.5), Any()}), SequenceOf({Any(), Any(OfficeText("x"))})}));
  const VariantArray& array = table.AsArray();
  ASSERT_EQ(array.Dimensions(), 2);
  EXPECT_EQ(array.LBound(1), 1);
  EXPECT_EQ(array.LBound(2), 1);
  EXPECT_EQ(array(1, 1).ToDouble(), 1.5);
  EXPECT_EQ(array(2, 2).ToText(), "x");
}

// Basic gives an array the type that its elements have in common.
TEST(ValuesOfTheOffice, AreListsAndTablesOfEachTypeThatElementsHaveInCommon) {
  const auto expect = [](auto first, auto second, const Variant& meant) {
    SCOPED_TRACE(std::string(meant.TypeName()) + " of " + std::to_string(sizeof first) + " bytes");
    const auto row = SequenceOf({first, second});
    const Variant list = FromOffice(row);
    ASSERT_EQ(list.AsArray().Dimensions(), 1);
    EXPECT_EQ(list.AsArray()(1).type(), meant.type());
    EXPECT_EQ(list.AsArray()(1).ToText(), meant.ToText());
    const auto held = row.template get<Sequence<decltype(first)>>();
    const Variant table = FromOffice(SequenceOf({held, held, held}));
    ASSERT_EQ(table.AsArray().Dimensions(), 2);
    ASSERT_EQ(table.AsArray().UBound(1), 3);
    EXPECT_EQ(table.AsArray()(3, 2).type(), meant.type());
    EXPECT_EQ(table.AsArray()(3, 2).ToText(), meant.ToText());
  };
  expect(sal_Int8{1}, sal_Int8{-5}, std::int16_t{-5});
  expect(sal_Int16{1}, sal_Int16{300}, std::int16_t{300});
  expect(sal_Int32{1}, sal_Int32{70000}, std::int32_t{70000});
  expect(1.5F, 2.5F, 2.5);
  expect(1.5, 0.1, 0.1);
  expect(sal_Bool{false}, sal_Bool{true}, true);
  expect(OfficeText("a"), OfficeText("b"), "b");
  expect(OfficeDate(1), OfficeDate(40563.25), Date{40563.25});
  expect(Any(), Any(OfficeText("b")), "b");
}

TEST(ValuesOfTheOffice, AreListsOfListsWhereTheyAreNot) {
  const Variant ragged = FromOffice(SequenceOf({SequenceOf({Any(1.5), Any()}), SequenceOf({Any(2.0)})}));
  ASSERT_EQ(ragged.AsArray().Dimensions(), 1);
  EXPECT_EQ(ragged.AsArray()(1).AsArray()(0).ToDouble(), 2);
}

TEST(ValuesOfTheOffice, AreNumbersOfTheSizesThatTheClassesKnow) {
  EXPECT_EQ(FromOffice(Any(sal_Int8{5})).type(), Variant::Type::Integer);
  EXPECT_EQ(FromOffice(Any(sal_uInt32{60000})).type(), Variant::Type::Long);
  EXPECT_EQ(FromOffice(Any(1.5F)).type(), Variant::Type::Double);
}

TEST(ValuesOfTheOffice, AreRefusedWhereTheClassesHaveNoUseForThem) {
  const css::uno::Reference<css::uno::XInterface> foreign(new cppu::OWeakObject);
  EXPECT_EQ(NumberOf([&] { FromOffice(Any(foreign)); }), 13);
  EXPECT_EQ(NumberOf([&] { FromOffice(Any(std::numeric_limits<sal_Int64>::max())); }), 13);
}

TEST(ObjectsOfTheOffice, StandForOursOnceItIsSaidForWhich) {
  const css::uno::Reference<css::uno::XInterface> foreign(new cppu::OWeakObject);
  const auto ours = workbook::Spreadsheet::New().Application();
  TakeOfficeObjectsFor([&](const auto& object) { return object == foreign ? ours : nullptr; });
  EXPECT_EQ(FromOffice(Any(foreign)).AsObject(), ours);
  const css::uno::Reference<css::uno::XInterface> another(new cppu::OWeakObject);
  EXPECT_EQ(NumberOf([&] { FromOffice(Any(another)); }), 13);
  TakeOfficeObjectsFor({});
  EXPECT_EQ(NumberOf([&] { FromOffice(Any(foreign)); }), 13);
}

TEST(ValuesOfTheOffice, AreReferencesToNothingWhereTheyAreNull) {
  const Variant nothing = FromOffice(Any(css::uno::Reference<css::uno::XInterface>()));
  EXPECT_EQ(nothing.TypeName(), "Nothing");
}

}  // namespace
}  // namespace mirelo::uno
