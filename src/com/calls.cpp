#include "com/calls.h"

#include <dispex.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <vector>

#include "automation/wide_text.h"
#include "com/errors.h"
#include "com/held.h"
#include "com/text.h"
#include "com/values.h"

namespace mirelo::com {

namespace {

// {A6EF9860-C720-11D0-9337-00A0C90DCAA9}; the import libraries lack it.
constexpr IID kDispatchEx{0xA6EF9860, 0xC720, 0x11D0, {0x93, 0x37, 0x00, 0xA0, 0xC9, 0x0D, 0xCA, 0xA9}};

// What a program answers that takes no calls just now: by COM's own means, and as spreadsheets do.
constexpr std::array<HRESULT, 3> kRefusals{RPC_E_CALL_REJECTED, RPC_E_SERVERCALL_RETRYLATER,
                                           static_cast<HRESULT>(0x800AC472)};
constexpr DWORD kPatience = 2000;  // milliseconds
constexpr DWORD kPause = 50;

bool IsRefusal(HRESULT result) { return std::ranges::find(kRefusals, result) != kRefusals.end(); }

// Only what stands for an object of another process, or thread, has its security.
bool IsElsewhere(IDispatch& object) {
  return static_cast<bool>(Asked<IUnknown>(&object, IID_IClientSecurity));
}

// Until it is no refusal any more, or has been one for too long.
template <class Call>
HRESULT AskedAgain(IDispatch& object, Call&& call) {
  HRESULT ended = call();
  if (!IsRefusal(ended) || !IsElsewhere(object)) return ended;
  const ULONGLONG begin = ::GetTickCount64();
  while (IsRefusal(ended) && ::GetTickCount64() - begin < kPatience) {
    ::Sleep(kPause);
    ended = call();
  }
  return ended;
}

RuntimeError RefusalError(HRESULT refusal) {
  return RuntimeError(
      ErrorOf(refusal).Number(),
      "The spreadsheet takes no calls now: a cell is being edited there, or a dialog is open. Finish that "
      "and try again");
}

// What one call passes. The last argument comes first, and the value of an assignment before all of them.
class Passed {
 public:
  explicit Passed(std::span<const Variant> arguments, const Variant* value = nullptr) {
    values_ = std::vector<ClientValue>(arguments.size() + (value != nullptr ? 1 : 0));
    auto place = values_.begin();
    if (value != nullptr) ToClient(*value, **place++);
    for (std::size_t i = arguments.size(); i > 0; --i) ToClient(arguments[i - 1], **place++);
    for (ClientValue& each : values_) passed_.push_back(*each);
    parameters_.rgvarg = passed_.data();
    parameters_.cArgs = static_cast<UINT>(passed_.size());
    if (value == nullptr) return;
    parameters_.rgdispidNamedArgs = &value_name_;
    parameters_.cNamedArgs = 1;
  }
  Passed(const Passed&) = delete;
  Passed& operator=(const Passed&) = delete;

  // Variants know doubles alone. A parameter that is declared as a number of single precision has come as
  // one, so it loses nothing when it is passed on as one.
  void MakeSingles(std::span<const automation_server::Parameter> parameters) {
    for (std::size_t i = 0; i < std::min(parameters.size(), passed_.size()); ++i) {
      if (parameters[i].type != automation_server::ValueType::kSingle) continue;
      VARIANT& number = passed_[passed_.size() - 1 - i];
      number.fltVal = static_cast<float>(number.dblVal);
      number.vt = VT_R4;
    }
  }

  HRESULT Invoke(IDispatch& object, DISPID member, WORD how, VARIANT* result, EXCEPINFO& told) {
    told = {};
    const HRESULT ended =
        object.Invoke(member, IID_NULL, kEnglish, how, &parameters_, result, &told, nullptr);
    // Some tell of a refusal as of a failure of their own.
    return ended == DISP_E_EXCEPTION && IsRefusal(told.scode) ? told.scode : ended;
  }

