#include "com/errors.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>

#include "automation/wide_text.h"
#include "com/held.h"
#include "com/text.h"

namespace mirelo::com {

namespace {

// The numbers of the automation run time are the lower half of results that bear this mark.
constexpr std::uint32_t kRunTime = 0x800A0000;
constexpr std::uint32_t kUpperHalf = 0xFFFF0000;

constexpr std::int32_t kAutomationError = 440;

// Failures that Windows and other programs tell by numbers of their own.
struct Known {
  HRESULT result;
  RuntimeError (*error)();
};
constexpr std::array kKnown{
    Known{DISP_E_TYPEMISMATCH, Errors::TypeMismatch},
    Known{DISP_E_OVERFLOW, Errors::Overflow},
    Known{DISP_E_BADINDEX, Errors::SubscriptOutOfRange},
    Known{DISP_E_BADPARAMCOUNT, Errors::WrongNumberOfArguments},
    Known{DISP_E_PARAMNOTOPTIONAL, Errors::ArgumentNotOptional},
    Known{DISP_E_PARAMNOTFOUND, Errors::NamedArgumentNotFound},
    Known{DISP_E_MEMBERNOTFOUND, Errors::MemberNotFound},
    Known{DISP_E_UNKNOWNNAME, Errors::MemberNotFound},
    Known{DISP_E_DIVBYZERO, Errors::DivisionByZero},
    Known{E_OUTOFMEMORY, Errors::OutOfMemory},
    Known{E_INVALIDARG, Errors::InvalidProcedureCall},
};

std::int32_t NumberOf(HRESULT result) {
  const auto bits = static_cast<std::uint32_t>(result);
  return static_cast<std::int32_t>((bits & kUpperHalf) == kRunTime ? bits & ~kUpperHalf : bits);
}

std::string Taken(BSTR& text) {
  std::string taken = TextOf(text);
  ::SysFreeString(text);
  text = nullptr;
  return taken;
}

// Null where there is no memory for it: the number alone has to do then.
BSTR TextOrNone(const std::string& text) noexcept {
  try {
    return NewText(text);
  } catch (...) {
    return nullptr;
  }
}

void SetErrorInformation(const RuntimeError& error) {
  Held<ICreateErrorInfo> information;
  if (FAILED(::CreateErrorInfo(information.Place<ICreateErrorInfo**>()))) return;
  std::wstring description = WideText(error.Description());
  std::wstring source = WideText(error.Source());
  information->SetDescription(description.data());
  information->SetSource(source.data());
  information->SetGUID(IID_IDispatch);
  if (const auto told = Asked<IErrorInfo>(information.get(), IID_IErrorInfo)) ::SetErrorInfo(0, told.get());
}

}  // namespace

HRESULT ResultOf(const RuntimeError& error) {
  const auto number = static_cast<std::uint32_t>(error.Number());
  return static_cast<HRESULT>((number & kUpperHalf) == 0 ? kRunTime | number : number);
}

RuntimeError ErrorOf(HRESULT result) {
  const auto* const known = std::ranges::find(kKnown, result, &Known::result);
  if (known != kKnown.end()) return known->error();
  return RuntimeError(NumberOf(result), "Automation error");
}

RuntimeError ErrorOf(HRESULT result, EXCEPINFO& told) {
  if (result != DISP_E_EXCEPTION) return ErrorOf(result);
  if (told.pfnDeferredFillIn != nullptr) told.pfnDeferredFillIn(&told);
  const std::string description = Taken(told.bstrDescription);
  const std::string source = Taken(told.bstrSource);
  ::SysFreeString(told.bstrHelpFile);
  std::int32_t number = told.scode != 0 ? NumberOf(told.scode) : std::int32_t{told.wCode};
  if (number == 0) number = kAutomationError;
  return RuntimeError(number, description.empty() ? "Automation error" : description, source);
}

HRESULT Told(EXCEPINFO* place) noexcept {
  try {
    const RuntimeError error = CurrentError();
    Describe(error, place);
    if (place != nullptr) return DISP_E_EXCEPTION;
    const HRESULT result = ResultOf(error);
    return FAILED(result) ? result : E_FAIL;  // numbers of clients' own may look like success
  } catch (...) {
    return E_OUTOFMEMORY;  // there is none to describe it in
  }
}

void Describe(const RuntimeError& error, EXCEPINFO* place) {
  SetErrorInformation(error);
  if (place == nullptr) return;
  *place = {};
  place->scode = ResultOf(error);
  place->bstrDescription = TextOrNone(error.Description());
  place->bstrSource = TextOrNone(error.Source());
}

}  // namespace mirelo::com
