#include "com/client.h"

#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "automation/runtime_error.h"
#include "com/class_ids.h"

namespace mirelo::testing {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

// A client's object that notes what it is called by: its methods are those of `names`, or any by number.
class NotingSink final : public IDispatch {
 public:
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** place) override {
    *place = nullptr;
    if (id != IID_IUnknown && id != IID_IDispatch) return E_NOINTERFACE;
    *place = static_cast<IDispatch*>(this);
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references; }
  ULONG STDMETHODCALLTYPE Release() override { return --references; }
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, OLECHAR** asked, UINT, LCID, DISPID* id) override {
    const auto known = names.find(com::TextOf(asked[0]));
    if (known == names.end()) return DISP_E_UNKNOWNNAME;
    *id = known->second;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* passed, VARIANT* result,
                                   EXCEPINFO* told, UINT*) override {
    if (unheard.contains(id) || (result != nullptr && has_no_results)) return DISP_E_MEMBERNOTFOUND;
    std::string text = std::to_string(id);
    auto& of_this = types[id];
    of_this.clear();
    for (UINT i = passed->cArgs; i > 0; --i) {
      text += " " + com::FromClient(passed->rgvarg[i - 1]).ToText();
      of_this.push_back(passed->rgvarg[i - 1].vt);
    }
    calls.push_back(text);
    if (on_call) on_call();
    if (!is_failing) return S_OK;
    com::Describe(RuntimeError(1234, "the script failed", "script"), told);
    return DISP_E_EXCEPTION;
  }

  std::map<std::string, DISPID> names;
  std::vector<std::string> calls;
  std::map<DISPID, std::vector<VARTYPE>> types;  // of the arguments, by the latest call
  std::set<DISPID> unheard;                      // which it has no methods for
  bool has_no_results = false;
  bool is_failing = false;
  std::function<void()> on_call;
  ULONG references = 1;
};

class ComEvents : public ComTest {
 protected:
  ComEvents() {
    internet.answer = [](const AnsweringInternet::Request&) { return "reply"; };
    PutIt(transfer, "HostName", "host");
    PutIt(transfer, "Resource", "/");
    PutIt(transfer, "Method", "GET");
  }

  Held<IConnectionPoint> Point() { return PointOf(transfer, "WinInet"); }
  static Held<IConnectionPoint> PointOf(const Client& held, std::string_view name) {
    const auto container = com::Asked<IConnectionPointContainer>(held.get(), IID_IConnectionPointContainer);
    Held<IConnectionPoint> point;
    com::Require(container->FindConnectionPoint(com::EventsOf(name), point.Place<IConnectionPoint**>()));
    return point;
  }
  void Change(const char* method) {
    VARIANT value = Plain(VT_DISPATCH);
    value.pdispVal = &sink;
    InvokeId(transfer, IdOf(transfer, method), DISPATCH_METHOD, {value});
  }

  NotingSink sink;
  Client facade = NewHeld("cMirelo");
  Client transfer = NewHeld("WinInet");
};

TEST_F(ComEvents, HaveOneConnectionPointThatIsFoundByLooking) {
  const auto container = com::Asked<IConnectionPointContainer>(transfer.get(), IID_IConnectionPointContainer);
  Held<IEnumConnectionPoints> walk;
  com::Require(container->EnumConnectionPoints(walk.Place<IEnumConnectionPoints**>()));
  IConnectionPoint* found[2] = {};
  ULONG count = 0;
  EXPECT_EQ(walk->Next(2, found, &count), S_FALSE);
  ASSERT_EQ(count, 1U);
  const auto point = Held<IConnectionPoint>::Adopting(found[0]);
  EXPECT_TRUE(point == Point());
  EXPECT_EQ(walk->Skip(1), S_FALSE);
  EXPECT_EQ(walk->Reset(), S_OK);
  EXPECT_EQ(walk->Skip(1), S_OK);
  Held<IEnumConnectionPoints> same;
  com::Require(walk->Clone(same.Place<IEnumConnectionPoints**>()));
  EXPECT_EQ(same->Next(1, found, nullptr), S_FALSE) << "it stands behind the last, too";
}

