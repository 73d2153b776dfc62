// What clients hand in of a spreadsheet program, and what happens while it is busy.

#include "com/calling_object.h"

#include <objbase.h>

#include <atomic>
#include <future>
#include <string>
#include <thread>
#include <vector>

#include "automation/runtime_error.h"
#include "com/foreign.h"
#include "core/cMirelo.h"
#include "host/excel/application.h"
#include "host/excel/range.h"
#include "host/excel/worksheet.h"
#include "windows/spreadsheet/served.h"

namespace mirelo::testing {
namespace {

using ::testing::HasSubstr;

class ForeignProgram : public ComTest {
 protected:
  static Client Program(const CLSID& id) {
    Client program;
    com::Require(::CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER | CLSCTX_LOCAL_SERVER, IID_IDispatch,
                                    program.Place()));
    return program;
  }
  void HandIn(const Client& object) {
    VARIANT value = Plain(VT_DISPATCH);
    value.pdispVal = object.get();
    InvokeId(facade, IdOf(facade, "ExcelApplication"), DISPATCH_PROPERTYPUT, {value}, {DISPID_PROPERTYPUT});
  }
  host::excel::Application& Application() {
    return *dynamic_cast<cMirelo&>(*com::ObjectBehind(facade.get())).m_ObjExcelApplication();
  }

  Client facade = NewHeld("cMirelo");
};

class Refusals {
 public:
  explicit Refusals(LONG count) : semaphore_(::CreateSemaphoreW(nullptr, count, count, kRefusals)) {}
  ~Refusals() { ::CloseHandle(semaphore_); }
  Refusals(const Refusals&) = delete;
  Refusals& operator=(const Refusals&) = delete;

  bool AreOver() { return ::WaitForSingleObject(semaphore_, 0) == WAIT_TIMEOUT; }

 private:
  HANDLE semaphore_;
};

TEST_F(ForeignProgram, IsTheApplicationOfTheClasses) {
  for (const CLSID& id : {kInThisProcess, kInItsOwnProcess}) {
    const Client program = Program(id);
    HandIn(program);
    Application().Range("B2")->Value("1,234");
    EXPECT_EQ(Application().Range("B2")->Value().ToDouble(), 1234);
    EXPECT_EQ(CallIt(program, "Range", {"B2"}).TypeName(), "Range");
  }
}

TEST_F(ForeignProgram, IsGivenBackAsItIs) {
  const Client program = Program(kInThisProcess);
  HandIn(program);
  ClientValue back;
  DISPPARAMS none{};
  com::Require(facade->Invoke(IdOf(facade, "ExcelApplication"), IID_NULL, LOCALE_USER_DEFAULT,
                              DISPATCH_PROPERTYGET, &none, back.get(), nullptr, nullptr));
  ASSERT_EQ(back->vt, VT_DISPATCH);
  EXPECT_EQ(back->pdispVal, program.get());
}

TEST_F(ForeignProgram, HasObjectsThatAreNoApplication) {
  const Variant range = CallIt(Program(kInThisProcess), "Range", {"A1"});
  const Client cells(dynamic_cast<com::Foreign&>(*range.AsObject()).reference());
  EXPECT_EQ(NumberOf([&] { HandIn(cells); }), 13);
}

TEST_F(ForeignProgram, IsNoOtherProgramThatHasAnApplication) {
  CallingObject editor;
  editor.class_name = "_Application";
  editor.absent = "Worksheets";
  const Client held(&editor);
  EXPECT_EQ(NumberOf([&] { HandIn(held); }), 13);
  editor.absent = "Documents";
  EXPECT_EQ(NumberOf([&] { HandIn(held); }), 0);
  HandIn(Program(kInThisProcess));  // which lets go of the other
}

// As every library of ours it is registered without a threading model.
TEST_F(ForeignProgram, IsCalledOnTheFirstThreadWhoeverCalls) {
  const DWORD main_thread = ::GetCurrentThreadId();
  std::atomic<bool> is_over = false;
  std::string told;
  std::thread other([&] {
    try {
      com::Require(::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED));
      {
        com::Foreign program(Program(kInThisProcess));
        program.Get("Range", std::vector<Variant>{"A1"});
        told =
            com::Asked<IUnknown>(program.reference().get(), IID_IClientSecurity) ? "stands for it" : "itself";
      }
      ::CoUninitialize();
    } catch (const RuntimeError& error) {
      told = error.Description();
    }
    is_over = true;
    ::PostThreadMessageW(main_thread, WM_NULL, 0, 0);
  });
  MSG message{};
  while (!is_over && ::GetMessageW(&message, nullptr, 0, 0) > 0) ::DispatchMessageW(&message);
  other.join();
  EXPECT_EQ(told, "stands for it");
}

