#include "com/arrays.h"

#include <cstdint>

#include "com/client.h"

namespace mirelo::testing {
namespace {

class ComArrays : public ComTest {
 protected:
  static Variant ThereAndBack(const VariantArray& array) {
    ClientValue client;
    com::ToClient(array, *client);
    EXPECT_EQ(client->vt, VT_ARRAY | VT_VARIANT);
    return com::FromClient(*client);
  }
};

TEST_F(ComArrays, KeepBoundsAndElements) {
  VariantArray list(-2, 1);
  for (std::int32_t i = -2; i <= 1; ++i) list(i) = i;
  const Variant back = ThereAndBack(list);
  EXPECT_EQ(back.AsArray().Dimensions(), 1);
  EXPECT_EQ(back.AsArray().LBound(), -2);
  EXPECT_EQ(back.AsArray().UBound(), 1);
  for (std::int32_t i = -2; i <= 1; ++i) EXPECT_EQ(back.AsArray()(i).ToInt32(), i);
}

TEST_F(ComArrays, OfTwoDimensionsKeepRowsAndColumns) {
  VariantArray table(1, 2, 0, 2);
  for (std::int32_t r = 1; r <= 2; ++r) {
    for (std::int32_t c = 0; c <= 2; ++c) table(r, c) = r * 10 + c;
  }
  ClientValue client;
  com::ToClient(table, *client);
  LONG place[] = {2, 0};
  ClientValue element;
  ASSERT_EQ(::SafeArrayGetElement(client->parray, place, element.get()), S_OK);
  EXPECT_EQ(element->lVal, 20) << "as the client finds it";
  const Variant back = com::FromClient(*client);
  EXPECT_EQ(back.AsArray().LBound(2), 0);
  EXPECT_EQ(back.AsArray().UBound(2), 2);
  for (std::int32_t r = 1; r <= 2; ++r) {
    for (std::int32_t c = 0; c <= 2; ++c) EXPECT_EQ(back.AsArray()(r, c).ToInt32(), r * 10 + c);
  }
}

TEST_F(ComArrays, MayHaveNoElements) {
  const Variant back = ThereAndBack(VariantArray());
  EXPECT_EQ(back.AsArray().LBound(), 0);
  EXPECT_EQ(back.AsArray().UBound(), -1);
  VARIANT not_dimensioned = Plain(VT_ARRAY | VT_VARIANT);
  EXPECT_EQ(com::FromClient(not_dimensioned).AsArray().UBound(), -1);
}

TEST_F(ComArrays, OfTwoDimensionsMayHaveNoElementsToo) {
  for (const ULONG rows : {0U, 2U}) {
    SAFEARRAYBOUND bounds[] = {{rows, 1}, {2 - rows, 1}};
    ClientValue client;
    client->parray = ::SafeArrayCreate(VT_VARIANT, 2, bounds);
    client->vt = VT_ARRAY | VT_VARIANT;
    ASSERT_NE(client->parray, nullptr);
    const Variant taken = com::FromClient(*client);
    EXPECT_EQ(taken.AsArray().LBound(), 0);
    EXPECT_EQ(taken.AsArray().UBound(), -1);
  }
}

TEST_F(ComArrays, HoldArraysObjectsAndTexts) {
  VariantArray inner(0, 0);
  inner(0) = "inside";
  VariantArray list(0, 2);
  list(0) = inner;
  list(1) = Variant(automation_server::CreateObject("cQTData"));
  list(2) = "text";
  const Variant back = ThereAndBack(list);
  EXPECT_EQ(back.AsArray()(0).AsArray()(0).ToText(), "inside");
  EXPECT_EQ(back.AsArray()(1).AsObject(), list(1).AsObject());
  EXPECT_EQ(back.AsArray()(2).ToText(), "text");
}

TEST_F(ComArrays, OfOneTypeAreTakenElementByElement) {
  VariantArray numbers(1, 3);
  for (std::int32_t i = 1; i <= 3; ++i) numbers(i) = i * 0.5;
  ClientValue client;
  client->parray = com::ArrayToClient(numbers, VT_R4);
  client->vt = VT_ARRAY | VT_R4;
  EXPECT_EQ(com::FromClient(*client).AsArray()(3).ToDouble(), 1.5);

  ClientValue texts;
  texts->parray = com::ArrayToClient(VariantArray::OfTexts({"A", "B"}), VT_BSTR);
  texts->vt = VT_ARRAY | VT_BSTR;
  EXPECT_EQ(com::FromClient(*texts).AsArray()(1).ToText(), "B");
}

TEST_F(ComArrays, ByReferenceAreTakenAndGivenBackInTheirType) {
  SAFEARRAY* array = com::ArrayToClient(VariantArray::OfTexts({"A"}), VT_BSTR);
  const VARIANT reference = ReferenceTo(VT_ARRAY | VT_BSTR, &array);
  EXPECT_EQ(com::FromClient(reference).AsArray()(0).ToText(), "A");
  VariantArray longer(1, 2);
  longer(1) = 5;
  longer(2) = "B";
  com::WriteBack(longer, reference);
  VARTYPE type = VT_EMPTY;
  EXPECT_EQ(::SafeArrayGetVartype(array, &type), S_OK);
  EXPECT_EQ(type, VT_BSTR);
  EXPECT_EQ(com::FromClient(reference).AsArray()(1).ToText(), "5");
  EXPECT_EQ(com::FromClient(reference).AsArray()(2).ToText(), "B");
  ::SafeArrayDestroy(array);
}

TEST_F(ComArrays, OfThreeDimensionsDoNotMatch) {
  SAFEARRAYBOUND bounds[] = {{1, 0}, {1, 0}, {1, 0}};
  ClientValue client;
  client->parray = ::SafeArrayCreate(VT_VARIANT, 3, bounds);
  client->vt = VT_ARRAY | VT_VARIANT;
  EXPECT_EQ(NumberOf([&] { com::FromClient(*client); }), 13);
}

}  // namespace
}  // namespace mirelo::testing