 private:
  std::vector<ClientValue> values_;
  std::vector<VARIANT> passed_;
  DISPID value_name_ = DISPID_PROPERTYPUT;
  DISPPARAMS parameters_{};
};

// Objects of scripts know their members' names by their own interface alone, in some hosts.
std::optional<DISPID> NamedInScript(IDispatch& object, std::string_view name) {
  const auto script = Asked<IDispatchEx>(&object, kDispatchEx);
  if (!script) return std::nullopt;
  DISPID id = DISPID_UNKNOWN;
  const BSTR text = NewText(name);
  const HRESULT result = script->GetDispID(text, fdexNameCaseInsensitive, &id);
  ::SysFreeString(text);
  if (FAILED(result)) return std::nullopt;
  return id;
}

HRESULT ClassInformationOf(IDispatch& object, Held<ITypeInfo>& information) {
  Held<IProvideClassInfo> classed;
  const HRESULT result = object.QueryInterface(IID_IProvideClassInfo, classed.Place());
  return FAILED(result) ? result : classed->GetClassInfo(information.Place<ITypeInfo**>());
}

void RequireDone(HRESULT ended, EXCEPINFO& told) {
  if (IsRefusal(ended)) throw RefusalError(ended);
  if (FAILED(ended)) throw ErrorOf(ended, told);
}

}  // namespace

std::optional<DISPID> MemberNamed(IDispatch& object, std::string_view name) {
  DISPID id = DISPID_UNKNOWN;
  std::wstring wide = WideText(name);
  OLECHAR* names[] = {wide.data()};
  const HRESULT result =
      AskedAgain(object, [&] { return object.GetIDsOfNames(IID_NULL, names, 1, kEnglish, &id); });
  if (IsRefusal(result)) throw RefusalError(result);
  return SUCCEEDED(result) ? id : NamedInScript(object, name);
}

std::optional<std::string> ClassNameOf(IDispatch& object) {
  Held<ITypeInfo> information;
  const auto ask = [&](auto&& call) {
    const HRESULT result = AskedAgain(object, call);
    if (IsRefusal(result)) throw RefusalError(result);
    return SUCCEEDED(result) && information;
  };
  const bool is_told = ask([&] { return ClassInformationOf(object, information); }) ||
                       ask([&] { return object.GetTypeInfo(0, kEnglish, information.Place<ITypeInfo**>()); });
  if (!is_told) return std::nullopt;
  BSTR told = nullptr;
  if (!ask([&] { return information->GetDocumentation(MEMBERID_NIL, &told, nullptr, nullptr, nullptr); }))
    return std::nullopt;
  std::string name = TextOf(told);
  ::SysFreeString(told);
  if (name.starts_with('_')) name.erase(0, 1);
  if (name.empty()) return std::nullopt;
  return name;
}

void CallForEvent(IDispatch& object, DISPID method, std::span<const automation_server::Parameter> parameters,
                  std::span<const Variant> arguments) {
  Passed passed(arguments);
  passed.MakeSingles(parameters);
  EXCEPINFO told{};
  // With a place for a result, some say of every method that returns none that they do not know it.
  const HRESULT ended = passed.Invoke(object, method, DISPATCH_METHOD, nullptr, told);
  if (FAILED(ended) && ended != DISP_E_MEMBERNOTFOUND) throw ErrorOf(ended, told);
}

Variant GetMember(IDispatch& object, DISPID member, std::span<const Variant> arguments) {
  Passed passed(arguments);
  EXCEPINFO told{};
  ClientValue result;
  const HRESULT ended = AskedAgain(object, [&] {
    return passed.Invoke(object, member, DISPATCH_METHOD | DISPATCH_PROPERTYGET, result.get(), told);
  });
  RequireDone(ended, told);
  return FromClient(*result);
}

void PutMember(IDispatch& object, DISPID member, const Variant& value, std::span<const Variant> arguments) {
  Passed passed(arguments, &value);
  EXCEPINFO told{};
  const HRESULT ended =
      AskedAgain(object, [&] { return passed.Invoke(object, member, DISPATCH_PROPERTYPUT, nullptr, told); });
  RequireDone(ended, told);
}

}  // namespace mirelo::com
