#include <cstdint>
#include <stdexcept>
#include <string>

#include "http/scripted_transfer.h"
#include "support/memory_shortage.h"

namespace mirelo::testing {
namespace {

// The properties that hold text, with both of their accessors.
struct TextProperty {
  const char* name;
  std::string (WinInet::*get)() const;
  void (WinInet::*let)(std::string);
};

#define TEXT_PROPERTY(name) \
  TextProperty { #name, &WinInet::name, &WinInet::name }

constexpr TextProperty kTextProperties[] = {
    TEXT_PROPERTY(Response), TEXT_PROPERTY(ContentType), TEXT_PROPERTY(PostQuery), TEXT_PROPERTY(AcceptTypes),
    TEXT_PROPERTY(Referer),  TEXT_PROPERTY(Resource),    TEXT_PROPERTY(Method),    TEXT_PROPERTY(Password),
    TEXT_PROPERTY(UserName), TEXT_PROPERTY(HostName),    TEXT_PROPERTY(AgentName),
};

const std::string kLongText(1000, 'x');  // lives in memory of its own

TEST(Properties, KeepWhatTheyWereGiven) {
  WinInet transfer;
  transfer.SuccessDone(true);  // for the response
  for (const TextProperty& property : kTextProperties) {
    SCOPED_TRACE(property.name);
    EXPECT_EQ((transfer.*property.get)(), "");
    (transfer.*property.let)(property.name);
  }
  for (const TextProperty& property : kTextProperties) EXPECT_EQ((transfer.*property.get)(), property.name);

  transfer.Port(-7);
  transfer.TimeoutSec(-8);
  EXPECT_EQ(transfer.Port(), -7);
  EXPECT_EQ(transfer.TimeoutSec(), -8);
}

TEST(Properties, FailInTheirOwnName) {
  WinInet transfer;
  transfer.SuccessDone(true);
  for (const TextProperty& property : kTextProperties) {
    SCOPED_TRACE(property.name);
    (transfer.*property.let)(kLongText);
    const RuntimeError error = ErrorOf([&] {
      const MemoryShortage shortage;
      (void)(transfer.*property.get)();
    });
    ExpectComponentFailure(error, property.name);
  }
}

TEST(Properties, ResponseIsEmptyUntilTheTransferSucceeded) {
  WinInet transfer;
  transfer.Response("stored");
  EXPECT_EQ(transfer.Response(), "");
  transfer.SuccessDone(true);
  EXPECT_EQ(transfer.Response(), "stored");
  transfer.SuccessDone(false);
  EXPECT_EQ(transfer.Response(), "");
}

TEST(Properties, ATakenResponseIsGone) {
  WinInet transfer;
  transfer.Response("stored");
  EXPECT_EQ(transfer.TakeResponse(), "");
  transfer.SuccessDone(true);
  EXPECT_EQ(transfer.TakeResponse(), "stored");
  EXPECT_EQ(transfer.Response(), "");
}

class ComponentFailure : public ScriptedTransfer {};

TEST_F(ComponentFailure, IsWhatAHandlersErrorBecomes) {
  transfer.OnProgress.Subscribe([](float, std::int32_t, std::int32_t) { throw Errors::TypeMismatch(); });
  ExpectComponentFailure(ErrorOf([&] { transfer.Execute(); }), "Execute");
  EXPECT_FALSE(transfer.SuccessDone());
  EXPECT_EQ(Closed(), std::vector<std::string>{});
}

TEST_F(ComponentFailure, OfARoutineInsideIsRaisedAgainInTheNameOfTheOuterOne) {
  transfer.OnStateChanged.Subscribe([](std::int32_t) { throw std::logic_error("no RuntimeError"); });
  ExpectComponentFailure(ErrorOf([&] { transfer.Execute(); }), "Execute");
}

TEST_F(ComponentFailure, IsWhatAnErrorOfThePortBecomes) {
  internet.on_call = [](const std::string& name) {
    if (name == "InternetCloseHandle") throw Errors::OutOfMemory();
  };
  ExpectComponentFailure(ErrorOf([&] { transfer.Execute(); }), "Execute");
}

TEST_F(ComponentFailure, IsWhatTheErrorOfSomebodyElsesHandlerInAYieldBecomes) {
  loop.StartTimer(std::chrono::milliseconds(0), [] { throw Errors::TypeMismatch(); });
  ExpectComponentFailure(ErrorOf([&] { transfer.Execute(); }), "Execute");
}

TEST(ComponentFailureWithoutHost, IsRaisedByExecute) {
  WinInet transfer;
  ExpectComponentFailure(ErrorOf([&] { transfer.Execute(); }), "Execute");
}

}  // namespace
}  // namespace mirelo::testing
