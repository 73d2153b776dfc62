// The program that serves the spreadsheet in a process of its own. It ends by itself once nobody has held an
// object of it for a while, and at the latest when nobody has called for long: who held one has crashed.

#include "com/dispatch.h"

#include <objbase.h>

#include "com/held.h"
#include "windows/spreadsheet/served.h"

namespace {

using mirelo::com::Held;

constexpr UINT kLook = 250;  // milliseconds between looks at who holds what
constexpr ULONGLONG kIdleUnheld = 3'000;
constexpr ULONGLONG kIdleHeld = 60'000;

ULONGLONG last_call = 0;

// Refuses calls as a spreadsheet does in which a cell is edited.
class Refusing final : public IMessageFilter {
 public:
  virtual ~Refusing() = default;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** place) override {
    *place = nullptr;
    if (id != IID_IUnknown && id != IID_IMessageFilter) return E_NOINTERFACE;
    *place = static_cast<IMessageFilter*>(this);
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return 1; }
  ULONG STDMETHODCALLTYPE Release() override { return 1; }

  DWORD STDMETHODCALLTYPE HandleInComingCall(DWORD, HTASK, DWORD, LPINTERFACEINFO) override {
    last_call = ::GetTickCount64();
    const HANDLE refusals = ::OpenSemaphoreW(SYNCHRONIZE, FALSE, mirelo::testing::kRefusals);
    if (refusals == nullptr) return SERVERCALL_ISHANDLED;
    const bool is_refused = ::WaitForSingleObject(refusals, 0) == WAIT_OBJECT_0;
    ::CloseHandle(refusals);
    return is_refused ? SERVERCALL_REJECTED : SERVERCALL_ISHANDLED;
  }
  DWORD STDMETHODCALLTYPE RetryRejectedCall(HTASK, DWORD, DWORD) override { return static_cast<DWORD>(-1); }
  DWORD STDMETHODCALLTYPE MessagePending(HTASK, DWORD, DWORD) override { return PENDINGMSG_WAITDEFPROCESS; }
};

bool IsOver() {
  const ULONGLONG idle = ::GetTickCount64() - last_call;
  return idle > (mirelo::com::HeldObjects() > 0 ? kIdleHeld : kIdleUnheld);
}

}  // namespace

int main() {
  ::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  Refusing refusing;
  ::CoRegisterMessageFilter(&refusing, nullptr);
  last_call = ::GetTickCount64();
  DWORD registered = 0;
  {
    const auto factory = mirelo::testing::SpreadsheetFactory();
    ::CoRegisterClassObject(mirelo::testing::kInItsOwnProcess, factory.get(), CLSCTX_LOCAL_SERVER,
                            REGCLS_MULTIPLEUSE, &registered);
  }
  ::SetTimer(nullptr, 0, kLook, nullptr);
  MSG message{};
  while (!IsOver() && ::GetMessageW(&message, nullptr, 0, 0) > 0) ::DispatchMessageW(&message);
  ::CoRevokeClassObject(registered);
  ::CoUninitialize();
  return 0;
}
