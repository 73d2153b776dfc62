#include "windows/spreadsheet/registration.h"

#include "com/errors.h"
#include "windows/spreadsheet/served.h"

namespace mirelo::testing {

namespace {

struct Server {
  const wchar_t* name;
  const CLSID& id;
  const wchar_t* key;
  const wchar_t* file;
};
const Server kServers[] = {
    {L"Mirelo.Spreadsheet", kInThisProcess, L"InprocServer32", L"SpreadsheetLibrary.dll"},
    {L"Mirelo.SpreadsheetProgram", kInItsOwnProcess, L"LocalServer32", L"SpreadsheetProgram.exe"},
};

const std::wstring kClassesFolderOfAll = L"Software\\Classes\\";

std::wstring Beside(const wchar_t* file) {
  wchar_t path[MAX_PATH];
  const std::wstring own(path, ::GetModuleFileNameW(nullptr, path, MAX_PATH));
  return own.substr(0, own.rfind(L'\\') + 1) + file;
}

std::wstring IdText(const CLSID& id) {
  wchar_t text[40];
  ::StringFromGUID2(id, text, 40);
  return text;
}

void Write(const std::wstring& key, const std::wstring& text) {
  const auto bytes = static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t));
  com::Require(HRESULT_FROM_WIN32(::RegSetKeyValueW(HKEY_LOCAL_MACHINE, (kClassesFolderOfAll + key).c_str(),
                                                    nullptr, REG_SZ, text.c_str(), bytes)));
}

}  // namespace

RegisteredSpreadsheets::RegisteredSpreadsheets() {
  for (const Server& server : kServers) {
    Write(std::wstring(server.name) + L"\\CLSID", IdText(server.id));
    Write(L"CLSID\\" + IdText(server.id) + L"\\" + server.key, Beside(server.file));
  }
}

RegisteredSpreadsheets::~RegisteredSpreadsheets() {
  for (const Server& server : kServers) {
    for (const std::wstring& key : {std::wstring(server.name), L"CLSID\\" + IdText(server.id)})
      ::RegDeleteTreeW(HKEY_LOCAL_MACHINE, (kClassesFolderOfAll + key).c_str());
  }
}

}  // namespace mirelo::testing