TEST_F(ComEvents, AreToldToConnectionsThatCanBeListed) {
  const auto point = Point();
  DWORD number = 0;
  com::Require(point->Advise(&sink, &number));
  Held<IEnumConnections> walk;
  com::Require(point->EnumConnections(walk.Place<IEnumConnections**>()));
  CONNECTDATA connection{};
  EXPECT_EQ(walk->Next(1, &connection, nullptr), S_OK);
  EXPECT_EQ(connection.dwCookie, number);
  EXPECT_EQ(connection.pUnk, static_cast<IUnknown*>(&sink));
  connection.pUnk->Release();
  EXPECT_EQ(walk->Next(1, &connection, nullptr), S_FALSE);
  com::Require(point->Unadvise(number));
  com::Require(point->EnumConnections(walk.Place<IEnumConnections**>()));
  EXPECT_EQ(walk->Next(1, &connection, nullptr), S_FALSE);
}

TEST_F(ComEvents, ComeThroughTheConnectionPointByTheirNumbers) {
  DWORD number = 0;
  const auto point = Point();
  ASSERT_EQ(point->Advise(&sink, &number), S_OK);
  CallIt(transfer, "Execute");
  EXPECT_THAT(sink.calls, Contains("1 0 0 5")) << "OnProgress is the first of the table";
  EXPECT_THAT(sink.calls, Contains("2 11")) << "OnStateChanged is the second";
  EXPECT_THAT(sink.types[1], ElementsAre(VT_R4, VT_I4, VT_I4)) << "as the type library has them";
  EXPECT_THAT(sink.types[2], ElementsAre(VT_I4));

  sink.calls.clear();
  ASSERT_EQ(point->Unadvise(number), S_OK);
  EXPECT_EQ(point->Unadvise(number), CONNECT_E_NOCONNECTION);
  CallIt(transfer, "Execute");
  EXPECT_THAT(sink.calls, IsEmpty());
  EXPECT_EQ(sink.references, 1U);
}

TEST_F(ComEvents, OfAStreamComeThroughItsConnectionPoint) {
  const Client stream = NewHeld("cQTStreaming");
  Invoke(stream, "Owner", DISPATCH_PROPERTYPUTREF, {ValueOf(facade)});
  PutIt(stream, "arrTickers", VariantArray::OfTexts({"MSFT"}));
  PutIt(stream, "StartStop", true);
  const auto point = PointOf(stream, "cQTStreaming");
  DWORD number = 0;
  ASSERT_EQ(point->Advise(&sink, &number), S_OK);

  CallIt(stream, "connect");
  EXPECT_THAT(sink.calls, Contains("1 Connection started..."));
  EXPECT_THAT(sink.types[1], ElementsAre(VT_BSTR));
  sockets.Newest().Deliver("OK<STREAMER>SWISS.SDF</STREAMER>");
  EXPECT_THAT(sink.calls, Contains("2 5")) << "the streamer was accepted";
  EXPECT_THAT(sink.types[2], ElementsAre(VT_I2));
  sockets.Newest().Deliver(Level1Wire().Symbol("MSFT").Last(28.5).Bytes());
  EXPECT_THAT(sink.calls, Contains("3")) << "and a quote came";
  EXPECT_THAT(sink.types[3], IsEmpty());

  ASSERT_EQ(point->Unadvise(number), S_OK);
  sink.calls.clear();
  sockets.Newest().Deliver(Level1Wire().Symbol("MSFT").Last(28.6).Bytes());
  EXPECT_THAT(sink.calls, IsEmpty());
}

TEST_F(ComEvents, ComeToMethodsOfTheirNames) {
  sink.names = {{"OnStateChanged", 70}};
  Change("AddListener");
  Change("AddListener");
  CallIt(transfer, "Execute");
  EXPECT_THAT(sink.calls, Contains("70 11").Times(1));
  EXPECT_EQ(sink.calls.front(), "70 1") << "what it has no method for passes it by";

  sink.calls.clear();
  Change("removelistener");
  CallIt(transfer, "Execute");
  EXPECT_THAT(sink.calls, IsEmpty());
  EXPECT_EQ(sink.references, 1U);
}

