#include "automation/event.h"

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>

namespace mirelo {
namespace {

TEST(Event, CallsNobodyWhenNobodySubscribed) {
  const Event<int> event;
  EXPECT_FALSE(event.HasSubscribers());
  event.Raise(1);
}

TEST(Event, CallsHandlersInTheOrderOfSubscriptionWithTheArguments) {
  Event<int, const std::string&> event;
  std::string calls;
  event.Subscribe(
      [&](int number, const std::string& text) { calls += "first " + std::to_string(number) + text; });
  event.Subscribe(
      [&](int number, const std::string& text) { calls += ", second " + std::to_string(number) + text; });
  event.Raise(7, "x");
  EXPECT_EQ(calls, "first 7x, second 7x");
}

TEST(Event, LetsHandlersChangeAnArgumentByReference) {
  Event<int&> event;
  event.Subscribe([](int& value) { value += 1; });
  event.Subscribe([](int& value) { value *= 10; });
  int value = 1;
  event.Raise(value);
  EXPECT_EQ(value, 20);
}

TEST(Event, GivesCookiesThatAreNeverZeroNorRepeated) {
  Event<> event;
  const auto first = event.Subscribe([] {});
  EXPECT_NE(first, 0u);
  event.Unsubscribe(first);
  EXPECT_NE(event.Subscribe([] {}), first);
}

TEST(Event, NoLongerCallsAnUnsubscribedHandler) {
  Event<> event;
  int calls = 0;
  const auto cookie = event.Subscribe([&] { ++calls; });
  event.Unsubscribe(cookie);
  event.Unsubscribe(cookie);
  event.Unsubscribe(12345);
  event.Raise();
  EXPECT_EQ(calls, 0);
  EXPECT_FALSE(event.HasSubscribers());
}

TEST(Event, FirstCallsAHandlerAddedMeanwhileAtTheNextRaise) {
  for (const bool alone : {true, false}) {
    Event<> event;
    int calls = 0;
    bool subscribed = false;
    event.Subscribe([&] {
      if (!subscribed) event.Subscribe([&] { ++calls; });
      subscribed = true;
    });
    if (!alone) event.Subscribe([] {});
    event.Raise();
    EXPECT_EQ(calls, 0);
    event.Raise();
    EXPECT_EQ(calls, 1);
  }
}

TEST(Event, NoLongerCallsAHandlerThatAnEarlierOneUnsubscribed) {
  Event<> event;
  Event<>::Cookie second = 0;
  std::string calls;
  event.Subscribe([&] {
    calls += "1";
    event.Unsubscribe(second);
  });
  second = event.Subscribe([&] { calls += "2"; });
  event.Subscribe([&] { calls += "3"; });
  event.Raise();
  EXPECT_EQ(calls, "13");
}

TEST(Event, LetsAHandlerUnsubscribeItselfAndStillFinish) {
  for (const bool alone : {true, false}) {
    Event<> event;
    auto owned = std::make_shared<std::string>("alive");
    std::string seen;
    Event<>::Cookie self = 0;
    self = event.Subscribe([&event, &self, &seen, owned] {
      event.Unsubscribe(self);
      seen += *owned;
    });
    if (!alone) event.Subscribe([] {});
    owned.reset();
    event.Raise();
    event.Raise();
    EXPECT_EQ(seen, "alive");
  }
}

TEST(Event, MayBeRaisedAgainByItsOwnHandler) {
  Event<int> event;
  std::string calls;
  event.Subscribe([&](int depth) {
    calls += "<" + std::to_string(depth);
    if (depth < 3) event.Raise(depth + 1);
    calls += ">";
  });
  event.Subscribe([&](int depth) { calls += "." + std::to_string(depth); });
  event.Raise(1);
  EXPECT_EQ(calls, "<1<2<3>.3>.2>.1");
}

TEST(Event, SkipsTheHandlersBehindOneThatFails) {
  Event<> event;
  int calls = 0;
  event.Subscribe([] { throw std::runtime_error("handler"); });
  event.Subscribe([&] { ++calls; });
  EXPECT_THROW(event.Raise(), std::runtime_error);
  EXPECT_EQ(calls, 0);
}

}  // namespace
}  // namespace mirelo
