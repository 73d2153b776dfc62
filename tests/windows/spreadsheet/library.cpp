// The library that serves the spreadsheet in its client's process.

#include "com/server.h"

#include <string>

#include "windows/spreadsheet/saved_workbook.h"
#include "windows/spreadsheet/served.h"

namespace {

HMODULE own_module = nullptr;

}  // namespace

extern "C" {

BOOL WINAPI DllMain(HINSTANCE module, DWORD why, void*) {
  if (why == DLL_PROCESS_ATTACH) own_module = module;
  return TRUE;
}

__declspec(dllexport) HRESULT WINAPI DllGetClassObject(REFCLSID class_id, REFIID id, void** place) {
  if (class_id != mirelo::testing::kInThisProcess) return CLASS_E_CLASSNOTAVAILABLE;
  static const bool can_be_saved = (mirelo::testing::LetWorkbooksBeSaved(), true);
  (void)can_be_saved;
  return mirelo::testing::SpreadsheetFactory()->QueryInterface(id, place);
}

__declspec(dllexport) HRESULT WINAPI DllCanUnloadNow() { return mirelo::com::IsHeld() ? S_FALSE : S_OK; }

}  // extern "C"
