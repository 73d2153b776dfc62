#include "com/client.h"

#include "com/arrays.h"

namespace mirelo::testing {
namespace {

class ComArguments : public ComTest {
 protected:
  ComArguments() {
    internet.answer = [this](const AnsweringInternet::Request& request) {
      asked = request;
      return "reply";
    };
  }

  static VARIANT LeftOutByClient() {
    VARIANT value = Plain(VT_ERROR);
    value.scode = DISP_E_PARAMNOTFOUND;
    return value;
  }

  AnsweringInternet::Request asked;
  Client facade = NewHeld("cMirelo");
};

TEST_F(ComArguments, MayBeLeftOutAtTheEndAndBetween) {
  EXPECT_EQ(CallIt(facade, "DownloadURL", {"/req?x"}).ToText(), "reply");
  EXPECT_EQ(asked.verb, "GET");

  ClientValue url;
  com::ToClient("/req?y", *url);
  ClientValue verb;
  com::ToClient("POST", *verb);
  InvokeId(facade, IdOf(facade, "DownloadURL"), DISPATCH_METHOD,
           {*verb, LeftOutByClient(), LeftOutByClient(), *url});
  EXPECT_EQ(asked.verb, "POST");
}

TEST_F(ComArguments, ThatMayNotBeLeftOutAreMissed) {
  EXPECT_EQ(NumberOf([&] { CallIt(facade, "DownloadURL"); }), 449);
  EXPECT_EQ(NumberOf([&] { CallIt(facade, "DownloadURL", {"", "", 1, "", "", "one too many"}); }), 450);
}

TEST_F(ComArguments, MayBeNamed) {
  OLECHAR member[] = L"downloadurl";
  OLECHAR first[] = L"method";
  OLECHAR second[] = L"URL";
  OLECHAR* names[] = {member, first, second};
  DISPID ids[3];
  ASSERT_EQ(facade->GetIDsOfNames(IID_NULL, names, 3, LOCALE_USER_DEFAULT, ids), S_OK);
  ClientValue verb;
  com::ToClient("POST", *verb);
  ClientValue url;
  com::ToClient("/req?z", *url);
  InvokeId(facade, ids[0], DISPATCH_METHOD, {*verb, *url}, {ids[1], ids[2]});
  EXPECT_EQ(asked.verb, "POST");
  EXPECT_EQ(NumberOf([&] { InvokeId(facade, ids[0], DISPATCH_METHOD, {*url}, {99}); }), 448);
}

TEST_F(ComArguments, OfUnknownNamesAreTold) {
  OLECHAR member[] = L"DownloadURL";
  OLECHAR unknown[] = L"NoSuchArgument";
  OLECHAR* names[] = {member, unknown};
  DISPID ids[2];
  EXPECT_EQ(facade->GetIDsOfNames(IID_NULL, names, 2, LOCALE_USER_DEFAULT, ids), DISP_E_UNKNOWNNAME);
  EXPECT_NE(ids[0], DISPID_UNKNOWN);
  EXPECT_EQ(ids[1], DISPID_UNKNOWN);
}

TEST_F(ComArguments, ByReferenceGetBackWhatTheMemberLeftInThem) {
  const Client store = NewHeld("CAppSettings");
  ClientValue section;
  com::ToClient("Settings", *section);
  ClientValue key;
  com::ToClient("Seconds", *key);
  ClientValue value;
  com::ToClient(25.4, *value);
  InvokeId(store, IdOf(store, "SaveSetting"), DISPATCH_METHOD,
           {ReferenceTo(VT_VARIANT, value.get()), ReferenceTo(VT_VARIANT, key.get()), *section});
  EXPECT_EQ(value->vt, VT_I4);
  EXPECT_EQ(value->lVal, 25);
  EXPECT_EQ(com::TextOf(key->bstrVal), "Seconds") << "those by value stay";
}

class KeysOfASection : public ComArguments {
 protected:
  KeysOfASection() {
    for (const char* key : {"Style", "Seconds"}) CallIt(store, "SaveSetting", {"Settings", key, "1"});
  }
  bool GetAllKeys(const char* name, const VARIANT& keys) {
    ClientValue section;
    com::ToClient(name, *section);
    return InvokeId(store, IdOf(store, "GetAllKeys"), DISPATCH_METHOD, {keys, *section}).ToBoolean();
  }

  Client store = NewHeld("CAppSettings");
};

TEST_F(KeysOfASection, ComeIntoAVariableThatAScriptHasNotFilled) {
  ClientValue keys;
  EXPECT_TRUE(GetAllKeys("Settings", ReferenceTo(VT_VARIANT, keys.get())));
  ASSERT_EQ(keys->vt, VT_ARRAY | VT_VARIANT);
  const Variant told = com::FromClient(*keys);
  EXPECT_EQ(told.AsArray().LBound(), 1);
  ASSERT_EQ(told.AsArray().UBound(), 2);
  EXPECT_EQ(told.AsArray()(1).ToText(), "Style");
  EXPECT_EQ(told.AsArray()(2).ToText(), "Seconds");
}

// As Visual Basic passes an array that it has declared: a variant that refers to it.
TEST_F(KeysOfASection, ComeIntoAnArrayOfTextsThatIsNotDimensioned) {
  SAFEARRAY* array = nullptr;
  VARIANT variable = ReferenceTo(VT_ARRAY | VT_BSTR, &array);
  EXPECT_TRUE(GetAllKeys("Settings", ReferenceTo(VT_VARIANT, &variable)));
  ASSERT_NE(array, nullptr);
  VARTYPE type = VT_EMPTY;
  LONG lower = 0;
  LONG upper = 0;
  com::Require(::SafeArrayGetVartype(array, &type));
  com::Require(::SafeArrayGetLBound(array, 1, &lower));
  com::Require(::SafeArrayGetUBound(array, 1, &upper));
  EXPECT_EQ(type, VT_BSTR);
  EXPECT_EQ(lower, 1);
  EXPECT_EQ(upper, 2);
  EXPECT_EQ(variable.vt, VT_BYREF | VT_ARRAY | VT_BSTR) << "it is the client's own";
  BSTR second = nullptr;
  com::Require(::SafeArrayGetElement(array, &upper, static_cast<void*>(&second)));
  EXPECT_EQ(com::TextOf(second), "Seconds");
  ::SysFreeString(second);
  ::SafeArrayDestroy(array);
}

TEST_F(KeysOfASection, OfASectionThatIsNotThereAreNone) {
  ClientValue keys;
  com::ToClient("what stood here", *keys);
  EXPECT_FALSE(GetAllKeys("Nowhere", ReferenceTo(VT_VARIANT, keys.get())));
  EXPECT_EQ(com::FromClient(*keys).AsArray().UBound(), -1);

  SAFEARRAY* array = com::ArrayToClient(VariantArray::OfTexts({"what stood here"}), VT_BSTR);
  EXPECT_FALSE(GetAllKeys("Nowhere", ReferenceTo(VT_ARRAY | VT_BSTR, &array)));
  EXPECT_EQ(com::FromClient(ReferenceTo(VT_ARRAY | VT_BSTR, &array)).AsArray().UBound(), -1);
  ::SafeArrayDestroy(array);
}

}  // namespace
}  // namespace mirelo::testing
