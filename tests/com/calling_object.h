#pragma once

#include "com/client.h"

#include <string>
#include <vector>

#include "com/type_information.h"

namespace mirelo::testing {

// An object of another program whose members are all known, under one number, and answer 5; it notes its
// calls. `refusal` is what it answers instead to the next `refusals` calls, and when it is asked for its
// class: `refusals_to_provide` times by the interface for that, `refusals_to_tell` times by its own.
class CallingObject final : public IDispatch, public IClientSecurity, public IProvideClassInfo {
 public:
  virtual ~CallingObject() = default;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** place) override {
    *place = nullptr;
    if (id == IID_IUnknown || id == IID_IDispatch) {
      *place = static_cast<IDispatch*>(this);
    } else if (id == IID_IClientSecurity && is_elsewhere) {
      *place = static_cast<IClientSecurity*>(this);
    } else if (id == IID_IProvideClassInfo && !provided_class.empty()) {
      *place = static_cast<IProvideClassInfo*>(this);
    } else {
      return E_NOINTERFACE;
    }
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references; }
  ULONG STDMETHODCALLTYPE Release() override { return --references; }
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo** place) override {
    ++questions;
    if (refusals_to_tell > 0) {
      --refusals_to_tell;
      return refusal;
    }
    if (class_name.empty()) return E_NOTIMPL;
    *place = com::InterfaceInformation(class_name).Release();
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetClassInfo(ITypeInfo** place) override {
    if (refusals_to_provide > 0) {
      --refusals_to_provide;
      return refusal;
    }
    *place = com::InterfaceInformation(provided_class).Release();
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, OLECHAR** names, UINT, LCID language, DISPID* id) override {
    languages.push_back(language);
    if (com::TextOf(names[0]) == absent) return DISP_E_UNKNOWNNAME;
    *id = 7;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID language, WORD how, DISPPARAMS* passed,
                                   VARIANT* result, EXCEPINFO* told, UINT*) override {
    languages.push_back(language);
    ++tries;
    if (refusals > 0) {
      --refusals;
      if (!is_refusing_by_exception) return refusal;
      told->scode = refusal;
      return DISP_E_EXCEPTION;
    }
    std::string text = (how & DISPATCH_PROPERTYPUT) != 0 ? "put" : "get";
    for (UINT i = passed->cArgs; i > 0; --i) text += " " + com::FromClient(passed->rgvarg[i - 1]).ToText();
    calls.push_back(text);
    if (result != nullptr) {
      result->vt = VT_I4;
      result->lVal = 5;
    }
    return S_OK;
  }

  HRESULT STDMETHODCALLTYPE QueryBlanket(IUnknown*, DWORD*, DWORD*, OLECHAR**, DWORD*, DWORD*, void**,
                                         DWORD*) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE SetBlanket(IUnknown*, DWORD, DWORD, OLECHAR*, DWORD, DWORD, void*,
                                       DWORD) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE CopyProxy(IUnknown*, IUnknown**) override { return E_NOTIMPL; }

  // As what stands for an object of another process.
  bool is_elsewhere = false;
  std::string class_name;         // of which it tells; none where it is empty
  std::string provided_class;     // by IProvideClassInfo, which it lacks where this is empty
  std::string absent = "Absent";  // the one member that it does not have
  HRESULT refusal = S_OK;
  int refusals = 0;
  int refusals_to_tell = 0;
  int refusals_to_provide = 0;
  int questions = 0;  // for its class
  bool is_refusing_by_exception = false;
  int tries = 0;
  std::vector<std::string> calls;
  std::vector<LCID> languages;
  ULONG references = 1;
};

}  // namespace mirelo::testing
