#pragma once

#include <cstdint>
#include <optional>
#include <utility>

#include "automation/runtime_error.h"

namespace mirelo::testing {

// The error that a call raises, or nothing.
template <class Call>
std::optional<RuntimeError> Raised(Call&& call) {
  try {
    std::forward<Call>(call)();
  } catch (const RuntimeError& error) {
    return error;
  }
  return std::nullopt;
}

// Its number, 0 when the call raises none.
template <class Call>
std::int32_t RaisedNumber(Call&& call) {
  const std::optional<RuntimeError> error = Raised(std::forward<Call>(call));
  return error ? error->Number() : 0;
}

}  // namespace mirelo::testing
