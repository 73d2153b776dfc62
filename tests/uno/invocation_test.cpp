#include "uno/invocation.h"

#include <com/sun/star/container/XEnumerationAccess.hpp>
#include <com/sun/star/reflection/InvocationTargetException.hpp>
#include <com/sun/star/script/BasicErrorException.hpp>
#include <com/sun/star/script/XAllListener.hpp>
#include <com/sun/star/script/XDefaultMethod.hpp>
#include <cppuhelper/implbase1.hxx>
#include <functional>
#include <initializer_list>
#include <memory>
#include <rtl/ref.hxx>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

#include "adapters/workbook/spreadsheet.h"
#include "automation_server/server_test.h"
#include "uno/own_thread.h"
#include "uno/text.h"
#include "uno/values.h"

namespace mirelo::testing {
namespace {

namespace css = com::sun::star;
using css::uno::Any;
using css::uno::Reference;
using css::uno::Sequence;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using uno::OfficeText;
using Held = Reference<css::script::XInvocation>;

// A macro, which knows objects by the names of their members.
class Invocations : public ServerTest {
 protected:
  static Held NewHeld(std::string_view name) {
    return uno::InvocationOf(automation_server::CreateObject(name));
  }

  static Any Value(const Held& held, std::string_view name) { return held->getValue(OfficeText(name)); }
  static void SetValue(const Held& held, std::string_view name, const Any& value) {
    held->setValue(OfficeText(name), value);
  }
  static Any Invoke(const Held& held, std::string_view name, std::initializer_list<Any> arguments = {}) {
    Sequence<sal_Int16> places;
    Sequence<Any> changed;
    return held->invoke(OfficeText(name), AsSequence(arguments), places, changed);
  }
  static Sequence<Any> AsSequence(std::initializer_list<Any> values) {
    return Sequence<Any>(values.begin(), static_cast<sal_Int32>(values.size()));
  }
  static Any Text(std::string_view text) { return Any(OfficeText(text)); }

  // The number under which Basic has it in Err.
  static std::int32_t NumberInBasic(const std::function<void()>& act) {
    try {
      act();
    } catch (const css::script::BasicErrorException& error) {
      return error.ErrorCode;
    }
    return 0;
  }
};

// Notes events as "OnStateChanged(1)".
class NotingListener final : public cppu::WeakImplHelper1<css::script::XAllListener> {
 public:
  void SAL_CALL firing(const css::script::AllEventObject& event) override {
    std::string text = uno::TextOf(event.MethodName);
    for (const Any& argument : event.Arguments) text += " " + uno::FromOffice(argument).ToText();
    told.push_back(text);
    if (failing) throw css::uno::RuntimeException("the macro failed", {});
  }
  Any SAL_CALL approveFiring(const css::script::AllEventObject&) override { return {}; }
  void SAL_CALL disposing(const css::lang::EventObject&) override {}

