#include <memory>
#include <span>
#include <utility>

#include "adapters/workbook/spreadsheet.h"
#include "automation_server/server_test.h"

namespace mirelo::testing {
namespace {

using automation_server::AutomationObject;
using automation_server::Subscription;

class Lifetimes : public ServerTest {};

TEST_F(Lifetimes, GiveAnObjectOneDoorWhileSomebodyHoldsIt) {
  const Door facade = New("cMirelo");
  const Door stream = New("cQTStreaming");
  const Door quotes = DoorOf(Get(stream, "QTConteiner"));
  EXPECT_EQ(DoorOf(Get(stream, "copy_cQTDatas")), quotes) << "both hold the same object";
  EXPECT_EQ(DoorOf(quotes->object()), quotes);
  EXPECT_NE(New("cQTDatas"), quotes);
}

TEST_F(Lifetimes, GiveNullNoDoor) { EXPECT_EQ(DoorOf(Nothing()), nullptr); }

TEST_F(Lifetimes, KeepTheObjectWithItsDoor) {
  Door quotes = New("cQTDatas");
  Door quote = DoorOf(Call(quotes, "ItemAdd", {"A"}));
  const std::weak_ptr<Object> object = quote->object();
  quotes = nullptr;
  EXPECT_EQ(Get(quote, "NameID").ToText(), "A");
  quote = nullptr;
  EXPECT_TRUE(object.expired());
}

// Memory that was let go is given again, so a door that was kept by its address would be a stranger's.
TEST_F(Lifetimes, GiveANewObjectADoorOfItsOwnWhereAnotherStoodBefore) {
  for (int i = 0; i < 100; ++i) {
    const Door quote = New("cQTData");
    EXPECT_EQ(Get(quote, "Symbol").ToText(), "");
    Let(quote, "Symbol", "X");
    const Door settings = New("CAppSettings");
    EXPECT_EQ(settings->table().name(), "CAppSettings");
  }
}

TEST_F(Lifetimes, KeepTheFacadeWithTheStreamThatItOwns) {
  Door facade = New("cMirelo");
  const Door stream = New("cQTStreaming");
  const std::weak_ptr<Object> object = facade->object();
  Set(stream, "Owner", ObjectOf(facade));
  Let(facade, "StatusRunWorkQT", 2);
  facade = nullptr;
  ASSERT_FALSE(object.expired());
  Call(stream, "connect");
  EXPECT_EQ(sockets.connections.size(), 1U);
  Set(stream, "Owner", Nothing());
  EXPECT_TRUE(object.expired());
}

TEST_F(Lifetimes, LeaveAStreamWithoutFacadeToErrors) {
  Door facade = New("cMirelo");
  const Door stream = New("cQTStreaming");
  facade = nullptr;
  EXPECT_EQ(NumberOf([&] { Call(stream, "connect"); }), 91);
  EXPECT_EQ(NumberOf([&] { Call(stream, "GiveStreamerFile", {"source"}); }), 91);
  EXPECT_EQ(NumberOf([&] { Call(stream, "DisConnect"); }), 0);
  EXPECT_EQ(NumberOf([] { New("cQTStreaming"); }), 91);
}

TEST_F(Lifetimes, LetAnObjectGoBeforeItsSubscriptions) {
  Door transfer = New("WinInet");
  Subscription subscription =
      transfer->Subscribe([](const automation_server::EventMember&, std::span<const Variant>) {});
  const std::weak_ptr<Object> object = transfer->object();
  transfer = nullptr;
  EXPECT_TRUE(object.expired());
  subscription.End();
}

TEST_F(Lifetimes, HoldTheSpreadsheetThatWasHandedIn) {
  const Door facade = New("cMirelo");
  auto application = workbook::Spreadsheet::New().Application();
  const std::weak_ptr<Object> held = application;
  Set(facade, "ExcelApplication", Variant(std::exchange(application, nullptr)));
  EXPECT_EQ(Get(facade, "m_ObjExcelApplication").AsObject(), held.lock());
  EXPECT_EQ(Get(facade, "ExcelApplication").TypeName(), "Application");
  Set(facade, "ExcelApplication", Nothing());
  EXPECT_TRUE(held.expired());
}

}  // namespace
}  // namespace mirelo::testing
