// What clients know of the classes before they call them, out of the type library.

#include "com/type_information.h"

#include "com/calling_object.h"
#include "com/class_ids.h"
#include "com/foreign.h"

namespace mirelo::testing {
namespace {

using automation_server::Class;
using automation_server::Member;
using automation_server::MemberId;

std::string NameIn(const Held<ITypeInfo>& information, MEMBERID member = MEMBERID_NIL) {
  BSTR told = nullptr;
  com::Require(information->GetDocumentation(member, &told, nullptr, nullptr, nullptr));
  std::string name = com::TextOf(told);
  ::SysFreeString(told);
  return name;
}

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

TEST_F(TypeLibraries, KnowEveryMemberByItsNumber) {
  int members = 0;
  for (const com::ClassId& known : com::ClassIds()) {
    SCOPED_TRACE(known.name);
    const Client held = known.name == "cMirelo" ? facade : NewHeld(known.name);
    const auto information = InterfaceOf(held);
    const Class& table = *automation_server::ClassNamed(known.name);
    for (const Member& member : table.members()) {
      const std::string name(member.name);
      EXPECT_EQ(NameIn(information, IdOf(held, name)), name);
      ++members;
    }
  }
  EXPECT_GT(members, 130);
}

TEST_F(TypeLibraries, KnowTheEventsByTheNumbersThatListenersAreToldBy) {
  for (const char* name : {"cQTStreaming", "WinInet"}) {
    const auto library = com::TypeLibrary();
    ASSERT_TRUE(library);
    Held<ITypeInfo> events;
    com::Require(library->GetTypeInfoOfGuid(com::EventsOf(name), events.Place<ITypeInfo**>()));
    MEMBERID number = 0;
    for (const auto& event : automation_server::ClassNamed(name)->events())
      EXPECT_EQ(NameIn(events, ++number), event.name);
  }
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