  std::vector<std::string> told;
  bool failing = false;
};

TEST_F(Invocations, ReadAndAssignPropertiesInLettersOfEitherCase) {
  const Held facade = NewHeld("cMirelo");
  SetValue(facade, "statusrunworkqt", Any(sal_Int16{2}));
  EXPECT_EQ(Value(facade, "StatusRunWorkQT").get<sal_Int32>(), 2);
}

TEST_F(Invocations, TellMethodsFromProperties) {
  const Held facade = NewHeld("cMirelo");
  EXPECT_TRUE(facade->hasProperty("Seconds"));
  EXPECT_FALSE(facade->hasMethod("Seconds"));
  EXPECT_TRUE(facade->hasMethod("getlastquote"));
  EXPECT_FALSE(facade->hasProperty("GetLastQuote"));
  EXPECT_FALSE(facade->hasMethod("NoSuchMember"));
  EXPECT_FALSE(facade->hasProperty("NoSuchMember"));
}

TEST_F(Invocations, TakePropertiesWithArgumentsForMethods) {
  const Held program = uno::InvocationOf(workbook::Spreadsheet::New().Application());
  EXPECT_TRUE(program->hasMethod("Range"));
  Held cell;
  Invoke(program, "Range", {Text("B2")}) >>= cell;
  SetValue(cell, "Value", Any(1.5));
  EXPECT_EQ(Value(cell, "Value").get<double>(), 1.5);
}

TEST_F(Invocations, GiveBackWhatAMemberLeftInItsReferences) {
  const Held facade = NewHeld("cMirelo");
  const Held store = NewHeld("CAppSettings");
  Sequence<sal_Int16> places;
  Sequence<Any> changed;
  store->invoke("SaveSetting", AsSequence({Text("Settings"), Text("Seconds"), Any(25.4)}), places, changed);
  ASSERT_EQ(places.getLength(), 1);
  EXPECT_EQ(places[0], 2);
  EXPECT_EQ(changed[0].get<sal_Int32>(), 25);
}

TEST_F(Invocations, LeaveOutOptionalArgumentsThatAreEmpty) {
  const Held facade = NewHeld("cMirelo");
  std::string asked_for;
  internet.answer = [&](const AnsweringInternet::Request& request) {
    asked_for = request.verb;
    return "reply";
  };
  EXPECT_EQ(uno::FromOffice(Invoke(facade, "DownloadURL", {Text("/req?x"), Any(), Any(), Any()})).ToText(),
            "reply");
  EXPECT_EQ(asked_for, "GET");
}

TEST_F(Invocations, AreTheSameForTheSameObject) {
  const Held facade = NewHeld("cMirelo");
  const Held stream = NewHeld("cQTStreaming");
  const Held quotes = NewHeld("cQTDatas");
  SetValue(stream, "QTConteiner", Any(quotes));
  Held returned;
  Value(stream, "QTConteiner") >>= returned;
  EXPECT_EQ(returned, quotes);
  EXPECT_NE(NewHeld("cQTDatas"), quotes);
}

// As Basic hands on what it holds.
TEST_F(Invocations, AreKnownByWhicheverInterfaceTheyComeAs) {
  const Held facade = NewHeld("cMirelo");
  const Held stream = NewHeld("cQTStreaming");
  const Held quotes = NewHeld("cQTDatas");
  const Reference<css::uno::XInterface> unnamed(quotes.get());
  SetValue(stream, "QTConteiner", Any(unnamed));
  Held returned;
  Value(stream, "QTConteiner") >>= returned;
  EXPECT_EQ(returned, quotes);
}

TEST_F(Invocations, HoldTheirObjectAsLongAsSomebodyHoldsThem) {
  const Held facade = NewHeld("cMirelo");
  auto object = automation_server::CreateObject("cQTDatas");
  const std::weak_ptr<Object> watched = object;
  Held held = uno::InvocationOf(object);
  object.reset();
  EXPECT_FALSE(watched.expired());
  held.clear();
  EXPECT_TRUE(watched.expired());
}

TEST_F(Invocations, ShowTheNumberOfAnErrorToBasic) {
  const Held facade = NewHeld("cMirelo");
  EXPECT_EQ(NumberInBasic([&] { SetValue(facade, "StatusRunWorkQT", Text("none")); }), 13);
  EXPECT_EQ(NumberInBasic([&] { Value(facade, "NoSuchMember"); }), 438);
  EXPECT_EQ(NumberInBasic([&] { Invoke(facade, "DownloadURL"); }), 449);
  EXPECT_EQ(NumberInBasic([&] { Value(facade, "GetLastQuote"); }), 438);
}

// Basic would drop it in silence.
TEST_F(Invocations, TellTheNumberOfAnErrorThatBasicDoesNotKnowInItsText) {
  const Held facade = NewHeld("cMirelo");
  const Held quotes = NewHeld("cQTDatas");
  try {
    Invoke(quotes, "Item", {Text("no such key")});
    FAIL() << "no error";
  } catch (const css::reflection::InvocationTargetException& error) {
    EXPECT_THAT(uno::TextOf(error.Message), HasSubstr("error -2147221404: cQTDatas component failure"));
  }
}

TEST_F(Invocations, WalkCollectionsForForEach) {
  const Held facade = NewHeld("cMirelo");
  const auto quotes = automation_server::CreateObject("cQTDatas");
  const Held held = uno::InvocationOf(quotes);
  const Held first = NewHeld("cQTData");
  Invoke(held, "Add", {Any(first), Text("MSFT")});
  const Reference<css::container::XEnumerationAccess> items(held, css::uno::UNO_QUERY);
  ASSERT_TRUE(items.is());
  const auto walk = items->createEnumeration();
  ASSERT_TRUE(walk->hasMoreElements());
  Held item;
  walk->nextElement() >>= item;
  EXPECT_EQ(item, first);
  EXPECT_FALSE(walk->hasMoreElements());
  EXPECT_THROW(walk->nextElement(), css::container::NoSuchElementException);
}

TEST_F(Invocations, OfferOnlyWhatTheirClassHas) {
  const Held facade = NewHeld("cMirelo");
  const Held quotes = NewHeld("cQTDatas");
  EXPECT_FALSE(Reference<css::container::XEnumerationAccess>(facade, css::uno::UNO_QUERY).is());
  EXPECT_FALSE(Reference<css::script::XDefaultMethod>(facade, css::uno::UNO_QUERY).is());
  const Reference<css::script::XDefaultMethod> by_default(quotes, css::uno::UNO_QUERY);
  ASSERT_TRUE(by_default.is());
  EXPECT_EQ(uno::TextOf(by_default->getDefaultMethodName()), "Item");
}

TEST_F(Invocations, RefuseOtherThreads) {
  const Held facade = NewHeld("cMirelo");
  bool refused = false;
  std::thread([&] {
    try {
      Value(facade, "Seconds");
    } catch (const css::uno::RuntimeException&) {
      refused = true;
    }
  }).join();
  EXPECT_TRUE(refused);
}

// A Python thread may be the last that holds an object.
class InvocationsOfThreads : public Invocations {
 protected:
  InvocationsOfThreads() {
    uno::LetGoThrough([this](std::function<void()> step) {
      if (takes_steps) posted.push_back(std::move(step));
      return takes_steps;
    });
  }
  ~InvocationsOfThreads() override { uno::LetGoThrough({}); }

