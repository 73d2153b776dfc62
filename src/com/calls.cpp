#include "com/calls.h"

#include <dispex.h>

#include <string>
#include <vector>

#include "com/errors.h"
#include "com/held.h"
#include "com/text.h"
#include "com/values.h"

namespace mirelo::com {

namespace {

// {A6EF9860-C720-11D0-9337-00A0C90DCAA9}; the import libraries lack it.
constexpr IID kDispatchEx{0xA6EF9860, 0xC720, 0x11D0, {0x93, 0x37, 0x00, 0xA0, 0xC9, 0x0D, 0xCA, 0xA9}};

}  // namespace

// Objects of scripts know their members' names by their own interface alone, in some hosts.
std::optional<DISPID> MemberNamed(IDispatch& object, std::string_view name) {
  DISPID id = DISPID_UNKNOWN;
  if (const auto script = Asked<IDispatchEx>(&object, kDispatchEx)) {
    const BSTR text = NewText(name);
    const HRESULT result = script->GetDispID(text, fdexNameCaseInsensitive, &id);
    ::SysFreeString(text);
    if (FAILED(result)) return std::nullopt;
    return id;
  }
  std::wstring wide = WideText(name);
  OLECHAR* names[] = {wide.data()};
  if (FAILED(object.GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &id))) return std::nullopt;
  return id;
}

void CallMethod(IDispatch& object, DISPID method, std::span<const Variant> arguments) {
  std::vector<ClientValue> values(arguments.size());  // the last comes first
  for (std::size_t i = 0; i < arguments.size(); ++i)
    ToClient(arguments[arguments.size() - 1 - i], *values[i]);
  std::vector<VARIANT> passed;
  for (ClientValue& value : values) passed.push_back(*value);
  DISPPARAMS parameters{passed.data(), nullptr, static_cast<UINT>(passed.size()), 0};
  EXCEPINFO told{};
  ClientValue result;
  const HRESULT ended = object.Invoke(method, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters,
                                      result.get(), &told, nullptr);
  if (FAILED(ended)) throw ErrorOf(ended, told);
}

}  // namespace mirelo::com
