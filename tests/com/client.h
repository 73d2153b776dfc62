#pragma once

#include "com/dispatch.h"

#include <initializer_list>
#include <string_view>
#include <vector>

#include "automation/wide_text.h"
#include "automation_server/server_test.h"
#include "com/errors.h"
#include "com/text.h"
#include "com/values.h"

namespace mirelo::testing {

using com::ClientValue;
using com::Held;

// A client of Windows', which calls objects by the numbers of their members' names.
class ComTest : public ServerTest {
 protected:
  using Client = Held<IDispatch>;

  static Client NewHeld(std::string_view name) {
    return com::DispatchOf(automation_server::CreateObject(name));
  }

  static DISPID IdOf(const Client& held, std::string_view name) {
    std::wstring wide = WideText(name);
    OLECHAR* names[] = {wide.data()};
    DISPID id = DISPID_UNKNOWN;
    com::Require(held->GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &id));
    return id;
  }

  // Calls with the variants of a client, the last first. What fails is the error that the client is told of.
  static Variant InvokeId(const Client& held, DISPID id, WORD how, std::vector<VARIANT> passed,
                          std::vector<DISPID> names = {}) {
    DISPPARAMS parameters{passed.data(), names.data(), static_cast<UINT>(passed.size()),
                          static_cast<UINT>(names.size())};
    EXCEPINFO told{};
    ClientValue result;
    const HRESULT ended =
        held->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, how, &parameters, result.get(), &told, nullptr);
    if (FAILED(ended)) throw com::ErrorOf(ended, told);
    return result->vt == VT_UNKNOWN ? Variant() : com::FromClient(*result);
  }
  static Variant Invoke(const Client& held, std::string_view name, WORD how,
                        std::initializer_list<Variant> arguments = {}) {
    std::vector<ClientValue> values(arguments.size());
    std::vector<VARIANT> passed;
    for (std::size_t i = 0; i < values.size(); ++i) {
      com::ToClient(*(arguments.end() - 1 - i), *values[i]);
      passed.push_back(*values[i]);
    }
    std::vector<DISPID> names;
    if ((how & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0) names.push_back(DISPID_PROPERTYPUT);
    return InvokeId(held, IdOf(held, name), how, passed, names);
  }
  static Variant CallIt(const Client& held, std::string_view name,
                        std::initializer_list<Variant> arguments = {}) {
    return Invoke(held, name, DISPATCH_METHOD | DISPATCH_PROPERTYGET, arguments);
  }
  static void PutIt(const Client& held, std::string_view name, const Variant& value) {
    Invoke(held, name, DISPATCH_PROPERTYPUT, {value});
  }
  static Variant ValueOf(const Client& held) { return Variant(com::ObjectBehind(held.get())); }
};

inline VARIANT Plain(VARTYPE type) {
  VARIANT value;
  ::VariantInit(&value);
  value.vt = type;
  return value;
}

inline VARIANT ReferenceTo(VARTYPE type, void* place) {
  VARIANT value = Plain(static_cast<VARTYPE>(type | VT_BYREF));
  value.byref = place;
  return value;
}

}  // namespace mirelo::testing
