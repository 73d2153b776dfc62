// What clients know of the classes before they call them, out of the type library.

#include "com/type_information.h"

#include "com/calling_object.h"
#include "com/class_ids.h"
#include "com/foreign.h"
#include "com/told_type_library.h"

namespace mirelo::testing {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::Pair;

std::string NameIn(const Held<ITypeInfo>& information) { return testing::NameIn(*information.get()); }

class TypeLibraries : public ComTest {
 protected:
  TypeLibraries() { com::UseTypeLibraryOf(WideText(MIRELO_TYPE_LIBRARY)); }
  ~TypeLibraries() override { com::UseTypeLibraryOf({}); }

  static Held<ITypeInfo> InterfaceOf(const Client& held) {
    Held<ITypeInfo> information;
    com::Require(held->GetTypeInfo(0, LOCALE_USER_DEFAULT, information.Place<ITypeInfo**>()));
    return information;
  }
  static Held<ITypeInfo> ClassOf(const Client& held) {
    Held<ITypeInfo> information;
    const auto provider = com::Asked<IProvideClassInfo2>(held.get(), IID_IProvideClassInfo2);
    com::Require(provider->GetClassInfo(information.Place<ITypeInfo**>()));
    return information;
  }

  Client facade = NewHeld("cMirelo");  // which the settings of the others come from
};

TEST_F(TypeLibraries, KnowEveryMemberAsTheTableHasIt) {
  std::size_t functions = 0;
  for (const com::ClassId& known : com::ClassIds()) {
    SCOPED_TRACE(known.name);
    const Client held = known.name == "cMirelo" ? facade : NewHeld(known.name);
    const auto told = FunctionsIn(*InterfaceOf(held).get());
    EXPECT_EQ(told, FunctionsOf(*automation_server::ClassNamed(known.name)));
    functions += told.size();
  }
  EXPECT_GT(functions, 220U);
}

// As clients' editors show them; the same of all that the tables have is told above.
TEST_F(TypeLibraries, TellHowMembersAreCalled) {
  const auto told = FunctionsIn(*InterfaceOf(facade).get());
  EXPECT_THAT(told, Contains("1 get StatusRunWorkQT() StatusRunQueryQT"));
  EXPECT_THAT(told, Contains("1 put StatusRunWorkQT(in StatusRunQueryQT) nothing"));
  EXPECT_THAT(told, Contains("19 putref ExcelApplication(in variant) nothing"));
  EXPECT_THAT(told,
              Contains("21 call DownloadURL(in text, in text = 127.0.0.1, in integer = 16239, in text = GET, "
                       "in text = ) variant"));
  EXPECT_THAT(FunctionsIn(*InterfaceOf(NewHeld("cQTStreaming")).get()),
              Contains("1 call GetQTData() _cQTDatas*"));
  EXPECT_THAT(FunctionsIn(*InterfaceOf(NewHeld("CAppSettings")).get()),
              Contains("9 call SaveSetting(in text, in text, in out variant*) nothing"));
  EXPECT_THAT(FunctionsIn(*InterfaceOf(NewHeld("cQTDatas")).get()),
              Contains("-4 get NewEnum() unknown restricted"));
}

TEST_F(TypeLibraries, CallMembersForTheirClients) {
  PutIt(facade, "StatusRunWorkQT", 2);
  DISPPARAMS none{};
  ClientValue result;
  com::Require(InterfaceOf(facade)->Invoke(facade.get(), IdOf(facade, "StatusRunWorkQT"),
                                           DISPATCH_PROPERTYGET, &none, result.get(), nullptr, nullptr));
  EXPECT_EQ(result->vt, VT_I4);
  EXPECT_EQ(result->lVal, 2);
}

TEST_F(TypeLibraries, NameTheNumbersOfEnumerations) {
  Held<ITypeInfo> enumeration;
  com::Require(com::TypeLibrary()->GetTypeInfoOfGuid(com::ConstantsOf("StatusRunQueryQT"),
                                                     enumeration.Place<ITypeInfo**>()));
  TYPEATTR* attributes = nullptr;
  com::Require(enumeration->GetTypeAttr(&attributes));
  EXPECT_EQ(attributes->typekind, TKIND_ENUM);
  enumeration->ReleaseTypeAttr(attributes);
  EXPECT_EQ(NameIn(enumeration), "StatusRunQueryQT");
  EXPECT_THAT(ConstantsIn(*enumeration.get()),
              ElementsAre(Pair("Status_Null", 0), Pair("Status_ENUMSOURCES_L1", 1),
                          Pair("Status_LEVEL_I_FULL_QUOTE", 2)));
}

TEST_F(TypeLibraries, KnowTheEventsAsListenersAreToldOfThem) {
  for (const char* name : {"cQTStreaming", "WinInet"}) {
    const auto library = com::TypeLibrary();
    ASSERT_TRUE(library);
    Held<ITypeInfo> events;
    com::Require(library->GetTypeInfoOfGuid(com::EventsOf(name), events.Place<ITypeInfo**>()));
    EXPECT_EQ(FunctionsIn(*events.get()), EventFunctionsOf(*automation_server::ClassNamed(name)));
  }
}

TEST_F(TypeLibraries, AreFoundByTheirNameAndVersion) {
  BSTR name = nullptr;
  BSTR shown = nullptr;
  com::Require(com::TypeLibrary()->GetDocumentation(-1, &name, &shown, nullptr, nullptr));
  EXPECT_EQ(com::TextOf(name), "Mirelo");
  EXPECT_EQ(com::TextOf(shown), "Mirelo download library");
  ::SysFreeString(name);
  ::SysFreeString(shown);
  TLIBATTR* attributes = nullptr;
  com::Require(com::TypeLibrary()->GetLibAttr(&attributes));
  EXPECT_TRUE(attributes->guid == com::TypeLibraryId());
  EXPECT_EQ(attributes->wMajorVerNum, 1);
  EXPECT_EQ(attributes->wMinorVerNum, 0);
  com::TypeLibrary()->ReleaseTLibAttr(attributes);
}

TEST_F(TypeLibraries, SayWhichInterfacesOfAClassAreCalledAndWhichAreTold) {
  const auto information = ClassOf(NewHeld("cQTStreaming"));
  const auto told = [&](UINT place) {
    HREFTYPE reference = 0;
    com::Require(information->GetRefTypeOfImplType(place, &reference));
    Held<ITypeInfo> referred;
    com::Require(information->GetRefTypeInfo(reference, referred.Place<ITypeInfo**>()));
    INT flags = 0;
    com::Require(information->GetImplTypeFlags(place, &flags));
    return std::pair(NameIn(referred), flags);
  };
  EXPECT_EQ(told(0), std::pair(std::string("_cQTStreaming"), INT{IMPLTYPEFLAG_FDEFAULT}));
  EXPECT_EQ(told(1),
            std::pair(std::string("_cQTStreamingEvents"), INT{IMPLTYPEFLAG_FDEFAULT | IMPLTYPEFLAG_FSOURCE}));
}

TEST_F(TypeLibraries, NameTheClassesAndTheirDefaultInterfaces) {
  const Client quotes = NewHeld("cQTDatas");
  EXPECT_EQ(NameIn(InterfaceOf(quotes)), "_cQTDatas");
  EXPECT_EQ(NameIn(ClassOf(quotes)), "cQTDatas");
  EXPECT_EQ(com::Asked<IDispatch>(quotes.get(), com::InterfaceOf("cQTDatas")).get(), quotes.get());
  EXPECT_FALSE(com::Asked<IDispatch>(quotes.get(), com::InterfaceOf("cMirelo")));
  EXPECT_EQ(com::Foreign(quotes).TypeName(), "cQTDatas");
}

TEST_F(TypeLibraries, SayWhichEventsAClassHas) {
  const auto provider = com::Asked<IProvideClassInfo2>(NewHeld("WinInet").get(), IID_IProvideClassInfo2);
  GUID events{};
  com::Require(provider->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, &events));
  EXPECT_TRUE(events == com::EventsOf("WinInet"));
  const auto silent = com::Asked<IProvideClassInfo2>(NewHeld("cQTData").get(), IID_IProvideClassInfo2);
  EXPECT_EQ(silent->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, &events), E_INVALIDARG);
}

TEST_F(TypeLibraries, AreNotNeededToTellObjectsApart) {
  com::UseTypeLibraryOf({});
  EXPECT_EQ(NameIn(InterfaceOf(NewHeld("cQTData"))), "cQTData");
}

}  // namespace
}  // namespace mirelo::testing
