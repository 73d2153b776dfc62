#include "com/arguments.h"

#include <cstddef>
#include <optional>

#include "automation/runtime_error.h"
#include "com/foreign.h"
#include "com/values.h"

namespace mirelo::com {

namespace {

void RequireReadable(const DISPPARAMS& passed) {
  const bool is_readable = passed.cNamedArgs <= passed.cArgs &&
                           (passed.cArgs == 0 || passed.rgvarg != nullptr) &&
                           (passed.cNamedArgs == 0 || passed.rgdispidNamedArgs != nullptr);
  if (!is_readable) throw Errors::InvalidProcedureCall();
}

bool IsLeftOut(const VARIANT& value) {
  const VARIANT& itself = Itself(value);
  return itself.vt == VT_ERROR && itself.scode == DISP_E_PARAMNOTFOUND;
}

}  // namespace

// Clients pass the last argument first, and named ones before all others.
ClientArguments::ClientArguments(const DISPPARAMS& passed, const automation_server::Member& member)
    : member_(member) {
  RequireReadable(passed);
  for (UINT i = passed.cArgs; i > passed.cNamedArgs; --i) places_.push_back(&passed.rgvarg[i - 1]);
  for (UINT i = 0; i < passed.cNamedArgs; ++i) {
    const DISPID name = passed.rgdispidNamedArgs[i];
    if (name == DISPID_PROPERTYPUT) continue;
    const auto place = static_cast<std::size_t>(name);
    if (name < 0 || place >= member.parameters.size()) throw Errors::NamedArgumentNotFound();
    if (place >= places_.size()) places_.resize(place + 1, nullptr);
    if (places_[place] != nullptr) throw Errors::NamedArgumentNotFound();
    places_[place] = &passed.rgvarg[i];
  }
  values_.reserve(places_.size());
  for (const VARIANT* const place : places_) {
    if (place == nullptr || IsLeftOut(*place)) {
      values_.emplace_back(std::nullopt);
    } else {
      values_.emplace_back(Entering(FromClient(*place)));
    }
  }
}

void ClientArguments::GiveBack() const {
  for (std::size_t i = 0; i < values_.size() && i < member_.parameters.size(); ++i) {
    if (member_.parameters[i].by_reference && values_[i]) WriteBack(Leaving(*values_[i]), *places_[i]);
  }
}

UINT PlaceOfAssigned(const DISPPARAMS& passed) {
  RequireReadable(passed);
  if (passed.cArgs == 0) throw Errors::ArgumentNotOptional();
  for (UINT i = 0; i < passed.cNamedArgs; ++i) {
    if (passed.rgdispidNamedArgs[i] == DISPID_PROPERTYPUT) return i;
  }
  if (passed.cNamedArgs > 0) throw Errors::ArgumentNotOptional();
  return 0;
}

}  // namespace mirelo::com
