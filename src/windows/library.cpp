// What Windows and its tool regsvr32 call of Mirelo.dll.

#include "com/server.h"

#include <cwchar>
#include <string>

#include "com/type_information.h"
#include "windows/foreign_program.h"
#include "windows/machine.h"
#include "windows/script_machine.h"

namespace {

using mirelo::com::RegisteredFor;

HMODULE own_module = nullptr;

std::wstring OwnPath() {
  std::wstring path(MAX_PATH, L'\0');
  for (;;) {
    const DWORD length = ::GetModuleFileNameW(own_module, path.data(), static_cast<DWORD>(path.size()));
    if (length < path.size()) return path.substr(0, length);
    path.resize(path.size() * 2);
  }
}

void Ready() {
  mirelo::com::UseTypeLibraryOf(OwnPath());
  mirelo::windows::Machine::Installed();
  mirelo::windows::TakeSpreadsheetPrograms();
}

HRESULT Registered(RegisteredFor whom) {
  mirelo::windows::KnowScriptMachine();
  mirelo::com::UseTypeLibraryOf(OwnPath());
  return mirelo::com::Register(OwnPath(), whom);
}

HRESULT Unregistered(RegisteredFor whom) {
  mirelo::windows::KnowScriptMachine();
  return mirelo::com::Unregister(whom);
}

}  // namespace

extern "C" {

BOOL WINAPI DllMain(HINSTANCE module, DWORD why, void*) {
  if (why == DLL_PROCESS_ATTACH) own_module = module;
  return TRUE;
}

HRESULT WINAPI DllGetClassObject(REFCLSID class_id, REFIID id, void** place) {
  mirelo::windows::KnowScriptMachine();
  return mirelo::com::GetFactory(class_id, id, place, Ready);
}

HRESULT WINAPI DllCanUnloadNow() { return mirelo::com::IsHeld() ? S_FALSE : S_OK; }

HRESULT WINAPI DllRegisterServer() { return Registered(RegisteredFor::kAllUsers); }

HRESULT WINAPI DllUnregisterServer() { return Unregistered(RegisteredFor::kAllUsers); }

// regsvr32 /n /i:user Mirelo.dll: for this user, who need not be allowed to change the machine.
HRESULT WINAPI DllInstall(BOOL install, const wchar_t* whom) {
  if (whom == nullptr || std::wcscmp(whom, L"user") != 0) return E_INVALIDARG;
  if (!install) return Unregistered(RegisteredFor::kThisUser);
  return Registered(RegisteredFor::kThisUser);
}

}  // extern "C"