// A client's object that lives on a thread of its own, in an apartment of its own.
class ListenerElsewhere {
 public:
  ListenerElsewhere() {
    thread_ = std::thread([this] { Live(); });
    is_ready_.get_future().wait();
  }
  ~ListenerElsewhere() { End(); }
  ListenerElsewhere(const ListenerElsewhere&) = delete;
  ListenerElsewhere& operator=(const ListenerElsewhere&) = delete;

  // The object as this thread calls it; to be let go of before its own thread ends.
  Held<IDispatch> Reference() {
    Held<IDispatch> reference;
    com::Require(::CoGetInterfaceAndReleaseStream(stream_, IID_IDispatch, reference.Place()));
    return reference;
  }
  // Ends its thread. What it was called by.
  std::vector<std::string> End() {
    if (thread_.joinable()) {
      ::PostThreadMessageW(id_, WM_QUIT, 0, 0);
      thread_.join();
    }
    return listener_.calls;
  }

 private:
  void Live() {
    com::Require(::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED));
    id_ = ::GetCurrentThreadId();
    com::Require(::CoMarshalInterThreadInterfaceInStream(IID_IDispatch, static_cast<IDispatch*>(&listener_),
                                                         &stream_));
    is_ready_.set_value();
    MSG message{};
    while (::GetMessageW(&message, nullptr, 0, 0) > 0) ::DispatchMessageW(&message);
    ::CoDisconnectObject(static_cast<IDispatch*>(&listener_), 0);
    ::CoUninitialize();
  }

  CallingObject listener_;
  IStream* stream_ = nullptr;
  DWORD id_ = 0;
  std::promise<void> is_ready_;
  std::thread thread_;
};

TEST_F(ForeignProgram, MayHaveListenersOnThreadsOfTheirOwn) {
  internet.answer = [](const AnsweringInternet::Request&) { return "reply"; };
  const Client transfer = NewHeld("WinInet");
  PutIt(transfer, "HostName", "host");
  PutIt(transfer, "Resource", "/");
  PutIt(transfer, "Method", "GET");
  ListenerElsewhere listener;
  {
    const Held<IDispatch> reference = listener.Reference();
    ASSERT_TRUE(com::Asked<IUnknown>(reference.get(), IID_IClientSecurity)) << "it stands for the object";
    VARIANT passed = Plain(VT_DISPATCH);
    passed.pdispVal = reference.get();
    InvokeId(transfer, IdOf(transfer, "AddListener"), DISPATCH_METHOD, {passed});
    CallIt(transfer, "Execute");
    InvokeId(transfer, IdOf(transfer, "RemoveListener"), DISPATCH_METHOD, {passed});
  }
  EXPECT_THAT(listener.End(), ::testing::IsSupersetOf({"get 1", "get 0 0 5", "get 11"}));
}

TEST_F(ForeignProgram, IsAskedAgainUntilItTakesCalls) {
  HandIn(Program(kInItsOwnProcess));
  Application().Range("A1")->Value("before");
  Refusals refusals(3);
  Application().Range("A1")->Value("after");
  EXPECT_TRUE(refusals.AreOver());
  EXPECT_EQ(Application().Range("A1")->Value().ToText(), "after");
}

TEST_F(ForeignProgram, KeepsWhatItHadWhenItRefusesForLong) {
  HandIn(Program(kInItsOwnProcess));
  const auto cell = Application().Range("A1");
  cell->Value("before");
  {
    const Refusals refusals(100'000);
    EXPECT_THAT(ErrorOf([&] { cell->Value("after"); }).Description(), HasSubstr("a cell is being edited"));
  }
  EXPECT_EQ(cell->Value().ToText(), "before");
  cell->Value("after");
  EXPECT_EQ(cell->Value().ToText(), "after");
}

}  // namespace
}  // namespace mirelo::testing
