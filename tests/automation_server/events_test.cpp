#include <memory>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "automation/runtime_error.h"
#include "automation_server/server_test.h"

namespace mirelo::testing {
namespace {

using automation_server::EventMember;
using automation_server::Subscription;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class Events : public ServerTest {
 protected:
  Events() {
    internet.answer = [](const AnsweringInternet::Request&) { return "reply"; };
    Let(transfer, "HostName", "host");
    Let(transfer, "Resource", "/");
    Let(transfer, "Method", "GET");
  }

  // Each event as "OnStateChanged(1)".
  automation_server::EventSink Noting() {
    return [this](const EventMember& event, std::span<const Variant> arguments) {
      std::string text(event.name);
      for (const Variant& argument : arguments) {
        text += (&argument == arguments.data() ? "(" : ", ") + argument.ToText();
      }
      told.push_back(arguments.empty() ? text : text + ")");
    };
  }

  std::vector<std::string> told;
  Door facade = New("cMirelo");
  Door transfer = New("WinInet");
};

TEST_F(Events, ComeWithTheirNamesAndArguments) {
  const Subscription subscription = transfer->Subscribe(Noting());
  Call(transfer, "Execute");
  EXPECT_THAT(told, ElementsAre("OnStateChanged(1)", "OnStateChanged(3)", "OnStateChanged(6)",
                                "OnStateChanged(7)", "OnStateChanged(9)", "OnProgress(0, 0, 5)",
                                "OnProgress(0, 0, 5)", "OnStateChanged(11)"));
}

TEST_F(Events, ComeToAllWhoSubscribed) {
  int others = 0;
  const Subscription first = transfer->Subscribe(Noting());
  const Subscription second =
      transfer->Subscribe([&](const EventMember&, std::span<const Variant>) { ++others; });
  Call(transfer, "Execute");
  EXPECT_EQ(told.size(), 8U);
  EXPECT_EQ(others, 8);
}

TEST_F(Events, EndWithTheSubscription) {
  Subscription subscription = transfer->Subscribe(Noting());
  subscription.End();
  subscription.End();
  Call(transfer, "Execute");
  EXPECT_THAT(told, IsEmpty());
}

TEST_F(Events, GoOnWithASubscriptionThatWasMoved) {
  Subscription subscription;
  {
    Subscription first = transfer->Subscribe(Noting());
    subscription = std::move(first);
  }
  Call(transfer, "Execute");
  EXPECT_EQ(told.size(), 8U);
}

TEST_F(Events, MayEndWhileTheyAreDelivered) {
  std::optional<Subscription> subscription;
  int others = 0;
  subscription = transfer->Subscribe(
      [&, held = std::string(100, 'x')](const EventMember& event, std::span<const Variant>) {
        subscription.reset();
        told.push_back(std::string(event.name) + held.substr(0, 1));  // what the sink holds is still there
      });
  const Subscription other =
      transfer->Subscribe([&](const EventMember&, std::span<const Variant>) { ++others; });
  Call(transfer, "Execute");
  EXPECT_THAT(told, ElementsAre("OnStateChangedx"));
  EXPECT_EQ(others, 8);
}

TEST_F(Events, MayEndOtherSubscriptionsWhileTheyAreDelivered) {
  std::optional<Subscription> other;
  const Subscription first =
      transfer->Subscribe([&](const EventMember&, std::span<const Variant>) { other.reset(); });
  other = transfer->Subscribe(Noting());
  Call(transfer, "Execute");
  EXPECT_THAT(told, IsEmpty());
}

TEST_F(Events, MayCallTheObjectAgain) {
  const Subscription subscription =
      transfer->Subscribe([&](const EventMember& event, std::span<const Variant> arguments) {
        if (event.name == "OnStateChanged" && arguments[0].ToInt32() == 3) Call(transfer, "Cancel");
        Noting()(event, arguments);
      });
  Call(transfer, "Execute");
  EXPECT_THAT(told, ElementsAre("OnStateChanged(1)", "OnStateChanged(3)", "OnStateChanged(12)"));
}

TEST_F(Events, MayTakeTheLastReferenceToTheObject) {
  const std::weak_ptr<Object> object = transfer->object();
  const Subscription subscription =
      transfer->Subscribe([&](const EventMember&, std::span<const Variant>) { transfer = nullptr; });
  Call(transfer, "Execute");
  EXPECT_EQ(internet.requests.size(), 1U) << "the call went on to its end";
  EXPECT_TRUE(object.expired());
}

TEST_F(Events, LetWhatASinkRaisesGoWhereTheClassSays) {
  const Subscription subscription = transfer->Subscribe(
      [](const EventMember&, std::span<const Variant>) { throw RuntimeError(5, "the sink's"); });
  ExpectError(ErrorOf([&] { Call(transfer, "Execute"); }), 0x80040064, "WinInet component failure",
              "Mirelo.WinInet.Execute");
}

TEST_F(Events, AreNoneForAnObjectThatHasNone) {
  Subscription subscription = facade->Subscribe(Noting());
  Call(facade, "LoadMasPosition");
  subscription.End();
  EXPECT_THAT(told, IsEmpty());
}

TEST_F(Events, OfTheStreamBringItsQuotes) {
  const Door stream = New("cQTStreaming");
  std::vector<std::string> symbols;
  const Subscription subscription =
      stream->Subscribe([&](const EventMember& event, std::span<const Variant> arguments) {
        Noting()(event, arguments);
        if (event.name != "QTDatas") return;
        const auto walk = DoorOf(Call(stream, "GetQTData"))->NewEnum();
        while (const auto quote = walk->Next()) symbols.push_back(Get(DoorOf(*quote), "Symbol").ToText());
        Call(stream, "FreeQTDataBuffer");
      });
  Set(stream, "Owner", ObjectOf(facade));
  Let(facade, "StatusRunWorkQT", 2);
  Let(stream, "StartStop", true);
  Call(stream, "connect");
  for (const char* symbol : {"MSFT", "IBM"}) {
    sockets.Newest().Deliver(Level1Wire("S1").Symbol(symbol).Last(28.5).Bytes());
  }
  EXPECT_THAT(symbols, ElementsAre("MSFT", "IBM"));
  EXPECT_THAT(told, ElementsAre("OnStatusText(Connection started...)", "OnStatusText(Connecting to host...)",
                                "QTDatas", "QTDatas"));
}

}  // namespace
}  // namespace mirelo::testing
