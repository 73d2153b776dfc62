#pragma once

#include <cstdint>

#include "automation/runtime_error.h"

namespace mirelo::testing {

// The number of the error that `call` raises, 0 without one.
template <class Call>
std::int32_t NumberOf(Call&& call) {
  try {
    call();
    return 0;
  } catch (const RuntimeError& error) {
    return error.Number();
  }
}

}  // namespace mirelo::testing
