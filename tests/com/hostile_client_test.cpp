// Clients that break the rules of COM, by mistake or not: they are refused, and nothing else comes of it.

#include "com/client.h"

#include <array>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "automation/runtime_error.h"
#include "com/enumeration.h"
#include "com/server.h"

namespace mirelo::testing {
namespace {

using namespace std::string_view_literals;

class HostileClients : public ComTest {
 protected:
  static std::int32_t ErrorFor(const Client& held, std::string_view member, WORD how, DISPPARAMS parameters) {
    EXCEPINFO told{};
    ClientValue result;
    const HRESULT ended = held->Invoke(IdOf(held, member), IID_NULL, LOCALE_USER_DEFAULT, how, &parameters,
                                       result.get(), &told, nullptr);
    return SUCCEEDED(ended) ? 0 : com::ErrorOf(ended, told).Number();
  }
  static std::int32_t ErrorFor(const VARIANT& passed) {
    return NumberOf([&] { com::FromClient(passed); });
  }

  static Held<IEnumVARIANT> WalkThrough(const Client& items) {
    DISPPARAMS none{};
    ClientValue result;
    com::Require(items->Invoke(DISPID_NEWENUM, IID_NULL, LOCALE_USER_DEFAULT,
                               DISPATCH_METHOD | DISPATCH_PROPERTYGET, &none, result.get(), nullptr,
                               nullptr));
    return com::Asked<IEnumVARIANT>(result->punkVal, IID_IEnumVARIANT);
  }
  static std::string KeyOf(const VARIANT& item) { return CallIt(Client(item.pdispVal), "NameID").ToText(); }
};

TEST_F(HostileClients, MayNotPassArgumentsThatAreNotThere) {
  const Client facade = NewHeld("cMirelo");
  const WORD call = DISPATCH_METHOD | DISPATCH_PROPERTYGET;
  ClientValue url;
  com::ToClient("/req?x", *url);
  DISPID name = 0;
  EXPECT_EQ(ErrorFor(facade, "DownloadURL", call, {nullptr, nullptr, 1, 0}), 5);
  EXPECT_EQ(ErrorFor(facade, "DownloadURL", call, {url.get(), nullptr, 1, 1}), 5);
  EXPECT_EQ(ErrorFor(facade, "DownloadURL", call, {url.get(), &name, 1, 2}), 5)
      << "more names than arguments";
  EXPECT_EQ(ErrorFor(facade, "StatusRunWorkQT", DISPATCH_PROPERTYPUT, {nullptr, nullptr, 1, 0}), 5);
  EXPECT_EQ(ErrorFor(facade, "StatusRunWorkQT", DISPATCH_PROPERTYPUT, {nullptr, nullptr, 0, 0}), 449);
  EXPECT_EQ(facade->Invoke(1, IID_NULL, 0, call, nullptr, nullptr, nullptr, nullptr), E_POINTER);
  EXPECT_EQ(ErrorFor(NewHeld("WinInet"), "AddListener", call, {nullptr, nullptr, 1, 0}), 5);
}

TEST_F(HostileClients, MayNotNameAnArgumentTwiceNorNameTheValueElsewhere) {
  const Client facade = NewHeld("cMirelo");
  std::array<ClientValue, 2> values;
  com::ToClient("/req?x", *values[0]);
  com::ToClient("/req?y", *values[1]);
  std::array<VARIANT, 2> passed{*values[0], *values[1]};
  DISPID first = 0;
  EXPECT_EQ(ErrorFor(facade, "DownloadURL", DISPATCH_METHOD, {passed.data(), &first, 2, 1}), 448)
      << "it is the first by its place as well";
  EXPECT_EQ(ErrorFor(facade, "StatusRunWorkQT", DISPATCH_PROPERTYPUT, {passed.data(), &first, 1, 1}), 449)
      << "nothing is said to be the value";
}

TEST_F(HostileClients, MayNotPassReferencesThatLeadNowhere) {
  for (const VARTYPE type : {VT_VARIANT, VT_BSTR, VT_I4, VT_DISPATCH, VT_DATE}) {
    EXPECT_EQ(ErrorFor(ReferenceTo(type, nullptr)), 5) << type;
    EXPECT_EQ(NumberOf([&] { com::WriteBack(5, ReferenceTo(type, nullptr)); }), 5) << type;
  }
  EXPECT_EQ(ErrorFor(ReferenceTo(VT_ARRAY | VT_VARIANT, nullptr)), 5);
  VARIANT itself;
  itself = ReferenceTo(VT_VARIANT, &itself);
  EXPECT_EQ(ErrorFor(itself), 5);
  EXPECT_EQ(NumberOf([&] { com::WriteBack(5, itself); }), 5);
}

TEST_F(HostileClients, MayPassReferencesToReferences) {
  LONG number = 5;
  VARIANT inner = ReferenceTo(VT_I4, &number);
  VARIANT outer = ReferenceTo(VT_VARIANT, &inner);
  EXPECT_EQ(com::FromClient(outer).ToInt32(), 5);
  com::WriteBack(7, outer);
  EXPECT_EQ(number, 7) << "the variable is changed, not the way to it";
  EXPECT_EQ(inner.vt, VT_I4 | VT_BYREF);
}

TEST_F(HostileClients, MayNotPassStructuresNorWhatNoVariantHolds) {
  for (const VARTYPE type :
       {VARTYPE{VT_RECORD}, VARTYPE{VT_VECTOR | VT_I4}, VARTYPE{VT_LPSTR}, VARTYPE{0x0FFF}})
    EXPECT_EQ(ErrorFor(Plain(type)), 13) << type;
}

TEST_F(HostileClients, HaveTheirLockedAndFixedArraysLeftAlone) {
  VariantArray three(1, 3);
  SAFEARRAY* array = com::ArrayToClient(three);
  const SAFEARRAY* const before = array;
  const VARIANT reference = ReferenceTo(VT_ARRAY | VT_VARIANT, &array);
  com::Require(::SafeArrayLock(array));
  EXPECT_EQ(NumberOf([&] { com::WriteBack(VariantArray(0, 9), reference); }), 10);
  EXPECT_EQ(array, before);
  com::Require(::SafeArrayUnlock(array));
  array->fFeatures |= FADF_FIXEDSIZE;
  EXPECT_EQ(NumberOf([&] { com::WriteBack(VariantArray(0, 9), reference); }), 10);
  array->fFeatures &= static_cast<USHORT>(~FADF_FIXEDSIZE);
  com::WriteBack(VariantArray(0, 9), reference);
  EXPECT_EQ(com::ArrayFromClient(array).UBound(), 9);
  ::SafeArrayDestroy(array);
}

TEST_F(HostileClients, KeepTextsWithZerosAndNullTexts) {
  const std::string_view text = "a\0b"sv;
  ClientValue value;
  com::ToClient(Variant(std::string(text)), *value);
  EXPECT_EQ(::SysStringLen(value->bstrVal), 3U);
  EXPECT_EQ(com::FromClient(*value).ToText(), text);
  EXPECT_EQ(com::FromClient(ReferenceTo(VT_BSTR, &value->bstrVal)).ToText(), text);
  EXPECT_EQ(com::FromClient(Plain(VT_BSTR)).ToText(), "") << "null is the empty text";
}

TEST_F(HostileClients, MayAskForMembersOfAnyNumber) {
  const Client quotes = NewHeld("cQTDatas");
  for (const DISPID id : {-1, -2, -3, -7, 0x10000, 0x10001, 0x7FFFFFFF, INT32_MIN}) {
    EXPECT_EQ(NumberOf([&] { InvokeId(quotes, id, DISPATCH_METHOD, {}); }), 438) << id;
  }
  OLECHAR* names[] = {nullptr};
  DISPID id = 0;
  EXPECT_EQ(quotes->GetIDsOfNames(IID_NULL, names, 1, 0, &id), DISP_E_UNKNOWNNAME);
  EXPECT_EQ(id, DISPID_UNKNOWN);
  EXPECT_EQ(quotes->GetIDsOfNames(IID_NULL, nullptr, 1, 0, &id), E_POINTER);
}

TEST_F(HostileClients, MayHaveNoPlaceForWhatTheyAskFor) {
  const Client quotes = NewHeld("cQTDatas");
  EXPECT_EQ(quotes->QueryInterface(IID_IDispatch, nullptr), E_POINTER);
  EXPECT_EQ(quotes->GetTypeInfoCount(nullptr), E_POINTER);
  EXPECT_EQ(quotes->GetTypeInfo(0, 0, nullptr), E_POINTER);
  const auto walk = WalkThrough(quotes);
  EXPECT_EQ(walk->Next(1, nullptr, nullptr), E_POINTER);
  EXPECT_EQ(walk->Clone(nullptr), E_POINTER);
}

TEST_F(HostileClients, WalkSeveralItemsAtOnceAndAgain) {
  const Client quotes = NewHeld("cQTDatas");
  for (const char* const symbol : {"A", "B", "C"}) CallIt(quotes, "ItemAdd", {symbol});
  const auto walk = WalkThrough(quotes);
  std::array<ClientValue, 5> items;
  std::array<VARIANT, 5> places{};
  ULONG fetched = 99;
  EXPECT_EQ(walk->Next(5, places.data(), &fetched), S_FALSE);
  ASSERT_EQ(fetched, 3U);
  EXPECT_EQ(KeyOf(places[0]) + KeyOf(places[1]) + KeyOf(places[2]), "ABC");
  for (ULONG i = 0; i < fetched; ++i) ::VariantClear(&places[i]);
  EXPECT_EQ(walk->Skip(1), S_FALSE);
  EXPECT_EQ(walk->Reset(), S_OK);
  EXPECT_EQ(walk->Skip(2), S_OK);
  EXPECT_EQ(walk->Next(1, places.data(), nullptr), S_OK);
  EXPECT_EQ(KeyOf(places[0]), "C");
  ::VariantClear(&places[0]);
  EXPECT_EQ(walk->Next(0, places.data(), &fetched), S_OK);
  EXPECT_EQ(fetched, 0U);
}

// Two items, and a failure in place of the third.
class Failing : public automation_server::Enumeration {
 public:
  std::optional<Variant> Next() override {
    if (++asked_ > 2) throw RuntimeError(9, "there is no third");
    return Variant("item");
  }
  std::shared_ptr<Enumeration> Clone() const override { return std::make_shared<Failing>(*this); }

