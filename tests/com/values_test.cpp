#include "com/client.h"

#include <cstdint>
#include <string>

namespace mirelo::testing {
namespace {

class ComValues : public ComTest {
 protected:
  static Variant ThereAndBack(const Variant& value, VARTYPE expected) {
    ClientValue client;
    com::ToClient(value, *client);
    EXPECT_EQ(client->vt, expected);
    return com::FromClient(*client);
  }
};

TEST_F(ComValues, KeepTypeAndValueThereAndBack) {
  EXPECT_TRUE(ThereAndBack({}, VT_EMPTY).IsEmpty());
  EXPECT_EQ(ThereAndBack(std::int16_t{-3}, VT_I2).TypeName(), "Integer");
  EXPECT_EQ(ThereAndBack(std::int32_t{70000}, VT_I4).ToInt32(), 70000);
  EXPECT_EQ(ThereAndBack(1.25, VT_R8).ToDouble(), 1.25);
  const Variant truth = ThereAndBack(true, VT_BOOL);
  EXPECT_EQ(truth.TypeName(), "Boolean");
  EXPECT_TRUE(truth.ToBoolean());
  const Variant date = ThereAndBack(Date{40563.5}, VT_DATE);
  EXPECT_EQ(date.TypeName(), "Date");
  EXPECT_EQ(date.ToDouble(), 40563.5);
}

TEST_F(ComValues, KeepTextsOfAllLettersAndOfNone) {
  for (const char* text : {"", "MSFT", "Z\xC3\xBCrich \xE2\x82\xAC \xF0\x9F\x93\x88"}) {
    EXPECT_EQ(ThereAndBack(text, VT_BSTR).ToText(), text);
  }
  const std::string with_zero("a\0b", 3);
  EXPECT_EQ(ThereAndBack(with_zero, VT_BSTR).ToText(), with_zero);
  EXPECT_EQ(com::FromClient(Plain(VT_BSTR)).TypeName(), "String") << "null is the empty text";
}

TEST_F(ComValues, TakeNumbersOfAllSizes) {
  VARIANT byte = Plain(VT_UI1);
  byte.bVal = 200;
  EXPECT_EQ(com::FromClient(byte).ToInt32(), 200);
  VARIANT small = Plain(VT_I1);
  small.cVal = -5;
  EXPECT_EQ(com::FromClient(small).ToInt32(), -5);
  VARIANT single = Plain(VT_R4);
  single.fltVal = 0.5F;
  EXPECT_EQ(com::FromClient(single).ToDouble(), 0.5);
  VARIANT currency = Plain(VT_CY);
  currency.cyVal.int64 = 12345;
  EXPECT_EQ(com::FromClient(currency).ToDouble(), 1.2345);
  VARIANT whole = Plain(VT_I8);
  whole.llVal = 12;
  EXPECT_EQ(com::FromClient(whole).TypeName(), "Long");
  whole.llVal = std::int64_t{1} << 40;
  EXPECT_EQ(com::FromClient(whole).TypeName(), "Double");
  EXPECT_EQ(com::FromClient(whole).ToDouble(), 1099511627776.0);
  VARIANT unsigned_whole = Plain(VT_UI4);
  unsigned_whole.ulVal = 4000000000U;
  EXPECT_EQ(com::FromClient(unsigned_whole).ToDouble(), 4e9);
}

TEST_F(ComValues, ThatAreMissingAreEmpty) {
  EXPECT_TRUE(com::FromClient(Plain(VT_NULL)).IsEmpty());
  VARIANT left_out = Plain(VT_ERROR);
  left_out.scode = DISP_E_PARAMNOTFOUND;
  EXPECT_TRUE(com::FromClient(left_out).IsEmpty());
}

TEST_F(ComValues, OfCellsInErrorAreTheirTexts) {
  VARIANT error = Plain(VT_ERROR);
  error.scode = static_cast<SCODE>(0x800A07FA);  // 2042
  EXPECT_EQ(com::FromClient(error).ToText(), "#N/A");
  error.scode = E_FAIL;
  EXPECT_EQ(NumberOf([&] { com::FromClient(error); }), 13);
}

TEST_F(ComValues, AreReadThroughReferences) {
  LONG number = 7;
  EXPECT_EQ(com::FromClient(ReferenceTo(VT_I4, &number)).ToInt32(), 7);
  ClientValue inner;
  com::ToClient("text", *inner);
  EXPECT_EQ(com::FromClient(ReferenceTo(VT_VARIANT, inner.get())).ToText(), "text");
  BSTR text = com::NewText("other");
  EXPECT_EQ(com::FromClient(ReferenceTo(VT_BSTR, &text)).ToText(), "other");
  ::SysFreeString(text);
}

TEST_F(ComValues, GoBackIntoReferencesInTheirOwnTypes) {
  LONG number = 7;
  com::WriteBack(2.5, ReferenceTo(VT_I4, &number));
  EXPECT_EQ(number, 2) << "halves go to the even number";
  VARIANT_BOOL truth = VARIANT_FALSE;
  com::WriteBack(std::int16_t{1}, ReferenceTo(VT_BOOL, &truth));
  EXPECT_EQ(truth, VARIANT_TRUE);
  BSTR text = com::NewText("before");
  com::WriteBack(std::int32_t{12}, ReferenceTo(VT_BSTR, &text));
  EXPECT_EQ(com::TextOf(text), "12");
  ::SysFreeString(text);
  ClientValue any;
  com::ToClient("before", *any);
  com::WriteBack(1.5, ReferenceTo(VT_VARIANT, any.get()));
  EXPECT_EQ(any->vt, VT_R8);
  EXPECT_EQ(any->dblVal, 1.5);
}

TEST_F(ComValues, LeaveReferencesAsTheyAreThatCannotTakeThem) {
  SHORT number = 7;
  EXPECT_EQ(NumberOf([&] { com::WriteBack(1e9, ReferenceTo(VT_I2, &number)); }), 6);
  EXPECT_EQ(NumberOf([&] { com::WriteBack("text", ReferenceTo(VT_I2, &number)); }), 13);
  EXPECT_EQ(number, 7);
}

TEST_F(ComValues, ThatAreObjectsAreTheSameThereAndBack) {
  const auto object = automation_server::CreateObject("cQTDatas");
  EXPECT_EQ(ThereAndBack(Variant(object), VT_DISPATCH).AsObject(), object);
  EXPECT_EQ(ThereAndBack(Nothing(), VT_DISPATCH).TypeName(), "Nothing");
}

TEST_F(ComValues, ThatAreObjectsOfOthersDoNotMatch) {
  Held<ICreateErrorInfo> foreign;
  ASSERT_EQ(::CreateErrorInfo(foreign.Place<ICreateErrorInfo**>()), S_OK);
  VARIANT value = Plain(VT_UNKNOWN);
  value.punkVal = foreign.get();
  EXPECT_EQ(NumberOf([&] { com::FromClient(value); }), 13);
}

}  // namespace
}  // namespace mirelo::testing
