#include "com/client.h"

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

}  // namespace
}  // namespace mirelo::testing