  static void LetGoElsewhere(Held& held) {
    std::thread([&held] { held.clear(); }).join();
  }
  void RunPosted() {
    for (const auto& step : std::exchange(posted, {})) step();
  }

  Held facade = NewHeld("cMirelo");
  std::shared_ptr<Object> object = automation_server::CreateObject("cQTDatas");
  const std::weak_ptr<Object> watched = object;
  Held held = uno::InvocationOf(object);
  std::vector<std::function<void()>> posted;
  bool takes_steps = true;
};

TEST_F(InvocationsOfThreads, LetGoOfTheirObjectOnItsOwnThread) {
  object.reset();
  LetGoElsewhere(held);
  EXPECT_FALSE(watched.expired());
  RunPosted();
  EXPECT_TRUE(watched.expired());
}

TEST_F(InvocationsOfThreads, AreTheSameForTheSameObjectUntilThen) {
  const css::script::XInvocation* const before = held.get();
  LetGoElsewhere(held);
  held = uno::InvocationOf(object);
  EXPECT_EQ(held.get(), before);
  RunPosted();
  EXPECT_EQ(uno::ObjectBehind(Reference<css::uno::XInterface>(held, css::uno::UNO_QUERY)), object);
}

TEST_F(InvocationsOfThreads, StayWhenTheirThreadTakesNoMore) {
  takes_steps = false;
  object.reset();
  LetGoElsewhere(held);
  EXPECT_FALSE(watched.expired());
}

TEST_F(InvocationsOfThreads, WalkCollectionsThatTheyLetGoOfThereToo) {
  Invoke(held, "Add", {Any(NewHeld("cQTData")), Text("MSFT")});
  auto walk =
      Reference<css::container::XEnumerationAccess>(held, css::uno::UNO_QUERY_THROW)->createEnumeration();
  std::thread([&walk] { walk.clear(); }).join();
  EXPECT_EQ(posted.size(), 1u);
  RunPosted();
}

class InvocationListeners : public Invocations {
 protected:
  InvocationListeners() {
    internet.answer = [](const AnsweringInternet::Request&) { return "reply"; };
    SetValue(transfer, "HostName", Text("host"));
    SetValue(transfer, "Resource", Text("/"));
    SetValue(transfer, "Method", Text("GET"));
  }

  static Any AsArgument(const rtl::Reference<NotingListener>& listener) {
    return Any(Reference<css::script::XAllListener>(listener.get()));
  }

  Held facade = NewHeld("cMirelo");
  Held transfer = NewHeld("WinInet");
  rtl::Reference<NotingListener> listener = new NotingListener;
};

TEST_F(InvocationListeners, AreToldOfEachEventWithItsArguments) {
  Invoke(transfer, "addListener", {AsArgument(listener)});
  Invoke(transfer, "Execute");
  EXPECT_THAT(listener->told,
              ElementsAre("OnStateChanged 1", "OnStateChanged 3", "OnStateChanged 6", "OnStateChanged 7",
                          "OnStateChanged 9", "OnProgress 0 0 5", "OnProgress 0 0 5", "OnStateChanged 11"));
}

TEST_F(InvocationListeners, AreToldOnceHoweverOftenTheyWereAdded) {
  const rtl::Reference<NotingListener> other = new NotingListener;
  for (int i = 0; i < 2; ++i) Invoke(transfer, "addListener", {AsArgument(listener)});
  Invoke(transfer, "addListener", {AsArgument(other)});
  Invoke(transfer, "Execute");
  EXPECT_EQ(listener->told.size(), 8u);
  EXPECT_EQ(other->told.size(), 8u);
}

TEST_F(InvocationListeners, AreToldNoMoreWhenTheyAreRemoved) {
  Invoke(transfer, "addListener", {AsArgument(listener)});
  Invoke(transfer, "removeListener", {AsArgument(listener)});
  Invoke(transfer, "Execute");
  EXPECT_THAT(listener->told, ElementsAre());
}

TEST_F(InvocationListeners, AreOfferedByClassesWithEventsAlone) {
  EXPECT_TRUE(transfer->hasMethod("addListener"));
  EXPECT_FALSE(facade->hasMethod("addListener"));
}

TEST_F(InvocationListeners, MustBeListeners) {
  EXPECT_EQ(NumberInBasic([&] { Invoke(transfer, "addListener"); }), 449);
  EXPECT_EQ(NumberInBasic([&] { Invoke(transfer, "addListener", {Text("Stream_")}); }), 13);
}

TEST_F(InvocationListeners, ThatFailAreErrorsOfTheCallThatToldThem) {
  listener->failing = true;
  Invoke(transfer, "addListener", {AsArgument(listener)});
  EXPECT_THROW(Invoke(transfer, "Execute"), css::uno::Exception);
  EXPECT_EQ(listener->told.size(), 1u);
}

}  // namespace
}  // namespace mirelo::testing
