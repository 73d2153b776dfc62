#include <cstdint>
#include <memory>
#include <new>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

#include "automation_server/server_test.h"

namespace mirelo::testing {
namespace {

class Calls : public ServerTest {};

TEST_F(Calls, MakeObjectsByTheNamesOfTheirClassesInLettersOfEitherCase) {
  EXPECT_EQ(ObjectOf(New("cMirelo")).TypeName(), "cMirelo");
  EXPECT_EQ(ObjectOf(New("CMIRELO")).TypeName(), "cMirelo");
}

TEST_F(Calls, MakeEachClassWhoseObjectsClientsMake) {
  const Door facade = New("cMirelo");
  for (const automation_server::Class& known : automation_server::Classes()) {
    if (!known.IsCreatable() || known.name() == "cMirelo") continue;
    const Door door = New(known.name());
    EXPECT_EQ(ObjectOf(door).TypeName(), known.name());
    EXPECT_EQ(&door->table(), &known);
  }
}

TEST_F(Calls, CannotMakeAnythingElse) {
  for (const char* name : {"", "cMirel", "frmMirelo", "CErrorHandler", "cMirelo "}) {
    ExpectError(ErrorOf([&] { New(name); }), 429, "ActiveX component can't create object", "Mirelo");
  }
}

TEST_F(Calls, RaiseWhatTheMakingRaises) {
  EXPECT_EQ(NumberOf([] { New("cQTStreaming"); }), 91) << "no facade has made the settings store";
}

TEST_F(Calls, FindMembersInLettersOfEitherCase) {
  const Door facade = New("cMirelo");
  EXPECT_EQ(facade->IdOf("seconds"), facade->IdOf("SECONDS"));
  EXPECT_EQ(Get(facade, "sEcOnDs").ToInt32(), 10);
}

TEST_F(Calls, NumberMembersByTheirPlaceInTheInterface) {
  const Door facade = New("cMirelo");
  EXPECT_EQ(facade->IdOf("StatusRunWorkQT"), 1);
  EXPECT_EQ(facade->IdOf("Update_Charts"), 25);
}

TEST_F(Calls, KnowNoMemberThatTheClassDoesNotHave) {
  const Door facade = New("cMirelo");
  for (const char* name : {"", "Second", "Secondss", "Seconds ", "masPosition", "TypeName"}) {
    ExpectError(ErrorOf([&] { facade->IdOf(name); }), 438, "Object doesn't support this property or method",
                "Mirelo");
  }
  for (const std::int32_t id : {0, -1, -4, 26, INT32_MAX, INT32_MIN}) {
    EXPECT_EQ(NumberOf([&] { facade->Call(id); }), 438) << id;
    EXPECT_EQ(NumberOf([&] { facade->Get(id); }), 438) << id;
    EXPECT_EQ(NumberOf([&] { facade->Let(id, 1); }), 438) << id;
    EXPECT_EQ(NumberOf([&] { facade->Set(id, Nothing()); }), 438) << id;
  }
}

TEST_F(Calls, ReadPropertiesWithTheTypeTheyDeclare) {
  const Door facade = New("cMirelo");
  EXPECT_EQ(Get(facade, "Seconds").TypeName(), "Long");
  EXPECT_EQ(Get(facade, "GreyOut").TypeName(), "Integer");
  EXPECT_EQ(Get(facade, "TableStyle").ToText(), "Blue");
  EXPECT_EQ(Get(facade, "StatusRunWorkQT").TypeName(), "Long");
  EXPECT_EQ(Get(New("cQTStreaming"), "StartStop").TypeName(), "Boolean");
  EXPECT_EQ(Get(New("cQTData"), "Last_Price").TypeName(), "Double");
}

TEST_F(Calls, AssignProperties) {
  const Door facade = New("cMirelo");
  Let(facade, "DovantaFormatUserDate", "mm/dd/yyyy");
  EXPECT_EQ(Get(facade, "DovantaFormatUserDate").ToText(), "mm/dd/yyyy");
  Let(facade, "StatusRunWorkQT", 2);
  EXPECT_EQ(Get(facade, "StatusRunWorkQT").ToInt32(), 2);
}

TEST_F(Calls, ConvertWhatIsAssigned) {
  const Door quote = New("cQTData");
  Let(quote, "Volume", "1200");
  EXPECT_EQ(Get(quote, "Volume").ToInt32(), 1200);
  Let(quote, "Symbol", 5);
  EXPECT_EQ(Get(quote, "Symbol").ToText(), "5");
  EXPECT_EQ(NumberOf([&] { Let(quote, "Volume", "many"); }), 13);
  EXPECT_EQ(NumberOf([&] { Let(quote, "Volume", 3e9); }), 6);
  EXPECT_EQ(NumberOf([&] { Let(quote, "Volume", VariantArray()); }), 13);
  EXPECT_EQ(NumberOf([&] { Let(quote, "Symbol", Nothing()); }), 13);
  EXPECT_EQ(Get(quote, "Volume").ToInt32(), 1200) << "what was refused changed nothing";
}

TEST_F(Calls, ShowRootKeysAsTheNumbersThatClientsKnow) {
  const Door store = New("CAppSettings");
  EXPECT_EQ(Get(store, "RootKey").ToInt32(), ErrorNumber(0x80000001));
  Let(store, "RootKey", ErrorNumber(0x80000002));
  EXPECT_EQ(Get(store, "RootKey").ToInt32(), ErrorNumber(0x80000002));
  ExpectError(ErrorOf([&] { Let(store, "RootKey", 0); }), 0x80044280, "Invalid root key value",
              "Mirelo.CAppSettings");
}

TEST_F(Calls, AssignNothingThatIsOnlyRead) {
  const Door facade = New("cMirelo");
  EXPECT_EQ(NumberOf([&] { Let(facade, "Seconds", 5); }), 438);
  EXPECT_EQ(NumberOf([&] { Set(facade, "Seconds", Nothing()); }), 438);
  EXPECT_EQ(NumberOf([&] { Let(facade, "LoadMasPosition", 5); }), 438);
}

TEST_F(Calls, ReadNothingThatIsOnlySet) {
  const Door facade = New("cMirelo");
  const Door stream = New("cQTStreaming");
  Set(stream, "Owner", ObjectOf(facade));
  EXPECT_EQ(NumberOf([&] { Get(stream, "Owner"); }), 438);
  EXPECT_EQ(NumberOf([&] { Call(stream, "Owner"); }), 438);
}

TEST_F(Calls, ReadNoMethodsAsProperties) {
  EXPECT_EQ(NumberOf([] { Get(New("cMirelo"), "LoadMasPosition"); }), 438);
}

TEST_F(Calls, TakeThePlaceOfReadingForClientsThatWriteBothAlike) {
  EXPECT_EQ(Call(New("cMirelo"), "Seconds").ToInt32(), 10);
}

TEST_F(Calls, SetReferences) {
  const Door facade = New("cMirelo");
  const Door stream = New("cQTStreaming");
  const Door quotes = New("cQTDatas");
  Set(stream, "QTConteiner", ObjectOf(quotes));
  EXPECT_EQ(Get(stream, "QTConteiner").AsObject(), quotes->object());
  Set(stream, "QTConteiner", Nothing());
  EXPECT_EQ(Get(stream, "QTConteiner").TypeName(), "Nothing");
}

TEST_F(Calls, SetReferencesForClientsThatAssignThem) {
  const Door facade = New("cMirelo");
  const Door stream = New("cQTStreaming");
  const Door quotes = New("cQTDatas");
  Let(stream, "QTConteiner", ObjectOf(quotes));
  EXPECT_EQ(Get(stream, "QTConteiner").AsObject(), quotes->object());
  EXPECT_EQ(NumberOf([&] { Let(stream, "QTConteiner", 5); }), 424);
}

TEST_F(Calls, SetNothingButObjectsOfTheClass) {
  const Door facade = New("cMirelo");
  const Door stream = New("cQTStreaming");
  EXPECT_EQ(NumberOf([&] { Set(stream, "Owner", 1); }), 424);
  EXPECT_EQ(NumberOf([&] { Set(stream, "Owner", {}); }), 424);
  EXPECT_EQ(NumberOf([&] { Set(stream, "Owner", ObjectOf(stream)); }), 13);
  EXPECT_EQ(NumberOf([&] { Set(stream, "arrTickers", ObjectOf(stream)); }), 438) << "that is assigned";
}

TEST_F(Calls, HandOutObjectsOfOtherRoomsWithoutMembers) {
  class Opaque : public Object {
    std::string_view TypeName() const override { return "Opaque"; }
  };
  const Door facade = New("cMirelo");
  const auto opaque = std::make_shared<Opaque>();
  Set(facade, "masPrevVolume", opaque);
  const Door door = DoorOf(Get(facade, "masPrevVolume"));
  EXPECT_EQ(door->object(), opaque);
  EXPECT_TRUE(door->table().members().empty());
  EXPECT_EQ(NumberOf([&] { door->IdOf("Name"); }), 438);
  EXPECT_EQ(NumberOf([&] { door->Value(); }), 438);
  EXPECT_EQ(NumberOf([&] { Set(facade, "ExcelApplication", opaque); }), 13);
  EXPECT_EQ(NumberOf([&] { Let(facade, "ExcelApplication", "text"); }), 424);
}

TEST_F(Calls, OfMethodsReturnWhatTheMethodReturns) {
  internet.answer = [](const AnsweringInternet::Request&) { return "OK\r\n"; };
  const Door facade = New("cMirelo");
  EXPECT_EQ(Call(facade, "DownloadURL", {"/req?EnumPorts()"}).ToText(), "OK\r\n");
  EXPECT_TRUE(Call(facade, "LoadMasPosition").IsEmpty());
  EXPECT_EQ(Call(New("cQTStreaming"), "GetQTData").TypeName(), "Nothing");
}

TEST_F(Calls, RaiseTheErrorsOfTheClassWithNumberTextAndSource) {
  const Door store = New("CAppSettings");
  ExpectError(ErrorOf([&] { Let(store, "AppName", ""); }), 0x8004427D, "Invalid AppName value",
              "Mirelo.CAppSettings");
  ExpectError(ErrorOf([] { Call(New("cQTDatas"), "Item", {"absent"}); }), 0x80040064,
              "cQTDatas component failure", "DovantaDL.cQTDatas.Item");
}

TEST_F(Calls, RaiseRuntimeErrorsForWhateverElseFails) {
  const Door facade = New("cMirelo");
  const Door stream = New("cQTStreaming");
  const auto subscription =
      stream->Subscribe([](const automation_server::EventMember&, std::span<const Variant>) {
        throw std::length_error("far too long");
      });
  ExpectError(ErrorOf([&] { Call(stream, "connect"); }), 440, "far too long", "Mirelo");
}

TEST_F(Calls, RaiseTheNumberOfExhaustedMemory) {
  const Door facade = New("cMirelo");
  const Door stream = New("cQTStreaming");
  const auto subscription = stream->Subscribe(
      [](const automation_server::EventMember&, std::span<const Variant>) { throw std::bad_alloc(); });
  EXPECT_EQ(NumberOf([&] { Call(stream, "connect"); }), 7);
}

TEST_F(Calls, ShowTheDialog) {
  const Door facade = New("cMirelo");
  EXPECT_EQ(Call(facade, "LoadFrmMirelo").ToInt32(), 2);
  EXPECT_EQ(desktop.forms, std::vector<std::string>{"frmMirelo"});
}

TEST_F(Calls, KeepTheFacadeWhileItsDialogShows) {
  Door facade = New("cMirelo");
  const std::weak_ptr<Object> object = facade->object();
  desktop.person["frmMirelo"] = [&](forms::Form&) { facade = nullptr; };
  EXPECT_EQ(Call(facade, "LoadFrmMirelo").ToInt32(), 2);
  EXPECT_TRUE(object.expired());
}

TEST_F(Calls, WithHostileValuesFailAsRuntimeErrors) {
  const Door facade = New("cMirelo");
  EXPECT_EQ(NumberOf([&] { Call(facade, "Update_Charts", {Nothing(), 1, 2, "Blue", 1, 1}); }), 91);
  EXPECT_EQ(NumberOf([&] { Call(facade, "Update_Charts", {5, 1, 2, "Blue", 1, 1}); }), 424);
  EXPECT_TRUE(Call(facade, "Change_Colors", {Nothing(), 1, 1, "Blue"}).IsEmpty());
  EXPECT_EQ(NumberOf([&] { Call(facade, "Change_Colors", {ObjectOf(facade), 1, 1, "Blue"}); }), 13);
  EXPECT_EQ(NumberOf([&] { Call(facade, "Change_Colors", {Nothing(), "x", 1, "Blue"}); }), 13);
  EXPECT_EQ(NumberOf([&] { Call(facade, "Change_Colors", {Nothing(), 1, 1, "Blue", 40'000}); }), 6);
}

}  // namespace
}  // namespace mirelo::testing