TEST_F(ComEvents, PassByASinkThatHasNoHandlerForThem) {
  sink.unheard = {2};  // OnStateChanged, which comes first of all
  NotingSink next;
  DWORD number = 0;
  const auto point = Point();
  ASSERT_EQ(point->Advise(&sink, &number), S_OK);
  DWORD number_of_next = 0;
  ASSERT_EQ(point->Advise(&next, &number_of_next), S_OK);
  EXPECT_NO_THROW(CallIt(transfer, "Execute"));
  EXPECT_EQ(CallIt(transfer, "Response").ToText(), "reply") << "whoever called goes on";
  EXPECT_THAT(sink.calls, Contains("1 0 0 5")) << "it hears what it has a handler for";
  EXPECT_THAT(next.calls, Contains("2 11")) << "and another hears of both";
  ASSERT_EQ(point->Unadvise(number), S_OK);
  ASSERT_EQ(point->Unadvise(number_of_next), S_OK);
}

// As some sinks answer whose methods return nothing.
TEST_F(ComEvents, ComeToSinksThatRefuseToBeAskedForAResult) {
  sink.has_no_results = true;
  DWORD number = 0;
  const auto point = Point();
  ASSERT_EQ(point->Advise(&sink, &number), S_OK);
  EXPECT_NO_THROW(CallIt(transfer, "Execute"));
  EXPECT_THAT(sink.calls, Contains("2 11"));
  ASSERT_EQ(point->Unadvise(number), S_OK);
}

TEST_F(ComEvents, AreNotToldToWhoeverAnEarlierListenerHasTakenAway) {
  NotingSink later;
  later.names = sink.names = {{"OnStateChanged", 70}};
  const auto change = [&](const char* method, NotingSink& listener) {
    VARIANT value = Plain(VT_DISPATCH);
    value.pdispVal = &listener;
    InvokeId(transfer, IdOf(transfer, method), DISPATCH_METHOD, {value});
  };
  sink.on_call = [&] { change("RemoveListener", later); };
  change("AddListener", sink);
  change("AddListener", later);
  CallIt(transfer, "Execute");
  EXPECT_THAT(later.calls, IsEmpty());
  Change("RemoveListener");
}

TEST_F(ComEvents, RaiseWhatTheirListenersRaise) {
  sink.names = {{"OnStateChanged", 70}};
  sink.is_failing = true;
  const auto by_door = automation_server::AutomationObject::Of(ValueOf(transfer).AsObject());
  const std::int32_t expected = [&] {
    const auto failing =
        by_door->Subscribe([](const auto&, auto) { throw RuntimeError(1234, "the script failed"); });
    return NumberOf([&] { CallIt(transfer, "Execute"); });
  }();
  Change("AddListener");
  EXPECT_EQ(NumberOf([&] { CallIt(transfer, "Execute"); }), expected) << "as any subscriber's";
}

TEST_F(ComEvents, HaveNoPointWhereThereAreNone) {
  EXPECT_FALSE(com::Asked<IUnknown>(facade.get(), IID_IConnectionPointContainer));
  const auto container = com::Asked<IConnectionPointContainer>(transfer.get(), IID_IConnectionPointContainer);
  Held<IConnectionPoint> point;
  EXPECT_EQ(container->FindConnectionPoint(com::EventsOf("cQTStreaming"), point.Place<IConnectionPoint**>()),
            CONNECT_E_NOCONNECTION);
}

// It has references to count and no members.
class Mute final : public IUnknown {
 public:
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** place) override {
    *place = id == IID_IUnknown ? static_cast<IUnknown*>(this) : nullptr;
    return *place != nullptr ? S_OK : E_NOINTERFACE;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return 1; }
  ULONG STDMETHODCALLTYPE Release() override { return 1; }
};

TEST_F(ComEvents, AreNotToldToWhatCannotBeCalled) {
  DWORD number = 7;
  EXPECT_EQ(Point()->Advise(nullptr, &number), E_POINTER);
  Mute mute;
  EXPECT_EQ(Point()->Advise(&mute, &number), CONNECT_E_CANNOTCONNECT);
  EXPECT_EQ(number, 0U);
  EXPECT_EQ(Point()->Advise(&sink, nullptr), E_POINTER);
}

}  // namespace
}  // namespace mirelo::testing