 private:
  int asked_ = 0;
};

TEST_F(HostileClients, AreGivenNothingByAWalkThatFailsOnItsWay) {
  const auto walk = com::WalkOf(std::make_shared<Failing>());
  std::array<VARIANT, 3> places{};
  ULONG fetched = 99;
  EXPECT_EQ(com::ErrorOf(walk->Next(3, places.data(), &fetched)).Number(), 9);
  EXPECT_EQ(fetched, 0U);
  for (const VARIANT& place : places) EXPECT_EQ(place.vt, VT_EMPTY);
}

TEST_F(HostileClients, MayLetGoOfAnObjectOnAnotherThread) {
  const long before = com::HeldObjects();
  IDispatch* quotes = NewHeld("cQTDatas").Release();
  const std::weak_ptr<Object> object = com::ObjectBehind(quotes);
  std::thread([&] { EXPECT_EQ(quotes->Release(), 0U); }).join();
  EXPECT_FALSE(object.expired()) << "it ends on its own thread";
  CallIt(NewHeld("cMirelo"), "Seconds");
  EXPECT_TRUE(object.expired());
  EXPECT_EQ(com::HeldObjects(), before);
}

TEST_F(HostileClients, MayCountReferencesOnSeveralThreads) {
  const Client quotes = NewHeld("cQTDatas");
  const auto count = [&] {
    for (int i = 0; i < 100'000; ++i) {
      quotes->AddRef();
      quotes->Release();
    }
  };
  std::thread other(count);
  count();
  other.join();
  quotes->AddRef();
  EXPECT_EQ(quotes->Release(), 1U);
}

TEST_F(HostileClients, AreRefusedOnOtherThreadsWhateverTheyCall) {
  const Client transfer = NewHeld("WinInet");
  const Client quotes = NewHeld("cQTDatas");
  CallIt(quotes, "ItemAdd", {"A"});
  const auto walk = WalkThrough(quotes);
  const auto container = com::Asked<IConnectionPointContainer>(transfer.get(), IID_IConnectionPointContainer);
  Held<IEnumConnectionPoints> points;
  com::Require(container->EnumConnectionPoints(points.Place<IEnumConnectionPoints**>()));
  IConnectionPoint* found = nullptr;
  com::Require(points->Next(1, &found, nullptr));
  const auto point = Held<IConnectionPoint>::Adopting(found);
  const auto factory = com::FactoryOf([]() -> std::shared_ptr<Object> {
    ADD_FAILURE() << "nothing is made on another thread";
    return nullptr;
  });
  std::thread([&] {
    VARIANT item = Plain(VT_EMPTY);
    DWORD number = 0;
    void* made = nullptr;
    EXPECT_EQ(com::ErrorOf(walk->Next(1, &item, nullptr)).Number(), 440);
    EXPECT_EQ(com::ErrorOf(point->Advise(quotes.get(), &number)).Number(), 440);
    EXPECT_EQ(com::ErrorOf(factory->CreateInstance(nullptr, IID_IDispatch, &made)).Number(), 440);
    EXPECT_EQ(made, nullptr);
  }).join();
}

TEST_F(HostileClients, AreToldOfErrorsWhoseNumbersLookLikeSuccess) {
  const HRESULT told = com::AtTheBorder([]() -> HRESULT { throw RuntimeError(70'000, "a script's own"); });
  EXPECT_TRUE(FAILED(told));
  EXCEPINFO nothing{};
  EXPECT_EQ(com::ErrorOf(DISP_E_EXCEPTION, nothing).Number(), 440) << "and of those that have none";
}

}  // namespace
}  // namespace mirelo::testing
