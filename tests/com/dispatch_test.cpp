#include "com/client.h"

#include <string>
#include <thread>
#include <vector>

#include "adapters/workbook/spreadsheet.h"
#include "automation/runtime_error.h"
#include "com/class_ids.h"

namespace mirelo::testing {
namespace {

class Dispatches : public ComTest {};

TEST_F(Dispatches, ReadAndAssignPropertiesInLettersOfEitherCase) {
  const Client facade = NewHeld("cMirelo");
  PutIt(facade, "statusrunworkqt", std::int16_t{2});
  EXPECT_EQ(CallIt(facade, "StatusRunWorkQT").ToInt32(), 2);
  EXPECT_EQ(Invoke(facade, "StatusRunWorkQT", DISPATCH_PROPERTYGET).ToInt32(), 2);
}

TEST_F(Dispatches, KnowNoOtherNames) {
  const Client facade = NewHeld("cMirelo");
  EXPECT_EQ(NumberOf([&] { IdOf(facade, "NoSuchMember"); }), 438);
  EXPECT_EQ(NumberOf([&] { IdOf(facade, "AddListener"); }), 438) << "that one has no events";
  EXPECT_EQ(NumberOf([&] { InvokeId(facade, 999, DISPATCH_METHOD, {}); }), 438);
}

TEST_F(Dispatches, DoNotReadMethodsNorAssignWhatIsOnlyRead) {
  const Client facade = NewHeld("cMirelo");
  EXPECT_EQ(NumberOf([&] { Invoke(facade, "LoadMasPosition", DISPATCH_PROPERTYGET); }), 438);
  EXPECT_EQ(NumberOf([&] { PutIt(facade, "Seconds", 5); }), 438);
}

TEST_F(Dispatches, SetReferences) {
  const Client facade = NewHeld("cMirelo");
  const Client stream = NewHeld("cQTStreaming");
  const Client quotes = NewHeld("cQTDatas");
  Invoke(stream, "QTConteiner", DISPATCH_PROPERTYPUTREF, {ValueOf(quotes)});
  EXPECT_EQ(CallIt(stream, "QTConteiner").AsObject(), ValueOf(quotes).AsObject());
  EXPECT_EQ(NumberOf([&] { Invoke(stream, "QTConteiner", DISPATCH_PROPERTYPUTREF, {5}); }), 424);
}

TEST_F(Dispatches, AssignElementsOfTheArraysThatPropertiesHold) {
  const Client facade = NewHeld("cMirelo");
  PutIt(facade, "masPrevVolume", VariantArray(0, 3, 0, 2));
  Invoke(facade, "masPrevVolume", DISPATCH_PROPERTYPUT, {1, 2, 17});
  EXPECT_EQ(CallIt(facade, "masPrevVolume", {1, 2}).ToInt32(), 17);
  EXPECT_EQ(NumberOf([&] { CallIt(facade, "masPrevVolume", {4, 0}); }), 9);
}

TEST_F(Dispatches, AreCalledByTheirDefaultMembers) {
  const Client quotes = NewHeld("cQTDatas");
  CallIt(quotes, "ItemAdd", {"MSFT"});
  EXPECT_EQ(IdOf(quotes, "Item"), DISPID_VALUE);
  ClientValue key;
  com::ToClient("msft", *key);
  const Variant quote = InvokeId(quotes, DISPID_VALUE, DISPATCH_METHOD | DISPATCH_PROPERTYGET, {*key});
  EXPECT_EQ(quote.TypeName(), "cQTData");
  EXPECT_EQ(NumberOf([&] { InvokeId(NewHeld("cQTData"), DISPID_VALUE, DISPATCH_PROPERTYGET, {}); }), 438);
}

TEST_F(Dispatches, AreWalkedByForEach) {
  const Client quotes = NewHeld("cQTDatas");
  for (const char* symbol : {"A", "B", "C"}) CallIt(quotes, "ItemAdd", {symbol});
  DISPPARAMS none{};
  ClientValue result;
  ASSERT_EQ(quotes->Invoke(DISPID_NEWENUM, IID_NULL, LOCALE_USER_DEFAULT,
                           DISPATCH_METHOD | DISPATCH_PROPERTYGET, &none, result.get(), nullptr, nullptr),
            S_OK);
  ASSERT_EQ(result->vt, VT_UNKNOWN);
  const auto walk = com::Asked<IEnumVARIANT>(result->punkVal, IID_IEnumVARIANT);
  ASSERT_TRUE(walk);
  ASSERT_EQ(walk->Skip(1), S_OK);
  Held<IEnumVARIANT> other;
  ASSERT_EQ(walk->Clone(other.Place<IEnumVARIANT**>()), S_OK);
  const auto rest = [](IEnumVARIANT& items) {
    std::vector<std::string> keys;
    for (;;) {
      ClientValue item;
      ULONG fetched = 0;
      if (items.Next(1, item.get(), &fetched) != S_OK) {
        EXPECT_EQ(fetched, 0U);
        return keys;
      }
      keys.push_back(CallIt(Client(item->pdispVal), "NameID").ToText());
    }
  };
  EXPECT_THAT(rest(*walk.get()), ::testing::ElementsAre("B", "C"));
  EXPECT_THAT(rest(*other.get()), ::testing::ElementsAre("B", "C"));
}

TEST_F(Dispatches, TellTheFailuresOfACollectionAsItsOwn) {
  const Client quotes = NewHeld("cQTDatas");
  const RuntimeError error = ErrorOf([&] { CallIt(quotes, "ItemAdd", {7}); });
  EXPECT_EQ(error.Number(), ErrorNumber(0x80040064));
  EXPECT_EQ(error.Description(), "cQTDatas component failure");
  EXPECT_EQ(error.Source(), "DovantaDL.cQTDatas.ItemAdd");
}

TEST_F(Dispatches, OfTickersStatesAreACollectionLikeThatOfQuotes) {
  const Client states = NewHeld("cTickerDateTimes");
  CallIt(states, "ItemAdd", {"IBM"});
  CallIt(states, "Add", {automation_server::CreateObject("cTickerDateTime"), "MSFT"});
  EXPECT_NE(NumberOf([&] {
              CallIt(states, "Add", {automation_server::CreateObject("cTickerDateTime"), "msft"});
            }),
            0)
      << "a key is another's whatever its letters' case";
  EXPECT_EQ(CallIt(states, "Count").ToInt32(), 2);
  ClientValue key;
  com::ToClient("ibm", *key);
  const Variant state = InvokeId(states, DISPID_VALUE, DISPATCH_METHOD | DISPATCH_PROPERTYGET, {*key});
  EXPECT_EQ(CallIt(com::DispatchOf(state.AsObject()), "Symbol").ToText(), "IBM");
  CallIt(states, "Clear");
  EXPECT_EQ(CallIt(states, "Count").ToInt32(), 0);
}

TEST_F(Dispatches, AreTheSameForTheSameObject) {
  const auto object = automation_server::CreateObject("cQTDatas");
  const Client first = com::DispatchOf(object);
  EXPECT_EQ(com::DispatchOf(object), first);
  EXPECT_FALSE(NewHeld("cQTDatas") == first);
  EXPECT_EQ(com::DispatchOf(nullptr).get(), nullptr);
  const auto errors = com::Asked<IUnknown>(first.get(), IID_ISupportErrorInfo);
  EXPECT_EQ(com::ObjectBehind(errors.get()), object) << "whichever interface it comes as";
}

TEST_F(Dispatches, EndWithTheirLastReference) {
  const long before = com::HeldObjects();
  std::weak_ptr<Object> object;
  {
    const Client quotes = NewHeld("cQTDatas");
    object = ValueOf(quotes).AsObject();
    const Client again = quotes;
    EXPECT_EQ(com::HeldObjects(), before + 1);
  }
  EXPECT_EQ(com::HeldObjects(), before);
  EXPECT_TRUE(object.expired());
}

TEST_F(Dispatches, TellErrorsWithNumberTextAndSource) {
  const Client facade = NewHeld("cMirelo");
  try {
    CallIt(facade, "GetLastQuote");
    FAIL();
  } catch (const RuntimeError& error) {
    EXPECT_EQ(error.Number(), 449);
    EXPECT_EQ(error.Description(), Errors::ArgumentNotOptional().Description());
    EXPECT_EQ(error.Source(), Errors::ArgumentNotOptional().Source());
  }
  const Client quotes = NewHeld("cQTDatas");
  EXPECT_EQ(NumberOf([&] { CallIt(quotes, "Item", {"absent"}); }), ErrorNumber(0x80040064))
      << "the classes' own numbers stay";
}

TEST_F(Dispatches, TellErrorsAsTheThreadsErrorInformationToo) {
  const Client facade = NewHeld("cMirelo");
  const auto support = com::Asked<ISupportErrorInfo>(facade.get(), IID_ISupportErrorInfo);
  ASSERT_TRUE(support);
  EXPECT_EQ(support->InterfaceSupportsErrorInfo(IID_IDispatch), S_OK);
  EXPECT_EQ(support->InterfaceSupportsErrorInfo(com::InterfaceOf("cMirelo")), S_OK);
  EXPECT_EQ(support->InterfaceSupportsErrorInfo(com::InterfaceOf("cQTDatas")), S_FALSE);
  EXPECT_EQ(support->InterfaceSupportsErrorInfo(IID_IConnectionPointContainer), S_FALSE);
  DISPPARAMS none{};
  EXPECT_EQ(facade->Invoke(IdOf(facade, "GetLastQuote"), IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD,
                           &none, nullptr, nullptr, nullptr),
            DISP_E_EXCEPTION);
  Held<IErrorInfo> information;
  ASSERT_EQ(::GetErrorInfo(0, information.Place<IErrorInfo**>()), S_OK);
  BSTR text = nullptr;
  ASSERT_EQ(information->GetDescription(&text), S_OK);
  EXPECT_EQ(com::TextOf(text), Errors::ArgumentNotOptional().Description());
  ::SysFreeString(text);
  ASSERT_EQ(information->GetSource(&text), S_OK);
  EXPECT_EQ(com::TextOf(text), "Mirelo");
  ::SysFreeString(text);
}

TEST_F(Dispatches, RefuseCallsOnOtherThreads) {
  const Client facade = NewHeld("cMirelo");
  std::int32_t number = 0;
  std::thread([&] { number = NumberOf([&] { CallIt(facade, "Seconds"); }); }).join();
  EXPECT_EQ(number, 440);
}

TEST_F(Dispatches, GoOnIntoTheSpreadsheet) {
  const Client program = com::DispatchOf(workbook::Spreadsheet::New().Application());
  const Variant cell = CallIt(program, "Range", {"B2"});
  const Client range = com::DispatchOf(cell.AsObject());
  PutIt(range, "Value", "1,234");
  EXPECT_EQ(CallIt(range, "Value").ToDouble(), 1234);
  EXPECT_EQ(CallIt(range, "NumberFormat").ToText(), "#,##0");
}

}  // namespace
}  // namespace mirelo::testing
