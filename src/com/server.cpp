#include "com/server.h"

#include <string_view>
#include <utility>

#include "automation/wide_text.h"
#include "automation_server/classes.h"
#include "com/class_ids.h"
#include "com/dispatch.h"
#include "com/errors.h"
#include "com/held.h"
#include "com/own_thread.h"
#include "com/type_information.h"

// The headers of the cross compiler lack these two, its libraries have them.
extern "C" HRESULT STDAPICALLTYPE RegisterTypeLibForUser(ITypeLib*, OLECHAR*, OLECHAR*);
extern "C" HRESULT STDAPICALLTYPE UnRegisterTypeLibForUser(REFGUID, WORD, WORD, LCID, SYSKIND);

namespace mirelo::com {

namespace {

LONG locks = 0;

class Factory final : public IClassFactory {
 public:
  explicit Factory(std::function<std::shared_ptr<Object>()> make) : make_(std::move(make)) {
    ::InterlockedIncrement(&locks);
  }
  virtual ~Factory() { ::InterlockedDecrement(&locks); }
  Factory(const Factory&) = delete;
  Factory& operator=(const Factory&) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** place) override {
    if (place == nullptr) return E_POINTER;
    *place = nullptr;
    if (id != IID_IUnknown && id != IID_IClassFactory) return E_NOINTERFACE;
    *place = static_cast<IClassFactory*>(this);
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override {
    return static_cast<ULONG>(::InterlockedIncrement(&references_));
  }
  ULONG STDMETHODCALLTYPE Release() override {
    const LONG left = ::InterlockedDecrement(&references_);
    if (left == 0) delete this;
    return static_cast<ULONG>(left);
  }

  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID id, void** place) override {
    if (place == nullptr) return E_POINTER;
    *place = nullptr;
    if (outer != nullptr) return CLASS_E_NOAGGREGATION;
    return OnOwnThread([&]() -> HRESULT { return DispatchOf(make_())->QueryInterface(id, place); });
  }
  HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override {
    if (lock) {
      ::InterlockedIncrement(&locks);
    } else {
      ::InterlockedDecrement(&locks);
    }
    return S_OK;
  }

 private:
  std::function<std::shared_ptr<Object>()> make_;
  LONG references_ = 0;
};

// A key of the registry that is written.
class Key {
 public:
  Key(HKEY root, const std::wstring& path) {
    Require(HRESULT_FROM_WIN32(
        ::RegCreateKeyExW(root, path.c_str(), 0, nullptr, 0, KEY_WRITE, nullptr, &key_, nullptr)));
  }
  ~Key() { ::RegCloseKey(key_); }
  Key(const Key&) = delete;
  Key& operator=(const Key&) = delete;

  void SetOwnValue(const std::wstring& text) {
    const auto bytes = static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t));
    Require(HRESULT_FROM_WIN32(
        ::RegSetValueExW(key_, nullptr, 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()), bytes)));
  }

 private:
  HKEY key_ = nullptr;
};

HKEY RootOf(RegisteredFor whom) {
  return whom == RegisteredFor::kAllUsers ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER;
}
const std::wstring kClassesFolder = L"Software\\Classes\\";

std::wstring NameOf(const ClassId& known) { return L"Mirelo." + WideText(known.name); }

std::wstring IdText(const GUID& id) {
  wchar_t text[40];
  ::StringFromGUID2(id, text, 40);
  return text;
}
std::wstring IdTextOf(const ClassId& known) { return IdText(known.id); }

}  // namespace

Held<IClassFactory> FactoryOf(std::function<std::shared_ptr<Object>()> make) {
  return Held<IClassFactory>(new Factory(std::move(make)));
}

HRESULT GetFactory(REFCLSID class_id, REFIID id, void** place, void (*ready)()) {
  if (place == nullptr) return E_POINTER;
  *place = nullptr;
  for (const ClassId& known : ClassIds()) {
    if (known.id != class_id) continue;
    return AtTheBorder([&]() -> HRESULT {
      const auto make = [name = known.name, ready] {
        ready();
        return automation_server::CreateObject(name);
      };
      return FactoryOf(make)->QueryInterface(id, place);
    });
  }
  return CLASS_E_CLASSNOTAVAILABLE;
}

bool IsHeld() { return locks > 0 || HeldObjects() > 0; }

namespace {

void RegisterTypeLibraryOf(const std::wstring& library, RegisteredFor whom) {
  const Held<ITypeLib> types = TypeLibrary();
  if (!types) return;  // there is none to be registered
  std::wstring file = library;
  const auto write = whom == RegisteredFor::kAllUsers ? ::RegisterTypeLib : ::RegisterTypeLibForUser;
  Require(write(types.get(), file.data(), nullptr));
}

void UnregisterTypeLibrary(RegisteredFor whom) {
  const auto remove = whom == RegisteredFor::kAllUsers ? ::UnRegisterTypeLib : ::UnRegisterTypeLibForUser;
  const HRESULT result = remove(TypeLibraryId(), 1, 0, LOCALE_NEUTRAL, SYS_WIN64);
  if (result != TYPE_E_REGISTRYACCESS && result != TYPE_E_LIBNOTREGISTERED) Require(result);
}

}  // namespace

// Without a ThreadingModel COM makes the objects in the process's first apartment alone, and brings the calls
// of all other threads there. So the classes have the one thread that they want.
HRESULT Register(const std::wstring& library, RegisteredFor whom) {
  return AtTheBorder([&]() -> HRESULT {
    const auto write = [&](const std::wstring& path, const std::wstring& text) {
      Key(RootOf(whom), kClassesFolder + path).SetOwnValue(text);
    };
    for (const ClassId& known : ClassIds()) {
      const std::wstring folder = L"CLSID\\" + IdTextOf(known);
      write(folder, NameOf(known));
      write(folder + L"\\InprocServer32", library);
      write(folder + L"\\ProgID", NameOf(known));
      write(folder + L"\\TypeLib", IdText(TypeLibraryId()));
      write(NameOf(known), NameOf(known));
      write(NameOf(known) + L"\\CLSID", IdTextOf(known));
    }
    RegisterTypeLibraryOf(library, whom);
    return S_OK;
  });
}

HRESULT Unregister(RegisteredFor whom) {
  return AtTheBorder([&]() -> HRESULT {
    for (const ClassId& known : ClassIds()) {
      for (const std::wstring& key : {L"CLSID\\" + IdTextOf(known), NameOf(known)}) {
        const LSTATUS result = ::RegDeleteTreeW(RootOf(whom), (kClassesFolder + key).c_str());
        if (result != ERROR_FILE_NOT_FOUND) Require(HRESULT_FROM_WIN32(result));
      }
    }
    UnregisterTypeLibrary(whom);
    return S_OK;
  });
}

}  // namespace mirelo::com
